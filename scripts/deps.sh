#!/usr/bin/env bash
# Installs, from Debian's packages, whatever the build, the program and the tests need and the
# machine lacks. Safe to run again: it installs nothing that is already there.
set -euo pipefail

packages=(cmake ninja-build g++ qt6-base-dev libgl-dev libx11-dev libgtest-dev libbenchmark-dev
          xvfb xauth xdotool imagemagick fonts-dejavu-core clang clang-format libclang-rt-14-dev strace
          valgrind gdb
          openbox dbus-daemon at-spi2-core python3-minimal python3-pyatspi python3-pil xclip
          x11-utils x11-xserver-utils qt6-gtk-platformtheme orca speech-dispatcher python3-speechd
          sway grim wl-clipboard qt6-wayland libxkbcommon-tools dbus-bin util-linux passwd
          lintian appstream desktop-file-utils devscripts)

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
