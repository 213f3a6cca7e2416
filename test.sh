#!/usr/bin/env bash
# Builds Quorbit, its tools and tests, and runs every test.
set -euo pipefail
cd "$(dirname "$0")"
scripts/deps.sh test
dir="${QUORBIT_BUILD_DIR:-build-test}"
cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
cmake --build "$dir"
ctest --test-dir "$dir" --output-on-failure -j2
