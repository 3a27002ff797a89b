#!/usr/bin/env bash
# The Debian package as a distribution would take it: builds the .deb from build/, checks it with
# lintian (no error, no warning), the AppStream record and the desktop entry with their
# validators, installs it with apt-get, checks the installed program's hardening with
# hardening-check (no item answered no), runs the installed program through the real-window run
# (about window, calculator, one calculation, closed with status 0) and removes it again.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"

bash scripts/build.sh build
rm -f build/korvane_*.deb
(cd build && cpack -G DEB >/dev/null)
deb=$(realpath build/korvane_*.deb)
lintian --fail-on error,warning --tag-display-limit 0 "$deb"
[ "$(dpkg-deb -f "$deb" Recommends)" = qt6-wayland ] ||
    { echo "package: it does not recommend qt6-wayland, the Wayland plug-in"; exit 1; }
appstreamcli validate --no-net packaging/*.metainfo.xml
desktop-file-validate resources/korvane.desktop

remove() { DEBIAN_FRONTEND=noninteractive $sudo apt-get remove -y -qq korvane >/dev/null; }
trap remove EXIT
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "$deb" >/dev/null
[ "$(command -v korvane)" = /usr/bin/korvane ] || { echo "package: korvane is not on PATH"; exit 1; }
# The flags come from CMakeLists.txt. A program is marked for control-flow protection only when
# every object linked into it is; Debian 12's C library start files are not (its libc is built
# without CET), so there, and only there, that one item may say no.
hardening=()
for start in Scrt1.o crti.o crtn.o; do
    readelf -n "$(g++ -print-file-name="$start")" | grep -q 'x86 feature: IBT, SHSTK' ||
        hardening=(--nocfprotection)
done
hardening-check "${hardening[@]}" /usr/bin/korvane ||
    { echo "package: the installed program lacks hardening"; exit 1; }
bash scripts/smoke.sh /usr/bin/korvane
echo "package: $(basename "$deb") is clean, installs, runs and ends with status 0"
