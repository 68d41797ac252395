#!/usr/bin/env bash
# Rebuilds sample.exe, the 32-bit Windows image the tests read, from
# sample.c and sample.rc with Debian's mingw-w64 toolchain:
#   apt-get install -y gcc-mingw-w64-i686 binutils-mingw-w64-i686
# This is not part of the normal build: the committed sample.exe is what the
# tests use, so that they need no cross compiler.
set -euo pipefail
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
i686-w64-mingw32-windres --language=0x409 -O coff -i sample.rc -o "$work/sample.res.o"
# No C runtime: the entry point calls ExitProcess itself, which keeps the
# image a few kilobytes small. --no-insert-timestamp makes it reproducible.
i686-w64-mingw32-gcc -Os -s -nostdlib -fno-asynchronous-unwind-tables -e _SampleEntry@0 -Wl,--no-insert-timestamp \
  -o sample.exe sample.c "$work/sample.res.o" -lkernel32
ls -l sample.exe
