#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <Corvex/platform/Error.h>

namespace corvex::inline v0 {

/// A status of the platform that is no success, as an error. Equal by status and description. The message is made when
/// the error is, so that a host's StatusMessages count at that moment.
class CORVEX_EXPORT OSStatusError : public Error {
public:
    /// Described by the platform's message (StatusMessages.h); not at all for status 0.
    explicit OSStatusError(std::int32_t status);
    /// Described by the text, with `includeStatusDescription` and a status other than 0 followed by " - " and the
    /// platform's message.
    OSStatusError(std::int32_t status, const std::string& errorDescription, bool includeStatusDescription);
    ~OSStatusError() override;
    OSStatusError(const OSStatusError&) = default;
    OSStatusError& operator=(const OSStatusError&) = default;

    /// On Linux an error number (errno), unless the host has others.
    [[nodiscard]] std::int32_t status() const noexcept { return status_; }
    /// What what() says; nothing where that is empty for want of a description.
    [[nodiscard]] std::optional<std::string> errorDescription() const {
        return hasDescription_ ? std::optional<std::string>(what()) : std::nullopt;
    }

    friend bool operator==(const OSStatusError& a, const OSStatusError& b) noexcept {
        return a.status_ == b.status_ && a.hasDescription_ == b.hasDescription_ &&
               std::string_view(a.what()) == b.what();
    }

private:
    std::int32_t status_;
    bool hasDescription_;
};

}  // namespace corvex::inline v0
