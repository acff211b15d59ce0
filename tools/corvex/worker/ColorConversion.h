#pragma once

#include <optional>
#include <string>

#include <tools/corvex/worker/FFmpeg.h>

namespace corvex::tool {

/// How pictures are tagged, in the code points of ISO/IEC 23091-2, which the media libraries share.
struct ColorTags {
    AVColorPrimaries primaries = AVCOL_PRI_UNSPECIFIED;
    AVColorTransferCharacteristic transfer = AVCOL_TRC_UNSPECIFIED;
    AVColorSpace matrix = AVCOL_SPC_UNSPECIFIED;
    AVColorRange range = AVCOL_RANGE_UNSPECIFIED;
    friend bool operator==(const ColorTags&, const ColorTags&) = default;
};

/// What the user asks of the output's colour; what is absent stays as in the source.
struct ColorRequest {
    std::optional<AVColorPrimaries> primaries;
    std::optional<AVColorTransferCharacteristic> transfer;
    std::optional<AVColorSpace> matrix;
    std::optional<AVColorRange> range;
    [[nodiscard]] bool isEmpty() const noexcept { return !primaries && !transfer && !matrix && !range; }
};

/// How the colours of a source become those of the output.
struct ColorConversion {
    ColorTags tags;            ///< Of the output.
    std::string scaleOptions;  ///< Options of the scale filter, for a change of range or from RGB alone.
    std::string filter;        ///< A filter that converts, or empty.

    /// What the source's pictures have, what is missing being assumed as below.
    ColorTags source;

    /// `format` and `height` are those of the source picture, `codecRange` the range that the codec carries unless
    /// another is asked for. A source without tags is taken for what its size makes it: ITU-R BT.601 up to 576 lines,
    /// BT.709 above.
    [[nodiscard]] static ColorConversion make(int format, int height, const ColorTags& source,
                                              const ColorRequest& request, AVColorRange codecRange);

    /// The same where a look-up table makes the colours, so that nothing else converts them: primaries and transfer
    /// function that are asked for only say what comes out of the table.
    [[nodiscard]] static ColorConversion makeAroundTable(int format, int height, const ColorTags& source,
                                                         const ColorRequest& request, AVColorRange codecRange);
};

}  // namespace corvex::tool
