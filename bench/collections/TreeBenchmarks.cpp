#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <ctime>
#include <functional>
#include <map>
#include <memory>
#include <numeric>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <Corvex/collections/AVLTree.h>

#if __has_include(<malloc.h>)
#include <malloc.h>
#endif
#if __has_include(<absl/container/btree_map.h>)
#include <absl/container/btree_map.h>
#define CORVEX_BENCH_ABSL 1
#endif
#if __has_include(<boost/intrusive/avl_set.hpp>)
#include <boost/intrusive/avl_set.hpp>
#define CORVEX_BENCH_BOOST 1
#endif

namespace {

// One face for all: keys and payloads are numbers of 64 bits. `neighbours` adds up the nearest keys at or below and at or
// above a key, 0 unless there are both.

class Corvex {
public:
    void insert(std::int64_t key) { tree_.insert(key, key); }
    bool contains(std::int64_t key) const { return tree_.search(key) != nullptr; }
    void erase(std::int64_t key) { tree_.deleteKey(key); }
    std::int64_t takeFirst() { return tree_.takeMinimum()->key; }
    std::int64_t neighbours(std::int64_t key) const {
        const auto pair = tree_.lowHighSearch(key);
        return pair ? pair->low->key() + pair->high->key() : 0;
    }
    std::int64_t sum() const {
        std::int64_t result = 0;
        Tree::doInOrder(tree_.root(), [&](const auto& node) { result += node.key() + *node.payload(); });
        return result;
    }

private:
    using Tree = corvex::AVLTree<std::int64_t, std::int64_t>;
    Tree tree_;
};

template <class Map>
class MapOf {
public:
    void insert(std::int64_t key) { map_.emplace(key, key); }
    bool contains(std::int64_t key) const { return map_.find(key) != map_.end(); }
    void erase(std::int64_t key) { map_.erase(key); }
    std::int64_t takeFirst() {
        const std::int64_t key = map_.begin()->first;
        map_.erase(map_.begin());
        return key;
    }
    std::int64_t neighbours(std::int64_t key) const {
        const auto high = map_.lower_bound(key);
        if (high == map_.end()) return 0;
        if (high->first == key) return 2 * key;
        return high == map_.begin() ? 0 : high->first + std::prev(high)->first;
    }
    std::int64_t sum() const {
        std::int64_t result = 0;
        for (const auto& [key, payload] : map_) result += key + payload;
        return result;
    }

private:
    Map map_;
};

using StdMap = MapOf<std::map<std::int64_t, std::int64_t>>;
#ifdef CORVEX_BENCH_ABSL
using AbslBtree = MapOf<absl::btree_map<std::int64_t, std::int64_t>>;
#endif

#ifdef CORVEX_BENCH_BOOST
/// Each node is made by new and freed by delete, as the nodes of std::map are.
class BoostAvl {
public:
    BoostAvl() = default;
    BoostAvl(const BoostAvl&) = delete;
    BoostAvl& operator=(const BoostAvl&) = delete;
    ~BoostAvl() { set_.clear_and_dispose(std::default_delete<Node>()); }
    void insert(std::int64_t key) {
        auto node = std::make_unique<Node>(key);
        if (set_.insert(*node).second) static_cast<void>(node.release());
    }
    bool contains(std::int64_t key) const { return set_.find(key, Less()) != set_.end(); }
    void erase(std::int64_t key) { set_.erase_and_dispose(key, Less(), std::default_delete<Node>()); }
    std::int64_t takeFirst() {
        const std::int64_t key = set_.begin()->key;
        set_.erase_and_dispose(set_.begin(), std::default_delete<Node>());
        return key;
    }
    std::int64_t neighbours(std::int64_t key) const {
        const auto high = set_.lower_bound(key, Less());
        if (high == set_.end()) return 0;
        if (high->key == key) return 2 * key;
        return high == set_.begin() ? 0 : high->key + std::prev(high)->key;
    }
    std::int64_t sum() const {
        std::int64_t result = 0;
        for (const Node& node : set_) result += node.key + node.payload;
        return result;
    }

private:
    struct Node : boost::intrusive::avl_set_base_hook<> {
        explicit Node(std::int64_t number) : key(number), payload(number) {}
        friend bool operator<(const Node& a, const Node& b) { return a.key < b.key; }
        std::int64_t key, payload;
    };
    struct Less {
        bool operator()(std::int64_t a, const Node& b) const { return a < b.key; }
        bool operator()(const Node& a, std::int64_t b) const { return a.key < b; }
    };
    boost::intrusive::avl_set<Node> set_;
};
#endif

using Keys = std::vector<std::int64_t>;

/// 2, 4, 6, ... so that every odd number lies between two of them.
Keys evenKeys(std::int64_t count) {
    Keys keys(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < keys.size(); ++i) keys[i] = 2 * static_cast<std::int64_t>(i + 1);
    return keys;
}

Keys shuffledKeys(std::int64_t count, unsigned seed) {
    Keys keys = evenKeys(count);
    std::shuffle(keys.begin(), keys.end(), std::mt19937_64(seed));
    return keys;
}

/// So many keys in so many orders that a branch predictor cannot learn them, also where the tree is small.
std::vector<Keys> shuffledOrders(std::int64_t count, unsigned seed) {
    std::vector<Keys> orders;
    for (std::int64_t total = 0; total < 200'000; total += count) orders.push_back(shuffledKeys(count, seed++));
    return orders;
}

template <class Tree>
std::unique_ptr<Tree> filled(const Keys& keys) {
    auto tree = std::make_unique<Tree>();
    for (const std::int64_t key : keys) tree->insert(key);
    return tree;
}

/// Builds a tree; freeing it is not timed.
template <class Tree>
void insertAll(benchmark::State& state, const std::vector<Keys>& orders) {
    std::size_t round = 0;
    for (auto _ : state) {
        auto tree = filled<Tree>(orders[round++ % orders.size()]);
        benchmark::ClobberMemory();
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range());
}

template <class Tree>
void insertRandom(benchmark::State& state) {
    insertAll<Tree>(state, shuffledOrders(state.range(), 1));
}

template <class Tree>
void insertAscending(benchmark::State& state) {
    insertAll<Tree>(state, {evenKeys(state.range())});
}

template <class Tree>
void eraseRandom(benchmark::State& state) {
    const Keys inserted = shuffledKeys(state.range(), 1);
    const std::vector<Keys> orders = shuffledOrders(state.range(), 2);
    std::size_t round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto tree = filled<Tree>(inserted);
        state.ResumeTiming();
        for (const std::int64_t key : orders[round++ % orders.size()]) tree->erase(key);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range());
}

/// Asks a tree of shuffled keys about all of them, in another order, each moved by `offset`.
template <class Tree, class Question>
void ask(benchmark::State& state, std::int64_t offset, Question&& question) {
    const auto tree = filled<Tree>(shuffledKeys(state.range(), 1));
    const std::vector<Keys> orders = shuffledOrders(state.range(), 2);
    std::size_t round = 0;
    for (auto _ : state) {
        for (const std::int64_t key : orders[round++ % orders.size()])
            benchmark::DoNotOptimize(question(*tree, key + offset));
    }
    state.SetItemsProcessed(state.iterations() * state.range());
}

template <class Tree>
void searchHit(benchmark::State& state) {
    ask<Tree>(state, 0, [](const Tree& tree, std::int64_t key) { return tree.contains(key); });
}

template <class Tree>
void searchMiss(benchmark::State& state) {
    ask<Tree>(state, 1, [](const Tree& tree, std::int64_t key) { return tree.contains(key); });
}

template <class Tree>
void neighbours(benchmark::State& state) {
    ask<Tree>(state, 1, [](const Tree& tree, std::int64_t key) { return tree.neighbours(key); });
}

/// Gives what the allocator keeps back to the system, so that every tree gets fresh memory, whatever was freed before it.
void forgetFreedMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

/// What is timed in turns, in this order.
constexpr std::array<const char*, 4> turns = {"insert", "search", "neighbours", "erase"};
using Times = std::array<std::vector<double>, turns.size()>;

/// Builds a tree, asks it and empties it again. Adds the processor time of one operation of each kind, in nanoseconds.
template <class Tree>
void timeOneTree(const Keys& inserted, const Keys& asked, Times& times) {
    forgetFreedMemory();
    auto tree = std::make_unique<Tree>();
    auto turn = times.begin();
    const auto time = [&turn](const Keys& keys, auto&& operation) {
        const std::clock_t start = std::clock();
        for (const std::int64_t key : keys) operation(key);
        const auto ticks = static_cast<double>(std::clock() - start);
        (turn++)->push_back(ticks * 1e9 / CLOCKS_PER_SEC / static_cast<double>(keys.size()));
    };
    time(inserted, [&](std::int64_t key) { tree->insert(key); });
    time(asked, [&](std::int64_t key) { benchmark::DoNotOptimize(tree->contains(key)); });
    time(asked, [&](std::int64_t key) { benchmark::DoNotOptimize(tree->neighbours(key + 1)); });
    time(asked, [&](std::int64_t key) { tree->erase(key); });
}

double medianOf(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Where a tree is larger than the core's own cache, the same work with the same keys takes up to twice as long in one tree
/// as in the next: it depends on the pages that it got, and on who else uses the shared cache. So many trees of both are
/// built in turns, and the ratio is the median of those of neighbours in time.
void inTurns(benchmark::State& state) {
    Times ours, theirs;
    unsigned seed = 1;
    for (auto _ : state) {
        const Keys inserted = shuffledKeys(state.range(), seed++);
        const Keys asked = shuffledKeys(state.range(), seed++);
        if (seed % 4 == 1) timeOneTree<Corvex>(inserted, asked, ours);
        timeOneTree<StdMap>(inserted, asked, theirs);
        if (seed % 4 == 3) timeOneTree<Corvex>(inserted, asked, ours);
    }
    for (std::size_t turn = 0; turn < turns.size(); ++turn) {
        std::vector<double> ratios(ours[turn].size());
        std::transform(ours[turn].begin(), ours[turn].end(), theirs[turn].begin(), ratios.begin(), std::divides<>());
        const std::string name = turns[turn];
        state.counters[name + "_ns"] = medianOf(ours[turn]);
        state.counters[name + "_ratio"] = medianOf(ratios);
    }
}
BENCHMARK(inTurns)->Arg(10'000)->Iterations(101)->Unit(benchmark::kMillisecond);
BENCHMARK(inTurns)->Arg(100'000)->Iterations(41)->Unit(benchmark::kMillisecond);
BENCHMARK(inTurns)->Arg(1'000'000)->Iterations(11)->Unit(benchmark::kMillisecond);

/// What a sequencer does: so many entries wait; each new key comes at most 15 places out of order and the smallest goes.
template <class Tree>
void queue(benchmark::State& state) {
    constexpr std::int64_t reach = 16, period = reach * 256;
    Keys offsets(period);
    std::iota(offsets.begin(), offsets.end(), 0);
    std::mt19937_64 random(3);
    for (auto at = offsets.begin(); at != offsets.end(); at += reach) std::shuffle(at, at + reach, random);
    Tree tree;
    std::int64_t next = 0;
    const auto insertNext = [&] {
        tree.insert(next / period * period + offsets[static_cast<std::size_t>(next % period)]);
        ++next;
    };
    while (next < state.range()) insertNext();
    for (auto _ : state) {
        insertNext();
        benchmark::DoNotOptimize(tree.takeFirst());
    }
    state.SetItemsProcessed(state.iterations());
}

template <class Tree>
void walk(benchmark::State& state) {
    const auto tree = filled<Tree>(shuffledKeys(state.range(), 1));
    for (auto _ : state) benchmark::DoNotOptimize(tree->sum());
    state.SetItemsProcessed(state.iterations() * state.range());
}

#define CORVEX_BENCH_SIZES Arg(1'000)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)
#define CORVEX_BENCH_TREE(Tree)                                    \
    BENCHMARK_TEMPLATE(insertRandom, Tree)->CORVEX_BENCH_SIZES;    \
    BENCHMARK_TEMPLATE(insertAscending, Tree)->CORVEX_BENCH_SIZES; \
    BENCHMARK_TEMPLATE(searchHit, Tree)->CORVEX_BENCH_SIZES;       \
    BENCHMARK_TEMPLATE(searchMiss, Tree)->CORVEX_BENCH_SIZES;      \
    BENCHMARK_TEMPLATE(neighbours, Tree)->CORVEX_BENCH_SIZES;      \
    BENCHMARK_TEMPLATE(eraseRandom, Tree)->CORVEX_BENCH_SIZES;     \
    BENCHMARK_TEMPLATE(queue, Tree)->Arg(16)->CORVEX_BENCH_SIZES;  \
    BENCHMARK_TEMPLATE(walk, Tree)->CORVEX_BENCH_SIZES

CORVEX_BENCH_TREE(Corvex);
CORVEX_BENCH_TREE(StdMap);
#ifdef CORVEX_BENCH_ABSL
CORVEX_BENCH_TREE(AbslBtree);
#endif
#ifdef CORVEX_BENCH_BOOST
CORVEX_BENCH_TREE(BoostAvl);
#endif

}  // namespace
