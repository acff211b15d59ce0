// corvex analyze on generated media: what the results file says, and when there is none.

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include <gmock/gmock.h>

#include <tests/Places.h>
#include <tests/filesystem/LoginManagerMock.h>
#include <tests/tools/Media.h>

namespace corvex::tool::test::analysisEndToEndTests {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

Picture still(const ProbeResult& snapshot) { return Picture(snapshot.value("file", "")); }

class AnalysisEndToEnd : public RoomTest {
protected:
    AnalysisEndToEnd() { std::filesystem::create_directory("work"); }

    /// The results' files; the results file itself is removed.
    ProbeResult analyze(const std::string& words, int exitStatus = 0) {
        const CommandResult result =
            corvex("analyze -workDirectory work -resultsFilePath results.json -pathToAnalyze " + words);
        EXPECT_EQ(result.exitStatus, exitStatus) << result.error;
        said_ = result.output;
        runOrFail({"python3", "-c",
                   "import json, jsonschema, sys\n"
                   "jsonschema.validate(*[json.load(open(path)) for path in sys.argv[1:]])",
                   "results.json",
                   corvex::test::dataDirectory + std::string("/../../docs/analysis-results.schema.json")});
        const std::string text = readFile("results.json");
        std::filesystem::remove("results.json");
        return ProbeResult::parse(text).at("files");
    }

    static ProbeResult track(const ProbeResult& file, const std::string& kind) {
        for (const auto& candidate : file["tracks"]) {
            if (candidate["kind"] == kind) return candidate;
        }
        return ProbeResult::object();
    }

    std::string said_;
};

TEST_F(AnalysisEndToEnd, describesFilesInTheTermsOfTheVocabulary) {
    ffmpeg(
        "-f lavfi -i testsrc2=size=320x180:rate=30000/1001:duration=0.2 -c:v prores_ks -profile:v 4444 "
        "-pix_fmt yuv444p10le -vf setparams=color_primaries=bt709:color_trc=bt709:colorspace=bt709 "
        "-timecode 00:01:00;02 prores.mov");
    ffmpeg("-i @plain -c:v mpeg2video -q:v 2 -c:a pcm_s16le -timecode 10:00:00:00 x.mxf");
    ffmpeg("-i @plain -frames:v 1 -pix_fmt gbrp10le still.dpx");
    writeFile("notes.mov", "left at the hotel");
    std::string mirrored = readFile(clip("plain"));
    mirrored.replace(mirrored.find("tkhd") + 44, 2, "\xff\xff");  // the matrix: x becomes -x
    writeFile("mirrored.mov", mirrored);
    // Container, codec, common rate, format code, replacement, lossless replacement, timecode; "-": there is none.
    const std::pair<std::string, const char*> rows[] = {
        {"prores.mov", "QuickTime|ProRes 4444|fps29_97|-|-|-|00:01:00;02"},
        {"mirrored.mov", "QuickTime|H.264|fps25|lpcm|lpcm|lpcm|-"},
        {clip("mp4"), "MP4|H.264|fps25|aac |aac|aac|-"},
        {clip("avi"), "AVI|MP4|fps25|lpcm|lpcm|lpcm|-"},
        {clip("mkv"), "-|H.264|fps25|lpcm|lpcm|lpcm|-"},
        {clip("flac"), "-|H.264|fps25|-|lpcm|lpcm|-"},
        {"x.mxf", "MXF|MP2|fps25|lpcm|lpcm|lpcm|10:00:00:00"},
        {"still.dpx", "DPX|-|-|-|-|-|-"},
        {clip("rotated"), "MP4|H.264|fps25|-|-|-|-"},
        {"notes.mov", "-|-|-|-|-|-|-"},
    };
    std::string paths;
    for (const auto& [path, terms] : rows) paths += path + " ";
    const ProbeResult files = analyze(paths, 1);
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const auto& [path, expected] = rows[i];
        const ProbeResult& file = files.at(i);
        std::string terms = file.value("container", "-");
        for (const auto& [kind, pointer] : {std::pair("video", "/codec"),
                                            {"video", "/video/frameRate/common"},
                                            {"audio", "/audio/formatCode"},
                                            {"audio", "/audio/replacement"},
                                            {"audio", "/audio/losslessReplacement"}}) {
            terms += "|" + track(file, kind).value(ProbeResult::json_pointer(pointer), "-");
        }
        terms += "|" + file.value("/startTimecode/text"_json_pointer, "-");
        EXPECT_EQ(terms, expected) << path;
        EXPECT_EQ(file.contains("problem"), i == 9) << path;
        EXPECT_TRUE(i == 9 || file["sizeInBytes"] == std::filesystem::file_size(path)) << path;
    }
    EXPECT_EQ(files[0]["startTimecode"]["frameNumber"], 1800);  // the first label that a minute of drop frame has
    const ProbeResult prores = track(files[0], "video")["video"];
    EXPECT_EQ(prores["color"], ProbeResult::parse(R"({"primaries": "rec709", "transferFunction": "rec709",
                                                      "matrix": "rec709", "range": "video"})"));
    EXPECT_EQ(prores["bitDepth"], 12);  // what the decoder gives
    EXPECT_EQ(track(files[0], "timecode")["codecTag"], "tmcd");
    EXPECT_EQ(track(files[1], "video")["video"]["isMirrored"], true);
    EXPECT_EQ(track(files[8], "video")["video"]["rotation"], 270);  // ffmpeg's "rotate" counts the other way
    EXPECT_THAT(files[9].value("problem", ""), HasSubstr("notes.mov': no readable media"));
    EXPECT_THAT(said_, AllOf(HasSubstr("  QuickTime, 1.000 s\n"), HasSubstr("H.264, 320x180, 25 fps"),
                             HasSubstr("from 10:00:00:00")));
}

