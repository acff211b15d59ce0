#include <Corvex/media/MediaFormatConstants.h>

#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

#include <Corvex/exported/MediaVocabulary.h>
#include <Corvex/media/OrvaneAudioFormat.h>
#include <Corvex/platform/CharacterSet.h>

namespace corvex::mediaFormatTests {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Texts = std::vector<std::string>;
using enum OrvaneAudioFormat;

Texts containersOf(std::string_view extension) {
    Texts given;
    MediaFormatConstants::enumerateContainersForFileExtension(
        extension, [&](const ORVMediaFileContainer& container) { given.emplace_back(container.rawValue()); });
    return given;
}

Texts extensionsOf(const ORVMediaFileContainer& container, std::size_t stopAt = SIZE_MAX) {
    Texts given;
    MediaFormatConstants::enumerateValidFileExtensionsForMediaContainer(container,
                                                                        [&](std::string_view extension, bool& stop) {
                                                                            given.emplace_back(extension);
                                                                            stop = given.size() == stopAt;
                                                                        });
    return given;
}

template <class Family>
Texts texts() {
    Texts given;
    for (const Family& value : Family::allCases()) given.emplace_back(value.rawValue());
    return given;
}

TEST(MediaVocabulary, textsAreThoseThatUsersReadAndMetadataStore) {
    EXPECT_THAT(texts<ORVMediaCorporation>(),
                ElementsAre("Adobe", "Apple", "ARRI", "Avid", "Blackmagic", "Canon", "CODEX", "Convergent Design",
                            "DJI", "Insta360", "GoPro", "JVC", "Nikon", "Panasonic", "Phantom", "RED", "Sony"));
    EXPECT_THAT(texts<ORVMediaFileContainer>(), ElementsAre("AVI", "HDE", "Image Sequence", "MP4", "MXF", "NEV",
                                                            "QuickTime", "R3D", "BRAW", "DPX", "CINE"));
    EXPECT_THAT(texts<ORVMediaRecordingFormat>(), ElementsAre("AVCHD", "CinemaDNG", "P2", "Raw Volume", "XDCAM"));
    EXPECT_THAT(texts<ORVVideoCodec>(),
                ElementsAre("MPEG", "AES", "ARRIRAW", "ARRIRAW HDE", "RDD 18", "ARRICORE CBE", "ARRICORE VBE",
                            "Avid DNxHD", "Avid DNxHR", "Blackmagic RAW", "Canon RAW", "Cineform", "H.264", "H.265",
                            "JPEG", "MP2", "MP4", "ProRes", "ProRes 422", "ProRes 4444", "ProRes RAW", "REDCODE RAW"));
    EXPECT_THAT(
        texts<ORVCameraSeries>(),
        ElementsAre("Arri Alexa", "Arri Amira", "Blackmagic URSA", "Canon EOS", "GoPro Hero", "Panasonic AVCCAM",
                    "Panasonic P2", "Panasonic VariCam", "RED DSMC2", "Sony NXCAM", "Sony XAVC", "Sony XDCAM"));
}

TEST(MediaFormatConstants, extensionsOfContainersKeepTheirOrderAndTheirDots) {
    EXPECT_THAT(extensionsOf(ORVMediaFileContainerMP4), ElementsAre("mp4", "m4v", ".m4a", ".m4p", ".m4b", ".m4r"));
    EXPECT_THAT(extensionsOf(ORVMediaFileContainerMP4, 2), ElementsAre("mp4", "m4v"));
    EXPECT_THAT(extensionsOf(ORVMediaFileContainerNEV), IsEmpty());
    EXPECT_THAT(extensionsOf(ORVMediaFileContainerImageSequence), IsEmpty());
    EXPECT_THAT(extensionsOf(ORVMediaFileContainer(std::string("quicktime"))), IsEmpty());
    EXPECT_EQ(MediaFormatConstants::sharedInstance().cachedContainerFileExtensionLookup().size(), 9U);
}

TEST(MediaFormatConstants, containersOfExtensionsAreFoundInAnyCaseButNotBehindDots) {
    const std::pair<const char*, Texts> rows[] = {
        {"MOV", {"QuickTime"}}, {"arx", {"HDE"}}, {"M4V", {"MP4"}}, {"m4a", {}},
        {".mov", {}},           {"", {}},         {".m4a", {"MP4"}}};
    for (const auto& [extension, containers] : rows) EXPECT_EQ(containersOf(extension), containers) << extension;
}

TEST(MediaFormatConstants, corporationsAreOrderedByTheirBytes) {
    Texts given;
    MediaFormatConstants::alphabeticalEnumerationOfCorporations(
        [&](const ORVMediaCorporation& maker) { given.emplace_back(maker.rawValue()); });
    EXPECT_THAT(given, ElementsAre("ARRI", "Adobe", "Apple", "Avid", "Blackmagic", "CODEX", "Canon", "DJI", "GoPro",
                                   "Insta360", "JVC", "Panasonic", "Phantom", "RED", "Sony"));
    int calls = 0;
    MediaFormatConstants::alphabeticalEnumerationOfCorporations(
        [&](const ORVMediaCorporation&, bool& stop) { stop = ++calls == 2; });
    EXPECT_EQ(calls, 2);
    MediaFormatConstants::alphabeticalEnumerationOfCorporations(nullptr);
}

TEST(CharacterSet, floatingPointDigitsAreThoseOfAllScriptsAndThePoint) {
    const CharacterSet set = floatingPointDigitCharacterSet();
    for (const char32_t member : {U'0', U'9', U'.', U'\u0663', U'\U0001D7D8'}) EXPECT_TRUE(set.contains(member));
    for (const char32_t other : {U'-', U'e', U',', U'/', U':', U'\u00BD', U'\u2163', char32_t{0xD800}, char32_t{-1U}}) {
        EXPECT_FALSE(set.contains(other)) << static_cast<std::uint32_t>(other);
    }
}

TEST(FourCharacterCode, readsAndShowsFourBytes) {
    EXPECT_EQ(FourCharacterCode::make("aac "), FourCharacterCode(0x61616320));
    for (const char* other : {"", "aac", "aac  "}) EXPECT_FALSE(FourCharacterCode::make(other)) << other;
    EXPECT_EQ(FourCharacterCode(0x2E6D7033).description(), ".mp3");
    EXPECT_EQ(FourCharacterCode(0x6D730011).description(), "0x6d730011");
    EXPECT_EQ(FourCharacterCode(0x7E7E7E7F).description(), "0x7e7e7e7f");
}

TEST(OrvaneAudioFormat, hasItsCodeItsValueAndItsSupportLevel) {
    Texts given;
    for (const OrvaneAudioFormat format : allCases<OrvaneAudioFormat>) {
        const FourCharacterCode code = coreAudioEquivalent(format);
        EXPECT_EQ(audioFormatFromCoreAudio(code), format) << code.description();
        given.push_back(code.description() + '|' + std::string(outputFormat(format).rawValue()) + '|' +
                        std::string(rawValue(avEncodingSupportLevel(format))));
    }
    EXPECT_THAT(given, ElementsAre("lpcm|lpcm|fullyEncodable", "alac|apple_lossless|fullyEncodable",
                                   "aac |aac|fullyEncodable", "aach|aac_he|fullyEncodable",
                                   "aace|aac_eld|passthroughCapable", "ima4|apple_ima4|passthroughCapable"));
    EXPECT_FALSE(audioFormatFromCoreAudio("ac-3"));
}

TEST(OrvaneAudioFormat, everySourceHasAReplacement) {
    const std::tuple<std::vector<FourCharacterCode>, OrvaneAudioFormat, OrvaneAudioFormat> rows[] = {
        {{"alac"}, appleLossless, appleLossless},
        {{"aach"}, aacHe, aacHe},
        {{"ac-3", "cac3"}, appleLossless, aac},
        {{"alaw", "ulaw", "ima4", "MAC3", "MAC6", "aacs"}, lpcm, aac},
        {{"aace", "aacf", "aacg", "aacl", "aacp", "aac ", "Qclp", "QDM2", "QDMC", "celp", "hvxc", "twvq", "samr",
          "sawb", "usac", ".mp1", ".mp2", ".mp3"},
         aac,
         aac},
        {{"lpcm", "aaci", "mac3", "flac", FourCharacterCode(0)}, lpcm, lpcm},
    };
    for (const auto& [sources, whenPreserving, otherwise] : rows) {
        for (const FourCharacterCode source : sources) {
            EXPECT_EQ(encodingReplacement(source, true), whenPreserving) << source.description();
            EXPECT_EQ(encodingReplacement(source, false), otherwise) << source.description();
        }
    }
}

}  // namespace
}  // namespace corvex::mediaFormatTests
