#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include <tools/corvex/ToolError.h>

namespace CLI {
class App;
}

namespace corvex::tool {

/// What a subcommand works on.
struct Invocation {
    std::vector<std::string> words;  ///< Of `args` those after "--", as given: another program's language.
    bool hasWords = false;           ///< Whether there was a "--" at all.
};

/// The work of the subcommand that the user chose; set by its parse callback and run after parsing.
using Action = std::function<ExitStatus()>;

/// Each file that holds subcommands defines one such function: it adds its subcommands to the
/// application and, when one of them is chosen, sets `action`. `invocation` outlives the action.
using AddSubcommand = void (*)(CLI::App& app, const Invocation& invocation, Action& action);

void addAnalyzeCommand(CLI::App& app, const Invocation& invocation, Action& action);
void addArgsCommand(CLI::App& app, const Invocation& invocation, Action& action);
void addAudioCommand(CLI::App& app, const Invocation& invocation, Action& action);
void addColorCommand(CLI::App& app, const Invocation& invocation, Action& action);
void addGenerateCommand(CLI::App& app, const Invocation& invocation, Action& action);
void addLutCommand(CLI::App& app, const Invocation& invocation, Action& action);
void addMediaCommand(CLI::App& app, const Invocation& invocation, Action& action);
void addRateCommand(CLI::App& app, const Invocation& invocation, Action& action);
void addSettingsCommand(CLI::App& app, const Invocation& invocation, Action& action);
void addTimecodeCommand(CLI::App& app, const Invocation& invocation, Action& action);
void addTranscodeCommand(CLI::App& app, const Invocation& invocation, Action& action);
void addVocabularyCommand(CLI::App& app, const Invocation& invocation, Action& action);

/// Does what the words ask of a subcommand. What follows "--" is an operand whatever it looks like; of `args` another
/// program's language.
/// Throws UsageError, and what the subcommand throws.
ExitStatus runSubcommand(std::vector<std::string> own);

}  // namespace corvex::tool
