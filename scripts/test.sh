#!/usr/bin/env bash
# The whole test command: installs what is missing, builds, runs every suite.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/scripts/install-deps.sh"
bash "$root/scripts/build.sh"
build=${TZ_BUILD_DIR:-$root/build}
export QT_QPA_PLATFORM=offscreen
ctest --test-dir "$build" --output-on-failure "$@"
