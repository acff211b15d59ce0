#include <tools/corvex/worker/OverlayRequest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <vector>

#include <Corvex/exported/OAVTranscodeWatermarkTextArgumentFlag.h>
#include <Corvex/platform/Text.h>
#include <Corvex/platform/Utf8.h>
#include <tools/corvex/worker/RequestText.h>

namespace corvex::tool {
namespace {

namespace fs = std::filesystem;
using Arguments = TranscodeCliArguments;
using Anchor = OAVTranscodeArgumentOverlayAnchorValue;

Anchor anchorOf(const Arguments& arguments, const auto& flag, const Anchor& usual) {
    const auto text = arguments.argumentFlagValue(flag.cliFlag());
    if (!text) return usual;
    const auto known = Anchor::allCases();
    const auto found =
        std::find_if(known.begin(), known.end(), [&](const Anchor& anchor) { return anchor.rawValue() == *text; });
    if (found == known.end()) failExpecting(flag.cliFlag(), *text, "one of " + listOf(known));
    return *found;
}

std::optional<Color> colorOf(const Arguments& arguments, const auto& flag, const std::optional<Color>& color) {
    const auto text = arguments.argumentFlagValue(flag.cliFlag());
    if (text && !color) failExpecting(flag.cliFlag(), *text, "red, green and blue from 0 to 1, as \"1 0.5 0\"");
    return color;
}

int sizeOf(const Arguments& arguments, const auto& flag) {
    return wholeNumber<int>(arguments, flag, 4, 2000, "the font's height in pixels").value_or(0);
}

void requireBeside(const Arguments& arguments, const auto& needed, const auto&... flags) {
    if (arguments.hasArgumentFlag(needed.cliFlag())) return;
    const auto requireAbsent = [&](const auto& flag) {
        if (!arguments.hasArgumentFlag(flag.cliFlag())) return;
        throw UsageError(std::string(flag.cliFlag()) + ": expected " + std::string(needed.cliFlag()) + " beside it");
    };
    (requireAbsent(flags), ...);
}

std::optional<OverlayRequest::Image> imageOf(const Arguments& arguments) {
    requireBeside(arguments, OAVWatermarkFileBurnFilePathFlag, OAVWatermarkFileBurnAnchorFlag,
                  OAVWatermarkFileBurnScaleFlag);
    const auto path = arguments.watermarkFilePath();
    if (!path) return std::nullopt;
    if (path->empty()) throw UsageError("-wmf_path: expected the path of an image after it");
    OverlayRequest::Image image;
    image.path = pathWithoutCase(std::string(*path));
    image.anchor = anchorOf(arguments, OAVWatermarkFileBurnAnchorFlag, image.anchor);
    if (const auto text = arguments.argumentFlagValue(OAVWatermarkFileBurnScaleFlag.cliFlag())) {
        const auto scale = arguments.watermarkFileScale();
        if (!scale) failExpecting("-wmf_scale", *text, "a number above 0, where 1 is the image's own size");
        image.scale = *scale;
    }
    return image;
}

std::optional<OverlayRequest::Text> textOf(const Arguments& arguments) {
    requireBeside(arguments, OAVWatermarkTextAddBurnFlag, OAVWatermarkTextBurnTextFlag,
                  OAVWatermarkTextBurnFontSizeFlag, OAVWatermarkTextBurnAnchorFlag, OAVWatermarkTextBurnFontRGBFlag,
                  OAVWatermarkTextBurnBoxRGBFlag);
    if (!arguments.addWatermarkText()) return std::nullopt;
    OverlayRequest::Text text;
    text.text = arguments.watermarkText().value_or("");
    if (text.text.empty()) throw UsageError("-wmt_burn: expected -wmt_text with the text to draw beside it");
    if (utf8Extent(text.text).end != Utf8End::complete) failExpecting("-wmt_text", text.text, "a text in UTF-8");
    text.anchor = anchorOf(arguments, OAVWatermarkTextBurnAnchorFlag, OAVAnchorTopLeft);
    text.style.size = sizeOf(arguments, OAVWatermarkTextBurnFontSizeFlag);
    text.style.font = colorOf(arguments, OAVWatermarkTextBurnFontRGBFlag, arguments.watermarkTextFontColor())
                          .value_or(text.style.font);
    text.style.box = colorOf(arguments, OAVWatermarkTextBurnBoxRGBFlag, arguments.watermarkTextBoxColor());
    return text;
}

std::optional<OverlayRequest::Text> timecodeOf(const Arguments& arguments) {
    requireBeside(arguments, OAVTimecodeAddBurnFlag, OAVTimecodeBurnFontSize, OAVTimecodeBurnAnchorFlag,
                  OAVTimecodeBurnFontRGB, OAVTimecodeBurnBoxRGB);
    if (!arguments.addTimecodeBurn()) return std::nullopt;
    OverlayRequest::Text text;
    text.anchor = anchorOf(arguments, OAVTimecodeBurnAnchorFlag, text.anchor);
    text.style.size = sizeOf(arguments, OAVTimecodeBurnFontSize);
    text.style.font =
        colorOf(arguments, OAVTimecodeBurnFontRGB, arguments.timecodeBurnFontColor()).value_or(text.style.font);
    // Always a box: labels have to be legible over any picture.
    text.style.box =
        colorOf(arguments, OAVTimecodeBurnBoxRGB, arguments.timecodeBurnBoxColor()).value_or(Color::gray(0));
    return text;
}

/// Extends each of the paths by the entries whose names equal `name` but for case.
std::vector<fs::path> entriesWithoutCase(const std::vector<fs::path>& folders, const fs::path& name) {
    std::vector<fs::path> found;
    for (const fs::path& folder : folders) {
        std::error_code error;
        if (name == "." || name == "..") {
            found.push_back(folder / name);
            continue;
        }
        fs::directory_iterator entries(folder.empty() ? "." : folder, error);
        for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
            const fs::path entry = entries->path().filename();
            if (equalsIgnoringCase(entry.string(), name.string())) found.push_back(folder / entry);
        }
    }
    return found;
}

}  // namespace

OverlayRequest OverlayRequest::make(const Arguments& arguments) {
    OverlayRequest request;
    request.image = imageOf(arguments);
    request.text = textOf(arguments);
    request.timecode = timecodeOf(arguments);
    return request;
}

std::string pathWithoutCase(const std::string& path) {
    std::error_code error;
    if (fs::exists(path, error)) return path;
    const fs::path asked(path);
    std::vector<fs::path> found{asked.root_path()};
    for (const fs::path& name : asked.relative_path()) {
        if (!name.empty()) found = entriesWithoutCase(found, name);
    }
    if (found.size() == 1) return found.front().string();
    if (found.empty()) throw JobError("-wmf_path " + inQuotes(path) + ": there is no such file");
    std::sort(found.begin(), found.end());
    throw JobError("-wmf_path " + inQuotes(path) + ": the case of its letters was lost, and " +
                   inQuotes(found[0].string()) + " and " + inQuotes(found[1].string()) +
                   " differ in nothing else; expected a path that is the only one of its letters");
}

}  // namespace corvex::tool
