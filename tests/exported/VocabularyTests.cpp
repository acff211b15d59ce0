#include <Corvex/exported/TranscodeVocabulary.h>

#include <string>

#include <gtest/gtest.h>

namespace corvex::vocabularyTests {
namespace {

/// The words with one blank between.
template <class Words>
std::string joined(const Words& words) {
    std::string text;
    for (const auto& word : words) {
        text += text.empty() ? "" : " ";
        text += word.rawValue();
    }
    return text;
}
// The flags as hosts and workers of every version exchange them, in the order of their cases.
TEST(Vocabulary, flagsKeepTheirTextsAndOrder) {
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
