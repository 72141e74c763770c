#!/usr/bin/env bash
# Installs the build into a temporary prefix and checks the tree as a desktop sees it: the
# programs side by side, the menu entry and the metainfo pass the desktop's own checkers,
# every icon size is there at its size, the command answers without a display, and the
# installed calendar keeps its data in the per-user folder.
set -uo pipefail
build=$1
id=org.halvern.verdaly
work=$(mktemp -d)
trap 'kill "$pid" 2>/dev/null; rm -rf "$work"' EXIT
pid=
prefix=$work/usr
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

cmake --install "$build" --prefix "$prefix" >"$work/install.log" || { cat "$work/install.log"; exit 1; }

# Nothing lands outside the prefix, and bin/ holds the three programs and nothing else.
while read -r path; do
    case $path in "$prefix"/*) ;; *) fail "installed outside the prefix: $path" ;; esac
done <"$build/install_manifest.txt"
[ "$(ls "$prefix/bin" | tr '\n' ' ')" = "BalloonNotify verdaly verdaly-gui " ] || fail "bin/ holds: $(ls "$prefix/bin")"
for program in verdaly verdaly-gui BalloonNotify; do
    [ -x "$prefix/bin/$program" ] || fail "bin/$program is not executable"
done

share=$prefix/share
desktop=$share/applications/$id.desktop
metainfo=$share/metainfo/$id.metainfo.xml
desktop-file-validate "$desktop" || fail "desktop-file-validate $desktop"
appstreamcli validate --no-net "$metainfo" >"$work/as.log" 2>&1 || { cat "$work/as.log"; fail "appstreamcli validate"; }
grep -qx 'Categories=Office;Calendar;' "$desktop" || fail "Categories"
grep -q '^Name\[ja\]=.*カレンダー' "$desktop" || fail "no Japanese name"
grep -q '^Comment\[ja\]=' "$desktop" || fail "no Japanese comment"
# The entry starts a program of the tree and shows an icon the theme has.
exec_program=$(sed -n 's/^Exec=\([^ ]*\).*/\1/p' "$desktop")
[ -x "$prefix/bin/$exec_program" ] || fail "Exec=$exec_program is not in bin/"
[ "$(sed -n 's/^Icon=//p' "$desktop")" = "$id" ] || fail "Icon= is not $id"
grep -q "<launchable type=\"desktop-id\">$id.desktop</launchable>" "$metainfo" || fail "metainfo names another menu entry"
grep -q "<release version=\"$("$prefix/bin/verdaly" --version | awk '{print $NF}')\"" "$metainfo" ||
    fail "metainfo's release is not the program's version"

icons=$share/icons/hicolor
grep -q '<svg' "$icons/scalable/apps/$id.svg" || fail "no scalable icon"
for size in 16 22 24 32 48 64 128 256; do
    png=$icons/${size}x${size}/apps/$id.png
    # The PNG header holds the width and height as big-endian words at bytes 16 and 20.
    got=$(od -An -tu1 -j16 -N8 "$png" 2>/dev/null | awk '{print $3*256+$4 "x" $7*256+$8}')
    [ "$got" = "${size}x${size}" ] || fail "$png is ${got:-missing}, not ${size}x${size}"
done

# --version and --help print and end with no display and no home to write to.
out=$(env -i PATH=/usr/bin:/bin HOME=/nonexistent "$prefix/bin/verdaly" --version) || fail "--version failed"
[[ $out =~ ^Halvern\ Verdaly\ [0-9]+\.[0-9]+ ]] || fail "--version said: $out"
help=$(env -i PATH=/usr/bin:/bin HOME=/nonexistent "$prefix/bin/verdaly" --help) || fail "--help failed"
for word in --data-dir --autostart --version --help holidays; do
    grep -q -- "$word" <<<"$help" || fail "--help does not mention $word"
done
[ ! -e /nonexistent ] || fail "a home folder was created"

# The installed calendar, with a database that found its way beside it, still keeps its
# data in the per-user folder and leaves that file alone.
: >"$prefix/bin/QMCalendar.mdb"
home=$work/home
mkdir -p "$home"
env -i PATH=/usr/bin:/bin HOME="$home" QT_QPA_PLATFORM=offscreen LANG=C.UTF-8 "$prefix/bin/verdaly" \
    >"$work/run.log" 2>&1 &
pid=$!
data=$home/.local/share/halvern-verdaly
for _ in $(seq 100); do
    [ -s "$data/QMCalendar.mdb" ] && [ -e "$data/verdaly.lock" ] && break
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.1
done
[ -s "$data/QMCalendar.mdb" ] || { cat "$work/run.log"; fail "no database in $data"; }
kill -TERM "$pid"
wait "$pid" || fail "the calendar ended with $? on SIGTERM"
[ ! -s "$prefix/bin/QMCalendar.mdb" ] || fail "the file beside the program was written"

[ "$failures" -eq 0 ] && echo "install tree at $prefix: all checks passed"
exit $((failures > 0))
