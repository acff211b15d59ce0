#include <proto/templateMessages.h>

namespace corvex::inline v0 {
namespace {

/// What a template's messages hold. A size of 0 is that of the source; a bit rate of 0 is the codec's own.
struct TemplateValues {
    Cloud_FileExtension fileExtension;
    Cloud_DerivativeType derivativeType;
    Cloud_VideoCodec videoCodec;
    Cloud_AudioCodec audioCodec;
    std::uint32_t width, height;
    float megabitsPerSecond;
};

TemplateValues valuesOf(TranscodeVideoOptionsTemplate videoTemplate) {
    switch (videoTemplate) {
        case TranscodeVideoOptionsTemplate::iOSCurrent:
            return {CLOUD_FILE_EXTENSION_MP4,
                    CLOUD_DERIVATIVE_TYPE_VIEWING,
                    CLOUD_VIDEO_CODEC_H264,
                    CLOUD_AUDIO_CODEC_AAC,
                    1920,
                    1080,
                    10.0F};
        case TranscodeVideoOptionsTemplate::h264:
            return {CLOUD_FILE_EXTENSION_MOV,
                    CLOUD_DERIVATIVE_TYPE_VIEWING,
                    CLOUD_VIDEO_CODEC_H264,
                    CLOUD_AUDIO_CODEC_AAC,
                    0,
                    0,
                    0.0F};
        case TranscodeVideoOptionsTemplate::proRes422:
            return {CLOUD_FILE_EXTENSION_MOV,
                    CLOUD_DERIVATIVE_TYPE_EDITORIAL,
                    CLOUD_VIDEO_CODEC_PRORES_422,
                    CLOUD_AUDIO_CODEC_LPCM,
                    0,
                    0,
                    0.0F};
        case TranscodeVideoOptionsTemplate::proRes4444:
            return {CLOUD_FILE_EXTENSION_MOV,
                    CLOUD_DERIVATIVE_TYPE_MASTERING,
                    CLOUD_VIDEO_CODEC_PRORES_4444,
                    CLOUD_AUDIO_CODEC_LPCM,
                    0,
                    0,
                    0.0F};
    }
    fatalError("unexpected enumeration case");
}

}  // namespace

Cloud_VideoConversionOptions templateVideoOptions(TranscodeVideoOptionsTemplate videoTemplate) {
    const TemplateValues values = valuesOf(videoTemplate);
    Cloud_VideoConversionOptions options;
    options.set_codec(values.videoCodec);
    options.set_width(values.width);
    options.set_height(values.height);
    options.set_aspect_scaling(values.width == 0 ? CLOUD_ASPECT_SCALING_MATCH : CLOUD_ASPECT_SCALING_LETTERBOX);
    options.set_bit_rate(values.megabitsPerSecond);
    options.set_prepare_for_web(values.derivativeType == CLOUD_DERIVATIVE_TYPE_VIEWING);
    return options;
}

Cloud_PresetPipeline templatePipeline(TranscodeVideoOptionsTemplate videoTemplate) {
    const TemplateValues values = valuesOf(videoTemplate);
    const std::string identifier = definedPresetID(videoTemplate);
    const std::string name(description(videoTemplate));

    Cloud_PresetPipeline pipeline;
    pipeline.set_pipeline_id(identifier);
    pipeline.set_name(name);
    Cloud_Preset& preset = *pipeline.add_presets();
    preset.set_preset_id(identifier);
    preset.set_name(name);
    preset.set_job_type(CLOUD_JOB_TYPE_TRANSCODE);
    Cloud_ConversionOptions& options = *preset.mutable_transcode_info()->mutable_conversion_options();
    options.set_file_extension(values.fileExtension);
    options.set_derivative_type(values.derivativeType);
    *options.mutable_video_options() = templateVideoOptions(videoTemplate);
    options.mutable_audio_options()->set_codec(values.audioCodec);
    options.mutable_audio_options()->set_sample_rate(48000);
    return pipeline;
}

}  // namespace corvex::inline v0
