#!/usr/bin/env bash
# End-to-end test of `znutil path`: output and exit status of each case.
# Usage: PathToolTest.sh PATH_TO_ZNUTIL
set -u
tool=$(readlink -f "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
. "$(dirname "$0")/ToolTestSupport.sh"

folder=$(dirname "$(readlink -f "$tool")")
parent=$(dirname "$folder")
mkdir -p "$work/a" "$work/b" "$work/c"
printf 'x' > "$work/b/tool.cfg"
printf 'x' > "$work/c/tool.cfg"
cd "$work"
export HOME=/home/tester

check "identity" 0 "znutil.cfg" -- "$tool" path expand '%AppName%.cfg'
check "start-up folder" 0 "${parent//\//\\}\\data" -- "$tool" path expand '%STARTUPDIR%\..\data'
check "native" 0 "$parent/data" -- "$tool" path expand --native '%startupdir%/../data'
check "fixed tokens" 0 "\\Tesserae_2.13${folder//\//\\}\\PLUGINS\\x" -- env -u PLUGINS -u PLUGINS_ORDER "$tool" path expand '\%appversion%%PLUGINDIR%\x'
check "plug-in folder" 0 '\p1\x' -- env -u PLUGINS_ORDER PLUGINS='\p1;\p2' "$tool" path expand '%PluginDir%\x'
check "home" 0 '\home\tester\.app' -- "$tool" path expand '%HOME%\.app'
check "home from the user" 0 '\home\bob' -- env -u HOME USERNAME=bob "$tool" path expand '%HOME%'
check "named paths" 0 '\srv\data\out;\opt' -- \
  "$tool" path expand --set Data=/srv/data --set=BIN=/opt '%data%\in\..\out;%Bin%'
check "built-ins win" 0 '\home\tester' -- "$tool" path expand --set home=/mine '%HOME%'
check "unknown and empty tokens" 0 '\ab' -- "$tool" path expand '\a%nothing%%%b'
check "unclosed mark" 0 '\x\..\' -- "$tool" path expand '\x\..\%HOME'
check "text after --" 0 '-x' -- "$tool" path expand -- -x

check "first folder wins" 0 "$work/c\\tool.cfg" -- "$tool" path search 'no/where/tool.cfg' "$work/a;$work/c;$work/b"
check "search native" 0 "$work/b/tool.cfg" -- "$tool" path search --native tool.cfg "$work/a;$work/b"
check "file as it stands" 0 'c/tool.cfg' -- "$tool" path search c/tool.cfg "$work/b"
check "a folder is no file" 1 '' -- "$tool" path search a "$work"
check "nothing found" 1 '' -- "$tool" path search missing.cfg "$work/a;$work/b"

check "relative" 0 '..\..\d\e' -- "$tool" path relative /A/b/c /a/D/e
check "relative native" 0 '../../d/e' -- "$tool" path relative --native /a/b/c /a/d/e
check "absolute" 0 'C:\a\c' -- "$tool" path absolute 'C:\a\b' '..\c'
check "absolute native" 0 '/a/c' -- "$tool" path absolute 'C:\a\b' '..\c' --native

check "missing action" 2 'znutil path: missing ACTION (try znutil path --help)' -- "$tool" path
check "unknown action" 2 "znutil path: unknown action 'frob' (try znutil path --help)" -- "$tool" path frob x
check "operand count" 2 'znutil path: search takes two paths (try znutil path --help)' -- "$tool" path search x
check "expand count" 2 'znutil path: expand takes one TEXT (try znutil path --help)' -- "$tool" path expand a b
check "set elsewhere" 2 'znutil path: --set is for expand only (try znutil path --help)' -- \
  "$tool" path relative --set a=b x y
check "set without value" 2 'znutil path: --set needs NAME=PATH (try znutil path --help)' -- "$tool" path expand x --set
check "bad set" 2 "znutil path: bad --set '=x' (expected NAME=PATH) (try znutil path --help)" -- \
  "$tool" path expand --set =x y
check "unknown option" 2 "znutil path: unknown option '-x' (try znutil path --help)" -- "$tool" path expand -x

helps 'Usage: znutil path expand*' path --help
helps 'Usage: znutil path expand*' path search --help

finish "znutil path"
