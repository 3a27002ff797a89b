#!/usr/bin/env bash
# A long run of the monkey (tests/session/monkey.py): random but realistic input to the real
# program on a desktop of its own, its promises checked after every event.
#   bash scripts/monkey.sh --minutes N [--seed N] [--program PATH]
# Any other option of monkey.py passes through (--replay LOG, --events N, --log PATH).
# Builds nothing: it runs build/app/korvane (bash scripts/build.sh makes it), or --program.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
exec /usr/bin/python3 tests/session/monkey.py "$@"
