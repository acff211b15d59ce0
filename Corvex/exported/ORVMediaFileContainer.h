#pragma once

#include <array>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The container of a media file, as users read it and metadata store it. Any text is legal. MediaFormatConstants has
/// their file extensions.
class ORVMediaFileContainer : public TypedString<ORVMediaFileContainer> {
public:
    using TypedString::TypedString;
};

/// A RIFF file of the form "AVI ".
inline constexpr ORVMediaFileContainer ORVMediaFileContainerAVI{"AVI"};
/// Codex High Density Encoding: a losslessly coded ARRIRAW frame a file.
inline constexpr ORVMediaFileContainer ORVMediaFileContainerHDE{"HDE"};
/// No container at all: a numbered file for each picture.
inline constexpr ORVMediaFileContainer ORVMediaFileContainerImageSequence{"Image Sequence"};
/// ISO/IEC 14496-14.
inline constexpr ORVMediaFileContainer ORVMediaFileContainerMP4{"MP4"};
/// SMPTE ST 377-1.
inline constexpr ORVMediaFileContainer ORVMediaFileContainerMXF{"MXF"};
/// N-RAW of Nikon.
inline constexpr ORVMediaFileContainer ORVMediaFileContainerNEV{"NEV"};
/// QuickTime File Format.
inline constexpr ORVMediaFileContainer ORVMediaFileContainerQuickTimeMovie{"QuickTime"};
/// REDCODE RAW of RED.
inline constexpr ORVMediaFileContainer ORVMediaFileContainerR3D{"R3D"};
/// Blackmagic RAW.
inline constexpr ORVMediaFileContainer ORVMediaFileContainerBRAW{"BRAW"};
/// SMPTE ST 268-1: a picture a file.
inline constexpr ORVMediaFileContainer ORVMediaFileContainerDPX{"DPX"};
/// High-speed takes of Phantom cameras.
inline constexpr ORVMediaFileContainer ORVMediaFileContainerCINE{"CINE"};

/// The known containers in their fixed order.
template <>
inline constexpr std::array knownValues<ORVMediaFileContainer>{
    ORVMediaFileContainerAVI,  ORVMediaFileContainerHDE, ORVMediaFileContainerImageSequence,  ORVMediaFileContainerMP4,
    ORVMediaFileContainerMXF,  ORVMediaFileContainerNEV, ORVMediaFileContainerQuickTimeMovie, ORVMediaFileContainerR3D,
    ORVMediaFileContainerBRAW, ORVMediaFileContainerDPX, ORVMediaFileContainerCINE,
};

}  // namespace corvex::inline v0
