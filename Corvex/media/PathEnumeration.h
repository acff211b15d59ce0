#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

#include <Corvex/platform/Export.h>
#include <Corvex/platform/FilesystemForward.h>
#include <Corvex/platform/StoppableBlock.h>

namespace corvex::inline v0 {

/// Whether the last component of `path` has the extension, without regard to case: as its path extension, or behind its
/// last "." and before white space, as "A001.mov copy 2" has "mov". An extension that begins with "." loses every ".".
[[nodiscard]] CORVEX_EXPORT bool lastPathComponentContainsExtension(std::string_view path, std::string_view extension);

/// The first of the extensions that the last component of `path` has, or nullptr.
[[nodiscard]] CORVEX_EXPORT const std::string* matchingExtension(std::string_view path,
                                                                 std::span<const std::string> extensions);

/// What lies in a folder, or also below the folders in it.
enum class WalkDepth : std::uint8_t { children, subpaths };

/// Calls `visit` with each entry of a folder (at WalkDepth::subpaths also with those of the folders in it, at any depth)
/// as it is read, in no certain order, a folder before what it holds. Folders are entered by themselves and never
/// through a link, so that links cannot lead in circles. Holds one folder open and remembers the folders that are still
/// to be read, no files.
/// Errors   Why `folder` cannot be listed, and nothing is visited. A folder below it that cannot, and one whose listing
///          breaks off, go to `skip`, and the walk goes on.
CORVEX_EXPORT std::error_code walkFolder(const std::filesystem::path& folder, WalkDepth depth,
                                         StoppableBlock<const std::filesystem::directory_entry&> visit,
                                         StoppableBlock<const std::filesystem::path&, std::error_code> skip);

/// Takes a path and the extension by which it was chosen.
using MatchingPathBlock = StoppableBlock<const std::filesystem::path&, std::string_view>;

/// Calls `block` with each immediate child of a directory whose name has one of the extensions, tried in their order.
/// Nothing is enumerated where the directory cannot be listed.
CORVEX_EXPORT void shallowEnumerationOfChildrenAtPath(const std::filesystem::path& directory,
                                                      std::span<const std::string> extensions, MatchingPathBlock block);

/// The same over all sub-paths at any depth. A directory that cannot be listed gives one log line.
CORVEX_EXPORT void deepEnumerationOfChildrenAtPath(const std::filesystem::path& directory,
                                                   std::span<const std::string> extensions, MatchingPathBlock block);

}  // namespace corvex::inline v0
