// Runs the tool on small clips and looks at what came out with the ffprobe and ffmpeg programs.

#include <algorithm>
#include <cmath>
#include <filesystem>

#include <gmock/gmock.h>

#include <tests/tools/Media.h>

namespace corvex::tool::test::transcodeEndToEndTests {
namespace {

using ::testing::HasSubstr;

/// What is left of two encodings of one picture by the same encoder.
constexpr double sameDecibels = 35;

class TranscodeEndToEnd : public ::testing::Test {
protected:
    /// Runs a job that must succeed without a word on standard error; gives the path of the target.
    std::string transcode(const std::string& source, const std::string& name, const std::string& more = {}) {
        Words words{"-in", clip(source), "-out", directory.path(name), "-overwrite"};
        for (const std::string& word : wordsOf(more)) words.push_back(word);
        return transcode(words);
    }
    std::string transcode(Words words) {
        std::string shown;
        for (const std::string& word : words) shown += word + " ";
        const auto out = std::find(words.begin(), words.end(), "-out") + 1;
        const std::string target = *out;
        words.insert(words.begin(), "transcode");
        const CommandResult result = corvex(words);
        EXPECT_EQ(result.exitStatus, 0) << shown << result.error;
        EXPECT_EQ(result.error, "") << shown;
        return target;
    }
    /// The same by the ffmpeg program.
    std::string reference(const std::string& source, const std::string& name, const std::string& more) {
        Words words{"-i", clip(source)};
        for (const std::string& word : wordsOf(more)) words.push_back(word);
        words.push_back(directory.path(name));
        ffmpeg(words);
        return words.back();
    }

