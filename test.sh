#!/bin/sh
# Builds everything and runs the tests. Installs what it needs first (Debian packages, scripts/packages.txt).
set -eu
cd "$(dirname "$0")"
./scripts/install-packages.sh build run test
./scripts/build.sh release -DCORVEX_TESTS=ON
exec ctest --preset release --parallel "$(nproc)"
