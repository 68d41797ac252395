#!/usr/bin/env bash
# Makes the manual pages of the znutil command from its --help texts:
# znutil.1 and znutil-COMMAND.1 for each command that `znutil --help`
# lists, compressed as Debian installs them.
# Usage: make-manpages.sh ZNUTIL OUTPUT_DIR VERSION
set -euo pipefail
tool=$(realpath "$1") out=$2 version=$3
rm -rf "$out"
mkdir -p "$out"

# help2man names the page after the program it runs: a script of the
# page's name that prints the help, with each further usage line marked
# "or:" as help2man reads them.
page() {
  local name=$1 summary=$2
  shift 2
  printf '#!/bin/sh\n"%s" %s | sed "s/^       znutil /  or: znutil /"\n' "$tool" "$*" >"$out/$name"
  chmod +x "$out/$name"
  help2man --no-info --section=1 --version-string="$version" --name="$summary" "$out/$name" >"$out/$name.1"
  rm "$out/$name"
  gzip -9n "$out/$name.1"
}

page znutil "command-line tools over the znutil library" --help
"$tool" --help | sed -n 's/^  \([a-z][a-z]*\)  *\(.*\)$/\1\t\2/p' | while IFS=$'\t' read -r command summary; do
  page "znutil-$command" "$summary" "$command" --help
done