    TemporaryDirectory directory;
};

TEST_F(TranscodeEndToEnd, everyVideoCodecIsWhatItsNameSays) {
    struct Row {
        const char* codec;
        const char* source;
        const char* name;
        const char* profile;
        const char* pixels;
        const char* tag;
        const char* reference;  // what makes ffmpeg's program write the same
    };
    const Row rows[] = {
        {"dnxhd", "hd", "dnxhd", "DNXHD", "yuv422p", "AVdn", "dnxhd -b:v 60M -r 25"},
        {"dnxhrlb", "plain", "dnxhd", "DNXHR LB", "yuv422p", "AVdh", "dnxhd -profile:v dnxhr_lb"},
        {"dnxhrsq", "plain", "dnxhd", "DNXHR SQ", "yuv422p", "AVdh", "dnxhd -profile:v dnxhr_sq"},
        {"dnxhrhq", "plain", "dnxhd", "DNXHR HQ", "yuv422p", "AVdh", "dnxhd -profile:v dnxhr_hq"},
        {"dnxhrhqx", "plain", "dnxhd", "DNXHR HQX", "yuv422p10le", "AVdh", "dnxhd -profile:v dnxhr_hqx"},
        {"dnxhr444", "plain", "dnxhd", "DNXHR 444", "yuv444p10le", "AVdh", "dnxhd -profile:v dnxhr_444"},
        {"h264", "plain", "h264", "High", "yuv420p", "avc1", "libx264"},
        {"h265", "plain", "hevc", "Main", "yuv420p", "hvc1", "libx265"},
        {"mjpeg", "plain", "mjpeg", "Baseline", "yuvj422p", "jpeg", "mjpeg -q:v 3"},
        {"mp4", "plain", "mpeg4", "Simple Profile", "yuv420p", "mp4v", "mpeg4 -q:v 3"},
        {"prores4444", "plain", "prores", "4444", "yuv444p12le", "ap4h", "prores_ks -profile:v 4444"},
        {"prores4444xq", "plain", "prores", "XQ", "yuv444p12le", "ap4x", "prores_ks -profile:v 4444xq"},
        {"prores422", "plain", "prores", "Standard", "yuv422p10le", "apcn", "prores_ks -profile:v standard"},
        {"prores422hq", "plain", "prores", "HQ", "yuv422p10le", "apch", "prores_ks -profile:v hq"},
        {"prores422lt", "plain", "prores", "LT", "yuv422p10le", "apcs", "prores_ks -profile:v lt"},
        {"prores422proxy", "plain", "prores", "Proxy", "yuv422p10le", "apco", "prores_ks -profile:v proxy"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.codec);
        const std::string made = transcode(row.source, "made.mov", "-mf 10 -an -vcodec " + std::string(row.codec));
        const ProbeResult source = stream(probe(clip(row.source)), "video");
        const ProbeResult video = stream(probe(made), "video");
        EXPECT_EQ(text(video, "codec_name"), row.name);
        EXPECT_EQ(text(video, "profile"), row.profile);
        EXPECT_EQ(text(video, "pix_fmt"), row.pixels);
        EXPECT_EQ(text(video, "codec_tag_string"), row.tag);
        for (const char* key : {"width", "height"}) EXPECT_EQ(number(video, key), number(source, key)) << key;
        const double frames = std::min(10.0, number(source, "nb_read_packets"));
        EXPECT_EQ(number(video, "nb_read_packets"), frames);
        EXPECT_EQ(number(video, "duration"), frames / 25);
        const std::string pixels = row.pixels[5] == '4' ? "yuv444p10le" : row.pixels;
        const std::string words = "-c:v " + std::string(row.reference) + " -pix_fmt " + pixels + " -an -frames:v 10";
        EXPECT_GE(psnr(made, reference(row.source, "reference.mov", words)), sameDecibels);
    }
}

TEST_F(TranscodeEndToEnd, everyAudioFormatIsWhatItsNameSays) {
    struct Row {
        const char* source;
        const char* target;
        const char* words;
        const char* codec;
        double rate, channels;
    };
    const Row rows[] = {
        {"plain", "a.mov", "-acodec lpcm", "pcm_s16le", 48000, 2},
        {"plain", "a.mov", "-acodec aac", "aac", 48000, 2},
        {"plain", "a.mov", "-acodec apple_lossless", "alac", 48000, 2},
        {"plain", "a.mov", "-acodec apple_ima4", "adpcm_ima_qt", 48000, 2},
        {"plain", "a.mov", "-asr 44100", "pcm_s16le", 44100, 2},
        {"plain", "a.mp4", "", "aac", 48000, 2},
        {"plain", "a.mp4", "-acodec apple_lossless -asr 96000", "alac", 96000, 2},
        {"plain", "a.wav", "", "pcm_s16le", 48000, 2},
        {"mp4", "a.wav", "-asr 32000", "pcm_s16le", 32000, 2},
        {"wav", "a.mov", "-vn", "pcm_s16le", 48000, 2},
        {"wav", "a.mp4", "-vn", "aac", 48000, 2},
        {"plain", "a.mov", "-acopy", "pcm_s16le", 48000, 2},
        {"mp4", "a.mp4", "-acopy -vn", "aac", 48000, 2},
        {"plain", "a.wav", "-acopy", "pcm_s16le", 48000, 2},
        {"mp4", "a.mov", "", "aac", 48000, 2},
        {"ac3", "a.mov", "", "aac", 48000, 2},
        {"flac", "a.mov", "", "pcm_s16le", 48000, 2},
    };
    const double level = loudness(clip("plain"), 0.5)[0];
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.source) + " " + row.target + " " + row.words);
        const std::string made = transcode(row.source, row.target, row.words);
        const ProbeResult audio = stream(probe(made), "audio");
        EXPECT_EQ(text(audio, "codec_name"), row.codec);
        EXPECT_EQ(number(audio, "sample_rate"), row.rate);
        EXPECT_EQ(number(audio, "channels"), row.channels);
        EXPECT_NEAR(number(audio, "duration"), 1, 0.03);
        EXPECT_NEAR(loudness(made, 0.5)[0], level, 0.1 * level);
    }
}

