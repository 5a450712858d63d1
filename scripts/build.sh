#!/usr/bin/env bash
# Configures (once) and builds the project with Ninja and ccache into build/.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TZ_BUILD_DIR:-$root/build}
# ccache keys every compile on its absolute paths, so each checkout has its
# own entries. A precompiled header made in one folder and served from the
# cache to another crashes GCC 12 (an internal compiler error in every compile
# that includes it), so no base directory is shared between checkouts.
# ccache's check for sources changed while they compile stays on: without it
# a file edited during a build is stored under its old contents' key.
unset CCACHE_BASEDIR CCACHE_NOHASHDIR
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros}
if [ ! -f "$build/build.ninja" ]; then
  cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
fi
# Plain arguments name targets (scripts/build.sh test_vector); options pass through.
args=()
raw=0
for a in "$@"; do
  if [ $raw -eq 1 ]; then args+=("$a"); raw=0; continue; fi
  case "$a" in
    --target|-t|-j|--parallel) args+=("$a"); raw=1 ;;
    -*) args+=("$a") ;;
    *) args+=(--target "$a") ;;
  esac
done
cmake --build "$build" -j "${TZ_JOBS:-2}" "${args[@]}"