TEST_F(AnalysisEndToEnd, snapshotsAreTheFramesAtTheirPlaces) {
    const ProbeResult files = analyze(
        "@plain @mkv @ts @avi -snapshotLocation 0 [0.5 1 -maxImageWidth 160 "
        "-compressionFactor 1 -analysisId a/b");
    for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t at = 0; at < 3; ++at) {
            SCOPED_TRACE(files[i].value("path", "") + " " + std::to_string(at));
            const ProbeResult& snapshot = files[i]["snapshots"].at(at);
            // A transport stream says how long it is with its sound, which is a little longer.
            const double time = snapshot.value("timeInSeconds", -1.0);
            EXPECT_NEAR(time, 0.48 * static_cast<double>(at), i == 2 ? 0.07 : 0.001);
            EXPECT_EQ(snapshot["file"], "work/a_b-" + std::to_string(i + 1) + "-" + std::to_string(at + 1) + ".jpg");
            const Picture made = still(snapshot), expected(clip("plain"), std::floor(time * 25 + 0.01) / 25);
            // A line crosses the picture and moves; each column of the pattern has one colour but for it.
            for (const double row : {0.3, 0.4, 0.5, 0.6, 0.7, 0.8}) {
                EXPECT_LT(distance(made.at(0.25, row), expected.at(0.25, row)), 30);
            }
        }
    }
}

