#pragma once

namespace corvex::inline v0 {

/// What an access to an Atomic orders, as std::memory_order. There is no default: each access says what it needs.
enum class MemoryOrder : int {
    relaxed = __ATOMIC_RELAXED,
    acquire = __ATOMIC_ACQUIRE,
    release = __ATOMIC_RELEASE,
    acquireRelease = __ATOMIC_ACQ_REL,
};

/// A std::atomic for members in public headers: the same instructions, without what `<atomic>` brings along (texts,
/// mutexes and error codes, for waiting). To wait on one, or to wake who waits, a source makes a std::atomic_ref of
/// value(). For numbers, enumerations, bool and pointers.
template <class Value>
class Atomic {
public:
    constexpr explicit Atomic(Value initial) noexcept : value_(initial) {}
    Atomic(const Atomic&) = delete;
    Atomic& operator=(const Atomic&) = delete;

    /// `relaxed` or `acquire`.
    [[nodiscard, gnu::always_inline]] Value load(MemoryOrder order) const noexcept {
        Value loaded;
        __atomic_load(&value_, &loaded, static_cast<int>(order));
        return loaded;
    }
    /// `relaxed` or `release`.
    [[gnu::always_inline]] void store(Value stored, MemoryOrder order) noexcept {
        __atomic_store(&value_, &stored, static_cast<int>(order));
    }
    /// Gives the value before.
    [[gnu::always_inline]] Value exchange(Value stored, MemoryOrder order) noexcept {
        Value before;
        __atomic_exchange(&value_, &stored, &before, static_cast<int>(order));
        return before;
    }
    /// Stores `desired` where the value is `expected`; where it is not, gives it in `expected`, read with the weaker
    /// order `otherwise`. Never fails without such a difference.
    [[gnu::always_inline]] bool compareExchange(Value& expected, Value desired, MemoryOrder order,
                                                MemoryOrder otherwise) noexcept {
        return __atomic_compare_exchange(&value_, &expected, &desired, false, static_cast<int>(order),
                                         static_cast<int>(otherwise));
    }
    /// Gives the value before. Wraps, for numbers with a sign too.
    [[gnu::always_inline]] Value fetchAdd(Value summand, MemoryOrder order) noexcept {
        return __atomic_fetch_add(&value_, summand, static_cast<int>(order));
    }
    /// As fetchAdd().
    [[gnu::always_inline]] Value fetchSubtract(Value subtrahend, MemoryOrder order) noexcept {
        return __atomic_fetch_sub(&value_, subtrahend, static_cast<int>(order));
    }

    /// Stores the bits of both. Gives the value before.
    [[gnu::always_inline]] Value fetchOr(Value bits, MemoryOrder order) noexcept {
        return __atomic_fetch_or(&value_, bits, static_cast<int>(order));
    }
    /// Stores the bits in which the two differ. Gives the value before.
    [[gnu::always_inline]] Value fetchXor(Value bits, MemoryOrder order) noexcept {
        return __atomic_fetch_xor(&value_, bits, static_cast<int>(order));
    }

    /// The memory itself, for std::atomic_ref alone.
    [[nodiscard]] Value& value() noexcept { return value_; }

private:
    // NOLINTBEGIN(bugprone-sizeof-expression): of a pointer, the pointer itself is meant
    static_assert(__atomic_always_lock_free(sizeof(Value), nullptr), "a value that one instruction can exchange");
    alignas(sizeof(Value)) Value value_;
    // NOLINTEND(bugprone-sizeof-expression)
};

}  // namespace corvex::inline v0
