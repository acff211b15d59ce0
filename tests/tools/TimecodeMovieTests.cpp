// The timecode format description against the field's own tools: a movie that carries our bytes is read by ffprobe, and
// bytes that ffmpeg wrote are read by us.

#include <gtest/gtest.h>

#include <algorithm>

#include <Corvex/timing/TimecodeFrame.h>
#include <tests/tools/Command.h>

namespace corvex::tool::test {
namespace {

std::string bigEndian(std::uint64_t number, int bytes) {
    std::string text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) text += static_cast<char>(number >> shift & 0xFFU);
    return text;
}
std::string four(std::uint64_t number) { return bigEndian(number, 4); }
std::string zeros(std::size_t count) { return std::string(count, '\0'); }

std::string atom(const char* type, const std::string& contents) { return four(contents.size() + 8) + type + contents; }

/// The transformation that changes nothing: ones on the diagonal in 16.16 and 2.30 fixed point.
std::string identityMatrix() { return four(0x10000) + zeros(12) + four(0x10000) + zeros(12) + four(0x40000000); }

/// A QuickTime movie of one timecode track with one sample, the frame's number, that lasts `frames` frames.
std::string timecodeMovie(const TimecodeFrame& frame, std::uint32_t frames) {
    const TimecodeFormatDescription format = frame.timecodeFormatDescription();
    const auto description = format.sampleDescription();
    const std::string scale = four(static_cast<std::uint64_t>(format.frameDuration().timeScale()));
    const std::string duration = four(static_cast<std::uint64_t>(format.frameDuration().value()) * frames);
    const std::string fileType = atom("ftyp", "qt  " + zeros(4) + "qt  ");
    const std::string sample = four(static_cast<std::uint64_t>(frame.frameNumber()));

    const std::string sampleTable =
        atom("stsd", four(0) + four(1) + std::string(description.begin(), description.end())) +
        atom("stts", four(0) + four(1) + four(1) + duration) +
        atom("stsc", four(0) + four(1) + four(1) + four(1) + four(1)) +
        atom("stsz", four(0) + four(sample.size()) + four(1)) +
        atom("stco", four(0) + four(1) + four(fileType.size() + 8));
    const std::string reference = atom("dinf", atom("dref", four(0) + four(1) + atom("url ", four(1))));
    const std::string handler = atom("hdlr", four(0) + "mhlrtmcd" + zeros(13));
    const std::string baseHeader = atom("gmhd", atom("gmin", four(0) + zeros(12)));
    const std::string media = atom("mdhd", zeros(12) + scale + duration + zeros(4)) + handler +
                              atom("minf", baseHeader + reference + atom("stbl", sampleTable));
    const std::string track =
        atom("tkhd", four(15) + zeros(8) + four(1) + zeros(4) + duration + zeros(16) + identityMatrix() + zeros(8)) +
        atom("mdia", media);
    const std::string movie = atom("mvhd", zeros(12) + scale + duration + four(0x10000) + bigEndian(256, 2) +
                                               zeros(10) + identityMatrix() + zeros(24) + four(2)) +
                              atom("trak", track);
    return fileType + atom("mdat", sample) + atom("moov", movie);
}

TEST(TimecodeMovie, isReadByFfprobe) {
    struct Row {
        const char* timecode;
        MediaRational rate;
    };
    constexpr Row rows[] = {{"01:00:00;02", {30000, 1001}},
                            {"00:09:59;57", {60000, 1001}},
                            {"23:59:59:24", {25, 1}},
                            {"01:02:03:04", {24000, 1001}}};
    const TemporaryDirectory directory;
    for (const Row& row : rows) {
        const TimecodeFrame frame(*TimecodeComponents::fromTimecode(row.timecode), row.rate);
        const std::string file = directory.path("timecode.mov");
        writeFile(file, timecodeMovie(frame, 50));
        EXPECT_EQ(runOrFail({"ffprobe", "-v", "error", "-show_entries", "stream=codec_tag_string:stream_tags=timecode",
                             "-of", "csv=p=0", file}),
                  std::string("tmcd,") + row.timecode + "\n");
    }
}

TEST(TimecodeMovie, ofFfmpegIsReadByUs) {
    const TemporaryDirectory directory;
    const std::string file = directory.path("timecode.mov");
    runOrFail({"ffmpeg", "-v", "error", "-f", "lavfi", "-i", "color=size=16x16:rate=30000/1001:duration=0.2",
               "-timecode", "01:00:00;02", "-c:v", "mpeg4", file});
    const std::string movie = readFile(file);
    // The handler of the track and its sample table name the type, too; the sample description is the one that reads.
    std::optional<TimecodeFormatDescription> found;
    for (std::size_t at = movie.find("tmcd"); at != std::string::npos && !found; at = movie.find("tmcd", at + 1)) {
        const std::vector<std::uint8_t> bytes(movie.begin() + static_cast<std::ptrdiff_t>(at) - 4, movie.end());
        try {
            found = TimecodeFormatDescription::fromSampleDescription(bytes);
        } catch (const TimecodeFormatError&) {
            continue;
        }
    }
    ASSERT_TRUE(found);
    EXPECT_EQ(found->frameDuration(), MediaTime(1001, 30000));
    EXPECT_EQ(found->frameQuanta(), 30U);
    EXPECT_TRUE(found->isDropFrame());
}

}  // namespace
}  // namespace corvex::tool::test
