// Runs the tool with the options that shape video, audio and timecode, and looks at what ffprobe says of the result.

#include <cmath>

#include <gmock/gmock.h>

#include <tests/tools/Media.h>

namespace corvex::tool::test {
namespace {

using ::testing::HasSubstr;

/// One fact of one stream of the result.
struct Fact {
    const char* type;
    std::size_t index;
    const char* key;  ///< "tag:KEY" for a tag of the stream.
    std::string value;
};

std::string valueOf(const ProbeResult& result, const Fact& fact) {
    const ProbeResult found = stream(result, fact.type, fact.index);
    const std::string key = fact.key;
    if (key.starts_with("tag:")) return found.contains("tags") ? text(found["tags"], key.substr(4)) : std::string();
    const bool isNumber = found.contains(key) && found[key].is_number();
    return isNumber ? std::to_string(found[key].get<int>()) : text(found, key);
}

class TranscodeOptionsEndToEnd : public ::testing::Test {
protected:
    CommandResult transcode(const std::string& source, const std::string& target, const Words& more) {
        Words words{"transcode", "-in", source, "-out", directory.path(target), "-overwrite"};
        words.insert(words.end(), more.begin(), more.end());
        return corvex(words);
    }
    /// Two seconds at 30000/1001 with a drop-frame track from the last second of a minute, made at 09:30:15 UTC.
    std::string ntscClip() {
        const std::string path = directory.path("ntsc.mov");
        ffmpeg({"-f", "lavfi", "-i", "testsrc2=size=192x108:rate=30000/1001:duration=2", "-c:v", "libx264", "-preset",
                "veryfast", "-pix_fmt", "yuv420p", "-timecode", "00:00:59;20", "-metadata",
                "creation_time=2026-11-21T09:30:15Z", path});
        return path;
    }

