#!/usr/bin/env bash
# Builds the API reference into build/docs/html with Doxygen: the public
# headers (each header's opening comment documents its class, the ///
# comments its members), the README as the main page, the examples as pages.
# Fails when a public class has no documentation; the other warnings are
# left in build/docs/warnings.log.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/deps.sh
znutil_install_deps $znutil_docs_tools
rm -rf build/docs
mkdir -p build/docs
doxygen docs/api/Doxyfile
if grep "Compound .* is not documented" build/docs/warnings.log >&2; then
  echo "docs: the public classes above have no documentation" >&2
  exit 1
fi
echo "API reference: build/docs/html/index.html ($(wc -l <build/docs/warnings.log) other warnings in build/docs/warnings.log)"
