// Several transcodes of one command line, and what the user's settings make of them.

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sstream>
#include <vector>

#include <gmock/gmock.h>

#include <Corvex/settings/TranscodeSettings.h>
#include <tests/Places.h>
#include <tests/filesystem/LoginManagerMock.h>
#include <tests/tools/Media.h>

namespace corvex::tool::test::transcodeQueueEndToEndTests {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
namespace fs = std::filesystem;

class TranscodeQueueEndToEnd : public RoomTest {
protected:
    TranscodeQueueEndToEnd() {
        setenv("CORVEX_SETTINGS_FILE", store_.file().c_str(), 1);
        fs::create_directory("folder");
    }
    ~TranscodeQueueEndToEnd() override { unsetenv("CORVEX_SETTINGS_FILE"); }

    UserDefaults store_{room.path("settings.sqlite")};
    TranscodeSettings settings_{store_};
};

/// A transcode of several sources, source0.mkv and so on, that wait for bytes which never come.
class StuckJobs {
public:
    explicit StuckJobs(int count) {
        std::string line = corvex::test::toolPath + std::string(" transcode -out folder");
        for (int i = 0; i < count; ++i) {
            const std::string number = std::to_string(i), source = directory_.path("source" + number + ".mkv");
            pipes_.emplace_back(source);
            line += " -in_" + number + "_0 " + source;
        }
        command_.emplace(wordsOf(line));
    }
    /// Those that have opened their source: from then on a signal ends them in order.
    [[nodiscard]] int workerCount() const {
        int count = 0;
        const std::string process = std::to_string(command_->processIdentifier());
        for (const auto& thread : fs::directory_iterator("/proc/" + process + "/task")) {
            std::istringstream children(readFile(thread.path() / "children"));
            for (std::string child; children >> child;) count += holdsSource(child) ? 1 : 0;
        }
        return count;
    }
    CommandResult stop() {
        kill(command_->processIdentifier(), SIGTERM);
        return command_->wait();
    }

private:
    [[nodiscard]] bool holdsSource(const std::string& worker) const {
        std::error_code error;  // of a worker that has just ended
        for (const auto& file : fs::directory_iterator("/proc/" + worker + "/fd", error)) {
            if (fs::read_symlink(file, error).string().starts_with(directory_.path())) return true;
        }
        return false;
    }

