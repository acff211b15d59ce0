#include <algorithm>
#include <cctype>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <Corvex/color/OrvanePixelColorRange.h>
#include <Corvex/color/OrvanePixelTransferFunction.h>
#include <Corvex/color/OrvaneVideoColorMatrix.h>
#include <Corvex/color/OrvaneVideoColorPrimaries.h>
#include <Corvex/color/OrvaneVideoColorSpace.h>

namespace corvex {
namespace {

using Space = OrvaneVideoColorSpace;
using Primaries = OrvaneVideoColorPrimaries;
using Transfer = OrvanePixelTransferFunction;
using Matrix = OrvaneVideoColorMatrix;
using Range = OrvanePixelColorRange;

/// One case as the outside world knows it. Empty or -1: there is no such value.
template <class Enumeration>
struct CaseRow {
    Enumeration value;
    int rawValue;
    std::string_view caseName;
    std::string_view cliValue;
    int codePoint;
};

const CaseRow<Primaries> primariesRows[] = {
    {Primaries::rec2020, 1, "rec2020", "", 9},     {Primaries::rec709, 2, "rec709", "", 1},
    {Primaries::smpteC, 3, "smpteC", "", 6},       {Primaries::ebu3213, 4, "ebu3213", "", 5},
    {Primaries::dciP3, 5, "dciP3", "", 11},        {Primaries::p3D65, 6, "p3D65", "", 12},
    {Primaries::custom7, 7, "custom7", "", -1},    {Primaries::custom8, 8, "custom8", "", -1},
    {Primaries::custom10, 10, "custom10", "", -1},
};

const CaseRow<Transfer> transferRows[] = {
    {Transfer::hlg, 1, "hlg", "tf_rec_2100_hlg", 18},
    {Transfer::rec709, 2, "rec709", "tf_rec_709", 1},
    {Transfer::smpte240M, 3, "smpte240M", "tf_smpte_240M_1995", 7},
    {Transfer::sRGB, 4, "sRGB", "tf_srgb", 13},
    {Transfer::rec2020, 5, "rec2020", "tf_rec_2020", 14},
    {Transfer::smpteST428, 6, "smpteST428", "tf_smpte_st_428_1", 17},
    {Transfer::pq, 7, "pq", "tf_smpte_st_2084_pq", 16},
    {Transfer::linear, 8, "linear", "tf_linear", 8},
    {Transfer::gamma, 9, "gamma", "", -1},
};

const CaseRow<Matrix> matrixRows[] = {
    {Matrix::none, 0, "none", "", 0},
    {Matrix::rec709, 1, "rec709", "cm_rec_709_2", 1},
    {Matrix::rec2020, 2, "rec2020", "cm_rec_2020", 9},
    {Matrix::rec601, 3, "rec601", "cm_rec_604_4", 6},
    {Matrix::smpte240M, 4, "smpte240M", "cm_smpte_240m_1995", 7},
    {Matrix::custom5, 5, "custom5", "", -1},
    {Matrix::custom6, 6, "custom6", "", -1},
};

const CaseRow<Space> spaceRows[] = {
    {Space::rec2020, 1, "rec2020", "rec_2020", -1},
    {Space::rec709, 2, "rec709", "rec_709", -1},
    {Space::rec601Smpte, 3, "rec601Smpte", "smpte_c", -1},
    {Space::rec601EBU, 4, "rec601EBU", "ebu_3213", -1},
    {Space::sRGB, 5, "sRGB", "sRGB", -1},
    {Space::dciP3Cinema, 6, "dciP3Cinema", "", -1},
    {Space::p3D65, 7, "p3D65", "", -1},
    {Space::custom8, 8, "custom8", "", -1},
    {Space::custom9, 9, "custom9", "", -1},
    {Space::custom10, 10, "custom10", "", -1},
    {Space::linear11, 11, "linear11", "", -1},
    {Space::rec2020HLG, 12, "rec2020HLG", "rec_2020_hlg", -1},
    {Space::rec2020PQ, 13, "rec2020PQ", "rec_2020_pq", -1},
};

const CaseRow<Range> rangeRows[] = {
    {Range::full, 0, "full", "f", 1},
    {Range::video, 1, "video", "v", 0},
};

std::string_view cliValueOf(Range range) { return cliFlag(range); }
template <class Enumeration>
std::string cliValueOf(Enumeration value) {
    const auto equivalent = cliEquivalent(value);
    return equivalent ? std::string(equivalent->rawValue()) : std::string();
}

template <class Enumeration, std::size_t count>
void expectCases(const CaseRow<Enumeration> (&rows)[count]) {
    EXPECT_EQ(allCases<Enumeration>.size(), count);
    for (std::size_t i = 0; i < count; ++i) {
        const auto& row = rows[i];
        SCOPED_TRACE(row.caseName);
        EXPECT_EQ(allCases<Enumeration>[i], row.value);
        EXPECT_EQ(rawValue(row.value), row.rawValue);
        EXPECT_EQ(fromRawValue<Enumeration>(std::int64_t{row.rawValue}), row.value);
        EXPECT_EQ(caseName(row.value), row.caseName);
        EXPECT_EQ(fromCaseName<Enumeration>(row.caseName), row.value);
        EXPECT_EQ(cliValueOf(row.value), row.cliValue);
        EXPECT_EQ(codePoint(row.value), row.codePoint >= 0 ? std::optional(row.codePoint) : std::nullopt);
        EXPECT_FALSE(description(row.value).empty());
        EXPECT_EQ(Json(row.value), Json(row.rawValue));
        EXPECT_EQ(Json(row.rawValue).template get<Enumeration>(), row.value);
    }
}

TEST(ColorVocabulary, casesAreThoseOfTheTables) {
    expectCases(primariesRows);
    expectCases(transferRows);
    expectCases(matrixRows);
    expectCases(spaceRows);
    expectCases(rangeRows);
}

TEST(ColorVocabulary, otherNumbersAndNamesAreNoCase) {
    EXPECT_EQ(fromRawValue<Primaries>(std::int64_t{9}), std::nullopt);
    EXPECT_EQ(fromRawValue<Primaries>(std::int64_t{0}), std::nullopt);
    EXPECT_EQ(fromRawValue<Transfer>(std::int64_t{10}), std::nullopt);
    EXPECT_EQ(fromRawValue<Matrix>(std::int64_t{-1}), std::nullopt);
    EXPECT_EQ(fromRawValue<Space>(std::int64_t{14}), std::nullopt);
    EXPECT_EQ(fromRawValue<Range>(std::int64_t{2}), std::nullopt);
    EXPECT_EQ(fromCaseName<Space>("SRGB"), std::nullopt);
    EXPECT_THROW(static_cast<void>(Json(9).get<Primaries>()), DecodingError);
    EXPECT_THROW(static_cast<void>(Json("rec709").get<Space>()), DecodingError);
}

TEST(ColorVocabularyDeathTest, aValueOutsideOfTheEnumerationStopsTheProcess) {
    EXPECT_DEATH(static_cast<void>(rawValue(static_cast<Transfer>(9))), "unexpected enumeration case");
    EXPECT_DEATH(static_cast<void>(cliEquivalent(static_cast<Matrix>(7))), "unexpected enumeration case");
    EXPECT_DEATH(static_cast<void>(defaultColorPrimaries(static_cast<Space>(13))), "unexpected enumeration case");
    EXPECT_DEATH(static_cast<void>(definedSignals(static_cast<Space>(13))), "unexpected enumeration case");
    EXPECT_DEATH(static_cast<void>(cliFlag(static_cast<Range>(2))), "unexpected enumeration case");
}

// The way back from a command line: values in any case, as parsing lower-cases them, and nothing else.
template <class Enumeration, std::size_t count>
void expectReadBack(const CaseRow<Enumeration> (&rows)[count]) {
    for (const auto& row : rows) {
        if (row.cliValue.empty()) continue;
        std::string text(row.cliValue);
        EXPECT_EQ(fromCliEquivalent<Enumeration>(text), row.value) << text;
        std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return char(std::tolower(c)); });
        EXPECT_EQ(fromCliEquivalent<Enumeration>(text), row.value) << text;
        EXPECT_EQ(fromCliEquivalent<Enumeration>(text + " "), std::nullopt) << text;
        text.pop_back();
        const auto prefix = fromCliEquivalent<Enumeration>(text);
        EXPECT_TRUE(!prefix || *prefix != row.value) << text;
    }
    EXPECT_EQ(fromCliEquivalent<Enumeration>(""), std::nullopt);
}

