#pragma once

#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// What every error that Corvex throws derives from, so that one handler takes them all. `what()` is one line: the
/// offending value and what was expected. Copies share their text and do not throw. docs/ERRORS.md lists the messages.
class CORVEX_EXPORT Error : public std::exception {
public:
    /// The message is one line without a full stop at its end: programs put their name and a colon in front.
    explicit Error(const std::string& message) : message_(message) {}
    /// Out of line, as those of all derived errors are: so their type information is in the library once, and they can
    /// be caught across its border.
    ~Error() override;
    Error(const Error&) = default;
    Error& operator=(const Error&) = default;

    /// Valid as long as this object or a copy.
    [[nodiscard]] const char* what() const noexcept override { return message_.what(); }

private:
    std::runtime_error message_;  // shares its text: copying an exception must not throw
};

/// Coded data that lacks a key, or holds a value of another type under it. Equal by key and message.
class CORVEX_EXPORT DecodingError : public Error {
public:
    /// `problem` says what is wrong with the value under `key`. For a value that stands alone the key is "rawValue".
    DecodingError(const std::string& key, const std::string& problem);
    ~DecodingError() override;
    DecodingError(const DecodingError&) = default;
    DecodingError& operator=(const DecodingError&) = default;

    /// The key at fault, as the coded form spells it. Valid as long as this object or a copy.
    [[nodiscard]] const char* key() const noexcept { return key_.what(); }

    friend bool operator==(const DecodingError& a, const DecodingError& b) noexcept {
        return std::string_view(a.key()) == b.key() && std::string_view(a.what()) == b.what();
    }

private:
    std::runtime_error key_;
};

}  // namespace corvex::inline v0
