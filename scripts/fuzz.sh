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
cmake --build build-fuzz -j2 --target regex_fuzz regex_memo_fuzz config_fuzz image_fuzz stream_fuzz path_fuzz

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

# fuzz NAME BINARY [SEEDS] [OPTIONS...]: new inputs go to
# build-fuzz/corpus/NAME; the committed seeds are only read. -timeout fails
# any single input that runs longer than 10 seconds: no input may hang.
fuzz() {
  local name=$1 binary=$2 seeds=$3
  shift 3
  mkdir -p "build-fuzz/corpus/$name"
  "./build-fuzz/tests/$binary" "build-fuzz/corpus/$name" $seeds "$@" \
    -max_total_time="$seconds" -timeout=10 -artifact_prefix="build-fuzz/$name-" -print_final_stats=1
}

fuzz regex regex/fuzz/regex_fuzz "" -dict=tests/regex/fuzz/regex.dict -max_len=512
# The memo of failed states against the plain backtracker: any difference
# in a result, a register or the rewritten program aborts.
fuzz regex-memo regex/fuzz/regex_memo_fuzz tests/regex/fuzz/memo-seeds -dict=tests/regex/fuzz/regex.dict -max_len=512
fuzz config configuration/fuzz/config_fuzz tests/configuration/fuzz/seeds \
  -dict=tests/configuration/fuzz/config.dict -max_len=4096
fuzz image system/fuzz/image_fuzz tests/system/fuzz/image-seeds -max_len=8192
fuzz stream values/fuzz/stream_fuzz tests/values/fuzz/seeds -max_len=1024
fuzz path system/fuzz/path_fuzz tests/system/fuzz/path-seeds -max_len=1024
