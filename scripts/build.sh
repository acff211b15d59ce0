#!/bin/sh
# build.sh PRESET [-DNAME=VALUE...]: configures and builds a preset; the configuration's chatter only shows on failure.
set -eu
cd "$(dirname "$0")/.."
# Lets the compiler's cache, if there is one, serve every clone and worktree: paths below this directory count relatively.
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
preset=$1
shift
log=build/$preset/configure.log
mkdir -p "build/$preset"
echo "Configuring build/$preset"
cmake --preset "$preset" "$@" >"$log" 2>&1 || { cat "$log" >&2; exit 1; }
cmake --build --preset "$preset" --parallel "$(nproc)"
