#include <string>

#include <gtest/gtest.h>

#include <Corvex/concurrency/MainActor.h>
#include <Corvex/platform/ManualExecutor.h>

namespace corvex::mainActorTests {
namespace {

TEST(MainActorDeathTest, withoutAHostsExecutorTheProcessStops) {
    EXPECT_DEATH(static_cast<void>(MainActor::executor()), "no main executor");
}

/// In one test, since the executor is the whole process's.
TEST(MainActor, runsItsWorkThereAndItsCallersWhereTheyWere) {
    ManualExecutor main, other;
    MainActor::setExecutor(main);
    std::string trace;
    auto place = [](ManualExecutor& away) { return MainActor::runsHere() ? 'm' : away.runsHere() ? 'o' : '?'; };
    auto work = [&](std::string& text) -> Task<> {
        auto look = [&] { return text += place(other), 7; };
        const int answer = co_await MainActor::run(look);
        text += place(other) + std::to_string(answer);
        co_await MainActor::hop();
        text += place(other);
        MainActor::post([&text] { text += '.'; });
        text += '!';
    };
    auto handle = spawn(work(trace), other);
    other.runAll();
    EXPECT_EQ(trace, "");
    main.runAll();
    EXPECT_EQ(trace, "m");
    other.runAll();
    EXPECT_EQ(trace, "mo7");
    main.runAll();
    EXPECT_EQ(trace, "mo7m!.");
    EXPECT_TRUE(handle.isFinished());
    EXPECT_FALSE(MainActor::runsHere());
}

}  // namespace
}  // namespace corvex::mainActorTests
