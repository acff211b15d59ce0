#!/bin/sh
# build.sh PRESET [-DNAME=VALUE...]: configures and builds a preset; the configuration's chatter only shows on failure.
set -eu
cd "$(dirname "$0")/.."
preset=$1
shift
log=build/$preset/configure.log
mkdir -p "build/$preset"
echo "Configuring build/$preset"
cmake --preset "$preset" "$@" >"$log" 2>&1 || { cat "$log" >&2; exit 1; }
cmake --build --preset "$preset" --parallel "$(nproc)"
