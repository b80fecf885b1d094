#!/usr/bin/env bash
# Builds the simulator host and runs the demo in it.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVORLITH_TESTS=OFF -DVORLITH_BENCH=OFF
cmake --build build -j"$(nproc)"
echo "demo: nothing to run yet"
