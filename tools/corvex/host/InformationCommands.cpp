#include <tools/corvex/host/InformationCommands.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <string_view>

#include <fmt/format.h>

#include <Corvex/cli/transcode/TranscodeCliPreset.h>
#include <Corvex/exported/FileExtension.h>
#include <Corvex/exported/TranscodeVocabulary.h>
#include <Corvex/media/AudioChannelLabel.h>
#include <Corvex/platform/Text.h>
#include <Corvex/platform/Version.h>
#include <tools/corvex/ToolError.h>
#include <tools/corvex/vocabulary/FlagVocabulary.h>
#include <tools/corvex/vocabulary/KnownValues.h>
#include <tools/corvex/worker/AudioFormatSettings.h>
#include <tools/corvex/worker/VideoCodecSettings.h>

namespace corvex::tool {
namespace {

template <class Value>
void printKnown() {
    for (const std::string_view text : knownTexts<Value>()) fmt::print("{}\n", text);
}

/// The vocabulary of a transcode, a line for each flag.
void printHelp() {
    fmt::print(
        "usage: corvex transcode -in FILE -out FILE [FLAG [VALUE...]]...\n"
        "A value is the words up to the next flag and cannot begin with '-'. Several inputs are numbered:\n"
        "-in_<group>_<position> FILE. 'corvex vocabulary' shows types, units and values.\n");
    std::string_view group;
    for (const VocabularyFlag& flag : flagVocabulary()) {
        if (flag.command != "transcode") continue;
        if (flag.group != group) fmt::print("\n{}\n", flag.group);
        group = flag.group;
        fmt::print("  {:<27}{:<6}{}{}\n", flag.flag, flag.wantsValue() ? "VALUE" : "", flag.meaning,
                   flag.isCarriedOut ? "" : " (not carried out here)");
    }
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

constexpr auto printAnchors = printKnown<OAVTranscodeArgumentOverlayAnchorValue>;

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
    {OAVCliAspectRatioScalingsFlag, printKnown<OAVTranscodeArgumentAspectRatioValue>},
    {OAVCliCropAnchorsFlag, printAnchors},
    {OAVCliColorSpacesFlag, printKnown<OAVTranscodeArgumentColorSpaceValue>},
    {OAVCliAudioChannelLayoutsFlag, printKnown<OAVTranscodeArgumentAudioChannelLayoutValue>},
    {OAVCliAudioChannelBitmapsFlag, printKnown<AudioChannelLabel>},
    {OAVCliTimecodeBurnAnchorsFlag, printAnchors},
    {OAVCliGpuDevicesFlag, [] { fmt::print("none: this worker computes on the processor\n"); }},
    {OAVCliVideoColorMatriciesFlag, printKnown<OAVTranscodeArgumentColorMatrixValue>},
    {OAVCliVideoColorTransferFunctionsFlag, printKnown<OAVTranscodeArgumentColorTransferFunctionValue>},
    {OAVCliWatermarkFileBurnAnchorsFlag, printAnchors},
};
static_assert(std::size(answers) == OAVTranscodeCliCommand::allCases().size() + 1);

}  // namespace

bool answerInformationCommands(const std::vector<std::string>& words) {
    std::vector<const Answer*> given;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string testForm = lowercased(trimmed(words[i]));
        const auto found = std::find_if(std::begin(answers), std::end(answers),
                                        [&](const Answer& answer) { return answer.command.rawValue() == testForm; });
        if (found == std::end(answers)) continue;
        if (i + 1 < words.size() && !trimmed(words[i + 1]).starts_with('-')) {
            throw UsageError(std::string(found->command.rawValue()) + " " + inQuotes(words[i + 1]) +
                             ": the flag takes no value");
        }
        if (std::find(given.begin(), given.end(), &*found) == given.end()) given.push_back(&*found);
    }
    for (const Answer* answer : given) answer->print();
    return !given.empty();
}

}  // namespace corvex::tool
