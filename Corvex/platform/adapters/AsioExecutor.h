#pragma once

#ifndef ASIO_STANDALONE
#define ASIO_STANDALONE 1
#endif
#include <asio/any_io_executor.hpp>
#include <asio/post.hpp>

#include <Corvex/platform/Executor.h>

namespace corvex::inline v0 {

/// Runs work on an executor of standalone Asio: an io_context, a strand or a thread_pool. On a strand it is serial.
/// Asio counts only work that is posted, not coroutines that sleep or wait: keep a work guard while tasks run.
/// Costs nothing unless it is included; Asio is the host's to provide.
class AsioExecutor final : public Executor {
public:
    explicit AsioExecutor(asio::any_io_executor executor) noexcept : executor_(std::move(executor)) {}

    void post(WorkNode& node) noexcept override {
        asio::post(executor_, [this, &node] { ExecutorScope(*this).run(node); });
    }

private:
    asio::any_io_executor executor_;
};

}  // namespace corvex::inline v0
