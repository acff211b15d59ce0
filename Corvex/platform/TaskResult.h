#pragma once

#include <exception>
#include <optional>
#include <utility>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

/// How a task ended: its value or its error. One of a task that has not finished has neither, and asking for its value
/// stops the process. As any value type.
template <class T>
class TaskResult {
public:
    /// False after an error, and as long as the task has not finished.
    [[nodiscard]] bool hasValue() const noexcept { return value_.has_value(); }
    /// The value; throws the error if that is what there is, the same object each time.
    [[nodiscard]] const T& value() const& {
        check();
        return *value_;
    }
    /// Moved out; the result then holds a moved-from value. Throws as the other does.
    [[nodiscard]] T value() && {
        check();
        return std::move(*value_);
    }
    /// Null if there is a value.
    [[nodiscard]] const std::exception_ptr& error() const noexcept { return error_; }

    /// Replaces the value. An error that is there stays, but value() gives the value.
    template <class U>
    void setValue(U&& value) {
        value_.emplace(std::forward<U>(value));
    }
    /// There is no value any more. Not for a null pointer, which would be no end at all.
    void setError(std::exception_ptr error) noexcept {
        value_.reset();
        error_ = std::move(error);
    }

private:
    /// Throws, or stops the process, unless there is a value.
    void check() const {
        if (value_.has_value()) [[likely]]
            return;
        require(error_ != nullptr, "the result of a task that has not finished");
        std::rethrow_exception(error_);
    }

    std::exception_ptr error_;
    std::optional<T> value_;
};

/// How a task without a value ended: with an error or without.
template <>
class TaskResult<void> {
public:
    /// True also while the task has not finished: there is no value to miss.
    [[nodiscard]] bool hasValue() const noexcept { return !error_; }
    /// Throws the error if there is one.
    void value() const {
        if (error_) std::rethrow_exception(error_);
    }
    /// Null if there is none.
    [[nodiscard]] const std::exception_ptr& error() const noexcept { return error_; }

    void setError(std::exception_ptr error) noexcept { error_ = std::move(error); }

private:
    std::exception_ptr error_;
};

}  // namespace corvex::inline v0
