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

# helps PATTERN ARGUMENTS...: the tool run with ARGUMENTS exits with 0 and
# prints what the glob PATTERN matches.
helps() {
  local pattern=$1 output status
  shift
  output=$("$tool" "$@")
  status=$?
  case "$output" in
    $pattern) [ $status = 0 ] || fail "$*: status $status" ;;
    *) fail "$*: $(printf '%q' "${output:0:80}")" ;;
  esac
}

# Prints the verdict of the cases of `what` and exits with it.
finish() {
  [ $failures = 0 ] && echo "all $1 cases passed"
  exit $((failures > 0))
}
