// Several transcodes of one command line, and what the user's settings make of them.

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sstream>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <Corvex/settings/TranscodeSettings.h>
#include <tests/Places.h>
#include <tests/filesystem/LoginManagerMock.h>
#include <tests/tools/Media.h>

namespace corvex::tool::test::transcodeQueueEndToEndTests {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class TranscodeQueueEndToEnd : public testing::Test {
protected:
    TranscodeQueueEndToEnd() { setenv("CORVEX_SETTINGS_FILE", store_.file().c_str(), 1); }
    ~TranscodeQueueEndToEnd() override { unsetenv("CORVEX_SETTINGS_FILE"); }

    TemporaryDirectory directory_, folder_;
    UserDefaults store_{directory_.path("settings.sqlite")};
    TranscodeSettings settings_{store_};
};

/// A transcode of several sources that wait for bytes which never come.
class StuckJobs {
public:
    explicit StuckJobs(int count, const std::string& output) {
        Words words{corvex::test::toolPath, "transcode", "-out", output};
        for (int i = 0; i < count; ++i) {
            const std::string source = directory_.path("source" + std::to_string(i) + ".mkv");
            EXPECT_EQ(mkfifo(source.c_str(), 0600), 0);
            pipes_.push_back(open(source.c_str(), O_RDWR | O_CLOEXEC));
            words.insert(words.end(), {"-in_" + std::to_string(i) + "_0", source});
        }
        command_.emplace(words);
    }
    ~StuckJobs() {
        for (const int pipe : pipes_) close(pipe);
    }
    /// Those that have opened their source: from then on a signal ends them in order.
    [[nodiscard]] int workerCount() const {
        int count = 0;
        for (const auto& thread : std::filesystem::directory_iterator("/proc/" + process() + "/task")) {
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
    [[nodiscard]] std::string process() const { return std::to_string(command_->processIdentifier()); }
    [[nodiscard]] bool holdsSource(const std::string& worker) const {
        std::error_code error;  // of a worker that has just ended
        for (const auto& file : std::filesystem::directory_iterator("/proc/" + worker + "/fd", error)) {
            if (std::filesystem::read_symlink(file, error).string().starts_with(directory_.path())) return true;
        }
        return false;
    }

    TemporaryDirectory directory_;
    std::vector<int> pipes_;
    std::optional<Command> command_;
};

TEST_F(TranscodeQueueEndToEnd, aFolderTakesOneFileForEachGroup) {
    const CommandResult result =
        corvex({"transcode", "-in_0_0", clip("plain"), "-in_1_0", clip("wav"), "-in_1_1", clip("wav"), "-in_2_0",
                directory_.path("none.mov"), "-vn", "-file_format", "wav", "-out", folder_.path()});
    EXPECT_EQ(result.exitStatus, 1);
    const auto nameOf = [](const std::string& path) { return std::filesystem::path(path).stem().string() + ".wav"; };
    EXPECT_EQ(folder_.entries(), (Words{nameOf(clip("plain")), nameOf(clip("wav"))}));
    EXPECT_THAT(result.output,
                AllOf(HasSubstr(nameOf(clip("plain")) + ": 100.0 %"), HasSubstr("2 of 3 transcodes done")));
    EXPECT_THAT(result.error, HasSubstr("none.wav: corvex: "));
    EXPECT_NEAR(number(probe(folder_.path(nameOf(clip("wav"))))["format"], "duration"), 2, 0.01) << "joined";
}

TEST_F(TranscodeQueueEndToEnd, wordsThatFitOneTranscodeOnlyAreRefused) {
    struct Row {
        Words words;
        const char* message;
    };
    const Row rows[] = {
        {{"-progress_file", folder_.path("p")}, "-progress_file: several transcodes cannot share one"},
        {{"-in_2_0", directory_.path("a.mxf")}, "two inputs would become 'a.mov'"},
        {{"-file_format", "avi"}, "expected qt, mp4 or wav"},
    };
    for (const Row& row : rows) {
        Words words{"transcode", "-in_0_0", directory_.path("a.mov"), "-in_1_0", "b.mov", "-out", folder_.path() + "/"};
        words.insert(words.end(), row.words.begin(), row.words.end());
        const CommandResult result = corvex(words);
        EXPECT_EQ(result.exitStatus, 2) << row.message;
        EXPECT_THAT(result.error, HasSubstr(row.message));
    }
}

TEST_F(TranscodeQueueEndToEnd, asManyRunAtOnceAsTheUserHasSet) {
    for (const int atOnce : {1, 2}) {
        settings_.setExplicitNumberOfConcurrentTranscodes(atOnce);
        StuckJobs jobs(3, folder_.path());
        EXPECT_TRUE(eventually([&] { return jobs.workerCount() == atOnce; })) << atOnce;
        const CommandResult result = jobs.stop();
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_THAT(result.error, HasSubstr("source0.mov: corvex: "));
        EXPECT_EQ(result.error.find("source1.mov: ") != std::string::npos, atOnce == 2) << result.error;
        EXPECT_THAT(result.error, Not(HasSubstr("source2.mov: "))) << "a signal starts nothing more";
        EXPECT_THAT(result.output, HasSubstr("0 of 3 transcodes done"));
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
        const CommandResult result =
            corvex({"transcode", "-in", directory_.path("none.mov"), "-out", folder_.path("out.mov")});
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(lineCount(result.error), row.lines) << result.error;
        EXPECT_EQ(result.error.find("corvex: failed; attempt 3 of 3\n") != std::string::npos, row.lines > 1);
    }
    const CommandResult usage = corvex({"transcode", "-in", "a.mov", "-out", folder_.path("out.mov"), "-dims", "x"});
    EXPECT_EQ(lineCount(usage.error), 1U) << "words that cannot be used are not tried again";
}

TEST_F(TranscodeQueueEndToEnd, whatCannotBeDoneAsSetIsSaid) {
    const Words words{"transcode", "-in", clip("plain"), "-out", folder_.path("out.wav"), "-vn", "-overwrite"};
    settings_.setUseTranscodeGPUAcceleration(true);
    const CommandResult computed = corvex(words);
    EXPECT_EQ(computed.exitStatus, 0);
    EXPECT_THAT(computed.error, HasSubstr("the setting kUseGPUAcceleration asks for a GPU; there is none"));
    settings_.setUseTranscodeGPUAcceleration(false);
    settings_.setUseLegacyTranscodePipeline(true);
    const CommandResult legacy = corvex(words);
    EXPECT_EQ(legacy.exitStatus, 2);
    EXPECT_THAT(legacy.error, AllOf(HasSubstr("'-legacy-pipeline' is not carried out"),
                                    HasSubstr("'corvex settings unset kUseLegacyTranscodePipeline' takes it back")));
    writeFile(store_.file().string(), "no store of settings");
    const CommandResult broken = corvex(words);
    EXPECT_EQ(broken.exitStatus, 1);
    EXPECT_THAT(broken.error, HasSubstr("settings.sqlite': file is not a database"));
}

TEST_F(TranscodeQueueEndToEnd, soundThatCannotBeCopiedIsEncodedAndSaid) {
    struct Row {
        const char *source, *target, *said, *codec;
    };
    const Row rows[] = {
        {"flac", "a.mov", "(flac) is encoded as lpcm, as the file's format does not carry it", "pcm_s16le"},
        {"plain", "a.mp4", "(pcm_s16le) is encoded as apple_lossless", "alac"},
    };
    for (const Row& row : rows) {
        const CommandResult result =
            corvex({"transcode", "-in", clip(row.source), "-out", folder_.path(row.target), "-acopy"});
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_THAT(result.error, AllOf(HasSubstr("corvex: -acopy: stream 1 of "), HasSubstr(row.said)));
        EXPECT_EQ(text(stream(probe(folder_.path(row.target)), "audio"), "codec_name"), row.codec);
    }
}

TEST_F(TranscodeQueueEndToEnd, theMachineIsHeldAwakeWhileTranscodesRun) {
    const corvex::test::LoginManagerMock login;
    ASSERT_TRUE(login.isReady());
    StuckJobs jobs(1, folder_.path());
    EXPECT_TRUE(eventually([&] { return login.isInhibited(); }));
    EXPECT_THAT(login.inhibitors(), HasSubstr("\"corvex has queued activities\""));
    EXPECT_EQ(jobs.stop().exitStatus, 1);
    EXPECT_TRUE(eventually([&] { return !login.isInhibited(); }));
}

}  // namespace
}  // namespace corvex::tool::test::transcodeQueueEndToEndTests
