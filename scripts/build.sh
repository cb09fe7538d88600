#!/usr/bin/env bash
# Configures and builds into build/ (targets may be named: build.sh tarnwick).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$(nproc)" ${1:+--target "$@"}
