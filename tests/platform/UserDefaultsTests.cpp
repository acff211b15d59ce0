#include <Corvex/platform/UserDefaults.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

#include <tests/TemporaryDirectory.h>
#include <tests/Thrown.h>

#include <tests/OnThreads.h>

namespace corvex::userDefaultsTests {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using Value = UserDefaults::Value;
using Case = UserDefaultsError::Case;

std::string bytesOf(const fs::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

/// Runs an SQL statement on a file behind the store's back.
void sql(const fs::path& file, const char* text) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
    char* problem = nullptr;
    sqlite3_exec(database, text, nullptr, nullptr, &problem);
    EXPECT_EQ(problem, nullptr) << problem;
    sqlite3_close(database);
}

/// A store of one value, changed behind its back.
void change(const fs::path& file, const char* text) {
    UserDefaults(file).set("key", true);
    sql(file, text);
}

class UserDefaultsStore : public testing::Test {
protected:
    /// In memory where that can be: no test pulls the plug of the machine, and thousands of writes wait for no disk.
    const test::TemporaryDirectory directory_{access("/dev/shm", W_OK) == 0 ? "/dev/shm" : fs::temp_directory_path()};
    const fs::path& folder_ = directory_.path();
    const fs::path file_ = folder_ / "new/settings.sqlite";
    UserDefaults store_{file_};
};

TEST_F(UserDefaultsStore, valuesKeepTheirTypes) {
    EXPECT_EQ(store_.values(), UserDefaults::Values{});
    EXPECT_FALSE(store_.remove("absent"));
    EXPECT_FALSE(fs::exists(file_.parent_path())) << "reading makes nothing";
    const UserDefaults::Values written{
        {"", "empty key"s}, {"bool", true}, {"big", INT64_MIN}, {"text", "\u00DCber\0all\0"s},
        {"none", ""s},      {"real", 0.1},  {"whole", 2.0}};
    for (const auto& [key, value] : written) store_.set(key, value);
    EXPECT_EQ(store_.values(), written);
    EXPECT_EQ(UserDefaults(file_).value("text"), written.at("text"));
    EXPECT_EQ(fs::status(file_.parent_path()).permissions(), fs::perms::owner_all);

    store_.set("bool", std::string("now a text"));
    EXPECT_EQ(store_.value("bool"), Value(std::string("now a text")));
    EXPECT_TRUE(store_.remove("bool"));
    EXPECT_FALSE(store_.remove("bool"));
    EXPECT_EQ(store_.values().size(), written.size() - 1);
}

TEST_F(UserDefaultsStore, typedReadingsTakeWhatTheirTypeAllows) {
    constexpr std::optional<std::int64_t> none;
    const std::tuple<Value, bool, std::optional<std::int64_t>> rows[] = {
        {true, true, none}, {std::int64_t{7}, true, 7}, {std::int64_t{0}, false, 0},
        {1.0, true, none},  {0.0, false, none},         {std::string("1"), false, none}};
    for (const auto& [stored, boolean, integer] : rows) {
        store_.set("key", stored);
        EXPECT_EQ(store_.boolean("key"), boolean) << stored.index();
        EXPECT_EQ(store_.integer("key"), integer) << stored.index();
    }
    EXPECT_FALSE(store_.boolean("absent"));
    EXPECT_EQ(store_.integer("absent"), std::nullopt);
}

TEST_F(UserDefaultsStore, whatIsNoStoreIsAnErrorThatTouchesNothing) {
    const std::tuple<std::string, Case, void (*)(const fs::path&)> rows[] = {
        {"garbage", Case::corrupt, [](const fs::path& file) { std::ofstream(file) << std::string(5000, 'x'); }},
        {"foreign", Case::corrupt, [](const fs::path& file) { sql(file, "CREATE TABLE setting (a)"); }},
        {"otherwise", Case::corrupt, [](const fs::path& file) { change(file, "PRAGMA application_id = 1"); }},
        {"tableMissing", Case::corrupt, [](const fs::path& file) { change(file, "DROP TABLE setting"); }},
        {"typeUnknown", Case::corrupt, [](const fs::path& file) { change(file, "UPDATE setting SET kind = 9"); }},
        {"later", Case::newer, [](const fs::path& file) { change(file, "PRAGMA user_version = 2"); }},
        {"damaged", Case::corrupt,
         [](const fs::path& file) {
             // several pages
             for (int i = 0; i < 100; ++i) UserDefaults(file).set("key" + std::to_string(i), std::string(100, 'v'));
             std::fstream damaged(file, std::ios::in | std::ios::out | std::ios::binary);
             damaged.seekp(2 * 4096).write(std::string(4096, '\xFF').data(), 4096);
         }},
        {"folder", Case::unreadable, [](const fs::path& file) { fs::create_directory(file); }},
    };
    std::ptrdiff_t made = 0;
    for (const auto& [name, which, make] : rows) {
        SCOPED_TRACE(name);
        const fs::path file = folder_ / name;
        make(file);
        const std::string before = bytesOf(file);
        UserDefaults store(file);
        const auto whichOf = [](const auto& call) -> std::optional<Case> {
            const auto error = test::thrownBy<UserDefaultsError>(call);
            return error ? std::optional(error->which()) : std::nullopt;
        };
        EXPECT_EQ(whichOf([&] { return store.values(); }), which);
        if (name != "typeUnknown") {
            const auto writing = which == Case::unreadable ? Case::unwritable : which;
            EXPECT_EQ(whichOf([&] { store.set("other", true); }), writing);
            EXPECT_EQ(whichOf([&] { return store.remove("other"); }), writing);
        }
        EXPECT_EQ(bytesOf(file), before);
        EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), ++made) << "companions were left";
    }
}

