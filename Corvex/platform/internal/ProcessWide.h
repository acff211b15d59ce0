#pragma once

#include <optional>
#include <utility>

#include <Corvex/platform/ShortMutex.h>

namespace corvex::inline v0 {

/// A value that the whole process shares and a host may replace: made on first use, copied out and in under one mutex.
/// Meant for namespace scope: construction is constant, so there is no order of initialisation to mind. Any thread; a
/// destructor that runs at exit may find it gone, unless it is never destroyed.
template <class Value>
class ProcessWide {
public:
    /// `initial` makes the value when it is first read; it runs at most once and not at all if a host sets one before.
    /// It runs under the mutex: it must not ask for the same value.
    constexpr explicit ProcessWide(Value (*initial)()) noexcept : initial_(initial) {}

    /// A copy, which stays as it is when the value is replaced.
    [[nodiscard]] Value get() const {
        const ShortLock lock(mutex_);
        if (!value_) value_.emplace(initial_());
        return *value_;
    }

    /// Readers get the old value or the new one, whole.
    void set(Value value) {
        std::optional<Value> replacement(std::move(value));  // outlives the lock, and with it the old value
        const ShortLock lock(mutex_);
        value_.swap(replacement);
    }

private:
    mutable ShortMutex mutex_;
    mutable std::optional<Value> value_;
    Value (*initial_)();
};

}  // namespace corvex::inline v0
