#include <fstream>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include <Corvex/lut/ObjcLutDetail.h>
#include <Corvex/lut/ParsedLutFile.h>
#include <tests/TemporaryDirectory.h>

#include "LutFiles.h"

namespace corvex::objcLutDetailTests {
namespace {

class ObjcLut : public testing::Test {
protected:
    std::optional<ObjcLutDetail> build(std::string_view text) {
        const auto path = directory_.path() / "look.cube";
        std::ofstream(path, std::ios::binary) << text;
        return ObjcLutConversionFactory::buildParsedLut(path);
    }
    test::TemporaryDirectory directory_;
};
using ObjcLutDeathTest = ObjcLut;

TEST_F(ObjcLut, eachKindHasItsDescriptors) {
    const std::tuple<const char*, std::string, std::string> rows[] = {
        {"integerTable", entryLines(1024, "4095"), "1D table, 1024 entries, 10 bits, 0 to 1023"},
        {"floatTable", entryLines(256, "-0.5"), "1D table, 256 entries, -0.5 to 0.0"},
        {"floatCube", entryLines(35937, "0.75"), "cube of 33 points, 0.0 to 0.75, 35937 entries, 0.0 to 0.75"},
        {"integerCube", "3D\n" + entryLines(9, "900"), "cube of 2 points, 0.0 to 900.0, 9 entries, 10 bits, 0 to 900"},
    };
    for (const auto& [name, text, expected] : rows) {
        const auto detail = build(text);
        ASSERT_TRUE(detail) << name;
        EXPECT_EQ(detail->description(), expected) << name;
        EXPECT_NE(detail->integerDescriptor().has_value(), detail->floatingPointDescriptor().has_value()) << name;
    }
    EXPECT_FALSE(build("3D\n"));
}

TEST_F(ObjcLut, equalFilesAreEqualObjects) {
    const auto a = build("3D\n0 0 0\n1 2 3"), b = build("3d\n0 0 0\n1\t2\t3"), c = build("3D\n0 0 0\n2 1 3");
    EXPECT_TRUE(a->isEqual(*b));
    EXPECT_EQ(a->hash(), b->hash());
    EXPECT_FALSE(a->isEqual(*c));
    EXPECT_FALSE(a->isEqual(a->dimensionDescriptor()));
    ObjcLutRGBNumericTriplet entry = a->orderedLutValues()[1];
    entry.setR(Number(2));
    entry.setG(Number(1));
    EXPECT_TRUE(entry.isEqual(c->orderedLutValues()[1]));
}

TEST_F(ObjcLutDeathTest, negativeCodeValuesStopTheProcess) {
    EXPECT_DEATH((void)build("3D\n-5 0 0\n0 0 9"), "does not fit into an unsigned integer");
}

}  // namespace
}  // namespace corvex::objcLutDetailTests
