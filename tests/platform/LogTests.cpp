#include <Corvex/platform/Log.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "OnThreads.h"

namespace corvex::logTests {
namespace {

using Lines = std::vector<std::pair<LogLevel, std::string>>;

class Log : public testing::Test {
protected:
    ~Log() override {
        setLogSink({});
        setMinimumLogLevel(LogLevel::info);
    }
    void collect() {
        setLogSink([this](LogLevel level, std::string_view line) { lines_.emplace_back(level, line); });
    }
    Lines lines_;
};

TEST_F(Log, linesBelowTheMinimumAreDropped) {
    collect();
    logDebug("CVX_TST_A-hidden");
    logInfo("CVX_TST_A-shown");
    setMinimumLogLevel(LogLevel::error);
    logInfo("CVX_TST_A-hidden");
    logError("CVX_TST_A-shown");
    setMinimumLogLevel(LogLevel::debug);
    logDebug("CVX_TST_A-shown");
    EXPECT_EQ(lines_, (Lines{{LogLevel::info, "CVX_TST_A-shown"},
                             {LogLevel::error, "CVX_TST_A-shown"},
                             {LogLevel::debug, "CVX_TST_A-shown"}}));
}

TEST_F(Log, linesGoToStandardErrorUntilThereIsASink) {
    testing::internal::CaptureStderr();
    logError("CVX_TST_A-default");
    collect();
    logError("CVX_TST_A-sink");
    setLogSink({});
    logError("CVX_TST_A-again");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "CVX_TST_A-default\nCVX_TST_A-again\n");
    EXPECT_EQ(lines_.size(), 1U);
}

TEST_F(Log, sinksMayLogThrowAndReplaceThemselves) {
    setLogSink([this](LogLevel level, std::string_view line) {
        lines_.emplace_back(level, line);
        logError("CVX_TST_A-from the sink");
        collect();
        throw std::runtime_error("sink failed");
    });
    logError("CVX_TST_A-first");
    logError("CVX_TST_A-second");
    EXPECT_EQ(lines_, (Lines{{LogLevel::error, "CVX_TST_A-first"}, {LogLevel::error, "CVX_TST_A-second"}}));
}

TEST_F(Log, sinkRunsForOneThreadAtATime) {
    constexpr int threadCount = 4, lineCount = 500;
    std::atomic<int> running{0};
    int taken = 0;  // not atomic: the log's promise is what guards it
    const auto makeSink = [&] {
        return [&](LogLevel, std::string_view) {
            EXPECT_EQ(running.fetch_add(1), 0);
            ++taken;
            running.fetch_sub(1);
        };
    };
    setLogSink(makeSink());
    test::onThreads(threadCount, [&](int thread) {
        for (int line = 0; line < lineCount; ++line) {
            if (thread == 0 && line % 50 == 0) setLogSink(makeSink());
            logError("CVX_TST_A-line");
        }
    });
    EXPECT_EQ(taken, threadCount * lineCount);
}

}  // namespace
}  // namespace corvex::logTests
