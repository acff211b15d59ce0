// corvex audio: the audio formats that can be written, and which of them stands in for a source's format.

#include <charconv>
#include <cstdint>
#include <string_view>
#include <system_error>

#include <fmt/format.h>
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <Corvex/media/OrvaneAudioFormat.h>
#include <tools/corvex/Subcommand.h>
#include <tools/corvex/jsonOutput.h>

namespace corvex::tool {
namespace {

Json formatJson(OrvaneAudioFormat format) {
    const FourCharacterCode code = coreAudioEquivalent(format);
    return {{"name", std::string(formatDescription(format))},
            {"cliValue", std::string(outputFormat(format).rawValue())},
            {"code", code.description()},
            {"codeNumber", code.value()},
            {"support", std::string(rawValue(avEncodingSupportLevel(format)))}};
}

ExitStatus listFormats(bool isJson) {
    Json formats = Json::array();
    for (const auto format : allCases<OrvaneAudioFormat>) formats.push_back(formatJson(format));
    if (isJson) {
        printJson(formats);
        return ExitStatus::success;
    }
    fmt::print("{:<6}{:<16}{:<16}{}\n", "code", "-acodec", "name", "in a media writer");
    for (const auto format : allCases<OrvaneAudioFormat>) {
        fmt::print("{:<6}{:<16}{:<16}{}\n", coreAudioEquivalent(format).description(), outputFormat(format).rawValue(),
                   formatDescription(format), description(avEncodingSupportLevel(format)));
    }
    return ExitStatus::success;
}

/// Four characters; fewer are filled with blanks, as the codes themselves are ("aac"). Or 0x and eight digits.
FourCharacterCode readCode(const std::string& text) {
    if (text.size() == 10 && text.starts_with("0x")) {
        std::uint32_t number = 0;
        const auto [end, problem] = std::from_chars(text.data() + 2, text.data() + text.size(), number, 16);
        if (problem == std::errc() && end == text.data() + text.size()) return FourCharacterCode(number);
    } else if (!text.empty() && text.size() <= 4) {
        return *FourCharacterCode::make((text + "   ").substr(0, 4));
    }
    throw UsageError("audio replacement: CODE " + inQuotes(text) +
                     ": expected four characters, as ac-3, or 0x and eight hexadecimal digits");
}

ExitStatus replacement(const std::string& text, bool isLossless, bool isJson) {
    const FourCharacterCode source = readCode(text);
    const OrvaneAudioFormat format = encodingReplacement(source, isLossless);
    if (isJson) {
        printJson(
            {{"source", source.description()}, {"preserveLossless", isLossless}, {"replacement", formatJson(format)}});
    } else {
        fmt::print("{}\n", outputFormat(format).rawValue());
    }
    return ExitStatus::success;
}

}  // namespace

void addAudioCommand(CLI::App& app, const Invocation& /*invocation*/, Action& action) {
    struct AudioChoices {
        std::string code;
        bool lossless = false;
        bool json = false;
    };
    auto choices = std::make_shared<AudioChoices>();
    CLI::App* command = app.add_subcommand("audio", "Audio formats that can be written, and their choice");
    command->require_subcommand(1);
    CLI::App* all = command->add_subcommand("list", "The formats, with their codes and the values of -acodec");
    all->add_flag("--json", choices->json, "Print one JSON array");
    all->callback([choices, &action] { action = [choices] { return listFormats(choices->json); }; });
    CLI::App* one = command->add_subcommand("replacement", "The format that stands in for a source's");
    one->add_option("CODE", choices->code, "The source's code: four characters, as ac-3, or 0x and eight digits")
        ->required();
    one->add_flag("--lossless", choices->lossless, "Lose nothing more than the source has lost already");
    one->add_flag("--json", choices->json, "Print one JSON object");
    one->footer("Example:\n  corvex audio replacement ac-3 --lossless");
    one->callback([choices, &action] {
        action = [choices] { return replacement(choices->code, choices->lossless, choices->json); };
    });
}

}  // namespace corvex::tool
