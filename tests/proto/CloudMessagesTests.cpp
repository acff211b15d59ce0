#include <algorithm>
#include <cctype>
#include <string>

#include <google/protobuf/util/json_util.h>
#include <gtest/gtest.h>

#include <Corvex/exported/FileExtension.h>
#include <Corvex/exported/OAVTranscodeArgumentAspectRatioValue.h>
#include <Corvex/exported/OAVTranscodeArgumentAudioFormatValue.h>
#include <Corvex/exported/OAVTranscodeArgumentVideoCodecValue.h>
#include <proto/cloudAudioCodec.h>
#include <proto/cloudColorSpace.h>
#include <proto/templateMessages.h>

namespace corvex::cloudMessagesTests {
namespace {

using Template = TranscodeVideoOptionsTemplate;

/// "prores422hq" for "CLOUD_VIDEO_CODEC_PRORES_422_HQ" and the prefix "CLOUD_VIDEO_CODEC_".
std::string wordOf(const std::string& name, std::size_t prefixLength) {
    std::string word;
    for (const char character : name.substr(prefixLength)) {
        if (character != '_') word += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    }
    return word;
}

/// The enumeration's values, but for the first, are the words of the family in their order, counted from 1.
template <class Family>
void expectSameWords(const google::protobuf::EnumDescriptor& enumeration, std::size_t prefixLength) {
    const auto cases = Family::allCases();
    ASSERT_EQ(enumeration.value_count(), static_cast<int>(cases.size()) + 1);
    for (int number = 1; number < enumeration.value_count(); ++number) {
        std::string expected(cases[static_cast<std::size_t>(number) - 1].rawValue());
        std::erase(expected, '_');
        const auto* value = enumeration.FindValueByNumber(number);
        ASSERT_NE(value, nullptr) << number;
        EXPECT_EQ(wordOf(value->name(), prefixLength), expected);
    }
}

TEST(CloudMessages, enumerationsFollowTheVocabulary) {
    expectSameWords<OAVTranscodeArgumentVideoCodecValue>(*Cloud_VideoCodec_descriptor(), 18);
    expectSameWords<OAVTranscodeArgumentAudioFormatValue>(*Cloud_AudioCodec_descriptor(), 18);
    expectSameWords<OAVTranscodeArgumentAspectRatioValue>(*Cloud_AspectScaling_descriptor(), 21);
}

TEST(CloudMessages, audioFormatsHaveTheCodecOfTheirName) {
    for (const auto format : allCases<OrvaneAudioFormat>) {
        std::string expected(outputFormat(format).rawValue());
        std::erase(expected, '_');
        const auto codec = protobufEquivalent(format);
        ASSERT_TRUE(codec) << expected;
        EXPECT_EQ(wordOf(Cloud_AudioCodec_Name(*codec), 18), expected);
    }
}

TEST(CloudMessages, colourSpacesKeepTheirNumbers) {
    for (int number = -1; number < 12; ++number) {
        const auto message = static_cast<Cloud_ColorSpace>(number);
        const auto space = colorSpaceOf(message);
        EXPECT_EQ(space.has_value(), number >= 2 && number <= 10) << number;
        if (!space) continue;
        EXPECT_EQ(wordOf(Cloud_ColorSpace_Name(message), 18), wordOf(std::string(caseName(*space)), 0)) << number;
    }
}

TEST(CloudMessages, templatesAreCompletePipelines) {
    for (const Template value : allCases<Template>) {
        const Cloud_PresetPipeline pipeline = templatePipeline(value);
        ASSERT_EQ(pipeline.presets_size(), 1);
        const Cloud_Preset& preset = pipeline.presets(0);
        EXPECT_EQ(preset.preset_id(), "ORV_TranscodePreset_Template-" + std::string(rawValue(value)));
        EXPECT_EQ(preset.job_type(), CLOUD_JOB_TYPE_TRANSCODE);
        const Cloud_ConversionOptions& options = preset.transcode_info().conversion_options();
        EXPECT_EQ(options.video_options().SerializeAsString(), templateVideoOptions(value).SerializeAsString());
        EXPECT_NE(options.derivative_type(), CLOUD_DERIVATIVE_TYPE_UNSPECIFIED);
        // The file can hold what is encoded into it.
        const auto codec =
            OAVTranscodeArgumentVideoCodecValue::allCases()[static_cast<std::size_t>(options.video_options().codec()) -
                                                            1];
        const auto extension =
            fromRawValue<FileExtension>(wordOf(Cloud_FileExtension_Name(options.file_extension()), 21));
        const auto permitted = codec.permittedExtensions();
        EXPECT_TRUE(extension && std::count(permitted.begin(), permitted.end(), *extension) == 1) << rawValue(value);
    }
}

TEST(CloudMessages, onePipelineInFull) {
    std::string json;
    ASSERT_TRUE(google::protobuf::util::MessageToJsonString(templatePipeline(Template::iOSCurrent), &json).ok());
    EXPECT_EQ(json, R"({"pipelineId":"ORV_TranscodePreset_Template-iOSCurrent","name":"Current iOS/tvOS","presets":[)"
                    R"({"presetId":"ORV_TranscodePreset_Template-iOSCurrent","name":"Current iOS/tvOS",)"
                    R"("jobType":"CLOUD_JOB_TYPE_TRANSCODE","transcodeInfo":{"conversionOptions":{)"
                    R"("fileExtension":"CLOUD_FILE_EXTENSION_MP4","derivativeType":"CLOUD_DERIVATIVE_TYPE_VIEWING",)"
                    R"("videoOptions":{"codec":"CLOUD_VIDEO_CODEC_H264","width":1920,"height":1080,)"
                    R"("aspectScaling":"CLOUD_ASPECT_SCALING_LETTERBOX","bitRate":10,"prepareForWeb":true},)"
                    R"("audioOptions":{"codec":"CLOUD_AUDIO_CODEC_AAC","sampleRate":48000}}}}]})");
}

}  // namespace
}  // namespace corvex::cloudMessagesTests