TEST_F(TranscodeEndToEnd, audioKeepsItsTracksDepthAndPlace) {
    const ProbeResult tracks = probe(transcode("tracks", "tracks.mov"));
    const int channels[] = {1, 1, 6};
    const int rates[] = {48000, 44100, 48000};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(text(stream(tracks, "audio", i), "codec_name"), "pcm_s24le") << i;
        EXPECT_EQ(number(stream(tracks, "audio", i), "channels"), channels[i]) << i;
        EXPECT_EQ(number(stream(tracks, "audio", i), "sample_rate"), rates[i]) << i;
    }
    for (const char* source : {"late-mov", "late-mkv"}) {
        for (const char* format : {"lpcm", "aac"}) {
            const auto late = loudness(transcode(source, "late.mov", std::string("-acodec ") + format), 0.25);
            ASSERT_GE(late.size(), 4U) << source;
            EXPECT_LT(late[0], 0.001) << source << " " << format;
            EXPECT_GT(late[2], 0.05) << source << " " << format;
        }
    }
}

/// A place in the picture and the field of the "fields" clip that is to be seen there; -1: black.
struct Sight {
    double x, y;
    int column, row;
};
void expectSights(const Picture& picture, const std::vector<Sight>& sights) {
    for (const Sight& sight : sights) {
        const Pixel pixel = picture.at(sight.x, sight.y);
        const bool isBlack = sight.column < 0;
        EXPECT_NEAR(pixel.red, isBlack ? 0 : 127 * sight.column, 25) << sight.x << ", " << sight.y;
        EXPECT_NEAR(pixel.green, isBlack ? 0 : 127 * sight.row, 25) << sight.x << ", " << sight.y;
        EXPECT_NEAR(pixel.blue, isBlack ? 0 : 60, 25) << sight.x << ", " << sight.y;
    }
}

TEST_F(TranscodeEndToEnd, picturesLandWhereTheScalingSays) {
    struct Row {
        std::string words;
        int width, height;
        std::vector<Sight> sights;
    };
    std::vector<Row> rows{
        {"-dims 200x200 -aspect_scaling stretch",
         200,
         200,
         {{0.1, 0.1, 0, 0}, {0.9, 0.1, 2, 0}, {0.5, 0.5, 1, 1}, {0.1, 0.9, 0, 2}, {0.9, 0.9, 2, 2}}},
        {"-dims 200x200", 200, 112, {{0.1, 0.1, 0, 0}, {0.5, 0.5, 1, 1}, {0.9, 0.9, 2, 2}}},
        {"-dims 200x200 -aspect_scaling letterbox",
         200,
         200,
         {{0.5, 0.1, -1, 0}, {0.5, 0.9, -1, 0}, {0.1, 0.3, 0, 0}, {0.5, 0.5, 1, 1}, {0.9, 0.7, 2, 2}}},
        {"-dims 400x180 -aspect_scaling letterbox",
         400,
         180,
         {{0.05, 0.5, -1, 0}, {0.95, 0.5, -1, 0}, {0.15, 0.1, 0, 0}, {0.85, 0.9, 2, 2}}},
        {"-dims 179x99 -aspect_scaling stretch", 180, 100, {{0.1, 0.1, 0, 0}, {0.9, 0.9, 2, 2}}},
    };
    // A square leaves 180 of 320 columns, a wide strip 60 of 180 rows; the anchor says which.
    const auto crop = [](const char* dims, const char* anchor) {
        return std::string("-aspect_scaling crop -dims ") + dims + " -crop_anchor " + anchor;
    };
    rows.push_back({crop("90x90", "cl"), 90, 90, {{0.04, 0.1, 0, 0}, {0.96, 0.9, 1, 2}}});
    rows.push_back({crop("90x90", "tc"), 90, 90, {{0.04, 0.1, 0, 0}, {0.96, 0.9, 2, 2}}});
    rows.push_back({crop("90x90", "br"), 90, 90, {{0.04, 0.1, 1, 0}, {0.96, 0.9, 2, 2}}});
    rows.push_back({crop("320x60", "tl"), 320, 60, {{0.1, 0.2, 0, 0}, {0.9, 0.8, 2, 0}}});
    rows.push_back({crop("320x60", "bc"), 320, 60, {{0.1, 0.2, 0, 2}, {0.9, 0.8, 2, 2}}});
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        const Picture picture(transcode("fields", "made.mov", row.words + " -vcodec prores422hq"));
        EXPECT_EQ(picture.width(), row.width);
        EXPECT_EQ(picture.height(), row.height);
        expectSights(picture, row.sights);
    }
}

