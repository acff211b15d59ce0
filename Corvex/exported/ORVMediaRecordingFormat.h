#pragma once

#include <array>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// How a camera lays its recordings out on a card, which tells the files that belong together; as users read it and
/// metadata store it. Any text is legal.
class ORVMediaRecordingFormat : public TypedString<ORVMediaRecordingFormat> {
public:
    using TypedString::TypedString;
};

/// Transport streams below BDMV/STREAM, with playlists beside them.
inline constexpr ORVMediaRecordingFormat ORVMediaRecordingFormatAVCHD{"AVCHD"};
/// A folder of numbered raw pictures for each take.
inline constexpr ORVMediaRecordingFormat ORVMediaRecordingFormatCinemaDNG{"CinemaDNG"};
/// Below CONTENTS: an XML file for each clip, video and each audio channel in MXF files of their own.
inline constexpr ORVMediaRecordingFormat ORVMediaRecordingFormatP2{"P2"};
/// Files that follow no layout.
inline constexpr ORVMediaRecordingFormat ORVMediaRecordingFormatRawVolume{"Raw Volume"};
/// MXF files with XML beside them, as on Sony's discs and cards.
inline constexpr ORVMediaRecordingFormat ORVMediaRecordingFormatXDCAM{"XDCAM"};

/// The known formats in their fixed order.
template <>
inline constexpr std::array knownValues<ORVMediaRecordingFormat>{
    ORVMediaRecordingFormatAVCHD,     ORVMediaRecordingFormatCinemaDNG, ORVMediaRecordingFormatP2,
    ORVMediaRecordingFormatRawVolume, ORVMediaRecordingFormatXDCAM,
};

}  // namespace corvex::inline v0
