#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/DataCoordinationError.h>
#include <Corvex/platform/ManualExecutor.h>
#include <Corvex/platform/Task.h>
#include <Corvex/platform/TaskHandle.h>

namespace corvex {

/// What is done to a primitive, a letter a step, and what comes of it: " " lets everything run that is posted, "~" has the
/// task of the next step destroyed after the next " ", while it waits. `setting` is a limit, capacity or window.
struct Schedule {
    const char* name;
    int setting;
    const char *steps, *trace;
};

/// A coroutine that is resumed by hand and destroyed whenever its owner goes: for frames that end while they wait.
class Abandoned {
public:
    explicit Abandoned(Task<> task) : coroutine_(task.release()) { coroutine_.resume(); }
    ~Abandoned() { coroutine_.destroy(); }
    Abandoned(const Abandoned&) = delete;
    Abandoned& operator=(const Abandoned&) = delete;

private:
    Task<>::Handle coroutine_;
};

/// `act(step)` takes a step, or gives the task that does.
void play(std::string_view steps, ManualExecutor& executor, const auto& act) {
    std::vector<std::unique_ptr<Abandoned>> abandoned;
    bool isAbandoned = false;
    for (const char step : steps) {
        if (step == '~') {
            isAbandoned = true;
        } else if (step == ' ') {
            executor.runAll();
            abandoned.clear();
        } else if (std::optional<Task<>> task = act(step)) {
            if (std::exchange(isAbandoned, false)) {
                abandoned.push_back(std::make_unique<Abandoned>(std::move(*task)));
            } else {
                spawn(std::move(*task), executor);
            }
        }
    }
    executor.runAll();
}

/// Awaits `addition()`, and traces "+item", or "!item" if it is refused.
template <class Addition>
Task<> traceAdding(std::string* trace, std::string item, Addition addition) {
    try {
        co_await addition();
        *trace += "+" + item;
    } catch (const DataCoordinationError& error) {
        EXPECT_EQ(error, DataCoordinationError(DataCoordinationError::Case::addToClosedConduitError));
        *trace += "!" + item;
    }
}

/// Awaits `request()`, and traces "-item", or "-." for nothing.
template <class Request>
Task<> traceAsking(std::string* trace, Request request) {
    const auto result = co_await request();
    if constexpr (requires { result->item; }) {
        *trace += "-" + (result ? result->item : ".");
    } else {
        *trace += "-" + result.value_or(".");
    }
}

/// Plays a schedule on a conduit: the letters in `asking` await `ask(letter)`, "|" closes, any other adds an item that is
/// called like it, "3" and then "3'", by `add(letter, item)`.
template <class Conduit>
std::string traceOf(const Conduit& conduit, std::string_view steps, std::string_view asking, const auto& add,
                    const auto& ask) {
    ManualExecutor executor;
    std::string trace;
    std::map<char, std::size_t> additions;
    const auto act = [&](char step) -> std::optional<Task<>> {
        if (step == '|') return conduit.close(), std::nullopt;
        if (asking.find(step) != std::string_view::npos) {
            return traceAsking(&trace, [&ask, step] { return ask(step); });
        }
        const std::string item = step + std::string(additions[step]++, '\'');
        return traceAdding(&trace, item, [&add, step, item] { return add(step, item); });
    };
    play(steps, executor, act);
    const std::string result = trace;
    conduit.close();
    for (std::size_t i = 0; i < steps.size(); ++i) {  // lets those go that still wait
        for (const char letter : asking) spawn(*act(letter), executor);
        executor.runAll();
    }
    return result;
}

}  // namespace corvex
