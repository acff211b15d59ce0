// corvex media: the vocabulary of media formats, and the search for media files.

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include <fmt/format.h>
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <Corvex/filesystem/ProcessInfoSleepManager.h>
#include <Corvex/media/MediaFormatConstants.h>
#include <Corvex/media/PathEnumeration.h>
#include <Corvex/platform/Text.h>
#include <tools/corvex/Subcommand.h>
#include <tools/corvex/jsonOutput.h>

namespace corvex::tool {
namespace {

struct MediaChoices {
    std::string folder;
    std::optional<std::string> extensions;
    bool deep = false;
    bool json = false;
};

/// The extensions of all containers, in the order of the vocabulary.
std::vector<std::string> knownExtensions() {
    std::vector<std::string> extensions;
    for (const ORVMediaFileContainer& container : ORVMediaFileContainer::allCases()) {
        MediaFormatConstants::enumerateValidFileExtensionsForMediaContainer(
            container, [&](std::string_view extension) { extensions.emplace_back(extension); });
    }
    return extensions;
}

std::vector<std::string> containersOf(std::string_view extension) {
    std::vector<std::string> containers;
    MediaFormatConstants::enumerateContainersForFileExtension(
        extension, [&](const ORVMediaFileContainer& container) { containers.emplace_back(container.rawValue()); });
    return containers;
}

ExitStatus printRows(const Json& rows, bool isJson, const char* key, const char* values) {
    if (isJson) {
        printJson(rows);
        return ExitStatus::success;
    }
    for (const Json& row : rows) {
        fmt::print("{:<16}{}\n", row[key].get<std::string>(),
                   fmt::join(row[values].get<std::vector<std::string>>(), " "));
    }
    return ExitStatus::success;
}

ExitStatus listContainers(bool isJson) {
    Json rows = Json::array();
    for (const ORVMediaFileContainer& container : ORVMediaFileContainer::allCases()) {
        Json extensions = Json::array();
        MediaFormatConstants::enumerateValidFileExtensionsForMediaContainer(
            container, [&](std::string_view extension) { extensions.push_back(std::string(extension)); });
        rows.push_back({{"container", std::string(container.rawValue())}, {"extensions", std::move(extensions)}});
    }
    return printRows(rows, isJson, "container", "extensions");
}

ExitStatus extensions(bool isJson) {
    Json rows = Json::array();
    for (const std::string& extension : knownExtensions()) {
        rows.push_back({{"extension", extension}, {"containers", containersOf(extension)}});
    }
    return printRows(rows, isJson, "extension", "containers");
}

ExitStatus makers(bool isJson) {
    Json names = Json::array();
    MediaFormatConstants::alphabeticalEnumerationOfCorporations(
        [&](const ORVMediaCorporation& maker) { names.push_back(std::string(maker.rawValue())); });
    if (isJson) {
        printJson(names);
        return ExitStatus::success;
    }
    for (const Json& name : names) fmt::print("{}\n", name.get<std::string>());
    return ExitStatus::success;
}

std::vector<std::string> wantedExtensions(const std::optional<std::string>& list) {
    if (!list) return knownExtensions();
    std::vector<std::string> wanted;
    forEachPiece(*list, ",", [&](std::string_view piece) {
        if (trimmed(piece).empty()) {
            throw UsageError("media find: --ext " + inQuotes(*list) + ": expected extensions with commas, as mov,mxf");
        }
        wanted.emplace_back(trimmed(piece));
    });
    return wanted;
}

/// Looks for media files and prints each as it is found. Folders are no media files, whatever their names.
class Search {
public:
    explicit Search(const MediaChoices& choices) : choices_(choices), wanted_(wantedExtensions(choices.extensions)) {}

    ExitStatus run() {
        ProcessInfoSleepManager awake;  // a search of a whole volume may take its time
        awake.prevent();
        const auto error = walkFolder(
            choices_.folder, choices_.deep ? WalkDepth::subpaths : WalkDepth::children,
            [this](const std::filesystem::directory_entry& entry) { take(entry); },
            [this](const std::filesystem::path& folder, std::error_code reason) {
                skip(folder, reason.message());
                isComplete_ = false;
            });
        if (error) throw JobError("media find: " + inQuotes(choices_.folder) + ": " + error.message());
        return isComplete_ ? ExitStatus::success : ExitStatus::jobFailed;
    }

private:
    void take(const std::filesystem::directory_entry& entry) {
        const std::string* extension = matchingExtension(entry.path().native(), wanted_);
        std::error_code error;
        if (entry.is_symlink(error)) {
            const auto target = std::filesystem::status(entry.path(), error);
            if (std::filesystem::is_directory(target)) {
                if (choices_.deep) skip(entry.path(), "a link to a folder is not followed");
                return;
            }
            if (extension != nullptr && !std::filesystem::exists(target)) {
                return skip(entry.path(), "the link leads to nothing: " + error.message());
            }
        } else if (entry.is_directory(error)) {
            return;
        }
        if (extension != nullptr) print(entry.path().string(), *extension);
    }

    void print(const std::string& path, const std::string& extension) const {
        if (choices_.json) {
            fmt::print("{}\n",
                       jsonText({{"path", path}, {"extension", extension}, {"containers", containersOf(extension)}}));
        } else {
            fmt::print("{}\n", path);
        }
        // A search may take long, and who reads it wants each line when it is there; one that has gone ends the search.
        if (std::fflush(stdout) != 0) throw JobError("cannot write to standard output");
    }

    static void skip(const std::filesystem::path& path, const std::string& why) {
        printError("skipped " + inQuotes(path.string()) + ": " + why);
    }

    const MediaChoices& choices_;
    std::vector<std::string> wanted_;
    bool isComplete_ = true;
};

}  // namespace

void addMediaCommand(CLI::App& app, const Invocation& /*invocation*/, Action& action) {
    auto choices = std::make_shared<MediaChoices>();
    CLI::App* command = app.add_subcommand("media", "Containers, extensions, makers; finding media files");
    command->require_subcommand(1);
    const auto addList = [&](const char* name, const char* about, ExitStatus (*list)(bool)) {
        CLI::App* sub = command->add_subcommand(name, about);
        sub->add_flag("--json", choices->json, "Print one JSON array");
        sub->callback([choices, &action, list] { action = [choices, list] { return list(choices->json); }; });
    };
    addList("containers", "The containers with their file extensions", listContainers);
    addList("extensions", "The file extensions with their containers", extensions);
    addList("makers", "The makers of cameras, recorders and formats", makers);

    CLI::App* find = command->add_subcommand("find", "Media files of a folder, by their extensions");
    find->add_option("DIR", choices->folder, "The folder")->required();
    find->add_option("--ext", choices->extensions,
                     "Extensions with commas between them; default: those of 'extensions'");
    find->add_flag("--deep", choices->deep, "Look into the folders in it, too");
    find->add_flag("--json", choices->json, "Print one JSON object a line");
    find->footer("Example:\n  corvex media find /mnt/card --deep --ext mov,mxf");
    find->callback([choices, &action] { action = [choices] { return Search(*choices).run(); }; });
}

}  // namespace corvex::tool
