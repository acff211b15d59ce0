// The timecode format description against the field's own: what ffmpeg's program writes into a movie is read by us, and
// we write the same bytes.

#include <gtest/gtest.h>

#include <Corvex/timing/TimecodeFrame.h>
#include <tests/tools/Command.h>

namespace corvex::tool::test::timecodeMovieTests {
namespace {

/// The sample description of the movie's timecode track. Its handler and its sample table name the type, too; the
/// description is the one that reads.
std::optional<TimecodeFormatDescription> descriptionIn(const std::string& movie) {
    for (std::size_t at = movie.find("tmcd"); at != std::string::npos; at = movie.find("tmcd", at + 1)) {
        const std::vector<std::uint8_t> bytes(movie.begin() + static_cast<std::ptrdiff_t>(at) - 4, movie.end());
        try {
            return TimecodeFormatDescription::fromSampleDescription(bytes);
        } catch (const TimecodeFormatError&) {
            continue;
        }
    }
    return std::nullopt;
}

TEST(TimecodeMovie, ofTheFfmpegProgramIsReadAndWritten) {
    struct Row {
        const char *timecode, *rate;
        MediaRational expected;
    };
    constexpr Row rows[] = {{"01:00:00;02", "30000/1001", {30000, 1001}},
                            {"00:09:59;57", "60000/1001", {60000, 1001}},
                            {"23:59:59:24", "25", {25, 1}},
                            {"01:02:03:04", "24000/1001", {24000, 1001}}};
    const TemporaryDirectory directory;
    const std::string file = directory.path("timecode.mov");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.timecode);
        runOrFail({"ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i",
                   std::string("color=size=16x16:duration=0.2:rate=") + row.rate, "-timecode", row.timecode, "-c:v",
                   "mpeg4", file});
        const std::string movie = readFile(file);
        const TimecodeFrame frame(*TimecodeComponents::fromTimecode(row.timecode), row.expected);
        const auto found = descriptionIn(movie);
        ASSERT_TRUE(found);
        EXPECT_EQ(found->frameDuration(), frame.frameDuration());
        EXPECT_EQ(found->frameQuanta(), frame.frameQuanta());
        EXPECT_EQ(found->isDropFrame(), frame.timecodeFormatDescription().isDropFrame());
        const auto written = found->sampleDescription();
        // But for the size: the program appends a name.
        EXPECT_NE(movie.find(std::string(written.begin() + 4, written.end())), std::string::npos);
    }
}

}  // namespace
}  // namespace corvex::tool::test::timecodeMovieTests
