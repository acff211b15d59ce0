#include <Corvex/platform/Cancellation.h>

#include <atomic>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/Executor.h>

namespace corvex::inline v0 {
namespace {

/// Differs between threads that live at the same time.
const void* thisThread() noexcept { return &detail::threadState; }

}  // namespace

CancellationError::CancellationError() : Error("the task was cancelled") {}

CancellationError::~CancellationError() = default;

CancellationState::~CancellationState() {
    require(first_ == nullptr, "a cancellation state was destroyed with callbacks armed");
}

void CancellationState::cancel() noexcept {
    ShortLock lock(mutex_);
    if (isCancelled_.load(MemoryOrder::relaxed)) return;
    isCancelled_.store(true, MemoryOrder::release);
    runner_ = thisThread();
    while (CancellationCallback* const callback = first_) {
        unlink(*callback);
        running_.store(callback, MemoryOrder::relaxed);
        lock.unlock();
        callback->run_(*callback);
        lock.lock();
        if (running_.exchange(nullptr, MemoryOrder::release)) std::atomic_ref(running_.value()).notify_all();
    }
}

void CancellationState::unlink(CancellationCallback& callback) noexcept {
    (callback.previous_ ? callback.previous_->next_ : first_) = callback.next_;
    (callback.next_ ? callback.next_->previous_ : last_) = callback.previous_;
    callback.previous_ = callback.next_ = nullptr;
}

void CancellationCallback::armOn(CancellationState& state) noexcept {
    ShortLock lock(state.mutex_);
    if (state.isCancelled_.load(MemoryOrder::relaxed)) {
        lock.unlock();
        run_(*this);
        return;
    }
    state_ = &state;
    previous_ = state.last_;
    (previous_ ? previous_->next_ : state.first_) = this;
    state.last_ = this;
}

void CancellationCallback::disarmFrom(CancellationState& state) noexcept {
    state_ = nullptr;
    ShortLock lock(state.mutex_);
    if (previous_ || next_ || state.first_ == this) {
        state.unlink(*this);
        return;
    }
    if (state.running_.load(MemoryOrder::relaxed) != this) return;
    if (state.runner_ == thisThread()) {
        state.running_.store(nullptr, MemoryOrder::relaxed);
        return;
    }
    lock.unlock();
    std::atomic_ref(state.running_.value()).wait(this, std::memory_order_acquire);
}

}  // namespace corvex::inline v0
