#!/bin/sh
# fuzz.sh SECONDS [TARGET...]: runs each fuzzer for so long, starting from fuzz/corpus/<target>. What it finds worth
# keeping goes to build/fuzz/corpus/<target>, inputs that fail to build/fuzz/failures.
set -eu
cd "$(dirname "$0")/.."
seconds=$1
shift
./scripts/build.sh fuzz
[ $# -gt 0 ] || set -- $(ls fuzz/*.cpp 2>/dev/null | sed 's|.*/||; s|\.cpp$||')
mkdir -p build/fuzz/failures
for target in "$@"; do
    found=build/fuzz/corpus/$target
    mkdir -p "$found"
    seeds=fuzz/corpus/$target
    [ -d "$seeds" ] || seeds=
    echo "== $target, $seconds s"
    "build/fuzz/bin/$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix=build/fuzz/failures/ "$found" $seeds
done
