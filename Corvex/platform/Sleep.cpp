#include <Corvex/platform/Sleep.h>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

SleepAwaiter::CancelCallback::CancelCallback(SleepAwaiter& sleeper) noexcept
    : CancellationCallback([](CancellationCallback& callback) noexcept {
          SleepAwaiter& woken = static_cast<CancelCallback&>(callback).sleeper_;
          if (woken.home_->cancel(woken)) woken.home_->post(woken);
      }),
      sleeper_(sleeper) {}

SleepAwaiter::SleepAwaiter(TimePoint time) noexcept : SleepAwaiter(time, std::chrono::nanoseconds::max()) {}

SleepAwaiter::SleepAwaiter(std::chrono::nanoseconds duration) noexcept : SleepAwaiter(TimePoint::max(), duration) {}

SleepAwaiter::SleepAwaiter(TimePoint time, std::chrono::nanoseconds duration) noexcept
    : TimerNode([](WorkNode& node) noexcept { static_cast<SleepAwaiter&>(node).coroutine_.resume(); }),
      time_(time),
      duration_(duration),
      cancelCallback_(*this) {}

SleepAwaiter::~SleepAwaiter() {
    if (!coroutine_) return;
    cancelCallback_.disarm();
    require(home_->cancel(*this), "a coroutine was destroyed after its resumption had been posted");
}

void SleepAwaiter::start(std::coroutine_handle<> coroutine, const TaskContext& context) noexcept {
    coroutine_ = coroutine;
    context_ = &context;
    home_ = &Executor::current();
    priority = context.priority;
    if (duration_ <= std::chrono::nanoseconds::zero()) {
        home_->post(*this);
        return;
    }
    const TimePoint time = std::min(time_, saturatedAdd(home_->now(), duration_));
    // The callback first: whichever of it and the timer comes first posts the node, and from then on the frame may be
    // gone. So nothing of it may be touched after postAt().
    cancelCallback_.arm(context.cancellation);
    home_->postAt(*this, time);
}

void SleepAwaiter::await_resume() {
    coroutine_ = nullptr;
    cancelCallback_.disarm();
    if (context_->isCancelled()) throw CancellationError();
}

}  // namespace corvex::inline v0
