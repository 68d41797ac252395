#!/usr/bin/env bash
# End-to-end test of every znutil command under bad input: missing files,
# folders, empty files, binary garbage, very long arguments and lines, and
# unknown options. Each refusal is one line on standard error naming the
# command, with exit status 2 and nothing on standard output, and a refused
# change leaves the file as it was. Each command's own test checks the
# exact texts of its refusals.
# Usage: BadInputToolTest.sh PATH_TO_ZNUTIL
set -u
tool=$1
sample="$(cd "$(dirname "$0")/../system/images" && pwd)/sample.exe"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
. "$(dirname "$0")/ToolTestSupport.sh"
export ZNUTIL_REGISTRY_DIR=$work/registry HOME=$work

# refuses NAME COMMAND ARGUMENTS...: status 2, no output, and one line on
# standard error that begins with "znutil COMMAND: ".
refuses() {
  local name=$1 command=$2
  shift
  local output errors status
  output=$("$tool" "$@" 2>"$work/errors")
  status=$?
  errors=$(cat "$work/errors")
  if [ $status != 2 ] || [ -n "$output" ] || [ "$(wc -l <"$work/errors")" != 1 ] ||
    [ "${errors#"znutil $command: "}" = "$errors" ]; then
    fail "$name: status $status (wanted 2), output $(printf '%q' "${output:0:80}")"
    echo "  errors: $(printf '%q' "${errors:0:200}")"
  fi
}

# unchanged NAME FILE COPY: the file still holds what its copy holds.
unchanged() { cmp -s "$2" "$3" || fail "$1: the file changed"; }

cd "$work"
mkdir folder
: >empty
for i in $(seq 0 255); do printf "\\$(printf %o "$i")"; done >garbage
head -c 200000 /dev/zero | tr '\0' a >longline
long=$(head -c 100000 /dev/zero | tr '\0' x)
cp "$sample" sample.exe
head -c 2000 sample.exe >truncated.exe
cp garbage garbage.orig
cp truncated.exe truncated.orig
cp sample.exe sample.orig

for command in grep version path ps env reg cfg; do
  refuses "$command: unknown option" "$command" --no-such-option
done
refuses "path: unknown option after the action" path expand --no-such-option
refuses "cfg: unknown option after the action" cfg get --no-such-option

refuses "grep: folder" grep x folder
refuses "grep: very long file name" grep x "$long"
refuses "grep: pattern too complex" grep "$(printf '(a%.0s' $(seq 5000))$(printf ')%.0s' $(seq 5000))" longline
check "grep: a folder among files still reports the others" 2 $'znutil grep: folder: Is a directory\nempty:0\nlongline:1' \
  -- "$tool" grep -c a folder empty longline
check "grep: empty file" 1 '' -- "$tool" grep x empty
check "grep: very long line" 0 200001 -- sh -c "'$tool' grep 'a\$' longline | wc -c"
check "grep: very long pattern" 1 '' -- "$tool" grep "$long" longline
"$tool" grep -c . garbage >/dev/null 2>&1
[ $? -lt 2 ] || fail "grep: binary garbage"

refuses "version: binary garbage" version garbage
refuses "version: long line" version longline
refuses "version: very long file name" version "$long"
refuses "version: stamp into garbage" version --set-file-version 1.2 garbage
unchanged "version: garbage after a refused stamp" garbage garbage.orig
refuses "version: stamp into a truncated image" version --set-product-version 3 truncated.exe
unchanged "version: truncated image after a refused stamp" truncated.exe truncated.orig
refuses "version: very long stamp" version --set-file-version "$long" sample.exe
refuses "version: unknown option after a stamp" version --set-file-version 1.2 --no-such-option sample.exe
unchanged "version: image after refused stamps" sample.exe sample.orig

refuses "cfg: folder" cfg check folder
refuses "cfg: binary garbage" cfg list garbage
check "cfg: zero byte" 2 "znutil cfg: 'garbage' is not a text file (it holds a zero byte)" -- "$tool" cfg check garbage
refuses "cfg: long line" cfg get longline A B
refuses "cfg: very long file name" cfg list "$long"
refuses "cfg: set into garbage" cfg set garbage A B c
unchanged "cfg: garbage after a refused set" garbage garbage.orig
refuses "cfg: set into a folder that is missing" cfg set missing/new.cfg A B c
[ -e missing ] && fail "cfg: a refused set left missing/ behind"
refuses "cfg: bad value" cfg set empty A B 1x --type integer
[ -s empty ] && fail "cfg: a refused set wrote into the empty file"
check "cfg: empty file" 0 'empty: no errors' -- "$tool" cfg check empty
check "cfg: very long names and value" 0 '' -- "$tool" cfg set long.cfg "$long" "$long" "$long"
check "cfg: read back" 0 "$long" -- "$tool" cfg get long.cfg "$long" "$long"

refuses "path: missing operand" path absolute x
check "path: very long path" 0 "\\$long" -- "$tool" path expand "\\$long"
check "path: very long paths, same place" 0 '.' -- "$tool" path relative "$long" "$long"

check "ps: very long pattern" 1 '' -- "$tool" ps --name "$long"

check "env: very long name" 1 '' -- "$tool" env "$long"

refuses "reg: very long key" reg set HKCU "$long" a b
refuses "reg: very long name" reg set HKCU Software "$long" b
[ -e "$ZNUTIL_REGISTRY_DIR/HKEY_CURRENT_USER/Software" ] && ls -R "$ZNUTIL_REGISTRY_DIR" | grep -q '@' &&
  fail "reg: a refused set left a value behind"
check "reg: very long key read" 1 '' -- "$tool" reg get HKCU "$long" a
check "reg: very long value" 0 '' -- "$tool" reg set HKCU Software v "$long"
check "reg: very long value read back" 0 "$long" -- "$tool" reg get HKCU Software v

# survives NAME ARGUMENTS...: an answer or a one-line refusal, never a crash.
survives() {
  local name=$1 status
  shift
  "$tool" "$@" >/dev/null 2>"$work/errors"
  status=$?
  if [ $status -gt 2 ] || { [ $status = 2 ] && [ "$(wc -l <"$work/errors")" != 1 ]; }; then
    fail "$name: status $status"
  fi
}

junk=$(tr -d '\000\n' <garbage)
survives "grep: garbage pattern" grep "$junk" garbage
survives "version: garbage name" version "$junk"
survives "path: garbage to expand" path expand "$junk"
survives "path: garbage paths" path relative "$junk" "x$junk"
survives "ps: garbage pattern" ps --name "$junk"
survives "env: garbage name" env "$junk"
survives "reg: garbage key" reg get HKCU "$junk" "$junk"
survives "cfg: garbage names" cfg get "$junk" "$junk" "$junk"
survives "cfg: garbage value" cfg set junk.cfg A B "$junk"

# Permission bits do not stop root from reading, so unreadable files are
# tried only as another user.
if [ "$(id -u)" != 0 ]; then
  cp sample.exe locked.exe
  printf 'section "S" "K" = "v"\n' >locked.cfg
  chmod 000 locked.exe locked.cfg
  refuses "grep: unreadable file" grep x locked.cfg
  refuses "cfg: unreadable file" cfg get locked.cfg S K
  refuses "cfg: set into an unreadable file" cfg set locked.cfg S K w
  refuses "version: unreadable file" version locked.exe
else
  echo "skipped: unreadable files (running as root)"
fi

finish "znutil bad input"
