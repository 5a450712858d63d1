#!/usr/bin/env bash
# Configures (once) and builds the project with Ninja and ccache into build/.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TZ_BUILD_DIR:-$root/build}
# Paths relative to the tree, and precompiled headers allowed, so that
# ccache serves one checkout's objects to another (git worktrees, CI clones).
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$root}
export CCACHE_NOHASHDIR=1
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros,include_file_mtime,include_file_ctime}
if [ ! -f "$build/build.ninja" ]; then
  cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
fi
# Plain arguments name targets (scripts/build.sh test_vector); options pass through.
args=()
for a in "$@"; do
  case "$a" in -*) args+=("$a") ;; *) args+=(--target "$a") ;; esac
done
cmake --build "$build" -j "${TZ_JOBS:-2}" "${args[@]}"
