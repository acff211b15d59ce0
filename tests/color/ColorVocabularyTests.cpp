#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/color/GammaColorSpaceSignal.h>
#include <Corvex/color/OrvanePixelColorRange.h>
#include <Corvex/color/OrvanePixelTransferFunction.h>
#include <Corvex/color/OrvaneVideoColorMatrix.h>
#include <Corvex/color/OrvaneVideoColorPrimaries.h>
#include <Corvex/color/OrvaneVideoColorSpace.h>
#include <Corvex/color/StandardColorSpaceSignal.h>
#include <Corvex/color/definedSignals.h>
#include <Corvex/platform/Number.h>

namespace corvex::colorVocabularyTests {
namespace {

using Space = OrvaneVideoColorSpace;
using Primaries = OrvaneVideoColorPrimaries;
using Transfer = OrvanePixelTransferFunction;
using Matrix = OrvaneVideoColorMatrix;
using Range = OrvanePixelColorRange;

/// The cases as the outside world knows them, in order: raw value, name and, where there is one, the text of a command
/// line. Each must be found again by its number, its name and that text.
template <class Enumeration>
std::string casesOf() {
    std::string text;
    for (const Enumeration value : allCases<Enumeration>) {
        const std::int64_t number{rawValue(value)};
        EXPECT_EQ(fromRawValue<Enumeration>(number), value) << number;
        EXPECT_EQ(fromCaseName<Enumeration>(caseName(value)), value) << number;
        text += (text.empty() ? "" : ", ") + std::to_string(number) + " " + std::string(caseName(value));
        if constexpr (!ColorEnumerationWithCliValues<Enumeration>) {
            text += " " + std::string(cliFlag(value));
        } else if (const auto cli = cliEquivalent(value)) {
            text += " " + std::string(cli->rawValue());
            EXPECT_EQ(fromCliEquivalent<Enumeration>(cli->rawValue()), value) << number;
        }
    }
    return text;
}

TEST(ColorVocabulary, casesKeepTheirNumbersNamesAndTexts) {
    EXPECT_EQ(casesOf<Primaries>(),
              "1 rec2020, 2 rec709, 3 smpteC, 4 ebu3213, 5 dciP3, 6 p3D65, 7 custom7, 8 custom8, 10 custom10");
    EXPECT_EQ(casesOf<Transfer>(),
              "1 hlg tf_rec_2100_hlg, 2 rec709 tf_rec_709, 3 smpte240M tf_smpte_240M_1995, 4 sRGB tf_srgb, "
              "5 rec2020 tf_rec_2020, 6 smpteST428 tf_smpte_st_428_1, 7 pq tf_smpte_st_2084_pq, 8 linear tf_linear, "
              "9 gamma");
    EXPECT_EQ(casesOf<Matrix>(),
              "0 none, 1 rec709 cm_rec_709_2, 2 rec2020 cm_rec_2020, 3 rec601 cm_rec_604_4, "
              "4 smpte240M cm_smpte_240m_1995, 5 custom5, 6 custom6");
    EXPECT_EQ(casesOf<Space>(),
              "1 rec2020 rec_2020, 2 rec709 rec_709, 3 rec601Smpte smpte_c, 4 rec601EBU ebu_3213, 5 sRGB sRGB, "
              "6 dciP3Cinema, 7 p3D65, 8 custom8, 9 custom9, 10 custom10, 11 linear11, 12 rec2020HLG rec_2020_hlg, "
              "13 rec2020PQ rec_2020_pq");
    EXPECT_EQ(casesOf<Range>(), "0 full f, 1 video v");
}

TEST(ColorVocabulary, othersAreNoCase) {
    EXPECT_EQ(fromRawValue<Primaries>(std::int64_t{9}), std::nullopt);
    EXPECT_EQ(fromRawValue<Range>(std::int64_t{2}), std::nullopt);
    EXPECT_EQ(fromCaseName<Space>("SRGB"), std::nullopt);
    EXPECT_EQ(fromCliEquivalent<Transfer>(OAV_T_UseGamma.rawValue()), std::nullopt);  // deliberately without a case
    EXPECT_EQ(fromCliEquivalent<Matrix>("cm_rec_601_4"), std::nullopt);               // 604 is what is accepted
    EXPECT_EQ(fromCliEquivalent<Space>("rec_2020 "), std::nullopt);
    EXPECT_EQ(fromCliEquivalent<Transfer>("tf_smpte_240m_1995"), Transfer::smpte240M) << "parsing lower-cases values";
    EXPECT_DEATH(static_cast<void>(rawValue(static_cast<Transfer>(9))), "unexpected enumeration case");
    EXPECT_DEATH(static_cast<void>(definedSignals(static_cast<Space>(13))), "unexpected enumeration case");
}

TEST(ColorVocabulary, rangeIsOneLetter) {
    const std::pair<std::string_view, std::optional<Range>> rows[] = {
        {"f", Range::full},     {"F", Range::full}, {"v", Range::video}, {"V", Range::video},
        {"full", std::nullopt}, {"", std::nullopt}, {"0", std::nullopt}};
    for (const auto& [text, expected] : rows) EXPECT_EQ(colorRangeFromCliFlag(text), expected) << text;
    EXPECT_EQ(wrappedValue(Range::video).int64Value(), 1);
    EXPECT_EQ(wrappedValue(Matrix::custom6).int64Value(), 6);
}

// ISO/IEC 23091-2 (ITU-T H.273): every code point that has a case, the doubles included, and none besides.
TEST(ColorVocabulary, codePointsOfContainersAndCodecs) {
    // "*": the point that is written for the case.
    const auto pointsOf = [](auto fromPoint) {
        std::string text;
        for (int point = -2; point <= 300; ++point) {
            const auto value = fromPoint(point);
            if (!value) continue;
            text += (text.empty() ? "" : ", ") + std::to_string(point) + " " + std::string(caseName(*value));
            if (codePoint(*value) == point) text += "*";
        }
        return text;
    };
    EXPECT_EQ(pointsOf(colorPrimariesFromCodePoint),
              "1 rec709*, 5 ebu3213*, 6 smpteC*, 7 smpteC, 9 rec2020*, 11 dciP3*, 12 p3D65*");
    EXPECT_EQ(pointsOf(transferFunctionFromCodePoint),
              "1 rec709*, 6 rec709, 7 smpte240M*, 8 linear*, 13 sRGB*, 14 rec2020*, 15 rec2020, 16 pq*, "
              "17 smpteST428*, 18 hlg*");
    EXPECT_EQ(pointsOf(colorMatrixFromCodePoint), "0 none*, 1 rec709*, 5 rec601, 6 rec601*, 7 smpte240M*, 9 rec2020*");
    EXPECT_EQ(pointsOf(colorRangeFromCodePoint), "0 video*, 1 full*");
    EXPECT_EQ(codePoint(Primaries::custom7), std::nullopt);
    EXPECT_EQ(codePoint(Transfer::gamma), std::nullopt);
}

using Standard = StandardColorSpaceSignal;

/// Raw values of primaries, transfer function and matrix; -1: absent.
using Triple = std::array<int, 3>;

template <class Enumeration>
int rawOrAbsent(std::optional<Enumeration> value) {
    return value ? static_cast<int>(rawValue(*value)) : -1;
}
int rawOrAbsent(const std::optional<Number>& value) { return value ? static_cast<int>(value->int64Value()) : -1; }

Triple tripleOf(const OrvaneColorSpaceSignal& signal) {
    return {rawOrAbsent(signal.primaries()), rawOrAbsent(signal.transferFunction()), rawOrAbsent(signal.matrix())};
}

TEST(ColorSignals, ofEachColorSpace) {
    const std::tuple<Space, int, std::optional<std::vector<Triple>>> rows[] = {
        {Space::rec2020, 1, {{{1, 5, 2}}}},
        {Space::rec709, 2, {{{2, 2, 1}}}},
        {Space::rec601Smpte, 3, {{{3, 2, 3}}}},
        {Space::rec601EBU, 4, {{{4, 2, 3}}}},
        {Space::sRGB, -1, {{{2, 4, -1}}}},
        {Space::dciP3Cinema, 5, {{{5, 9, -1}}}},
        {Space::p3D65, 6, {{{6, 4, -1}, {6, 2, 1}}}},
        {Space::custom8, -1, std::nullopt},
        {Space::custom9, 7, std::nullopt},
        {Space::custom10, 8, std::nullopt},
        {Space::linear11, 10, {{{10, 8, -1}}}},
        {Space::rec2020HLG, 1, {{{1, 1, 2}}}},
        {Space::rec2020PQ, 1, {{{1, 7, 2}}}}};
    for (const auto& [space, defaultPrimaries, expected] : rows) {
        SCOPED_TRACE(caseName(space));
        EXPECT_EQ(rawOrAbsent(defaultColorPrimaries(space)), defaultPrimaries);
        const auto signals = definedSignals(space), again = definedSignals(space);
        ASSERT_EQ(signals.has_value(), expected.has_value());
        if (!signals) continue;
        std::vector<Triple> triples;
        for (const auto& signal : *signals) {
            triples.push_back(tripleOf(*signal));
            const bool isStandard = dynamic_cast<const Standard*>(signal.get()) != nullptr;
            EXPECT_NE(isStandard, space == Space::dciP3Cinema);
            EXPECT_EQ(std::ranges::count(*again, signal), 0) << "each call makes new objects";
        }
        EXPECT_EQ(triples, *expected);
    }
    const auto cinema = definedSignals(Space::dciP3Cinema);
    EXPECT_EQ(dynamic_cast<const GammaColorSpaceSignal&>(*cinema->front()), GammaColorSpaceSignal::dcip3Cinema());
    EXPECT_EQ(GammaColorSpaceSignal::dcip3Cinema().gamma(), 2.6F);
}

TEST(ColorSignals, wrapTheirPartsAndReadWhatIsARawValue) {
    const Standard& video = Standard::p3D65Video();
    EXPECT_EQ((Triple{rawOrAbsent(video.wrappedPrimaries()), rawOrAbsent(video.wrappedTransferFunction()),
                      rawOrAbsent(video.wrappedMatrix())}),
              (Triple{6, 2, 1}));
    const std::tuple<const char*, Number, Number, Number, Triple> rows[] = {
        {"all", Number(10), Number(9), Number(0), {10, 9, 0}},
        {"gaps", Number(9), Number(0), Number(7), {-1, -1, -1}},
        {"fraction", Number(2.5), Number(2.0), Number(0.5), {-1, 2, -1}},
        {"huge", Number(1e300), Number(INT64_MAX), Number(4294967297), {-1, -1, -1}}};
    for (const auto& [name, primaries, transferFunction, matrix, expected] : rows) {
        EXPECT_EQ(tripleOf(Standard(&primaries, &transferFunction, &matrix)), expected) << name;
    }
    const Number seven(7);
    EXPECT_EQ(tripleOf(Standard(nullptr, &seven, nullptr)), (Triple{-1, 7, -1}));
}

TEST(ColorSignals, compareAsObjectsPartByPart) {
    const Standard signal(Primaries::rec709, Transfer::rec709, Matrix::rec709);
    EXPECT_TRUE(signal.isEqual(Standard::rec709()));
    EXPECT_EQ(signal.hash(), Standard::rec709().hash());
    for (const Standard& other : {Standard(Primaries::smpteC, Transfer::rec709, Matrix::rec709),
                                  Standard(Primaries::rec709, Transfer::sRGB, Matrix::rec709),
                                  Standard(Primaries::rec709, Transfer::rec709, std::nullopt)}) {
        EXPECT_FALSE(signal.isEqual(other)) << other.description();
    }
    EXPECT_FALSE(signal.isEqual(Number(2)));
    EXPECT_EQ(Standard::sRGB().description(), "primaries rec709, transfer function sRGB, matrix none");
    // Signals of one exponent compare with it.
    const GammaColorSpaceSignal gamma(Primaries::dciP3, Transfer::gamma, std::nullopt, 2.6F);
    EXPECT_EQ(gamma, GammaColorSpaceSignal::dcip3Cinema());
    EXPECT_NE(gamma, GammaColorSpaceSignal(Primaries::dciP3, Transfer::gamma, std::nullopt, 2.4F));
    EXPECT_NE(gamma, GammaColorSpaceSignal(Primaries::dciP3, Transfer::gamma, Matrix::none, 2.6F));
}

}  // namespace
}  // namespace corvex::colorVocabularyTests
