#!/usr/bin/env bash
# Configures and builds into the given folder; further arguments go to CMake's configure step.
set -euo pipefail
cd "$(dirname "$0")/.."
dir=${1:-build}
shift || true
cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
cmake --build "$dir" --parallel "$(nproc)"
