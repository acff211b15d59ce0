#include <Corvex/exported/FileExtension.h>
#include <Corvex/exported/OAVTranscodeArgumentFileFormatValue.h>
#include <Corvex/exported/OAVTranscodeArgumentVideoCodecValue.h>

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace corvex::fileFormatTests {
namespace {

using Codec = OAVTranscodeArgumentVideoCodecValue;
using Format = OAVTranscodeArgumentFileFormatValue;

std::string textOfAll(std::span<const FileExtension> extensions) {
    std::string text;
    for (const auto extension : extensions) text += std::string(rawValue(extension)) + ' ';
    return text;
}

TEST(FileFormat, extensionsBeginWithTheFormatsOwn) {
    EXPECT_EQ(textOfAll(OAVQuickTimeFileFormat.validExtensions()), "mov mp4 ");
    EXPECT_EQ(textOfAll(Format("mp4").validExtensions()), "mp4 mov ");
    EXPECT_EQ(textOfAll(OAVWaveFileFormat.validExtensions()), "wav ");
    EXPECT_EQ(textOfAll(Format("QT").validExtensions()), "");
    EXPECT_EQ(OAVWaveFileFormat.preferredExtension(), FileExtension::wav);
    EXPECT_EQ(Format("xyz").preferredExtension(), std::nullopt);
}

TEST(VideoCodec, everyCodecHasItsContainers) {
    for (const Codec& codec : Codec::allCases()) {
        const std::string_view text = codec.rawValue();
        const std::string expected = text.starts_with("dnx")      ? "mov mxf "
                                     : text.starts_with("prores") ? "mov "
                                     : text == "h264"             ? "mov mp4 m4v "
                                     : text == "mjpeg"            ? "mov avi "
                                                                  : "mp4 m4v mov ";
        EXPECT_EQ(textOfAll(codec.permittedExtensions()), expected) << text;
    }
    EXPECT_EQ(textOfAll(Codec("H264").permittedExtensions()), "");
}

TEST(VideoCodec, listsBeginWithTheKnownMembersInOrderAndDecideWhenReplaced) {
    const auto dnx = Codec::allAvidDNxFormats(), web = Codec::allWebFormats(), proRes = Codec::allProResFormats();
    const auto cases = Codec::allCases();
    EXPECT_EQ(dnx, std::vector(cases.begin(), cases.begin() + 6));
    EXPECT_EQ(web, std::vector(cases.begin() + 6, cases.begin() + 9));
    EXPECT_EQ(proRes, std::vector(cases.begin() + 10, cases.end()));
    Codec::setAllProResFormats({OAVProRes422});
    EXPECT_EQ(textOfAll(OAVProRes4444.permittedExtensions()), "");
    Codec::setAllAvidDNxFormats({OAVAvcH264Codec, Codec("raw")});
    EXPECT_EQ(textOfAll(OAVAvcH264Codec.permittedExtensions()), "mov mxf ");  // the DNx list is asked first
    EXPECT_EQ(textOfAll(Codec("raw").permittedExtensions()), "mov mxf ");
    EXPECT_EQ(textOfAll(OAVDnxhdCodec.permittedExtensions()), "");
    Codec::setAllWebFormats({});
    EXPECT_EQ(textOfAll(OAVHevcCodec.permittedExtensions()), "mp4 m4v mov ");
    Codec::setAllAvidDNxFormats(dnx);
    Codec::setAllWebFormats(web);
    Codec::setAllProResFormats(proRes);
}

TEST(FileExtension, holdsEveryExtensionOfTheSystem) {
    const std::vector<std::string_view> named{
        "mov", "mxf",  "mp4", "m4v",  "m4a", "m4p",  "m4b", "m4r", "avi",  "r3d",   "braw", "dpx",    "arx", "cine",
        "wav", "alut", "cms", "cube", "dat", "ilut", "lut", "mga", "olut", "1dlut", "3dl",  "3dmesh", "txt", "xml",
    };
    for (const auto text : named) EXPECT_NE(fromRawValue<FileExtension>(text), std::nullopt) << text;
    for (const auto extension : allCases<FileExtension>) {
        const auto text = rawValue(extension);
        EXPECT_EQ(text.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789"), std::string_view::npos) << text;
    }
}

TEST(FileExtension, mapsToTypesAndBack) {
    EXPECT_EQ(uniformType(FileExtension::jpeg), uniformType(FileExtension::jpg));
    EXPECT_EQ(rawValue(uniformType(FileExtension::mov)), "com.apple.quicktime-movie");
    for (const auto type : allCases<OrvaneUTType>) {
        const auto extension = preferredExtension(type);
        ASSERT_NE(extension, std::nullopt) << rawValue(type);
        EXPECT_EQ(uniformType(*extension), type) << rawValue(type);
    }
}

}  // namespace
}  // namespace corvex::fileFormatTests
