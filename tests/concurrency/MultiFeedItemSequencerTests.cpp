#include <algorithm>
#include <deque>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/MultiFeedItemSequencer.h>

#include "SequencerSchedules.h"

namespace corvex::multiFeedItemSequencerTests {
namespace {

using Sequencer = MultiFeedItemSequencer<std::string, std::string>;

/// Even indexes come from feed "even", odd ones from "odd". "a" to "j" ask for index 0 to 9, "o" for 0; "x" adds to 0.
constexpr std::string_view asking = "abcdefghij";
std::string feedOf(int index) { return index % 2 == 0 ? "even" : "odd"; }

Task<> request(Sequencer sequencer, std::string* trace, int index) {
    const auto item = co_await sequencer.requestItemsAtIndex(index);
    *trace += "-" + item.value_or(".");
}

std::string traceOf(const Sequencer& sequencer, const std::string& steps) {
    std::string trace;
    std::map<char, int> additions;
    std::size_t addedCount = 0;
    const auto add = [&](char step) {
        const int index = step == 'x' ? 0 : step - '0';
        const std::string item = itemOf(step, additions[step]++);
        ++addedCount;
        return traceAdding(&trace, item,
                           [sequencer, index, item] { return sequencer.enqueueItems(item, index, feedOf(index)); });
    };
    const auto ask = [&](char step) { return request(sequencer, &trace, step == 'o' ? 0 : step - 'a'); };
    return play(steps, sequencer, trace, asking, add, ask, [&](ManualExecutor& executor) {
        // Closing frees no producer: only taking what is stored does, where no slot has been lost.
        for (std::size_t round = 0; round < addedCount; ++round) {
            for (int index = 0; index < 10; ++index) spawn(request(sequencer, &trace, index), executor);
            executor.runAll();
        }
    });
}

TEST(MultiFeedItemSequencer, schedules) {
    constexpr SequencerRow rows[] = {
        {"by index, in any order", 9, "312 dbc ", "+3+1+2-3-1-2"},
        {"a feed's third item waits for a slot", 2, "024 c a ", "+0+2-2+4-0"},
        {"feeds are throttled apart", 1, "021 b a ", "+0+1-1-0+2"},
        {"all requests for an index, in order, posted", 1, "dd e d 3 ", "+3-3-3-3"},
        {"delivered without a slot", 1, "0 ce 24 ", "+0+2+4-2-4"},
        {"delivered when a slot is free at last", 1, "02 c a ", "+0-0+2-2"},
        {"producers of a feed in order", 1, "0246 a c e ", "+0-0+2-2+4-4+6"},
        {"capacity 0 only hands over", 0, "xc 2 ", "+2-2"},
        {"closing frees requests", 1, "ab | ", "-.-."},
        {"closing keeps what is stored", 2, "02 |cab ", "+0+2-2-0-."},
        {"refused once closed", 2, "0 |2 a ", "+0!2-0"},
        {"admitted after closing", 1, "02 | ac c ", "+0-0-.+2-2"},
        {"closing frees no producer", 1, "02 | ", "+0"},
        {"replaced, and the slot of the first is lost", 2, "00 a 2 4 ", "+0+0'-0'+2"},
        {"disorder beyond the capacity stalls", 2, "2460 a c e ", "+2+4-2+6-4+0-0"},
        {"destroyed request", 1, "oa 0 ", "+0-0"},
        {"destroyed producer", 1, "0 x2 a ", "+0-0+2"},
    };
    for (const auto& row : rows) EXPECT_EQ(traceOf(Sequencer(row.setting), row.steps), row.trace) << row.name;
}

/// The sequencer in plain words: numbers of slots and requests, and lists.
class Model {
public:
    explicit Model(int capacity) : capacity_(capacity) {}
    std::string trace;

    void step(char step) {
        if (step == '|') {
            isOpen_ = false;
            for (auto& [index, count] : requests_)
                for (; count > 0; --count) trace += "-.";
        } else if (asking.find(step) != std::string_view::npos) {
            ask(step - 'a');
        } else if (step != ' ') {
            add(step - '0', std::string(1, step));
        }
    }

private:
    void add(int index, const std::string& item) {
        if (deliver(index, item)) return;
        if (!isOpen_) {
            trace += "!" + item;
        } else if (taken_[index % 2] < capacity_) {
            ++taken_[index % 2];
            store(index, item);
        } else {
            producers_[index % 2].emplace_back(index, item);
        }
    }
    void ask(int index) {
        const auto found = stored_.find(index);
        if (found != stored_.end()) {
            trace += "-" + found->second;
            stored_.erase(found);
            release(index % 2);
        } else if (isOpen_) {
            ++requests_[index];
        } else {
            trace += "-.";
        }
    }
    bool deliver(int index, const std::string& item) {
        if (requests_[index] == 0) return false;
        trace += "+" + item;
        for (; requests_[index] > 0; --requests_[index]) trace += "-" + item;
        return true;
    }
    void store(int index, const std::string& item) {
        if (deliver(index, item)) return release(index % 2);
        trace += "+" + item;
        stored_[index] = item;
    }
    void release(int feed) {
        --taken_[feed];
        if (producers_[feed].empty()) return;
        const auto [index, item] = producers_[feed].front();
        producers_[feed].pop_front();
        ++taken_[feed];
        store(index, item);
    }

    int capacity_;
    bool isOpen_ = true;
    std::map<int, int> requests_;
    std::map<int, std::string> stored_;
    int taken_[2] = {0, 0};
    std::deque<std::pair<int, std::string>> producers_[2];
};

TEST(MultiFeedItemSequencer, behavesAsItsModel) {
    std::mt19937 random(5);
    for (int round = 0; round < 500; ++round) {
        std::string letters = "0123456789";  // each index once, or slots would be lost and producers with them
        std::shuffle(letters.begin(), letters.end(), random);
        std::string steps;
        for (const char letter : letters)
            steps += std::string(1, letter) + " " + randomSteps(random, asking, static_cast<int>(random() % 4));
        const int capacity = 1 + round % 3;
        Model model(capacity);
        for (const char step : steps) model.step(step);
        EXPECT_EQ(traceOf(Sequencer(static_cast<unsigned>(capacity)), steps), model.trace) << steps;
    }
}

TEST(MultiFeedItemSequencerDeathTest, capacitiesBeyondTheSignedRangeStopTheProcess) {
    constexpr std::uint64_t beyond = std::uint64_t{1} << 63;
    const Sequencer withoutFeeds(beyond);
    EXPECT_EQ(withoutFeeds.capacityPerFeed(), beyond);
    EXPECT_DEATH(Sequencer(beyond, std::vector<std::string>{"even"}), "");
}

}  // namespace
}  // namespace corvex::multiFeedItemSequencerTests
