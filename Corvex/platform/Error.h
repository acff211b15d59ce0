#pragma once

#include <exception>
#include <string_view>

#include <Corvex/platform/Export.h>
#include <Corvex/platform/SharedState.h>

namespace corvex::inline v0 {

/// A text that an error carries: copies share it and do not throw, as copying an exception must not. Immutable.
class CORVEX_EXPORT SharedText {
public:
    /// Of a copy of the text, which ends before its first NUL, if it has one.
    explicit SharedText(std::string_view text);
    SharedText(const SharedText& other) noexcept;
    /// Lets go of the text that it had.
    SharedText& operator=(const SharedText& other) noexcept;
    ~SharedText();

    /// Valid as long as this object or a copy.
    [[nodiscard]] const char* text() const noexcept;

private:
    /// The text and the number of its owners.
    class Block;
    Shared<Block> block_;
};

/// What every error that Corvex throws derives from, so that one handler takes them all. `what()` is one line: the
/// offending value and what was expected. Copies share their text and do not throw. docs/ERRORS.md lists the messages.
class CORVEX_EXPORT Error : public std::exception {
public:
    /// The message is one line without a full stop at its end: programs put their name and a colon in front.
    explicit Error(std::string_view message) : message_(message) {}
    /// Out of line, as those of all derived errors are: so their type information is in the library once, and they can
    /// be caught across its border.
    ~Error() override;
    Error(const Error&) = default;
    Error& operator=(const Error&) = default;

    /// Valid as long as this object or a copy.
    [[nodiscard]] const char* what() const noexcept override { return message_.text(); }

private:
    SharedText message_;
};

/// Coded data that lacks a key, or holds a value of another type under it. Equal by key and message.
class CORVEX_EXPORT DecodingError : public Error {
public:
    /// `problem` says what is wrong with the value under `key`. For a value that stands alone the key is "rawValue".
    DecodingError(std::string_view key, std::string_view problem);
    ~DecodingError() override;
    DecodingError(const DecodingError&) = default;
    DecodingError& operator=(const DecodingError&) = default;

    /// The key at fault, as the coded form spells it. Valid as long as this object or a copy.
    [[nodiscard]] const char* key() const noexcept { return key_.text(); }

    friend bool operator==(const DecodingError& a, const DecodingError& b) noexcept {
        return std::string_view(a.key()) == b.key() && std::string_view(a.what()) == b.what();
    }

private:
    SharedText key_;
};

}  // namespace corvex::inline v0
