#include <Corvex/concurrency/TimeoutRace.h>

#include <string>

#include <Corvex/concurrency/TimeoutError.h>
#include <Corvex/platform/Log.h>
#include <Corvex/platform/Sleep.h>

namespace corvex::inline v0 {
namespace detail {

TimeoutRace::Timer::Timer(TimeoutRace& owner) noexcept
    : TimerNode([](WorkNode& node) noexcept { static_cast<Timer&>(node).race.timerFinished(); }), race(owner) {}

TimeoutRace::TimeoutRace(std::uint64_t seconds, const std::optional<TaskTimeoutLog>& log) noexcept
    : seconds_(seconds),
      log_(log),
      timer_(*this),
      timerStop_(*this,
                 [](CancellationCallback& callback) noexcept {
                     TimeoutRace& race = static_cast<Callback&>(callback).race;
                     if (race.home_->cancel(race.timer_)) race.home_->post(race.timer_);
                 }),
      parentLink_(*this, [](CancellationCallback& callback) noexcept {
          static_cast<Callback&>(callback).race.cancellation_.cancel();
      }) {}

TimeoutRace::~TimeoutRace() {
    const int unfinished = unfinishedCount_.load(MemoryOrder::acquire);
    require(unfinished == 0 || !home_, "an operation with a timeout was destroyed while it runs");
}

void TimeoutRace::start(TaskPromiseBase& operation, std::coroutine_handle<> coroutine, std::coroutine_handle<> parent,
                        const TaskContext& context) noexcept {
    home_ = &Executor::current();
    parent_ = parent;
    context_ = {&cancellation_, context.priority};
    timer_.priority = context.priority;
    operation.completeWith(coroutine, *this, context_);
    parentLink_.arm(context.cancellation);
    if (seconds_ > 0) {
        timerStop_.arm(&cancellation_);
        home_->postAt(timer_, saturatedAdd(home_->now(), saturatedSeconds(seconds_)));
        transferTo(coroutine);
    } else {  // no time at all: the timer comes into it when the operation suspends for the first time
        timer_.executor = home_;
        transferTo(coroutine, timer_);
    }
}

void TimeoutRace::taskFinished(TaskPromiseBase&) noexcept {
    const bool isTimerGone = win(Winner::operation) && (seconds_ > 0 ? home_->cancel(timer_) : takeTimerBeforeRest());
    if (!arrive(isTimerGone ? 2 : 1)) return;
    if (threadState.executor == home_) {
        transferTo(parent_);
    } else {
        waiter_.post();
    }
}

void TimeoutRace::timerFinished() noexcept {
    const bool isCancelled = cancellation_.isCancelled();
    if (win(isCancelled ? Winner::cancellation : Winner::timer)) {
        if (log_ && !isCancelled) {
            try {
                logError(log_->prefix() + "- " + log_->context());
            } catch (...) {  // without memory for the line the timeout is still reported by its error
            }
        }
        cancellation_.cancel();
    }
    if (arrive(1)) waiter_.post();
}

bool TimeoutRace::takeTimerBeforeRest() noexcept {
    const bool isThere = threadState.atRest == &timer_;  // else it is posted in a moment, and comes too late
    if (isThere) threadState.atRest = static_cast<TimerNode*>(timer_.next);
    return isThere;
}

bool TimeoutRace::win(Winner winner) noexcept {
    Winner expected = Winner::none;
    return winner_.compareExchange(expected, winner, MemoryOrder::acquireRelease, MemoryOrder::acquire);
}

bool TimeoutRace::arrive(int count) noexcept {
    return unfinishedCount_.fetchSubtract(count, MemoryOrder::acquireRelease) == count;
}

void TimeoutRace::finish() {
    parentLink_.disarm();
    timerStop_.disarm();
    const Winner winner = winner_.load(MemoryOrder::acquire);
    if (winner == Winner::timer) throw TimeoutError::timedOut(seconds_);
    if (winner == Winner::cancellation) throw CancellationError();
}

}  // namespace detail
}  // namespace corvex::inline v0
