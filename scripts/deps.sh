#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the acceptance runs need.
# Only what is missing is installed, so a prepared machine pays nothing.
set -euo pipefail

VERDALY_PACKAGES=(
    cmake g++ pkg-config
    qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite libsqlite3-dev
    qt6-multimedia-dev
    libxcb1-dev libxcb-keysyms1-dev
    desktop-file-utils appstream librsvg2-bin
    fonts-ipafont-gothic
    xvfb xauth x11-utils xdotool wmctrl imagemagick jwm xcompmgr
    dbus dunst at-spi2-core python3-pyatspi
)

missing=()
for pkg in "${VERDALY_PACKAGES[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$pkg")
    fi
done

if [ "${#missing[@]}" -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    SUDO=""
    if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
    $SUDO apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
