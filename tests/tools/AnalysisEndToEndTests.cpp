// corvex analyze on generated media: what the results file says, and when there is none.

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <tests/Places.h>
#include <tests/filesystem/LoginManagerMock.h>
#include <tests/tools/Media.h>

namespace corvex::tool::test::analysisEndToEndTests {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

/// ffmpeg finds no picture in some JPEG files of their own when it is to start at 0.
Picture still(const ProbeResult& snapshot) {
    const TemporaryDirectory directory;
    const std::string movie = directory.path("still.mov");
    ffmpeg({"-i", snapshot.value("file", ""), "-c", "copy", movie});
    return Picture(movie);
}

class AnalysisEndToEnd : public testing::Test {
protected:
    Words wordsFor(const Words& paths, const Words& more) const {
        Words words{"analyze", "-pathToAnalyze"};
        words.insert(words.end(), paths.begin(), paths.end());
        words.insert(words.end(), {"-workDirectory", work_.path(), "-resultsFilePath", results_});
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }

    /// The results' files; the results file itself is removed.
    ProbeResult analyze(const Words& paths, const Words& more = {}, int exitStatus = 0) {
        const CommandResult result = corvex(wordsFor(paths, more));
        EXPECT_EQ(result.exitStatus, exitStatus) << result.error;
        said_ = result.output;
        const std::string schema =
            std::string(corvex::test::dataDirectory) + "/../../docs/analysis-results.schema.json";
        runOrFail({"python3", "-c",
                   "import json, jsonschema, sys\n"
                   "jsonschema.validate(json.load(open(sys.argv[1])), json.load(open(sys.argv[2])))",
                   results_, schema});
        const ProbeResult json = ProbeResult::parse(readFile(results_), nullptr, false);
        std::filesystem::remove(results_);
        return json.value("files", ProbeResult::array());
    }

    static ProbeResult track(const ProbeResult& file, const std::string& kind) {
        for (const auto& candidate : file["tracks"]) {
            if (candidate["kind"] == kind) return candidate;
        }
        return ProbeResult::object();
    }

