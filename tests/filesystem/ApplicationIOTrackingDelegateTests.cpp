#include <Corvex/filesystem/ApplicationIOTrackingDelegate.h>

#include <latch>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include <tests/LoggedBy.h>

namespace corvex::applicationIOTrackingDelegateTests {
namespace {

using ::testing::ElementsAre;

/// Waits until the reports made so far are handed on.
void settle(ApplicationIOTrackingDelegate& delegate) {
    delegate.trackedHistoryAccessQueue().sync([] {});
}

TEST(ApplicationIOTrackingDelegate, handsReportsOnInTheirOrderAndOnItsOwnThread) {
    ApplicationIOTrackingDelegate delegate;
    const auto now = std::chrono::system_clock::now();
    std::vector<std::int64_t> order;
    std::latch released(1);
    delegate.handleSpeedUpdate("/early", 1, 2, now, "lost");
    delegate.setupIOTrackingBehavior([&, caller = std::this_thread::get_id()](const IOActivityUpdate& update) {
        released.wait();  // the callers are long done: none of them waits for the behaviour
        order.push_back(update.bytesRead());
        EXPECT_NE(std::this_thread::get_id(), caller);
        EXPECT_EQ(update.url(), "/clip.mov");
        EXPECT_EQ(update.bytesWritten(), -update.bytesRead());
        EXPECT_EQ(update.timestamp(), now);
        EXPECT_EQ(update.activityPerformerIdentifier().value_or("none"), update.bytesRead() == 7 ? "none" : "job 1");
    });
    delegate.handleSpeedUpdate("/clip.mov", 5, -5, now, "job 1");
    delegate.handleSpeedUpdate("/clip.mov", 3, -3, now, "job 1");
    delegate.handleSpeedUpdate("/clip.mov", 7, -7, now, std::nullopt);
    released.count_down();
    settle(delegate);
    EXPECT_THAT(order, ElementsAre(5, 3, 7));
}

TEST(ApplicationIOTrackingDelegate, theFirstBehaviourStays) {
    setMinimumLogLevel(LogLevel::debug);
    int first = 0, second = 0;
    const auto lines = test::loggedBy([&] {
        ApplicationIOTrackingDelegate delegate;
        delegate.setupIOTrackingBehavior([&](const IOActivityUpdate&) { ++first; });
        delegate.setupIOTrackingBehavior([&](const IOActivityUpdate&) { ++second; });
        delegate.handleSpeedUpdate("/clip.mov", 1, 0, {}, std::nullopt);
        settle(delegate);
    });
    setMinimumLogLevel(LogLevel::info);
    EXPECT_EQ(std::pair(first, second), std::pair(1, 0));
    EXPECT_THAT(lines, ElementsAre("AIOTS-Failed to update tracking behavior. Already SET!"));
}

}  // namespace
}  // namespace corvex::applicationIOTrackingDelegateTests