TEST_F(UserDefaultsStore, theUsersOwnFileFollowsTheEnvironment) {
    constexpr const char* rows[][3] = {{nullptr, nullptr, "/home/a/.config/corvex/settings.sqlite"},
                                       {nullptr, "/etc/xdg", "/etc/xdg/corvex/settings.sqlite"},
                                       {nullptr, "relative", "/home/a/.config/corvex/settings.sqlite"},
                                       {"", "/etc/xdg", "/etc/xdg/corvex/settings.sqlite"},
                                       {"own.sqlite", "/etc/xdg", "own.sqlite"}};
    for (const auto& [named, configuration, file] : rows) {
        const auto look = [&] {  // in a process of its own
            clearenv();
            setenv("HOME", "/home/a", 1);
            if (named) setenv("CORVEX_SETTINGS_FILE", named, 1);
            if (configuration) setenv("XDG_CONFIG_HOME", configuration, 1);
            std::fputs(UserDefaults::standard().file().c_str(), stderr);
            _exit(0);
        };
        EXPECT_EXIT(look(), testing::ExitedWithCode(0), std::string("^") + file + "$");
    }
}

TEST_F(UserDefaultsStore, processesLoseNoneOfTheirWrites) {
    constexpr int processes = 8, writes = 1000;
    const auto write = [this](int process) noexcept {
        for (int i = 0; i < writes; ++i) {
            store_.set(std::to_string(process) + "." + std::to_string(i), std::int64_t{i});
            if (i % 10 == 0) store_.set("shared", std::int64_t{process});
        }
        _exit(0);
    };
    std::vector<pid_t> children;
    for (int process = 0; process < processes; ++process) {
        children.push_back(fork());
        if (children.back() == 0) write(process);
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(store_.values().size(), processes * writes + 1U);
}

TEST_F(UserDefaultsStore, threadsLoseNoneOfTheirWrites) {
    constexpr int threadCount = 4, writes = 25;
    test::onThreads(threadCount, [this](int thread) {
        for (int i = 0; i < writes; ++i) store_.set(std::to_string(thread * writes + i), std::int64_t{i});
    });
    EXPECT_EQ(store_.values().size(), static_cast<std::size_t>(threadCount * writes));
}

/// Runs `work` in a process of its own and kills it at its `count`th entry into or return from the system. False when it
/// was done before; none where processes may not be traced.
template <class Work>
std::optional<bool> isKilledAt(int count, const Work& work) {
    const pid_t child = fork();
    if (child == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(77);
        raise(SIGSTOP);
        work();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFSTOPPED(status)) return std::nullopt;
    for (int stop = 0; stop < count; ++stop) {
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        waitpid(child, &status, 0);
        if (WIFEXITED(status)) return false;
    }
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return true;
}

/// Also where the write is the first, and makes the store.
TEST_F(UserDefaultsStore, aProcessKilledAnywhereInAWriteLeavesTheOldOrTheNewValue) {
    const Value other(std::string(20'000, 'n'));
    for (const std::optional<Value>& old : {std::optional<Value>(std::string(20'000, 'o')), std::optional<Value>()}) {
        int oldCount = 0, newCount = 0;
        for (std::optional<bool> isKilled = true; *isKilled;) {
            fs::remove_all(file_.parent_path());
            if (old) store_.set("key", *old);
            isKilled = isKilledAt(oldCount + newCount + 1, [this, &other] { store_.set("key", other); });
            if (!isKilled) GTEST_SKIP() << "processes may not be traced here";
            const auto left = store_.value("key");
            ASSERT_TRUE(left == old || left == other) << oldCount + newCount;
            ++(left == other ? newCount : oldCount);
            store_.set("key", std::int64_t{newCount});
            ASSERT_EQ(store_.integer("key"), newCount);
        }
        EXPECT_GT(oldCount, 20);
        EXPECT_GT(newCount, 1) << "the write was never killed after it was done";
    }
}

}  // namespace
}  // namespace corvex::userDefaultsTests
