// Several transcodes of one command line, and what the user's settings make of them.

#include <csignal>
#include <cstdlib>
#include <filesystem>

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
    const std::string whole = readFile(clip("mkv")),
                      most = whole.substr(0, whole.size() * 3 / 4);  // the rest never comes
    for (const int atOnce : {1, 2}) {
        const SourcePipe pipes[] = {SourcePipe("0.mkv", most), SourcePipe("1.mkv", most), SourcePipe("2.mkv", most)};
        settings_.setExplicitNumberOfConcurrentTranscodes(atOnce);
        Command command(
            toolWords("transcode -vcodec prores422proxy -in_0_0 0.mkv -in_1_0 1.mkv -in_2_0 2.mkv -out folder"));
        const auto works = [&](const char* label) { return command.outputSoFar().find(label) != std::string::npos; };
        EXPECT_TRUE(eventually([&] { return works("0.mov: ") && (atOnce == 1 || works("1.mov: ")); })) << atOnce;
        EXPECT_TRUE(login.isInhibited());
        EXPECT_THAT(login.inhibitors(), HasSubstr("\"corvex has queued activities\""));
        kill(command.processIdentifier(), SIGTERM);
        const CommandResult result = command.wait();
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_THAT(result.error, HasSubstr("0.mov: corvex: "));
        EXPECT_EQ(result.error.find("1.mov: ") != std::string::npos, atOnce == 2) << result.error;
        EXPECT_THAT(result.error, Not(HasSubstr("2.mov: "))) << "a signal starts nothing more";
        EXPECT_THAT(result.output, HasSubstr("0 of 3 transcodes done"));
        EXPECT_TRUE(eventually([&] { return !login.isInhibited(); }));
        for (const char* pipe : {"0.mkv", "1.mkv", "2.mkv"}) fs::remove(pipe);
    }
}

TEST_F(TranscodeQueueEndToEnd, failedOnesAreTriedAgainAsTheUserHasSet) {
    // A line for each attempt, and one before each but the first.
    for (const auto& [isPermitted, reattempts, lines] :
         {std::tuple(false, 3, 1U), std::tuple(true, 0, 1U), std::tuple(true, 2, 5U), std::tuple(true, -7, 1U)}) {
        settings_.setPermitAutoReattemptOfFailedTranscodes(isPermitted);
        settings_.setNumberOfReattemptsPerFailedTranscode(reattempts);
        const CommandResult result = corvex("transcode -in none.mov -out out.mov");
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(lineCount(result.error), lines) << result.error;
        EXPECT_EQ(result.error.find("corvex: failed; attempt 3 of 3\n") != std::string::npos, lines > 1);
    }
    settings_.setNumberOfReattemptsPerFailedTranscode(2);  // words that cannot be used are not tried again
    expectRefusals({{"transcode -in a.mov -out out.mov -dims x", 2, "'x'"}});
}

TEST_F(TranscodeQueueEndToEnd, whatCannotBeDoneAsAskedIsSaid) {
    settings_.setUseTranscodeGPUAcceleration(true);
    const std::tuple<std::string, const char*, const char*, const char*> rows[] = {
        {"a.wav", "@plain", "the setting kUseGPUAcceleration asks for a GPU; there is none", "pcm_s16le"},
        {"a.mov", "@flac -acopy", "(flac) is encoded as lpcm, as the file's format does not carry it", "pcm_s16le"},
        {"a.mp4", "@plain -acopy", "corvex: -acopy: stream 1 of ", "alac"},
    };
    for (const auto& [target, words, said, codec] : rows) {
        const CommandResult result = corvex("transcode -out " + target + " -in " + words);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_THAT(result.error, HasSubstr(said));
        EXPECT_EQ(text(stream(probe(target), "audio"), "codec_name"), codec);
    }
    settings_.setUseTranscodeGPUAcceleration(false);
    settings_.setUseLegacyTranscodePipeline(true);
    const CommandResult legacy = corvex("transcode -in @plain -out b.wav");
    EXPECT_EQ(legacy.exitStatus, 2);
    EXPECT_THAT(legacy.error, AllOf(HasSubstr("'-legacy-pipeline' is not carried out"),
                                    HasSubstr("'corvex settings unset kUseLegacyTranscodePipeline' takes it back")));
    writeFile("settings.sqlite", "no store of settings");
    const CommandResult without = corvex("transcode -in @plain -out b.wav");
    EXPECT_EQ(without.exitStatus, 0);
    EXPECT_THAT(without.error, HasSubstr("settings.sqlite': file is not a database; the defaults count instead\n"));
}

}  // namespace
}  // namespace corvex::tool::test::transcodeQueueEndToEndTests
