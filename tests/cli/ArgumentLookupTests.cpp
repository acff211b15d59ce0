#include <Corvex/cli/ArgumentLookup.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace corvex::argumentLookupTests {
namespace {

/// Changes a lookup at random beside a std::map, through sizes below and above those at which it keeps a table.
TEST(ArgumentLookup, isASortedMap) {
    std::mt19937 engine(20261121);
    const auto below = [&](unsigned end) { return static_cast<unsigned>(engine() % end); };
    const auto key = [&] { return "-in_0_" + std::to_string(below(150)); };
    ArgumentLookup lookup;
    std::map<std::string, std::string, std::less<>> expected;
    for (int round = 0; round < 4000; ++round) {
        const std::string flag = key();
        const std::string value = std::to_string(round);
        const unsigned action = below(100);
        if (action < 60) {
            EXPECT_EQ(lookup.insert_or_assign(flag, value), expected.insert_or_assign(flag, value).second);
        } else if (action < 97) {
            lookup.erase(flag);
            expected.erase(flag);
        } else if (action < 99) {
            std::vector<ArgumentLookup::Entry> entries;
            for (unsigned i = below(40); i > 0; --i) entries.emplace_back(key(), std::to_string(i));
            for (const auto& [name, text] : entries) expected.insert_or_assign(name, text);
            lookup.insertAll(std::move(entries));
        } else {
            const auto isOdd = [](const auto& entry) { return entry.second.back() % 2 != 0; };
            lookup.eraseIf(isOdd);
            std::erase_if(expected, isOdd);
        }
        ASSERT_TRUE(std::equal(lookup.begin(), lookup.end(), expected.begin(), expected.end(), [](auto& a, auto& b) {
            return a.first == b.first && a.second == b.second;
        })) << round;
        const std::string asked = key();
        const auto found = lookup.find(asked);
        ASSERT_EQ(found != lookup.end(), expected.contains(asked)) << asked;
        if (found != lookup.end()) {
            ASSERT_EQ(found->first, asked);
        }
        ASSERT_EQ(std::distance(lookup.begin(), lookup.lower_bound(asked)),
                  std::distance(expected.begin(), expected.lower_bound(asked)));
    }
    EXPECT_EQ(lookup, ArgumentLookup(std::vector<ArgumentLookup::Entry>(expected.begin(), expected.end())));
}

}  // namespace
}  // namespace corvex::argumentLookupTests
