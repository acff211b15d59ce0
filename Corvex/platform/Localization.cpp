#include <Corvex/platform/Localization.h>

#include <clocale>
#include <filesystem>
#include <system_error>

#if __has_include(<libintl.h>) && defined(CORVEX_LOCALE_DIRECTORY)
#include <libintl.h>
#define CORVEX_HAS_GETTEXT 1
#else
#define CORVEX_HAS_GETTEXT 0
#endif

namespace corvex::inline v0 {

#if CORVEX_HAS_GETTEXT

namespace {

constexpr const char* domain = CORVEX_TEXT_DOMAIN;

/// Binds the domain once. UTF-8 whatever the character set of the locale, as everywhere in the library.
void bind(const char* directory) {
    bindtextdomain(domain, directory);
    bind_textdomain_codeset(domain, "UTF-8");
}

void bindInstalledCatalogues() {
    static const bool isBound = [] {
        bind(CORVEX_LOCALE_DIRECTORY);
        return true;
    }();
    static_cast<void>(isBound);
}

}  // namespace

std::string localizedText(const char* english) {
    bindInstalledCatalogues();
    return dgettext(domain, english);
}

void setLocalizationDirectory(const std::filesystem::path& directory) {
    bindInstalledCatalogues();  // first, or the next text would undo this choice
    bind(directory.c_str());
}

void followUserLanguage() {
    std::setlocale(LC_MESSAGES, "");
    std::error_code error;  // without that link, the catalogues are where the library was installed
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    const auto catalogues = program.parent_path().parent_path() / "share" / "locale";
    if (!error && std::filesystem::is_directory(catalogues, error)) setLocalizationDirectory(catalogues);
}

#else

std::string localizedText(const char* english) { return english; }
void setLocalizationDirectory(const std::filesystem::path& /*directory*/) {}
void followUserLanguage() {}

#endif

}  // namespace corvex::inline v0