    TemporaryDirectory work_, made_;
    const std::string results_ = made_.path("results.json");
    std::string said_;
};

TEST_F(AnalysisEndToEnd, describesFilesInTheTermsOfTheVocabulary) {
    const std::string prores = made_.path("prores.mov"), mxf = made_.path("x.mxf"), dnx = made_.path("dnx.mov"),
                      dpx = made_.path("still.dpx");
    ffmpeg({"-f", "lavfi", "-i", "testsrc2=size=320x180:rate=30000/1001:duration=0.2", "-c:v", "prores_ks",
            "-profile:v", "4444", "-pix_fmt", "yuv444p10le", "-vf",
            "setparams=color_primaries=bt709:color_trc=bt709:colorspace=bt709", "-timecode", "00:01:00;02", prores});
    ffmpeg(
        {"-i", clip("plain"), "-c:v", "mpeg2video", "-q:v", "2", "-c:a", "pcm_s16le", "-timecode", "10:00:00:00", mxf});
    ffmpeg({"-i", clip("plain"), "-an", "-c:v", "dnxhd", "-profile:v", "dnxhr_lb", "-pix_fmt", "yuv422p", dnx});
    ffmpeg({"-i", clip("plain"), "-frames:v", "1", "-pix_fmt", "gbrp10le", dpx});
    struct Row {
        std::string path;
        const char *container, *codec, *rate, *code, *replacement, *lossless, *timecode;
    };
    const Row rows[] = {
        {clip("plain"), "QuickTime", "H.264", "fps25", "lpcm", "lpcm", "lpcm", nullptr},
        {clip("mp4"), "MP4", "H.264", "fps25", "aac ", "aac", "aac", nullptr},
        {clip("avi"), "AVI", "MP4", "fps25", "lpcm", "lpcm", "lpcm", nullptr},
        {clip("mkv"), nullptr, "H.264", "fps25", "lpcm", "lpcm", "lpcm", nullptr},
        {clip("ts"), nullptr, "H.264", "fps25", "aac ", "aac", "aac", nullptr},
        {clip("ac3"), nullptr, "H.264", "fps25", "ac-3", "aac", "apple_lossless", nullptr},
        {clip("flac"), nullptr, "H.264", "fps25", nullptr, "lpcm", "lpcm", nullptr},
        {clip("wav"), nullptr, nullptr, nullptr, "lpcm", "lpcm", "lpcm", nullptr},
        {prores, "QuickTime", "ProRes 4444", "fps29_97", nullptr, nullptr, nullptr, "00:01:00;02"},
        {mxf, "MXF", "MP2", "fps25", "lpcm", "lpcm", "lpcm", "10:00:00:00"},
        {dnx, "QuickTime", "Avid DNxHR", "fps25", nullptr, nullptr, nullptr, nullptr},
        {dpx, "DPX", nullptr, "fps25", nullptr, nullptr, nullptr, nullptr},
    };
    Words paths;
    for (const Row& row : rows) paths.push_back(row.path);
    const ProbeResult files = analyze(paths, {"-analysisId", "card 7"});
    ASSERT_EQ(files.size(), std::size(rows));
    const auto expectText = [](const ProbeResult& object, const char* key, const char* expected) {
        EXPECT_EQ(object.contains(key), expected != nullptr) << key;
        EXPECT_EQ(object.value(key, ""), expected != nullptr ? expected : "");
    };
    for (std::size_t i = 0; i < files.size(); ++i) {
        SCOPED_TRACE(rows[i].path);
        const ProbeResult& file = files[i];
        EXPECT_EQ(file["path"], rows[i].path);
        expectText(file, "container", rows[i].container);
        const ProbeResult video = track(file, "video").value("video", ProbeResult::object());
        expectText(track(file, "video"), "codec", rows[i].codec);
        expectText(video.value("frameRate", ProbeResult::object()), "common", rows[i].rate);
        const ProbeResult audio = track(file, "audio").value("audio", ProbeResult::object());
        expectText(audio, "formatCode", rows[i].code);
        expectText(audio, "replacement", rows[i].replacement);
        expectText(audio, "losslessReplacement", rows[i].lossless);
        expectText(file.value("startTimecode", ProbeResult::object()), "text", rows[i].timecode);
        EXPECT_EQ(file["sizeInBytes"], std::filesystem::file_size(rows[i].path));
    }
    EXPECT_EQ(files[8]["startTimecode"]["frameNumber"], 1800);  // the first label that a minute of drop frame has
    EXPECT_EQ(track(files[8], "video")["video"]["color"],
              ProbeResult::parse(R"({"primaries": "rec709", "transferFunction": "rec709", "matrix": "rec709",
                                     "range": "video"})"));
    EXPECT_EQ(track(files[8], "video")["video"]["frameRate"]["timeValue"], 30000);
    EXPECT_EQ(track(files[8], "video")["video"]["bitDepth"], 12);  // what the decoder gives
    EXPECT_EQ(track(files[8], "timecode")["codecTag"], "tmcd");
    EXPECT_NEAR(files[0]["durationInSeconds"].get<double>(), 1, 0.01);
    EXPECT_THAT(said_, AllOf(HasSubstr("  QuickTime, 1.000 s\n"), HasSubstr("H.264, 320x180, 25 fps"),
                             HasSubstr("from 10:00:00:00")));
}

TEST_F(AnalysisEndToEnd, whatIsNoMediaIsToldOfBesideTheOthers) {
    const std::string text = made_.path("notes.mov");
    writeFile(text, "left at the hotel");
    const ProbeResult files = analyze({text, clip("rotated")}, {}, 1);
    EXPECT_THAT(files[0].value("problem", ""), HasSubstr("notes.mov': no readable media"));
    EXPECT_EQ(track(files[1], "video")["video"]["rotation"], 270);  // ffmpeg's "rotate" counts the other way
}

TEST_F(AnalysisEndToEnd, snapshotsAreTheFramesAtTheirPlaces) {
    const Words names{"plain", "mkv", "ts", "avi"};
    Words paths;
    for (const auto& name : names) paths.push_back(clip(name));
    const ProbeResult files = analyze(paths, {"-snapshotLocation", "0", "[0.5 1", "-maxImageWidth", "160",
                                              "-compressionFactor", "1", "-analysisId", "a/b"});
    for (std::size_t i = 0; i < names.size(); ++i) {
        ASSERT_EQ(files[i]["snapshots"].size(), 3U);
        constexpr double times[] = {0, 0.48, 0.96};
        for (std::size_t at = 0; at < 3; ++at) {
            SCOPED_TRACE(names[i] + " " + std::to_string(times[at]));
            const ProbeResult& snapshot = files[i]["snapshots"][at];
            // A transport stream says how long it is with its sound, which is a little longer.
            const double time = snapshot.value("timeInSeconds", -1.0);
            EXPECT_NEAR(time, times[at], names[i] == "ts" ? 0.07 : 0.001);
            EXPECT_EQ(snapshot["file"],
                      work_.path("a_b-" + std::to_string(i + 1) + "-" + std::to_string(at + 1) + ".jpg"));
            const Picture made = still(snapshot), expected(clip("plain"), std::floor(time * 25 + 0.01) / 25);
            EXPECT_EQ(made.width(), 160);
            EXPECT_EQ(made.height(), 90);
            // A line crosses the picture and moves; each column of the pattern has one colour but for it.
            for (const double row : {0.3, 0.4, 0.5, 0.6, 0.7, 0.8}) {
                const Pixel a = made.at(0.25, row), b = expected.at(0.25, row);
                EXPECT_LT(std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue), 90);
            }
        }
    }
}

