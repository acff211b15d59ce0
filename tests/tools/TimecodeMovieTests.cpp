// The timecode format description against the field's own: what ffmpeg's program writes into a movie is read by us, and
// we write the same bytes.

#include <gtest/gtest.h>

#include <Corvex/timing/TimecodeFrame.h>
#include <tests/tools/Media.h>

namespace corvex::tool::test::timecodeMovieTests {
namespace {

/// The sample description of the movie's timecode track. Its handler and its sample table name the type, too; the
/// description is the one that reads.
std::optional<TimecodeFormatDescription> descriptionIn(const std::string& movie) {
    for (std::size_t at = movie.find("tmcd"); at != std::string::npos; at = movie.find("tmcd", at + 1)) {
        try {
            return TimecodeFormatDescription::fromSampleDescription(
                std::vector<std::uint8_t>(movie.begin() + static_cast<std::ptrdiff_t>(at) - 4, movie.end()));
        } catch (const TimecodeFormatError&) {
            continue;
        }
    }
    return std::nullopt;
}

using TimecodeMovie = RoomTest;

TEST_F(TimecodeMovie, ofTheFfmpegProgramIsReadAndWritten) {
    for (const auto& [timecode, rate] : {std::pair("01:00:00;02", MediaRational(30000, 1001)),
                                         {"00:09:59;57", {60000, 1001}},
                                         {"23:59:59:24", {25, 1}},
                                         {"01:02:03:04", {24000, 1001}}}) {
        SCOPED_TRACE(timecode);
        ffmpeg("-f lavfi -i color=size=16x16:duration=0.2:rate=" + std::to_string(rate.timeValue()) + "/" +
               std::to_string(rate.timeScale()) + " -timecode " + timecode + " -c:v mpeg4 timecode.mov");
        const std::string movie = readFile("timecode.mov");
        const TimecodeFrame frame(*TimecodeComponents::fromTimecode(timecode), rate);
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
