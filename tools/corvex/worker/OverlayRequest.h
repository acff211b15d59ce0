#pragma once

#include <optional>
#include <string>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <tools/corvex/worker/TextImage.h>

namespace corvex::tool {

/// What is asked to be laid over every picture. Text without a size takes a twentieth of the picture's height.
struct OverlayRequest {
    struct Image {
        std::string path;
        OAVTranscodeArgumentOverlayAnchorValue anchor = OAVAnchorBottomRight;
        double scale = 1;
    };
    struct Text {
        std::string text;  ///< Empty for the timecode.
        OAVTranscodeArgumentOverlayAnchorValue anchor = OAVAnchorBottomCenter;
        TextStyle style;
    };

    std::optional<Image> image;
    std::optional<Text> text;
    std::optional<Text> timecode;

    [[nodiscard]] bool isEmpty() const noexcept { return !image && !text && !timecode; }

    /// Throws UsageError or JobError naming the flag at fault.
    [[nodiscard]] static OverlayRequest make(const TranscodeCliArguments& arguments);
};

/// The file that a path whose case was lost means: the path as it stands, else the only one that differs from it in case
/// alone. Throws JobError when there is none or more than one.
[[nodiscard]] std::string pathWithoutCase(const std::string& path);

}  // namespace corvex::tool
