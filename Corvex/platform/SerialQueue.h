#pragma once

#include <Corvex/platform/DispatchQueue.h>

namespace corvex::inline v0 {

/// Does pieces of work one after the other, in order of arrival. For tasks there is SerialExecutor.
class SerialQueue final : public DispatchQueue {
public:
    explicit SerialQueue(std::string label, DispatchQoS qos = DispatchQoS::unspecified)
        : DispatchQueue(std::move(label), qos) {}
    /// Without a quality of its own; its work counts as that class.
    SerialQueue(std::string label, DispatchQoS::QoSClass target) : DispatchQueue(std::move(label), target) {}
    /// Its asynchronous work runs on that executor, which outlives it.
    SerialQueue(std::string label, Executor& target, DispatchQoS qos = DispatchQoS::unspecified)
        : DispatchQueue(std::move(label), target, qos) {}

    /// Adds work and returns at once.
    template <class Work>
    void async(Work work) {
        addAsync(true, std::move(work));
    }
    /// Calls the work behind all that was added before and gives its result. From the queue's own work, which would wait
    /// for itself, it stops the process.
    template <class Work>
    std::invoke_result_t<Work&> sync(Work&& work) {
        return runSync(true, work);
    }
};

}  // namespace corvex::inline v0
