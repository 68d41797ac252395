#!/usr/bin/env bash
# Builds the library and runs the tour of what it offers.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/deps.sh
znutil_install_deps
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j2 --target tour
./build/examples/tour
