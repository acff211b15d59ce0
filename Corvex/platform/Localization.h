#pragma once

#include <string>

#include <Corvex/platform/Export.h>
#include <Corvex/platform/FilesystemForward.h>

namespace corvex::inline v0 {

// Texts that people read, in their language: English is built in, others come from the gettext domain "corvex".
// The language is that of the process's LC_MESSAGES, which the host sets (setlocale); without that it is English.

/// The translation of an English text, or the text itself where there is none. Any thread.
[[nodiscard]] CORVEX_EXPORT std::string localizedText(const char* english);

/// Where the catalogues are looked for from now on, as DIRECTORY/de/LC_MESSAGES/corvex0.1.mo (major and minor version).
/// At first, where the library was installed. Catalogues that were read before stay in use. For a host's start-up: call
/// it before other threads ask for texts.
CORVEX_EXPORT void setLocalizationDirectory(const std::filesystem::path& directory);

/// For a program's start-up: takes the language from the environment, and the catalogues from share/locale beside the
/// program's own directory where they are there, so that a moved installation finds them.
CORVEX_EXPORT void followUserLanguage();

}  // namespace corvex::inline v0
