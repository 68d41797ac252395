#!/usr/bin/env bash
# End-to-end test of `znutil grep`: output and exit status of each case.
# Usage: GrepToolTest.sh PATH_TO_ZNUTIL
set -u
tool=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
. "$(dirname "$0")/ToolTestSupport.sh"

printf 'The cat sat\non the mat.\nA Dog barked\n(cat)\n' > "$work/a.txt"
printf 'report.txt\nreport.txt.bak\nnotes.TXT\n' > "$work/names.txt"
printf 'dog\n' > "$work/b.txt"
# Line 2 needs more than the 4,100 failure entries: one a round, two per a.
{ echo ab; head -c 3000 /dev/zero | tr '\0' a; echo; echo b; } > "$work/long.txt"

cd "$work"
check "literal folds case" 0 $'The cat sat\n(cat)' -- "$tool" grep cat a.txt
check "set and anchors" 0 'A Dog barked' -- "$tool" grep '^a d[aeiou]g' a.txt
check "line numbers" 0 $'1:The cat sat\n2:on the mat.' -- "$tool" grep -n 'at$|at\.$' a.txt
check "count" 0 '2' -- "$tool" grep -c 'cat' a.txt
check "invert" 0 $'on the mat.\nA Dog barked' -- "$tool" grep -v cat a.txt
check "grouped flags" 0 '2' -- "$tool" grep -vc cat a.txt
check "several files" 0 $'a.txt:A Dog barked\nb.txt:dog' -- "$tool" grep dog a.txt b.txt
check "count per file" 0 $'a.txt:1\nb.txt:1' -- "$tool" grep -c dog a.txt b.txt
check "standard input" 0 'x1' -- sh -c "printf 'x1\ny2\n' | '$tool' grep x"
check "dash is standard input" 0 '(standard input):y2' -- sh -c "printf 'y2\n' | '$tool' grep y - b.txt"
check "glob" 0 $'report.txt\nnotes.TXT' -- "$tool" grep --glob '*.txt' names.txt
check "escaped parenthesis" 0 '(cat)' -- "$tool" grep '\(cat\)' a.txt
check "dash dash ends options" 1 '' -- "$tool" grep -- -v a.txt
gaveup='znutil grep: long.txt:2: the pattern needs too much backtracking'
check "gave up among matches" 2 $'ab\n'"$gaveup"$'\nb' -- "$tool" grep '(a|b)*b' long.txt
check "gave up counts nothing" 2 "$gaveup"$'\n0' -- "$tool" grep -vc '(a|b)*b' long.txt
check "nothing selected" 1 '' -- "$tool" grep zebra a.txt
check "bad pattern" 2 'znutil grep: Badly placed parenthesis' -- "$tool" grep '(cat' a.txt
check "bad operator" 2 'znutil grep: Badly placed special character' -- "$tool" grep '*cat' a.txt
check "missing file" 2 'znutil grep: nofile: No such file or directory' -- "$tool" grep cat nofile
check "missing pattern" 2 'znutil grep: missing PATTERN (try znutil grep --help)' -- "$tool" grep
check "unknown option" 2 "znutil grep: unknown option '-x' (try znutil grep --help)" -- "$tool" grep -x cat
check "glob without wildcard" 2 'znutil grep: --glob needs a WILDCARD' -- "$tool" grep --glob
check "unknown command" 2 "znutil: unknown command 'frob' (try znutil --help)" -- "$tool" frob
check "no command" 2 "$("$tool" 2>&1)" -- "$tool"

helps 'Usage: znutil grep*' grep --help
helps '*grep *' --help

finish "znutil grep"