TEST_F(AnalysisEndToEnd, snapshotsAreUprightLimitedCompressedAndLookedUp) {
    const std::string look = made_.path("green.cube");
    writeFile(look, "LUT_3D_SIZE 2\n0 1 0\n0 1 0\n0 1 0\n0 1 0\n0 1 0\n0 1 0\n0 1 0\n0 1 0\n");
    struct Row {
        const char* source;
        Words words;
        int width, height;
        Pixel upperLeft, lowerRight;  ///< Red tells the column, green the row: 0, 127, 254.
    };
    const Row rows[] = {
        {"fields", {"-maxImageWidth", "9999"}, 320, 180, {0, 0, 60}, {254, 254, 60}},
        {"rgb", {"-maxImageWidth", "101"}, 101, 57, {0, 0, 60}, {254, 254, 60}},
        {"rotated", {"-maxImageWidth", "90"}, 90, 160, {254, 0, 60}, {0, 254, 60}},
        {"fields", {"-maxImageWidth", "320", "-imageHeight", "45"}, 80, 45, {0, 0, 60}, {254, 254, 60}},
        {"fields", {"-maxImageWidth", "320", "-lutFile", look}, 320, 180, {0, 255, 0}, {0, 255, 0}},
    };
    int number = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.source + ::testing::PrintToString(row.words));
        Words words{"-snapshotLocation", "0.5", "-analysisId", std::to_string(number++)};
        words.insert(words.end(), row.words.begin(), row.words.end());
        const ProbeResult snapshot = analyze({clip(row.source)}, words)[0]["snapshots"][0];
        const Picture picture = still(snapshot);
        EXPECT_EQ(picture.width(), row.width);
        EXPECT_EQ(picture.height(), row.height);
        EXPECT_EQ(snapshot["width"], row.width);
        const auto expectNear = [](const Pixel& a, const Pixel& b) {
            EXPECT_LE(std::max({std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue)}), 12)
                << a.red << " " << a.green << " " << a.blue;
        };
        expectNear(picture.at(0.1, 0.1), row.upperLeft);
        expectNear(picture.at(0.9, 0.9), row.lowerRight);
    }
    std::uintmax_t sizes[2];
    for (const int factor : {0, 1}) {
        const auto made =
            analyze({clip("plain")}, {"-snapshotLocation", "0", "-maxImageWidth", "320", "-analysisId",
                                      "f" + std::to_string(factor), "-compressionFactor", std::to_string(factor)});
        sizes[factor] = std::filesystem::file_size(made[0]["snapshots"][0]["file"].get<std::string>());
    }
    EXPECT_LT(sizes[0], sizes[1] / 2);
}

