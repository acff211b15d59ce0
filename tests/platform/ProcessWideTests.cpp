#include <Corvex/platform/internal/ProcessWide.h>

#include <atomic>
#include <string>

#include <gtest/gtest.h>

#include <tests/OnThreads.h>

namespace corvex::processWideTests {
namespace {

std::atomic<int> makeCount{0};

std::string makeText() {
    ++makeCount;
    return "initial";
}

TEST(ProcessWide, threadsSeeWholeValuesMadeOnce) {
    ProcessWide<std::string> value(makeText), fromHost(makeText);
    fromHost.set("host");
    EXPECT_EQ(fromHost.get(), "host");
    std::atomic<int> tornCount{0};
    test::onThreads(4, [&](int thread) {
        const std::string own(40, static_cast<char>('a' + thread));
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
