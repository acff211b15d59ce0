#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace corvex::tool {

/// A word that may stand in a command, for the manual and for completion.
struct CommandWord {
    std::string text;       ///< "--json", "-vcodec", "FILE".
    std::string valueName;  ///< "INT" of an option's value; empty: it takes none.
    std::string meaning;
    std::string group;                ///< Of the vocabulary's flags.
    std::string valueFacts;           ///< "number, Mbit/s", of the vocabulary's flags.
    std::vector<std::string> values;  ///< All that it may be, or the known ones; empty: any.
    bool takesPath = false;           ///< The value, or a positional itself.
};

/// A command or subcommand: what may stand behind its words.
struct CommandPlace {
    std::string path;  ///< "corvex lut info"
    std::string purpose;
    std::string notes;  ///< Further lines of its help; those that begin with blanks are to be kept as they are.
    std::vector<std::string> subcommands;
    std::vector<CommandWord> options;  ///< Those of the tool, then flags of the vocabulary.
    std::vector<CommandWord> operands;
    std::string synopsis;  ///< One line.
};

/// Lets every word that names a path be a file URL.
void acceptFileUrls(CLI::App& app);

/// The application and all its subcommands, each before its own.
[[nodiscard]] std::vector<CommandPlace> commandPlaces(const CLI::App& app);

}  // namespace corvex::tool