TEST_F(AnalysisEndToEnd, snapshotsAreUprightLimitedCompressedAndLookedUp) {
    writeFile("green.cube", "LUT_3D_SIZE 2\n0 1 0\n0 1 0\n0 1 0\n0 1 0\n0 1 0\n0 1 0\n0 1 0\n0 1 0\n");
    // The pixels near two corners: red tells the column, green the row (0, 127, 254).
    const std::tuple<std::string, int, int, Pixel, Pixel> rows[] = {
        {"@rgb -maxImageWidth 101", 101, 57, {0, 0, 60}, {254, 254, 60}},
        {"@rotated -maxImageWidth 320 -imageHeight 160", 90, 160, {254, 0, 60}, {0, 254, 60}},
        {"@fields -maxImageWidth 320 -lutFile green.cube", 320, 180, {0, 255, 0}, {0, 255, 0}},
    };
    for (const auto& [words, width, height, upperLeft, lowerRight] : rows) {
        SCOPED_TRACE(words);
        const auto files = analyze(words + " -snapshotLocation 0.3 -analysisId " + std::to_string(width));
        const ProbeResult& snapshot = files[0]["snapshots"][0];
        EXPECT_EQ(snapshot["location"], 0.3);
        const Picture picture = still(snapshot);
        EXPECT_EQ(std::pair(picture.width(), picture.height()), std::pair(width, height));
        EXPECT_EQ(snapshot["width"], width);
        EXPECT_LE(distance(picture.at(0.1, 0.1), upperLeft), 12);
        EXPECT_LE(distance(picture.at(0.9, 0.9), lowerRight), 12);
    }
    const auto sizeAt = [&](const std::string& factor) {
        const auto made = analyze("@plain -snapshotLocation 0 -maxImageWidth 320 -compressionFactor " + factor +
                                  " -analysisId f" + factor);
        return std::filesystem::file_size(made[0]["snapshots"][0]["file"].get<std::string>());
    };
    EXPECT_LT(sizeAt("0"), sizeAt("1") / 2);
}

TEST_F(AnalysisEndToEnd, readyMadePicturesStandInWhereTheyAreAllowedAndFresh) {
    ffmpeg("-f lavfi -i color=red:size=64x48 -frames:v 1 cover.png");
    ffmpeg("-f lavfi -i color=blue:size=128x96 -frames:v 1 -pix_fmt rgb24 blue.png");
    ffmpeg("-i @wav -i cover.png -map 0:a -map 1:v -c:a aac -c:v copy -disposition:v attached_pic song.m4a");
    std::filesystem::copy_file(clip("wav"), "a b.wav");
    writeFile("raw.r3d", "of a camera that is not known here");
    setenv("XDG_CACHE_HOME", room.path().c_str(), 1);
    const auto makeThumbnail = [&](const std::string& path, int lateness) {  // blue, as desktops keep them
        runOrFail({"python3", "-c",
                   "import hashlib, os, struct, sys, urllib.parse, zlib\n"
                   "path, late = sys.argv[1:]\n"
                   "uri = 'file://' + urllib.parse.quote(path)\n"
                   "png = open('blue.png', 'rb').read()\n"
                   "for text in ('URI\\0' + uri, 'MTime\\0%d' % (int(os.stat(path).st_mtime) + int(late))):\n"
                   "    chunk = b'tEXtThumb::' + text.encode()\n"
                   "    chunk = struct.pack('>I', len(chunk) - 4) + chunk + struct.pack('>I', zlib.crc32(chunk))\n"
                   "    png = png[:33] + chunk + png[33:]\n"
                   "os.makedirs('thumbnails/normal', exist_ok=True)\n"
                   "name = 'thumbnails/normal/' + hashlib.md5(uri.encode()).hexdigest() + '.png'\n"
                   "open(name, 'wb').write(png)\n",
                   room.path(path), std::to_string(lateness)});
    };
    makeThumbnail("a b.wav", 1);
    const std::string sound = "'" + room.path("a b.wav") + "'", asked = " -snapshotLocation 0 -maxImageWidth 32";
    const auto refused = analyze("song.m4a " + sound + asked, 1);
    EXPECT_THAT(refused[0]["snapshots"][0].value("problem", ""), HasSubstr("holds no video"));
    EXPECT_FALSE(refused[0]["snapshots"][0].contains("file"));
    EXPECT_TRUE(std::filesystem::is_empty("work"));
    EXPECT_TRUE(analyze(sound + asked + " -allowFinderImages", 1)[0]["snapshots"][0].contains("problem")) << "stale";
    makeThumbnail("a b.wav", 0);
    makeThumbnail("raw.r3d", 0);
    const auto files =
        analyze("song.m4a " + sound + " @plain " + room.path("raw.r3d") + asked + " -allowFinderImages", 1);
    unsetenv("XDG_CACHE_HOME");
    const char* const sources[] = {"embedded", "desktop", "frame", "desktop"};
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(files[i]["snapshots"][0].value("source", ""), sources[i]);
    EXPECT_EQ(track(files[0], "picture")["codecName"], "png");
    EXPECT_GT(still(files[0]["snapshots"][0]).at(0.5, 0.5).red, 240);
    const Picture thumbnail = still(files[1]["snapshots"][0]);
    EXPECT_EQ(thumbnail.height(), 24);
    EXPECT_GT(thumbnail.at(0.5, 0.5).blue, 240);
}

