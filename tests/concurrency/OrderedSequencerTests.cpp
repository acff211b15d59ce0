#include <algorithm>
#include <atomic>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/GroupedItemsSequencer.h>
#include <Corvex/concurrency/GuidedItemSequencer.h>
#include <Corvex/concurrency/IndeterminateItemSequencer.h>
#include <Corvex/platform/Log.h>

#include "SequencerSchedules.h"

namespace corvex::orderedSequencerTests {
namespace {

using Guided = GuidedItemSequencer<int, std::string>;
using Grouped = GroupedItemsSequencer<int, std::string>;
using Indeterminate = IndeterminateItemSequencer<int, std::string>;

template <class Sequencer>
Task<> consume(Sequencer sequencer, std::string* trace) {
    const auto result = co_await sequencer.next();
    if constexpr (requires { result->item; }) {
        *trace += "-" + (result ? result->item : ".");
    } else {
        *trace += "-" + result.value_or(".");
    }
}

/// The keys that a letter adds at once; itself for a digit.
std::string keysOf(char step) { return step == 'A' ? "529" : step == 'B' ? "731" : std::string(1, step); }

auto addTo(const Grouped& sequencer, const std::map<int, std::string>& items) { return sequencer.add(items); }
template <class Sequencer>
auto addTo(const Sequencer& sequencer, const std::map<int, std::string>& items) {
    return sequencer.add(items.begin()->second, items.begin()->first);
}

/// "+3" is an addition that has ended, "!3" one that is refused, "-3" what comes out, "-." the end.
template <class Sequencer>
std::string traceOf(const Sequencer& sequencer, const std::string& steps) {
    std::string trace;
    std::map<char, int> additions;
    const auto add = [&](char step) {
        std::map<int, std::string> items;
        for (const char key : keysOf(step)) items.emplace(key - '0', itemOf(key, additions[key]));
        const std::string name = itemOf(step, additions[step]);
        for (const char key : keysOf(step)) ++additions[key];
        return traceAdding(&trace, name, [sequencer, items] { return addTo(sequencer, items); });
    };
    return play(
        steps, sequencer, trace, "?", add, [&](char) { return consume(sequencer, &trace); }, [](ManualExecutor&) {});
}

std::optional<int> successor(const int& key) { return key + 1; }
std::optional<int> stopsAtTwo(const int& key) { return key == 2 ? std::nullopt : std::optional(key + 1); }
std::optional<int> upAndDown(const int& key) { return key < 5 ? 9 - key : 10 - key; }  // 1, 8, 2, 7, 3, 6, 4, 5, 5, ...

TEST(GuidedItemSequencer, schedules) {
    constexpr SequencerRow rows[] = {
        {"order of keys", 1, "312 ??? ", "+3+1+2-1-2-3"},
        {"waits for the key between", 1, "1235 ???? 4 ", "+1+2+3+5-1-2-3+4-4"},
        {"consumers in order, posted", 1, "?? 21 ", "+2+1-1-2"},
        {"add ends before its consumer runs", 1, "? 12 ", "+1+2-1"},
        {"replaced while it waits", 1, "22 1?? ", "+2+2'+1-1-2'"},
        {"what is left goes out over the gaps", 1, "57 |??? ", "+5+7-5-7-."},
        {"what is left in the order of its keys", 8, "2913 |???? ", "+2+9+1+3-1-2-3-9"},
        {"closing frees who waits", 1, "?? 3 | ", "+3-3-."},
        {"refused once closed", 1, "1 |2?? ", "+1!2-1-."},
        {"closing twice", 1, "1 ||?? ", "+1-1-."},
        {"destroyed consumer", 1, "o? 1 ", "+1-1"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(traceOf(Guided(int(row.setting), successor), row.steps), row.trace) << row.name;
    EXPECT_EQ(traceOf(Guided(1, stopsAtTwo), "123 ??? 2 "), "+1+2+3-1-2+2'-2'");
    EXPECT_EQ(traceOf(Guided(1, upAndDown), "12378 ????? "), "+1+2+3+7+8-1-8-2-7-3");
}

/// The key update block may use the sequencer, and what it does takes effect after the hand-out that is under way.
TEST(GuidedItemSequencer, closingDuringAHandOutServesEarlierConsumersFirst) {
    std::string trace;
    ManualExecutor executor, other;
    std::optional<Guided> sequencer;
    sequencer.emplace(1, [&](const int& key) {
        if (key == 1) {
            sequencer->close();
            spawn(consume(*sequencer, &trace), other);
            other.runAll();
        }
        return successor(key);
    });
    for (int i = 0; i < 3; ++i) spawn(consume(*sequencer, &trace), executor);
    executor.runAll();
    for (const char key : {'0', '2', '4', '1'}) {
        spawn(traceAdding(&trace, std::string(1, key),
                          [&, key] { return sequencer->add(std::string(1, key), key - '0'); }),
              executor);
    }
    executor.runAll();
    other.runAll();
    EXPECT_EQ(trace, "+0+2+4+1-1-2-0-4");
}

TEST(GuidedItemSequencer, aConsumerMayLetGoOfItDuringTheHandOut) {
    ManualExecutor executor, other;
    auto owned = std::make_shared<int>();
    const std::weak_ptr<int> watched = owned;
    bool isAlive = false;
    std::optional<Guided> sequencer;
    sequencer.emplace(1, [&, kept = std::move(owned)](const int&) -> std::optional<int> {
        const auto see = [&other, &watched, &isAlive] { other.runAll(), isAlive = !watched.expired(); };
        see();  // all that it needs is on the stack
        return std::nullopt;
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
    std::map<int, int> left;
    while (const auto entry = co_await sequencer.next()) {
        EXPECT_TRUE(left.empty() || left.rbegin()->first < entry->key);
        left.emplace(entry->key, entry->item);
    }
    EXPECT_EQ(left, waiting) << stride << " " << disorder;
}

TEST(GuidedItemSequencer, findsWhatIsDueAmongManyKeys) {
    std::mt19937 random(11);
    ManualExecutor executor;
    for (int stride = 1; stride <= 3; ++stride) {
        for (unsigned disorder = 1; disorder <= 256; disorder *= 2) {
            const GuidedItemSequencer<int, int> sequencer(
                0, [stride](const int& key) { return std::optional(key + stride); });
            spawn(playKeys(sequencer, stride, disorder, &random), executor);
            executor.runAll();
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

/// One addition finds a thousand consumers whose items are all there; closing comes in between.
TEST(GuidedItemSequencer, oneCallHandsOutAFewItemsAndTheRestFollowsInOrder) {
    using Numbers = GuidedItemSequencer<int, int>;
    int handedOut = 0;
    const Numbers sequencer(0, [&handedOut](const int& key) { return ++handedOut, successor(key); });
    auto add = [](Numbers target, int key) -> Task<> { co_await target.add(0, key); };
    auto take = [](Numbers source, std::vector<int>* keys) -> Task<> {
        keys->push_back((co_await source.next())->key);
    };
    ManualExecutor consumers, others;
    std::vector<int> keys, expected{2000};
    for (int i = 0; i < 1000; ++i) spawn(take(sequencer, &keys), consumers);
    consumers.runAll();
    for (int key = 999; key >= 0; --key) expected.insert(expected.begin(), key);
    for (auto key = expected.rbegin(); key != expected.rend(); ++key) spawn(add(sequencer, *key), others);
    others.runAll();
    EXPECT_LT(handedOut, 500);
    sequencer.close();
    spawn(take(sequencer, &keys), others);
    others.runAll();
    consumers.runAll();
    others.runAll();
    EXPECT_EQ(keys, expected);
}

TEST(GroupedItemsSequencer, schedules) {
    constexpr SequencerRow rows[] = {
        {"smallest first over all groups", 0, "AB ?????? ", "+A+B-1-2-3-5-7-9"},
        {"no waiting for keys", 0, "A ? B ?? ", "+A-2+B-1-3"},
        {"consumers in order, posted", 0, "???? A ", "+A-2-5-9"},
        {"a key that is there keeps its first item", 0, "A5 ? 2 ??? ", "+A+5'-2+2'-2'-5-9"},
        {"what is left, then the end", 0, "A |???? ", "+A-2-5-9-."},
        {"closing frees who waits", 0, "?? | ", "-.-."},
        {"refused once closed", 0, "|A? ", "!A-."},
        {"destroyed consumer", 0, "o? 1 ", "+1-1"},
    };
    for (const auto& row : rows) {
        const Grouped sequencer;
        EXPECT_EQ(traceOf(sequencer, row.steps), row.trace) << row.name;
    }
    const Grouped sequencer;
    EXPECT_EQ(sequencer.nextKeyInSequnce(), std::nullopt);
    (void)traceOf(sequencer, "A ?? ");
    EXPECT_EQ(sequencer.nextKeyInSequnce(), 5);
}

TEST(IndeterminateItemSequencer, schedules) {
    constexpr SequencerRow rows[] = {
        {"ready behind the window", 2, "12 ? 3 ", "+1+2+3-1"},
        {"ready before a smaller key that came later", 2, "231 4? 5? ", "+2+3+1+4-2+5-1"},
        {"smaller keys outrank nobody", 2, "4321 ? ", "+4+3+2+1"},
        {"in order behind the window", 2, "21435 ???? ", "+2+1+4+3+5-1-2"},
        {"window 0 is 1", 0, "1 ? 2 ", "+1+2-1"},
        {"late is ready at the next larger key", 2, "123?4? 1 5 ?? ", "+1+2+3-1+4-2+1'+5-1'-3"},
        {"pending keeps its first item", 3, "11 |?? ", "+1+1'-1-."},
        {"ready keeps its first item", 1, "12 1 3 |???? ", "+1+2+1'+3-1-2-3-."},
        {"ready keeps its first item when closing", 1, "12 1 |??? ", "+1+2+1'-1-2-."},
        {"closing makes all ready", 9, "5143 |????? ", "+5+1+4+3-1-3-4-5-."},
        {"closing serves who waits", 9, "??? 21 | ", "+2+1-1-2-."},
        {"closing frees who waits", 9, "? | ", "-."},
        {"refused once closed", 1, "1 |2?? ", "+1!2-1-."},
        {"destroyed consumer", 1, "o? 12 ", "+1+2-1"},
    };
    setLogSink([](LogLevel, std::string_view) {});
    for (const auto& row : rows) EXPECT_EQ(traceOf(Indeterminate(row.setting), row.steps), row.trace) << row.name;
    setLogSink({});
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
    EXPECT_EQ(sequencer.highestSuppliedKey(), 7);  // an equal key is no disorder
    EXPECT_EQ(sequencer.supplied(), 5);
}

TEST(SequencerEntry, isItsKey) {
    using Entry = Indeterminate::Entry;
    EXPECT_EQ(Entry(3, "a"), Entry(3, "b"));
    EXPECT_LT(Entry(3, "b"), Entry(4, "a"));
    EXPECT_EQ(std::hash<Entry>()(Entry(3, "a")), std::hash<Entry>()(Entry(3, "b")));
    EXPECT_EQ(Entry(3, "a").outrankings, 0);
}

/// The sequencers in plain words: lists that are walked from the start.
class Model {
public:
    virtual ~Model() = default;
    std::string trace;

    void step(char step) {
        if (step == '?') {
            ++waiting_;
        } else if (step == '|') {
            isOpen_ = false;
            close();
        } else if (step != ' ') {
            const std::string item = itemOf(step, additions_[step]++);
            trace += (isOpen_ ? "+" : "!") + item;
            if (isOpen_) add(step - '0', item);
        }
        for (; waiting_ > 0; --waiting_) {
            const auto item = take();
            if (!item && isOpen_) return;
            trace += "-" + item.value_or(".");
        }
    }

protected:
    using Items = std::map<int, std::string>;
    static std::optional<std::string> takeFirst(Items& items) {
        return items.empty() ? std::nullopt : std::optional(items.extract(items.begin()).mapped());
    }
    virtual void add(int key, const std::string& item) = 0;
    virtual std::optional<std::string> take() = 0;
    virtual void close() {}
    bool isOpen_ = true;

private:
    std::map<char, int> additions_;
    int waiting_ = 0;
};

class GuidedModel final : public Model {
    void add(int key, const std::string& item) override { pending_[key] = item; }
    std::optional<std::string> take() override {
        if (!isOpen_) return takeFirst(pending_);
        const auto found = pending_.find(key_);
        if (found == pending_.end()) return std::nullopt;
        key_ = upAndDown(key_).value_or(key_);
        return pending_.extract(found).mapped();
    }
    Items pending_;
    int key_ = 1;
};

class GroupedModel final : public Model {
    void add(int key, const std::string& item) override { pending_.emplace(key, item); }
    std::optional<std::string> take() override { return takeFirst(pending_); }
    Items pending_;
};

class IndeterminateModel final : public Model {
public:
    explicit IndeterminateModel(int window) : window_(window) {}

private:
    void add(int key, const std::string& item) override {
        if (!pending_.emplace(key, item).second) return;
        outrankings_[key] = 0;
        const Items before = pending_;
        for (const auto& [other, value] : before) {
            if (other >= key || (++outrankings_[other] < window_ && other > highest_)) continue;
            ready_.emplace(other, value);
            pending_.erase(other);
        }
    }
    std::optional<std::string> take() override {
        if (!ready_.empty()) highest_ = std::max(highest_, ready_.begin()->first);
        return takeFirst(ready_);
    }
    void close() override { ready_.merge(std::exchange(pending_, {})); }
    Items pending_, ready_;
    std::map<int, int> outrankings_;
    int window_, highest_ = -1;
};

TEST(OrderedSequencers, behaveAsTheirModels) {
    setLogSink([](LogLevel, std::string_view) {});
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        const std::string steps = randomSteps(random, round % 2 == 0 ? "0123456789????" : "12345678?????????", 80);
        const int window = round % 5;
        GuidedModel guided;
        GroupedModel grouped;
        IndeterminateModel indeterminate(window);
        for (const char step : steps)
            for (Model* model :
                 {static_cast<Model*>(&guided), static_cast<Model*>(&grouped), static_cast<Model*>(&indeterminate)})
                model->step(step);
        EXPECT_EQ(traceOf(Guided(1, upAndDown), steps), guided.trace) << steps;
        EXPECT_EQ(traceOf(Grouped(), steps), grouped.trace) << steps;
        EXPECT_EQ(traceOf(Indeterminate(static_cast<unsigned>(window)), steps), indeterminate.trace) << steps;
    }
    setLogSink({});
}

}  // namespace
}  // namespace corvex::orderedSequencerTests
