#pragma once

#include <cstddef>
#include <utility>

#include <Corvex/platform/Atomic.h>

namespace corvex::inline v0 {

/// A block that lives as long as its last Shared. Begins with one owner, which Shared::make() gives. Derive as
/// `class X : public SharedState`; the block is freed as X, so that X needs no virtual destructor and must be the most
/// derived class or have one.
class SharedState {
public:
    SharedState() noexcept = default;
    SharedState(const SharedState&) = delete;
    SharedState& operator=(const SharedState&) = delete;

protected:
    ~SharedState() = default;

private:
    template <class State>
    friend class Shared;

    Atomic<std::size_t> owners_{1};
};

/// An owner of a SharedState: a reference count without a second block, as small as a pointer. What is in the block is
/// not synchronised by this; the count is. The thread that lets go last sees all that the others wrote.
template <class State>
class Shared {
public:
    /// Owns nothing.
    Shared() noexcept = default;
    /// The first reference to a state that is made of the arguments. One allocation.
    template <class... Arguments>
    [[nodiscard]] static Shared make(Arguments&&... arguments) {
        Shared made;
        made.state_ = new State(std::forward<Arguments>(arguments)...);
        return made;
    }
    /// A further owner of a block that somebody owns at this moment.
    [[nodiscard]] static Shared retain(State& state) noexcept {
        state.owners_.fetchAdd(1, MemoryOrder::relaxed);
        Shared made;
        made.state_ = &state;
        return made;
    }
    /// One more owner.
    Shared(const Shared& other) noexcept : state_(other.state_) {
        if (state_) state_->owners_.fetchAdd(1, MemoryOrder::relaxed);
    }
    Shared(Shared&& other) noexcept : state_(std::exchange(other.state_, nullptr)) {}
    /// Lets go of the block that it had.
    Shared& operator=(Shared other) noexcept {
        std::swap(state_, other.state_);
        return *this;
    }
    /// The last one destroys the block, on this thread.
    ~Shared() {
        if (state_ && state_->owners_.fetchSubtract(1, MemoryOrder::acquireRelease) == 1) delete state_;
    }

    /// nullptr where it owns nothing.
    [[nodiscard]] State* get() const noexcept { return state_; }
    /// Of an owner of nothing neither of the next two is defined.
    [[nodiscard]] State* operator->() const noexcept { return state_; }
    [[nodiscard]] State& operator*() const noexcept { return *state_; }
    [[nodiscard]] explicit operator bool() const noexcept { return state_ != nullptr; }
    /// Equal when both own the same block, or none.
    friend bool operator==(const Shared& a, const Shared& b) noexcept { return a.state_ == b.state_; }

private:
    State* state_ = nullptr;
};

}  // namespace corvex::inline v0
