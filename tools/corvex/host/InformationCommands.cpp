#include <tools/corvex/host/InformationCommands.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <string_view>

#include <fmt/format.h>

#include <Corvex/cli/transcode/TranscodeCLIFlag.h>
#include <Corvex/cli/transcode/TranscodeCliPreset.h>
#include <Corvex/exported/TranscodeVocabulary.h>
#include <Corvex/platform/Text.h>
#include <Corvex/platform/Version.h>
#include <tools/corvex/worker/AudioFormatSettings.h>
#include <tools/corvex/worker/TranscodeJob.h>
#include <tools/corvex/worker/VideoCodecSettings.h>

namespace corvex::tool {
namespace {

// The families without a list of their own, for the commands that show them.
constexpr std::array colorSpaces{OAVRec2020ColorSpace, OAVRec2020HLGColorSpace, OAVRec2020PQColorSpace,
                                 OAVRec709ColorSpace,  OAVSrgbColorSpace,       OAVSmptecColorSpace,
                                 OAVEbu3213ColorSpace};
constexpr std::array colorMatrices{OAV_M_YCbCr_ITU_R_709_2, OAV_M_YCbCr_ITU_R_604_4, OAV_M_YCbCr_SMPTE_240M_1995,
                                   OAV_M_YCbCr_ITU_R_2020};
constexpr std::array transferFunctions{
    OAV_T_ITU_R_709_2,    OAV_T_SMPTE_240M_1995,  OAV_T_UseGamma,       OAV_T_sRGB,  OAV_T_ITU_R_2020,
    OAV_T_SMPTE_ST_428_1, OAV_T_SMPTE_ST_2084_PQ, OAV_T_ITU_R_2100_HLG, OAV_T_Linear};
/// Short names of channels, SMPTE ST 2067-8.
constexpr std::array<std::string_view, 18> channelLabels{"L",   "R",  "C",  "LFE", "Ls", "Rs",  "Lss", "Rss", "Lrs",
                                                         "Rrs", "Lc", "Rc", "Cs",  "HI", "VIN", "M1",  "Lt",  "Rt"};

template <class Values>
void printValues(const Values& values) {
    for (const auto& value : values) fmt::print("{}\n", value.rawValue());
}

template <class Flags>
void printFlags(std::string_view title, const Flags& flags) {
    fmt::print("\n{}\n", title);
    for (const auto& flag : flags) {
        fmt::print("  {:<28}{:<10}{}\n", flag.cliFlag(), flag.acceptsArguments() ? "VALUE" : "",
                   isCarriedOut(flag.cliFlag()) ? "" : "not carried out by this worker");
    }
}

void printHelp() {
    fmt::print(
        "usage: corvex transcode -in FILE -out FILE [FLAG [VALUE...]]...\n"
        "A value is the words up to the next flag and cannot begin with '-'. Several inputs are numbered:\n"
        "-in_<group>_<position> FILE.\n"
        "\nInformation\n");
    for (const auto& command : OAVTranscodeCliCommand::allCases()) fmt::print("  {}\n", command.cliFlag());
    fmt::print("  {}\n", OAVCliWatermarkFileBurnAnchorsFlag.cliFlag());
    printFlags("General", OAVTranscodeArgumentFlag::allCases());
    printFlags("Video", OAVTranscodeVideoArgumentFlag::allCases());
    printFlags("Audio", OAVTranscodeAudioArgumentFlag::allCases());
    printFlags("Timecode", OAVTranscodeTimecodeArgumentFlag::allCases());
    printFlags("Image watermark", OAVTranscodeWatermarkFileArgumentFlag::allCases());
    printFlags("Text watermark", OAVTranscodeWatermarkTextArgumentFlag::allCases());
    printFlags("ARRI look", OAVTranscodeArriLookArgumentFlag::allCases());
}

void printCodecs() {
    const auto mark = [](bool canBeEncoded) { return canBeEncoded ? "yes" : "no"; };
    fmt::print("{:<10}{:<18}{:<12}{}\n", "", "value", "encodable", "containers");
    for (const VideoCodecSettings& row : allVideoCodecSettings()) {
        std::string containers;
        for (const FileExtension extension : row.codec.permittedExtensions()) {
            containers += containers.empty() ? "" : " ";
            containers += rawValue(extension);
        }
        fmt::print("{:<10}{:<18}{:<12}{}\n", "video", row.codec.rawValue(), mark(canEncode(row)), containers);
    }
    for (const AudioFormatSettings& row : allAudioFormatSettings()) {
        fmt::print("{:<10}{:<18}{:<12}\n", "audio", row.format.rawValue(), mark(canEncode(row)));
    }
}

void printFormats() {
    for (const auto& format : OAVTranscodeArgumentFileFormatValue::allCases()) {
        std::string extensions;
        for (const FileExtension extension : format.validExtensions())
            extensions += " ." + std::string(rawValue(extension));
        fmt::print("{:<6}{}\n", format.rawValue(), extensions);
    }
}

void printPresets() {
    for (const TranscodeCliPreset preset : allCases<TranscodeCliPreset>) {
        fmt::print("{} ({}):", presetCliValue(preset).rawValue(), description(preset));
        for (const auto& [flag, value] : orderedArguments(preset)) {
            fmt::print(" {}{}{}", flag, value.empty() ? "" : " ", value);
        }
        fmt::print("\n");
    }
}

void printAnchors() { printValues(OAVTranscodeArgumentOverlayAnchorValue::allCases()); }

void printAcknowledgements() {
    fmt::print(
        "Corvex {} is licensed under the Apache License 2.0. It uses:\n"
        "  FFmpeg {} ({}): reading, decoding, filtering, encoding and writing of media\n"
        "  utf8proc (MIT): Unicode text\n"
        "  JSON for Modern C++ (MIT): JSON\n"
        "  CLI11 (BSD-3-Clause): the tool's own options\n"
        "  fmt (MIT): printed text\n",
        versionString, av_version_info(), avcodec_license());
}

struct Answer {
    OAVTranscodeCliCommand command;
    void (*print)();
};

constexpr Answer answers[] = {
    {OAVCliHelpFlag, printHelp},
    {OAVCliCodecsFlag, printCodecs},
    {OAVCliFormatsFlag, printFormats},
    {OAVCliVersionFlag, [] { fmt::print("corvex {}\n", versionString); }},
    {OAVCliAcknowledgementFlag, printAcknowledgements},
    {OAVCliPresetsFlag, printPresets},
    {OAVCliAspectRatioScalingsFlag, [] { printValues(OAVTranscodeArgumentAspectRatioValue::allCases()); }},
    {OAVCliCropAnchorsFlag, printAnchors},
    {OAVCliColorSpacesFlag, [] { printValues(colorSpaces); }},
    {OAVCliAudioChannelLayoutsFlag, [] { printValues(OAVTranscodeArgumentAudioChannelLayoutValue::allCases()); }},
    {OAVCliAudioChannelBitmapsFlag,
     [] {
         for (const std::string_view label : channelLabels) fmt::print("{}\n", label);
     }},
    {OAVCliTimecodeBurnAnchorsFlag, printAnchors},
    {OAVCliGpuDevicesFlag, [] { fmt::print("none: this worker computes on the processor\n"); }},
    {OAVCliVideoColorMatriciesFlag, [] { printValues(colorMatrices); }},
    {OAVCliVideoColorTransferFunctionsFlag, [] { printValues(transferFunctions); }},
    {OAVCliWatermarkFileBurnAnchorsFlag, printAnchors},
};
static_assert(std::size(answers) == OAVTranscodeCliCommand::allCases().size() + 1);

}  // namespace

bool answerInformationCommands(const std::vector<std::string>& words) {
    std::vector<const Answer*> given;
    for (const std::string& word : words) {
        const std::string testForm = lowercased(trimmed(word));
        const auto found = std::find_if(std::begin(answers), std::end(answers),
                                        [&](const Answer& answer) { return answer.command.rawValue() == testForm; });
        if (found == std::end(answers) || std::find(given.begin(), given.end(), &*found) != given.end()) continue;
        found->print();
        given.push_back(&*found);
    }
    return !given.empty();
}

}  // namespace corvex::tool
