#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/platform/ConcurrentQueue.h>
#include <Corvex/platform/ManualExecutor.h>
#include <Corvex/platform/SerialQueue.h>

#include <tests/OnThreads.h>

namespace corvex::dispatchQueueTests {
namespace {

TEST(ConcurrentQueue, barriersWaitForWhatIsBeforeThemAndHoldBackWhatIsBehind) {
    // Work added to a queue, small letters and capitals as barriers; how much of it is posted, as what ends goes on with
    // the first that it lets run.
    constexpr std::pair<const char*, std::size_t> rows[] = {{"abc", 3}, {"A", 1}, {"abCd", 2}, {"ABc", 1}, {"aBcd", 2}};
    for (const auto& [pieces, postings] : rows) {
        ManualExecutor executor;
        std::string trace;
        ConcurrentQueue queue("test", executor);
        for (const char piece : std::string_view(pieces)) {
            auto work = [&trace, piece] { trace += piece; };
            piece >= 'a' ? queue.async(work) : queue.asyncBarrier(work);
        }
        EXPECT_EQ(executor.runAll(), postings) << pieces;
        EXPECT_EQ(trace, pieces);
    }
}

TEST(SerialQueue, keepsTheOrderOfEveryPosterAndEndsAfterItsWork) {
    constexpr int posterCount = 4, count = 500;
    std::vector<int> last(posterCount, -1);  // not guarded: the queue is what guards it
    int disorder = 0;
    std::atomic<int> seenBehind{0};
    {
        SerialQueue queue("test", DispatchQoS::utility);
        test::onThreads(posterCount, [&](int poster) {
            int& own = last[static_cast<std::size_t>(poster)];
            for (int i = 0; i < count; ++i) {
                queue.async([&, i] { disorder += std::exchange(own, i) == i - 1 ? 0 : 1; });
                if (i % 50 == 0 && queue.sync([&] { return own; }) == i) ++seenBehind;
            }
        });
    }
    EXPECT_EQ(disorder, 0);
    EXPECT_EQ(last, std::vector<int>(posterCount, count - 1));
    EXPECT_EQ(seenBehind.load(), posterCount * count / 50) << "sync comes behind what its caller added";
}

/// Writers hold both numbers for themselves; readers see them equal.
TEST(ConcurrentQueue, stress) {
    constexpr int threadCount = 4, rounds = 300;
    std::int64_t first = 0, second = 0;
    std::atomic<int> torn{0}, reads{0};
    {
        ConcurrentQueue queue("test", DispatchQoS::QoSClass::userInitiated);
        auto write = [&] { ++first, ++second; };
        auto read = [&] {
            if (first != second) ++torn;
            ++reads;
        };
        test::onThreads(threadCount, [&](int) {
            for (int i = 0; i < rounds; ++i) {
                queue.async(read);
                queue.sync(read);
                if (i % 3 == 0) queue.asyncBarrier(write);
                if (i % 5 == 0) queue.syncBarrier(write);
            }
        });
    }
    EXPECT_EQ(torn.load(), 0);
    EXPECT_EQ(reads.load(), 2 * threadCount * rounds);
    EXPECT_EQ(first, threadCount * (rounds / 3 + rounds / 5));
}

/// Each piece waits for the next one, which only a further thread can run; far more of them than processors.
TEST(ConcurrentQueue, blockedWorkGetsFurtherThreads) {
    constexpr int count = 20;
    std::vector<std::atomic<bool>> reached(count + 1);
    reached[count] = true;
    ConcurrentQueue queue("test");
    for (std::size_t i = 0; i < count; ++i)
        queue.async([&reached, i] {
            reached[i + 1].wait(false);
            reached[i] = true;
            reached[i].notify_all();
        });
    reached[0].wait(false);
    EXPECT_TRUE(reached[1].load());
}

TEST(SerialQueue, errorsOfSynchronousWorkReachItsCallerAndMoveOnlyWorkPasses) {
    SerialQueue queue("label", DispatchQoS::background);
    EXPECT_THROW(queue.sync([] { throw std::runtime_error("refused"); }), std::runtime_error);
    int sum = 0;
    queue.async([&sum, owned = std::make_unique<int>(5)] { sum += *owned; });
    EXPECT_EQ(queue.sync([&sum] { return sum; }), 5);
    EXPECT_EQ(queue.label(), "label");
    EXPECT_EQ(SerialQueue("label", DispatchQoS::QoSClass::utility).qos(), DispatchQoS::unspecified);
}

TEST(SerialQueueDeathTest, workThatWaitsForItsOwnQueueStopsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto wait = [] {
        SerialQueue queue("test"), other("other");
        queue.sync([&] { other.sync([&] { queue.sync([] {}); }); });
    };
    EXPECT_DEATH(wait(), "waited for the queue");
}

TEST(QualityOfService, equivalences) {
    constexpr std::tuple<std::int64_t, std::optional<TaskPriority>, DispatchQoS> rows[] = {
        {33, TaskPriority::high, DispatchQoS::userInteractive},
        {25, TaskPriority::userInitiated, DispatchQoS::userInitiated},
        {17, TaskPriority::utility, DispatchQoS::utility},
        {9, TaskPriority::background, DispatchQoS::background},
        {-1, TaskPriority{21}, DispatchQoS::defaultQoS},
        {34, std::nullopt, DispatchQoS::unspecified},
    };
    for (const auto& [rawValue, priority, dispatch] : rows) {
        const auto quality = static_cast<QualityOfService>(rawValue);
        EXPECT_EQ(taskPriorityEquivalent(quality), priority) << rawValue;
        EXPECT_EQ(dispatchEquivalent(quality), dispatch) << rawValue;
        EXPECT_EQ(dispatch.qualityOfService(), priority ? quality : QualityOfService::defaultQuality);
        EXPECT_EQ((DispatchQoS{dispatch.qosClass, -1}).qualityOfService(), QualityOfService::defaultQuality);
    }
}

}  // namespace
}  // namespace corvex::dispatchQueueTests
