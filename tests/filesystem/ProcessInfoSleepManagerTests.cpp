#include <Corvex/filesystem/ProcessInfoSleepManager.h>

#include <cstdlib>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include <tests/LoggedBy.h>
#include <tests/filesystem/LoginManagerMock.h>

namespace corvex::processInfoSleepManagerTests {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

TEST(SleepManager, withoutABusTheTokenIsKeptAllTheSame) {
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/dev/null/none", 1);
    const auto lines = test::loggedBy([] {
        ProcessInfoSleepManager manager;
        manager.permit();
        EXPECT_TRUE(manager.canSleep());
        manager.prevent();
        manager.prevent();
        EXPECT_FALSE(manager.canSleep());
    });
    EXPECT_THAT(lines, ElementsAre(HasSubstr("CVX_PA_INHB-The machine is not held awake: ")));
    unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
}

/// Calls do not count: one permits, however many have prevented.
TEST(SleepManager, holdsAnInhibitorOfTheLoginManagerForAsLongAsItPrevents) {
    const test::LoginManagerMock login;
    ASSERT_TRUE(login.isReady());
    const auto lines = test::loggedBy([&] {
        const ProcessActivity mindless(userInitiatedActivityOptions & ~idleSystemSleepDisabled, "background work");
        ProcessInfoSleepManager manager;
        EXPECT_THAT(login.inhibitors(), Not(HasSubstr("filesystem_tests"))) << "neither minds sleep";
        manager.prevent();
        manager.prevent();
        EXPECT_FALSE(manager.canSleep());
        const std::string held = login.inhibitors();
        EXPECT_THAT(held, AllOf(HasSubstr("\"idle:sleep\""), HasSubstr("\"filesystem_tests\""),
                                HasSubstr("\"filesystem_tests has queued activities\""), HasSubstr("\"block\"")));
        EXPECT_EQ(held.find("idle:sleep"), held.rfind("idle:sleep")) << "one inhibitor, not two";
        manager.permit();
        EXPECT_TRUE(manager.canSleep());
        EXPECT_TRUE(login.eventually([&] { return !login.isInhibited(); }));
        manager.prevent();
        EXPECT_FALSE(manager.canSleep());
        EXPECT_TRUE(login.isInhibited());
    });
    EXPECT_TRUE(login.eventually([&] { return !login.isInhibited(); })) << "its end permits";
    EXPECT_THAT(lines, IsEmpty());
}

}  // namespace
}  // namespace corvex::processInfoSleepManagerTests
