#include <Corvex/settings/TranscodeSettings.h>

#include <optional>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

#include <Corvex/settings/NotificationName.h>
#include <tests/TemporaryDirectory.h>

namespace corvex::transcodeSettingsTests {
namespace {

class TranscodeSettingsStore : public testing::Test {
protected:
    const test::TemporaryDirectory folder_;
    UserDefaults store_{folder_.path() / "settings.sqlite"};
    TranscodeSettings settings_{store_};
};

TEST_F(TranscodeSettingsStore, areStoredUnderTheirKeysWithTheirTypes) {
    settings_.setUseTranscodeGPUAcceleration(true);
    settings_.setExplicitNumberOfConcurrentTranscodes(3);
    settings_.setPermitAutoReattemptOfFailedTranscodes(true);
    settings_.setNumberOfReattemptsPerFailedTranscode(-2);
    settings_.setUseLegacyTranscodePipeline(true);
    EXPECT_EQ(store_.values(), (UserDefaults::Values{{"kUseGPUAcceleration", true},
                                                     {"kExplicitNumberOfConcurrentTranscodes", std::int64_t{3}},
                                                     {"kPermitAutoReattemptOfFailedTranscodes", true},
                                                     {"kNumberOfReattemptsPerFailedTranscode", std::int64_t{-2}},
                                                     {"kUseLegacyTranscodePipeline", true}}));
    const TranscodeSettings others(store_);
    EXPECT_TRUE(others.useTranscodeGPUAcceleration() && others.permitAutoReattemptOfFailedTranscodes() &&
                others.useLegacyTranscodePipeline());
    EXPECT_EQ(others.explicitNumberOfConcurrentTranscodes(), 3);
    EXPECT_EQ(others.numberOfReattemptsPerFailedTranscode(), -2);
}

TEST_F(TranscodeSettingsStore, whatIsMissingOrNoIntegerUnderANumericKeyHasItsDefault) {
    EXPECT_FALSE(settings_.useTranscodeGPUAcceleration() || settings_.permitAutoReattemptOfFailedTranscodes() ||
                 settings_.useLegacyTranscodePipeline());
    using Stored = std::optional<UserDefaults::Value>;
    for (const auto& stored : {Stored(), Stored(std::string("4")), Stored(4.0), Stored(true)}) {
        if (stored) store_.set("kExplicitNumberOfConcurrentTranscodes", *stored);
        if (stored) store_.set("kNumberOfReattemptsPerFailedTranscode", *stored);
        EXPECT_EQ(settings_.explicitNumberOfConcurrentTranscodes(), sysconf(_SC_NPROCESSORS_ONLN));
        EXPECT_EQ(settings_.numberOfReattemptsPerFailedTranscode(), 1);
    }
}

TEST_F(TranscodeSettingsStore, keysFollowTheHost) {
    const std::string before = TranscodeSettings::kUseTranscodeGPUAcceleration();
    TranscodeSettings::setKUseTranscodeGPUAcceleration("hostsOwnKey");
    settings_.setUseTranscodeGPUAcceleration(true);
    EXPECT_EQ(store_.values(), (UserDefaults::Values{{"hostsOwnKey", true}}));
    TranscodeSettings::setKUseTranscodeGPUAcceleration(before);
    EXPECT_FALSE(settings_.useTranscodeGPUAcceleration());
}

TEST(NotificationName, namesAreThoseThatTheApplicationsShare) {
    std::string names;
    for (const auto& name : NotificationName::allCases()) names += std::string(name.rawValue()) + ' ';
    EXPECT_EQ(names,
              "fileSystemManipulatedNotification kShowStagingView kRemovedActiveJob kAllActiveJobsUpdate "
              "kNeedsUpdateForAllActiveJobs kMainActivityUpdateBroadcast kUINeedsUpdateForMainActivity "
              "driveSpeedUpdate cloudResourceUploaded ");
}

}  // namespace
}  // namespace corvex::transcodeSettingsTests
