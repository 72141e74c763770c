#!/usr/bin/env bash
# Installs the build into a temporary prefix and checks the tree as a desktop sees it: the
# programs side by side, menu entry and metainfo passing the desktop's own checkers, every
# icon at its size, a command that answers without a display, and an installed calendar
# that keeps its data in the per-user folder.
set -uo pipefail
build=$1 id=org.halvern.verdaly work=$(mktemp -d) pid=
trap 'kill "$pid" 2>/dev/null; rm -rf "$work"' EXIT
prefix=$work/usr share=$work/usr/share failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

cmake --install "$build" --prefix "$prefix" >"$work/install.log" || { cat "$work/install.log"; exit 1; }
grep -v "^$prefix/" "$build/install_manifest.txt" && fail "installed outside the prefix"
[ "$(cd "$prefix/bin" && echo *)" = "BalloonNotify verdaly verdaly-gui" ] || fail "bin/ holds: $(ls "$prefix/bin")"
grep -q '<html lang="ja">' "$share/halvern-verdaly/help/index.html" || fail "no help page"

desktop=$share/applications/$id.desktop
desktop-file-validate "$desktop" || fail "desktop-file-validate"
appstreamcli validate --no-net "$share/metainfo/$id.metainfo.xml" || fail "appstreamcli validate"
grep -q '^Name\[ja\]=' "$desktop" && grep -q '^Comment\[ja\]=' "$desktop" || fail "no Japanese name and comment"
grep -qx 'Categories=Office;Calendar;' "$desktop" || fail "Categories"
[ -x "$prefix/bin/$(sed -n 's/^Exec=//p' "$desktop")" ] || fail "Exec= is not a program of bin/"
icons=$share/icons/hicolor
grep -q '<svg' "$icons/scalable/apps/$(sed -n 's/^Icon=//p' "$desktop").svg" || fail "Icon= has no scalable icon"
for size in 16 22 24 32 48 64 128 256; do
    # A PNG holds its width and height as big-endian words at bytes 16 and 20.
    got=$(od -An -tu1 -j16 -N8 "$icons/${size}x$size/apps/$id.png" | awk '{print $3*256+$4 "x" $7*256+$8}')
    [ "$got" = "${size}x$size" ] || fail "the ${size}x$size icon is ${got:-missing}"
done

# --version and --help print and end with no display and no home.
clean=(env -i PATH=/usr/bin:/bin HOME=/nonexistent)
[[ $("${clean[@]}" "$prefix/bin/verdaly" --version) =~ ^Halvern\ Verdaly\ [0-9.]+$ ]] || fail "--version"
help=$("${clean[@]}" "$prefix/bin/verdaly" --help) || fail "--help failed"
for word in --data-dir --autostart --version --help holidays; do
    grep -q -- "$word" <<<"$help" || fail "--help does not mention $word"
done

# With a database beside it, the installed calendar still keeps its data in the per-user
# folder, and leaves that file alone.
: >"$prefix/bin/QMCalendar.mdb"
data=$work/home/.local/share/halvern-verdaly
env -i PATH=/usr/bin:/bin HOME="$work/home" QT_QPA_PLATFORM=offscreen "$prefix/bin/verdaly" >"$work/run.log" 2>&1 &
pid=$!
for _ in $(seq 100); do
    [ -e "$data/verdaly.lock" ] || ! kill -0 "$pid" 2>/dev/null && break
    sleep 0.1
done
# Still running a moment after it took its lock: it found its parts and started.
sleep 1
kill -0 "$pid" || { cat "$work/run.log"; fail "the calendar did not keep running"; }
kill -TERM "$pid" && wait "$pid"
[ -s "$data/QMCalendar.mdb" ] || fail "no database in $data"
[ ! -s "$prefix/bin/QMCalendar.mdb" ] || fail "the file beside the program was written"
exit $((failures > 0))
