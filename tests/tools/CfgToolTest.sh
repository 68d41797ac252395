#!/usr/bin/env bash
# End-to-end test of `znutil cfg`: output, files written and exit status.
# Usage: CfgToolTest.sh PATH_TO_ZNUTIL
set -u
tool=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
. "$(dirname "$0")/ToolTestSupport.sh"

cd "$work"
printf '# hand-made\nsection "Net" "Port" = (integer) 80\n"Port" (alpha7) = (integer) 8080\n"Host" = "a \\"b\\""\n' > hand.cfg
printf 'section "Bad" "Key" =\n' > bad.cfg
mkdir folder

check "set integer makes the file" 0 '' -- "$tool" cfg set new.cfg View Width 1024 --type integer
check "set binary" 0 '' -- "$tool" cfg set new.cfg View Pattern x01,x2,XFF --type binary
check "set float" 0 '' -- "$tool" cfg set new.cfg View Scale 1.5 --type float
check "set text by default" 0 '' -- "$tool" cfg set new.cfg Names Title 'tab	and "quote"'
check "written in the library's form" 0 "$(printf 'section "Names"\r\n"Title" (all) =(text) "tab\\tand \\"quote\\""\r\n\r\nsection "View"\r\n"Pattern" (all) =(binary) x01,x02,xff\r\n"Scale" (all) =(float) x00,x00,xc0,x3f\r\n"Width" (all) =(integer) 1024\r\n\r')" -- cat new.cfg
check "get integer" 0 '1024' -- "$tool" cfg get new.cfg view WIDTH
check "get float" 0 '1.5' -- "$tool" cfg get new.cfg View Scale
check "get binary" 0 'x01,x02,xff' -- "$tool" cfg get new.cfg View Pattern
check "get machine" 0 '8080' -- "$tool" cfg get hand.cfg Net Port --machine alpha7
check "get falls back to all" 0 '80' -- "$tool" cfg get hand.cfg Net Port --machine beta
check "get missing entry" 1 '' -- "$tool" cfg get hand.cfg Net Nothing
check "get missing section" 1 '' -- "$tool" cfg get hand.cfg Other Port
check "list" 0 "$(printf 'Net\tHost\tall\ttext\t"a \\"b\\""\nNet\tPort\tall\tinteger\t80\nNet\tPort\talpha7\tinteger\t8080')" -- "$tool" cfg list hand.cfg
check "list one section" 0 "$(printf 'View\tPattern\tall\tbinary\tx01,x02,xff\nView\tScale\tall\tfloat\t1.5\nView\tWidth\tall\tinteger\t1024')" -- "$tool" cfg list new.cfg view
check "list missing section" 2 "znutil cfg: no section 'Other'" -- "$tool" cfg list new.cfg Other
check "check good" 0 'hand.cfg: no errors' -- "$tool" cfg check hand.cfg
check "check bad" 1 $'error: Configuration File Syntax error.\nError in file bad.cfg on line 2' -- "$tool" cfg check bad.cfg
printf 'section "Odd" "Key" = @ "v"\n' > odd.cfg
check "check unknown character" 1 $'error: Configuration File parser is jammed.\nError in file odd.cfg on line 1\nThe token that was read is \'@\'' -- "$tool" cfg check odd.cfg
check "set refuses a broken file" 2 "znutil cfg: 'bad.cfg' has errors (see znutil cfg check bad.cfg)" -- "$tool" cfg set bad.cfg A B c
check "broken file unchanged" 0 'section "Bad" "Key" =' -- cat bad.cfg
check "set keeps other machines" 0 '' -- "$tool" cfg set hand.cfg Net Port 81 --type integer
check "other machine kept" 0 '8080' -- "$tool" cfg get hand.cfg Net Port --machine alpha7
check "all changed" 0 '81' -- "$tool" cfg get hand.cfg Net Port
check "bad integer" 2 "znutil cfg: bad integer '12x'" -- "$tool" cfg set new.cfg A B 12x --type integer
check "integer out of range" 2 "znutil cfg: bad integer '4294967296'" -- "$tool" cfg set new.cfg A B 4294967296 --type integer
check "bad float" 2 "znutil cfg: bad float 'one'" -- "$tool" cfg set new.cfg A B one --type float
check "bad binary" 2 "znutil cfg: bad binary value '01,02' (expected x01,x02)" -- "$tool" cfg set new.cfg A B 01,02 --type binary
check "empty binary" 2 "znutil cfg: bad binary value '' (expected x01,x02)" -- "$tool" cfg set new.cfg A B '' --type binary
check "unknown type" 2 "znutil cfg: unknown type 'bool' (expected text, integer, float or binary)" -- "$tool" cfg set new.cfg A B 1 --type bool
check "unprintable text" 2 'znutil cfg: text values hold printable ASCII, tabs and line ends only' -- "$tool" cfg set new.cfg A B $'caf\xc3\xa9'
check "quote in a name" 2 'znutil cfg: names may not hold quotes, backslashes or line ends' -- "$tool" cfg set new.cfg 'A"' B c
check "negative integer is no option" 0 '' -- "$tool" cfg set new.cfg A B -5 --type integer
check "negative read back" 0 '-5' -- "$tool" cfg get new.cfg A B
check "unwritable" 2 "znutil cfg: cannot write 'hand.cfg/x.cfg'" -- "$tool" cfg set hand.cfg/x.cfg A B c
check "missing file" 2 "znutil cfg: no such file 'none.cfg'" -- "$tool" cfg get none.cfg A B
check "folder" 2 "znutil cfg: 'folder' is a folder" -- "$tool" cfg list folder
check "missing operands" 2 'znutil cfg: missing operands (try znutil cfg get --help)' -- "$tool" cfg get new.cfg A
check "too many operands" 2 'znutil cfg: too many operands (try znutil cfg check --help)' -- "$tool" cfg check a b
check "unknown option" 2 "znutil cfg: unknown option '--machine' (try znutil cfg set --help)" -- "$tool" cfg set new.cfg A B c --machine x
check "option without value" 2 'znutil cfg: --type needs a value (try znutil cfg set --help)' -- "$tool" cfg set new.cfg A B c --type
check "unknown action" 2 "znutil cfg: unknown action 'frob' (try znutil cfg --help)" -- "$tool" cfg frob
check "no action" 2 'znutil cfg: missing ACTION (try znutil cfg --help)' -- "$tool" cfg

for action in "" get set list check; do helps "Usage: znutil cfg ${action}*" cfg $action --help; done

finish "znutil cfg"
