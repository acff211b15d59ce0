#pragma once

#include <array>
#include <span>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// How a camera lays its recordings out on a card, as users read it and metadata store it. Any text is legal.
class ORVMediaRecordingFormat : public TypedString<ORVMediaRecordingFormat> {
public:
    using TypedString::TypedString;

    /// The known formats in their fixed order.
    [[nodiscard]] static constexpr std::span<const ORVMediaRecordingFormat> allCases() noexcept;
};

inline constexpr ORVMediaRecordingFormat ORVMediaRecordingFormatAVCHD{"AVCHD"};
inline constexpr ORVMediaRecordingFormat ORVMediaRecordingFormatCinemaDNG{"CinemaDNG"};
inline constexpr ORVMediaRecordingFormat ORVMediaRecordingFormatP2{"P2"};
inline constexpr ORVMediaRecordingFormat ORVMediaRecordingFormatRawVolume{"Raw Volume"};
inline constexpr ORVMediaRecordingFormat ORVMediaRecordingFormatXDCAM{"XDCAM"};

inline constexpr std::array allMediaRecordingFormats{
    ORVMediaRecordingFormatAVCHD,     ORVMediaRecordingFormatCinemaDNG, ORVMediaRecordingFormatP2,
    ORVMediaRecordingFormatRawVolume, ORVMediaRecordingFormatXDCAM,
};

constexpr std::span<const ORVMediaRecordingFormat> ORVMediaRecordingFormat::allCases() noexcept {
    return allMediaRecordingFormats;
}

}  // namespace corvex::inline v0
