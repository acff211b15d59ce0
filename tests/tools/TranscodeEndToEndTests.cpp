// Runs the tool on small clips and looks at what came out with the ffprobe and ffmpeg programs.

#include <algorithm>
#include <cmath>
#include <sstream>

#include <gmock/gmock.h>

#include <tests/tools/Media.h>

namespace corvex::tool::test::transcodeEndToEndTests {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// What is left of two encodings of one picture by the same encoder.
constexpr double sameDecibels = 35;

class TranscodeEndToEnd : public TranscodeTest {
protected:
    /// The same by the ffmpeg program.
    static std::string reference(const std::string& source, const std::string& words) {
        ffmpeg("-i @" + source + " " + words + " -an reference.mov");
        return "reference.mov";
    }
};

double packetsOf(const std::string& path) { return number(stream(probe(path), "video"), "nb_read_packets"); }

TEST_F(TranscodeEndToEnd, everyVideoCodecIsWhatItsNameSays) {
    struct Row {
        const char *codec, *facts, *pixels, *reference;  ///< The last is what makes ffmpeg's program write the same.
    };
    constexpr Row rows[] = {
        {"dnxhd", "dnxhd AVdn DNXHD", "yuv422p", "dnxhd -b:v 60M -r 25"},
        {"dnxhrlb", "dnxhd AVdh DNXHR LB", "yuv422p", "dnxhd -profile:v dnxhr_lb"},
        {"dnxhrsq", "dnxhd AVdh DNXHR SQ", "yuv422p", "dnxhd -profile:v dnxhr_sq"},
        {"dnxhrhq", "dnxhd AVdh DNXHR HQ", "yuv422p", "dnxhd -profile:v dnxhr_hq"},
        {"dnxhrhqx", "dnxhd AVdh DNXHR HQX", "yuv422p10le", "dnxhd -profile:v dnxhr_hqx"},
        {"dnxhr444", "dnxhd AVdh DNXHR 444", "yuv444p10le", "dnxhd -profile:v dnxhr_444"},
        {"h264", "h264 avc1 High", "yuv420p", "libx264"},
        {"h265", "hevc hvc1 Main", "yuv420p", "libx265"},
        {"mjpeg", "mjpeg jpeg Baseline", "yuvj422p", "mjpeg -q:v 3"},
        {"mp4", "mpeg4 mp4v Simple Profile", "yuv420p", "mpeg4 -q:v 3"},
        {"prores4444", "prores ap4h 4444", "yuv444p12le", "prores_ks -profile:v 4444"},
        {"prores4444xq", "prores ap4x XQ", "yuv444p12le", "prores_ks -profile:v 4444xq"},
        {"prores422", "prores apcn Standard", "yuv422p10le", "prores_ks -profile:v standard"},
        {"prores422hq", "prores apch HQ", "yuv422p10le", "prores_ks -profile:v hq"},
        {"prores422lt", "prores apcs LT", "yuv422p10le", "prores_ks -profile:v lt"},
        {"prores422proxy", "prores apco Proxy", "yuv422p10le", "prores_ks -profile:v proxy"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.codec);
        const bool isHd = row.codec == std::string("dnxhd");  // which knows few sizes
        const std::string source = isHd ? "hd" : "plain";
        const std::string made = transcode("made.mov", "-mf 10 -an -in @" + source + " -vcodec " + row.codec);
        const ProbeResult video = stream(probe(made), "video");
        EXPECT_EQ(text(video, "codec_name") + " " + text(video, "codec_tag_string") + " " + text(video, "profile"),
                  row.facts);
        EXPECT_EQ(text(video, "pix_fmt"), row.pixels);
        EXPECT_EQ(number(video, "width"), isHd ? 1280 : 320);
        EXPECT_EQ(number(video, "height"), isHd ? 720 : 180);
        EXPECT_EQ(number(video, "nb_read_packets"), isHd ? 5 : 10);
        EXPECT_EQ(number(video, "duration"), isHd ? 0.2 : 0.4);
        const std::string pixels = row.pixels[5] == '4' ? "yuv444p10le" : row.pixels;
        const std::string words = "-c:v " + std::string(row.reference) + " -pix_fmt " + pixels + " -frames:v 10";
        EXPECT_GE(psnr(made, reference(source, words)), sameDecibels);
    }
}

TEST_F(TranscodeEndToEnd, everyAudioFormatIsWhatItsNameSays) {
    struct Row {
        const char *target, *words, *codec;
        double rate = 48000;
    };
    constexpr Row rows[] = {
        {"a.mov", "-in @plain -acodec lpcm", "pcm_s16le"},
        {"a.mov", "-in @plain -acodec aac", "aac"},
        {"a.mov", "-in @plain -acodec apple_lossless", "alac"},
        {"a.mov", "-in @plain -acodec apple_ima4", "adpcm_ima_qt"},
        {"a.mov", "-in @plain -asr 44100", "pcm_s16le", 44100},
        {"a.mp4", "-in @plain", "aac"},
        {"a.mp4", "-in @plain -acodec apple_lossless -asr 96000", "alac", 96000},
        {"a.wav", "-in @plain", "pcm_s16le"},
        {"a.wav", "-in @mp4 -asr 32000", "pcm_s16le", 32000},
        {"a.mov", "-in @wav -vn", "pcm_s16le"},
        {"a.mp4", "-in @wav -vn", "aac"},
        {"a.mov", "-in @plain -acopy", "pcm_s16le"},
        {"a.mp4", "-in @mp4 -acopy -vn", "aac"},
        {"a.wav", "-in @plain -acopy", "pcm_s16le"},
        {"a.mov", "-in @mp4", "aac"},
        {"a.mov", "-in @ac3", "aac"},
        {"a.mov", "-in @flac", "pcm_s16le"},
    };
    const double level = loudness(clip("plain"), 0.5)[0];
    for (const Row& row : rows) {
        SCOPED_TRACE(row.target + std::string(" ") + row.words);
        const std::string made = transcode(row.target, row.words);
        const ProbeResult audio = stream(probe(made), "audio");
        EXPECT_EQ(text(audio, "codec_name"), row.codec);
        EXPECT_EQ(number(audio, "sample_rate"), row.rate);
        EXPECT_EQ(number(audio, "channels"), 2);
        EXPECT_NEAR(number(audio, "duration"), 1, 0.03);
        EXPECT_NEAR(loudness(made, 0.5)[0], level, 0.1 * level);
    }
}

TEST_F(TranscodeEndToEnd, audioKeepsItsTracksDepthAndPlace) {
    expectFacts(probe(transcode("a.mov", "-in @tracks")),
                "audio 0 codec_name pcm_s24le, audio 0 channels 1, audio 0 sample_rate 48000, "
                "audio 1 codec_name pcm_s24le, audio 1 channels 1, audio 1 sample_rate 44100, "
                "audio 2 codec_name pcm_s24le, audio 2 channels 6, audio 2 sample_rate 48000");
    for (const char* words : {"-in @late-mov -acodec lpcm", "-in @late-mov -acodec aac", "-in @late-mkv -acodec lpcm",
                              "-in @late-mkv -acodec aac"}) {
        const auto late = loudness(transcode("a.mov", words), 0.25);
        ASSERT_GE(late.size(), 4U) << words;
        EXPECT_LT(late[0], 0.001) << words;
        EXPECT_GT(late[2], 0.05) << words;
    }
    // Tone on the left, silence on the right.
    ffmpeg("-f lavfi -i aevalsrc=sin(440*2*PI*t)|0:s=48000:d=0.5 sides.wav");
    const std::string sides = transcode("a.mov", "-in sides.wav -vn -adiscrete");
    EXPECT_GT(loudness(sides, 0.5, 0).front(), 0.5);
    EXPECT_LT(loudness(sides, 0.5, 1).front(), 0.001);
}

/// `sights`: "0.1,0.9=02" for a place in the picture and the column and row of the "fields" clip that is to be seen there;
/// "--": black.
void expectSights(const Picture& picture, const std::string& sights) {
    std::istringstream stream(sights);
    char comma = 0, equals = 0, column = 0, row = 0;
    for (double x = 0, y = 0; stream >> x >> comma >> y >> equals >> column >> row;) {
        const Pixel pixel = picture.at(x, y);
        EXPECT_NEAR(pixel.red, column == '-' ? 0 : 127 * (column - '0'), 25) << x << ", " << y;
        EXPECT_NEAR(pixel.green, row == '-' ? 0 : 127 * (row - '0'), 25) << x << ", " << y;
        EXPECT_NEAR(pixel.blue, column == '-' ? 0 : 60, 25) << x << ", " << y;
    }
    EXPECT_TRUE(stream.eof()) << sights;
}

TEST_F(TranscodeEndToEnd, picturesLandWhereTheScalingSays) {
    // A camera that filmed by way of a mirror says so by the matrix of its track (ISO/IEC 14496-12, 8.3.2).
    std::string bytes = readFile(clip("fields"));
    const std::size_t matrix = bytes.find("tkhd") + 4 + 40;
    ASSERT_LT(matrix, bytes.size());
    bytes.replace(matrix, 4, std::string("\xFF\xFF\x00\x00", 4));  // -1: x runs from right to left
    writeFile("mirrored.mp4", bytes);
    struct Row {
        std::string words;
        int width, height;
        const char* sights;
    };
    const std::string fields = "-in @fields -dims ", crop = "-in @fields -aspect_scaling crop -dims ";
    const Row rows[] = {
        {fields + "200x200 -aspect_scaling stretch", 200, 200,
         "0.1,0.1=00 0.9,0.1=20 0.5,0.5=11 0.1,0.9=02 0.9,0.9=22"},
        {fields + "200x200", 200, 112, "0.1,0.1=00 0.5,0.5=11 0.9,0.9=22"},
        {fields + "200x200 -aspect_scaling letterbox", 200, 200,
         "0.5,0.1=-- 0.5,0.9=-- 0.1,0.3=00 0.5,0.5=11 0.9,0.7=22"},
        {fields + "400x180 -aspect_scaling letterbox", 400, 180, "0.05,0.5=-- 0.95,0.5=-- 0.15,0.1=00 0.85,0.9=22"},
        {fields + "179x99 -aspect_scaling stretch", 180, 100, "0.1,0.1=00 0.9,0.9=22"},
        // A square leaves 180 of 320 columns, a wide strip 60 of 180 rows; the anchor says which.
        {crop + "90x90 -crop_anchor cl", 90, 90, "0.04,0.1=00 0.96,0.9=12"},
        {crop + "90x90 -crop_anchor tc", 90, 90, "0.04,0.1=00 0.96,0.9=22"},
        {crop + "90x90 -crop_anchor br", 90, 90, "0.04,0.1=10 0.96,0.9=22"},
        {crop + "320x60 -crop_anchor tl", 320, 60, "0.1,0.2=00 0.9,0.8=20"},
        {crop + "320x60 -crop_anchor bc", 320, 60, "0.1,0.2=02 0.9,0.8=22"},
        {"-in mirrored.mp4", 320, 180, "0.1,0.1=20 0.9,0.1=00 0.5,0.5=11 0.9,0.9=02"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        const Picture picture(transcode("made.mov", row.words + " -vcodec prores422hq"));
        EXPECT_EQ(picture.width(), row.width);
        EXPECT_EQ(picture.height(), row.height);
        expectSights(picture, row.sights);
    }
}

TEST_F(TranscodeEndToEnd, fieldsOfInterlacedPicturesAreScaledForThemselves) {
    for (const bool isInterlaced : {true, false}) {  // one field is white, the other black
        const Picture picture(
            transcode("made.mov", std::string("-dims 64x32 -aspect_scaling stretch -vcodec prores4444 ") +
                                      (isInterlaced ? "-in @interlaced" : "-in @striped")));
        const int contrast = picture.at(0.5, 15.5 / 32).green - picture.at(0.5, 16.5 / 32).green;
        EXPECT_EQ(std::abs(contrast) > 200, isInterlaced) << contrast;
    }
}

TEST_F(TranscodeEndToEnd, picturesMatchTheSameJobByTheFfmpegProgram) {
    struct Row {
        const char *source, *words, *filter;
    };
    constexpr Row rows[] = {
        {"plain", "-dims 200x200 -aspect_scaling stretch", "scale=200:200"},
        {"plain", "-dims 200x200 -aspect_scaling letterbox", "scale=200:112,pad=200:200:0:44"},
        {"plain", "-dims 90x90 -aspect_scaling crop", "crop=180:180,scale=90:90"},
        {"plain", "-dims 640x360", "scale=640:360"},
        {"rotated", "", "null"},
        {"odd", "", "scale=322:182"},
        {"fullrange", "", "scale=in_range=pc:out_range=tv"},
        {"rgb", "", "scale=out_color_matrix=bt709:out_range=tv"},
        {"avi", "", "null"},
        {"ts", "", "null"},
        {"mkv", "", "null"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.source + std::string(" ") + row.words);
        const std::string made =
            transcode("made.mov", std::string("-vcodec prores422hq -in @") + row.source + " " + row.words);
        const std::string hq = " -c:v prores_ks -profile:v hq -pix_fmt yuv422p10le";
        const std::string expected = reference(row.source, "-vf " + std::string(row.filter) + hq);
        EXPECT_EQ(packetsOf(made), packetsOf(expected));
        EXPECT_GE(psnr(made, expected), sameDecibels);
    }
}

TEST_F(TranscodeEndToEnd, colourAndRangeComeOutAsTheyWentIn) {
    for (const char* codec : {"h264", "prores4444", "mjpeg", "dnxhr444"}) {
        SCOPED_TRACE(codec);
        expectSights(Picture(transcode("rgb.mov", std::string("-in @rgb -vcodec ") + codec)),
                     "0.1,0.1=00 0.9,0.1=20 0.1,0.9=02 0.9,0.9=22");
    }
    // The motion-JPEG output is of full range: its bars are black there, too.
    const Picture boxed(transcode("box.mov", "-in @fields -vcodec mjpeg -dims 200x200 -aspect_scaling letterbox"));
    EXPECT_LE(boxed.at(0.5, 0.1).green, 3);
    EXPECT_THAT(text(stream(probe(transcode("alpha.mov", "-in @alpha -vcodec prores4444")), "video"), "pix_fmt"),
                HasSubstr("yuva444p"));

    const Picture source(clip("fields"));
    for (const char* words :
         {"-c_matrix cm_rec_709_2", "-c_matrix cm_rec_2020", "-v_colrange f", "-c_matrix cm_smpte_240m_1995 -vbd 10"}) {
        const Picture made(transcode("colour.mov", std::string("-in @fields ") + words));
        for (const double x : {0.15, 0.5, 0.85}) {
            for (const double y : {0.15, 0.5, 0.85}) {
                EXPECT_NEAR(made.at(x, y).red, source.at(x, y).red, 8) << words << " " << x << " " << y;
                EXPECT_NEAR(made.at(x, y).green, source.at(x, y).green, 8) << words << " " << x << " " << y;
            }
        }
    }
}

/// A member of the packets of the pictures, line by line.
Words packets(const std::string& path, const std::string& member) {
    return wordsOf(runOrFail(wordsOf("ffprobe -v error -select_streams v -show_entries packet=" + member +
                                     " -of default=nokey=1:noprint_wrappers=1 " + path)));
}

std::vector<double> pictureTimes(const std::string& path) {
    std::vector<double> times;
    for (const std::string& time : packets(path, "pts_time")) times.push_back(std::stod(time));
    std::sort(times.begin(), times.end());
    return times;
}

TEST_F(TranscodeEndToEnd, picturesThatComeAtVaryingTimesKeepThem) {
    for (const char* source : {"varying", "varying-mkv"}) {
        const auto expected = pictureTimes(clip(source));
        for (const char* codec : {"h264", "mp4", "prores422proxy"}) {
            SCOPED_TRACE(std::string(source) + " " + codec);
            const auto times = pictureTimes(transcode("made.mov", std::string("-in @") + source + " -vcodec " + codec));
            ASSERT_EQ(times.size(), expected.size());
            for (std::size_t i = 0; i < times.size(); ++i) {
                EXPECT_NEAR(times[i] - times[0], expected[i] - expected[0], 0.002) << i;
            }
        }
    }
}

TEST_F(TranscodeEndToEnd, keyFramesComeAtTheDistanceAskedFor) {
    for (const char* codec : {"h264", "h265", "mp4"}) {
        std::vector<std::size_t> keys;
        const Words flags =
            packets(transcode("keys.mov", std::string("-in @plain -key_frames 10 -an -vcodec ") + codec), "flags");
        for (std::size_t i = 0; i < flags.size(); ++i) {
            if (flags[i][0] == 'K') keys.push_back(i);
        }
        EXPECT_THAT(keys, ElementsAre(0, 10, 20)) << codec;
    }
}

TEST_F(TranscodeEndToEnd, bitRatesAreKeptTo) {
    const auto rateOf = [](const std::string& path) { return number(stream(probe(path), "video"), "bit_rate"); };
    const std::string small = transcode("small.mov", "-in @plain -vbr 0.2 -an");
    const std::string expected = reference("plain", "-c:v libx264 -b:v 0.2M -pix_fmt yuv420p");
    EXPECT_NEAR(rateOf(small), rateOf(expected), 10'000);
    EXPECT_GE(psnr(small, expected), sameDecibels);
    EXPECT_NEAR(rateOf(transcode("rated.mov", "-in @hd -vcodec dnxhd -vbr 90")), 90e6, 5e6);
    expectRefusals({{"transcode -in @hd -out x.mov -vcodec dnxhd -vbr 77", 1, "expected one of 60, 75, 90"}});
}

TEST_F(TranscodeEndToEnd, filesOfGroupsFollowEachOther) {
    const std::string made =
        transcode("made.mov", "-in_1_1 @plain -in_1_0 @fields -in_0_0 @mkv -vcodec prores422proxy");
    const ProbeResult result = probe(made);
    EXPECT_EQ(number(stream(result, "video"), "nb_read_packets"), 25 + 5 + 25);
    EXPECT_NEAR(number(stream(result, "video"), "duration"), 2.2, 0.001);
    expectSights(Picture(made, 1.08), "0.1,0.1=00 0.9,0.1=20 0.5,0.5=11");
    const auto sound = loudness(made, 0.2);  // the one in the middle is silent
    ASSERT_EQ(sound.size(), 11U);
    for (std::size_t i = 0; i < sound.size(); ++i) EXPECT_EQ(sound[i] > 0.05, i != 5) << i;
}

TEST_F(TranscodeEndToEnd, soundOfJoinedFilesStaysBesideItsPictures) {
    const std::pair<const char*, bool> rows[] = {
        {"-in_0_0 @brief -in_0_1 @plain", true},
        {"-in_0_0 @brief -in_0_1 @plain -acodec aac", false},
        {"-in_0_0 @brief -in_0_1 @plain -acopy", true},
        {"-in_0_0 @brief-aac -in_0_1 @mp4 -acopy", false},
    };
    for (const auto& [words, isExact] : rows) {
        SCOPED_TRACE(words);
        const std::string made = transcode("made.mov", words);
        EXPECT_EQ(packetsOf(made), 50);
        const auto sound = loudness(made, 0.125);  // on for half a second, off for as long, on for a second
        ASSERT_GE(sound.size(), 15U);
        for (std::size_t i = 0; i < 15; ++i) {
            if (!isExact && (i == 4 || i == 7 || i == 8)) continue;  // where a coded packet straddles the change
            EXPECT_EQ(sound[i] > 0.05, i < 4 || i >= 8) << i;
        }
    }
    for (const char* words : {"-in_0_0 @overlong -in_0_1 @plain", "-in_0_0 @overlong -in_0_1 @plain -acopy"}) {
        EXPECT_NEAR(number(stream(probe(transcode("made.mov", words)), "audio"), "duration"), 2, 0.001) << words;
    }
}

TEST_F(TranscodeEndToEnd, theIndexAndTheBytesOnTheirWayStandWhereTheyAreWanted) {
    for (const char* name : {"a.mov", "a.mp4"}) {
        EXPECT_TRUE(isIndexInFront(transcode(name, "-in @plain -web"))) << name;
        EXPECT_FALSE(isIndexInFront(transcode(name, "-in @plain"))) << name;
    }
    const TemporaryDirectory work("/dev/shm");
    EXPECT_EQ(packetsOf(transcode("made.mov", "-in @plain -web -work_dir " + work.path())), 25);
    EXPECT_EQ(work.entries(), Words{});
    EXPECT_EQ(room.entries(), (Words{"a.mov", "a.mp4", "made.mov"}));
}

TEST_F(TranscodeEndToEnd, progressIsWrittenLineByLine) {
    transcode("made.mov", "-in @plain -progress_prefix Job 7: -progress_file progress.txt");
    const std::string pattern =
        "(job 7: state=(running|finishing) frame=[0-9]+ total=25 percent=[0-9.]+ fps=[0-9.]+ eta=-?[0-9]+ "
        "read=[0-9]+ written=[0-9]+\n)+"
        "job 7: state=done frame=25 total=25 percent=100.0 fps=[0-9.]+ eta=0 read=[0-9]+ written=[0-9]+\n";
    EXPECT_THAT(readFile("progress.txt"), ::testing::MatchesRegex(pattern));
    EXPECT_THAT(answerTo("transcode -in @wav -out a.wav"),
                ::testing::MatchesRegex("( *[0-9.]+ %( .*)?\n)*100.0 %  read .*  done\n"));
}

TEST_F(TranscodeEndToEnd, eachOptionShowsInTheResult) {
    struct Row {
        const char *target, *words, *facts;  ///< "@plain": 25 a second, 1 s, 16-bit stereo
    };
    constexpr Row rows[] = {
        {"a.mov", "-in @plain -vbd 10 -c_space rec_2020_hlg -abpc 24 -acl quad",
         "video 0 pix_fmt yuv420p10le, video 0 color_primaries bt2020, video 0 color_transfer arib-std-b67, "
         "video 0 color_space bt2020nc, audio 0 codec_name pcm_s24le, audio 0 channels 4"},
        {"a.mov", "-in @plain -vprofile baseline -c_matrix cm_rec_709_2 -acl 1 -mf 10",
         "video 0 profile Constrained Baseline, video 0 color_space bt709, video 0 nb_read_packets 10, "
         "audio 0 channels 1, audio 0 duration 0.400000"},
        {"a.mov", "-in @plain -vprofile high422 -vbd 8 -v_colrange f -acl_tag 6553601",
         "video 0 profile High 4:2:2, video 0 pix_fmt yuvj422p, video 0 color_range pc, audio 0 channels 1"},
        {"a.mov", "-in @plain -vcodec h265 -vprofile main10 -mf 5", "video 0 profile Main 10"},
        {"a.mov", "-in @plain -mf 9223372036854775807", "video 0 nb_read_packets 25, audio 0 duration 1.000000"},
        {"a.mov", "-in_0_0 @mkv -in_0_1 @fields -in_0_2 @plain -mf 30", "video 0 nb_read_packets 30"},
        {"a.mov", "-in @plain -vr 29.97 -acl_bitmap L R C LFE Ls Rs",
         "video 0 r_frame_rate 30000/1001, video 0 nb_read_packets 30, audio 0 channel_layout 5.1(side)"},
        {"a.mov", "-in @plain -vr 12.5 -lang_code deu -alang_code hrv",
         "video 0 r_frame_rate 25/2, video 0 nb_read_packets 13, video 0 tag:language ger, audio 0 tag:language hr "},
        {"a.mov", "-in @plain -vscale 0.5 -dims 200x100 -c_space sRGB",
         "video 0 width 160, video 0 height 90, video 0 color_primaries bt709, video 0 color_transfer iec61966-2-1"},
        {"a.mov", "-in @plain -ovw 200 -ovh 100 -aspect_scaling stretch", "video 0 width 200, video 0 height 100"},
        {"a.mov", "-in @anamorphic", "video 0 sample_aspect_ratio 4:3"},
        {"a.mov", "-in @anamorphic -dims 320x320", "video 0 sample_aspect_ratio 1:1, video 0 height 180"},
        {"a.mov", "-in @tracks -acodec apple_lossless -abpc 16", "audio 0 bits_per_raw_sample 16"},
        {"a.mov", "-in @tracks -ac_omit [0 2", "audio 0 sample_rate 44100, audio 1 channels"},
        {"a.mov", "-in @tracks -adiscrete", "audio 2 channels 1, audio 7 channels 1, audio 8 channels"},
        {"a.mp4", "-in @plain -lang_code cym -alang_code afr", "video 0 tag:language cym, audio 0 tag:language afr"},
        {"a.mov",
         "-in @plain -v_frame_cap 2 -max_v_frame_mem 200000 -additional_decode_options threads=1:flags=+bitexact "
         "-v_decoder ffmpeg -a_decoder ffmpeg",
         "video 0 nb_read_packets 25"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        expectFacts(probe(transcode(row.target, row.words)), row.facts);
    }
    // A wave file states the language of the whole.
    EXPECT_EQ(text(probe(transcode("a.wav", "-in @wav -alang_code deu"))["format"]["tags"], "language"), "deu");
}

/// A table that exchanges nothing but bends the light; the pictures are worked on by one thread or by several.
TEST_F(TranscodeEndToEnd, picturesInFlightDoNotShowInTheResult) {
    writeFile("look.cube", "LUT_3D_SIZE 2\n0 0 0\n1 0 0\n0 0.8 0\n1 1 0\n0 0 0.7\n1 0 1\n0 1 1\n1 1 1\n");
    for (const char* words :
         {"-in @plain -vr 29.97", "-in @plain -mf 7", "-in_0_0 @plain -in_0_1 @fields", "-in @plain"}) {
        Words results;
        for (const char* limit : {" -v_frame_cap 1", " -v_frame_cap 9", ""}) {
            results.push_back(
                readFile(transcode("look.mov", "-vcodec prores422 -clut look.cube " + std::string(words) + limit)));
        }
        EXPECT_TRUE(results[0] == results[1] && results[0] == results[2]) << words;
    }
    EXPECT_LT(psnr("look.mov", clip("plain")), 30);
}

TEST_F(TranscodeEndToEnd, theTimecodeTrackStartsWhereItShould) {
    // From the last second of a minute on, made at 09:30:15 UTC.
    ffmpeg(
        "-f lavfi -i testsrc2=size=192x108:rate=30000/1001:duration=2 -c:v libx264 -preset veryfast -pix_fmt yuv420p "
        "-timecode 00:00:59;20 -metadata creation_time=2026-11-21T09:30:15Z ntsc.mov");
    struct Row {
        const char *target, *words, *timecode;
    };
    constexpr Row rows[] = {
        {"t.mov", "-in ntsc.mov", "00:00:59;20"},
        {"t.mov", "-in ntsc.mov -tc_non_drop", "00:00:59:20"},
        {"t.mov", "-in ntsc.mov -tc_no_ntsc", "00:00:59:20"},
        {"t.mov", "-in ntsc.mov -tc_creation", "09:30:15;00"},
        {"t.mov", "-in ntsc.mov -tc_custom 10:00:00;02", "10:00:00;02"},
        {"t.mov", "-in ntsc.mov -tc_custom 10:00:00:02 -tc_drop", "10:00:00;02"},
        {"t.mp4", "-in ntsc.mov -tc_custom 01:02:03:04", "01:02:03:04"},
        {"t.mov", "-in @plain", "00:00:00:00"},
        {"t.mov", "-in @plain -vr 23.976 -tc_custom 00:00:59:20", "00:00:59:20"},
        {"t.mov", "-in @plain -vr 59.94 -tc_rate 59.94 -tc_drop", "00:00:00;00"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        expectFacts(probe(transcode(row.target, std::string("-tc_track -mf 5 ") + row.words)),
                    std::string("data 0 codec_tag_string tmcd, data 0 tag:timecode ") + row.timecode);
    }
}

}  // namespace
}  // namespace corvex::tool::test::transcodeEndToEndTests
