// What is left when something goes wrong in the middle of a job. The job reads from a pipe that the test feeds, so that
// it is in its middle for as long as the test wants.

#include <csignal>
#include <filesystem>
#include <optional>
#include <sstream>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <tests/Places.h>
#include <tests/tools/Media.h>

namespace corvex::tool::test::faultEndToEndTests {
namespace {

using ::testing::HasSubstr;

/// The state letter and the parent of a process, from /proc/<pid>/stat; nothing when there is no such process.
struct ProcessFacts {
    char state = 0;
    pid_t parent = 0;
};
ProcessFacts factsOf(const std::string& process) {
    const std::string line = readFile("/proc/" + process + "/stat");
    const std::size_t end = line.rfind(')');  // the name before may hold anything
    ProcessFacts facts;
    if (end != std::string::npos) std::istringstream(line.substr(end + 1)) >> facts.state >> facts.parent;
    return facts;
}

bool isGone(pid_t process) {
    const char state = factsOf(std::to_string(process)).state;
    return state == 0 || state == 'Z';  // a zombie whose new parent has not looked yet
}

pid_t childOf(pid_t parent) {
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") != std::string::npos) continue;
        if (factsOf(name).parent == parent) return std::stoi(name);
    }
    return 0;
}

/// A transcode that has written its first frames and waits for more of its source.
class RunningJob {
public:
    explicit RunningJob(const Words& more = {}, Words before = {}) {
        EXPECT_EQ(mkfifo(directory.path("source.mkv").c_str(), 0600), 0);
        pipe_ = open(directory.path("source.mkv").c_str(), O_RDWR | O_CLOEXEC);  // both ends: never waits for a reader
        EXPECT_GE(pipe_, 0);
        fcntl(pipe_, F_SETPIPE_SZ, 1 << 20);
        const std::string bytes = readFile(clip("mkv"));
        const std::size_t half = bytes.size() * 3 / 4;
        EXPECT_EQ(write(pipe_, bytes.data(), half), static_cast<ssize_t>(half));
        before.insert(before.end(),
                      {corvex::test::toolPath, "transcode", "-in", directory.path("source.mkv"), "-out",
                       directory.path("out.mov"), "-progress_file", progress(), "-vcodec", "prores422proxy"});
        before.insert(before.end(), more.begin(), more.end());
        command_.emplace(before);
        EXPECT_TRUE(eventually([&] { return readFile(progress()).find("state=running") != std::string::npos; }));
        worker_ = childOf(command_->processIdentifier());
        EXPECT_NE(worker_, 0);
    }
    ~RunningJob() {
        if (pipe_ >= 0) close(pipe_);
    }

    [[nodiscard]] std::string progress() const { return work.path("progress.txt"); }
    [[nodiscard]] pid_t host() const { return command_->processIdentifier(); }
    [[nodiscard]] pid_t worker() const { return worker_; }
    CommandResult wait() { return command_->wait(); }
    /// Nothing beside the source; the worker has ended.
    void expectNothingLeft() {
        EXPECT_TRUE(eventually([&] { return isGone(worker_); }));
        EXPECT_EQ(directory.entries(), Words{"source.mkv"});
        EXPECT_EQ(work.entries(), Words{"progress.txt"});
    }

    TemporaryDirectory directory;
    TemporaryDirectory work;

private:
    int pipe_ = -1;
    std::optional<Command> command_;
    pid_t worker_ = 0;
};

TEST(FaultEndToEnd, aHostThatIsKilledTakesItsWorkerAlong) {
    RunningJob job;
    kill(job.host(), SIGKILL);
    EXPECT_EQ(job.wait().signal, SIGKILL);
    job.expectNothingLeft();
    EXPECT_THAT(readFile(job.progress()), HasSubstr("state=failed"));
}

TEST(FaultEndToEnd, aWorkerThatIsKilledIsReported) {
    for (const bool overwrites : {false, true}) {
        RunningJob job(overwrites ? Words{"-overwrite"} : Words{});
        // As its temporary name would stand where the file system has no files without a name.
        writeFile(job.directory.path(".out.mov." + std::to_string(job.worker()) + ".part"), "half");
        kill(job.worker(), SIGKILL);
        const CommandResult result = job.wait();
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_THAT(result.error, HasSubstr("signal 9"));
        EXPECT_EQ(lineCount(result.error), 1U) << result.error;
        job.expectNothingLeft();
    }
}

TEST(FaultEndToEnd, signalsEndTheJobInOrder) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        for (const bool toWorker : {false, true}) {
            RunningJob job;
            kill(toWorker ? job.worker() : job.host(), signal);
            const CommandResult result = job.wait();
            EXPECT_EQ(result.exitStatus, 1) << signal;
            EXPECT_THAT(result.error, HasSubstr("stopped by signal")) << signal;
            EXPECT_EQ(lineCount(result.error), 1U) << result.error;
            job.expectNothingLeft();
        }
    }
}

