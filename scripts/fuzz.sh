#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (AddressSanitizer and
# UndefinedBehaviorSanitizer) in build-fuzz and runs each one briefly.
# Usage: scripts/fuzz.sh [seconds per target]   (default 60)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/deps.sh
znutil_packages="$znutil_packages libclang-rt-dev"
znutil_install_deps

seconds=${1:-60}
CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DZNUTIL_SANITIZE=address,undefined -DZNUTIL_BUILD_FUZZERS=ON \
  -DBUILD_TESTING=OFF -DZNUTIL_BUILD_BENCHMARKS=OFF -DZNUTIL_BUILD_EXAMPLES=OFF >/dev/null
cmake --build build-fuzz -j2 --target regex_fuzz

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
corpus=build-fuzz/corpus/regex
mkdir -p "$corpus"
# -timeout fails any single input that runs longer than 10 seconds: no
# input may hang the engine.
./build-fuzz/tests/regex/fuzz/regex_fuzz "$corpus" -dict=tests/regex/fuzz/regex.dict \
  -max_total_time="$seconds" -timeout=10 -max_len=512 -artifact_prefix=build-fuzz/ -print_final_stats=1
