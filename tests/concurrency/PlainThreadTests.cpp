#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/ConcurrentQueueBasedAtomicSwitch.h>
#include <Corvex/concurrency/LimitedSizeQueue.h>
#include <Corvex/concurrency/OSStatusError.h>
#include <Corvex/concurrency/QueueBasedAtomicSwitch.h>
#include <Corvex/concurrency/UnfairLockBasedAtomicSwitch.h>
#include <Corvex/platform/StatusMessages.h>

namespace corvex::plainThreadTests {
namespace {

std::vector<std::unique_ptr<AtomicSwitch>> switchesOfEveryKind(bool isOn) {
    std::vector<std::unique_ptr<AtomicSwitch>> switches;
    switches.push_back(std::make_unique<UnfairLockBasedAtomicSwitch>(isOn));
    switches.push_back(std::make_unique<QueueBasedAtomicSwitch>(isOn, "a", DispatchQoS::QoSClass::utility));
    switches.push_back(std::make_unique<QueueBasedAtomicSwitch>(isOn, "b", DispatchQoS::userInitiated));
    switches.push_back(std::make_unique<ConcurrentQueueBasedAtomicSwitch>(isOn, "c", DispatchQoS::QoSClass::utility));
    return switches;
}

TEST(AtomicSwitch, modifyingIsTwoStepsAndAWriteBetweenThemIsLost) {
    for (const bool isOn : {false, true}) {
        for (const auto& flag : switchesOfEveryKind(isOn)) {
            ASSERT_EQ(flag->isOn(), isOn);
            flag->modifyIsOn([&](bool& value) {
                flag->setIsOn(!isOn);  // the step in between, which would deadlock in one critical section
                EXPECT_EQ(flag->isOn(), !isOn);
                EXPECT_EQ(value, isOn);
            });
            EXPECT_EQ(flag->isOn(), isOn);
            flag->modifyIsOn([](bool& value) { value = !value; });
            EXPECT_EQ(flag->isOn(), !isOn);
        }
    }
}

TEST(AtomicSwitch, stress) {
    for (const auto& flag : switchesOfEveryKind(false)) {
        {
            std::vector<std::jthread> threads;
            for (int thread = 0; thread < 3; ++thread)
                threads.emplace_back([&flag] {
                    for (int i = 0; i < 500; ++i) flag->modifyIsOn([](bool& value) { value = !value; });
                });
        }
        flag->setIsOn(true);
        EXPECT_TRUE(flag->isOn());
    }
}

struct LimitedRow {
    const char* name;
    std::uint64_t capacity;
    const char *steps, *contents;  ///< Letters are pushed, "|" clears.
};

TEST(LimitedSizeQueue, keepsTheNewest) {
    constexpr LimitedRow rows[] = {
        {"nothing", 3, "", ""},
        {"below capacity", 3, "ab", "ab"},
        {"beyond it", 3, "abcde", "cde"},
        {"0 counts as 1", 0, "ab", "b"},
        {"cleared", 3, "ab|", ""},
        {"filled again", 2, "abc|de", "de"},
        {"largest", ~std::uint64_t{0}, "abc", "abc"},
    };
    for (const auto& row : rows) {
        LimitedSizeQueue<std::string> queue(row.capacity);
        const std::string expected = row.contents;
        for (const char* step = row.steps; *step; ++step) {
            if (*step == '|') {
                queue.clear();
            } else {
                queue.push(std::string(1, *step));
            }
        }
        std::string contents;
        for (const std::string& item : queue.getQueue()) contents += item;
        EXPECT_EQ(contents, expected) << row.name;
        EXPECT_EQ(queue.getCount(), static_cast<std::int64_t>(expected.size())) << row.name;
        EXPECT_EQ(queue.getFirst().value_or(""), expected.substr(0, 1)) << row.name;
        EXPECT_EQ(queue.getLast().value_or(""), expected.empty() ? "" : expected.substr(expected.size() - 1))
            << row.name;
    }
    EXPECT_EQ(LimitedSizeQueue<int>(0).capacity(), 1U);
}

TEST(LimitedSizeQueue, stress) {
    constexpr int threadCount = 3, count = 1000;
    LimitedSizeQueue<int> queue(100);
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < threadCount; ++thread)
            threads.emplace_back([&queue, thread] {
                for (int i = 0; i < count; ++i) {
                    queue.push(thread * count + i);
                    if (i % 100 == 0 && thread == 0) queue.clear();
                    if (i % 50 == 0) static_cast<void>(queue.getFirst());
                }
            });
    }
    EXPECT_GE(queue.getCount(), 99) << "pushed by one thread since it cleared last";
    std::vector<int> last(threadCount, -1);
    for (const int item : queue.getQueue()) {
        int& before = last[static_cast<std::size_t>(item / count)];
        EXPECT_LT(before, item) << "each thread's items are in its order";
        before = item;
    }
    EXPECT_EQ(queue.getLast().value() % count, count - 1) << "the last is some thread's last";
}

struct StatusRow {
    const char* name;
    OSStatusError error;
    std::optional<std::string> description;
};

TEST(OSStatusError, descriptions) {
    const StatusRow rows[] = {
        {"success", OSStatusError(0), std::nullopt},
        {"the platform's", OSStatusError(2), "No such file or directory"},
        {"the last", OSStatusError(133), "Memory page has hardware error"},
        {"none", OSStatusError(134), "unknown error"},
        {"a gap", OSStatusError(41), "unknown error"},
        {"negative", OSStatusError(-50), "unknown error"},
        {"text alone", OSStatusError(2, "opening", false), "opening"},
        {"text and the platform's", OSStatusError(2, "opening", true), "opening - No such file or directory"},
        {"text and none", OSStatusError(-50, "opening", true), "opening - unknown error"},
        {"text and success", OSStatusError(0, "opening", true), "opening"},
        {"empty text", OSStatusError(0, "", true), ""},
    };
    for (const auto& row : rows) EXPECT_EQ(row.error.errorDescription(), row.description) << row.name;
    EXPECT_EQ(OSStatusError(2), OSStatusError(2));
    EXPECT_FALSE(OSStatusError(0) == OSStatusError(0, "", false));
}

TEST(StatusMessages, aHostsTableReplacesThePlatforms) {
    setStatusMessages([](std::int32_t status) -> std::optional<std::string> {
        if (status == -50) return "bad parameter";
        return std::nullopt;
    });
    const OSStatusError own(-50, "reading", true);
    const auto unknown = errorMessage(2), success = errorMessage(0);
    setStatusMessages({});
    EXPECT_STREQ(own.what(), "reading - bad parameter");
    EXPECT_EQ(unknown, "unknown error");
    EXPECT_EQ(success, std::nullopt);
    EXPECT_EQ(errorMessage(2), "No such file or directory");
}

}  // namespace
}  // namespace corvex::plainThreadTests
