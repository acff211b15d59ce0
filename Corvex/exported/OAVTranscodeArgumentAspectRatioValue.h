#pragma once

#include <array>

#include <Corvex/exported/OAVTranscodeVideoArgumentFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// How a picture is fitted into the size of "-dims" when its shape differs. Any text is legal.
class OAVTranscodeArgumentAspectRatioValue : public TypedString<OAVTranscodeArgumentAspectRatioValue> {
public:
    using TypedString::TypedString;

    /// The flag under which the value stands, "-aspect_scaling", typed and as text.
    [[nodiscard]] static constexpr OAVTranscodeVideoArgumentFlag videoFlag() noexcept {
        return OAVVideoAspectScalingFlag;
    }
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return OAVVideoAspectScalingFlag.rawValue(); }
};

/// Scale to fit and keep the source's shape: the output may be smaller than asked for on one side.
inline constexpr OAVTranscodeArgumentAspectRatioValue OAVMatchSourceRatio{"match"};
/// Scale each side on its own; shapes in the picture change.
inline constexpr OAVTranscodeArgumentAspectRatioValue OAVStretchAspect{"stretch"};
/// Scale to fit and fill what remains with black bars.
inline constexpr OAVTranscodeArgumentAspectRatioValue OAVLetterboxAspect{"letterbox"};
/// Scale to fill and cut off what juts out; "-crop_anchor" says which part stays.
inline constexpr OAVTranscodeArgumentAspectRatioValue OAVCropAspect{"crop"};

/// In the order of allCases().
/// The known values in their fixed order.
template <>
inline constexpr std::array knownValues<OAVTranscodeArgumentAspectRatioValue>{
    OAVMatchSourceRatio,
    OAVStretchAspect,
    OAVLetterboxAspect,
    OAVCropAspect,
};

static_assert(CLIArgumentOption<OAVTranscodeArgumentAspectRatioValue>);

}  // namespace corvex::inline v0
