#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/color/GammaColorSpaceSignal.h>
#include <Corvex/color/OrvaneVideoColorSpace.h>
#include <Corvex/color/StandardColorSpaceSignal.h>
#include <Corvex/color/definedSignals.h>
#include <Corvex/platform/Number.h>

namespace corvex::colorSignalTests {
namespace {

using Space = OrvaneVideoColorSpace;
using Primaries = OrvaneVideoColorPrimaries;
using Transfer = OrvanePixelTransferFunction;
using Matrix = OrvaneVideoColorMatrix;
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
}  // namespace corvex::colorSignalTests