TEST_F(AnalysisEndToEnd, readyMadePicturesStandInWhereTheyAreAllowedAndFresh) {
    const std::string cover = made_.path("cover.png"), song = made_.path("song.m4a"), sound = made_.path("a b.wav");
    ffmpeg({"-f", "lavfi", "-i", "color=red:size=64x48", "-frames:v", "1", cover});
    ffmpeg({"-i", clip("wav"), "-i", cover, "-map", "0:a", "-map", "1:v", "-c:a", "aac", "-c:v", "copy",
            "-disposition:v", "attached_pic", song});
    std::filesystem::copy_file(clip("wav"), sound);
    const Words asked{"-snapshotLocation", "0", "-maxImageWidth", "32"};
    const Words allowed{"-snapshotLocation", "0", "-maxImageWidth", "32", "-allowFinderImages"};
    setenv("XDG_CACHE_HOME", made_.path().c_str(), 1);
    const auto makeThumbnail = [&](const std::string& path, std::int64_t lateness) {
        runOrFail(
            {"python3", "-c",
             "import hashlib, os, struct, sys, urllib.parse, zlib\n"
             "cache, path, late = sys.argv[1:]\n"
             "uri = 'file://' + urllib.parse.quote(path)\n"
             "def chunk(kind, data):\n"
             "    return struct.pack('>I', len(data)) + kind + data + struct.pack('>I', zlib.crc32(kind + data))\n"
             "rows = (b'\\0' + b'\\0\\0\\xff' * 128) * 96\n"
             "png = b'\\x89PNG\\r\\n\\x1a\\n' + chunk(b'IHDR', struct.pack('>IIBBBBB', 128, 96, 8, 2, 0, 0, 0))\n"
             "png += chunk(b'tEXt', b'Thumb::URI\\0' + uri.encode())\n"
             "png += chunk(b'tEXt', b'Thumb::MTime\\0%d' % (int(os.stat(path).st_mtime) + int(late)))\n"
             "png += chunk(b'IDAT', zlib.compress(rows)) + chunk(b'IEND', b'')\n"
             "os.makedirs(cache + '/thumbnails/normal', exist_ok=True)\n"
             "name = hashlib.md5(uri.encode()).hexdigest() + '.png'\n"
             "open(cache + '/thumbnails/normal/' + name, 'wb').write(png)",
             made_.path(), path, std::to_string(lateness)});
    };
    makeThumbnail(sound, 1);
    const auto refused = analyze({song, sound}, asked, 1);
    EXPECT_THAT(refused[0]["snapshots"][0].value("problem", ""), HasSubstr("holds no video"));
    EXPECT_FALSE(refused[0]["snapshots"][0].contains("file"));
    EXPECT_EQ(work_.entries(), Words{});
    const auto stale = analyze({sound}, allowed, 1);
    EXPECT_TRUE(stale[0]["snapshots"][0].contains("problem"));
    makeThumbnail(sound, 0);
    const std::string raw = made_.path("raw.r3d");
    writeFile(raw, "of a camera that is not known here");
    makeThumbnail(raw, 0);
    EXPECT_EQ(
        analyze({raw}, {"-snapshotLocation", "0", "-maxImageWidth", "32", "-allowFinderImages", "-analysisId", "r"},
                1)[0]["snapshots"][0]
            .value("source", ""),
        "desktop");
    const auto files = analyze({song, sound, clip("plain")}, allowed);
    unsetenv("XDG_CACHE_HOME");
    const char* const sources[] = {"embedded", "desktop", "frame"};
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(files[i]["snapshots"][0].value("source", ""), sources[i]);
    EXPECT_EQ(track(files[0], "picture")["codecName"], "png");
    EXPECT_GT(still(files[0]["snapshots"][0]).at(0.5, 0.5).red, 240);
    const Picture thumbnail = still(files[1]["snapshots"][0]);
    EXPECT_EQ(thumbnail.height(), 24);
    EXPECT_GT(thumbnail.at(0.5, 0.5).blue, 240);
}

TEST_F(AnalysisEndToEnd, deepAnalysisCountsWhatItDecodes) {
    const auto digest = [](const std::string& path, const std::string& track) {
        const std::string line = runOrFail({"ffmpeg", "-v", "error", "-i", path, "-map", "0:" + track, "-f", "hash",
                                            "-hash", "sha256", "-c:a", "pcm_s16le", "-"});
        return line.substr(line.find('=') + 1, 64);
    };
    std::string bytes = readFile(clip("plain"));
    const std::string damaged = made_.path("damaged.mov");
    const std::size_t media = bytes.find("mdat");
    for (std::size_t i = media + 2000; i < media + 12000; ++i) bytes[i] = static_cast<char>(0x55);
    writeFile(damaged, bytes);

    const auto files = analyze({clip("plain"), clip("mkv"), damaged}, {"-deepAnalysis"}, 1);
    for (const std::size_t i : {0U, 1U}) {
        const ProbeResult& tracks = files[i]["deep"]["tracks"];
        EXPECT_EQ(tracks[0]["frames"], 25);
        EXPECT_EQ(tracks[1]["frames"], 48000);
        EXPECT_EQ(tracks[0]["decodeErrors"], 0);
        EXPECT_EQ(tracks[0]["sha256"], digest(clip("plain"), "v"));
        EXPECT_EQ(tracks[1]["sha256"], digest(clip("plain"), "a"));
    }
    EXPECT_GT(files[2]["deep"]["tracks"][0]["decodeErrors"].get<int>() +
                  files[2]["deep"]["tracks"][1]["decodeErrors"].get<int>(),
              0);
    EXPECT_NE(files[2]["deep"]["tracks"][0]["sha256"], files[0]["deep"]["tracks"][0]["sha256"]);
    EXPECT_THAT(said_, AllOf(HasSubstr("25/25 frames"), HasSubstr("decoded 48000, errors 0")));
}

