#include <Corvex/media/OrvaneAudioFormat.h>
#include <Corvex/platform/Json.h>

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace corvex::orvaneAudioFormatTests {
namespace {

using enum OrvaneAudioFormat;

TEST(FourCharacterCode, readsAndShowsFourBytes) {
    EXPECT_EQ(FourCharacterCode("aac ").value(), 0x61616320U);
    EXPECT_EQ(FourCharacterCode::make("aac "), FourCharacterCode("aac "));
    for (const char* other : {"", "aac", "aac  "}) EXPECT_FALSE(FourCharacterCode::make(other)) << other;
    struct Row {
        std::uint32_t value;
        const char* text;
    };
    constexpr Row rows[] = {
        {0x2E6D7033, ".mp3"},       {0x6D730011, "0x6d730011"}, {0, "0x00000000"},
        {0xA96E616D, "0xa96e616d"}, {0x7E7E7E7F, "0x7e7e7e7f"},
    };
    for (const Row& row : rows) EXPECT_EQ(FourCharacterCode(row.value).description(), row.text);
}

TEST(OrvaneAudioFormat, hasItsCodeItsValueAndItsSupportLevel) {
    struct Row {
        OrvaneAudioFormat format;
        FourCharacterCode code;
        const char* outputFormat;
        AVFoundationAudioEncodingSupportLevel level;
    };
    using enum AVFoundationAudioEncodingSupportLevel;
    constexpr Row rows[] = {
        {lpcm, "lpcm", "lpcm", fullyEncodable},
        {appleLossless, "alac", "apple_lossless", fullyEncodable},
        {aac, "aac ", "aac", fullyEncodable},
        {aacHe, "aach", "aac_he", fullyEncodable},
        {aacEld, "aace", "aac_eld", passthroughCapable},
        {appleIma4, "ima4", "apple_ima4", passthroughCapable},
    };
    ASSERT_EQ(std::size(rows), allCases<OrvaneAudioFormat>.size());
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const Row& row = rows[i];
        EXPECT_EQ(allCases<OrvaneAudioFormat>[i], row.format);
        EXPECT_EQ(coreAudioEquivalent(row.format), row.code);
        EXPECT_EQ(audioFormatFromCoreAudio(row.code), row.format);
        EXPECT_EQ(outputFormat(row.format).rawValue(), row.outputFormat);
        EXPECT_EQ(avEncodingSupportLevel(row.format), row.level) << row.outputFormat;
        EXPECT_EQ(Json(row.format), Json(row.outputFormat));
    }
    EXPECT_FALSE(audioFormatFromCoreAudio("ac-3"));
}

TEST(OrvaneAudioFormat, everySourceHasAReplacement) {
    struct Row {
        std::vector<FourCharacterCode> sources;
        OrvaneAudioFormat whenPreserving, otherwise;
    };
    const Row rows[] = {
        {{"lpcm"}, lpcm, lpcm},
        {{"alac"}, appleLossless, appleLossless},
        {{"aach"}, aacHe, aacHe},
        {{"ac-3", "cac3"}, appleLossless, aac},
        {{"alaw", "ulaw", "ima4", "MAC3", "MAC6", "aacs"}, lpcm, aac},
        {{"aace", "aacf", "aacg", "aacl", "aacp", "aac ", "Qclp", "QDM2", "QDMC", "celp", "hvxc", "twvq", "samr",
          "sawb", "usac", ".mp1", ".mp2", ".mp3"},
         aac,
         aac},
        {{"aaci", "ec-3", "mac3", "flac", "opus", FourCharacterCode(0), FourCharacterCode(0x6D730011)}, lpcm, lpcm},
    };
    for (const Row& row : rows) {
        for (const FourCharacterCode source : row.sources) {
            EXPECT_EQ(encodingReplacement(source, true), row.whenPreserving) << source.description();
            EXPECT_EQ(encodingReplacement(source, false), row.otherwise) << source.description();
        }
    }
}

}  // namespace
}  // namespace corvex::orvaneAudioFormatTests