TEST(ColorVocabulary, commandLineValuesReadBack) {
    expectReadBack(transferRows);
    expectReadBack(matrixRows);
    expectReadBack(spaceRows);
    EXPECT_EQ(fromCliEquivalent<Transfer>(OAV_T_UseGamma.rawValue()), std::nullopt);  // deliberately without a case
    EXPECT_EQ(fromCliEquivalent<Matrix>("cm_rec_601_4"), std::nullopt);               // 604 is what is accepted
}

TEST(ColorVocabulary, rangeIsOneLetter) {
    const std::pair<std::string_view, std::optional<Range>> rows[] = {
        {"f", Range::full},      {"F", Range::full}, {"v", Range::video},  {"V", Range::video},  {"full", std::nullopt},
        {"video", std::nullopt}, {"", std::nullopt}, {" f", std::nullopt}, {"ff", std::nullopt}, {"0", std::nullopt},
    };
    for (const auto& [text, expected] : rows) EXPECT_EQ(colorRangeFromCliFlag(text), expected) << text;
    EXPECT_EQ(wrappedValue(Range::full).int64Value(), 0);
    EXPECT_EQ(wrappedValue(Range::video).int64Value(), 1);
    EXPECT_EQ(wrappedValue(Matrix::custom6).int64Value(), 6);
}

