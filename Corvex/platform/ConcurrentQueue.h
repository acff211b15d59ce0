#pragma once

#include <Corvex/platform/DispatchQueue.h>

namespace corvex::inline v0 {

/// Starts pieces of work in order of arrival, as many at once as there are. A barrier runs alone: it waits for what was
/// added before it, and what is added behind waits for it; so barriers that write exclude readers and each other.
class ConcurrentQueue final : public DispatchQueue {
public:
    explicit ConcurrentQueue(std::string label, DispatchQoS qos = DispatchQoS::unspecified)
        : DispatchQueue(std::move(label), qos) {}
    /// Without a quality of its own; its work counts as that class.
    ConcurrentQueue(std::string label, DispatchQoS::QoSClass target) : DispatchQueue(std::move(label), target) {}
    /// Its asynchronous work runs on that executor, which outlives it.
    ConcurrentQueue(std::string label, Executor& target, DispatchQoS qos = DispatchQoS::unspecified)
        : DispatchQueue(std::move(label), target, qos) {}

    /// Add work and return at once.
    template <class Work>
    void async(Work work) {
        addAsync(false, std::move(work));
    }
    /// As a barrier.
    template <class Work>
    void asyncBarrier(Work work) {
        addAsync(true, std::move(work));
    }
    /// Call the work in its turn and give its result. From the queue's own work they stop the process.
    template <class Work>
    std::invoke_result_t<Work&> sync(Work&& work) {
        return runSync(false, work);
    }
    /// As a barrier.
    template <class Work>
    std::invoke_result_t<Work&> syncBarrier(Work&& work) {
        return runSync(true, work);
    }
};

}  // namespace corvex::inline v0
