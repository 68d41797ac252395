#!/usr/bin/env bash
# Runs every benchmark program once, briefly, so that benchmarks never stop
# building or running. The figures of such a run mean nothing.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/deps.sh
znutil_install_deps
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j2
status=0
for program in build/bench/*_bench; do
  if "$program" --benchmark_min_time=0.001 >/dev/null 2>"build/$(basename "$program").err"; then
    echo "ran $(basename "$program")"
  else
    echo "FAILED $(basename "$program"):" >&2
    cat "build/$(basename "$program").err" >&2
    status=1
  fi
done
exit $status
