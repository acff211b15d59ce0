#pragma once

#include <atomic>

#ifndef ASIO_STANDALONE
#define ASIO_STANDALONE 1
#endif
#include <asio/any_io_executor.hpp>
#include <asio/post.hpp>

#include <Corvex/platform/Executor.h>

namespace corvex::inline v0 {

/// Runs work on an executor of standalone Asio: an io_context, a strand or a thread_pool. On a strand it is serial.
/// Asio counts only work that is posted, not coroutines that sleep or wait: keep a work guard while tasks run. Destroy
/// this before what it posts to: it waits for posts that are still on their way out when their work has already run.
/// Costs nothing unless it is included; Asio is the host's to provide.
class AsioExecutor final : public Executor {
public:
    /// Any executor of Asio that the host keeps alive. Of an io_context with several threads the order of work is that
    /// of its threads, not that of posting; a strand keeps it.
    explicit AsioExecutor(asio::any_io_executor executor) noexcept : executor_(std::move(executor)) {}

    /// Waits for the few instructions that a post still needs on another thread.
    ~AsioExecutor() override {
        while (const int count = posting_.load(std::memory_order_acquire))
            posting_.wait(count, std::memory_order_acquire);
    }

    /// Asio allocates for each piece of work; where there is no memory left, the process ends.
    void post(WorkNode& node) noexcept override {
        posting_.fetch_add(1, std::memory_order_relaxed);
        asio::post(executor_, [this, &node] { ExecutorScope(*this).run(node); });
        if (posting_.fetch_sub(1, std::memory_order_release) == 1) posting_.notify_all();
    }

private:
    asio::any_io_executor executor_;
    std::atomic<int> posting_{0};
};

}  // namespace corvex::inline v0
