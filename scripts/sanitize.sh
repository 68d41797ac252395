#!/usr/bin/env bash
# Runs the tests under sanitizers: every suite under AddressSanitizer with
# UndefinedBehaviorSanitizer, the threaded ones under ThreadSanitizer.
# Usage: scripts/sanitize.sh [asan|tsan]...   (default: both)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/deps.sh
znutil_install_deps

run_suite() {
  local name=$1 sanitizers=$2 selection=$3
  local dir=build-$name
  cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DZNUTIL_SANITIZE="$sanitizers" \
    -DZNUTIL_BUILD_BENCHMARKS=OFF -DZNUTIL_BUILD_EXAMPLES=OFF >/dev/null
  cmake --build "$dir" -j2
  # shellcheck disable=SC2086
  ctest --test-dir "$dir" --output-on-failure -j2 $selection
}

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:strict_string_checks=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1

for suite in "${@:-asan tsan}"; do
  for s in $suite; do
    case $s in
      asan) run_suite asan address,undefined "-LE install" ;;
      tsan) run_suite tsan thread "-L threaded" ;;
      *) echo "unknown suite: $s" >&2; exit 2 ;;
    esac
  done
done
