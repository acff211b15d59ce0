// What is left when something goes wrong in the middle of a job. The job reads from a pipe that the test feeds, so that
// it is in its middle for as long as the test wants.

#include <csignal>
#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>

#include <tests/Places.h>
#include <tests/tools/Media.h>

namespace corvex::tool::test::faultEndToEndTests {
namespace {

using ::testing::HasSubstr;

/// The state letter of a process, from /proc/<pid>/stat; 0 when there is no such process.
char stateOf(pid_t process) {
    const std::string line = readFile("/proc/" + std::to_string(process) + "/stat");
    const std::size_t end = line.rfind(')');  // the name before may hold anything
    return end == std::string::npos ? '\0' : line.at(end + 2);
}

std::string mostOf(const std::string& bytes) { return bytes.substr(0, bytes.size() * 3 / 4); }

/// A transcode that has written its first frames and waits for more of its source.
struct RunningJob {
    explicit RunningJob(const std::string& more = {}, const std::string& before = {})
        : command(wordsOf(before + corvex::test::toolPath + " transcode -in " + directory.path("source.mkv") +
                          " -out " + directory.path("out.mov") + " -progress_file " + progress +
                          " -vcodec prores422proxy " + more)) {
        EXPECT_TRUE(eventually([&] { return readFile(progress).find("state=running") != std::string::npos; }));
        const std::string number = std::to_string(host);
        std::istringstream(readFile("/proc/" + number + "/task/" + number + "/children")) >> worker;
        EXPECT_NE(worker, 0);
    }
    /// Nothing beside the source; the worker has ended.
    CommandResult waitAndExpectNothingLeft() {
        CommandResult result = command.wait();
        EXPECT_TRUE(eventually([&] {
            const char state = stateOf(worker);
            return state == 0 || state == 'Z';  // a zombie whose new parent has not looked yet
        }));
        EXPECT_EQ(directory.entries(), Words{"source.mkv"});
        EXPECT_EQ(work.entries(), Words{"progress.txt"});
        return result;
    }
    void expectToStopWith(const char* problem) {
        const CommandResult result = waitAndExpectNothingLeft();
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_THAT(result.error, HasSubstr(problem));
        EXPECT_EQ(lineCount(result.error), 1U) << result.error;
    }

    TemporaryDirectory directory, work;
    const std::string progress = work.path("progress.txt");
    SourcePipe pipe{directory.path("source.mkv"), mostOf(readFile(clip("mkv")))};
    Command command;
    const pid_t host = command.processIdentifier();
    pid_t worker = 0;
};

TEST(FaultEndToEnd, aHostThatIsKilledTakesItsWorkerAlong) {
    RunningJob job;
    kill(job.host, SIGKILL);
    (void)job.waitAndExpectNothingLeft();
    EXPECT_THAT(readFile(job.progress), HasSubstr("state=failed"));
}

TEST(FaultEndToEnd, aWorkerThatIsKilledIsReported) {
    for (const char* more : {"", "-overwrite"}) {
        RunningJob job(more);
        // As its temporary name would stand where the file system has no files without a name.
        writeFile(job.directory.path(".out.mov." + std::to_string(job.worker) + ".part"), "half");
        kill(job.worker, SIGKILL);
        job.expectToStopWith("signal 9");
    }
}

TEST(FaultEndToEnd, signalsEndTheJobInOrder) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        for (const bool toWorker : {false, true}) {
            RunningJob job;
            kill(toWorker ? job.worker : job.host, signal);
            job.expectToStopWith(("stopped by signal " + std::to_string(signal) + " ").c_str());
        }
    }
    RunningJob job("", "nohup ");  // a signal that is ignored stays so
    kill(job.worker, SIGHUP);
    kill(job.host, SIGHUP);
    kill(job.host, SIGTERM);
    EXPECT_THAT(job.waitAndExpectNothingLeft().error, HasSubstr("stopped by signal 15"));
}

using FaultRoomEndToEnd = RoomTest;

TEST_F(FaultRoomEndToEnd, aFullDiskIsOneClearLineAndLeavesNothing) {
    writeFile("a.cube", "LUT_3D_SIZE 2\n0 0 0\n1 0 0\n0 1 0\n1 1 0\n0 0 1\n1 0 1\n0 1 1\n1 1 1\n");
    // A limit in blocks of 512 bytes fails as a full disk does, with another text.
    const std::tuple<std::string, std::string, std::string> rows[] = {
        {"ulimit -f 32", "transcode -in @plain -out out.mov", "out.mov"},
        {"ulimit -f 32", "transcode -in @plain -vcodec prores422 -web -out out.mov", "out.mov"},
        {"ulimit -f 32", "transcode -in @plain -work_dir . -out out.wav", "out.wav' by way of '."},
        {"trap \"\" XFSZ; ulimit -f 2", "generate share", "share/man/man1/corvex.1"},
        {"trap \"\" XFSZ; ulimit -f 2", "lut check a.cube --plot a.png", "a.png"},
    };
    for (const auto& [setting, words, name] : rows) {
        const CommandResult result =
            run(wordsOf("sh -c '" + setting + "; exec \"$@\"' sh " + corvex::test::toolPath + " " + words));
        EXPECT_EQ(result.exitStatus, 1) << words;
        EXPECT_EQ(result.error, "corvex: cannot write '" + name + "': File too large\n");
        EXPECT_FALSE(std::filesystem::exists(name));
        std::filesystem::remove_all("share");
        EXPECT_EQ(room.entries(), Words{"a.cube"}) << words;
    }
}

TEST_F(FaultRoomEndToEnd, readersAndParentsMayBeGone) {
    const std::string tool = corvex::test::toolPath;
    EXPECT_EQ(run(wordsOf("sh -c '\"$@\" >/dev/full' sh " + tool + " media makers")).error,
              "corvex: cannot write to standard output\n");
    Command gone({"true"});
    const std::string parent = std::to_string(gone.processIdentifier());
    (void)gone.wait();
    expectRefusals({{"-isTranscoder -in @plain -out out.mov -parentPid " + parent, 1, "-parentPid " + parent}});
    EXPECT_EQ(room.entries(), Words{});
    const CommandResult unread = run(
        wordsOf("bash -c '\"$@\" | true; exit ${PIPESTATUS[0]}' bash " + tool + " transcode -in @plain -out out.mov"));
    EXPECT_EQ(unread.exitStatus, 0) << unread.error;
    EXPECT_EQ(room.entries(), Words{"out.mov"});
}

}  // namespace
}  // namespace corvex::tool::test::faultEndToEndTests
