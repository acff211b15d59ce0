#!/bin/bash
# processors.sh [TOOL [ROUNDS [DIRECTORY]]]: a job that spends its time on a look-up table of 65 points, on one processor
# and on two in turns. Prints the medians of the wall times and their ratio, and checks that the results are the same.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
tool=${1:-$root/build/release/bin/corvex}
rounds=${2:-5}
directory=${3:-$root/build/bench-transcode}
mkdir -p "$directory"

[ -s "$directory/raw.mov" ] || {
    ffmpeg -v error -nostdin -y -f lavfi -i "testsrc2=size=1920x1080:rate=25:duration=6" \
        -c:v rawvideo -pix_fmt uyvy422 "$directory/part.mov"
    mv "$directory/part.mov" "$directory/raw.mov"
}
. "$root/bench/transcode/material.sh"
look=$(makeLook 65)

rm -f "$directory/processors.0" "$directory/processors.0,1"
TIMEFORMAT=%R
for ((round = 0; round < rounds; ++round)); do
    for processors in 0 0,1; do
        { time taskset -c "$processors" "$tool" transcode -in "$directory/raw.mov" -out "$directory/$processors.mov" \
            -overwrite -vcodec mjpeg -clut "$look" >"$directory/output.txt" 2>&1; } \
            2>>"$directory/processors.$processors" || {
            cat "$directory/output.txt" >&2
            exit 1
        }
    done
done
cmp "$directory/0.mov" "$directory/0,1.mov"
median() { sort -n "$1" | awk '{ v[NR] = $1 } END { print (v[int((NR + 1) / 2)] + v[int(NR / 2) + 1]) / 2 }'; }
one=$(median "$directory/processors.0")
two=$(median "$directory/processors.0,1")
echo "one processor $one s, two $two s, ratio $(awk -v a="$one" -v b="$two" 'BEGIN { printf "%.2f", a / b }')"
