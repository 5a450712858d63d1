#!/usr/bin/env bash
# Configures (once) and builds the project with Ninja and ccache into build/.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TZ_BUILD_DIR:-$root/build}
if [ ! -f "$build/build.ninja" ]; then
  cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
fi
cmake --build "$build" -j "${TZ_JOBS:-2}" "$@"
