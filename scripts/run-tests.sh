#!/usr/bin/env bash
# Installs what is missing, builds ZQCore with warnings as errors and runs every test,
# serial and multi-process (1, 2 and 4 ranks).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${ZQ_BUILD_DIR:-$root/build}

bash "$root/scripts/install-deps.sh"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DZQ_WARNINGS_AS_ERRORS=ON
cmake --build "$build" -j "$(nproc)"
ctest --test-dir "$build" --output-on-failure -j "$(nproc)"
