#include <tools/corvex/TypedOptions.h>

#include <algorithm>
#include <array>
#include <concepts>
#include <filesystem>
#include <map>
#include <optional>
#include <type_traits>

#include <fmt/format.h>

#include <Corvex/cli/transcode/TranscodeCLIFlag.h>
#include <Corvex/color/OrvanePixelTransferFunction.h>
#include <Corvex/color/OrvaneVideoColorMatrix.h>
#include <Corvex/exported/OAVGpuPlatformValue.h>
#include <Corvex/exported/OAVTranscodeAudioArgumentFlag.h>
#include <Corvex/exported/OAVTranscodeWatermarkTextArgumentFlag.h>
#include <Corvex/exported/OrvaneUTType.h>
#include <Corvex/media/AudioChannelLabel.h>
#include <Corvex/platform/NumberText.h>
#include <Corvex/timing/TimecodeComponents.h>
#include <tools/corvex/jsonOutput.h>

namespace corvex::tool {
namespace {

using Arguments = TranscodeCliArguments;

// The JSON form of each kind of typed value.

Json jsonOf(std::string_view text) { return std::string(text); }
Json jsonOf(std::int64_t number) { return number; }
Json jsonOf(std::uint64_t number) { return number; }
Json jsonOf(double number) { return numberJson(number); }
Json jsonOf(float number) { return numberJson(number); }
template <class Value>
    requires requires(const Value& value) { value.rawValue(); }
Json jsonOf(const Value& value) {
    return jsonOf(value.rawValue());
}
template <ClosedEnumeration Enumeration>
Json jsonOf(Enumeration value) {
    if constexpr (ColorEnumeration<Enumeration>) {
        return jsonOf(caseName(value));
    } else {
        return jsonOf(rawValue(value));
    }
}
Json jsonOf(const std::filesystem::path& path) { return path.native(); }
Json jsonOf(PictureSize size) { return {{"width", jsonOf(size.width)}, {"height", jsonOf(size.height)}}; }
Json jsonOf(VideoDimensions size) { return {{"width", size.width}, {"height", size.height}}; }
Json jsonOf(const Color& color) {
    const auto rgb = color.toRGB(false);
    return {{"red", jsonOf(rgb[0])}, {"green", jsonOf(rgb[1])}, {"blue", jsonOf(rgb[2])}, {"hex", *color.hexValue()}};
}
Json jsonOf(const std::map<std::string, std::string>& dictionary) {
    Json json = Json::object();
    for (const auto& [key, value] : dictionary) json[key] = value;
    return json;
}
template <class Value>
Json jsonOf(const std::vector<Value>& values) {
    Json json = Json::array();
    for (const Value& value : values) json.push_back(jsonOf(value));
    return json;
}

/// Reads an option, of which `type` says what it is.
struct Reader {
    std::optional<Json> (*value)(const Arguments&);  ///< None when there is no value to show.
    std::string_view type;
};

template <class Value>
std::optional<Json> jsonOrNone(const std::optional<Value>& value) {
    return value ? std::optional(jsonOf(*value)) : std::nullopt;
}
std::optional<Json> jsonOrNone(bool isOn) { return isOn ? std::optional<Json>(true) : std::nullopt; }
std::optional<Json> jsonOrNone(TimecodeSource source) { return jsonOf(source); }
std::optional<Json> jsonOrNone(DropFrameState state) {
    return state == DropFrameState::unknown ? std::nullopt : std::optional(jsonOf(state));
}

template <class Value>
constexpr std::string_view typeOf = "choice";
template <>
constexpr std::string_view typeOf<bool> = "switch";
template <std::integral Value>
constexpr std::string_view typeOf<Value> = "integer";
template <std::floating_point Value>
constexpr std::string_view typeOf<Value> = "number";
template <>
constexpr std::string_view typeOf<std::string_view> = "text";
template <>
constexpr std::string_view typeOf<std::filesystem::path> = "path";
template <>
constexpr std::string_view typeOf<PictureSize> = "size";
template <>
constexpr std::string_view typeOf<VideoDimensions> = "size";
template <>
constexpr std::string_view typeOf<Color> = "color";
template <>
constexpr std::string_view typeOf<std::map<std::string, std::string>> = "list of key=value";
template <>
constexpr std::string_view typeOf<std::vector<AudioChannelLabel>> = "list of choices";
template <>
constexpr std::string_view typeOf<std::vector<std::uint64_t>> = "list of integers";
template <class Value>
constexpr std::string_view typeOf<std::optional<Value>> = typeOf<Value>;

template <auto accessor>
std::optional<Json> valueOf(const Arguments& arguments) {
    return jsonOrNone((arguments.*accessor)());
}
template <auto accessor>
constexpr Reader readOption{valueOf<accessor>, typeOf<std::invoke_result_t<decltype(accessor), const Arguments&>>};

bool isWholeNumber(std::string_view text) { return parseInteger<std::uint64_t>(text, SignRule::plusOnly).has_value(); }

/// None where the accessor falls back on the process's default.
std::optional<Json> frameCapacityOf(const Arguments& arguments) {
    const auto text = arguments.argumentFlagValue(OAVVideoFrameCapacityFlag.rawValue());
    const bool isStated = arguments.unboundVideoFrameCapacity() || (text && isWholeNumber(*text));
    return isStated ? std::optional(jsonOf(arguments.videoFrameCapacity())) : std::nullopt;
}

std::optional<Json> ignoredTracksJson(const Arguments& arguments) {
    Json json = Json::object();
    arguments.enumerateIgnoredAudioFileTracks(
        [&json](std::uint64_t file, const std::vector<std::uint64_t>& tracks) { json[std::to_string(file)] = tracks; });
    return json.empty() ? std::nullopt : std::optional(json);
}

constexpr Reader readFrameCapacity{frameCapacityOf, "integer"};
constexpr Reader readIgnoredTracks{ignoredTracksJson, "list of integers"};

/// A flag of any family, or another key of the lookup.
struct Flag {
    std::string_view text;
    constexpr Flag() = default;
    constexpr Flag(std::string_view key) : text(key) {}
    constexpr Flag(TranscodeCLIFlag flag) : text(cliFlag(flag)) {}
    template <TypedStringFamily Family>
    constexpr Flag(const Family& flag) : text(flag.rawValue()) {}
};

struct Row {
    std::string_view accessor;
    std::array<Flag, 4> flags;
    Reader read;
    std::string_view unit{};
    std::string_view expected{};  ///< What the text of the flag must be; empty if any will do.
};

constexpr std::string_view aNumber = "a number";
constexpr std::string_view anInteger = "an integer";
constexpr std::string_view aColor = "a colour as '1 0.5 0'";

constexpr Row rows[] = {
    {"outputFile", {OAVOutputFileFlag}, readOption<&Arguments::outputFile>},
    {"progressFile", {OAVProgressFileFlag}, readOption<&Arguments::progressFile>},
    {"progressOutputPrefix", {OAVProgressOutputPrefixFlag}, readOption<&Arguments::progressOutputPrefix>},
    {"workDirectory", {OAVWorkDirectoryFlag}, readOption<&Arguments::workDirectory>},
    {"languageCode", {OAVLanguageCodeFlag}, readOption<&Arguments::languageCode>},
    {"shouldOverwrite", {OAVOverwriteExistingFlag}, readOption<&Arguments::shouldOverwrite>},
    {"useLegacyPipeline", {OAVLegacyTranscodePipelineFlag}, readOption<&Arguments::useLegacyPipeline>},
    {"outputFileFormat", {OAVFileFormatFlag}, readOption<&Arguments::outputFileFormat>},
    {"explicitOutputFileType",
     {rawValue(TranscodeCLIFlag::ftype)},
     readOption<&Arguments::explicitOutputFileType>,
     "",
     "a known uniform type"},
    {"prepareForWeb", {OAVPrepareForWebFlag}, readOption<&Arguments::prepareForWeb>},

    {"videoFormat", {OAVVideoFormatFlag}, readOption<&Arguments::videoFormat>},
    {"aspectScaling", {OAVVideoAspectScalingFlag}, readOption<&Arguments::aspectScaling>},
    {"videoCropAnchor", {OAVVideoAspectCropAnchorFlag}, readOption<&Arguments::videoCropAnchor>},
    {"colorSpace", {OAVVideoColorSpaceFlag}, readOption<&Arguments::colorSpace>, "", "a known colour space"},
    {"colorMatrix", {OAVVideoColorMatrixFlag}, readOption<&Arguments::colorMatrix>, "", "a known matrix"},
    {"colorTransferFunction",
     {OAVVideoColorTransferFunctionFlag},
     readOption<&Arguments::colorTransferFunction>,
     "",
     "a known transfer function"},
    {"colorRange", {OAVVideoColorRangeFlag}, readOption<&Arguments::colorRange>, "", "f or v"},
    {"videoFrameRate", {OAVVideoFrameRateFlag}, readOption<&Arguments::videoFrameRate>, "frames/s", aNumber},
    {"videoBitRate", {OAVVideoBitRateFlag}, readOption<&Arguments::videoBitRate>, "Mbit/s", aNumber},
    {"videoBitRateAsBitsPerSecond",
     {OAVVideoBitRateFlag},
     readOption<&Arguments::videoBitRateAsBitsPerSecond>,
     "bit/s"},
    {"videoBitDepth", {OAVVideoBitDepthFlag}, readOption<&Arguments::videoBitDepth>, "bits", anInteger},
    {"keyFrames", {OAVVideoKeyFramesFlag}, readOption<&Arguments::keyFrames>, "frames", anInteger},
    {"maxFrames", {OAVVideoMaxFrames}, readOption<&Arguments::maxFrames>, "frames", anInteger},
    {"videoProfile", {OAVVideoProfileFlag}, readOption<&Arguments::videoProfile>},
    {"videoDecodeEngineValue", {OAVVideoDecodeEngineFlag}, readOption<&Arguments::videoDecodeEngineValue>},
    {"audioDecodeEngineValue", {OAVAudioDecodeEngineFlag}, readOption<&Arguments::audioDecodeEngineValue>},
    {"gpuDecode", {OAVVideoGPUDecodingFlag}, readOption<&Arguments::gpuDecode>},
    {"gpuEncode", {OAVVideoGPUEncodingFlag}, readOption<&Arguments::gpuEncode>},
    {"preserveLogEncoding", {OAVVideoPreserveLogEncodingFlag}, readOption<&Arguments::preserveLogEncoding>},
    {"unboundVideoFrameCapacity",
     {OAVVideoUnboundedFrameCapacityFlag},
     readOption<&Arguments::unboundVideoFrameCapacity>},
    {"useREDPremiumDecode", {OAVVideoREDPremiumDecodeFlag}, readOption<&Arguments::useREDPremiumDecode>},
    {"videoDimensions",
     {OAVVideoDimensionsFlag},
     readOption<&Arguments::videoDimensions>,
     "pixels",
     "a size as 1920x1080"},
    {"explicitVideoScaling",
     {TranscodeCLIFlag::vscale},
     readOption<&Arguments::explicitVideoScaling>,
     "times",
     aNumber},
    {"explicitOutputResolution",
     {OAVVideoDimensionsFlag, TranscodeCLIFlag::ovw, TranscodeCLIFlag::ovh, TranscodeCLIFlag::vscale},
     readOption<&Arguments::explicitOutputResolution>,
     "pixels"},
    {"videoFrameCapacity",
     {OAVVideoFrameCapacityFlag, OAVVideoUnboundedFrameCapacityFlag},
     readFrameCapacity,
     "frames"},
    {"maxVideoFrameMemory",
     {OAVVideoMaxVideoFrameMemory},
     readOption<&Arguments::maxVideoFrameMemory>,
     "bytes",
     anInteger},
    {"additionalDecodeOptions", {OAVVideoAdditionalDecodeOptionsFlag}, readOption<&Arguments::additionalDecodeOptions>},
    {"lutFile", {OAVColorLutFileFlag}, readOption<&Arguments::lutFile>},
    {"gpuTransformationDeviceIDs", {OAVVideoGPUTransformFlag}, readOption<&Arguments::gpuTransformationDeviceIDs>},

    {"audioFormat", {OAVAudioFormatFlag}, readOption<&Arguments::audioFormat>},
    {"audioQuality",
     {OAVAudioQualityFlag},
     readOption<&Arguments::audioQuality>,
     "",
     "one of min, low, medium, high, max"},
    {"audioBitRate", {OAVAudioBitRateFlag}, readOption<&Arguments::audioBitRate>, "bit/s", anInteger},
    {"sampleRate", {OAVAudioSampleRateFlag}, readOption<&Arguments::sampleRate>, "Hz", anInteger},
    {"audioBitsPerChannel",
     {OAVAudioBitsPerChannelFlag},
     readOption<&Arguments::audioBitsPerChannel>,
     "bits",
     anInteger},
    {"channelLayout", {OAVAudioChannelLayoutFlag}, readOption<&Arguments::channelLayout>},
    {"outputChannels", {OAVAudioChannelLayoutFlag}, readOption<&Arguments::outputChannels>, "channels"},
    {"channelLayoutTag", {OAVAudioChannelLayoutTagFlag}, readOption<&Arguments::channelLayoutTag>, "", anInteger},
    {"channelLayoutBitmap",
     {OAVAudioChannelLayoutBitmapFlag},
     readOption<&Arguments::channelLayoutBitmap>,
     "",
     "a list of channels as 'L R C LFE'"},
    {"audioLanguageCode", {OAVAudioLanguageCodeFlag}, readOption<&Arguments::audioLanguageCode>},
    {"audioOutputIsDiscrete", {OAVDiscreteAudioFlag}, readOption<&Arguments::audioOutputIsDiscrete>},
    {"audioOutputChannelsMatchSource",
     {OAVAudioChannelMatchSourceFlag},
     readOption<&Arguments::audioOutputChannelsMatchSource>},
    {"ignoredAudioFileTracks", {OAVAudioIgnoreTracksPrefixFlag}, readIgnoredTracks},

    {"timecodeSource",
     {OAVTimecodeMatchSourceFlag, OAVTimecodeFromCreationDateFlag, OAVTimecodeCustomFlag},
     readOption<&Arguments::timecodeSource>},
    {"timecode", {OAVTimecodeCustomFlag}, readOption<&Arguments::timecode>},
    {"timecodeFrameRate", {OAVTimecodeFrameRateFlag}, readOption<&Arguments::timecodeFrameRate>, "frames/s", aNumber},
    {"timecodeDropFrameState",
     {OAVTimecodeIsDropFlag, OAVTimecodeIsNonDropFlag, OAVTimecodeCustomFlag},
     readOption<&Arguments::timecodeDropFrameState>},
    {"addTimecodeTrack", {OAVTimecodeAddTrackFlag}, readOption<&Arguments::addTimecodeTrack>},
    {"addTimecodeBurn", {OAVTimecodeAddBurnFlag}, readOption<&Arguments::addTimecodeBurn>},
    {"bypassNTSCDrop", {OAVTimecodeBypassNTSCDropFlag}, readOption<&Arguments::bypassNTSCDrop>},
    {"includeTimecode", {OAVTimecodeAddTrackFlag, OAVTimecodeAddBurnFlag}, readOption<&Arguments::includeTimecode>},
    {"timecodeBurnAnchor", {OAVTimecodeBurnAnchorFlag}, readOption<&Arguments::timecodeBurnAnchor>},
    {"timecodeBurnFontSize",
     {OAVTimecodeBurnFontSize},
     readOption<&Arguments::timecodeBurnFontSize>,
     "pixels",
     anInteger},
    {"timecodeBurnFontColor", {OAVTimecodeBurnFontRGB}, readOption<&Arguments::timecodeBurnFontColor>, "", aColor},
    {"timecodeBurnBoxColor", {OAVTimecodeBurnBoxRGB}, readOption<&Arguments::timecodeBurnBoxColor>, "", aColor},

    {"watermarkFilePath", {OAVWatermarkFileBurnFilePathFlag}, readOption<&Arguments::watermarkFilePath>},
    {"watermarkFileAnchor", {OAVWatermarkFileBurnAnchorFlag}, readOption<&Arguments::watermarkFileAnchor>},
    {"watermarkFileScale",
     {OAVWatermarkFileBurnScaleFlag},
     readOption<&Arguments::watermarkFileScale>,
     "times",
     "a number above 0"},
    {"addWatermarkText", {OAVWatermarkTextAddBurnFlag}, readOption<&Arguments::addWatermarkText>},
    {"watermarkText", {OAVWatermarkTextBurnTextFlag}, readOption<&Arguments::watermarkText>},
    {"watermarkTextBurnFontSize",
     {OAVWatermarkTextBurnFontSizeFlag},
     readOption<&Arguments::watermarkTextBurnFontSize>,
     "pixels",
     anInteger},
    {"watermarkTextAnchor", {OAVWatermarkTextBurnAnchorFlag}, readOption<&Arguments::watermarkTextAnchor>},
    {"watermarkTextFontColor",
     {OAVWatermarkTextBurnFontRGBFlag},
     readOption<&Arguments::watermarkTextFontColor>,
     "",
     aColor},
    {"watermarkTextBoxColor",
     {OAVWatermarkTextBurnBoxRGBFlag},
     readOption<&Arguments::watermarkTextBoxColor>,
     "",
     aColor},
};

/// Flags whose text the accessors read leniently or together with others', so that a reading does not tell a mistake.
struct Check {
    Flag flag;
    bool (*isValid)(std::string_view text);
    std::string_view expected;
    std::string_view type;
};

template <bool (*isValid)(std::string_view)>
bool areAll(std::string_view list) {
    bool areValid = true;
    Arguments().enumerateListValues(list, [&](std::string_view piece) { areValid = areValid && isValid(piece); });
    return areValid;
}

bool isDeviceOrPlatform(std::string_view text) {
    return isWholeNumber(text) || text == OAVGpuPlatformOpenCLFlag.rawValue() ||
           text == OAVGpuPlatformMetalFlag.rawValue() || text == OAVGpuPlatformDefaultPlatformFlag.rawValue();
}

constexpr auto isNumber = [](std::string_view text) { return parseFloat<double>(text).has_value(); };
constexpr auto isTimecode = [](std::string_view text) { return TimecodeComponents::fromTimecode(text).has_value(); };

constexpr Check checks[] = {
    {TranscodeCLIFlag::ovw, isNumber, aNumber, "number"},
    {TranscodeCLIFlag::ovh, isNumber, aNumber, "number"},
    {OAVVideoFrameCapacityFlag, isWholeNumber, "a whole number from 0", "integer"},
    {OAVVideoGPUTransformFlag, areAll<isDeviceOrPlatform>, "a list of device numbers, or opencl, metal, default",
     "list of choices or integers"},
    {OAVTimecodeCustomFlag, isTimecode, "a timecode as 01:00:00:00", "timecode"},
};

std::string problemOf(std::string_view text, std::string_view expected) {
    return fmt::format("{}: not {}", text.empty() ? "(no value)" : text, expected);
}

/// "-ac_omit" and its forms for each file, of which nothing else tells one that cannot be read.
void checkIgnoredTracks(const Arguments& arguments, std::vector<UnreadableOption>& unreadable) {
    constexpr std::string_view prefix = OAVAudioIgnoreTracksPrefixFlag.rawValue();
    for (const auto& [key, text] : arguments.flagValueLookup()) {
        if (!key.starts_with(prefix)) continue;
        const std::string_view file = std::string_view(key).substr(prefix.size());
        if (!file.empty() && !(file.starts_with('_') && isWholeNumber(file.substr(1)))) {
            unreadable.push_back(
                {key, problemOf(text, fmt::format("under {} or {}_<number of a file>", prefix, prefix))});
        } else if (!areAll<isWholeNumber>(text)) {
            unreadable.push_back({key, problemOf(text, "a list of track numbers from 0")});
        }
    }
}

/// The flags of the row that are set, as the lookup spells them.
std::vector<std::string_view> flagsSet(const Row& row, const ArgumentLookup& lookup) {
    std::vector<std::string_view> set;
    const bool isPrefix = row.read.value == readIgnoredTracks.value;
    for (const Flag& flag : row.flags) {
        if (flag.text.empty()) continue;
        for (auto entry = lookup.lower_bound(flag.text); entry != lookup.end(); ++entry) {
            if (isPrefix ? !entry->first.starts_with(flag.text) : entry->first != flag.text) break;
            set.push_back(entry->first);
        }
    }
    return set;
}

}  // namespace

std::string TypedOption::text() const {
    std::string text;
    if (value.is_string()) {
        const std::string& own = value.get_ref<const std::string&>();
        const bool isOneLine = std::none_of(own.begin(), own.end(), [](unsigned char byte) { return byte < 0x20; });
        text = isOneLine ? own : jsonText(value);
    } else if (value.contains("width")) {
        text = fmt::format("{} x {}", value["width"].dump(), value["height"].dump());
    } else if (value.contains("hex")) {
        text = fmt::format("{} {} {} (#{})", value["red"].dump(), value["green"].dump(), value["blue"].dump(),
                           value["hex"].get_ref<const std::string&>());
    } else if (value.is_array()) {
        for (const Json& part : value) {
            if (!text.empty()) text += ' ';
            text += part.is_string() ? part.get<std::string>() : jsonText(part);
        }
    } else {
        text = jsonText(value);
    }
    return unit.empty() ? text : fmt::format("{} {}", text, unit);
}

TypedOptions typedOptions(const Arguments& arguments) {
    TypedOptions options;
    const ArgumentLookup& lookup = arguments.flagValueLookup();
    for (const Row& row : rows) {
        auto flags = flagsSet(row, lookup);
        if (flags.empty()) continue;
        if (auto value = row.read.value(arguments)) {
            options.readable.push_back({row.accessor, std::move(flags), *std::move(value), row.unit});
        } else if (!row.expected.empty()) {
            const auto& [flag, text] = *lookup.find(flags.front());
            options.unreadable.push_back({flag, problemOf(text, row.expected)});
        }
    }
    for (const Check& check : checks) {
        const auto entry = lookup.find(check.flag.text);
        if (entry == lookup.end() || check.isValid(entry->second)) continue;
        options.unreadable.push_back({entry->first, problemOf(entry->second, check.expected)});
    }
    checkIgnoredTracks(arguments, options.unreadable);
    return options;
}

FlagReading flagReading(std::string_view flag) {
    FlagReading reading;
    const auto check = std::find_if(std::begin(checks), std::end(checks),
                                    [&](const Check& candidate) { return candidate.flag.text == flag; });
    if (check != std::end(checks)) reading.type = check->type;
    const auto row = std::find_if(std::begin(rows), std::end(rows),
                                  [&](const Row& candidate) { return candidate.flags.front().text == flag; });
    if (row != std::end(rows)) {
        reading.unit = row->unit;
        if (reading.type.empty()) reading.type = row->read.type;
    }
    return reading;
}

}  // namespace corvex::tool
