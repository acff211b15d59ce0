#include <tools/corvex/vocabulary/FlagVocabulary.h>

#include <algorithm>
#include <iterator>

#include <Corvex/cli/CLICustodialFlag.h>
#include <Corvex/cli/analysis/MediaAnalysisCLIFlag.h>
#include <Corvex/cli/analysis/MediaAnalysisImageCLIFlags.h>
#include <Corvex/cli/transcode/TranscodeAudioQuality.h>
#include <Corvex/cli/transcode/TranscodeCLIFlag.h>
#include <Corvex/media/AudioChannelLabel.h>
#include <Corvex/platform/Checked.h>
#include <tools/corvex/TypedOptions.h>
#include <tools/corvex/vocabulary/KnownValues.h>
#include <tools/corvex/worker/TranscodeJob.h>
#include <tools/corvex/worker/VideoCodecSettings.h>

namespace corvex::tool {
namespace {

using Texts = std::vector<std::string_view>;

/// What the families and the typed options do not say of a flag.
struct Facts {
    std::string_view flag;
    std::string_view meaning;
    Texts (*values)() = nullptr;
    std::string_view type{};  ///< Where no typed option reads the flag, or reads it as text only.
};

Texts colorRanges() {
    Texts texts;
    for (const auto& row : caseTable<OrvanePixelColorRange>) texts.push_back(row.cliFlag);
    return texts;
}

Texts profileNames() {
    Texts texts;
    for (const CodecProfile& profile : allCodecProfiles()) {
        if (std::find(texts.begin(), texts.end(), profile.name) == texts.end()) texts.emplace_back(profile.name);
    }
    return texts;
}

constexpr auto anchors = knownTexts<OAVTranscodeArgumentOverlayAnchorValue>;

constexpr Facts facts[] = {
    {OAVCliHelpFlag.cliFlag(), "lists the flags"},
    {OAVCliCodecsFlag.cliFlag(), "values of -vcodec and -acodec, and what can be encoded"},
    {OAVCliFormatsFlag.cliFlag(), "values of -file_format, and their extensions"},
    {OAVCliVersionFlag.cliFlag(), "the version"},
    {OAVCliAcknowledgementFlag.cliFlag(), "licences of what the tool uses"},
    {OAVCliPresetsFlag.cliFlag(), "values of -preset, and what they stand for"},
    {OAVCliAspectRatioScalingsFlag.cliFlag(), "values of -aspect_scaling"},
    {OAVCliCropAnchorsFlag.cliFlag(), "values of -crop_anchor"},
    {OAVCliColorSpacesFlag.cliFlag(), "values of -c_space"},
    {OAVCliAudioChannelLayoutsFlag.cliFlag(), "values of -acl"},
    {OAVCliAudioChannelBitmapsFlag.cliFlag(), "labels for -acl_bitmap"},
    {OAVCliTimecodeBurnAnchorsFlag.cliFlag(), "values of -tc_burn_anchor"},
    {OAVCliGpuDevicesFlag.cliFlag(), "GPU devices that can be used"},
    {OAVCliVideoColorMatriciesFlag.cliFlag(), "values of -c_matrix"},
    {OAVCliVideoColorTransferFunctionsFlag.cliFlag(), "values of -c_transfer"},
    {OAVCliWatermarkFileBurnAnchorsFlag.cliFlag(), "values of -wmf_anchor and -wmt_anchor"},

    {OAVInputPrefixFlag.cliFlag(), "the source; -in_<group>_<position>: several", nullptr, "path"},
    {OAVOutputFileFlag.cliFlag(), "the target, or a folder", nullptr, "path"},
    {OAVProgressFileFlag.cliFlag(), "file to write the progress to", nullptr, "path"},
    {OAVProgressOutputPrefixFlag.cliFlag(), "what each progress line begins with"},
    {OAVOverwriteExistingFlag.cliFlag(), "replace an existing target"},
    {OAVFileFormatFlag.cliFlag(), "container of the target", knownTexts<OAVTranscodeArgumentFileFormatValue>},
    {OAVColorLutFileFlag.cliFlag(), "look-up table for every picture"},
    {OAVPrepareForWebFlag.cliFlag(), "index in front of the media"},
    {OAVPresetFlag.cliFlag(), "a set of flags by name", knownTexts<OAVTranscodePresetValue>, "choice"},
    {OAVWorkDirectoryFlag.cliFlag(), "folder for what is not complete yet", nullptr, "path"},
    {OAVLegacyTranscodePipelineFlag.cliFlag(), "the earlier pipeline"},
    {OAVLanguageCodeFlag.cliFlag(), "language of the video, ISO 639-2"},

    {OAVNoVideoFlag.cliFlag(), "no video"},
    {OAVVideoFormatFlag.cliFlag(), "codec of the video", knownTexts<OAVTranscodeArgumentVideoCodecValue>},
    {OAVVideoFrameRateFlag.cliFlag(), "frame rate"},
    {OAVVideoDimensionsFlag.cliFlag(), "size, as 1920x1080"},
    {OAVVideoAspectScalingFlag.cliFlag(), "how pictures of another shape fit",
     knownTexts<OAVTranscodeArgumentAspectRatioValue>},
    {OAVVideoAspectCropAnchorFlag.cliFlag(), "the part that cropping keeps", anchors},
    {OAVVideoBitRateFlag.cliFlag(), "data rate of the video"},
    {OAVVideoBitDepthFlag.cliFlag(), "depth of a component"},
    {OAVVideoPreserveLogEncodingFlag.cliFlag(), "keep the encoding of light"},
    {OAVVideoColorSpaceFlag.cliFlag(), "colour space to convert to", knownTexts<OAVTranscodeArgumentColorSpaceValue>},
    {OAVVideoColorMatrixFlag.cliFlag(), "matrix to convert to", knownTexts<OAVTranscodeArgumentColorMatrixValue>},
    {OAVVideoColorTransferFunctionFlag.cliFlag(), "transfer function to convert to",
     knownTexts<OAVTranscodeArgumentColorTransferFunctionValue>},
    {OAVVideoKeyFramesFlag.cliFlag(), "frames from one key frame to the next"},
    {OAVVideoGPUDecodingFlag.cliFlag(), "decode on a GPU"},
    {OAVVideoGPUTransformFlag.cliFlag(), "transform pictures on GPU devices", knownTexts<OAVGpuPlatformValue>},
    {OAVVideoGPUEncodingFlag.cliFlag(), "encode on a GPU"},
    {OAVVideoProfileFlag.cliFlag(), "profile of the codec", profileNames, "choice"},
    {OAVVideoAdditionalDecodeOptionsFlag.cliFlag(), "key=value:key=value for the decoder"},
    {OAVVideoMaxFrames.cliFlag(), "frames after which the output ends"},
    {OAVVideoFrameCapacityFlag.cliFlag(), "pictures in flight at most"},
    {OAVVideoMaxVideoFrameMemory.cliFlag(), "memory of pictures in flight at most"},
    {OAVVideoUnboundedFrameCapacityFlag.cliFlag(), "any number of pictures in flight"},
    {OAVVideoColorRangeFlag.cliFlag(), "full or video range", colorRanges},
    {OAVVideoREDPremiumDecodeFlag.cliFlag(), "decode RED footage in full quality"},
    {OAVVideoDecodeEngineFlag.cliFlag(), "decoder of the video", knownTexts<OAVUnifiedCodecDecoderValue>, "choice"},
    {cliFlag(TranscodeCLIFlag::ftype), "uniform type of the target", nullptr, "text"},
    {cliFlag(TranscodeCLIFlag::vscale), "factor on the size"},
    {cliFlag(TranscodeCLIFlag::ovw), "width: pixels above 16, else a factor"},
    {cliFlag(TranscodeCLIFlag::ovh), "height: pixels above 16, else a factor"},

    {OAVNoAudioFlag.cliFlag(), "no audio"},
    {OAVCopyAudioFlag.cliFlag(), "copy the audio as coded"},
    {OAVAudioIgnoreTracksPrefixFlag.cliFlag(), "tracks to leave out; -ac_omit_<file>: of one"},
    {OAVDiscreteAudioFlag.cliFlag(), "a mono track for each channel"},
    {OAVAudioChannelMatchSourceFlag.cliFlag(), "the channels of the source"},
    {OAVAudioFormatFlag.cliFlag(), "format of the audio", knownTexts<OAVTranscodeArgumentAudioFormatValue>},
    {OAVAudioBitsPerChannelFlag.cliFlag(), "depth of a sample"},
    {OAVAudioSampleRateFlag.cliFlag(), "sample rate"},
    {OAVAudioChannelLayoutFlag.cliFlag(), "channels, by number or name",
     knownTexts<OAVTranscodeArgumentAudioChannelLayoutValue>},
    {OAVAudioChannelLayoutTagFlag.cliFlag(), "channels, by a Core Audio layout tag"},
    {OAVAudioBitRateFlag.cliFlag(), "data rate of the audio"},
    {OAVAudioQualityFlag.cliFlag(), "care in encoding the audio", knownTexts<TranscodeAudioQuality>},
    {OAVAudioLanguageCodeFlag.cliFlag(), "language of the audio, ISO 639-2"},
    {OAVAudioDecodeEngineFlag.cliFlag(), "decoder of the audio", knownTexts<OAVUnifiedCodecDecoderValue>, "choice"},
    {OAVAudioChannelLayoutDescriptionsFlag.cliFlag(), "channels, by descriptions", nullptr, "text"},
    {OAVAudioChannelLayoutBitmapFlag.cliFlag(), "channels, by SMPTE ST 2067-8 labels", knownTexts<AudioChannelLabel>},

    {OAVTimecodeAddTrackFlag.cliFlag(), "add a timecode track"},
    {OAVTimecodeAddBurnFlag.cliFlag(), "write the timecode into each picture"},
    {OAVTimecodeBurnFontSize.cliFlag(), "height of the burnt-in timecode's font"},
    {OAVTimecodeBurnFontRGB.cliFlag(), "colour of the burnt-in timecode, as '1 0.5 0'"},
    {OAVTimecodeBurnBoxRGB.cliFlag(), "colour of the timecode's box, as '1 0.5 0'"},
    {OAVTimecodeMatchSourceFlag.cliFlag(), "timecode starts where the source's does"},
    {OAVTimecodeFromCreationDateFlag.cliFlag(), "timecode starts at the time of creation"},
    {OAVTimecodeCustomFlag.cliFlag(), "label that timecode starts at"},
    {OAVTimecodeFrameRateFlag.cliFlag(), "rate that timecode counts at"},
    {OAVTimecodeIsDropFlag.cliFlag(), "drop-frame counting"},
    {OAVTimecodeIsNonDropFlag.cliFlag(), "non-drop counting"},
    {OAVTimecodeBypassNTSCDropFlag.cliFlag(), "never drop-frame counting"},
    {OAVTimecodeBurnAnchorFlag.cliFlag(), "where the timecode is written", anchors},

    {OAVWatermarkFileBurnAnchorFlag.cliFlag(), "where the image lies", anchors},
    {OAVWatermarkFileBurnFilePathFlag.cliFlag(), "image to lay over each picture", nullptr, "path"},
    {OAVWatermarkFileBurnScaleFlag.cliFlag(), "factor on the image's size"},
    {OAVWatermarkTextAddBurnFlag.cliFlag(), "write a text over each picture"},
    {OAVWatermarkTextBurnTextFlag.cliFlag(), "the text to write over each picture"},
    {OAVWatermarkTextBurnFontSizeFlag.cliFlag(), "height of the text's font"},
    {OAVWatermarkTextBurnAnchorFlag.cliFlag(), "where the text is written", anchors},
    {OAVWatermarkTextBurnFontRGBFlag.cliFlag(), "colour of the text, as '1 0.5 0'"},
    {OAVWatermarkTextBurnBoxRGBFlag.cliFlag(), "colour of the text's box, as '1 0.5 0'"},

    {OAVArriLookColorSpacePrimaryFlag.cliFlag(), "primaries of an ARRI look", knownTexts<OAVArriLookColorSpaceValue>,
     "choice"},
    {OAVArriLookColorSpaceWhitePointFlag.cliFlag(), "white point of an ARRI look",
     knownTexts<OAVArriLookWhitePointValue>, "choice"},
    {OAVArriLookColorSpaceCurveFlag.cliFlag(), "curve of an ARRI look", knownTexts<OAVArriLookCurveValue>, "choice"},
    {OAVArriLookInvalidLookResolutionFlag.cliFlag(), "what to do with an invalid ARRI look",
     knownTexts<OAVArriLookResolutionValue>, "choice"},
};

/// Of the flags whose other facts stand in tables of the library.
struct TypeAndUnit {
    std::string_view flag, type, unit{};
};
constexpr TypeAndUnit typesOfOthers[] = {
    {cliFlag(MediaAnalysisCLIFlag::pathToAnalyze), "list of paths"},
    {cliFlag(MediaAnalysisCLIFlag::analysisId), "text"},
    {cliFlag(MediaAnalysisCLIFlag::workDirectory), "path"},
    {cliFlag(MediaAnalysisCLIFlag::resultsFilePath), "path"},
    {cliFlag(MediaAnalysisImageCLIFlags::compressionFactor), "number"},
    {cliFlag(MediaAnalysisImageCLIFlags::snapshotLocation), "list of numbers"},
    {cliFlag(MediaAnalysisImageCLIFlags::maxImageWidth), "number", "pixels"},
    {cliFlag(MediaAnalysisImageCLIFlags::imageHeight), "number", "pixels"},
    {cliFlag(MediaAnalysisImageCLIFlags::lutFile), "path"},
    {cliFlag(CLICustodialFlag::parentPid), "integer"},
    {cliFlag(CLICustodialFlag::parentAppNumber), "integer"},
};

template <class Rows>
const auto& rowOf(std::string_view flag, const Rows& rows) {
    const auto row =
        std::find_if(std::begin(rows), std::end(rows), [&](const auto& candidate) { return candidate.flag == flag; });
    require(row != std::end(rows), "a flag without facts");
    return *row;
}

/// Gathers the flags of a transcode from their families.
class TranscodeFlags {
public:
    explicit TranscodeFlags(std::vector<VocabularyFlag>& all) : all_(all) {}

