#include <atomic>
#include <map>
#include <memory>
#include <numeric>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/GroupedItemsSequencer.h>
#include <Corvex/concurrency/GuidedItemSequencer.h>
#include <Corvex/concurrency/IndeterminateItemSequencer.h>
#include <Corvex/platform/Log.h>

#include <tests/LoggedBy.h>

#include "Schedules.h"

namespace corvex::orderedSequencerTests {
namespace {

using Guided = GuidedItemSequencer<int, std::string>;
using Indeterminate = IndeterminateItemSequencer<int, std::string>;

/// Digits add an item of that key.
template <class Sequencer>
std::string traceOf(const Sequencer& sequencer, std::string_view steps) {
    const auto add = [&sequencer](char step, const std::string& item) { return sequencer.add(item, step - '0'); };
    return corvex::traceOf(sequencer, steps, "?", add, [&sequencer](char) { return sequencer.next(); });
}

std::optional<int> successor(const int& key) { return key + 1; }

TEST(GuidedItemSequencer, schedules) {
    constexpr Schedule rows[] = {
        {"waits for the key between", 1, "1235 ???? 4 ", "+1+2+3+5-1-2-3+4-4"},
        {"consumers in order, posted", 1, "?? 21 ", "+2+1-1-2"},
        {"add ends before its consumer runs", 1, "? 12 ", "+1+2-1"},
        {"replaced while it waits", 1, "22 1?? ", "+2+2'+1-1-2'"},
        {"what is left in the order of its keys, then the end", 8, "2913 |????? ", "+2+9+1+3-1-2-3-9-."},
        {"closing frees who waits", 1, "?? 3 | ", "+3-3-."},
        {"refused once closed, also twice", 1, "1 ||2?? ", "+1!2-1-."},
    };
    for (const auto& row : rows) EXPECT_EQ(traceOf(Guided(row.setting, successor), row.steps), row.trace) << row.name;
    const auto stopsAtTwo = [](const int& key) { return key == 2 ? std::nullopt : std::optional(key + 1); };
    EXPECT_EQ(traceOf(Guided(1, stopsAtTwo), "123 ??? 2 "), "+1+2+3-1-2+2'-2'");
    const auto upAndDown = [](const int& key) { return std::optional(key < 5 ? 9 - key : 10 - key); };
    EXPECT_EQ(traceOf(Guided(1, upAndDown), "12378 ????? "), "+1+2+3+7+8-1-8-2-7-3");
}

TEST(GuidedItemSequencer, aConsumerMayLetGoOfItDuringTheHandOut) {
    ManualExecutor executor, other;
    auto owned = std::make_shared<int>();
    const std::weak_ptr<int> watched = owned;
    bool isAlive = false;
    std::optional<Guided> sequencer;
    sequencer.emplace(1, [&, kept = std::move(owned)](const int&) -> std::optional<int> {
        const auto see = [&other, &watched, &isAlive] { other.runAll(), isAlive = !watched.expired(); };
        return see(), std::nullopt;  // all that it needs is on the stack
    });
    auto takeAndLetGo = [](std::optional<Guided>* last) -> Task<> {
        co_await (*last)->next();
        last->reset();
    };
    spawn(takeAndLetGo(&sequencer), other);
    other.runAll();
    std::string trace;
    spawn(traceAdding(&trace, "1", [&] { return sequencer->add("1", 1); }), executor);
    executor.runAll();
    EXPECT_TRUE(isAlive);
    EXPECT_TRUE(watched.expired());
}

/// Adds keys that come up to `disorder` places out of order, some of them twice, of which every third may never be due, and
/// takes what is due now and then. The model gets the same.
Task<> playKeys(GuidedItemSequencer<int, int> sequencer, int stride, unsigned disorder, std::mt19937* random) {
    std::map<int, int> waiting;
    int due = 0;
    for (int i = 0; i < 300; ++i) {
        const int key = i + static_cast<int>((*random)() % disorder);
        co_await sequencer.add(i, key);
        waiting[key] = i;
        for (; (*random)() % 4 != 0 && waiting.contains(due); due += stride) {
            const auto entry = co_await sequencer.next();
            EXPECT_EQ(std::pair(entry->key, entry->item), std::pair(due, waiting.extract(due).mapped()));
        }
    }
    sequencer.close();
    std::vector<std::pair<int, int>> left;
    while (const auto entry = co_await sequencer.next()) left.emplace_back(entry->key, entry->item);
    EXPECT_EQ(left, decltype(left)(waiting.begin(), waiting.end())) << stride << " " << disorder;
}

TEST(GuidedItemSequencer, findsWhatIsDueAmongManyKeys) {
    std::mt19937 random(11);
    ManualExecutor executor;
    for (int stride = 1; stride <= 3; ++stride) {
        for (unsigned disorder = 1; disorder <= 256; disorder *= 2) {
            const GuidedItemSequencer<int, int> sequencer(
                0, [stride](const int& key) { return std::optional(key + stride); });
            const auto player = spawn(playKeys(sequencer, stride, disorder, &random), executor);
            executor.runAll();
            EXPECT_TRUE(player.isFinished()) << stride << " " << disorder;
        }
    }
}

using GuidedState = detail::GuidedState<int, int>;

Task<> takeKey(GuidedState* sequencer, int* key) { *key = (co_await GuidedState::Consumer(*sequencer))->key; }

/// An item has arrived, but its producer cannot yet hand it to the consumer that has waited for it.
TEST(GuidedItemSequencer, whoAsksDoesNotOvertakeWhoHasWaited) {
    const auto sequencer = Shared<GuidedState>::make(0, successor);
    ManualExecutor executor;
    int early = -1, late = -1;
    spawn(takeKey(sequencer.get(), &early), executor);
    executor.runAll();
    spawn(takeKey(sequencer.get(), &late), executor);
    std::atomic<bool> isAdding{false};
    sequencer->mutex.lock();
    std::thread producer([&] {
        isAdding = true;
        for (const int key : {0, 1}) {
            GuidedState::Supplied entry(key, 0);
            sequencer->add(entry);
        }
    });
    while (!isAdding) std::this_thread::yield();
    for (int i = 0; i < 100'000; ++i) (void)isAdding.load();  // by then it waits for the mutex
    sequencer->mutex.unlock();
    executor.runAll();
    producer.join();
    executor.runAll();
    EXPECT_EQ(std::pair(early, late), std::pair(0, 1));
}

/// One addition finds a thousand consumers whose items are all there. The key update block may use the sequencer: it closes
/// it, which takes effect after the hand-out that is under way; who asks later gets the smallest that is left.
TEST(GuidedItemSequencer, oneCallHandsOutAFewItemsAndTheRestFollowsInOrderBeforeAClosing) {
    using Numbers = GuidedItemSequencer<int, int>;
    auto add = [](Numbers target, int key) -> Task<> { co_await target.add(0, key); };
    auto take = [](Numbers source, std::vector<int>* keys) -> Task<> {
        keys->push_back((co_await source.next())->key);
    };
    ManualExecutor consumers, late, others;
    std::vector<int> keys, expected(1000);
    std::iota(expected.begin(), expected.end(), 1);
    expected.insert(expected.end(), {0, 1001});
    int handedOut = 0;
    std::optional<Numbers> sequencer;
    const auto askLate = [&] { spawn(take(*sequencer, &keys), late), late.runAll(); };
    sequencer.emplace(1, [&](const int& key) {
        if (++handedOut == 9) sequencer->close(), askLate();
        return successor(key);
    });
    for (int i = 0; i < 1000; ++i) spawn(take(*sequencer, &keys), consumers);
    consumers.runAll();
    spawn(add(*sequencer, 0), others);
    for (int key = 1001; key > 0; --key) spawn(add(*sequencer, key), others);
    others.runAll();
    EXPECT_LT(handedOut, 500);
    askLate();
    consumers.runAll();
    late.runAll();
    EXPECT_EQ(keys, expected);
}

/// "A" and "B" add several keys at once. The setting is the last key that goes out, also of what a schedule leaves.
TEST(GroupedItemsSequencer, schedules) {
    constexpr Schedule rows[] = {
        {"smallest first over all groups", 9, "AB ?????? ", "+A+B-B1-A2-B3-A5-B7-A9"},
        {"no waiting for keys", 9, "A ? B ?? ", "+A-A2+B-B1-B3"},
        {"consumers in order, posted", 9, "???? A ", "+A-A2-A5-A9"},
        {"a key that is there keeps its first item", 9, "A5 ? 2 ??? ", "+A+5-A2+2-2-A5-A9"},
        {"what is left, then the end", 9, "A |???? ", "+A-A2-A5-A9-."},
        {"closing frees who waits", 0, "?? | ", "-.-."},
        {"refused once closed", 0, "|A? ", "!A-."},
    };
    for (const auto& row : rows) {
        const GroupedItemsSequencer<int, std::string> sequencer;
        const auto add = [&sequencer](char step, const std::string& item) {
            std::map<int, std::string> items;
            if (step < 'A') items.emplace(step - '0', item);
            for (const char key : std::string(step < 'A' ? "" : step == 'A' ? "529" : "731")) {
                items.emplace(key - '0', item + key);
            }
            return sequencer.add(items);
        };
        const auto ask = [&sequencer](char) { return sequencer.next(); };
        EXPECT_EQ(corvex::traceOf(sequencer, row.steps, "?", add, ask), row.trace) << row.name;
        EXPECT_EQ(sequencer.nextKeyInSequnce().value_or(0), row.setting) << row.name;
    }
}

TEST(IndeterminateItemSequencer, schedules) {
    constexpr Schedule rows[] = {
        {"ready behind the window", 2, "12 ? 3 ", "+1+2+3-1"},
        {"ready before a smaller key that came later", 2, "231 4? 5? ", "+2+3+1+4-2+5-1"},
        {"smaller keys outrank nobody", 2, "4321 ? ", "+4+3+2+1"},
        {"in order behind the window", 2, "21435 ???? ", "+2+1+4+3+5-1-2"},
        {"window 0 is 1", 0, "1 ? 2 ", "+1+2-1"},
        {"late is ready at the next larger key", 2, "123?4? 1 2 5 ??? ", "+1+2+3-1+4-2+1'+2'+5-1'-2'-3"},
        {"a key that is pending outranks once", 2, "122 ? ", "+1+2+2'"},
        {"pending keeps its first item", 3, "11 |?? ", "+1+1'-1-."},
        {"ready keeps its first item", 1, "12 1 3 |???? ", "+1+2+1'+3-1-2-3-."},
        {"ready keeps its first item when closing", 1, "12 1 |??? ", "+1+2+1'-1-2-."},
        {"closing makes all ready", 9, "5143 |????? ", "+5+1+4+3-1-3-4-5-."},
        {"closing serves who waits", 9, "??? 21 | ", "+2+1-1-2-."},
        {"refused once closed", 1, "1 |2?? ", "+1!2-1-."},
    };
    (void)test::loggedBy([&rows] {
        for (const auto& row : rows) {
            EXPECT_EQ(traceOf(Indeterminate(static_cast<unsigned>(row.setting)), row.steps), row.trace) << row.name;
        }
    });
}

TEST(IndeterminateItemSequencer, disorderIsLoggedAndKeepsTheHighestKey) {
    std::vector<std::string> lines;
    setLogSink([&](LogLevel level, std::string_view line) {
        EXPECT_EQ(level, LogLevel::info);
        lines.emplace_back(line);
    });
    const Indeterminate sequencer(1);
    (void)traceOf(sequencer, "5 7 ? 3 4 ? 5 8 ??? ");
    setLogSink({});
    EXPECT_EQ(lines,
              (std::vector<std::string>{"CV_IS_S-Out of order sequencing detected.  Payload key: 3 high key: 5",
                                        "CV_IS_S-Out of order sequencing detected.  Payload key: 4 high key: 5"}));
    EXPECT_EQ(sequencer.highestSuppliedKey(), 8);
    EXPECT_EQ(sequencer.supplied(), 6);
}

TEST(SequencerEntry, isItsKey) {
    using Entry = Indeterminate::Entry;
    EXPECT_EQ(Entry(3, "a"), Entry(3, "b"));
    EXPECT_LT(Entry(3, "b"), Entry(4, "a"));
    EXPECT_EQ(std::hash<Entry>()(Entry(3, "a")), std::hash<Entry>()(Entry(3, "b")));
}

}  // namespace
}  // namespace corvex::orderedSequencerTests
