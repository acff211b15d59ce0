#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <Corvex/concurrency/GuidedItemSequencer.h>
#include <Corvex/concurrency/SimpleAsyncPool.h>
#include <Corvex/platform/Task.h>
#include <Corvex/platform/ThreadPool.h>
#include <tools/corvex/worker/FFmpeg.h>

namespace corvex::tool {

/// Works on several pictures at once and gives them back in the order in which they came. One thread pushes and takes.
/// Destroying it drops what is inside, as soon as the work under way has ended.
class PicturePipeline {
public:
    /// Works on a picture in place, which is the `number`th that came, from 0. May throw.
    using Work = std::function<void(AVFrame& picture, std::uint64_t number)>;

    /// Each of the works runs on one thread at a time, and there are as many threads. Up to `capacity` pictures are inside.
    PicturePipeline(std::vector<Work> works, std::size_t capacity);
    ~PicturePipeline();
    PicturePipeline(const PicturePipeline&) = delete;
    PicturePipeline& operator=(const PicturePipeline&) = delete;

    [[nodiscard]] bool isFull() const noexcept { return pushedCount_ - takenCount_ >= capacity_; }
    [[nodiscard]] bool isEmpty() const noexcept { return pushedCount_ == takenCount_; }

    /// Takes the contents of a picture. Not when the pipeline is full.
    void push(AVFrame& picture);
    /// Waits for the oldest picture. Throws what the work on it threw. Not when the pipeline is empty.
    [[nodiscard]] FramePointer take();

private:
    /// A picture, or what went wrong with it.
    class Outcome {
    public:
        explicit Outcome(FramePointer own) noexcept : picture(std::move(own)) {}
        FramePointer picture;
        std::exception_ptr error;
    };
    using Sequencer = GuidedItemSequencer<std::uint64_t, Outcome>;

    Task<> process(std::uint64_t number, FramePointer picture);
    static Task<Outcome> next(Sequencer sequencer);

    const std::size_t capacity_;
    std::uint64_t pushedCount_ = 0, takenCount_ = 0;
    std::atomic<bool> isStopping_{false};
    SimpleAsyncPool<std::shared_ptr<const Work>> works_;
    Sequencer sequencer_;
    ThreadPool order_{1};  ///< Apart from the others, so that a picture that is done waits for no other one.
    ThreadPool threads_;
};

}  // namespace corvex::tool
