#include <Corvex/media/PathEnumeration.h>

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include <Corvex/platform/Log.h>
#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {
namespace {

std::string_view lastComponent(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
    return path.substr(path.find_last_of('/') + 1);
}

/// What stands behind the last "."; empty for a name that begins with its only one.
std::string_view pathExtension(std::string_view component) {
    const std::size_t dot = component.find_last_of('.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view() : component.substr(dot + 1);
}

std::string_view untilWhitespace(std::string_view text) {
    for (std::size_t end = 0; end < text.size();) {
        const DecodedCharacter next = firstCharacter(text.substr(end));
        if (next.isValid && isWhitespaceOrNewline(next.codePoint)) return text.substr(0, end);
        end += static_cast<std::size_t>(next.byteCount);
    }
    return text;
}

bool hasExtension(std::string_view component, std::string_view extension) {
    if (equalsIgnoringCase(pathExtension(component), extension)) return true;
    if (!containsIgnoringCase(component, extension)) return false;
    const std::size_t dot = component.find_last_of('.');
    return dot != std::string_view::npos && equalsIgnoringCase(untilWhitespace(component.substr(dot + 1)), extension);
}

std::error_code enumerateMatches(const std::filesystem::path& directory, WalkDepth depth,
                                 std::span<const std::string> extensions, MatchingPathBlock block) {
    const auto visit = [&](const std::filesystem::directory_entry& entry, bool& stop) {
        const std::string* extension = matchingExtension(entry.path().string(), extensions);
        if (extension != nullptr) stop = block(entry.path(), *extension);
    };
    return walkFolder(directory, depth, visit, nullptr);
}

}  // namespace

bool lastPathComponentContainsExtension(std::string_view path, std::string_view extension) {
    const std::string_view component = lastComponent(path);
    if (!extension.starts_with('.')) return hasExtension(component, extension);
    std::string bare(extension);
    std::erase(bare, '.');
    return hasExtension(component, bare);
}

const std::string* matchingExtension(std::string_view path, std::span<const std::string> extensions) {
    const auto found = std::find_if(extensions.begin(), extensions.end(), [&](const std::string& extension) {
        return lastPathComponentContainsExtension(path, extension);
    });
    return found == extensions.end() ? nullptr : &*found;
}

std::error_code walkFolder(const std::filesystem::path& folder, WalkDepth depth,
                           StoppableBlock<const std::filesystem::directory_entry&> visit,
                           StoppableBlock<const std::filesystem::path&, std::error_code> skip) {
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    if (error) return error;
    std::vector<std::filesystem::path> pending;
    for (std::filesystem::path current = folder;;) {
        for (; entry != std::filesystem::directory_iterator(); entry.increment(error)) {
            if (visit(*entry)) return {};
            std::error_code unknown;  // what vanished meanwhile is no folder to enter
            if (depth == WalkDepth::subpaths && !entry->is_symlink(unknown) && entry->is_directory(unknown)) {
                pending.push_back(entry->path());
            }
        }
        if (error && skip(current, error)) return {};
        do {
            if (pending.empty()) return {};
            current = std::move(pending.back());
            pending.pop_back();
            entry = std::filesystem::directory_iterator(current, error);
            if (error && skip(current, error)) return {};
        } while (error);
    }
}

void shallowEnumerationOfChildrenAtPath(const std::filesystem::path& directory, std::span<const std::string> extensions,
                                        MatchingPathBlock block) {
    enumerateMatches(directory, WalkDepth::children, extensions, block);
}

void deepEnumerationOfChildrenAtPath(const std::filesystem::path& directory, std::span<const std::string> extensions,
                                     MatchingPathBlock block) {
    if (const auto error = enumerateMatches(directory, WalkDepth::subpaths, extensions, block)) {
        logError("CVX_FMPE_DECP-Failed to locate sub paths at " + directory.string() + " with error " +
                 error.message());
    }
}

}  // namespace corvex::inline v0
