#include <Corvex/platform/SerialExecutor.h>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

class SerialExecutor::Turns final : public SharedState, public WorkNode {
public:
    Turns(SerialExecutor& owner, Executor& base, TaskPriority turnPriority) noexcept : owner_(owner), base_(base) {
        run = [](WorkNode& node) noexcept { static_cast<Turns&>(node).takeTurn(); };
        priority = turnPriority;
    }

    void append(WorkNode& node) noexcept {
        ShortLock lock(mutex_);
        queue_.append(node);
        if (isScheduled_) return;
        isScheduled_ = true;
        lock.unlock();
        self_ = Shared<Turns>::retain(*this);
        base_.post(*this);
    }

    [[nodiscard]] Executor& base() const noexcept { return base_; }
    [[nodiscard]] bool isEmpty() noexcept {
        const ShortLock lock(mutex_);
        return queue_.isEmpty();
    }

private:
    static constexpr int turnLength = 64;  // pieces of work before the executor below may run something else

    void takeTurn() noexcept {
        const Shared<Turns> keeper = std::move(self_);
        ExecutorScope scope(owner_);
        for (int i = 0; i < turnLength; ++i) {
            ShortLock lock(mutex_);
            WorkNode* const node = queue_.takeFirst();
            if (!node) {
                isScheduled_ = false;
                return;
            }
            lock.unlock();
            scope.run(*node);
        }
        self_ = keeper;
        base_.post(*this);
    }

    SerialExecutor& owner_;
    Executor& base_;
    ShortMutex mutex_;
    WorkQueue queue_;
    bool isScheduled_ = false;
    Shared<Turns> self_;  ///< While a turn is posted.
};

SerialExecutor::SerialExecutor(Executor& base, TaskPriority priority)
    : turns_(Shared<Turns>::make(*this, base, priority)) {}

SerialExecutor::~SerialExecutor() { require(turns_->isEmpty(), "a serial executor was destroyed with work waiting"); }

void SerialExecutor::post(WorkNode& node) noexcept { turns_->append(node); }

Timers& SerialExecutor::timers() const noexcept { return turns_->base().timers(); }

}  // namespace corvex::inline v0
