#include <Corvex/exported/TranscodeVocabulary.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace corvex {
namespace {

/// Words of one family, each under its name, in the order of the family's cases.
template <class Family>
struct Row {
    Family constant;
    std::string_view text;
};

template <class Family, std::size_t count>
void expectCases(const Row<Family> (&rows)[count]) {
    std::vector<std::string_view> expected;
    std::vector<std::string_view> cases;
    for (const auto& row : rows) {
        EXPECT_EQ(row.constant.rawValue(), row.text);
        expected.push_back(row.text);
    }
    for (const Family& word : Family::allCases()) cases.push_back(word.rawValue());
    EXPECT_EQ(cases, expected);
}

TEST(Vocabulary, commandsKeepTheirOrder) {
    expectCases<OAVTranscodeCliCommand>({
        {OAVCliHelpFlag, "-h"},
        {OAVCliCodecsFlag, "-codecs"},
        {OAVCliFormatsFlag, "-formats"},
        {OAVCliVersionFlag, "-version"},
        {OAVCliAcknowledgementFlag, "-acknowledge"},
        {OAVCliPresetsFlag, "-presets"},
        {OAVCliAspectRatioScalingsFlag, "-aspect_scalings"},
        {OAVCliCropAnchorsFlag, "-crop_anchors"},
        {OAVCliColorSpacesFlag, "-color_spaces"},
        {OAVCliAudioChannelLayoutsFlag, "-audio_channel_layouts"},
        {OAVCliAudioChannelBitmapsFlag, "-audio_bitmap_values"},
        {OAVCliTimecodeBurnAnchorsFlag, "-tc_burn_anchors"},
        {OAVCliGpuDevicesFlag, "-gpu_devices"},
        {OAVCliVideoColorMatriciesFlag, "-color_matrix"},
        {OAVCliVideoColorTransferFunctionsFlag, "-transfer_func"},
    });
}

TEST(Vocabulary, flagsKeepTheirOrder) {
    expectCases<OAVTranscodeArgumentFlag>({
        {OAVInputPrefixFlag, "-in"},
        {OAVOutputFileFlag, "-out"},
        {OAVProgressFileFlag, "-progress_file"},
        {OAVProgressOutputPrefixFlag, "-progress_prefix"},
        {OAVOverwriteExistingFlag, "-overwrite"},
        {OAVFileFormatFlag, "-file_format"},
        {OAVColorLutFileFlag, "-clut"},
        {OAVPrepareForWebFlag, "-web"},
        {OAVPresetFlag, "-preset"},
        {OAVWorkDirectoryFlag, "-work_dir"},
        {OAVLegacyTranscodePipelineFlag, "-legacy-pipeline"},
        {OAVLanguageCodeFlag, "-lang_code"},
    });
    expectCases<OAVTranscodeVideoArgumentFlag>({
        {OAVNoVideoFlag, "-vn"},
        {OAVVideoFormatFlag, "-vcodec"},
        {OAVVideoFrameRateFlag, "-vr"},
        {OAVVideoDimensionsFlag, "-dims"},
        {OAVVideoAspectScalingFlag, "-aspect_scaling"},
        {OAVVideoAspectCropAnchorFlag, "-crop_anchor"},
        {OAVVideoBitRateFlag, "-vbr"},
        {OAVVideoBitDepthFlag, "-vbd"},
        {OAVVideoPreserveLogEncodingFlag, "-preserve_log"},
        {OAVVideoColorSpaceFlag, "-c_space"},
        {OAVVideoColorMatrixFlag, "-c_matrix"},
        {OAVVideoColorTransferFunctionFlag, "-c_transfer"},
        {OAVVideoKeyFramesFlag, "-key_frames"},
        {OAVVideoGPUDecodingFlag, "-gpu_decoding"},
        {OAVVideoGPUTransformFlag, "-gpu_trans"},
        {OAVVideoGPUEncodingFlag, "-gpu_encoding"},
        {OAVVideoProfileFlag, "-vprofile"},
        {OAVVideoAdditionalDecodeOptionsFlag, "-additional_decode_options"},
        {OAVVideoMaxFrames, "-mf"},
        {OAVVideoFrameCapacityFlag, "-v_frame_cap"},
        {OAVVideoMaxVideoFrameMemory, "-max_v_frame_mem"},
        {OAVVideoUnboundedFrameCapacityFlag, "-v_nocap"},
        {OAVVideoColorRangeFlag, "-v_colrange"},
        {OAVVideoREDPremiumDecodeFlag, "-red_premium"},
        {OAVVideoDecodeEngineFlag, "-v_decoder"},
    });
    expectCases<OAVTranscodeAudioArgumentFlag>({
        {OAVNoAudioFlag, "-an"},
        {OAVCopyAudioFlag, "-acopy"},
        {OAVAudioIgnoreTracksPrefixFlag, "-ac_omit"},
        {OAVDiscreteAudioFlag, "-adiscrete"},
        {OAVAudioChannelMatchSourceFlag, "-a_ch_match"},
        {OAVAudioFormatFlag, "-acodec"},
        {OAVAudioBitsPerChannelFlag, "-abpc"},
        {OAVAudioSampleRateFlag, "-asr"},
        {OAVAudioChannelLayoutFlag, "-acl"},
        {OAVAudioChannelLayoutTagFlag, "-acl_tag"},
        {OAVAudioBitRateFlag, "-abr"},
        {OAVAudioQualityFlag, "-aqual"},
        {OAVAudioLanguageCodeFlag, "-alang_code"},
        {OAVAudioDecodeEngineFlag, "-a_decoder"},
    });
    expectCases<OAVTranscodeTimecodeArgumentFlag>({
        {OAVTimecodeAddTrackFlag, "-tc_track"},
        {OAVTimecodeAddBurnFlag, "-tc_burn"},
        {OAVTimecodeBurnFontSize, "-tc_burn_size"},
        {OAVTimecodeBurnFontRGB, "-tc_burn_font_rgb"},
        {OAVTimecodeBurnBoxRGB, "-tc_burn_box_rgb"},
        {OAVTimecodeMatchSourceFlag, "-tc_match"},
        {OAVTimecodeFromCreationDateFlag, "-tc_creation"},
        {OAVTimecodeCustomFlag, "-tc_custom"},
        {OAVTimecodeFrameRateFlag, "-tc_rate"},
        {OAVTimecodeIsDropFlag, "-tc_drop"},
        {OAVTimecodeIsNonDropFlag, "-tc_non_drop"},
        {OAVTimecodeBypassNTSCDropFlag, "-tc_no_ntsc"},
    });
    expectCases<OAVTranscodeWatermarkFileArgumentFlag>({
        {OAVWatermarkFileBurnAnchorFlag, "-wmf_anchor"},
        {OAVWatermarkFileBurnFilePathFlag, "-wmf_path"},
        {OAVWatermarkFileBurnScaleFlag, "-wmf_scale"},
    });
    expectCases<OAVTranscodeWatermarkTextArgumentFlag>({
        {OAVWatermarkTextAddBurnFlag, "-wmt_burn"},
        {OAVWatermarkTextBurnTextFlag, "-wmt_text"},
        {OAVWatermarkTextBurnFontSizeFlag, "-wmt_size"},
        {OAVWatermarkTextBurnAnchorFlag, "-wmt_anchor"},
        {OAVWatermarkTextBurnFontRGBFlag, "-wmt_font_rgb"},
        {OAVWatermarkTextBurnBoxRGBFlag, "-wmt_box_rgb"},
    });
    expectCases<OAVTranscodeArriLookArgumentFlag>({
        {OAVArriLookColorSpacePrimaryFlag, "-arri_cs"},
        {OAVArriLookColorSpaceWhitePointFlag, "-arri_wp"},
        {OAVArriLookColorSpaceCurveFlag, "-arri_curve"},
        {OAVArriLookInvalidLookResolutionFlag, "-arri_inv_res"},
    });
}

TEST(Vocabulary, valuesKeepTheirOrder) {
    expectCases<OAVTranscodeArgumentFileFormatValue>(
        {{OAVQuickTimeFileFormat, "qt"}, {OAVMp4Format, "mp4"}, {OAVWaveFileFormat, "wav"}});
    expectCases<OAVTranscodeArgumentVideoCodecValue>({
        {OAVDnxhdCodec, "dnxhd"},
        {OAVDnxhrLBCodec, "dnxhrlb"},
        {OAVDnxhrSQCodec, "dnxhrsq"},
        {OAVDnxhrHQCodec, "dnxhrhq"},
        {OAVDnxhrHQXCodec, "dnxhrhqx"},
        {OAVDnxhr444Codec, "dnxhr444"},
        {OAVAvcH264Codec, "h264"},
        {OAVHevcCodec, "h265"},
        {OAVMotionJpegCodec, "mjpeg"},
        {OAVMpeg4Codec, "mp4"},
        {OAVProRes4444, "prores4444"},
        {OAVProRes4444XQ, "prores4444xq"},
        {OAVProRes422, "prores422"},
        {OAVProRes422HQ, "prores422hq"},
        {OAVProRes422LT, "prores422lt"},
        {OAVProRes422Proxy, "prores422proxy"},
    });
    expectCases<OAVTranscodeArgumentAspectRatioValue>({{OAVMatchSourceRatio, "match"},
                                                       {OAVStretchAspect, "stretch"},
                                                       {OAVLetterboxAspect, "letterbox"},
                                                       {OAVCropAspect, "crop"}});
    expectCases<OAVTranscodeArgumentOverlayAnchorValue>({
        {OAVAnchorTopLeft, "tl"},
        {OAVAnchorTopCenter, "tc"},
        {OAVAnchorTopRight, "tr"},
        {OAVAnchorCenterLeft, "cl"},
        {OAVAnchorCenter, "c"},
        {OAVAnchorCenterRight, "cr"},
        {OAVAnchorBottomLeft, "bl"},
        {OAVAnchorBottomCenter, "bc"},
        {OAVAnchorBottomRight, "br"},
    });
    expectCases<OAVTranscodeArgumentAudioFormatValue>({
        {OAVLpcmAudioFormatValue, "lpcm"},
        {OAVAacAudioFormatValue, "aac"},
        {OAVAppleLosslessAudioFormatValue, "apple_lossless"},
        {OAVAacHEAudioFormatValue, "aac_he"},
        {OAVAacELDLosslessAudioFormatValue, "aac_eld"},
        {OAVAppleIMA41ADPCMAudioFormatValue, "apple_ima4"},
    });
    expectCases<OAVTranscodeArgumentAudioChannelLayoutValue>({
        {OAVMonoAudioLayout, "mono"},
        {OAVStereoAudioLayout, "stereo"},
        {OAVQuadraphonicAudioLayout, "quad"},
        {OAVPentagonalAudioLayout, "pent"},
        {OAVHexagonalAudioLayout, "hex"},
        {OAVOctagonalAudioLayout, "oct"},
    });
    expectCases<OAVTranscodeEngineValue>(
        {{OAVTranscodeEngineAVFoundation, "av_found"}, {OAVTranscodeEngineFFmpeg, "ffmpeg"}});
    expectCases<OAVUnifiedCodecDecoderValue>({{OAVUnifiedCodecDecoderAVFoundation, "av_found"},
                                              {OAVUnifiedCodecDecoderFFmpeg, "ffmpeg"},
                                              {OAVUnifiedCodecDecoderVideoToolkit, "vt"},
                                              {OAVUnifiedCodecDecoderSonySMDK, "smdk"}});
}

TEST(Vocabulary, constantsOutsideTheCases) {
    const std::pair<std::string_view, std::string_view> rows[] = {
        {OAVCliWatermarkFileBurnAnchorsFlag.rawValue(), "-wmf_burn_anchors"},
        {OAVAudioChannelLayoutDescriptionsFlag.rawValue(), "-acl_descs"},
        {OAVAudioChannelLayoutBitmapFlag.rawValue(), "-acl_bitmap"},
        {OAVTimecodeBurnAnchorFlag.rawValue(), "-tc_burn_anchor"},
        {OAVArriLookColorSpaceRec709.rawValue(), "rec709"},
        {OAVArriLookColorSpaceRec2020.rawValue(), "rec2020"},
        {OAVArriLookColorSpaceP3.rawValue(), "p3"},
        {OAVArriLookColorSpaceAP0.rawValue(), "ap0"},
        {OAVArriLookColorSpaceAWG3.rawValue(), "awg3"},
        {OAVArriLookColorSpaceAWG4.rawValue(), "awg4"},
        {OAVArriCurveBT1886.rawValue(), "bt1886"},
        {OAVArriCurveDCI.rawValue(), "dci"},
        {OAVArriCurvePQ.rawValue(), "pq"},
        {OAVArriCurveHLG.rawValue(), "hlg"},
        {OAVArriCurveLogC3.rawValue(), "logc3"},
        {OAVArriCurveLogC4.rawValue(), "logc4"},
        {OAVArriCurveLinear.rawValue(), "linear"},
        {OAVArriWhitePointD60.rawValue(), "d60"},
        {OAVArriWhitePointDCI.rawValue(), "dci"},
        {OAVArriWhitePointD65.rawValue(), "d65"},
        {OAVArriLookResolutionIgnore.rawValue(), "ignore"},
        {OAVArriLookResolutionFirst.rawValue(), "first"},
        {OAVRec2020ColorSpace.rawValue(), "rec_2020"},
        {OAVRec2020HLGColorSpace.rawValue(), "rec_2020_hlg"},
        {OAVRec2020PQColorSpace.rawValue(), "rec_2020_pq"},
        {OAVRec709ColorSpace.rawValue(), "rec_709"},
        {OAVSrgbColorSpace.rawValue(), "sRGB"},
        {OAVSmptecColorSpace.rawValue(), "smpte_c"},
        {OAVEbu3213ColorSpace.rawValue(), "ebu_3213"},
        {OAV_M_YCbCr_ITU_R_709_2.rawValue(), "cm_rec_709_2"},
        {OAV_M_YCbCr_ITU_R_604_4.rawValue(), "cm_rec_604_4"},
        {OAV_M_YCbCr_SMPTE_240M_1995.rawValue(), "cm_smpte_240m_1995"},
        {OAV_M_YCbCr_ITU_R_2020.rawValue(), "cm_rec_2020"},
        {OAV_T_ITU_R_709_2.rawValue(), "tf_rec_709"},
        {OAV_T_SMPTE_240M_1995.rawValue(), "tf_smpte_240M_1995"},
        {OAV_T_UseGamma.rawValue(), "tf_gamma"},
        {OAV_T_sRGB.rawValue(), "tf_srgb"},
        {OAV_T_ITU_R_2020.rawValue(), "tf_rec_2020"},
        {OAV_T_SMPTE_ST_428_1.rawValue(), "tf_smpte_st_428_1"},
        {OAV_T_SMPTE_ST_2084_PQ.rawValue(), "tf_smpte_st_2084_pq"},
        {OAV_T_ITU_R_2100_HLG.rawValue(), "tf_rec_2100_hlg"},
        {OAV_T_Linear.rawValue(), "tf_linear"},
        {OAVGpuPlatformOpenCLFlag.rawValue(), "opencl"},
        {OAVGpuPlatformMetalFlag.rawValue(), "metal"},
        {OAVGpuPlatformDefaultPlatformFlag.rawValue(), "default"},
        {OAVCopySourceValue.rawValue(), "copy"},
        {OAVOrvaneCloudPresetValue.rawValue(), "orvane_cloud"},
        {OAVOrvaneProRes4444XQPresetValue.rawValue(), "orvane_4444xq"},
    };
    for (const auto& [constant, text] : rows) EXPECT_EQ(constant, text);
}

/// Any text asked through one family: its own switches are the only ones without a value, letter for letter.
template <class Flag>
void expectSwitches(std::vector<std::string_view> switches) {
    std::vector<std::string_view> words{"-foo", "",         "-VN",       "-overwrite",     "-vn",
                                        "-an",  "-tc_burn", "-wmt_burn", "-tc_burn_anchor"};
    for (const Flag& flag : Flag::allCases()) words.push_back(flag.rawValue());
    for (const auto word : words) {
        const bool isSwitch = std::find(switches.begin(), switches.end(), word) != switches.end();
        EXPECT_EQ(Flag(word).acceptsArguments(), !isSwitch) << word;
    }
}

TEST(Vocabulary, onlyTheSwitchesOfAFamilyTakeNoValue) {
    expectSwitches<OAVTranscodeArgumentFlag>({"-overwrite", "-web"});
    expectSwitches<OAVTranscodeVideoArgumentFlag>({"-vn", "-gpu_encoding", "-gpu_decoding", "-v_nocap"});
    expectSwitches<OAVTranscodeAudioArgumentFlag>({"-an", "-acopy", "-adiscrete", "-a_ch_match"});
    expectSwitches<OAVTranscodeTimecodeArgumentFlag>(
        {"-tc_track", "-tc_burn", "-tc_match", "-tc_creation", "-tc_drop", "-tc_non_drop", "-tc_no_ntsc"});
    expectSwitches<OAVTranscodeWatermarkFileArgumentFlag>({});
    expectSwitches<OAVTranscodeWatermarkTextArgumentFlag>({"-wmt_burn"});
    expectSwitches<OAVTranscodeArriLookArgumentFlag>({});
}

}  // namespace
}  // namespace corvex
