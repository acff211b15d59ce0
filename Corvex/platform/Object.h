#pragma once

#include <cstddef>
#include <string>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// The root of the classes that callers handle through one base, as a language binding does. Copying copies the whole
/// derived value; assigning through the base is not possible. Values of the library are no objects themselves: where a
/// binding needs one, a class of its own wraps the value.
class CORVEX_EXPORT Object {
public:
    virtual ~Object();

    /// One line for logs and debuggers; no form to parse.
    [[nodiscard]] virtual std::string description() const = 0;

    /// Same kind and same contents; for objects with an identity, the same object. Equal objects have equal hashes.
    [[nodiscard]] virtual bool isEqual(const Object& other) const = 0;
    [[nodiscard]] virtual std::size_t hash() const = 0;

protected:
    Object() = default;
    Object(const Object&) = default;
    Object(Object&&) = default;
    Object& operator=(const Object&) = default;
    Object& operator=(Object&&) = default;
};

/// Mixes one more hash into a seed, so that order matters.
[[nodiscard]] constexpr std::size_t combinedHash(std::size_t seed, std::size_t next) noexcept {
    return seed ^ (next + 0x9E3779B97F4A7C15U + (seed << 6U) + (seed >> 2U));
}

}  // namespace corvex::inline v0
