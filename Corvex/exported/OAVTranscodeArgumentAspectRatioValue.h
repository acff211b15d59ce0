#pragma once

#include <array>
#include <span>

#include <Corvex/exported/OAVTranscodeVideoArgumentFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// How a picture is fitted into the output size. Any text is legal.
class OAVTranscodeArgumentAspectRatioValue : public TypedString<OAVTranscodeArgumentAspectRatioValue> {
public:
    using TypedString::TypedString;

    /// The known values in their fixed order.
    [[nodiscard]] static constexpr std::span<const OAVTranscodeArgumentAspectRatioValue> allCases() noexcept;

    [[nodiscard]] static constexpr OAVTranscodeVideoArgumentFlag videoFlag() noexcept {
        return OAVVideoAspectScalingFlag;
    }
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return OAVVideoAspectScalingFlag.rawValue(); }
};

inline constexpr OAVTranscodeArgumentAspectRatioValue OAVMatchSourceRatio{"match"};
inline constexpr OAVTranscodeArgumentAspectRatioValue OAVStretchAspect{"stretch"};
inline constexpr OAVTranscodeArgumentAspectRatioValue OAVLetterboxAspect{"letterbox"};
inline constexpr OAVTranscodeArgumentAspectRatioValue OAVCropAspect{"crop"};

inline constexpr std::array allTranscodeArgumentAspectRatioValues{
    OAVMatchSourceRatio,
    OAVStretchAspect,
    OAVLetterboxAspect,
    OAVCropAspect,
};

constexpr std::span<const OAVTranscodeArgumentAspectRatioValue>
OAVTranscodeArgumentAspectRatioValue::allCases() noexcept {
    return allTranscodeArgumentAspectRatioValues;
}

static_assert(CLIArgumentOption<OAVTranscodeArgumentAspectRatioValue>);

}  // namespace corvex::inline v0