TEST(FaultEndToEnd, aSignalThatIsIgnoredStaysSo) {
    RunningJob job({}, {"nohup"});
    kill(job.worker(), SIGHUP);
    kill(job.host(), SIGHUP);
    kill(job.host(), SIGTERM);
    const CommandResult result = job.wait();
    EXPECT_THAT(result.error, HasSubstr("stopped by signal 15"));
    job.expectNothingLeft();
}

TEST(FaultEndToEnd, aFullDiskIsOneClearLine) {
    struct Row {
        const char* name;
        Words words;
    };
    const Row rows[] = {
        {"out.mov", {}},
        {"out.mov", {"-vcodec", "prores422", "-web"}},
        {"out.mp4", {"-acodec", "aac"}},
        {"out.wav", {}},
    };
    for (const Row& row : rows) {
        const TemporaryDirectory directory;
        // A limit of 32 blocks of 512 bytes fails as a full disk does, with another text.
        Words words{
            "sh",          "-c",   "ulimit -f 32; exec \"$@\"", "sh", corvex::test::toolPath, "transcode", "-in",
            clip("plain"), "-out", directory.path(row.name)};
        words.insert(words.end(), row.words.begin(), row.words.end());
        const CommandResult result = run(words);
        EXPECT_EQ(result.exitStatus, 1) << row.name;
        EXPECT_THAT(result.error, HasSubstr("cannot write '" + directory.path(row.name) + "': File too large"));
        EXPECT_EQ(lineCount(result.error), 1U) << result.error;
        EXPECT_EQ(directory.entries(), Words{});
    }
}

TEST(FaultEndToEnd, aFullDiskLeavesNoPartOfAPageOrAPicture) {
    const TemporaryDirectory directory;
    writeFile(directory.path("a.cube"), "LUT_3D_SIZE 2\n0 0 0\n1 0 0\n0 1 0\n1 1 0\n0 0 1\n1 0 1\n0 1 1\n1 1 1\n");
    const std::pair<Words, std::string> rows[] = {
        {{"generate", directory.path("share")}, "share/man/man1/corvex.1"},
        {{"lut", "check", directory.path("a.cube"), "--plot", directory.path("a.png")}, "a.png"},
    };
    for (const auto& [job, name] : rows) {
        Words words{"sh", "-c", "trap '' XFSZ; ulimit -f 2; exec \"$@\"", "sh", corvex::test::toolPath};
        words.insert(words.end(), job.begin(), job.end());
        const CommandResult result = run(words);
        EXPECT_EQ(result.exitStatus, 1) << name;
        EXPECT_EQ(result.error, "corvex: cannot write '" + directory.path(name) + "': File too large\n");
        EXPECT_FALSE(std::filesystem::exists(directory.path(name)));
    }
}

TEST(FaultEndToEnd, aReaderOfTheProgressMayLeave) {
    const TemporaryDirectory directory;
    const CommandResult result =
        run({"bash", "-c", "\"$@\" | true; exit ${PIPESTATUS[0]}", "bash", corvex::test::toolPath, "transcode", "-in",
             clip("plain"), "-out", directory.path("out.mov")});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    EXPECT_EQ(directory.entries(), Words{"out.mov"});
}

TEST(FaultEndToEnd, aWorkerWhoseParentIsGoneDoesNotStart) {
    const TemporaryDirectory directory;
    Command gone({"true"});
    const std::string parent = std::to_string(gone.processIdentifier());
    (void)gone.wait();
    const CommandResult result =
        corvex({"-isTranscoder", "-in", clip("plain"), "-out", directory.path("out.mov"), "-parentPid", parent});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.error, HasSubstr("-parentPid " + parent));
    EXPECT_EQ(directory.entries(), Words{});
}

}  // namespace
}  // namespace corvex::tool::test::faultEndToEndTests
