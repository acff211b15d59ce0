#pragma once

#include <optional>

namespace corvex::test {

/// The error of this type that `run` throws; none where it ends without one.
template <class Error, class Run>
std::optional<Error> thrownBy(const Run& run) {
    try {
        static_cast<void>(run());
    } catch (const Error& error) {
        return error;
    }
    return std::nullopt;
}

}  // namespace corvex::test
