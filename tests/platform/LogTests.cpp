#include <Corvex/platform/Log.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <tests/LoggedBy.h>
#include <tests/OnThreads.h>

namespace corvex::logTests {
namespace {

TEST(Log, linesBelowTheMinimumAreDropped) {
    const auto lines = test::loggedBy([] {
        logDebug("CVX_TST_A-hidden");
        logInfo("CVX_TST_A-shown");
        setMinimumLogLevel(LogLevel::error);
        logInfo("CVX_TST_A-hidden");
        logError("CVX_TST_A-shown");
        setMinimumLogLevel(LogLevel::debug);
        logDebug("CVX_TST_A-shown");
    });
    setMinimumLogLevel(LogLevel::info);
    EXPECT_EQ(lines, std::vector<std::string>(3, "CVX_TST_A-shown"));
}

TEST(Log, linesGoToStandardErrorUntilThereIsASink) {
    testing::internal::CaptureStderr();
    logError("CVX_TST_A-default");
    const auto lines = test::loggedBy([] { logError("CVX_TST_A-sink"); });
    logError("CVX_TST_A-again");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "CVX_TST_A-default\nCVX_TST_A-again\n");
    EXPECT_EQ(lines.size(), 1U);
}

TEST(Log, sinksMayLogThrowAndReplaceThemselves) {
    std::vector<std::string> lines;
    setLogSink([&lines](LogLevel, std::string_view line) {
        lines.emplace_back(line);
        logError("CVX_TST_A-from the sink");
        setLogSink([&lines](LogLevel, std::string_view next) { lines.emplace_back(next); });
        throw std::runtime_error("sink failed");
    });
    logError("CVX_TST_A-first");
    logError("CVX_TST_A-second");
    setLogSink({});
    EXPECT_EQ(lines, (std::vector<std::string>{"CVX_TST_A-first", "CVX_TST_A-second"}));
}

TEST(Log, sinkRunsForOneThreadAtATime) {
    constexpr int threadCount = 4, lineCount = 500;
    std::atomic<int> running{0};
    int taken = 0;  // not atomic: the log's promise is what guards it
    const LogSink sink = [&](LogLevel, std::string_view) {
        EXPECT_EQ(running.fetch_add(1), 0);
        ++taken;
        std::this_thread::yield();
        running.fetch_sub(1);
    };
    setLogSink(sink);
    test::onThreads(threadCount, [&](int thread) {
        for (int line = 0; line < lineCount; ++line) {
            if (thread == 0 && line % 50 == 0) setLogSink(sink);
            logError("CVX_TST_A-line");
        }
    });
    setLogSink({});
    EXPECT_EQ(taken, threadCount * lineCount);
}

}  // namespace
}  // namespace corvex::logTests
