#include <Corvex/settings/TranscodeSettings.h>

#include <algorithm>
#include <thread>

#include <Corvex/platform/internal/ProcessWide.h>

namespace corvex::inline v0 {
namespace {

using Key = ProcessWide<std::string>;

/// Never destroyed, so that destructors of static objects may still ask.
struct Keys {
    Key gpu{[] { return std::string("kUseGPUAcceleration"); }};
    Key concurrent{[] { return std::string("kExplicitNumberOfConcurrentTranscodes"); }};
    Key reattempt{[] { return std::string("kPermitAutoReattemptOfFailedTranscodes"); }};
    Key reattempts{[] { return std::string("kNumberOfReattemptsPerFailedTranscode"); }};
};

Keys& keys() {
    static auto& holder = *new Keys;
    return holder;
}

}  // namespace

std::string TranscodeSettings::kUseTranscodeGPUAcceleration() { return keys().gpu.get(); }
void TranscodeSettings::setKUseTranscodeGPUAcceleration(std::string key) { keys().gpu.set(std::move(key)); }

std::string TranscodeSettings::kExplicitNumberOfConcurrentTranscodes() { return keys().concurrent.get(); }
void TranscodeSettings::setKExplicitNumberOfConcurrentTranscodes(std::string key) {
    keys().concurrent.set(std::move(key));
}

std::string TranscodeSettings::kPermitAutoReattemptOfFailedTranscodes() { return keys().reattempt.get(); }
void TranscodeSettings::setKPermitAutoReattemptOfFailedTranscodes(std::string key) {
    keys().reattempt.set(std::move(key));
}

std::string TranscodeSettings::kNumberOfReattemptsPerFailedTranscode() { return keys().reattempts.get(); }
void TranscodeSettings::setKNumberOfReattemptsPerFailedTranscode(std::string key) {
    keys().reattempts.set(std::move(key));
}

bool TranscodeSettings::useTranscodeGPUAcceleration() const { return store_.boolean(kUseTranscodeGPUAcceleration()); }
void TranscodeSettings::setUseTranscodeGPUAcceleration(bool isOn) { store_.set(kUseTranscodeGPUAcceleration(), isOn); }

std::int64_t TranscodeSettings::explicitNumberOfConcurrentTranscodes() const {
    const auto stored = store_.integer(kExplicitNumberOfConcurrentTranscodes());
    return stored ? *stored : std::max(1U, std::thread::hardware_concurrency());
}
void TranscodeSettings::setExplicitNumberOfConcurrentTranscodes(std::int64_t count) {
    store_.set(kExplicitNumberOfConcurrentTranscodes(), count);
}

bool TranscodeSettings::permitAutoReattemptOfFailedTranscodes() const {
    return store_.boolean(kPermitAutoReattemptOfFailedTranscodes());
}
void TranscodeSettings::setPermitAutoReattemptOfFailedTranscodes(bool isPermitted) {
    store_.set(kPermitAutoReattemptOfFailedTranscodes(), isPermitted);
}

std::int64_t TranscodeSettings::numberOfReattemptsPerFailedTranscode() const {
    return store_.integer(kNumberOfReattemptsPerFailedTranscode()).value_or(1);
}
void TranscodeSettings::setNumberOfReattemptsPerFailedTranscode(std::int64_t count) {
    store_.set(kNumberOfReattemptsPerFailedTranscode(), count);
}

bool TranscodeSettings::useLegacyTranscodePipeline() const { return store_.boolean(kUseLegacyTranscodePipeline); }
void TranscodeSettings::setUseLegacyTranscodePipeline(bool isOn) { store_.set(kUseLegacyTranscodePipeline, isOn); }

}  // namespace corvex::inline v0