    TemporaryDirectory directory;
};

TEST_F(TranscodeOptionsEndToEnd, eachOptionShowsInTheResult) {
    const std::string tracks = clip("tracks");  // 25 a second, 0.4 s; 24-bit mono at 48000 and 44100, and 5.1
    const std::string plain = clip("plain");    // 25 a second, 1 s; 16-bit stereo
    struct Row {
        const char* name;
        const char* target;
        std::string source;
        Words words;
        std::vector<Fact> facts;
    };
    const Row rows[] = {
        {"depth", "a.mov", plain, {"-vbd", "10"}, {{"video", 0, "pix_fmt", "yuv420p10le"}}},
        {"profile", "a.mov", plain, {"-vprofile", "baseline"}, {{"video", 0, "profile", "Constrained Baseline"}}},
        {"chroma by profile",
         "a.mov",
         plain,
         {"-vprofile", "high422", "-vbd", "8"},
         {{"video", 0, "profile", "High 4:2:2"}, {"video", 0, "pix_fmt", "yuv422p"}}},
        {"hevc",
         "a.mov",
         plain,
         {"-vcodec", "h265", "-vprofile", "main10", "-mf", "5"},
         {{"video", 0, "profile", "Main 10"}}},
        {"rate up",
         "a.mov",
         plain,
         {"-vr", "29.97"},
         {{"video", 0, "r_frame_rate", "30000/1001"}, {"video", 0, "nb_read_packets", "30"}}},
        {"rate down",
         "a.mov",
         plain,
         {"-vr", "12.5"},
         {{"video", 0, "r_frame_rate", "25/2"}, {"video", 0, "nb_read_packets", "13"}}},
        {"frame count",
         "a.mov",
         plain,
         {"-mf", "10"},
         {{"video", 0, "nb_read_packets", "10"}, {"audio", 0, "duration", "0.400000"}}},
        {"scale", "a.mov", plain, {"-vscale", "0.5"}, {{"video", 0, "width", "160"}, {"video", 0, "height", "90"}}},
        {"explicit size",
         "a.mov",
         plain,
         {"-ovw", "200", "-ovh", "100", "-aspect_scaling", "stretch"},
         {{"video", 0, "width", "200"}, {"video", 0, "height", "100"}}},
        {"full range", "a.mov", plain, {"-v_colrange", "f"}, {{"video", 0, "color_range", "pc"}}},
        {"colour space",
         "a.mov",
         plain,
         {"-c_space", "rec_2020_hlg", "-vbd", "10"},
         {{"video", 0, "color_primaries", "bt2020"},
          {"video", 0, "color_transfer", "arib-std-b67"},
          {"video", 0, "color_space", "bt2020nc"}}},
        {"mixed case colour space",
         "a.mov",
         plain,
         {"-c_space", "sRGB"},
         {{"video", 0, "color_primaries", "bt709"}, {"video", 0, "color_transfer", "iec61966-2-1"}}},
        {"matrix", "a.mov", plain, {"-c_matrix", "cm_rec_709_2"}, {{"video", 0, "color_space", "bt709"}}},
        {"sample depth", "a.mov", plain, {"-abpc", "24"}, {{"audio", 0, "codec_name", "pcm_s24le"}}},
        {"lossless depth",
         "a.mov",
         tracks,
         {"-acodec", "apple_lossless", "-abpc", "16"},
         {{"audio", 0, "bits_per_raw_sample", "16"}}},
        {"layout by name", "a.mov", plain, {"-acl", "quad"}, {{"audio", 0, "channels", "4"}}},
        {"layout by count", "a.mov", plain, {"-acl", "1"}, {{"audio", 0, "channels", "1"}}},
        {"layout by labels",
         "a.mov",
         plain,
         {"-acl_bitmap", "L", "R", "C", "LFE", "Ls", "Rs"},
         {{"audio", 0, "channel_layout", "5.1(side)"}}},
        {"layout by tag", "a.mov", plain, {"-acl_tag", "6553601"}, {{"audio", 0, "channels", "1"}}},
        {"left-out tracks",
         "a.mov",
         tracks,
         {"-ac_omit", "[0", "2"},
         {{"audio", 0, "sample_rate", "44100"}, {"audio", 1, "channels", ""}}},
        {"discrete channels",
         "a.mov",
         tracks,
         {"-adiscrete"},
         {{"audio", 2, "channels", "1"}, {"audio", 7, "channels", "1"}, {"audio", 8, "channels", ""}}},
        {"languages",
         "a.mp4",
         plain,
         {"-lang_code", "deu", "-alang_code", "fra"},
         {{"video", 0, "tag:language", "deu"}, {"audio", 0, "tag:language", "fra"}}},
        {"limits in flight",
         "a.mov",
         plain,
         {"-v_frame_cap", "2", "-max_v_frame_mem", "200000"},
         {{"video", 0, "nb_read_packets", "25"}}},
        {"decode options",
         "a.mov",
         plain,
         {"-additional_decode_options", "threads=1:flags=+bitexact"},
         {{"video", 0, "nb_read_packets", "25"}}},
        {"engines",
         "a.mov",
         plain,
         {"-v_decoder", "ffmpeg", "-a_decoder", "ffmpeg"},
         {{"video", 0, "nb_read_packets", "25"}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const CommandResult result = transcode(row.source, row.target, row.words);
        ASSERT_EQ(result.exitStatus, 0) << result.error;
        const ProbeResult made = probe(directory.path(row.target));
        for (const Fact& fact : row.facts) EXPECT_EQ(valueOf(made, fact), fact.value) << fact.key;
    }
}

/// A table that exchanges nothing but bends the light; the pictures are worked on by one thread or by several.
TEST_F(TranscodeOptionsEndToEnd, picturesInFlightDoNotShowInTheResult) {
    writeFile(directory.path("look.cube"),
              "LUT_3D_SIZE 2\n0 0 0\n1 0 0\n0 0.8 0\n1 1 0\n0 0 0.7\n1 0 1\n0 1 1\n1 1 1\n");
    struct Row {
        const char* name;
        Words words;
    };
    const Row rows[] = {
        {"change of rate", {"-in", clip("plain"), "-vr", "29.97"}},
        {"limit", {"-in", clip("plain"), "-mf", "7"}},
        {"pictures of several sizes", {"-in_0_0", clip("plain"), "-in_0_1", clip("fields")}},
        {"plain", {"-in", clip("plain")}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<std::string> results;
        for (const Words& limit : {Words{"-v_frame_cap", "1"}, Words{"-v_frame_cap", "9"}, Words{}}) {
            Words words{"transcode", "-out",  directory.path("look.mov"), "-overwrite", "-vcodec",
                        "prores422", "-clut", directory.path("look.cube")};
            words.insert(words.end(), row.words.begin(), row.words.end());
            words.insert(words.end(), limit.begin(), limit.end());
            const CommandResult result = corvex(words);
            ASSERT_EQ(result.exitStatus, 0) << result.error;
            results.push_back(readFile(directory.path("look.mov")));
        }
        EXPECT_TRUE(results[0] == results[1]);
        EXPECT_TRUE(results[0] == results[2]);
    }
    EXPECT_LT(psnr(directory.path("look.mov"), clip("plain")), 30);
}

TEST_F(TranscodeOptionsEndToEnd, keyFramesComeAtTheDistanceAskedFor) {
    for (const char* codec : {"h264", "h265", "mp4"}) {
        ASSERT_EQ(transcode(clip("plain"), "keys.mov", {"-vcodec", codec, "-key_frames", "10", "-an"}).exitStatus, 0);
        const std::string flags = runOrFail({"ffprobe", "-v", "error", "-select_streams", "v", "-show_entries",
                                             "packet=flags", "-of", "csv=p=0", directory.path("keys.mov")});
        std::vector<std::size_t> keys;
        std::size_t frame = 0;
        for (std::size_t at = 0; at < flags.size(); at = flags.find('\n', at) + 1, ++frame) {
            if (flags[at] == 'K') keys.push_back(frame);
        }
        EXPECT_THAT(keys, ::testing::ElementsAre(0, 10, 20)) << codec;
    }
}

TEST_F(TranscodeOptionsEndToEnd, convertedColoursLookAsBefore) {
    const Picture source(clip("fields"));
    for (const Words& words : {Words{"-c_matrix", "cm_rec_709_2"}, Words{"-c_matrix", "cm_rec_2020"},
                               Words{"-v_colrange", "f"}, Words{"-c_matrix", "cm_smpte_240m_1995", "-vbd", "10"}}) {
        SCOPED_TRACE(words[1]);
        ASSERT_EQ(transcode(clip("fields"), "colour.mov", words).exitStatus, 0);
        const Picture made(directory.path("colour.mov"));
        for (const double x : {0.15, 0.5, 0.85}) {
            for (const double y : {0.15, 0.5, 0.85}) {
                EXPECT_NEAR(made.at(x, y).red, source.at(x, y).red, 8) << x << " " << y;
                EXPECT_NEAR(made.at(x, y).green, source.at(x, y).green, 8) << x << " " << y;
            }
        }
    }
}

TEST_F(TranscodeOptionsEndToEnd, discreteChannelsAreThoseOfTheSource) {
    const std::string source = directory.path("sides.wav");  // tone on the left, silence on the right
    ffmpeg({"-f", "lavfi", "-i", "aevalsrc=sin(440*2*PI*t)|0:s=48000:d=0.5", source});
    ASSERT_EQ(transcode(source, "sides.mov", {"-vn", "-adiscrete"}).exitStatus, 0);
    EXPECT_GT(loudness(directory.path("sides.mov"), 0.5, 0).front(), 0.5);
    EXPECT_LT(loudness(directory.path("sides.mov"), 0.5, 1).front(), 0.001);
}

TEST_F(TranscodeOptionsEndToEnd, theTimecodeTrackStartsWhereItShould) {
    const std::string ntsc = ntscClip();
    struct Row {
        const char* name;
        const char* target;
        std::string source;
        Words words;
        const char* timecode;
    };
    const Row rows[] = {
        {"source's own", "t.mov", ntsc, {}, "00:00:59;20"},
        {"source's own, not dropping", "t.mov", ntsc, {"-tc_non_drop"}, "00:00:59:20"},
        {"bypassed", "t.mov", ntsc, {"-tc_no_ntsc"}, "00:00:59:20"},
        {"creation date", "t.mov", ntsc, {"-tc_creation"}, "09:30:15;00"},
        {"custom", "t.mov", ntsc, {"-tc_custom", "10:00:00;02"}, "10:00:00;02"},
        {"custom made to drop", "t.mov", ntsc, {"-tc_custom", "10:00:00:02", "-tc_drop"}, "10:00:00;02"},
        {"in MPEG-4", "t.mp4", ntsc, {"-tc_custom", "01:02:03:04"}, "01:02:03:04"},
        {"source without", "t.mov", clip("plain"), {}, "00:00:00:00"},
        {"of the new rate", "t.mov", clip("plain"), {"-vr", "59.94", "-tc_rate", "59.94", "-tc_drop"}, "00:00:00;00"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Words words{"-tc_track", "-mf", "5"};
        words.insert(words.end(), row.words.begin(), row.words.end());
        const CommandResult result = transcode(row.source, row.target, words);
        ASSERT_EQ(result.exitStatus, 0) << result.error;
        const ProbeResult track = stream(probe(directory.path(row.target)), "data");
        EXPECT_EQ(text(track, "codec_tag_string"), "tmcd");
        EXPECT_EQ(valueOf(probe(directory.path(row.target)), {"data", 0, "tag:timecode", ""}), row.timecode);
    }
}

TEST_F(TranscodeOptionsEndToEnd, whatCannotBeHadIsOneClearLine) {
    struct Row {
        Words words;
        int status;
        const char* names;
    };
    const Row rows[] = {
        {{"-gpu_decoding"}, 2, "-gpu_decoding"},
        {{"-gpu_trans", "metal"}, 2, "no GPU device"},
        {{"-gpu_encoding"}, 2, "-gpu_encoding"},
        {{"-clut", "look.cube"}, 1, "'look.cube' is no look-up table"},
        {{"-tc_burn"}, 2, "-tc_burn"},
        {{"-wmt_text", "mine"}, 2, "-wmt_text"},
        {{"-v_decoder", "vt"}, 1, "-v_decoder vt"},
        {{"-a_decoder", "best"}, 2, "'best'"},
        {{"-vbd", "9"}, 2, "8, 10"},
        {{"-vprofile", "extreme"}, 2, "baseline"},
        {{"-vcodec", "prores422", "-vprofile", "high"}, 2, "no profile"},
        {{"-vcodec", "prores422", "-key_frames", "5"}, 2, "key frame"},
        {{"-c_space", "rec_2000"}, 2, "'rec_2000'"},
        {{"-c_transfer", "tf_gamma"}, 1, "tf_gamma"},
        {{"-preserve_log", "1", "-c_space", "rec_709"}, 2, "-preserve_log"},
        {{"-vr", "0"}, 2, "-vr '0'"},
        {{"-mf", "0"}, 2, "-mf '0'"},
        {{"-abpc", "20"}, 2, "16, 24 or 32"},
        {{"-abr", "64000"}, 2, "-abr"},
        {{"-acl", "7.1"}, 2, "'7.1'"},
        {{"-acl", "stereo", "-acl_tag", "6553601"}, 2, "contradicts"},
        {{"-ac_omit_0", "9"}, 1, "track 9"},
        {{"-ac_omit_3", "0"}, 2, "-ac_omit_3"},
        {{"-lang_code", "english"}, 2, "'english'"},
        {{"-max_v_frame_mem", "100"}, 1, "-max_v_frame_mem"},
        {{"-additional_decode_options", "speed=9"}, 1, "'speed'"},
        {{"-tc_custom", "10:00:00:00"}, 2, "-tc_track"},
        {{"-tc_track", "-tc_custom", "10:00"}, 2, "'10:00'"},
        {{"-tc_track", "-tc_drop"}, 1, "drop"},
        {{"-tc_track", "-tc_rate", "24"}, 1, "-tc_rate"},
        {{"-tc_track", "-tc_creation"}, 1, "-tc_creation"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words[0] + " " + row.words.back());
        const CommandResult result = transcode(clip("plain"), "none.mov", row.words);
        EXPECT_EQ(result.exitStatus, row.status);
        EXPECT_THAT(result.error, HasSubstr(row.names));
        EXPECT_EQ(lineCount(result.error), 1U) << result.error;
        EXPECT_THAT(directory.entries(), ::testing::Not(::testing::Contains("none.mov")));
    }
}

}  // namespace
}  // namespace corvex::tool::test