TEST_F(AnalysisEndToEnd, everyErrorEndsWithItsStatusAndWithoutResults) {
    const std::string none = made_.path("none"), path = clip("plain"), taken = made_.path("taken");
    writeFile(taken, "kept");
    const Words paths{"-pathToAnalyze", path}, work{"-workDirectory", work_.path()}, out{"-resultsFilePath", results_};
    const auto joined = [](std::initializer_list<Words> parts) {
        Words words{"analyze"};
        for (const Words& part : parts) words.insert(words.end(), part.begin(), part.end());
        return words;
    };
    struct Row {
        Words words;
        int exitStatus;
        const char* message;
    };
    const Row rows[] = {
        {{"analyze"}, 64, "-pathToAnalyze is missing"},
        {joined({{"-pathToAnalyze", path, none}, work, out}), 66, "-pathToAnalyze: no such file"},
        {joined({paths}), 64, "-workDirectory is missing"},
        {joined({paths, {"-workDirectory", none}, out}), 66, "-workDirectory: no such folder"},
        {joined({paths, work}), 64, "-resultsFilePath is missing"},
        {joined({paths, work, {"-resultsFilePath", taken}}), 73, "-resultsFilePath: the file exists"},
        {joined({paths, work, {"-resultsFilePath", none + "/r"}}), 73, "-resultsFilePath: the file cannot be created"},
        {joined({paths, work, out, {"-maxImageWidth", "9"}}), 64, "-snapshotLocation is missing"},
        {joined({paths, work, out, {"-snapshotLocation", "0"}}), 64, "-maxImageWidth is missing"},
        {joined({paths, work, out, {"-maxImageWidth", "9", "-snapshotLocation", "2"}}), 64, "'2': expected 0"},
        {joined({paths, work, out, {"-maxImageWidth", "9", "-snapshotLocation", "0", "-lutFile", taken}}), 1,
         "no look-up"},
        {joined({paths, work, out, {"-frobnicate"}}), 64, "'-frobnicate': unknown flag"},
    };
    for (const Row& row : rows) {
        const CommandResult result = corvex(row.words);
        EXPECT_EQ(result.exitStatus, row.exitStatus) << result.error;
        EXPECT_EQ(lineCount(result.error), 1U) << result.error;
        EXPECT_THAT(result.error, HasSubstr(row.message));
        EXPECT_FALSE(std::filesystem::exists(results_));
    }
    EXPECT_EQ(readFile(taken), "kept");
    EXPECT_EQ(work_.entries(), Words{});
    EXPECT_THAT(corvex({"analyze", "--help"}).output, HasSubstr("-snapshotLocation"));
    EXPECT_EQ(corvex({"-isAnalyzer"}).exitStatus, 64);
}

TEST_F(AnalysisEndToEnd, anAnalysisThatIsStoppedLeavesNothing) {
    const corvex::test::LoginManagerMock login;
    ASSERT_TRUE(login.isReady());
    const std::string stuck = made_.path("stuck.mov");
    ASSERT_EQ(mkfifo(stuck.c_str(), 0600), 0);
    const int pipe = open(stuck.c_str(), O_RDWR | O_CLOEXEC);
    Words words = wordsFor({clip("plain"), stuck}, {"-snapshotLocation", "0", "-maxImageWidth", "64"});
    words.insert(words.begin(), corvex::test::toolPath);
    Command command(words);
    EXPECT_TRUE(eventually([&] { return work_.entries() == Words{"snapshot-1-1.jpg"}; }));
    EXPECT_TRUE(login.isInhibited());
    kill(command.processIdentifier(), SIGTERM);
    EXPECT_EQ(command.wait().exitStatus, 1);
    close(pipe);
    EXPECT_EQ(work_.entries(), Words{});
    EXPECT_EQ(made_.entries(), Words{"stuck.mov"});
    EXPECT_TRUE(eventually([&] { return !login.isInhibited(); }));
}

}  // namespace
}  // namespace corvex::tool::test::analysisEndToEndTests
