#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/MultiFeedItemSequencer.h>

#include "Schedules.h"

namespace corvex::multiFeedItemSequencerTests {
namespace {

using Sequencer = MultiFeedItemSequencer<std::string, int>;

/// "a" to "j" ask for what "0" to "9" add. Even digits come from one feed, odd ones from another. Indexes are so far apart
/// that several share a list of requests.
TEST(MultiFeedItemSequencer, schedules) {
    constexpr Schedule rows[] = {
        {"by index, in any order", 9, "312 dbc ", "+3+1+2-3-1-2"},
        {"a feed's third item waits for a slot", 2, "024 c a ", "+0+2-2+4-0"},
        {"feeds are throttled apart", 1, "021 b a ", "+0+1-1-0+2"},
        {"all requests for an index, in order, posted", 1, "dd e d 3 ", "+3-3-3-3"},
        {"delivered without a slot", 1, "0 ce 24 ", "+0+2+4-2-4"},
        {"delivered when a slot is free at last, which is then free again", 1, "02 c a 46 ", "+0-0+2-2+4"},
        {"producers of a feed in order", 1, "0246 a c e ", "+0-0+2-2+4-4+6"},
        {"capacity 0 only hands over", 0, "~4c 2 ", "+2-2"},
        {"closing frees requests", 1, "ab | ", "-.-."},
        {"closing keeps what is stored", 2, "02 |cab ", "+0+2-2-0-."},
        {"refused once closed", 2, "0 |2 a ", "+0!2-0"},
        {"admitted after closing", 1, "02 | ac c ", "+0-0-.+2-2"},
        {"closing frees no producer", 1, "02 | ", "+0"},
        {"replaced, and the slot of the first is lost", 2, "00 a 2 4 ", "+0+0'-0'+2"},
        {"disorder beyond the capacity stalls", 2, "2460 a c e ", "+2+4-2+6-4+0-0"},
        {"destroyed request", 1, "~aa 0 ", "+0-0"},
        {"destroyed producer", 1, "0 ~42 a ", "+0-0+2"},
    };
    for (const auto& row : rows) {
        const Sequencer sequencer(static_cast<unsigned>(row.setting));
        const auto add = [&sequencer](char step, const std::string& item) {
            return sequencer.enqueueItems(item, 64 * (step - '0'), step % 2);
        };
        const auto ask = [&sequencer](char step) { return sequencer.requestItemsAtIndex(64 * (step - 'a')); };
        EXPECT_EQ(traceOf(sequencer, row.steps, "abcdefghij", add, ask), row.trace) << row.name;
    }
}

TEST(MultiFeedItemSequencerDeathTest, capacitiesBeyondTheSignedRangeStopTheProcess) {
    constexpr std::uint64_t beyond = std::uint64_t{1} << 63U;
    const Sequencer withoutFeeds(beyond);
    EXPECT_EQ(withoutFeeds.capacityPerFeed(), beyond);
    EXPECT_DEATH(Sequencer(beyond, std::vector<int>{1}), "lost the value");
}

}  // namespace
}  // namespace corvex::multiFeedItemSequencerTests