// A camera that filmed by way of a mirror says so by the matrix of its track (ISO/IEC 14496-12, 8.3.2).
TEST_F(TranscodeEndToEnd, mirroredPicturesAreSetRight) {
    std::string bytes = readFile(clip("fields"));
    const std::size_t matrix = bytes.find("tkhd") + 4 + 40;
    ASSERT_LT(matrix, bytes.size());
    bytes.replace(matrix, 4, std::string("\xFF\xFF\x00\x00", 4));  // -1: x runs from right to left
    const std::string source = directory.path("mirrored.mp4");
    writeFile(source, bytes);
    const std::string made = transcode({"-in", source, "-out", directory.path("made.mov"), "-vcodec", "prores422hq"});
    expectSights(Picture(made), {{0.1, 0.1, 2, 0}, {0.9, 0.1, 0, 0}, {0.5, 0.5, 1, 1}, {0.9, 0.9, 0, 2}});
}

TEST_F(TranscodeEndToEnd, fieldsOfInterlacedPicturesAreScaledForThemselves) {
    for (const bool isInterlaced : {true, false}) {  // one field is white, the other black
        const std::string scaled = transcode(isInterlaced ? "interlaced" : "striped", "made.mov",
                                             "-dims 64x32 -aspect_scaling stretch -vcodec "
                                             "prores4444");
        const Picture picture(scaled);
        const int contrast = picture.at(0.5, 15.5 / 32).green - picture.at(0.5, 16.5 / 32).green;
        EXPECT_EQ(std::abs(contrast) > 200, isInterlaced) << contrast;
    }
}

