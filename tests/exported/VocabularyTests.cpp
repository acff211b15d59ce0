#include <Corvex/exported/TranscodeVocabulary.h>

#include <string>

#include <gtest/gtest.h>

namespace corvex::vocabularyTests {
namespace {

/// The words with one blank between.
template <class Words>
std::string joined(const Words& words) {
    std::string text;
    for (const auto& word : words) text += (text.empty() ? "" : " ") + std::string(word.rawValue());
    return text;
}
template <class... Constant>
std::string together(const Constant&... constants) {
    std::string text = ((std::string(constants.rawValue()) + " ") + ...);
    text.pop_back();
    return text;
}

// The families' words as hosts and workers of every version exchange them, in the order of their cases.
TEST(Vocabulary, flagsKeepTheirTextsAndOrder) {
    EXPECT_EQ(joined(OAVTranscodeCliCommand::allCases()),
              "-h -codecs -formats -version -acknowledge -presets -aspect_scalings -crop_anchors -color_spaces "
              "-audio_channel_layouts -audio_bitmap_values -tc_burn_anchors -gpu_devices -color_matrix -transfer_func");
    EXPECT_EQ(joined(OAVTranscodeArgumentFlag::allCases()),
              "-in -out -progress_file -progress_prefix -overwrite -file_format -clut -web -preset -work_dir "
              "-legacy-pipeline -lang_code");
    EXPECT_EQ(joined(OAVTranscodeVideoArgumentFlag::allCases()),
              "-vn -vcodec -vr -dims -aspect_scaling -crop_anchor -vbr -vbd -preserve_log -c_space -c_matrix "
              "-c_transfer -key_frames -gpu_decoding -gpu_trans -gpu_encoding -vprofile -additional_decode_options -mf "
              "-v_frame_cap -max_v_frame_mem -v_nocap -v_colrange -red_premium -v_decoder");
    EXPECT_EQ(joined(OAVTranscodeAudioArgumentFlag::allCases()),
              "-an -acopy -ac_omit -adiscrete -a_ch_match -acodec -abpc -asr -acl -acl_tag -abr -aqual -alang_code "
              "-a_decoder");
    EXPECT_EQ(joined(OAVTranscodeTimecodeArgumentFlag::allCases()),
              "-tc_track -tc_burn -tc_burn_size -tc_burn_font_rgb -tc_burn_box_rgb -tc_match -tc_creation -tc_custom "
              "-tc_rate -tc_drop -tc_non_drop -tc_no_ntsc");
    EXPECT_EQ(joined(OAVTranscodeWatermarkFileArgumentFlag::allCases()), "-wmf_anchor -wmf_path -wmf_scale");
    EXPECT_EQ(joined(OAVTranscodeWatermarkTextArgumentFlag::allCases()),
              "-wmt_burn -wmt_text -wmt_size -wmt_anchor -wmt_font_rgb -wmt_box_rgb");
    EXPECT_EQ(joined(OAVTranscodeArriLookArgumentFlag::allCases()), "-arri_cs -arri_wp -arri_curve -arri_inv_res");
}

TEST(Vocabulary, valuesKeepTheirTextsAndOrder) {
    EXPECT_EQ(joined(OAVTranscodeArgumentFileFormatValue::allCases()), "qt mp4 wav");
    EXPECT_EQ(joined(OAVTranscodeArgumentVideoCodecValue::allCases()),
              "dnxhd dnxhrlb dnxhrsq dnxhrhq dnxhrhqx dnxhr444 h264 h265 mjpeg mp4 prores4444 prores4444xq prores422 "
              "prores422hq prores422lt prores422proxy");
    EXPECT_EQ(joined(OAVTranscodeArgumentAspectRatioValue::allCases()), "match stretch letterbox crop");
    EXPECT_EQ(joined(OAVTranscodeArgumentOverlayAnchorValue::allCases()), "tl tc tr cl c cr bl bc br");
    EXPECT_EQ(joined(OAVTranscodeArgumentAudioFormatValue::allCases()),
              "lpcm aac apple_lossless aac_he aac_eld apple_ima4");
    EXPECT_EQ(joined(OAVTranscodeArgumentAudioChannelLayoutValue::allCases()), "mono stereo quad pent hex oct");
    EXPECT_EQ(joined(OAVTranscodeEngineValue::allCases()), "av_found ffmpeg");
    EXPECT_EQ(joined(OAVUnifiedCodecDecoderValue::allCases()), "av_found ffmpeg vt smdk");
}

// Words that belong to no list, and so to no other test.
TEST(Vocabulary, wordsOutsideTheCasesKeepTheirTexts) {
    EXPECT_EQ(together(OAVCliWatermarkFileBurnAnchorsFlag, OAVAudioChannelLayoutDescriptionsFlag,
                       OAVAudioChannelLayoutBitmapFlag, OAVTimecodeBurnAnchorFlag),
              "-wmf_burn_anchors -acl_descs -acl_bitmap -tc_burn_anchor");
    EXPECT_EQ(together(OAVArriLookColorSpaceRec709, OAVArriLookColorSpaceRec2020, OAVArriLookColorSpaceP3,
                       OAVArriLookColorSpaceAP0, OAVArriLookColorSpaceAWG3, OAVArriLookColorSpaceAWG4),
              "rec709 rec2020 p3 ap0 awg3 awg4");
    EXPECT_EQ(together(OAVArriCurveBT1886, OAVArriCurveDCI, OAVArriCurvePQ, OAVArriCurveHLG, OAVArriCurveLogC3,
                       OAVArriCurveLogC4, OAVArriCurveLinear),
              "bt1886 dci pq hlg logc3 logc4 linear");
    EXPECT_EQ(together(OAVArriWhitePointD60, OAVArriWhitePointDCI, OAVArriWhitePointD65, OAVArriLookResolutionIgnore,
                       OAVArriLookResolutionFirst),
              "d60 dci d65 ignore first");
    EXPECT_EQ(together(OAVGpuPlatformOpenCLFlag, OAVGpuPlatformMetalFlag, OAVGpuPlatformDefaultPlatformFlag,
                       OAVCopySourceValue, OAV_T_UseGamma),
              "opencl metal default copy tf_gamma");
}

/// The flags of a family that take no value.
template <class Flag>
std::string switches() {
    std::string text;
    for (const Flag& flag : Flag::allCases()) {
        if (!flag.acceptsArguments()) text += std::string(flag.rawValue()) + " ";
    }
    return text;
}

TEST(Vocabulary, onlySwitchesTakeNoValue) {
    EXPECT_EQ(switches<OAVTranscodeArgumentFlag>() + switches<OAVTranscodeVideoArgumentFlag>() +
                  switches<OAVTranscodeAudioArgumentFlag>() + switches<OAVTranscodeTimecodeArgumentFlag>() +
                  switches<OAVTranscodeWatermarkTextArgumentFlag>(),
              "-overwrite -web -vn -gpu_decoding -gpu_encoding -v_nocap -an -acopy -adiscrete -a_ch_match "
              "-tc_track -tc_burn -tc_match -tc_creation -tc_drop -tc_non_drop -tc_no_ntsc -wmt_burn ");
    EXPECT_TRUE(OAVTranscodeVideoArgumentFlag("-foo").acceptsArguments());
}

}  // namespace
}  // namespace corvex::vocabularyTests
