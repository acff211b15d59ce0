#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/ConcurrentQueueBasedAtomicSwitch.h>
#include <Corvex/concurrency/LimitedSizeQueue.h>
#include <Corvex/concurrency/OSStatusError.h>
#include <Corvex/concurrency/QueueBasedAtomicSwitch.h>
#include <Corvex/concurrency/UnfairLockBasedAtomicSwitch.h>
#include <Corvex/platform/StatusMessages.h>

#include <tests/OnThreads.h>

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

TEST(LimitedSizeQueue, keepsTheNewest) {
    // Letters are pushed, "|" clears.
    constexpr std::tuple<std::uint64_t, std::string_view, std::string_view> rows[] = {
        {3, "", ""}, {3, "abcde", "cde"}, {0, "ab", "b"}, {3, "abc|de", "de"}, {~std::uint64_t{0}, "abc", "abc"}};
    for (const auto& [capacity, steps, expected] : rows) {
        LimitedSizeQueue<char> queue(capacity);
        for (const char step : steps) step == '|' ? queue.clear() : queue.push(step);
        const std::vector<char> items = queue.getQueue();
        EXPECT_EQ(std::string_view(items.data(), items.size()), expected) << steps;
        EXPECT_EQ(queue.getCount(), static_cast<std::int64_t>(expected.size())) << steps;
        EXPECT_EQ(queue.getFirst().value_or('.'), (std::string(expected) + '.').front()) << steps;
        EXPECT_EQ(queue.getLast().value_or('.'), ('.' + std::string(expected)).back()) << steps;
        EXPECT_EQ(queue.capacity(), capacity == 0 ? 1 : capacity);
    }
}

/// Shows under ThreadSanitizer.
TEST(PlainThreads, stress) {
    constexpr int threadCount = 3, count = 1000;
    const auto switches = switchesOfEveryKind(false);
    LimitedSizeQueue<int> queue(100);
    test::onThreads(threadCount, [&](int thread) {
        for (int i = 0; i < count; ++i) {
            for (const auto& flag : switches) flag->modifyIsOn([](bool& value) { value = !value; });
            queue.push(thread * count + i);
            if (i % 100 == 0 && thread == 0) queue.clear();
            if (i % 50 == 0) static_cast<void>(queue.getFirst());
        }
    });
    EXPECT_GE(queue.getCount(), 99) << "pushed by one thread since it cleared last";
    std::vector<int> last(threadCount, -1);
    for (const int item : queue.getQueue()) {
        int& before = last[static_cast<std::size_t>(item / count)];
        EXPECT_LT(std::exchange(before, item), item) << "each thread's items are in its order";
    }
}

TEST(OSStatusError, descriptions) {
    const std::pair<OSStatusError, std::optional<std::string>> rows[] = {
        {OSStatusError(0), std::nullopt},
        {OSStatusError(133), "Memory page has hardware error"},  // the last
        {OSStatusError(134), "unknown error"},
        {OSStatusError(41), "unknown error"},  // a gap
        {OSStatusError(-50), "unknown error"},
        {OSStatusError(2, "opening", false), "opening"},
        {OSStatusError(2, "opening", true), "opening - No such file or directory"},
        {OSStatusError(0, "opening", true), "opening"},
        {OSStatusError(0, "", true), ""},
    };
    for (const auto& [error, description] : rows) EXPECT_EQ(error.errorDescription(), description) << error.status();
    EXPECT_FALSE(OSStatusError(0) == OSStatusError(0, "", false));
}

TEST(StatusMessages, aHostsTableReplacesThePlatforms) {
    setStatusMessages(
        [](std::int32_t status) { return status == -50 ? std::optional<std::string>("bad parameter") : std::nullopt; });
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
