#!/usr/bin/env bash
# Installs what is missing, builds everything and runs the test suite.
#   bash scripts/test.sh              into build/
#   bash scripts/test.sh --sanitize   into build-sanitize/, with AddressSanitizer
#                                     and UndefinedBehaviorSanitizer; any
#                                     report fails the test that caused it
set -euo pipefail
cd "$(dirname "$0")/.."
if [[ "${1:-}" != "--sanitize" ]]; then
  bash scripts/build.sh
  cd build
  ctest --output-on-failure -j"$(nproc)"
  exit
fi
bash scripts/setup.sh
cmake -S . -B build-sanitize -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTARNWICK_SANITIZE=ON \
  -DTARNWICK_BUILD_BENCH=OFF >/dev/null
cmake --build build-sanitize -j"$(nproc)"
cd build-sanitize
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:strict_string_checks=1:detect_stack_use_after_return=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
ctest --output-on-failure -j"$(nproc)"
