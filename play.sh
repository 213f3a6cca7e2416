#!/usr/bin/env bash
# Builds Quorbit with its generated content and starts it.
set -euo pipefail
cd "$(dirname "$0")"
scripts/deps.sh play
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUORBIT_TESTS=OFF -DQUORBIT_BENCH=OFF >/dev/null
cmake --build build
exec build/game/quorbit "$@"
