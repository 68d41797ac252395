#!/usr/bin/env bash
# End-to-end test of `znutil ps`, `znutil env` and `znutil reg`: output and
# exit status of each case.
# Usage: ProcessToolsTest.sh PATH_TO_ZNUTIL
set -u
tool=$1
work=$(mktemp -d)
child=
trap '[ -n "$child" ] && kill "$child" 2>/dev/null; rm -rf "$work"' EXIT
. "$(dirname "$0")/ToolTestSupport.sh"
export ZNUTIL_REGISTRY_DIR=$work/registry

# Polls `znutil ps` (up to 10 s) until a line for the child is there (or,
# with "gone", is not).
poll_child() {
  local deadline=$((SECONDS + 10))
  while [ $SECONDS -lt $deadline ]; do
    if "$tool" ps | grep -qE "^ *$child sleep$"; then [ "$1" = there ] && return 0
    else [ "$1" = gone ] && return 0; fi
    sleep 0.01
  done
  return 1
}

sleep 60 &
child=$!
poll_child there || fail "ps: the child $child never appeared as sleep"
"$tool" ps --name '^sl[e]+p$' | grep -qE "^ *$child sleep$" || fail "ps --name: the child is missing"
check "ps: nothing matches" 1 '' -- "$tool" ps --name 'no process is called this'
check "ps: bad pattern" 2 'znutil ps: Badly placed parenthesis' -- "$tool" ps --name '(sleep'
check "ps: missing pattern" 2 'znutil ps: --name needs a PATTERN' -- "$tool" ps --name
check "ps: unknown argument" 2 "znutil ps: unknown argument '-x' (try znutil ps --help)" -- "$tool" ps -x
kill "$child"
wait "$child" 2>/dev/null
poll_child gone || fail "ps: the child $child is still listed after its end"
child=

check "env: set" 0 'abc def' -- env ZN_TOOL_TEST='abc def' "$tool" env ZN_TOOL_TEST
check "env: unset" 1 '' -- env -u ZN_TOOL_TEST "$tool" env ZN_TOOL_TEST
check "env: empty counts as unset" 1 '' -- env ZN_TOOL_TEST= "$tool" env ZN_TOOL_TEST
check "env: setting shows the result" 0 'ZN_TOOL_TEST=new' -- env ZN_TOOL_TEST=old "$tool" env ZN_TOOL_TEST new
check "env: an empty value removes" 1 'ZN_TOOL_TEST=' -- env ZN_TOOL_TEST=old "$tool" env ZN_TOOL_TEST ''
check "env: bad name" 2 "znutil env: bad variable name 'A=B'" -- "$tool" env A=B
check "env: no name" 2 'znutil env: expected NAME [VALUE] (try znutil env --help)' -- "$tool" env

check "reg: missing value" 1 '' -- "$tool" reg get HKCU 'Software\Acme' Colour
check "reg: set" 0 '' -- "$tool" reg set HKCU 'Software\Acme' Colour 'dark red'
check "reg: get, any case and separator" 0 'dark red' -- "$tool" reg get hkey_current_user software/ACME colour
[ -f "$ZNUTIL_REGISTRY_DIR/HKEY_CURRENT_USER/software/acme/@colour" ] || fail "reg: no value file where documented"
check "reg: other root" 1 '' -- "$tool" reg get HKLM 'Software\Acme' Colour
check "reg: unknown root" 2 "znutil reg: unknown root 'HKXX' (HKCR, HKCU, HKLM or HKU)" -- "$tool" reg get HKXX a b
check "reg: bad arguments" 2 \
  'znutil reg: expected get ROOT KEY NAME or set ROOT KEY NAME VALUE (try znutil reg --help)' -- "$tool" reg get HKCU a
touch "$work/file"
check "reg: unwritable store" 2 'znutil reg: cannot write HKEY_USERS\k\v' -- \
  env ZNUTIL_REGISTRY_DIR="$work/file/registry" "$tool" reg set HKU k v x

for command in ps env reg; do helps "Usage: znutil $command*" $command --help; done

finish "znutil ps, env and reg"
