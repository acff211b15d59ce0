#pragma once

#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/DataCoordinationError.h>
#include <Corvex/platform/ManualExecutor.h>

#include "Coroutines.h"

namespace corvex {

/// What one schedule does to a sequencer: "3" adds a further item of the key or index 3, "?" asks for one, "|" closes, " "
/// lets everything run that is posted, "o" is a consumer and "x" a producer that is destroyed while it waits, at the next " ".
/// Other letters mean what the test says. `setting` is a capacity or window.
struct SequencerRow {
    const char* name;
    unsigned setting;
    const char *steps, *trace;
};

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

/// Plays a schedule and gives its trace. `add(step)` and `ask(step)` give tasks; the letters in `asking` ask. At the end
/// `finish(executor)` lets those go that still wait.
template <class Sequencer, class Add, class Ask, class Finish>
std::string play(std::string_view steps, const Sequencer& sequencer, const std::string& trace, std::string_view asking,
                 Add&& add, Ask&& ask, Finish&& finish) {
    ManualExecutor executor;
    std::vector<std::unique_ptr<Abandoned<void>>> abandoned;
    for (const char step : steps) {
        if (asking.find(step) != std::string_view::npos) {
            spawn(ask(step), executor);
        } else if (step == '|') {
            sequencer.close();
        } else if (step == 'o') {
            abandoned.push_back(std::make_unique<Abandoned<void>>(ask(step)));
        } else if (step == 'x') {
            abandoned.push_back(std::make_unique<Abandoned<void>>(add(step)));
        } else if (step == ' ') {
            abandoned.clear();
            executor.runAll();
        } else {
            spawn(add(step), executor);
        }
    }
    executor.runAll();
    std::string result = trace;
    sequencer.close();
    executor.runAll();
    finish(executor);
    return result;
}

/// "3", and for later items of the key "3'", "3''".
inline std::string itemOf(char key, int earlier) { return key + std::string(static_cast<std::size_t>(earlier), '\''); }

/// A schedule of single steps, drawn from the letters; closes near its end, if at all.
inline std::string randomSteps(std::mt19937& random, std::string_view letters, int count) {
    std::string steps;
    for (int i = 0; i < count; ++i) {
        const bool closes = i > count / 2 && random() % 16 == 0;
        steps += closes ? '|' : letters[random() % letters.size()];
        steps += ' ';
    }
    return steps;
}

}  // namespace corvex
