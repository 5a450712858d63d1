#!/usr/bin/env bash
# The whole test command: installs what is missing, builds, runs every suite.
#   scripts/test.sh [ctest options]
#   scripts/test.sh --sanitize [ctest options]
# --sanitize builds with AddressSanitizer and UndefinedBehaviorSanitizer into
# build-asan/ (its own tree, so the normal build stays as it is) and runs the
# suites there; any finding fails the run. Leaks known to come from third
# parties are suppressed in scripts/lsan.supp.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
sanitize=0
if [ "${1:-}" = "--sanitize" ]; then
  sanitize=1
  shift
fi
bash "$root/scripts/install-deps.sh"
export QT_QPA_PLATFORM=offscreen
if [ $sanitize -eq 0 ]; then
  bash "$root/scripts/build.sh"
  build=${TZ_BUILD_DIR:-$root/build}
  exec ctest --test-dir "$build" --output-on-failure "$@"
fi

build=${TZ_ASAN_BUILD_DIR:-$root/build-asan}
if [ ! -f "$build/build.ninja" ]; then
  flags="-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
  cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_FLAGS="$flags" \
    -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=address,undefined" \
    -DCMAKE_SHARED_LINKER_FLAGS="-fsanitize=address,undefined" \
    -DTZ_BUILD_BENCH=OFF
fi
TZ_BUILD_DIR=$build bash "$root/scripts/build.sh"
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=1:detect_stack_use_after_return=0}
export LSAN_OPTIONS=${LSAN_OPTIONS:-suppressions=$root/scripts/lsan.supp:print_suppressions=0}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
exec ctest --test-dir "$build" --output-on-failure "$@"
