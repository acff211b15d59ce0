#!/bin/bash
# memory.sh [TOOL [DIRECTORY]]: the peak of resident memory of a job with a look and burnt-in timecode, by the length of
# its clip: it must not grow with it. Full HD to the cloud preset's size for 10 s and 60 s, a small raster for ten minutes
# more, there also with few pictures in flight.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
tool=${1:-$root/build/release/bin/corvex}
directory=${2:-$root/build/bench-transcode}
mkdir -p "$directory"
. "$root/bench/transcode/material.sh"
look=$(makeLook 33)

# peak SECONDS SIZE WORD...
peak() {
    local clip
    clip=$(makeClip "$1" "$2")
    /usr/bin/time -o "$directory/time.txt" -f %M "$tool" transcode -in "$clip" -out "$directory/ours.mov" -overwrite \
        -preset orvane_cloud -clut "$look" -tc_burn "${@:3}" >"$directory/output.txt" 2>&1 || {
        cat "$directory/output.txt" >&2
        exit 1
    }
    awk -v what="$*" '{ printf "%5.0f MB  %s\n", $1 / 1024, what }' "$directory/time.txt"
}
for seconds in 10 60; do peak $seconds 1920x1080; done
for seconds in 10 60 600; do peak $seconds 320x180 -dims 320x180; done
for seconds in 10 60 600; do peak $seconds 320x180 -dims 320x180 -v_frame_cap 4; done