TEST_F(AnalysisEndToEnd, deepAnalysisCountsWhatItDecodes) {
    std::string bytes = readFile(clip("plain"));
    std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(bytes.find("mdat") + 2000), 10000, '\x55');
    writeFile("damaged.mov", bytes);
    const auto files = analyze("@plain @mkv damaged.mov -deepAnalysis", 1);
    for (const std::size_t track : {0U, 1U}) {
        const std::string digest = runOrFail(wordsOf("ffmpeg -v error -i @plain -map 0:" + std::to_string(track) +
                                                     " -f hash -hash sha256 -c:a pcm_s16le -"));
        for (const std::size_t file : {0U, 1U}) {
            const ProbeResult& found = files[file]["deep"]["tracks"][track];
            EXPECT_EQ(found["frames"], track == 0 ? 25 : 48000);
            EXPECT_EQ(found["decodeErrors"], 0);
            EXPECT_EQ("SHA256=" + found.value("sha256", "") + "\n", digest);
        }
    }
    const ProbeResult& damaged = files[2]["deep"]["tracks"];
    EXPECT_GT(damaged[0]["decodeErrors"].get<int>() + damaged[1]["decodeErrors"].get<int>(), 0);
    EXPECT_NE(damaged[0]["sha256"], files[0]["deep"]["tracks"][0]["sha256"]);
    EXPECT_THAT(said_, AllOf(HasSubstr("25/25 frames"), HasSubstr("decoded 48000, errors 0")));
}

TEST_F(AnalysisEndToEnd, errorsEndWithTheirStatusAndWithoutResults) {
    writeFile("taken", "kept");
    const Words before = room.entries();
    expectRefusals({{"", 64, "-pathToAnalyze is missing"},
                    {"-pathToAnalyze @plain -workDirectory work -resultsFilePath taken", 73, "the file exists"},
                    {"-pathToAnalyze @plain -workDirectory work -resultsFilePath none/r", 73, "cannot be created"},
                    {"-pathToAnalyze @plain -workDirectory work -resultsFilePath r -maxImageWidth 9 "
                     "-snapshotLocation 0 -lutFile taken",
                     1, "no look-up"}},
                   "analyze ");
    EXPECT_EQ(room.entries(), before);
    EXPECT_EQ(readFile("taken"), "kept");
    EXPECT_TRUE(std::filesystem::is_empty("work"));
}

TEST_F(AnalysisEndToEnd, anAnalysisThatIsStoppedLeavesNothing) {
    const corvex::test::LoginManagerMock login;
    ASSERT_TRUE(login.isReady());
    const SourcePipe stuck("stuck.mov");
    Command command(
        toolWords("analyze -workDirectory work -resultsFilePath results.json -snapshotLocation 0 -maxImageWidth 64 "
                  "-pathToAnalyze @plain stuck.mov"));
    EXPECT_TRUE(eventually([] { return std::filesystem::exists("work/snapshot-1-1.jpg"); }));
    EXPECT_TRUE(login.isInhibited());
    kill(command.processIdentifier(), SIGTERM);
    EXPECT_EQ(command.wait().exitStatus, 1);
    EXPECT_TRUE(std::filesystem::is_empty("work"));
    EXPECT_EQ(room.entries(), (Words{"stuck.mov", "work"}));
    EXPECT_TRUE(eventually([&] { return !login.isInhibited(); }));
}

}  // namespace
}  // namespace corvex::tool::test::analysisEndToEndTests
