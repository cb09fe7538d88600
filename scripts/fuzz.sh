#!/usr/bin/env bash
# Builds the fuzzing targets (fuzz/NAME_fuzz.cpp) with clang's libFuzzer,
# AddressSanitizer and UndefinedBehaviorSanitizer into build-fuzz/, and runs
# each for SECONDS (default 60) from its seed corpus in fuzz/corpus/NAME/.
#   bash scripts/fuzz.sh [SECONDS] [NAME...]
# Inputs that find new paths gather in build-fuzz/corpus/NAME/; a crash, a
# leak or undefined behaviour leaves its input in build-fuzz/artifacts/ and
# makes the script end non-zero.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
shift || true
bash scripts/setup.sh --fuzz

targets=("$@")
if ((${#targets[@]} == 0)); then
  for source in fuzz/*_fuzz.cpp; do targets+=("$(basename "$source" _fuzz.cpp)"); done
fi
cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++-14 \
  -DTARNWICK_FUZZ=ON -DTARNWICK_BUILD_TESTS=OFF -DTARNWICK_BUILD_BENCH=OFF >/dev/null
cmake --build build-fuzz -j"$(nproc)" --target "${targets[@]/%/_fuzz}"

failed=()
mkdir -p build-fuzz/artifacts
for name in "${targets[@]}"; do
  mkdir -p "build-fuzz/corpus/$name"
  echo "== $name: ${seconds}s"
  if ! "build-fuzz/fuzz/${name}_fuzz" -max_total_time="$seconds" -print_final_stats=1 \
      -artifact_prefix="build-fuzz/artifacts/$name-" "build-fuzz/corpus/$name" "fuzz/corpus/$name"; then
    failed+=("$name")
  fi
done
if ((${#failed[@]})); then
  echo "Failed: ${failed[*]} (inputs in build-fuzz/artifacts/)"
  exit 1
fi
echo "All ${#targets[@]} targets ran ${seconds}s without a crash, a leak or undefined behaviour."
