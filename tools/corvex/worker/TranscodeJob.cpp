#include <tools/corvex/worker/TranscodeJob.h>

#include <algorithm>
#include <array>
#include <cmath>

#include <Corvex/cli/CLICustodialFlag.h>
#include <Corvex/platform/NumberText.h>
#include <Corvex/platform/Text.h>
#include <tools/corvex/SuggestedFlag.h>

namespace corvex::tool {
namespace {

using Arguments = TranscodeCliArguments;

constexpr std::array carriedOutFlags{
    OAVInputPrefixFlag.cliFlag(),
    OAVOutputFileFlag.cliFlag(),
    OAVOverwriteExistingFlag.cliFlag(),
    OAVFileFormatFlag.cliFlag(),
    OAVPrepareForWebFlag.cliFlag(),
    OAVWorkDirectoryFlag.cliFlag(),
    OAVProgressFileFlag.cliFlag(),
    OAVProgressOutputPrefixFlag.cliFlag(),
    OAVPresetFlag.cliFlag(),
    OAVNoVideoFlag.cliFlag(),
    OAVVideoFormatFlag.cliFlag(),
    OAVVideoDimensionsFlag.cliFlag(),
    OAVVideoAspectScalingFlag.cliFlag(),
    OAVVideoAspectCropAnchorFlag.cliFlag(),
    OAVVideoBitRateFlag.cliFlag(),
    OAVNoAudioFlag.cliFlag(),
    OAVCopyAudioFlag.cliFlag(),
    OAVAudioFormatFlag.cliFlag(),
    OAVAudioSampleRateFlag.cliFlag(),
};

constexpr double largestSide = 16384;
constexpr float largestMegabits = 10'000;
constexpr std::int64_t largestSampleRate = 768'000;

template <class Values>
std::string listOf(const Values& values) {
    std::string list;
    for (const auto& value : values) {
        list += list.empty() ? "" : ", ";
        list += value.rawValue();
    }
    return list;
}

bool isNumberedInput(std::string_view key) {
    Arguments single;
    single.setArgumentFlagValue("", key);
    return single.inputFileGroups().has_value();
}

/// The parent's process identifier. The flags of this channel come lower-cased out of the parsing.
pid_t takeCustodialFlags(const Arguments& arguments) {
    const auto custodial = sanitizeAllCLIFlags<CLICustodialFlag>(CLISanitizationOptions::lowercase);
    pid_t parentPid = 0;
    std::string unknown;
    arguments.enumerateUnknownFlags([&](std::string_view key, std::string_view value) {
        if (key == custodial.at(CLICustodialFlag::parentPid)) {
            const auto pid = parseInteger<pid_t>(value, SignRule::plusOnly);
            if (!pid || *pid == 0)
                throw UsageError("-parentPid " + inQuotes(value) + ": expected a process identifier");
            parentPid = *pid;
        } else if (key == custodial.at(CLICustodialFlag::parentAppNumber)) {
            if (!parseInteger<std::int64_t>(value)) {
                throw UsageError("-parentAppNumber " + inQuotes(value) + ": expected an integer");
            }
        } else {
            unknown += (unknown.empty() ? "" : ", ") + inQuotes(key);
        }
    });
    if (!unknown.empty()) throw UsageError("unknown flag " + unknown + "; corvex transcode -h lists the flags");
    return parentPid;
}

void requireKnownFlagsCarriedOut(const Arguments& arguments) {
    for (const auto& [key, value] : arguments.flagValueLookup()) {
        if (isCarriedOut(key) || isNumberedInput(key)) continue;
        // Any word that holds a flag's name counts as known, so a slip of the finger may come this far.
        const auto meant = suggestedFlag(key);
        throw UsageError("the flag " + inQuotes(key) + " is not carried out by this worker; " +
                         (meant && *meant != key ? "did you mean " + std::string(*meant) + "?" : "remove it"));
    }
    if (const auto preset = arguments.argumentFlagValue(OAVPresetFlag.cliFlag())) {
        throw UsageError("-preset " + inQuotes(*preset) + ": expected " +
                         std::string(OAVOrvaneCloudPresetValue.rawValue()) + " or " +
                         std::string(OAVOrvaneProRes4444XQPresetValue.rawValue()));
    }
    for (const auto& family : {OAVOutputFileFlag, OAVWorkDirectoryFlag, OAVProgressFileFlag, OAVFileFormatFlag}) {
        if (arguments.argumentFlagValue(family.cliFlag()) == "") {
            throw UsageError(std::string(family.cliFlag()) + ": expected a value after it");
        }
    }
}

std::vector<std::string> inputsOf(const Arguments& arguments) {
    std::vector<std::string> inputs;
    arguments.enumerateInputFileGroups([&](std::span<const std::string> paths, std::int64_t) {
        inputs.insert(inputs.end(), paths.begin(), paths.end());
    });
    if (inputs.empty()) throw UsageError("-in is missing: expected the file to transcode");
    if (std::find(inputs.begin(), inputs.end(), "") != inputs.end()) {
        throw UsageError("-in: expected the path of a file after it");
    }
    return inputs;
}

OAVTranscodeArgumentFileFormatValue formatOf(const Arguments& arguments, const std::filesystem::path& output) {
    std::string extension = output.extension().string();
    makeLowercase(extension);
    if (!extension.empty()) extension.erase(0, 1);
    const auto known = fromRawValue<FileExtension>(std::string_view(extension));
    const auto formats = OAVTranscodeArgumentFileFormatValue::allCases();
    const auto explicitFormat = arguments.outputFileFormat();
    if (!explicitFormat) {
        const auto found = std::find_if(formats.begin(), formats.end(), [&](const auto& format) {
            return known && format.preferredExtension() == known;
        });
        if (found == formats.end()) {
            throw UsageError(
                "-out " + inQuotes(output.string()) +
                ": the extension names no format; expected .mov, .mp4 or .wav, or -file_format with one of " +
                listOf(formats));
        }
        return *found;
    }
    const auto valid = explicitFormat->validExtensions();
    if (valid.empty()) {
        throw UsageError("-file_format " + inQuotes(explicitFormat->rawValue()) + ": expected one of " +
                         listOf(formats));
    }
    if (!known || std::find(valid.begin(), valid.end(), *known) == valid.end()) {
        std::string expected;
        for (const FileExtension permitted : valid) {
            expected += expected.empty() ? "." : " or .";
            expected += rawValue(permitted);
        }
        throw UsageError("-out " + inQuotes(output.string()) + ": -file_format " +
                         std::string(explicitFormat->rawValue()) + " expects a name that ends in " + expected);
    }
    return *explicitFormat;
}

FrameRequest frameRequestOf(const Arguments& arguments) {
    FrameRequest request;
    if (const auto text = arguments.argumentFlagValue(OAVVideoDimensionsFlag.cliFlag())) {
        const auto size = arguments.videoDimensions();
        const auto isUsable = [](double side) { return side >= 1 && side <= largestSide; };
        if (!size || !isUsable(size->width) || !isUsable(size->height)) {
            throw UsageError("-dims " + inQuotes(*text) + ": expected WIDTHxHEIGHT of 1 to 16384 pixels, as 1920x1080");
        }
        request.box = PixelSize{static_cast<int>(size->width), static_cast<int>(size->height)};
    }
    if (const auto scaling = arguments.aspectScaling()) {
        const auto known = OAVTranscodeArgumentAspectRatioValue::allCases();
        if (std::find(known.begin(), known.end(), *scaling) == known.end()) {
            throw UsageError("-aspect_scaling " + inQuotes(scaling->rawValue()) + ": expected one of " + listOf(known));
        }
        if (!request.box) throw UsageError("-aspect_scaling: expected -dims, the size to scale to, beside it");
        request.scaling = *scaling;
    }
    if (const auto anchor = arguments.videoCropAnchor()) {
        const auto known = OAVTranscodeArgumentOverlayAnchorValue::allCases();
        if (std::find(known.begin(), known.end(), anchor->anchorArgument()) == known.end()) {
            throw UsageError("-crop_anchor " + inQuotes(anchor->rawValue()) + ": expected one of " + listOf(known));
        }
        if (request.scaling != OAVCropAspect) {
            throw UsageError("-crop_anchor: expected -aspect_scaling crop beside it");
        }
        request.anchor = anchor->anchorArgument();
    }
    return request;
}

std::optional<VideoRequest> videoRequestOf(const Arguments& arguments,
                                           const OAVTranscodeArgumentFileFormatValue& format) {
    // Presets bring video and audio options along, so -vn and -an (and -acopy below) quietly outrank those.
    if (arguments.hasVideoArgumentFlag(OAVNoVideoFlag)) return std::nullopt;
    const auto codec = arguments.videoFormat();
    if (format == OAVWaveFileFormat) {
        if (codec) throw UsageError("-vcodec: -file_format wav carries no video; -vn would leave it out");
        return std::nullopt;
    }
    VideoRequest request;
    const auto chosen = codec.value_or(OAVAvcH264Codec);
    request.codec = &videoCodecSettings(chosen);
    const auto permitted = chosen.permittedExtensions();
    if (std::find(permitted.begin(), permitted.end(), *format.preferredExtension()) == permitted.end()) {
        throw UsageError("-vcodec " + std::string(chosen.rawValue()) + " is not written into -file_format " +
                         std::string(format.rawValue()) + "; expected qt");
    }
    request.frame = frameRequestOf(arguments);
    if (const auto text = arguments.argumentFlagValue(OAVVideoBitRateFlag.cliFlag())) {
        const auto megabits = arguments.videoBitRate();
        if (!megabits || *megabits <= 0 || *megabits > largestMegabits) {
            throw UsageError("-vbr " + inQuotes(*text) + ": expected megabits per second, above 0 and up to 10000");
        }
        if (request.codec->rate == RateChoice::fixed) {
            throw UsageError("-vbr: the bit rate of " + std::string(chosen.rawValue()) +
                             " follows from its profile and the picture; remove the flag");
        }
        request.bitsPerSecond = static_cast<std::int64_t>(*arguments.videoBitRateAsBitsPerSecond());
    }
    return request;
}

std::optional<AudioRequest> audioRequestOf(const Arguments& arguments,
                                           const OAVTranscodeArgumentFileFormatValue& format) {
    if (arguments.hasArgumentFlag(OAVNoAudioFlag.cliFlag())) return std::nullopt;
    if (arguments.hasArgumentFlag(OAVCopyAudioFlag.cliFlag())) return AudioRequest{};
    AudioRequest request;
    if (const auto text = arguments.argumentFlagValue(OAVAudioSampleRateFlag.cliFlag())) {
        const auto rate = arguments.sampleRate();
        if (!rate || *rate <= 0 || *rate > largestSampleRate) {
            throw UsageError("-asr " + inQuotes(*text) + ": expected samples per second, 1 to 768000");
        }
        request.sampleRate = static_cast<int>(*rate);
    }
    request.format = &audioFormatSettings(
        arguments.audioFormat().value_or(format == OAVMp4Format ? OAVAacAudioFormatValue : OAVLpcmAudioFormatValue));
    return request;
}

}  // namespace

bool isCarriedOut(std::string_view flag) noexcept {
    return std::find(carriedOutFlags.begin(), carriedOutFlags.end(), flag) != carriedOutFlags.end();
}

TranscodeJob TranscodeJob::make(const Arguments& arguments) {
    TranscodeJob job;
    job.parentPid = takeCustodialFlags(arguments);
    requireKnownFlagsCarriedOut(arguments);
    job.inputs = inputsOf(arguments);
    const auto output = arguments.outputFile();
    if (!output) throw UsageError("-out is missing: expected the file to write");
    job.output = *output;
    job.workDirectory = arguments.workDirectory().value_or("");
    job.overwrites = arguments.shouldOverwrite();
    job.format = formatOf(arguments, job.output);
    job.indexInFront = arguments.prepareForWeb();
    job.video = videoRequestOf(arguments, job.format);
    job.audio = audioRequestOf(arguments, job.format);
    if (!job.video && !job.audio) throw UsageError("-vn and -an together leave nothing to write");
    job.progressFile = arguments.progressFile().value_or("");
    job.progressPrefix = arguments.progressOutputPrefix().value_or("");
    return job;
}

}  // namespace corvex::tool
