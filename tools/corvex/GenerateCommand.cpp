// corvex generate: the manual pages and the completion scripts, from the same tables as the parsers.

#include <filesystem>

#include <CLI/CLI.hpp>

#include <tools/corvex/Subcommand.h>
#include <tools/corvex/manual/Completion.h>
#include <tools/corvex/manual/ManualPage.h>
#include <tools/corvex/writeBytes.h>

namespace corvex::tool {
namespace {

void writeText(const std::filesystem::path& file, const std::string& text) {
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    if (error) throw JobError("cannot write " + inQuotes(file.native()) + ": " + error.message());
    OutputFile output(file, {}, true);
    writeBytes(output, std::as_bytes(std::span(text)));
    output.publish();
}

void generate(const CLI::App& app, const std::filesystem::path& directory) {
    if (directory.empty()) {  // as from a variable that was never set
        throw UsageError("generate: DIR '': expected a folder, as ~/.local/share, or . for this one");
    }
    const std::vector<CommandPlace> places = commandPlaces(app);
    for (const CommandPlace& place : places) {
        if (!hasManualPage(place)) continue;
        writeText(directory / "man/man1" / (manualName(place) + ".1"), manualPage(place, places));
    }
    writeText(directory / "bash-completion/completions/corvex", bashCompletion(places));
    writeText(directory / "zsh/site-functions/_corvex", zshCompletion(places));
    writeText(directory / "fish/vendor_completions.d/corvex.fish", fishCompletion(places));
}

}  // namespace

void addGenerateCommand(CLI::App& app, const Invocation& /*invocation*/, Action& action) {
    auto directory = std::make_shared<std::string>();
    CLI::App* command = app.add_subcommand("generate", "Write the manual pages and the completions of the shells");
    command->add_option("DIR", *directory, "The folder below which they come, as ~/.local/share")->required();
    command->footer(
        "Files that are there already are replaced. bash, fish and man find what lies below ~/.local/share;\n"
        "zsh is told with fpath+=~/.local/share/zsh/site-functions before compinit.\n"
        "Example:\n"
        "  corvex generate ~/.local/share");
    command->callback([directory, &app, &action] {
        action = [directory, &app] {
            generate(app, *directory);
            return ExitStatus::success;
        };
    });
}

}  // namespace corvex::tool
