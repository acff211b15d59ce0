#pragma once

#include <optional>

#include <tools/corvex/worker/ColorConversion.h>
#include <tools/corvex/worker/LookUpTable.h>
#include <tools/corvex/worker/PictureGraph.h>

namespace corvex::tool {

/// What is done to every picture between scaling and encoding, in R'G'B': the look-up table. Keeps no picture back, so
/// that several pictures can be worked on at once, each by a work of its own. Uses one thread at a time.
class PictureWork {
public:
    /// How its pictures come and go.
    struct Settings {
        PictureGraph::Input input;
        ColorTags from, to;  ///< Matrix and range of both.
        int outputFormat = -1;
        std::optional<LookUpTable> table;
    };

    /// The planar format that pictures of another one should come in: the nearest that the work reads.
    [[nodiscard]] static int inputFormat(int format);

    /// Throws JobError.
    explicit PictureWork(const Settings& settings);

    /// Works on a picture in place. Throws JobError.
    void apply(AVFrame& frame);

private:
    PictureGraph toRgb_, fromRgb_;
    std::optional<LookUpTable> table_;
};

}  // namespace corvex::tool
