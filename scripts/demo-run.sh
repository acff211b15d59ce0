#!/bin/sh
# demo-run.sh [DIRECTORY]: transcodes a made-up clip with two presets, and once more through a made-up look-up table with
# the timecode burnt in, and prints what came out of it. Leaves the clip, the table, the results and a contact sheet in
# DIRECTORY (default build/demo).
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
tool=$root/build/release/bin/corvex
out=${1:-$root/build/demo}
mkdir -p "$out"

# Ten seconds of camera-like material: full HD, 25 frames a second, moving patterns, stereo sound, high-quality H.264.
clip=$out/clip.mov
seconds=10
if [ ! -s "$clip" ]; then
    echo "Making a $seconds-second clip: $clip"
    ffmpeg -v error -nostdin -y \
        -f lavfi -i "testsrc2=size=1920x1080:rate=25:duration=$seconds" \
        -f lavfi -i "sine=frequency=440:sample_rate=48000:duration=$seconds" \
        -c:v libx264 -preset veryfast -crf 12 -pix_fmt yuv420p -g 25 -timecode 10:00:00:00 \
        -c:a pcm_s16le -ac 2 "$clip.part.mov"
    mv "$clip.part.mov" "$clip"
fi

# A look of 17 points on each axis: cooler shadows, warmer lights, a little less colour.
look=$out/look.cube
awk 'function mix(value, grey, lift) { value = 0.85 * value + 0.15 * grey + lift; return value < 0 ? 0 : value > 1 ? 1 : value }
    BEGIN {
        print "TITLE \"Demo\"\nLUT_3D_SIZE 17"
        for (b = 0; b < 17; b++) for (g = 0; g < 17; g++) for (r = 0; r < 17; r++) {
            grey = (0.2126 * r + 0.7152 * g + 0.0722 * b) / 16
            warmth = 0.08 * (grey - 0.5)
            printf "%.6f %.6f %.6f\n", mix(r / 16, grey, warmth), mix(g / 16, grey, 0), mix(b / 16, grey, -warmth)
        }
    }' >"$look"
"$tool" lut check "$look" --plot "$out/look.png" --overwrite

# probe STREAM ENTRY FILE: one value of the stream or, for STREAM "format", of the file.
probe() {
    if [ "$1" = format ]; then
        ffprobe -v error -show_entries "format=$2" -of default=nw=1:nk=1 "$3"
    else
        ffprobe -v error -select_streams "$1" -count_packets -show_entries "stream=$2" -of default=nw=1:nk=1 "$3"
    fi | head -n 1
}
row() { printf '%-14s %-8s %-10s %-10s %7s %9s %12s %8s %9s\n' "$@"; }
# describe LABEL FILE MILLISECONDS
describe() {
    audio=$(probe a:0 codec_name "$2")
    duration=$(probe format duration "$2")
    if [ "$3" -gt 0 ]; then
        wall=$(awk "BEGIN { printf \"%.1f s\", $3 / 1000 }")
        speed=$(awk "BEGIN { printf \"%.2f x\", $duration * 1000 / $3 }")
    else
        wall=- speed=-
    fi
    row "$1" "$(probe v:0 codec_name "$2")" "${audio:--}" "$(probe v:0 width "$2")x$(probe v:0 height "$2")" \
        "$(probe v:0 nb_read_packets "$2")" "$(awk "BEGIN { printf \"%.2f s\", $duration }")" \
        "$(wc -c <"$2")" "$wall" "$speed"
}

table=$out/summary.txt
{
    row what video audio raster frames duration bytes "wall time" speed
    describe clip "$clip" 0
} >"$table"
# transcode LABEL WORD...: one row of the summary.
transcode() {
    label=$1
    shift
    target=$out/$label.mov
    echo "corvex transcode -in $clip -out $target $* -overwrite"
    began=$(date +%s%N)
    "$tool" transcode -in "$clip" -out "$target" "$@" -overwrite
    ended=$(date +%s%N)
    describe "$label" "$target" $(((ended - began) / 1000000)) >>"$table"
}
transcode orvane_cloud -preset orvane_cloud
transcode orvane_4444xq -preset orvane_4444xq
transcode look -preset orvane_cloud -clut "$look" -tc_burn
ffmpeg -v error -nostdin -y -i "$clip" -i "$out/look.mov" -filter_complex \
    '[0:v]fps=1/3,scale=640:-2[source];[1:v]fps=1/3,scale=640:-2[result];[source][result]hstack,tile=1x3' \
    -frames:v 1 "$out/sheet.png"
echo "Source and result side by side: $out/sheet.png"
echo
cat "$table"
