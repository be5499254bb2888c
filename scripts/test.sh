#!/usr/bin/env bash
# Sets up, builds, and runs the whole test suite twice: as built, and under
# AddressSanitizer with UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
jobs=$(nproc 2>/dev/null || echo 2)

echo "== tests"
(cd build && ctest --output-on-failure -j"$jobs")

echo "== tests under ASan+UBSan"
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug -DTQ_SANITIZE=ON -DTQ_BUILD_BENCH=OFF >/dev/null
cmake --build build-asan -j"$jobs"
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
(cd build-asan && ctest --output-on-failure -j"$jobs")
