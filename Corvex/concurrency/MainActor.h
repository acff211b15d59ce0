#pragma once

#include <type_traits>
#include <utility>

#include <Corvex/platform/Task.h>
#include <Corvex/platform/TaskHandle.h>

namespace corvex::inline v0 {

/// Work that must run on the host's main executor, such as what touches its user interface. A host sets its executor
/// once, before anything else here is called; without one that stops the process. Every function from any thread.
class CORVEX_EXPORT MainActor {
public:
    /// The executor must outlive all work that is posted to it.
    static void setExecutor(Executor& executor) noexcept;
    /// Stops the process when none was set.
    [[nodiscard]] static Executor& executor() noexcept;
    /// Whether the calling thread runs work of the main executor.
    [[nodiscard]] static bool runsHere() noexcept { return executor().runsHere(); }

    /// `co_await MainActor::hop()` goes on there; at once if it is there already.
    [[nodiscard]] static HopAwaiter hop() noexcept { return resumeOn(executor()); }

    /// A task that calls `operation` on the main executor and gives its result; its awaiter goes on where it was. What
    /// the operation throws reaches the awaiter. The operation is kept in the task's frame.
    template <class Operation>
    [[nodiscard]] static Task<std::invoke_result_t<Operation&>> run(Operation operation) {
        co_await hop();
        co_return operation();
    }

    /// Has `operation` called on the main executor later, also when called from there. It must not throw: that ends the
    /// process. Allocates one node.
    template <class Operation>
    static void post(Operation operation) {
        struct Posted final : WorkNode {
            explicit Posted(Operation&& own) noexcept(std::is_nothrow_move_constructible_v<Operation>)
                : WorkNode([](WorkNode& node) noexcept {
                      auto* const posted = static_cast<Posted*>(&node);
                      posted->call();
                      delete posted;
                  }),
                  call(std::move(own)) {}
            Operation call;
        };
        executor().post(*new Posted(std::move(operation)));
    }
};

}  // namespace corvex::inline v0
