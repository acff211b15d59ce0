#pragma once

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <tests/TemporaryDirectory.h>

namespace corvex::test {

/// A bus of its own with a mocked login manager (python3-dbusmock) on it. While it lives it is the system bus of this
/// process and of those that it starts. The login manager drops an inhibitor when its holder closes it, as the real does.
class LoginManagerMock {
public:
    LoginManagerMock() {
        std::ofstream(folder_.path() / "bus.conf")
            << "<busconfig><listen>unix:path=" << socket().string()
            << "</listen><auth>EXTERNAL</auth><policy context=\"default\">"
               "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/>"
               "</policy></busconfig>";
        bus_ = start(
            {"dbus-daemon", "--nofork", "--nopidfile", "--config-file=" + (folder_.path() / "bus.conf").string()});
        setenv("DBUS_SYSTEM_BUS_ADDRESS", ("unix:path=" + socket().string()).c_str(), 1);
        isReady_ = eventually([this] { return std::filesystem::exists(socket()); });
        manager_ = start({"/usr/bin/python3", "-m", "dbusmock", "--template", "logind"});
        isReady_ = isReady_ && eventually([this] { return inhibitors().find("array") != std::string::npos; });
    }
    ~LoginManagerMock() {
        unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
        for (const pid_t process : {manager_, bus_}) {
            kill(process, SIGKILL);
            waitpid(process, nullptr, 0);
        }
    }
    LoginManagerMock(const LoginManagerMock&) = delete;
    LoginManagerMock& operator=(const LoginManagerMock&) = delete;

    [[nodiscard]] bool isReady() const noexcept { return isReady_; }

    /// The inhibitors that are held, as dbus-send prints them: what, who, why, mode, user, process. Empty without answer.
    [[nodiscard]] std::string inhibitors() const {
        const auto output = folder_.path() / "inhibitors";
        const pid_t asked = start(
            {"dbus-send", "--bus=unix:path=" + socket().string(), "--print-reply", "--dest=org.freedesktop.login1",
             "/org/freedesktop/login1", "org.freedesktop.login1.Manager.ListInhibitors"},
            output.string());
        int status = -1;
        waitpid(asked, &status, 0);
        std::ostringstream text;
        text << std::ifstream(output).rdbuf();
        return status == 0 ? text.str() : std::string();
    }
    [[nodiscard]] bool isInhibited() const { return inhibitors().find("idle:sleep") != std::string::npos; }

    /// Asks again and again until it holds, for as long as a very slow machine may need. False: it never did.
    template <class Condition>
    static bool eventually(const Condition& holds) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!holds()) {
            if (std::chrono::steady_clock::now() > deadline) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return true;
    }

private:
    [[nodiscard]] std::filesystem::path socket() const { return folder_.path() / "bus"; }

    static pid_t start(std::vector<std::string> words, const std::string& output = "/dev/null") {
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        std::vector<char*> arguments;
        for (std::string& word : words) arguments.push_back(word.data());
        arguments.push_back(nullptr);
        pid_t process = -1;
        posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        return process;
    }

    const TemporaryDirectory folder_;
    pid_t bus_ = -1, manager_ = -1;
    bool isReady_ = false;
};

}  // namespace corvex::test
