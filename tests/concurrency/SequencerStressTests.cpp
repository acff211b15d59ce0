#include <algorithm>
#include <atomic>
#include <chrono>
#include <optional>
#include <random>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/GroupedItemsSequencer.h>
#include <Corvex/concurrency/GuidedItemSequencer.h>
#include <Corvex/concurrency/IndeterminateItemSequencer.h>
#include <Corvex/concurrency/MultiFeedItemSequencer.h>
#include <Corvex/concurrency/OrvaneBlockingFifoBuffer.h>
#include <Corvex/platform/Sleep.h>
#include <Corvex/platform/Task.h>
#include <Corvex/platform/TaskHandle.h>
#include <Corvex/platform/ThreadPool.h>

#include <tests/LoggedBy.h>

namespace corvex::sequencerStressTests {
namespace {

using Keys = std::vector<int>;
constexpr int keyCount = 4000;

/// The keys of one of several producers, at most `reach` of its own places out of order.
Keys keysOf(int producer, int producerCount, std::ptrdiff_t reach, unsigned seed) {
    Keys keys;
    for (int key = producer; key < keyCount; key += producerCount) keys.push_back(key);
    std::mt19937 random(seed);
    for (auto first = keys.begin(); first != keys.end();) {
        const auto end = first + std::min(reach, keys.end() - first);
        std::shuffle(first, end, random);
        first = end;
    }
    return keys;
}

/// What was taken in, by each producer.
template <class Sequencer, class Add>
Task<Keys> produce(Sequencer sequencer, Keys keys, Add add) {
    Keys accepted;
    try {
        for (const int key : keys) {
            co_await add(sequencer, key);
            accepted.push_back(key);
            if (key % 512 == 0) co_await sleepFor(std::chrono::microseconds(5));
        }
    } catch (const DataCoordinationError&) {  // closed meanwhile
    }
    co_return accepted;
}

/// What came out. Every item is minus its key.
template <class Sequencer>
Task<Keys> consume(Sequencer sequencer) {
    Keys keys;
    while (const auto entry = co_await sequencer.next()) {
        if constexpr (requires { entry->key; }) {
            EXPECT_EQ(entry->item, -entry->key);
            keys.push_back(entry->key);
        } else {
            keys.push_back(-*entry);
        }
    }
    co_return keys;
}

/// Between whatever happens then. Never where the delay is negative.
void closeAfter(int microseconds, const auto& sequencer) {
    if (microseconds < 0) return;
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
    sequencer.close();
}

Keys sorted(const std::vector<Keys>& lists) {
    Keys all;
    for (const Keys& list : lists) all.insert(all.end(), list.begin(), list.end());
    std::sort(all.begin(), all.end());
    return all;
}

std::vector<Keys> results(std::vector<TaskHandle<Keys>>& handles) {
    std::vector<Keys> lists;
    lists.reserve(handles.size());
    for (auto& handle : handles) lists.push_back(std::move(*std::move(handle).waitSync()).value());
    return lists;
}

/// Producers, consumers, and microseconds until closing; -1: when all has been added.
constexpr int rows[][3] = {{1, 1, -1}, {4, 1, -1},  {4, 3, -1},  {200, 100, -1},
                           {4, 3, 0},  {4, 1, 300}, {4, 3, 900}, {100, 50, 2000}};

/// Whether keys of the same remainder come in their order.
bool isOrdered(const Keys& keys, int divisor) {
    std::vector<int> last(static_cast<std::size_t>(divisor), -1);
    return std::all_of(keys.begin(), keys.end(), [&](int key) {
        return std::exchange(last[static_cast<std::size_t>(key % divisor)], key) < key;
    });
}

enum class Order : std::uint8_t { none, ofAll, ofEachProducer };

/// What was taken in comes out once, also around closing; to each consumer in order where order is promised.
template <class Make, class Add>
void stress(Make make, Add add, Order order) {
    unsigned seed = 1;
    for (const auto& row : rows) {
        const auto [producerCount, consumerCount, closingAfter] = row;
        const std::string name = testing::PrintToString(row);
        ThreadPool pool(4);
        const auto sequencer = make();
        std::vector<TaskHandle<Keys>> producers, consumers;
        for (int i = 0; i < consumerCount; ++i) consumers.push_back(spawn(consume(sequencer), pool));
        for (int i = 0; i < producerCount; ++i) {
            const Keys keys = keysOf(i, producerCount, order == Order::ofEachProducer ? 1 : 16, seed++);
            producers.push_back(spawn(produce(sequencer, keys, add), pool));
        }
        closeAfter(closingAfter, sequencer);
        const std::vector<Keys> accepted = results(producers);
        if (closingAfter < 0) sequencer.close();
        const std::vector<Keys> delivered = results(consumers);
        EXPECT_EQ(sorted(delivered), sorted(accepted)) << name;
        EXPECT_TRUE(closingAfter >= 0 || sorted(accepted).size() == keyCount) << name;
        for (const Keys& keys : delivered) {
            EXPECT_TRUE(order == Order::none || isOrdered(keys, order == Order::ofAll ? 1 : producerCount)) << name;
        }
    }
}

constexpr auto addOne = [](const auto& sequencer, int key) { return sequencer.add(-key, key); };

TEST(SequencerStress, guided) {
    stress([] { return GuidedItemSequencer<int, int>(0, [](const int& key) { return std::optional(key + 1); }); },
           addOne, Order::ofAll);
}

TEST(SequencerStress, grouped) {
    const auto addGroup = [](const auto& sequencer, int key) { return sequencer.add({{key, -key}}); };
    stress([] { return GroupedItemsSequencer<int, int>(); }, addGroup, Order::none);
}

TEST(SequencerStress, fifo) {
    const auto add = [](const auto& sequencer, int key) { return sequencer.add(-key); };
    unsigned capacity = 0;
    stress([&] { return OrvaneBlockingFifoBuffer<int>(std::exchange(capacity, 2 * capacity + 3)); }, add,
           Order::ofEachProducer);
}

TEST(SequencerStress, indeterminate) {
    (void)test::loggedBy([] { stress([] { return IndeterminateItemSequencer<int, int>(16); }, addOne, Order::none); });
}

using MultiFeed = MultiFeedItemSequencer<int, int>;

/// Asks for one index after the other, together with others, until there is nothing.
Task<Keys> requestAll(MultiFeed sequencer, std::atomic<int>* nextIndex) {
    Keys keys;
    for (;;) {
        const int index = nextIndex->fetch_add(1);
        if (index >= keyCount) co_return keys;
        const auto item = co_await sequencer.requestItemsAtIndex(index);
        if (!item && sequencer.isOpen()) ADD_FAILURE() << "nothing for " << index;
        if (item) keys.push_back(-*item);
    }
}

TEST(SequencerStress, multiFeed) {
    constexpr int feeds = 4;
    for (const int closingAfter : {-1, -1, 0, 300, 900, 2000}) {
        ThreadPool pool(4);
        const MultiFeed sequencer(3);
        std::atomic<int> nextIndex{0};
        std::vector<TaskHandle<Keys>> producers, consumers;
        for (int i = 0; i < 3; ++i) consumers.push_back(spawn(requestAll(sequencer, &nextIndex), pool));
        for (int feed = 0; feed < feeds; ++feed) {
            const Keys keys = keysOf(feed, feeds, 1, 0);
            auto add = [feed](const MultiFeed& target, int key) { return target.enqueueItems(-key, key, feed); };
            producers.push_back(spawn(produce(sequencer, keys, add), pool));
        }
        closeAfter(closingAfter, sequencer);
        std::vector<Keys> delivered = results(consumers);
        sequencer.close();
        // Closing frees no producer that waits: what has been stored is asked for until all of them have ended.
        for (auto isDone = false; !isDone;) {
            isDone = std::ranges::all_of(producers, [](const auto& handle) { return handle.isFinished(); });
            nextIndex = 0;
            delivered.push_back(spawn(requestAll(sequencer, &nextIndex), pool).waitSync()->value());
        }
        EXPECT_EQ(sorted(delivered), sorted(results(producers))) << closingAfter;
    }
}

}  // namespace
}  // namespace corvex::sequencerStressTests
