#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/Error.h>
#include <Corvex/platform/Json.h>
#include <Corvex/platform/TypedString.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <unordered_set>
#include <utility>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <tests/Thrown.h>

namespace corvex {

enum class Beam : std::uint8_t { low, high };
template <>
inline constexpr auto caseTable<Beam> =
    std::to_array<Case<Beam>>({{Beam::low, "lo", "Low"}, {Beam::high, "hi", "High"}});

enum class Gear : std::uint8_t { first, second };
template <>
inline constexpr auto caseTable<Gear> =
    std::to_array<Case<Gear, std::uint8_t>>({{Gear::first, 1, "First"}, {Gear::second, 2, "Second"}});

class Word : public TypedString<Word> {
public:
    using TypedString::TypedString;
};

namespace {

TEST(CaseTable, completenessSeesEveryKindOfMistake) {
    static_assert(isComplete<Beam>(caseTable<Beam>) && isComplete<Gear>(caseTable<Gear>));
    static_assert(!isComplete<Beam>(std::to_array<Case<Beam>>({{Beam::low, "lo", ""}})));
    static_assert(!isComplete<Beam>(std::to_array<Case<Beam>>({{Beam::high, "hi", ""}, {Beam::low, "lo", ""}})));
    static_assert(!isComplete<Beam>(std::to_array<Case<Beam>>({{Beam::low, "lo", ""}, {Beam::high, "lo", ""}})));
    EXPECT_EQ(fromRawValue<Beam>("Lo"), std::nullopt);
    EXPECT_EQ(fromRawValue<Beam>(std::string("hi")), Beam::high);
    EXPECT_DEATH(static_cast<void>(description(static_cast<Beam>(2))), "unexpected enumeration case");
}

template <class Value>
std::string whatDecodingSays(const Json& json) {
    try {
        return "decoded as " + jsonText(Json(json.get<Value>()));
    } catch (const DecodingError& error) {
        return error.what();
    }
}

TEST(CaseTable, codingTakesRawValuesOnly) {
    // What is coded, and whether it is a text of the one and a number of the other.
    const std::tuple<Json, bool, bool> rows[] = {{"hi", true, false},  {"Hi", false, false},   {2, false, true},
                                                 {258, false, false},  {-254, false, false},   {2.5, false, false},
                                                 {true, false, false}, {nullptr, false, false}};
    for (const auto& [coded, isBeam, isGear] : rows) {
        const std::string text = jsonText(coded), none = "key 'rawValue': no case has ";
        EXPECT_EQ(whatDecodingSays<Beam>(coded), (isBeam ? "decoded as " : none) + text);
        EXPECT_EQ(whatDecodingSays<Gear>(coded), (isGear ? "decoded as " : none) + text);
    }
    EXPECT_EQ(whatDecodingSays<Beam>("\xFF"), "key 'rawValue': no case has \"\uFFFD\"");
}

TEST(TypedString, ownsWhatIsNoLiteral) {
    std::string source = "borrowed and long enough to live on the heap";
    const Word expected("borrowed and long enough to live on the heap");
    Word word{source};
    source.assign(source.size(), '#');
    Word copy = word;
    word = Word("other");
    const Word moved = std::move(copy);
    copy = moved;
    copy = *&copy;
    EXPECT_EQ(copy, expected);
    EXPECT_EQ(word, Word(std::string("other")));
}

TEST(TypedString, comparesHashesAndCodesAsItsBytes) {
    static_assert(Word("A") < Word("a") && Word("") == Word());
    const std::unordered_set<Word> words{Word("a"), Word(std::string("a")), Word("A")};
    EXPECT_EQ(words.size(), 2U);
    EXPECT_EQ(whatDecodingSays<Word>("any"), "decoded as \"any\"");
    EXPECT_EQ(whatDecodingSays<Word>(Json{{"a", 1}}), "key 'rawValue': expected a text, not {\"a\":1}");
}

TEST(Json, theKindThatSortsItsMembersIsCodedAlike) {
    const nlohmann::json coded = {Beam::high, Gear::second, Word("any")};
    EXPECT_EQ(coded.dump(), R"(["hi",2,"any"])");
    EXPECT_EQ(coded[1].get<Gear>(), Gear::second);
    EXPECT_EQ(coded[2].get<Word>(), Word("any"));
    EXPECT_THROW(static_cast<void>(coded[1].get<Beam>()), DecodingError);
}

TEST(Json, membersAreFoundOrNamed) {
    const Json object = {{"a", 1}};
    EXPECT_EQ(requireMember(object, "a"), 1);
    const auto error = test::thrownBy<DecodingError>([&] { return requireMember(object, "b"); });
    EXPECT_EQ(error, DecodingError("b", "is missing"));
    EXPECT_STREQ(error->key(), "b");
    EXPECT_THROW(static_cast<void>(findMember(Json::array(), "a")), DecodingError);
}

}  // namespace
}  // namespace corvex
