#include <algorithm>
#include <cctype>
#include <optional>
#include <string>

#include <google/protobuf/util/json_util.h>
#include <gtest/gtest.h>

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
    const std::pair<Cloud_ColorSpace, std::optional<OrvaneVideoColorSpace>> rows[] = {
        {CLOUD_COLOR_SPACE_UNSPECIFIED, std::nullopt},
        {CLOUD_COLOR_SPACE_UNKNOWN, std::nullopt},
        {CLOUD_COLOR_SPACE_REC_2020, OrvaneVideoColorSpace::rec2020},
        {CLOUD_COLOR_SPACE_REC_709, OrvaneVideoColorSpace::rec709},
        {CLOUD_COLOR_SPACE_SRGB, OrvaneVideoColorSpace::sRGB},
        {CLOUD_COLOR_SPACE_DCI_P3_CINEMA, OrvaneVideoColorSpace::dciP3Cinema},
        {CLOUD_COLOR_SPACE_P3_D65, OrvaneVideoColorSpace::p3D65},
        {CLOUD_COLOR_SPACE_REC_601_SMPTE, OrvaneVideoColorSpace::rec601Smpte},
        {CLOUD_COLOR_SPACE_REC_601_EBU, OrvaneVideoColorSpace::rec601EBU},
        {CLOUD_COLOR_SPACE_REC_2020_HLG, OrvaneVideoColorSpace::rec2020HLG},
        {CLOUD_COLOR_SPACE_REC_2020_PQ, OrvaneVideoColorSpace::rec2020PQ},
        {static_cast<Cloud_ColorSpace>(11), std::nullopt},
        {static_cast<Cloud_ColorSpace>(-1), std::nullopt},
    };
    int number = 0;
    for (const auto& [message, expected] : rows) {
        EXPECT_EQ(colorSpaceOf(message), expected) << message;
        if (Cloud_ColorSpace_IsValid(message)) {
            EXPECT_EQ(message, number++);
        }
    }
    EXPECT_EQ(number, 11);
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

        Cloud_PresetPipeline read;
        ASSERT_TRUE(read.ParseFromString(pipeline.SerializeAsString()));
        EXPECT_EQ(read.SerializeAsString(), pipeline.SerializeAsString());
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
