#pragma once

#include <cstdint>

#include <Corvex/platform/Error.h>

namespace corvex::inline v0 {

/// An item that a conduit refuses; the item is gone. Equal by case.
class CORVEX_EXPORT DataCoordinationError : public Error {
public:
    /// `addToClosedConduitError`: add() after close(). `improperDataType`: for conduits of a host's own that take items
    /// of several types; those of the library check types when they are compiled.
    enum class Case : std::uint8_t { addToClosedConduitError, improperDataType };

    /// The message is that of the case; the item is not named, as any type may be one.
    explicit DataCoordinationError(Case which);
    ~DataCoordinationError() override;
    DataCoordinationError(const DataCoordinationError&) = default;
    DataCoordinationError& operator=(const DataCoordinationError&) = default;

    /// Which of them. Conduits of the library throw the first alone.
    [[nodiscard]] Case which() const noexcept { return case_; }

    friend bool operator==(const DataCoordinationError& a, const DataCoordinationError& b) noexcept {
        return a.case_ == b.case_;
    }

private:
    Case case_;
};

}  // namespace corvex::inline v0
