#pragma once

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

#include <tests/TemporaryDirectory.h>

namespace corvex::test {

/// A bus of its own with a mocked login manager (python3-dbusmock) on it. While it lives it is the system bus of this
/// process and of those that it starts. The login manager drops an inhibitor when its holder closes it, as the real does.
class LoginManagerMock {
public:
    LoginManagerMock() {
        std::ofstream(folder_.path() / "bus.conf")
            << "<busconfig><listen>" << address_ << "</listen><auth>EXTERNAL</auth><policy context=\"default\">"
            << "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/>"
            << "</policy></busconfig>";
        bus_ = outputOf("dbus-daemon --fork --print-pid --config-file=" + (folder_.path() / "bus.conf").string());
        setenv("DBUS_SYSTEM_BUS_ADDRESS", address_.c_str(), 1);
        manager_ = outputOf("/usr/bin/python3 -m dbusmock --template logind >/dev/null 2>&1 & echo $!");
    }
    ~LoginManagerMock() {
        unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
        for (const std::string& process : {manager_, bus_}) {
            if (!process.empty()) kill(std::stoi(process), SIGKILL);
        }
    }

    /// Waits for the first answer.
    [[nodiscard]] bool isReady() const {
        return eventually([this] { return inhibitors().find("array") != std::string::npos; });
    }

    /// The inhibitors that are held, as dbus-send prints them: what, who, why, mode, user, process. Empty without answer.
    [[nodiscard]] std::string inhibitors() const {
        return outputOf("dbus-send --bus=" + address_ +
                        " --print-reply --dest=org.freedesktop.login1 /org/freedesktop/login1"
                        " org.freedesktop.login1.Manager.ListInhibitors");
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
    /// What a command of the shell prints; empty where it fails.
    static std::string outputOf(const std::string& command) {
        std::string text;
        FILE* const output = popen(("exec 2>/dev/null; " + command).c_str(), "re");
        for (int byte = std::fgetc(output); byte != EOF; byte = std::fgetc(output)) text += static_cast<char>(byte);
        return pclose(output) == 0 ? text : std::string();
    }

    const TemporaryDirectory folder_;
    const std::string address_ = "unix:path=" + (folder_.path() / "bus").string();
    std::string bus_, manager_;  ///< The processes.
};

}  // namespace corvex::test
