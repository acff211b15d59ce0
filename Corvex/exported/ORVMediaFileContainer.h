#pragma once

#include <array>
#include <span>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The container of a media file, as users read it and metadata store it. Any text is legal.
class ORVMediaFileContainer : public TypedString<ORVMediaFileContainer> {
public:
    using TypedString::TypedString;

    /// The known containers in their fixed order.
    [[nodiscard]] static constexpr std::span<const ORVMediaFileContainer> allCases() noexcept;
};

inline constexpr ORVMediaFileContainer ORVMediaFileContainerAVI{"AVI"};
inline constexpr ORVMediaFileContainer ORVMediaFileContainerHDE{"HDE"};
inline constexpr ORVMediaFileContainer ORVMediaFileContainerImageSequence{"Image Sequence"};
inline constexpr ORVMediaFileContainer ORVMediaFileContainerMP4{"MP4"};
inline constexpr ORVMediaFileContainer ORVMediaFileContainerMXF{"MXF"};
inline constexpr ORVMediaFileContainer ORVMediaFileContainerNEV{"NEV"};
inline constexpr ORVMediaFileContainer ORVMediaFileContainerQuickTimeMovie{"QuickTime"};
inline constexpr ORVMediaFileContainer ORVMediaFileContainerR3D{"R3D"};
inline constexpr ORVMediaFileContainer ORVMediaFileContainerBRAW{"BRAW"};
inline constexpr ORVMediaFileContainer ORVMediaFileContainerDPX{"DPX"};
inline constexpr ORVMediaFileContainer ORVMediaFileContainerCINE{"CINE"};

inline constexpr std::array allMediaFileContainers{
    ORVMediaFileContainerAVI,  ORVMediaFileContainerHDE, ORVMediaFileContainerImageSequence,  ORVMediaFileContainerMP4,
    ORVMediaFileContainerMXF,  ORVMediaFileContainerNEV, ORVMediaFileContainerQuickTimeMovie, ORVMediaFileContainerR3D,
    ORVMediaFileContainerBRAW, ORVMediaFileContainerDPX, ORVMediaFileContainerCINE,
};

constexpr std::span<const ORVMediaFileContainer> ORVMediaFileContainer::allCases() noexcept {
    return allMediaFileContainers;
}

}  // namespace corvex::inline v0