TEST_F(TranscodeEndToEnd, picturesMatchTheSameJobByTheFfmpegProgram) {
    struct Row {
        const char* name;
        const char* source;
        const char* words;
        const char* filter;
    };
    const Row rows[] = {
        {"stretch", "plain", "-dims 200x200 -aspect_scaling stretch", "scale=200:200"},
        {"letterbox", "plain", "-dims 200x200 -aspect_scaling letterbox", "scale=200:112,pad=200:200:0:44"},
        {"crop", "plain", "-dims 90x90 -aspect_scaling crop", "crop=180:180,scale=90:90"},
        {"enlarged", "plain", "-dims 640x360", "scale=640:360"},
        {"turned", "rotated", "", "null"},
        {"odd", "odd", "", "scale=322:182"},
        {"full range", "fullrange", "", "scale=in_range=pc:out_range=tv"},
        {"RGB", "rgb", "", "scale=out_color_matrix=bt709:out_range=tv"},
        {"MPEG-4 in AVI", "avi", "", "null"},
        {"transport stream", "ts", "", "null"},
        {"Matroska", "mkv", "", "null"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string made = transcode(row.source, "made.mov", std::string("-vcodec prores422hq ") + row.words);
        const std::string hq = " -c:v prores_ks -profile:v hq -pix_fmt yuv422p10le -an";
        const std::string expected = reference(row.source, "reference.mov", "-vf " + std::string(row.filter) + hq);
        EXPECT_EQ(number(stream(probe(made), "video"), "nb_read_packets"),
                  number(stream(probe(expected), "video"), "nb_read_packets"));
        EXPECT_GE(psnr(made, expected), sameDecibels);
    }
}

TEST_F(TranscodeEndToEnd, colourAndRangeComeOutAsTheyWentIn) {
    const std::vector<Sight> corners{{0.1, 0.1, 0, 0}, {0.9, 0.1, 2, 0}, {0.1, 0.9, 0, 2}, {0.9, 0.9, 2, 2}};
    for (const char* codec : {"h264", "prores4444", "mjpeg", "dnxhr444"}) {
        SCOPED_TRACE(codec);
        expectSights(Picture(transcode("rgb", "rgb.mov", std::string("-vcodec ") + codec)), corners);
    }
    // The motion-JPEG output is of full range: its bars are black there, too.
    const Picture boxed(transcode("fields", "box.mov", "-vcodec mjpeg -dims 200x200 -aspect_scaling letterbox"));
    EXPECT_LE(boxed.at(0.5, 0.1).green, 3);
    EXPECT_THAT(text(stream(probe(transcode("alpha", "alpha.mov", "-vcodec prores4444")), "video"), "pix_fmt"),
                HasSubstr("yuva444p"));
}

TEST_F(TranscodeEndToEnd, widePixelsStayOrBecomeSquare) {
    const ProbeResult kept = stream(probe(transcode("anamorphic", "kept.mov")), "video");
    EXPECT_EQ(text(kept, "sample_aspect_ratio"), "4:3");
    const ProbeResult fitted = stream(probe(transcode("anamorphic", "fitted.mov", "-dims 320x320")), "video");
    EXPECT_EQ(text(fitted, "sample_aspect_ratio"), "1:1");
    EXPECT_EQ(number(fitted, "height"), 180);
}

std::vector<double> pictureTimes(const std::string& path) {
    const std::string output = runOrFail(
        {"ffprobe", "-v", "error", "-select_streams", "v", "-show_entries", "packet=pts_time", "-of", "json", path});
    std::vector<double> times;
    const ProbeResult packets = ProbeResult::parse(output, nullptr, false).value("packets", ProbeResult::array());
    for (const auto& packet : packets) times.push_back(number(packet, "pts_time"));
    std::sort(times.begin(), times.end());
    return times;
}

TEST_F(TranscodeEndToEnd, picturesThatComeAtVaryingTimesKeepThem) {
    for (const char* source : {"varying", "varying-mkv"}) {
        for (const char* codec : {"h264", "mp4", "prores422proxy"}) {
            SCOPED_TRACE(std::string(source) + " " + codec);
            const auto expected = pictureTimes(clip(source));
            const auto times = pictureTimes(transcode(source, "made.mov", std::string("-vcodec ") + codec));
            ASSERT_EQ(times.size(), expected.size());
            for (std::size_t i = 0; i < times.size(); ++i) {
                EXPECT_NEAR(times[i] - times[0], expected[i] - expected[0], 0.002) << i;
            }
        }
    }
}

TEST_F(TranscodeEndToEnd, bitRatesAreKeptTo) {
    const std::string small = transcode("plain", "small.mov", "-vbr 0.2 -an");
    const std::string expected = reference("plain", "reference.mov", "-c:v libx264 -b:v 0.2M -pix_fmt yuv420p -an");
    EXPECT_NEAR(number(stream(probe(small), "video"), "bit_rate"), number(stream(probe(expected), "video"), "bit_rate"),
                10'000);
    EXPECT_GE(psnr(small, expected), sameDecibels);

    const std::string rated = transcode("hd", "rated.mov", "-vcodec dnxhd -vbr 90");
    EXPECT_NEAR(number(stream(probe(rated), "video"), "bit_rate"), 90e6, 5e6);
    const CommandResult refused =
        corvex({"transcode", "-in", clip("hd"), "-out", directory.path("x.mov"), "-vcodec", "dnxhd", "-vbr", "77"});
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_THAT(refused.error, HasSubstr("expected one of 60, 75, 90"));
}

TEST_F(TranscodeEndToEnd, theIndexStandsWhereItIsWanted) {
    for (const char* name : {"a.mov", "a.mp4"}) {
        EXPECT_TRUE(isIndexInFront(transcode("plain", name, "-web"))) << name;
        EXPECT_FALSE(isIndexInFront(transcode("plain", name))) << name;
    }
}

TEST_F(TranscodeEndToEnd, filesOfGroupsFollowEachOther) {
    const std::string made = transcode({"-in_1_1", clip("plain"), "-in_1_0", clip("fields"), "-in_0_0", clip("mkv"),
                                        "-out", directory.path("made.mov"), "-vcodec", "prores422proxy"});
    const ProbeResult result = probe(made);
    EXPECT_EQ(number(stream(result, "video"), "nb_read_packets"), 25 + 5 + 25);
    EXPECT_NEAR(number(stream(result, "video"), "duration"), 2.2, 0.001);
    expectSights(Picture(made, 1.08), {{0.1, 0.1, 0, 0}, {0.9, 0.1, 2, 0}, {0.5, 0.5, 1, 1}});
    const auto sound = loudness(made, 0.2);  // the one in the middle is silent
    ASSERT_EQ(sound.size(), 11U);
    for (std::size_t i = 0; i < sound.size(); ++i) EXPECT_EQ(sound[i] > 0.05, i != 5) << i;
}

TEST_F(TranscodeEndToEnd, soundOfJoinedFilesStaysBesideItsPictures) {
    struct Row {
        const char* first;
        const char* second;
        Words words;
        bool isExact;
    };
    const Row rows[] = {
        {"brief", "plain", {}, true},
        {"brief", "plain", {"-acodec", "aac"}, false},
        {"brief", "plain", {"-acopy"}, true},
        {"brief-aac", "mp4", {"-acopy"}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.first) + (row.words.empty() ? "" : " " + row.words.back()));
        Words words{"-in_0_0",   clip(row.first), "-in_0_1", clip(row.second), "-out", directory.path("made.mov"),
                    "-overwrite"};
        words.insert(words.end(), row.words.begin(), row.words.end());
        const std::string made = transcode(words);
        EXPECT_EQ(number(stream(probe(made), "video"), "nb_read_packets"), 50);
        const auto sound = loudness(made, 0.125);  // on for half a second, off for as long, on for a second
        ASSERT_GE(sound.size(), 15U);
        for (std::size_t i = 0; i < 15; ++i) {
            if (!row.isExact && (i == 4 || i == 7 || i == 8)) continue;  // where a coded packet straddles the change
            EXPECT_EQ(sound[i] > 0.05, i < 4 || i >= 8) << i;
        }
    }
    for (const Words& more : {Words{}, Words{"-acopy"}}) {
        Words words{"-in_0_0", clip("overlong"),           "-in_0_1",   clip("plain"),
                    "-out",    directory.path("made.mov"), "-overwrite"};
        words.insert(words.end(), more.begin(), more.end());
        EXPECT_NEAR(number(stream(probe(transcode(words)), "audio"), "duration"), 2, 0.001);
    }
}

TEST_F(TranscodeEndToEnd, bytesMayGatherElsewhere) {
    const TemporaryDirectory work("/dev/shm");
    const std::string made = transcode("plain", "made.mov", "-web -work_dir " + work.path());
    EXPECT_EQ(number(stream(probe(made), "video"), "nb_read_packets"), 25);
    EXPECT_EQ(work.entries(), Words{});
    EXPECT_EQ(directory.entries(), Words{"made.mov"});
}

TEST_F(TranscodeEndToEnd, progressIsWrittenLineByLine) {
    const std::string file = directory.path("progress.txt");
    transcode("plain", "made.mov", "-progress_prefix Job 7: -progress_file " + file);
    const std::string pattern =
        "(job 7: state=(running|finishing) frame=[0-9]+ total=25 percent=[0-9.]+ fps=[0-9.]+ eta=-?[0-9]+ "
        "read=[0-9]+ written=[0-9]+\n)+"
        "job 7: state=done frame=25 total=25 percent=100.0 fps=[0-9.]+ eta=0 read=[0-9]+ written=[0-9]+\n";
    EXPECT_THAT(readFile(file), ::testing::MatchesRegex(pattern));
    const CommandResult shown = corvex({"transcode", "-in", clip("wav"), "-out", directory.path("a.wav")});
    EXPECT_THAT(shown.output, ::testing::MatchesRegex("( *[0-9.]+ %( .*)?\n)*100.0 %  read .*  done\n"));
}

}  // namespace
}  // namespace corvex::tool::test::transcodeEndToEndTests