    template <class Flags>
    void addFamily(std::string_view group, const Flags& flags) {
        for (const auto& flag : flags) add(group, flag);
    }
    template <class Flag>
    void add(std::string_view group, const Flag& flag) {
        const Facts& row = rowOf(flag.cliFlag(), facts);
        const FlagReading reading = flagReading(row.flag);
        VocabularyFlag& added = all_.emplace_back();
        added.flag = row.flag;
        added.command = "transcode";
        added.group = group;
        added.meaning = row.meaning;
        added.unit = reading.unit;
        if (row.values) added.values = row.values();
        if constexpr (requires { flag.acceptsArguments(); }) {
            added.takesValue = flag.acceptsArguments();
            added.type = !added.takesValue ? "switch" : row.type.empty() ? reading.type : row.type;
            added.isCarriedOut = isCarriedOut(row.flag);
        } else {
            added.type = "command";
        }
        added.takesPath = added.type == "path";
    }

private:
    std::vector<VocabularyFlag>& all_;
};

template <class Enumeration>
void addEnumeration(std::vector<VocabularyFlag>& all, std::string_view command, std::string_view group) {
    for (const auto& row : caseTable<Enumeration>) {
        VocabularyFlag& added = all.emplace_back();
        added.flag = row.cliFlag;
        added.command = command;
        added.group = group;
        added.takesValue = row.acceptsArguments;
        added.meaning = row.description;
        added.type = "switch";
        if (!added.takesValue) continue;
        const TypeAndUnit& typed = rowOf(row.cliFlag, typesOfOthers);
        added.type = typed.type;
        added.unit = typed.unit;
        added.takesPath = typed.type.find("path") != std::string_view::npos;
    }
}

/// A row of a closed enumeration in the shape of the open families.
struct ShortFlag {
    TranscodeCLIFlag value;
    [[nodiscard]] std::string_view cliFlag() const { return corvex::cliFlag(value); }
    [[nodiscard]] bool acceptsArguments() const { return corvex::acceptsArguments(value); }
};

std::vector<VocabularyFlag> gathered() {
    std::vector<VocabularyFlag> all;
    TranscodeFlags transcode(all);
    transcode.addFamily("Information", OAVTranscodeCliCommand::allCases());
    transcode.add("Information", OAVCliWatermarkFileBurnAnchorsFlag);
    transcode.addFamily("General", OAVTranscodeArgumentFlag::allCases());
    transcode.add("General", ShortFlag{TranscodeCLIFlag::ftype});
    transcode.addFamily("Video", OAVTranscodeVideoArgumentFlag::allCases());
    for (const auto flag : {TranscodeCLIFlag::vscale, TranscodeCLIFlag::ovw, TranscodeCLIFlag::ovh}) {
        transcode.add("Video", ShortFlag{flag});
    }
    transcode.addFamily("Audio", OAVTranscodeAudioArgumentFlag::allCases());
    transcode.add("Audio", OAVAudioChannelLayoutDescriptionsFlag);
    transcode.add("Audio", OAVAudioChannelLayoutBitmapFlag);
    transcode.addFamily("Timecode", OAVTranscodeTimecodeArgumentFlag::allCases());
    transcode.add("Timecode", OAVTimecodeBurnAnchorFlag);
    transcode.addFamily("Image watermark", OAVTranscodeWatermarkFileArgumentFlag::allCases());
    transcode.addFamily("Text watermark", OAVTranscodeWatermarkTextArgumentFlag::allCases());
    transcode.addFamily("ARRI look", OAVTranscodeArriLookArgumentFlag::allCases());
    addEnumeration<MediaAnalysisCLIFlag>(all, "analyze", "Files");
    addEnumeration<MediaAnalysisImageCLIFlags>(all, "analyze", "Pictures");
    addEnumeration<CLICustodialFlag>(all, "worker", "Parent");
    return all;
}

}  // namespace

const std::vector<VocabularyFlag>& flagVocabulary() {
    static const std::vector<VocabularyFlag> all = gathered();
    return all;
}

}  // namespace corvex::tool
