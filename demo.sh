#!/bin/sh
# Builds the tool and shows it at work: a clip and a look-up table are made, the clip is transcoded with two presets and
# through the table, and the results are measured.
# Installs what it needs first (Debian packages, scripts/packages.txt).
set -eu
cd "$(dirname "$0")"
./scripts/install-packages.sh build run
./scripts/build.sh release -DCORVEX_TESTS=OFF
exec ./scripts/demo-run.sh
