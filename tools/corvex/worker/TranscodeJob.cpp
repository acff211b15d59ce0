#include <tools/corvex/worker/TranscodeJob.h>

#include <algorithm>
#include <array>

#include <fmt/format.h>

#include <Corvex/cli/CLICustodialFlag.h>
#include <Corvex/cli/transcode/TranscodeCLIFlag.h>
#include <Corvex/exported/FileExtension.h>
#include <Corvex/exported/OAVTranscodeAudioArgumentFlag.h>
#include <Corvex/exported/OAVTranscodePresetValue.h>
#include <Corvex/exported/OAVTranscodeWatermarkTextArgumentFlag.h>
#include <Corvex/platform/NumberText.h>
#include <Corvex/platform/Text.h>
#include <tools/corvex/SuggestedFlag.h>
#include <tools/corvex/vocabulary/FlagVocabulary.h>
#include <tools/corvex/worker/QuickTimeLanguage.h>
#include <tools/corvex/worker/RequestText.h>

namespace corvex::tool {
namespace {

using Arguments = TranscodeCliArguments;

constexpr std::array<std::string_view, 72> carriedOutFlags{
    OAVColorLutFileFlag.cliFlag(),
    OAVInputPrefixFlag.cliFlag(),
    OAVOutputFileFlag.cliFlag(),
    OAVOverwriteExistingFlag.cliFlag(),
    OAVFileFormatFlag.cliFlag(),
    OAVPrepareForWebFlag.cliFlag(),
    OAVWorkDirectoryFlag.cliFlag(),
    OAVProgressFileFlag.cliFlag(),
    OAVProgressOutputPrefixFlag.cliFlag(),
    OAVPresetFlag.cliFlag(),
    OAVLanguageCodeFlag.cliFlag(),
    OAVNoVideoFlag.cliFlag(),
    OAVVideoFormatFlag.cliFlag(),
    OAVVideoFrameRateFlag.cliFlag(),
    OAVVideoDimensionsFlag.cliFlag(),
    OAVVideoAspectScalingFlag.cliFlag(),
    OAVVideoAspectCropAnchorFlag.cliFlag(),
    OAVVideoBitRateFlag.cliFlag(),
    OAVVideoBitDepthFlag.cliFlag(),
    OAVVideoPreserveLogEncodingFlag.cliFlag(),
    OAVVideoColorSpaceFlag.cliFlag(),
    OAVVideoColorMatrixFlag.cliFlag(),
    OAVVideoColorTransferFunctionFlag.cliFlag(),
    OAVVideoKeyFramesFlag.cliFlag(),
    OAVVideoProfileFlag.cliFlag(),
    OAVVideoAdditionalDecodeOptionsFlag.cliFlag(),
    OAVVideoMaxFrames.cliFlag(),
    OAVVideoFrameCapacityFlag.cliFlag(),
    OAVVideoMaxVideoFrameMemory.cliFlag(),
    OAVVideoUnboundedFrameCapacityFlag.cliFlag(),
    OAVVideoColorRangeFlag.cliFlag(),
    OAVVideoDecodeEngineFlag.cliFlag(),
    OAVNoAudioFlag.cliFlag(),
    OAVCopyAudioFlag.cliFlag(),
    OAVAudioIgnoreTracksPrefixFlag.cliFlag(),
    OAVDiscreteAudioFlag.cliFlag(),
    OAVAudioChannelMatchSourceFlag.cliFlag(),
    OAVAudioFormatFlag.cliFlag(),
    OAVAudioBitsPerChannelFlag.cliFlag(),
    OAVAudioSampleRateFlag.cliFlag(),
    OAVAudioChannelLayoutFlag.cliFlag(),
    OAVAudioChannelLayoutTagFlag.cliFlag(),
    OAVAudioChannelLayoutBitmapFlag.cliFlag(),
    OAVAudioBitRateFlag.cliFlag(),
    OAVAudioQualityFlag.cliFlag(),
    OAVAudioLanguageCodeFlag.cliFlag(),
    OAVAudioDecodeEngineFlag.cliFlag(),
    OAVTimecodeAddTrackFlag.cliFlag(),
    OAVTimecodeMatchSourceFlag.cliFlag(),
    OAVTimecodeFromCreationDateFlag.cliFlag(),
    OAVTimecodeCustomFlag.cliFlag(),
    OAVTimecodeFrameRateFlag.cliFlag(),
    OAVTimecodeIsDropFlag.cliFlag(),
    OAVTimecodeIsNonDropFlag.cliFlag(),
    OAVTimecodeBypassNTSCDropFlag.cliFlag(),
    OAVTimecodeAddBurnFlag.cliFlag(),
    OAVTimecodeBurnAnchorFlag.cliFlag(),
    OAVTimecodeBurnFontSize.cliFlag(),
    OAVTimecodeBurnFontRGB.cliFlag(),
    OAVTimecodeBurnBoxRGB.cliFlag(),
    OAVWatermarkFileBurnFilePathFlag.cliFlag(),
    OAVWatermarkFileBurnAnchorFlag.cliFlag(),
    OAVWatermarkFileBurnScaleFlag.cliFlag(),
    OAVWatermarkTextAddBurnFlag.cliFlag(),
    OAVWatermarkTextBurnTextFlag.cliFlag(),
    OAVWatermarkTextBurnFontSizeFlag.cliFlag(),
    OAVWatermarkTextBurnAnchorFlag.cliFlag(),
    OAVWatermarkTextBurnFontRGBFlag.cliFlag(),
    OAVWatermarkTextBurnBoxRGBFlag.cliFlag(),
    cliFlag(TranscodeCLIFlag::vscale),
    cliFlag(TranscodeCLIFlag::ovw),
    cliFlag(TranscodeCLIFlag::ovh),
};

/// Why some flags cannot be carried out by any worker on this machine.
constexpr std::pair<std::string_view, std::string_view> reasons[] = {
    {OAVVideoGPUDecodingFlag.cliFlag(), "this machine has no GPU device that decodes"},
    {OAVVideoGPUTransformFlag.cliFlag(), "this machine has no GPU device that transforms"},
    {OAVVideoGPUEncodingFlag.cliFlag(), "this machine has no GPU device that encodes"},
    {OAVVideoREDPremiumDecodeFlag.cliFlag(), "there is no RED decoder here"},
    {OAVLegacyTranscodePipelineFlag.cliFlag(), "this worker has one pipeline only"},
    {"-arri_", "there is no look engine here"},
};

/// Whether the key is a numbered form: an input, or the tracks to leave out of one.
bool isNumberedFlag(std::string_view key) {
    Arguments single;
    single.setArgumentFlagValue("0", key);
    return single.inputFileGroups().has_value() || key.starts_with(OAVAudioIgnoreTracksPrefixFlag.cliFlag());
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
        if (isCarriedOut(key) || isNumberedFlag(key)) continue;
        const auto* reason = std::find_if(std::begin(reasons), std::end(reasons),
                                          [&, &flag = key](const auto& row) { return flag.starts_with(row.first); });
        // Any word that holds a flag's name counts as known, so a slip of the finger may come this far.
        const auto meant = suggestedFlag(key);
        throw UsageError("the flag " + inQuotes(key) + " is not carried out by this worker" +
                         (reason != std::end(reasons) ? ": " + std::string(reason->second)
                          : meant && *meant != key    ? "; did you mean " + std::string(*meant) + "?"
                                                      : "; remove it"));
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

/// A writer that cannot state a language would leave it out without a word.
void requireLanguageStated(std::string_view flag, const std::string& language,
                           const OAVTranscodeArgumentFileFormatValue& format) {
    if (language.empty() || format != OAVQuickTimeFileFormat || quickTimeLanguage(language)) return;
    throw UsageError(std::string(flag) + " " + inQuotes(language) +
                     ": a QuickTime file has no number for this language; -file_format mp4 keeps it");
}

/// Also of what the job passes over, as flags of the video beside "-vn": a preset brings those along, but only known values.
void requireKnownChoices(const Arguments& arguments) {
    for (const VocabularyFlag& flag : flagVocabulary()) {
        const auto text = flag.type == "choice" ? arguments.argumentFlagValue(flag.flag) : std::nullopt;
        if (!text) continue;
        const bool isKnown = std::any_of(flag.values.begin(), flag.values.end(),
                                         [&](std::string_view value) { return equalsIgnoringCase(value, *text); });
        const bool isCount = flag.flag == OAVAudioChannelLayoutFlag.cliFlag() && parseInteger<std::int64_t>(*text);
        if (!isKnown && !isCount) {
            failExpecting(flag.flag, *text, fmt::format("one of {}", fmt::join(flag.values, ", ")));
        }
    }
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
    job.video = VideoRequest::make(arguments, job.format);
    job.audio = AudioRequest::make(arguments);
    job.timecode = TimecodeRequest::make(arguments);
    job.language = languageOf(arguments, OAVLanguageCodeFlag);
    if (job.timecode && !job.video) {
        throw UsageError(std::string(job.timecode->addsTrack ? "-tc_track" : "-tc_burn") +
                         ": expected video beside it, whose frames it counts");
    }
    if (job.video && job.video->overlays.timecode) job.video->burntTimecode = job.timecode;
    if (!job.video && !job.audio) throw UsageError("-vn and -an together leave nothing to write");
    requireLanguageStated(OAVLanguageCodeFlag.cliFlag(), job.language, job.format);
    if (job.audio) requireLanguageStated(OAVAudioLanguageCodeFlag.cliFlag(), job.audio->language, job.format);
    requireKnownChoices(arguments);
    job.progressFile = arguments.progressFile().value_or("");
    job.progressPrefix = arguments.progressOutputPrefix().value_or("");
    return job;
}

}  // namespace corvex::tool
