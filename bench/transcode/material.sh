# What the measurements work on; sourced by them. $directory keeps it for the next run.
# shellcheck shell=bash disable=SC2154

# makeClip SECONDS [SIZE]: the path of a moving clip, full HD if no size is given, with stereo sound.
makeClip() {
    local size=${2:-1920x1080}
    local clip=$directory/clip-$size-$1.mov
    [ -s "$clip" ] || {
        ffmpeg -v error -nostdin -y \
            -f lavfi -i "testsrc2=size=$size:rate=25:duration=$1" \
            -f lavfi -i "sine=frequency=440:sample_rate=48000:duration=$1" \
            -c:v libx264 -preset veryfast -crf 12 -pix_fmt yuv420p -g 25 -c:a pcm_s16le -ac 2 "$directory/part.mov"
        mv "$directory/part.mov" "$clip"
    }
    echo "$clip"
}

# makeLook POINTS: the path of a look of so many points on each axis.
makeLook() {
    awk -v n="$1" 'BEGIN {
        print "LUT_3D_SIZE", n
        for (b = 0; b < n; ++b) for (g = 0; g < n; ++g) for (r = 0; r < n; ++r)
            printf "%.6f %.6f %.6f\n", (r / (n - 1)) ^ 0.9, (g / (n - 1)) ^ 1.1, (0.95 * b + 0.05 * r) / (n - 1)
    }' >"$directory/look$1.cube"
    echo "$directory/look$1.cube"
}
