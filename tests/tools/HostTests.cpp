#include <algorithm>
#include <array>
#include <cstdio>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <pty.h>
#include <unistd.h>

#include <Corvex/cli/analysis/MediaAnalysisRequest.h>
#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <tests/tools/Command.h>
#include <tools/corvex/FileUrl.h>
#include <tools/corvex/SuggestedFlag.h>
#include <tools/corvex/ToolError.h>
#include <tools/corvex/host/ProgressDisplay.h>
#include <tools/corvex/worker/TransferMeter.h>

namespace corvex::tool::hostTests {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::internal::CaptureStdout;
using ::testing::internal::GetCapturedStdout;

TEST(SuggestedFlag, findsTheFlagThatWasMeant) {
    using Row = std::pair<std::string, std::optional<std::string_view>>;
    const Row rows[] = {
        {"-vcodc", "-vcodec"}, {"-vocdec", "-vcodec"},  {"-overwirte", "-overwrite"},
        {"-dim", "-dims"},     {"-acodek", "-acodec"},  {"-aspect_scale", "-aspect_scaling"},
        {"-otu", "-out"},      {"-presset", "-preset"}, {"-5", std::nullopt},
        {"", std::nullopt},    {"-zzzz", std::nullopt}, {std::string(65, '-'), std::nullopt},
    };
    for (const auto& [unknown, expected] : rows) EXPECT_EQ(suggestedFlag(unknown), expected) << unknown;
}

TEST(FileUrl, namesAPathOfThisMachine) {
    const std::pair<const char*, const char*> rows[] = {
        {"file:///a%20b/%C3%a4%25.mov", "/a b/\xc3\xa4%.mov"},
        {"FILE://LocalHost/a", "/a"},
        {"file:/a", "file:/a"},
    };
    for (const auto& [text, path] : rows) EXPECT_EQ(pathOf(text), path) << text;
    for (const char* text :
         {"file://", "file://server/a", "file://localhoste/a", "file:///a%2", "file:///a%-1", "file:///a%00b"}) {
        EXPECT_THROW(static_cast<void>(pathOf(text)), UsageError) << text;
    }
}

TEST(FileUrl, standsWhereverAVectorNamesAPath) {
    TranscodeCliArguments arguments(
        test::wordsOf("-in_0_1 file:///A -out file:///b%20b -wmf_path file:///c -wmt_text file:///d"));
    replaceFileUrls(arguments);
    EXPECT_EQ(arguments.flagValueLookup(),
              (ArgumentLookup{{"-in_0_1", "/A"}, {"-out", "/b b"}, {"-wmf_path", "/c"}, {"-wmt_text", "file:///d"}}));
    MediaAnalysisRequest request = MediaAnalysisRequest::fromWords(
        test::wordsOf("-pathToAnalyze '[file:///A\nb' -workDirectory file:///w -resultsFilePath file:///r "
                      "-analysisId file:///i -lutFile file:///l -maxImageWidth 9 -snapshotLocation 0"));
    replaceFileUrls(request);
    EXPECT_THAT(request.pathsToAnalyze, ElementsAre("/A", "b"));
    EXPECT_EQ(request.workDirectory + request.resultsFilePath + *request.analysisId + request.images->lutFile,
              "/w/rfile:///i/l");
}

TEST(ProgressDisplay, printsPlainLinesWhereNobodyWatches) {
    constexpr std::tuple<const char*, const char*, const char*> rows[] = {
        {"", "state=running frame=5 total=50 percent=10.0 fps=25.00 eta=3723",
         " 10.0 %  5/50 frames  25.0 fps  1:02:03 left\n"},
        {"", "state=running frame=5 total=50 percent=10.0 fps=25.00 eta=62 read=12345678 written=0",
         " 10.0 %  5/50 frames  25.0 fps  read 12.3 MB/s  write 0.0 MB/s  1:02 left\n"},
        {"", "state=running frame=0 total=50 percent=0.0 fps=0.00 eta=-1", "  0.0 %  0/50 frames  0.0 fps\n"},
        {"", "state=running frame=0 total=0 percent=40.0 fps=0.00 eta=3", " 40.0 %  0:03 left\n"},
        {"", "state=done frame=50 total=50 percent=100.0 fps=25.00 eta=0", "100.0 %  50/50 frames  25.0 fps  done\n"},
        {"", "state=finishing frame=0 total=0 percent=99.0 fps=0.00 eta=0", " 99.0 %  finishing\n"},
        {"", "state=failed frame=5 total=50 percent=10.0 fps=25.00 eta=62", ""},
        {"job 7", "job 7 state=done frame=0 total=0 percent=100.0 fps=0.00 eta=0", "100.0 %  done\n"},
        {"job 7", "state=done frame=0 total=0 percent=100.0", "state=done frame=0 total=0 percent=100.0\n"},
    };
    for (const auto& [prefix, line, shown] : rows) {
        CaptureStdout();
        ProgressDisplay(prefix).takeLine(line);
        EXPECT_EQ(GetCapturedStdout(), shown) << line;
    }
}

TEST(TransferMeter, ratesAreThoseOfTheLastTwoSeconds) {
    const auto at = [](int ms) { return IOActivityUpdate::Timestamp(std::chrono::milliseconds(ms)); };
    TransferMeter meter;
    const auto expectRates = [&](double read, double written) {
        EXPECT_THAT((std::array{meter.rates().read, meter.rates().written}), ElementsAre(read, written));
    };
    expectRates(0, 0);
    meter.take(URLActivityUpdate({}, "in", 1'000'000, 0, at(0)));
    meter.take(URLActivityUpdate({}, "out", 0, 1'000'000, at(0)));
    expectRates(0, 0);  // what came before the first report took no time that is known
    meter.take(URLActivityUpdate({}, "in", 500, 0, at(500)));
    meter.take(URLActivityUpdate({}, "out", 0, 50, at(500)));
    expectRates(1000, 100);
    meter.take(URLActivityUpdate({}, "in", 3000, 0, at(2000)));
    expectRates(1750, 25);
    meter.take(URLActivityUpdate({}, "in", 0, 0, at(2500)));
    expectRates(1500, 0);
    meter.take(URLActivityUpdate({}, "in", 7, 0, at(-5000)));  // somebody has set the clock
    expectRates(0, 0);
}

TEST(ProgressDisplay, theLastLineIsNeverHeldBackAndALabelStandsInFront) {
    CaptureStdout();
    ProgressDisplay display("", "A001.mov");
    for (const char* state : {"running", "running", "done"}) {
        display.takeLine("state=" + std::string(state) + " frame=0 total=0 percent=50.0 eta=-1");
    }
    display.takeLine("something else");
    EXPECT_THAT(GetCapturedStdout(), ::testing::AllOf(::testing::StartsWith("A001.mov:  50.0 %"), HasSubstr("%\n"),
                                                      ::testing::EndsWith("done\nA001.mov: something else\n")));
}

TEST(ProgressDisplay, redrawsOneBarOnATerminal) {
    int terminal = -1, screen = -1;
    ASSERT_EQ(openpty(&terminal, &screen, nullptr, nullptr, nullptr), 0);
    const int before = dup(STDOUT_FILENO);
    std::fflush(stdout);
    dup2(screen, STDOUT_FILENO);
    {
        ProgressDisplay display("");
        display.takeLine("state=running frame=5 total=10 percent=50.0 fps=1.00 eta=5");
        display.takeLine("a message");
        display.takeLine("state=done frame=10 total=10 percent=100.0 fps=1.00 eta=0");
        display.clear();
    }
    dup2(before, STDOUT_FILENO);
    close(before);
    close(screen);  // the terminal ends behind what is still on its way
    std::string shown;
    char buffer[256];
    for (ssize_t count = 0; (count = read(terminal, buffer, sizeof buffer)) > 0;) {
        shown.append(buffer, static_cast<std::size_t>(count));
    }
    close(terminal);
    EXPECT_EQ(shown,
              "\r\x1b[K[###############...............]  50.0 %  5/10 frames  1.0 fps  0:05 left"
              "\r\x1b[Ka message\r\n"
              "\r\x1b[K[##############################] 100.0 %  10/10 frames  1.0 fps  done\r\n");
}

}  // namespace
}  // namespace corvex::tool::hostTests
