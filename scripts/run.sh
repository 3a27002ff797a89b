#!/usr/bin/env bash
# Installs what is missing, builds, and starts Korvane.
# Where there is no display it says so and shows the program under Xvfb instead, in a screenshot.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
bash scripts/build.sh build -DKORVANE_TESTS=OFF -DKORVANE_BENCH=OFF

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    echo "There is no display here (neither DISPLAY nor WAYLAND_DISPLAY is set), so Korvane cannot open its window."
    echo "Showing it under Xvfb instead: bash scripts/look.sh writes screenshots to out/."
    exec bash scripts/look.sh
fi
exec build/app/korvane