TEST(ColorVocabulary, flagsUnderWhichValuesAreGiven) {
    EXPECT_EQ(videoFlag(Matrix::rec709).rawValue(), "-c_matrix");
    EXPECT_EQ(cliFlag(Matrix::none), "-c_matrix");
    EXPECT_EQ(videoFlag(Transfer::gamma).rawValue(), "-c_transfer");
    EXPECT_EQ(cliFlag(Transfer::gamma), "-c_transfer");
    EXPECT_EQ(videoFlag(Space::custom8).rawValue(), "-c_space");
    EXPECT_EQ(cliFlag(Space::custom8), "-c_space");
    EXPECT_EQ(videoFlag(Range::full).rawValue(), "-v_colrange");
}

TEST(ColorVocabulary, keptDisplayNames) {
    EXPECT_EQ(description(Space::rec601Smpte), "Rec. 601 - SMPTE C");
    EXPECT_EQ(description(Space::rec601EBU), "Rec. 601 - EBU 3213");
}

// ISO/IEC 23091-2 (ITU-T H.273): every code point that has a case, the doubles included, and none besides.
TEST(ColorVocabulary, codePointsOfContainersAndCodecs) {
    using Points = std::vector<std::pair<int, std::string_view>>;
    const auto namesOf = [](auto fromPoint) {
        Points points;
        for (int point = -2; point <= 300; ++point) {
            if (const auto value = fromPoint(point)) points.emplace_back(point, caseName(*value));
        }
        return points;
    };
    EXPECT_EQ(namesOf(colorPrimariesFromCodePoint), (Points{{1, "rec709"},
                                                            {5, "ebu3213"},
                                                            {6, "smpteC"},
                                                            {7, "smpteC"},
                                                            {9, "rec2020"},
                                                            {11, "dciP3"},
                                                            {12, "p3D65"}}));
    EXPECT_EQ(namesOf(transferFunctionFromCodePoint), (Points{{1, "rec709"},
                                                              {6, "rec709"},
                                                              {7, "smpte240M"},
                                                              {8, "linear"},
                                                              {13, "sRGB"},
                                                              {14, "rec2020"},
                                                              {15, "rec2020"},
                                                              {16, "pq"},
                                                              {17, "smpteST428"},
                                                              {18, "hlg"}}));
    EXPECT_EQ(namesOf(colorMatrixFromCodePoint),
              (Points{{0, "none"}, {1, "rec709"}, {5, "rec601"}, {6, "rec601"}, {7, "smpte240M"}, {9, "rec2020"}}));
    EXPECT_EQ(namesOf(colorRangeFromCodePoint), (Points{{0, "video"}, {1, "full"}}));
}

TEST(ColorVocabulary, cloudNumbers) {
    std::vector<int> rawValues;
    for (int number = -1; number <= 11; ++number) {
        const auto space = colorSpaceFromCloudValue(number);
        rawValues.push_back(space ? static_cast<int>(rawValue(*space)) : 0);
    }
    // Message values -1 (unrecognised), 0 (unspecified), 1 (unknown), 2 to 10, 11 (unrecognised).
    EXPECT_EQ(rawValues, (std::vector{0, 0, 0, 1, 2, 5, 6, 7, 3, 4, 12, 13, 0}));
}

}  // namespace
}  // namespace corvex
