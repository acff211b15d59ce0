#include <Corvex/platform/internal/ProcessWide.h>

#include <atomic>
#include <latch>
#include <string>

#include <gtest/gtest.h>

#include "OnThreads.h"

namespace corvex::processWideTests {
namespace {

std::atomic<int> makeCount{0};

std::string makeText() {
    ++makeCount;
    return "initial";
}

TEST(ProcessWide, valueIsMadeOnFirstUseUnlessSetBefore) {
    makeCount = 0;
    ProcessWide<std::string> unread(makeText);
    unread.set("host");
    EXPECT_EQ(unread.get(), "host");
    EXPECT_EQ(makeCount, 0);

    const ProcessWide<std::string> read(makeText);
    EXPECT_EQ(read.get() + read.get(), "initialinitial");
    EXPECT_EQ(makeCount, 1);
}

TEST(ProcessWide, threadsSeeWholeValuesMadeOnce) {
    makeCount = 0;
    ProcessWide<std::string> value(makeText);
    constexpr int threadCount = 4;
    std::latch start(threadCount);
    std::atomic<int> tornCount{0};
    test::onThreads(threadCount, [&](int thread) {
        const std::string own(40, static_cast<char>('a' + thread));
        start.arrive_and_wait();
        for (int round = 0; round < 2000; ++round) {
            const std::string text = value.get();
            if (text != "initial" && text != std::string(40, text.front())) ++tornCount;
            value.set(own);
        }
    });
    EXPECT_EQ(tornCount, 0);
    EXPECT_EQ(makeCount, 1);
}

}  // namespace
}  // namespace corvex::processWideTests
