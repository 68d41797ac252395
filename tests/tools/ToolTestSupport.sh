# Shared by the end-to-end tests of the znutil tool: counts failures and
# compares a command's output and exit status. Sourced, not run.
failures=0

fail() {
  echo "FAIL $*"
  failures=$((failures + 1))
}

# check NAME EXPECTED_STATUS EXPECTED_OUTPUT -- COMMAND...
check() {
  local name=$1 status=$2 expected=$3
  shift 4
  local output actual
  output=$("$@" 2>&1)
  actual=$?
  if [ "$actual" != "$status" ] || [ "$output" != "$expected" ]; then
    fail "$name: status $actual (wanted $status)"
    echo "  got:    $(printf '%q' "$output")"
    echo "  wanted: $(printf '%q' "$expected")"
  fi
}

# Prints the verdict of the cases of `what` and exits with it.
finish() {
  [ $failures = 0 ] && echo "all $1 cases passed"
  exit $((failures > 0))
}
