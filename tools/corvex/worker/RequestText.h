#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/exported/OAVUnifiedCodecDecoderValue.h>
#include <Corvex/platform/NumberText.h>
#include <tools/corvex/ToolError.h>

namespace corvex::tool {

// What the makers of requests share: checked values, and messages that say what was expected.

/// "qt, mp4, wav": the raw values of typed texts.
template <class Values>
[[nodiscard]] std::string listOf(const Values& values) {
    std::string list;
    for (const auto& value : values) {
        list += list.empty() ? "" : ", ";
        list += value.rawValue();
    }
    return list;
}

[[noreturn]] inline void failExpecting(std::string_view flag, std::string_view text, std::string_view expected) {
    throw UsageError(std::string(flag) + " " + inQuotes(text) + ": expected " + std::string(expected));
}

/// The value of a flag as a whole number from `low` to `high`; none when the flag is absent, UsageError for another text.
template <class Number>
[[nodiscard]] std::optional<Number> wholeNumber(const TranscodeCliArguments& arguments, const auto& flag, Number low,
                                                Number high, std::string_view what) {
    const auto text = arguments.argumentFlagValue(flag.cliFlag());
    if (!text) return std::nullopt;
    const auto number = parseInteger<Number>(*text);
    if (!number || *number < low || *number > high) {
        failExpecting(flag.cliFlag(), *text,
                      std::string(what) + ", " + std::to_string(low) + " to " + std::to_string(high));
    }
    return number;
}

/// An ISO 639-2 code of three letters; empty when the flag is absent, UsageError for another text.
[[nodiscard]] inline std::string languageOf(const TranscodeCliArguments& arguments, const auto& flag) {
    const auto text = arguments.argumentFlagValue(flag.cliFlag());
    if (!text) return {};
    const bool isCode = text->size() == 3 && text->find_first_not_of("abcdefghijklmnopqrstuvwxyz") == text->npos;
    if (!isCode) failExpecting(flag.cliFlag(), *text, "an ISO 639-2 code of three letters, as eng");
    return std::string(*text);
}

/// Throws unless the flag is absent or names the one engine that there is.
inline void requireAvailableEngine(const TranscodeCliArguments& arguments, const auto& flag) {
    const auto text = arguments.argumentFlagValue(flag.cliFlag());
    if (!text || *text == OAVUnifiedCodecDecoderFFmpeg.rawValue()) return;
    for (const auto& engine : OAVUnifiedCodecDecoderValue::allCases()) {
        if (engine.rawValue() == *text) {
            throw JobError(std::string(flag.cliFlag()) + " " + std::string(*text) +
                           ": this machine has no such decode engine; expected ffmpeg");
        }
    }
    failExpecting(flag.cliFlag(), *text, "one of " + listOf(OAVUnifiedCodecDecoderValue::allCases()));
}

}  // namespace corvex::tool
