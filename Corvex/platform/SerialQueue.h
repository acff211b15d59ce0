#pragma once

#include <functional>
#include <memory>
#include <string>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// Does pieces of work one after the other, in order of arrival, on a thread of its own that starts with the first.
/// Threads  async() and sync() from any; none of the work runs on the caller's. What work throws stops the process.
class CORVEX_EXPORT SerialQueue {
public:
    /// `label` names the queue for people.
    explicit SerialQueue(std::string label);
    /// Waits until all work is done. Not from the queue's own work.
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    [[nodiscard]] const std::string& label() const noexcept { return label_; }

    /// Adds work and returns at once.
    void async(std::function<void()> work);
    /// Adds work and waits until it is done, behind all that was added before. From the queue's own work, which would
    /// wait for itself, it stops the process.
    void sync(const std::function<void()>& work);

private:
    struct State;

    std::string label_;
    std::unique_ptr<State> state_;
};

}  // namespace corvex::inline v0
