# Installs the Debian packages the build needs, when one is missing.
# Sourced by the other scripts.
znutil_packages="cmake ninja-build g++ clang libgtest-dev libgmock-dev libbenchmark-dev"
# Peers that only the benchmarks measure against; the library needs none.
znutil_packages="$znutil_packages pkg-config libglib2.0-dev libinih-dev"
# Benchmark peer of ZnLogger (bench/logger_bench.cpp); the library does not use it.
znutil_packages="$znutil_packages libspdlog-dev"

# Only scripts/package.sh makes manual pages and checks the Debian packages.
znutil_package_tools="help2man lintian"
# Only scripts/docs.sh builds the API reference (python3 runs its header filter).
znutil_docs_tools="doxygen python3"

# Usage: znutil_install_deps [more packages...]
znutil_install_deps() {
  local missing=""
  for package in $znutil_packages "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "ok installed" || missing="$missing $package"
  done
  [ -z "$missing" ] && return 0
  echo "Installing:$missing"
  local sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get update -q
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -q $missing
}
