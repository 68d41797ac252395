#!/usr/bin/env bash
# Builds everything and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/deps.sh
znutil_install_deps
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j2
ctest --test-dir build --output-on-failure -j2
