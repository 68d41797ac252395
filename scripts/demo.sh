#!/usr/bin/env bash
# Builds the library, runs the tour of what it offers, then shows the
# znutil command-line tool and the plug-in host at work.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/deps.sh
znutil_install_deps
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j2 --target tour znutil_tool plugin_host
./build/examples/tour

tool=./build/tools/znutil
echo "== The znutil tool"
echo "\$ znutil grep -n 'znutil (grep|version)' README.md | head -5"
"$tool" grep -n 'znutil (grep|version)' README.md | head -5 || true
sample=$(mktemp --suffix=.exe)
settings=$(mktemp --suffix=.cfg)
scratch=$(mktemp -d)
trap 'rm -f "$sample" "$settings"; rm -rf "$scratch"' EXIT
cp tests/system/images/sample.exe "$sample"
echo "\$ znutil version sample.exe --set-file-version 3.1.4.1"
"$tool" version "$sample" --set-file-version 3.1.4.1
echo "\$ znutil version sample.exe"
"$tool" version "$sample"
echo "\$ znutil cfg set app.cfg View Width 1024 --type integer; znutil cfg list app.cfg"
"$tool" cfg set "$settings" View Width 1024 --type integer
"$tool" cfg list "$settings"
echo "\$ znutil path expand '%STARTUPDIR%\\..\\share\\%APPNAME%'"
"$tool" path expand '%STARTUPDIR%\..\share\%APPNAME%'
echo "\$ znutil ps --name '^znutil\$'"
"$tool" ps --name '^znutil$'

echo "== The plug-in host (two runs; the plug-ins' settings last)"
for run in 1 2; do
  echo "\$ plugin_host host.cfg   # run $run"
  env -u PLUGINS -u PLUGINS_ORDER LOGDIR="$scratch" ZNUTIL_SYSTEM_DIR="$scratch" \
    ./build/examples/plugin-host/plugin_host "$scratch/host.cfg"
done
