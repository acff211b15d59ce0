#include <Corvex/concurrency/MainActor.h>

#include <atomic>

namespace corvex::inline v0 {
namespace {

std::atomic<Executor*> mainExecutor{nullptr};

}  // namespace

void MainActor::setExecutor(Executor& executor) noexcept { mainExecutor.store(&executor, std::memory_order_release); }

Executor& MainActor::executor() noexcept {
    Executor* const executor = mainExecutor.load(std::memory_order_acquire);
    require(executor != nullptr, "the host has set no main executor");
    return *executor;
}

}  // namespace corvex::inline v0
