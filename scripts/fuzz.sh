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
cmake --build build-fuzz -j2 --target regex_fuzz regex_memo_fuzz config_fuzz

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
mkdir -p build-fuzz/corpus/regex build-fuzz/corpus/regex-memo build-fuzz/corpus/config
# -timeout fails any single input that runs longer than 10 seconds: no
# input may hang the engine or the parser.
./build-fuzz/tests/regex/fuzz/regex_fuzz build-fuzz/corpus/regex -dict=tests/regex/fuzz/regex.dict \
  -max_total_time="$seconds" -timeout=10 -max_len=512 -artifact_prefix=build-fuzz/ -print_final_stats=1
# The memo of failed states against the plain backtracker: any difference
# in a result, a register or the rewritten program aborts.
./build-fuzz/tests/regex/fuzz/regex_memo_fuzz build-fuzz/corpus/regex-memo tests/regex/fuzz/memo-seeds \
  -dict=tests/regex/fuzz/regex.dict \
  -max_total_time="$seconds" -timeout=10 -max_len=512 -artifact_prefix=build-fuzz/memo- -print_final_stats=1
# New inputs go to the first folder; the committed seeds are only read.
./build-fuzz/tests/configuration/fuzz/config_fuzz build-fuzz/corpus/config tests/configuration/fuzz/seeds \
  -dict=tests/configuration/fuzz/config.dict \
  -max_total_time="$seconds" -timeout=10 -max_len=4096 -artifact_prefix=build-fuzz/config- -print_final_stats=1
