#!/usr/bin/env bash
# Builds the Debian packages (libznutil0, libznutil-dev, and znutil-tools
# with the manual pages of znutil) into build/packages and checks them with
# lintian: any error fails. The warnings left are explained in
# docs/packaging.md.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/deps.sh
znutil_install_deps $znutil_package_tools
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j2 --target znutil znutil_tool znutil_manpages
rm -rf build/packages
cpack -G DEB --config build/CPackConfig.cmake -B build/packages >build/packages.log 2>&1 || { cat build/packages.log; exit 1; }
ls build/packages/*.deb
lintian --fail-on error build/packages/*.deb
