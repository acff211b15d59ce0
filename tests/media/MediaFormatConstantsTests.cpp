#include <Corvex/media/MediaFormatConstants.h>

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include <Corvex/exported/MediaVocabulary.h>
#include <Corvex/platform/CharacterSet.h>

namespace corvex::mediaFormatConstantsTests {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Texts = std::vector<std::string>;

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
    struct Row {
        const char* extension;
        Texts containers;
    };
    const Row rows[] = {
        {"MOV", {"QuickTime"}}, {"arx", {"HDE"}}, {"r3d", {"R3D"}},  {"M4V", {"MP4"}}, {"cine", {"CINE"}}, {"m4a", {}},
        {".mov", {}},           {"", {}},         {".m4a", {"MP4"}},
    };
    for (const Row& row : rows) EXPECT_EQ(containersOf(row.extension), row.containers) << row.extension;
}

TEST(MediaFormatConstants, corporationsAreOrderedByTheirBytes) {
    Texts given;
    MediaFormatConstants::alphabeticalEnumerationOfCorporations(
        [&](const ORVMediaCorporation& maker) { given.emplace_back(maker.rawValue()); });
    EXPECT_THAT(given, ElementsAre("ARRI", "Adobe", "Apple", "Avid", "Blackmagic", "CODEX", "Canon", "DJI", "GoPro",
                                   "Insta360", "JVC", "Panasonic", "Phantom", "RED", "Sony"));
    given.clear();
    MediaFormatConstants::alphabeticalEnumerationOfCorporations([&](const ORVMediaCorporation& maker, bool& stop) {
        given.emplace_back(maker.rawValue());
        stop = given.size() == 2;
    });
    EXPECT_THAT(given, ElementsAre("ARRI", "Adobe"));
    MediaFormatConstants::alphabeticalEnumerationOfCorporations(nullptr);
}

TEST(CharacterSet, floatingPointDigitsAreThoseOfAllScriptsAndThePoint) {
    const CharacterSet set = floatingPointDigitCharacterSet();
    for (const char32_t member : {U'0', U'9', U'.', U'\u0663', U'\U0001D7D8'}) EXPECT_TRUE(set.contains(member));
    for (const char32_t other : {U'-', U'e', U',', U'/', U':', U'\u00BD', U'\u2163', char32_t{0xD800}, char32_t{-1U}}) {
        EXPECT_FALSE(set.contains(other)) << static_cast<std::uint32_t>(other);
    }
}

}  // namespace
}  // namespace corvex::mediaFormatConstantsTests
