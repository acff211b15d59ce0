#!/bin/bash
# compare.sh [TOOL [ROUNDS [DIRECTORY]]]: whole jobs of the tool beside Debian's ffmpeg program with the same encoders and
# settings. The two take turns; printed are medians of wall and processor time, ratios of the medians and of the fastest
# runs (below 1: the tool is faster), and the highest peak of resident memory. The processor time of the tool is that of
# host and worker together, its peak that of the worker.
# JOBS="cloud daily" in the environment chooses among the jobs.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
tool=${1:-$root/build/release/bin/corvex}
rounds=${2:-5}
directory=${3:-$root/build/bench-transcode}
mkdir -p "$directory"

. "$root/bench/transcode/material.sh"

read -r -a names <<<"${JOBS:-cloud 4444xq h265 dnxhrhq daily}"
declare -A seconds=([cloud]=12 [4444xq]=3 [h265]=3 [dnxhrhq]=12 [daily]=60)  # the slow encoders have enough in less
declare -A ours theirs
ours[cloud]="-preset orvane_cloud"
theirs[cloud]="-c:v libx264 -b:v 3M -vf scale=960:540:flags=bicubic,format=yuv420p -c:a aac -ar 48000 -movflags +faststart"
ours[4444xq]="-preset orvane_4444xq"
theirs[4444xq]="-c:v prores_ks -profile:v 4444xq -pix_fmt yuv444p10le -c:a pcm_s16le"
ours[h265]="-vcodec h265 -acodec lpcm"
theirs[h265]="-c:v libx265 -tag:v hvc1 -x265-params log-level=none -pix_fmt yuv420p -c:a pcm_s16le"
ours[dnxhrhq]="-vcodec dnxhrhq -acodec lpcm"
theirs[dnxhrhq]="-c:v dnxhd -profile:v dnxhr_hq -pix_fmt yuv422p -c:a pcm_s16le"

# A proxy with a look and its timecode in the picture.
look=$(makeLook 33)
ours[daily]="${ours[cloud]} -clut $look -tc_burn -tc_custom 01:00:00:00 -tc_burn_size 27"
theirs[daily]="${theirs[cloud]/,format=/,lut3d=file=$look:interp=trilinear,drawtext=fontfile=/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf:timecode=01\\\\:00\\\\:00\\\\:00:rate=25:fontsize=27:fontcolor=white:box=1:boxcolor=black:x=(w-tw)/2:y=h-th-27,format=}"

# measure FILE COMMAND...: appends "wall processor kilobytes", times in seconds.
measure() {
    local file=$1
    shift
    /usr/bin/time -o "$directory/time.txt" -f '%e %U %S %M' "$@" >"$directory/output.txt" 2>&1 || {
        cat "$directory/output.txt" >&2
        exit 1
    }
    awk '{ print $1, $2 + $3, $4 }' "$directory/time.txt" >>"$file"
}
# pick COLUMN WHICH FILE: the median, the least or the most of a column.
pick() {
    cut -d ' ' -f "$1" "$3" | sort -n | awk -v which="$2" '{ value[NR] = $1 }
        END {
            middle = (value[int((NR + 1) / 2)] + value[int(NR / 2) + 1]) / 2
            print which == "least" ? value[1] : which == "most" ? value[NR] : middle
        }'
}
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }
peak() { awk -v kilobytes="$(pick 3 most "$1")" 'BEGIN { printf "%.0f MB", kilobytes / 1024 }'; }

format='%-10s %10s %10s %8s %8s %10s %10s %8s %8s %8s %8s\n'
printf "$format" job wall ffmpeg ratio fastest processor ffmpeg ratio peak ffmpeg bytes
for name in "${names[@]}"; do
    rm -f "$directory/$name".{ours,theirs}
    clip=$(makeClip "${seconds[$name]}")
    for ((round = 0; round < rounds; ++round)); do
        # shellcheck disable=SC2086  # the settings are words
        measure "$directory/$name.ours" "$tool" transcode -in "$clip" -out "$directory/ours.mov" -overwrite ${ours[$name]}
        # shellcheck disable=SC2086
        measure "$directory/$name.theirs" ffmpeg -nostdin -y -i "$clip" ${theirs[$name]} "$directory/theirs.mov"
    done
    w1=$(pick 1 median "$directory/$name.ours") w2=$(pick 1 median "$directory/$name.theirs")
    c1=$(pick 2 median "$directory/$name.ours") c2=$(pick 2 median "$directory/$name.theirs")
    l1=$(pick 1 least "$directory/$name.ours") l2=$(pick 1 least "$directory/$name.theirs")
    printf "$format" "$name" "$w1 s" "$w2 s" "$(ratio "$w1" "$w2")" "$(ratio "$l1" "$l2")" "$c1 s" "$c2 s" \
        "$(ratio "$c1" "$c2")" "$(peak "$directory/$name.ours")" "$(peak "$directory/$name.theirs")" \
        "$(ratio "$(wc -c <"$directory/ours.mov")" "$(wc -c <"$directory/theirs.mov")")"
done
