#!/usr/bin/env bash
# Installs what is missing, builds everything and runs the test suite.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
cd build
ctest --output-on-failure -j"$(nproc)"
