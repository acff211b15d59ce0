#include <tools/corvex/worker/TranscodeJob.h>

#include <gmock/gmock.h>

#include <tests/Thrown.h>
#include <tests/tools/Command.h>

namespace corvex::tool::transcodeJobTests {
namespace {

using corvex::test::thrownBy;
using ::testing::HasSubstr;

TranscodeJob jobOf(const std::string& line) { return TranscodeJob::make(TranscodeCliArguments(test::wordsOf(line))); }

TEST(TranscodeJob, usageErrorsNameTheOffenderAndWhatWouldBeRight) {
    constexpr std::tuple<const char*, const char*, const char*> rows[] = {
        {"-out x.mov", "-in is missing", "the file to transcode"},
        {"-in_0 a -in_0_0 b -out x.mov", "'-in_0'", "remove it"},
        {"-in a", "-out is missing", "the file to write"},
        {"-in a -out x.mov -file_format", "-file_format:", "a value"},
        {"-in a -out x.avi", "'x.avi'", ".mov, .mp4 or .wav"},
        {"-in a -out x.mov -file_format mxf", "'mxf'", "qt, mp4, wav"},
        {"-in a -out x.mov -file_format wav", "'x.mov'", "ends in .wav"},
        {"-in a -out x.wav -file_format qt", "'x.wav'", "ends in .mov or .mp4"},
        {"-in a -out x.mov -vcodec vp9", "'vp9'", "prores422proxy"},
        {"-in a -out x.mp4 -vcodec prores422", "prores422", "expected qt"},
        {"-in a -out x.wav -vcodec h264", "-vcodec", "-vn"},
        {"-in a -out x.mov -dims 1920", "'1920'", "1920x1080"},
        {"-in a -out x.mov -dims 10x16385", "'10x16385'", "1 to 16384"},
        {"-in a -out x.mov -dims 9x9 -aspect_scaling fit", "'fit'", "match, stretch, letterbox, crop"},
        {"-in a -out x.mov -aspect_scaling crop", "-aspect_scaling", "-dims"},
        {"-in a -out x.mov -dims 9x9 -aspect_scaling crop -crop_anchor x", "'x'", "tl, tc, tr"},
        {"-in a -out x.mov -vbr 0.000999", "'0.000999'", "0.001 to 10000"},
        {"-in a -out x.mov -vcodec prores422 -vbr 5", "prores422", "remove the flag"},
        {"-in a -out x.mov -acodec mp3", "'mp3'", "lpcm, aac"},
        {"-in a -out x.mov -asr 0", "'0'", "1 to 768000"},
        {"-in a -out x.mov -abr 128", "-abr '128'", "bits per second, 1000 to"},
        {"-in a -out x.mov -vn -an", "-vn and -an", "nothing to write"},
        {"-in a -out x.mov -preset mine", "'mine'", "orvane_cloud or orvane_4444xq"},
        {"-in a -out x.mov -vn -vcodec banana", "-vcodec 'banana'", "h264, h265"},
        {"-in a -out x.mov -an -acl 6 -aqual best", "-aqual 'best'", "low, medium"},
        {"-in a -out x.mov -a_decoder best", "", "'best'"},
        {"-in a -out x.mov -vcodec prores422 -key_frames 5", "", "key frame"},
        {"-in a -out x.mov -acl 7.1", "", "'7.1'"},
        {"-in a -out x.mov -tc_track -tc_custom 10:00", "", "'10:00'"},
        {"-in a -out x.mov -wmf_path / -wmf_scale 0", "-wmf_scale '0'", "above 0"},
        {"-in a -out x.mov -arri_cs x", "'-arri_cs'", "no look engine"},
        {"-in a -out x.mov -vcodeck h264", "'-vcodeck'", "did you mean -vcodec?"},
        {"-in a -out x.mov -gpu_trans metal", "", "no GPU device"},
        {"-in a -out x.mov -vprofile extreme", "", "baseline"},
        {"-in a -out x.mov -vcodec prores422 -vprofile high", "", "no profile"},
        {"-in a -out x.mov -c_space rec_2000", "", "'rec_2000'"},
        {"-in a -out x.mov -preserve_log 1 -c_space rec_709", "", "-preserve_log"},
        {"-in a -out x.mov -vr 0", "", "-vr '0'"},
        {"-in a -out x.mov -acodec lpcm -abpc 20", "", "16, 24 or 32"},
        {"-in a -out x.mov -acodec lpcm -abr 64000", "", "-abr"},
        {"-in a -out x.mov -acl stereo -acl_tag 6553601", "", "contradicts"},
        {"-in a -out x.mov -lang_code english", "-lang_code", "'english'"},
        {"-in a -out x.mov -lang_code afr", "-lang_code", "-file_format mp4 keeps it"},
        {"-in a -out x.mov -alang_code sme", "", "-alang_code 'sme'"},
        {"-in a -out x.mov -tc_custom 10:00:00:00", "", "-tc_track"},
        {"-in a -out x.mov -tc_burn_size 10", "-tc_burn_size", "-tc_burn beside it"},
        {"-in a -out x.mov -tc_burn -tc_burn_size 3", "-tc_burn_size '3'", "4 to 2000"},
        {"-in a -out x.mov -tc_burn -tc_burn_box_rgb black", "'black'", "red, green and blue"},
        {"-in a -out x.mov -wmt_burn", "-wmt_burn", "-wmt_text"},
        {"-in a -out x.mov -wmt_text a", "-wmt_text", "-wmt_burn beside it"},
        {"-in a -out x.mov -wmf_scale 2", "-wmf_scale", "-wmf_path beside it"},
        {"-in a -out x.mov -parentPid none", "'none'", "a process identifier"},
    };
    for (const auto& [words, offender, remedy] : rows) {
        const auto error = thrownBy<UsageError>([words = words] { return jobOf(words); });
        ASSERT_TRUE(error) << words << ": was taken";
        EXPECT_THAT(error->what(), HasSubstr(offender)) << words;
        EXPECT_THAT(error->what(), HasSubstr(remedy)) << words;
    }
}

TEST(TranscodeJob, whatThisMachineLacksIsNoUsageError) {
    for (const std::string option : {"-acodec aac_he", "-acodec aac_eld", "-v_decoder vt", "-c_transfer tf_gamma"}) {
        const auto error = thrownBy<JobError>([&] { return jobOf("-in a -out x.mov " + option); });
        EXPECT_THAT(error.value().what(), HasSubstr(option));
    }
}

TEST(TranscodeJob, everyKnownFlagIsCarriedOutOrNamed) {
    for (const std::string_view known : TranscodeCliArguments::allKnownCommandFlags()) {
        if (isCarriedOut(known)) continue;
        const std::string flag(known);
        const auto error = thrownBy<UsageError>([&] { return jobOf("-in a -out x.mov " + flag + " 1"); });
        ASSERT_TRUE(error) << flag << ": was taken";
        // "-presets" begins as "-preset" does, so parsing makes it one.
        EXPECT_THAT(error->what(), HasSubstr(flag == "-presets" ? "-preset" : flag));
    }
}

TEST(TranscodeJob, defaultsFollowTheOutput) {
    using Codec = std::optional<OAVTranscodeArgumentVideoCodecValue>;
    const std::tuple<std::string, OAVTranscodeArgumentFileFormatValue, Codec> rows[] = {
        {"X.MOV", OAVQuickTimeFileFormat, OAVAvcH264Codec},
        {"x.mp4", OAVMp4Format, OAVAvcH264Codec},
        {"x.wav", OAVWaveFileFormat, std::nullopt},
        {"x.mov -file_format mp4", OAVMp4Format, OAVAvcH264Codec},
    };
    for (const auto& [output, format, codec] : rows) {
        const TranscodeJob job = jobOf("-in a -out " + output);
        EXPECT_EQ(job.format, format) << output;
        EXPECT_EQ(job.video ? Codec(job.video->codec->codec) : std::nullopt, codec) << output;
        EXPECT_EQ(job.audio->format, nullptr) << "the source decides";
        EXPECT_FALSE(job.indexInFront || job.overwrites) << output;
    }
}

TEST(TranscodeJob, presetsFillInWhatTheWordsLeaveOpen) {
    const TranscodeJob cloud = jobOf("-in a -out x.mov -preset orvane_cloud");
    EXPECT_EQ(cloud.video->codec->codec, OAVAvcH264Codec);
    EXPECT_EQ(cloud.video->bitsPerSecond, 3'000'000);
    EXPECT_EQ(cloud.video->frame.box, (PixelSize{960, 540}));
    EXPECT_EQ(cloud.video->frame.scaling, OAVStretchAspect);
    EXPECT_EQ(cloud.audio->format->format, OAVAacAudioFormatValue);
    EXPECT_EQ(cloud.audio->sampleRate, 48000);
    EXPECT_TRUE(cloud.indexInFront);

    const TranscodeJob mixed = jobOf("-preset orvane_cloud -in a -out x.mov -acopy");
    EXPECT_TRUE(mixed.audio->copies && !mixed.audio->sampleRate);
    EXPECT_FALSE(jobOf("-in a -out x.mov -preset orvane_4444xq -an").audio);
}

TEST(TranscodeJob, theParentIsKnownByItsCustodialFlag) {
    EXPECT_EQ(jobOf("-in a -out x.mov -parentPid 123 -parentAppNumber 0").parentPid, 123);
}

}  // namespace
}  // namespace corvex::tool::transcodeJobTests
