#include <Corvex/exported/FileExtension.h>
#include <Corvex/exported/OAVTranscodeArgumentFileFormatValue.h>
#include <Corvex/exported/OAVTranscodeArgumentVideoCodecValue.h>

#include <algorithm>
#include <string>
#include <thread>
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
    const std::pair<const char*, const char*> rows[] = {
        {"qt", "mov mp4 "}, {"mp4", "mp4 mov "}, {"wav", "wav "}, {"xyz", ""}, {"QT", ""}, {"", ""},
    };
    for (const auto& [format, expected] : rows) {
        EXPECT_EQ(textOfAll(Format(std::string(format)).validExtensions()), expected) << format;
    }
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

class CodecLists : public testing::Test {
protected:
    ~CodecLists() override {
        Codec::setAllAvidDNxFormats(dnx_);
        Codec::setAllWebFormats(web_);
        Codec::setAllProResFormats(proRes_);
    }
    std::vector<Codec> dnx_ = Codec::allAvidDNxFormats();
    std::vector<Codec> web_ = Codec::allWebFormats();
    std::vector<Codec> proRes_ = Codec::allProResFormats();
};

TEST_F(CodecLists, beginWithTheKnownMembersInOrder) {
    const auto cases = Codec::allCases();
    EXPECT_EQ(dnx_, std::vector(cases.begin(), cases.begin() + 6));
    EXPECT_EQ(web_, std::vector(cases.begin() + 6, cases.begin() + 9));
    EXPECT_EQ(proRes_, std::vector(cases.begin() + 10, cases.end()));
}

TEST_F(CodecLists, decideWhenReplaced) {
    Codec::setAllProResFormats({OAVProRes422});
    EXPECT_EQ(textOfAll(OAVProRes4444.permittedExtensions()), "");
    EXPECT_EQ(textOfAll(OAVProRes422.permittedExtensions()), "mov ");
    Codec::setAllAvidDNxFormats({OAVAvcH264Codec, OAVProRes422, Codec("raw")});
    EXPECT_EQ(textOfAll(OAVAvcH264Codec.permittedExtensions()), "mov mxf ");  // the DNx list is asked first
    EXPECT_EQ(textOfAll(Codec("raw").permittedExtensions()), "mov mxf ");
    EXPECT_EQ(textOfAll(OAVDnxhdCodec.permittedExtensions()), "");
    Codec::setAllWebFormats({});
    EXPECT_EQ(textOfAll(OAVHevcCodec.permittedExtensions()), "mp4 m4v mov ");
}

TEST_F(CodecLists, mayBeReplacedWhileOthersAsk) {
    std::jthread writer([this] {
        for (int i = 0; i < 500; ++i) Codec::setAllProResFormats(i % 2 == 0 ? std::vector<Codec>{} : proRes_);
    });
    for (int i = 0; i < 500; ++i) {
        const auto extensions = textOfAll(OAVProRes422HQ.permittedExtensions());
        ASSERT_TRUE(extensions.empty() || extensions == "mov ");
    }
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
