#!/usr/bin/env bash
# Builds ZQCore with AddressSanitizer and UndefinedBehaviorSanitizer and runs the whole
# suite at 1 and 4 ranks. Open MPI's own start-up allocations are suppressed.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${ZQ_SANITIZE_BUILD_DIR:-$root/build-sanitize}

bash "$root/scripts/install-deps.sh"
# Warnings are enforced by the plain build; GCC 12 reports false maybe-uninitialized
# warnings inside libstdc++ under the sanitizers.
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZQ_SANITIZE=ON \
      -DZQ_BUILD_BENCHMARKS=OFF -DZQ_BUILD_EXAMPLES=OFF "-DZQ_TEST_RANKS=1;4"
cmake --build "$build" -j "$(nproc)"

export LSAN_OPTIONS="suppressions=$root/cmake/lsan.supp:fast_unwind_on_malloc=0:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
# The consumer check builds an unsanitized program against the sanitized library.
ctest --test-dir "$build" --output-on-failure -j "$(nproc)" -E '^package\.consumer$'
