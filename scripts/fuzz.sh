#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (ASan + UBSan) into build-fuzz/ and
# runs each one for the given number of seconds (default 60), one after the
# other, starting from the committed seed corpus in fuzz/corpus/<target>.
# New inputs go to build-fuzz/corpus/<target>; a crash leaves its input in
# build-fuzz/findings/ and makes the script fail.
#   scripts/fuzz.sh [seconds] [target...]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TZ_FUZZ_BUILD_DIR:-$root/build-fuzz}
seconds=${1:-60}
shift || true
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=(fuzz_project fuzz_render fuzz_styledb fuzz_grading_values)

# As in scripts/build.sh: no ccache base directory shared between checkouts.
unset CCACHE_BASEDIR CCACHE_NOHASHDIR
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros}
if [ ! -f "$build/build.ninja" ]; then
  flags="-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
  cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
    -DCMAKE_CXX_FLAGS="$flags" \
    -DCMAKE_SHARED_LINKER_FLAGS="-fsanitize=address,undefined" \
    -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=address,undefined" \
    -DTZ_FUZZ=ON -DTZ_BUILD_TESTS=OFF -DTZ_BUILD_APP=OFF -DTZ_BUILD_BENCH=OFF
fi
cmake --build "$build" -j "${TZ_JOBS:-2}" --target "${targets[@]}"

export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=0:abort_on_error=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
status=0
for t in "${targets[@]}"; do
  mkdir -p "$build/corpus/$t" "$build/findings/$t"
  echo "== $t for ${seconds}s"
  "$build/bin/$t" -max_total_time="$seconds" -max_len=65536 -timeout=20 -rss_limit_mb=4096 \
    -print_final_stats=1 -artifact_prefix="$build/findings/$t/" \
    "$build/corpus/$t" "$root/fuzz/corpus/$t" || status=1
done
exit $status