    TemporaryDirectory directory_;
    std::vector<SourcePipe> pipes_;
    std::optional<Command> command_;
};

TEST_F(TranscodeQueueEndToEnd, aFolderTakesOneFileForEachGroup) {
    const CommandResult result = corvex(
        "transcode -in_0_0 @plain -in_1_0 @wav -in_1_1 @wav -in_2_0 none.mov -vn "
        "-file_format wav -out folder");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_TRUE(fs::exists("folder/plain.wav"));
    EXPECT_EQ(std::distance(fs::directory_iterator("folder"), {}), 2);
    EXPECT_THAT(result.output, AllOf(HasSubstr("plain.wav: 100.0 %"), HasSubstr("2 of 3 transcodes done")));
    EXPECT_THAT(result.error, HasSubstr("none.wav: corvex: "));
    EXPECT_NEAR(number(probe("folder/wav.wav")["format"], "duration"), 2, 0.01) << "joined";
    expectRefusals({{"-progress_file p", 2, "-progress_file: several transcodes cannot share one"},
                    {"-in_2_0 a.mxf", 2, "two inputs would become 'a.mov'"},
                    {"-file_format avi", 2, "expected qt, mp4 or wav"}},
                   "transcode -in_0_0 a.mov -in_1_0 b.mov -out folder/ ");
}

TEST_F(TranscodeQueueEndToEnd, asManyRunAtOnceAsTheUserHasSetAndHoldTheMachineAwake) {
    const corvex::test::LoginManagerMock login;
    ASSERT_TRUE(login.isReady());
    for (const int atOnce : {1, 2}) {
        settings_.setExplicitNumberOfConcurrentTranscodes(atOnce);
        StuckJobs jobs(3);
        EXPECT_TRUE(eventually([&] { return jobs.workerCount() == atOnce; })) << atOnce;
        EXPECT_TRUE(login.isInhibited());
        EXPECT_THAT(login.inhibitors(), HasSubstr("\"corvex has queued activities\""));
        const CommandResult result = jobs.stop();
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_THAT(result.error, HasSubstr("source0.mov: corvex: "));
        EXPECT_EQ(result.error.find("source1.mov: ") != std::string::npos, atOnce == 2) << result.error;
        EXPECT_THAT(result.error, Not(HasSubstr("source2.mov: "))) << "a signal starts nothing more";
        EXPECT_THAT(result.output, HasSubstr("0 of 3 transcodes done"));
        EXPECT_TRUE(eventually([&] { return !login.isInhibited(); }));
    }
}

TEST_F(TranscodeQueueEndToEnd, failedOnesAreTriedAgainAsTheUserHasSet) {
    struct Row {
        bool isPermitted;
        int reattempts;
        std::size_t lines;  ///< One for each attempt, and one before each but the first.
    };
    constexpr Row rows[] = {{false, 3, 1}, {true, 0, 1}, {true, 2, 5}, {true, -7, 1}};
    for (const Row& row : rows) {
        settings_.setPermitAutoReattemptOfFailedTranscodes(row.isPermitted);
        settings_.setNumberOfReattemptsPerFailedTranscode(row.reattempts);
        const CommandResult result = corvex("transcode -in none.mov -out out.mov");
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(lineCount(result.error), row.lines) << result.error;
        EXPECT_EQ(result.error.find("corvex: failed; attempt 3 of 3\n") != std::string::npos, row.lines > 1);
    }
    settings_.setNumberOfReattemptsPerFailedTranscode(2);  // words that cannot be used are not tried again
    expectRefusals({{"transcode -in a.mov -out out.mov -dims x", 2, "'x'"}});
}

TEST_F(TranscodeQueueEndToEnd, whatCannotBeDoneAsAskedIsSaid) {
    settings_.setUseTranscodeGPUAcceleration(true);
    struct Row {
        const char *words, *target, *said, *codec;
    };
    constexpr Row rows[] = {
        {"@plain", "a.wav", "the setting kUseGPUAcceleration asks for a GPU; there is none", "pcm_s16le"},
        {"@flac -acopy", "a.mov", "(flac) is encoded as lpcm, as the file's format does not carry it", "pcm_s16le"},
        {"@plain -acopy", "a.mp4", "corvex: -acopy: stream 1 of ", "alac"},
        {"@plain -acopy -overwrite", "a.mp4", "(pcm_s16le) is encoded as apple_lossless", "alac"},
    };
    for (const Row& row : rows) {
        const CommandResult result = corvex("transcode -out " + std::string(row.target) + " -in " + row.words);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_THAT(result.error, HasSubstr(row.said));
        EXPECT_EQ(text(stream(probe(row.target), "audio"), "codec_name"), row.codec);
    }
    settings_.setUseTranscodeGPUAcceleration(false);
    settings_.setUseLegacyTranscodePipeline(true);
    const CommandResult legacy = corvex("transcode -in @plain -out b.wav");
    EXPECT_EQ(legacy.exitStatus, 2);
    EXPECT_THAT(legacy.error, AllOf(HasSubstr("'-legacy-pipeline' is not carried out"),
                                    HasSubstr("'corvex settings unset kUseLegacyTranscodePipeline' takes it back")));
    writeFile("settings.sqlite", "no store of settings");
    expectRefusals({{"transcode -in @plain -out b.wav", 1, "settings.sqlite': file is not a database"}});
}

}  // namespace
}  // namespace corvex::tool::test::transcodeQueueEndToEndTests
