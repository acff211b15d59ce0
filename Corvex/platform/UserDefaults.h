#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include <Corvex/platform/Error.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/FilesystemForward.h>

namespace corvex::inline v0 {

/// A store of settings that cannot be used. `what()` names the file; the file is as it was before the call.
class CORVEX_EXPORT UserDefaultsError : public Error {
public:
    enum class Case : std::uint8_t {
        unreadable,  ///< It cannot be opened or read.
        unwritable,  ///< It cannot be created or written.
        corrupt,     ///< It is damaged, or no store of settings.
        newer,       ///< A later version has written it, in a form that this one does not know.
        busy,        ///< Others kept it locked for 30 seconds.
    };

    /// `problem` follows the name of the file in the message.
    UserDefaultsError(Case which, const std::filesystem::path& file, std::string_view problem);
    ~UserDefaultsError() override;
    UserDefaultsError(const UserDefaultsError&) = default;
    UserDefaultsError& operator=(const UserDefaultsError&) = default;

    [[nodiscard]] Case which() const noexcept { return case_; }
    /// That of the store.
    [[nodiscard]] std::filesystem::path file() const;

    friend bool operator==(const UserDefaultsError& a, const UserDefaultsError& b) noexcept {
        return a.case_ == b.case_ && std::string_view(a.file_.text()) == b.file_.text();
    }

private:
    Case case_;
    SharedText file_;
};

/// What one user has set, by key, for all processes of that user: one file that several of them read and write at once.
/// A call reads or writes the file anew, so that it sees what others have written, and a write is there wholly or not at
/// all, whatever ends the process or the machine. A file that does not exist holds nothing; the first write makes it,
/// and the folders that are missing, which are for the user alone. Keys and texts are UTF-8; NaN stops the process.
/// Errors   UserDefaultsError.
/// Threads  Any; an object holds nothing but the path.
class CORVEX_EXPORT UserDefaults {
public:
    using Value = std::variant<bool, std::int64_t, double, std::string>;
    using Values = std::map<std::string, Value, std::less<>>;

    explicit UserDefaults(const std::filesystem::path& file);  ///< Neither reads nor makes the file.

    /// The user's own store: the file that CORVEX_SETTINGS_FILE names if it is set and not empty, else
    /// corvex/settings.sqlite in $XDG_CONFIG_HOME, or in ~/.config where that is not set or no absolute path
    /// (XDG Base Directory Specification). Throws UserDefaultsError (unreadable) when the user has no home.
    [[nodiscard]] static UserDefaults standard();

    /// As it was given; it need not be there.
    [[nodiscard]] std::filesystem::path file() const;

    /// What is stored under the key, or none.
    [[nodiscard]] std::optional<Value> value(std::string_view key) const;
    [[nodiscard]] Values values() const;  ///< All that is stored.

    /// The stored Boolean. A stored number is true unless it is 0; false for a text and where nothing is stored.
    [[nodiscard]] bool boolean(std::string_view key) const;
    /// The stored integer; none for every other type.
    [[nodiscard]] std::optional<std::int64_t> integer(std::string_view key) const;

    void set(std::string_view key, const Value& value);  ///< On disk when it returns.
    /// Whether there was something to remove.
    bool remove(std::string_view key);

private:
    std::string file_;
};

}  // namespace corvex::inline v0
