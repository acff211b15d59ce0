#include <tools/corvex/TypedOptions.h>

#include <optional>

#include <fmt/format.h>

namespace corvex::tool {
namespace {

using Arguments = TranscodeCliArguments;

/// Reads an option whose flag is set; none when the stored text is no value of its type.
using Reader = std::optional<std::string> (*)(const Arguments&);

struct Row {
    std::string_view accessor;
    std::string_view flag;
    Reader read;
    std::string_view expected;  ///< What a text that does not parse should have been.
};

std::optional<std::string> yes(const Arguments&) { return "true"; }

template <auto accessor>
std::optional<std::string> text(const Arguments& arguments) {
    const auto value = (arguments.*accessor)();
    return value ? std::optional<std::string>(*value) : std::nullopt;
}

template <auto accessor>
std::optional<std::string> typedText(const Arguments& arguments) {
    const auto value = (arguments.*accessor)();
    return value ? std::optional<std::string>(value->rawValue()) : std::nullopt;
}

std::optional<std::string> dimensions(const Arguments& arguments) {
    const auto size = arguments.videoDimensions();
    return size ? std::optional(fmt::format("{} x {} pixels", size->width, size->height)) : std::nullopt;
}

std::optional<std::string> bitRate(const Arguments& arguments) {
    const auto megabits = arguments.videoBitRate();
    return megabits ? std::optional(fmt::format("{} Mbit/s", *megabits)) : std::nullopt;
}

std::optional<std::string> rate(const Arguments& arguments) {
    const auto samples = arguments.sampleRate();
    return samples ? std::optional(fmt::format("{} Hz", *samples)) : std::nullopt;
}

constexpr Row rows[] = {
    {"outputFile", OAVOutputFileFlag.rawValue(), text<&Arguments::outputFile>, ""},
    {"progressFile", OAVProgressFileFlag.rawValue(), text<&Arguments::progressFile>, ""},
    {"progressOutputPrefix", OAVProgressOutputPrefixFlag.rawValue(), text<&Arguments::progressOutputPrefix>, ""},
    {"workDirectory", OAVWorkDirectoryFlag.rawValue(), text<&Arguments::workDirectory>, ""},
    {"languageCode", OAVLanguageCodeFlag.rawValue(), text<&Arguments::languageCode>, ""},
    {"shouldOverwrite", OAVOverwriteExistingFlag.rawValue(), yes, ""},
    {"useLegacyPipeline", OAVLegacyTranscodePipelineFlag.rawValue(), yes, ""},
    {"outputFileFormat", OAVFileFormatFlag.rawValue(), typedText<&Arguments::outputFileFormat>, ""},
    {"prepareForWeb", OAVPrepareForWebFlag.rawValue(), yes, ""},
    {"videoFormat", OAVVideoFormatFlag.rawValue(), typedText<&Arguments::videoFormat>, ""},
    {"aspectScaling", OAVVideoAspectScalingFlag.rawValue(), typedText<&Arguments::aspectScaling>, ""},
    {"videoCropAnchor", OAVVideoAspectCropAnchorFlag.rawValue(), typedText<&Arguments::videoCropAnchor>, ""},
    {"videoDimensions", OAVVideoDimensionsFlag.rawValue(), dimensions, "a size as 1920x1080"},
    {"videoBitRate", OAVVideoBitRateFlag.rawValue(), bitRate, "a number"},
    {"audioFormat", OAVAudioFormatFlag.rawValue(), typedText<&Arguments::audioFormat>, ""},
    {"sampleRate", OAVAudioSampleRateFlag.rawValue(), rate, "an integer"},
};

}  // namespace

std::vector<TypedOption> typedOptions(const Arguments& arguments) {
    std::vector<TypedOption> options;
    for (const Row& row : rows) {
        const auto stored = arguments.argumentFlagValue(row.flag);
        if (!stored) continue;
        const auto value = row.read(arguments);
        options.push_back(
            {row.accessor, row.flag, value ? *value : fmt::format("'{}': not {}", *stored, row.expected)});
    }
    return options;
}

}  // namespace corvex::tool
