// Runs the tool with the options that shape video, audio and timecode, and looks at what ffprobe says of the result.

#include <cmath>

#include <gmock/gmock.h>

#include <tests/tools/Media.h>

namespace corvex::tool::test::transcodeOptionsEndToEndTests {
namespace {

using ::testing::HasSubstr;

/// Facts of streams, with ", " between: a stream's type, its number among those, ffprobe's key or "tag:" and a tag's, and
/// the value, as "audio 0 channels 2"; without a value there is no such fact.
void expectFacts(const ProbeResult& result, std::string_view facts) {
    for (std::size_t at = 0; at < facts.size();) {
        const std::string_view fact = facts.substr(at, facts.find(", ", at) - at);
        at += fact.size() + 2;
        const Words parts = wordsOf(fact);
        const std::string key = parts.at(2);
        const std::string_view value = fact.substr(std::min(fact.size(), fact.find(key) + key.size() + 1));
        ProbeResult found = stream(result, parts.at(0), std::stoul(parts.at(1)));
        if (key.starts_with("tag:")) found = found.value("tags", ProbeResult::object());
        const std::string name = key.substr(key.starts_with("tag:") ? 4 : 0);
        const bool isNumber = found.contains(name) && found[name].is_number();
        EXPECT_EQ(isNumber ? std::to_string(found[name].get<int>()) : text(found, name), value) << fact;
    }
}

class TranscodeOptionsEndToEnd : public ::testing::Test {
protected:
    CommandResult transcode(const std::string& source, const std::string& target, const std::string& more) {
        Words words{"transcode", "-in", source, "-out", directory.path(target), "-overwrite"};
        for (const std::string& word : wordsOf(more)) words.push_back(word);
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
    struct Row {
        const char* source;  // "plain": 25 a second, 1 s, 16-bit stereo
        const char* target;
        const char* words;
        const char* facts;
    };
    const Row rows[] = {
        {"plain", "a.mov", "-vbd 10 -c_space rec_2020_hlg -abpc 24 -acl quad",
         "video 0 pix_fmt yuv420p10le, video 0 color_primaries bt2020, video 0 color_transfer arib-std-b67, "
         "video 0 color_space bt2020nc, audio 0 codec_name pcm_s24le, audio 0 channels 4"},
        {"plain", "a.mov", "-vprofile baseline -c_matrix cm_rec_709_2 -acl 1",
         "video 0 profile Constrained Baseline, video 0 color_space bt709, audio 0 channels 1"},
        {"plain", "a.mov", "-vprofile high422 -vbd 8 -v_colrange f -acl_tag 6553601",
         "video 0 profile High 4:2:2, video 0 pix_fmt yuvj422p, video 0 color_range pc, audio 0 channels 1"},
        {"plain", "a.mov", "-vcodec h265 -vprofile main10 -mf 5", "video 0 profile Main 10"},
        {"plain", "a.mov", "-vr 29.97 -acl_bitmap L R C LFE Ls Rs",
         "video 0 r_frame_rate 30000/1001, video 0 nb_read_packets 30, audio 0 channel_layout 5.1(side)"},
        {"plain", "a.mov", "-vr 12.5", "video 0 r_frame_rate 25/2, video 0 nb_read_packets 13"},
        {"plain", "a.mov", "-mf 10", "video 0 nb_read_packets 10, audio 0 duration 0.400000"},
        {"plain", "a.mov", "-vscale 0.5 -dims 200x100 -c_space sRGB",
         "video 0 width 160, video 0 height 90, video 0 color_primaries bt709, video 0 color_transfer iec61966-2-1"},
        {"plain", "a.mov", "-ovw 200 -ovh 100 -aspect_scaling stretch", "video 0 width 200, video 0 height 100"},
        {"tracks", "a.mov", "-acodec apple_lossless -abpc 16", "audio 0 bits_per_raw_sample 16"},
        {"tracks", "a.mov", "-ac_omit [0 2", "audio 0 sample_rate 44100, audio 1 channels"},
        {"tracks", "a.mov", "-adiscrete", "audio 2 channels 1, audio 7 channels 1, audio 8 channels"},
        {"plain", "a.mp4", "-lang_code cym -alang_code afr", "video 0 tag:language cym, audio 0 tag:language afr"},
        {"plain", "a.mov", "-lang_code deu -alang_code hrv", "video 0 tag:language ger, audio 0 tag:language hr "},
        {"plain", "a.mov",
         "-v_frame_cap 2 -max_v_frame_mem 200000 -additional_decode_options threads=1:flags=+bitexact "
         "-v_decoder ffmpeg -a_decoder ffmpeg",
         "video 0 nb_read_packets 25"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        const CommandResult result = transcode(clip(row.source), row.target, row.words);
        ASSERT_EQ(result.exitStatus, 0) << result.error;
        expectFacts(probe(directory.path(row.target)), row.facts);
    }
    // A wave file states the language of the whole.
    ASSERT_EQ(transcode(clip("wav"), "a.wav", "-alang_code deu").exitStatus, 0);
    EXPECT_EQ(text(probe(directory.path("a.wav"))["format"]["tags"], "language"), "deu");
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
        ASSERT_EQ(transcode(clip("plain"), "keys.mov", std::string("-key_frames 10 -an -vcodec ") + codec).exitStatus,
                  0);
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
    for (const char* words :
         {"-c_matrix cm_rec_709_2", "-c_matrix cm_rec_2020", "-v_colrange f", "-c_matrix cm_smpte_240m_1995 -vbd 10"}) {
        SCOPED_TRACE(words);
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
    ASSERT_EQ(transcode(source, "sides.mov", "-vn -adiscrete").exitStatus, 0);
    EXPECT_GT(loudness(directory.path("sides.mov"), 0.5, 0).front(), 0.5);
    EXPECT_LT(loudness(directory.path("sides.mov"), 0.5, 1).front(), 0.001);
}

TEST_F(TranscodeOptionsEndToEnd, theTimecodeTrackStartsWhereItShould) {
    const std::string ntsc = ntscClip();
    const std::string plain = clip("plain");  // without a timecode
    struct Row {
        const char* target;
        std::string source;
        const char* words;
        const char* timecode;
    };
    const Row rows[] = {
        {"t.mov", ntsc, "", "00:00:59;20"},
        {"t.mov", ntsc, "-tc_non_drop", "00:00:59:20"},
        {"t.mov", ntsc, "-tc_no_ntsc", "00:00:59:20"},
        {"t.mov", ntsc, "-tc_creation", "09:30:15;00"},
        {"t.mov", ntsc, "-tc_custom 10:00:00;02", "10:00:00;02"},
        {"t.mov", ntsc, "-tc_custom 10:00:00:02 -tc_drop", "10:00:00;02"},
        {"t.mp4", ntsc, "-tc_custom 01:02:03:04", "01:02:03:04"},
        {"t.mov", plain, "", "00:00:00:00"},
        {"t.mov", plain, "-vr 59.94 -tc_rate 59.94 -tc_drop", "00:00:00;00"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        const CommandResult result = transcode(row.source, row.target, std::string("-tc_track -mf 5 ") + row.words);
        ASSERT_EQ(result.exitStatus, 0) << result.error;
        const ProbeResult made = probe(directory.path(row.target));
        expectFacts(made, std::string("data 0 codec_tag_string tmcd, data 0 tag:timecode ") + row.timecode);
    }
}

// What the words alone tell is tested without a process of its own.
TEST_F(TranscodeOptionsEndToEnd, whatCannotBeHadIsOneClearLine) {
    struct Row {
        const char* words;
        int status;
        const char* names;
    };
    const Row rows[] = {{"-v_decoder vt", 1, "-v_decoder vt"},
                        {"-clut look.cube", 1, "'look.cube' is no look-up table"},
                        {"-vbd 9", 2, "8, 10"},
                        {"-ac_omit_0 9", 1, "track 9"},
                        {"-ac_omit_3 0", 2, "-ac_omit_3"},
                        {"-dims 16x16 -max_v_frame_mem 50000", 1, "-max_v_frame_mem"},
                        {"-additional_decode_options speed=9", 1, "'speed'"},
                        {"-tc_track -tc_drop", 1, "drop"},
                        {"-tc_track -tc_rate 24", 1, "-tc_rate"},
                        {"-tc_burn -tc_rate 24", 1, "-tc_rate"},
                        {"-tc_track -tc_creation", 1, "-tc_creation"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        const CommandResult result = transcode(clip("plain"), "none.mov", row.words);
        EXPECT_EQ(result.exitStatus, row.status);
        EXPECT_THAT(result.error, HasSubstr(row.names));
        EXPECT_EQ(lineCount(result.error), 1U) << result.error;
        EXPECT_THAT(directory.entries(), ::testing::Not(::testing::Contains("none.mov")));
    }
}

}  // namespace
}  // namespace corvex::tool::test::transcodeOptionsEndToEndTests
