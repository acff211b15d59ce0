#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include <Corvex/platform/Export.h>
#include <Corvex/platform/UserDefaults.h>

namespace corvex::inline v0 {

/// The transcode preferences of a user, which all applications of that user share through one store.
/// Each getter reads the store and each setter writes it. Errors and threads: as UserDefaults.
class CORVEX_EXPORT TranscodeSettings {
public:
    /// Of the user, or of a file of the caller's own.
    explicit TranscodeSettings(UserDefaults store = UserDefaults::standard()) : store_(std::move(store)) {}

    // The keys under which the preferences are stored. A host may point the first four elsewhere before they are used;
    // the values are those of the whole process. Any thread.
    [[nodiscard]] static std::string kUseTranscodeGPUAcceleration();  ///< "kUseGPUAcceleration": the name differs.
    static void setKUseTranscodeGPUAcceleration(std::string key);
    /// Its own name until a host sets another.
    [[nodiscard]] static std::string kExplicitNumberOfConcurrentTranscodes();
    static void setKExplicitNumberOfConcurrentTranscodes(std::string key);
    /// Its own name until a host sets another.
    [[nodiscard]] static std::string kPermitAutoReattemptOfFailedTranscodes();
    static void setKPermitAutoReattemptOfFailedTranscodes(std::string key);
    /// Its own name until a host sets another.
    [[nodiscard]] static std::string kNumberOfReattemptsPerFailedTranscode();
    static void setKNumberOfReattemptsPerFailedTranscode(std::string key);
    static constexpr std::string_view kUseLegacyTranscodePipeline = "kUseLegacyTranscodePipeline";

    /// Default false.
    [[nodiscard]] bool useTranscodeGPUAcceleration() const;
    void setUseTranscodeGPUAcceleration(bool isOn);

    /// How many transcodes run at once. Default, and where no integer is stored: the processors of the machine.
    [[nodiscard]] std::int64_t explicitNumberOfConcurrentTranscodes() const;
    void setExplicitNumberOfConcurrentTranscodes(std::int64_t count);

    /// Default false.
    [[nodiscard]] bool permitAutoReattemptOfFailedTranscodes() const;
    void setPermitAutoReattemptOfFailedTranscodes(bool isPermitted);

    /// Default, and where no integer is stored: 1.
    [[nodiscard]] std::int64_t numberOfReattemptsPerFailedTranscode() const;
    void setNumberOfReattemptsPerFailedTranscode(std::int64_t count);

    /// Default false.
    [[nodiscard]] bool useLegacyTranscodePipeline() const;
    void setUseLegacyTranscodePipeline(bool isOn);

private:
    UserDefaults store_;
};

}  // namespace corvex::inline v0
