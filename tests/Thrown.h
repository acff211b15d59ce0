#pragma once

#include <exception>
#include <optional>
#include <string>

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

/// What the error of a task that has ended says; empty without one.
std::string errorOf(const auto& handle) {
    try {
        static_cast<void>(handle.waitSync()->value());
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

}  // namespace corvex::test
