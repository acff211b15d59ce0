// Runs the tool on small clips and looks at what came out with the ffprobe and ffmpeg programs.

#include <algorithm>
#include <array>
#include <cmath>

#include <gmock/gmock.h>

#include <tests/tools/Media.h>

namespace corvex::tool::test::transcodeEndToEndTests {
namespace {

using ::testing::DoubleNear;
using ::testing::MatchesRegex;
using ::testing::Pointwise;
using TranscodeEndToEnd = RoomTest;

double packetsOf(const std::string& path) { return number(stream(probe(path), "video"), "nb_read_packets"); }

TEST_F(TranscodeEndToEnd, everyVideoCodecIsWhatItsNameSays) {
    const std::pair<std::string, const char*> rows[] = {
        {"dnxhd", "dnxhd AVdn DNXHD yuv422p"},
        {"dnxhrlb", "dnxhd AVdh DNXHR LB yuv422p"},
        {"dnxhrsq", "dnxhd AVdh DNXHR SQ yuv422p"},
        {"dnxhrhq", "dnxhd AVdh DNXHR HQ yuv422p"},
        {"dnxhrhqx", "dnxhd AVdh DNXHR HQX yuv422p10le"},
        {"dnxhr444", "dnxhd AVdh DNXHR 444 yuv444p10le"},
        {"h264", "h264 avc1 High yuv420p"},
        {"h265", "hevc hvc1 Main yuv420p"},
        {"mjpeg", "mjpeg jpeg Baseline yuvj422p"},
        {"mp4", "mpeg4 mp4v Simple Profile yuv420p"},
        {"prores4444", "prores ap4h 4444 yuv444p12le"},
        {"prores4444xq", "prores ap4x XQ yuv444p12le"},
        {"prores422", "prores apcn Standard yuv422p10le"},
        {"prores422hq", "prores apch HQ yuv422p10le"},
        {"prores422lt", "prores apcs LT yuv422p10le"},
        {"prores422proxy", "prores apco Proxy yuv422p10le"},
    };
    for (const auto& [codec, facts] : rows) {
        SCOPED_TRACE(codec);
        const std::string source = codec == "dnxhd" ? "hd" : "plain";  // DNxHD knows few sizes
        const std::string made = transcode("made.mov", "-an -in @" + source + " -vcodec " + codec);
        const ProbeResult video = stream(probe(made), "video");
        EXPECT_EQ(text(video, "codec_name") + " " + text(video, "codec_tag_string") + " " + text(video, "profile") +
                      " " + text(video, "pix_fmt"),
                  facts);
        EXPECT_GE(psnr(made, clip(source), "yuv444p"), 30);
    }
}

TEST_F(TranscodeEndToEnd, everyAudioFormatIsWhatItsNameSays) {
    const std::tuple<std::string, const char*, const char*> rows[] = {
        {"a.mov", "-in @plain -acodec aac", "aac 48000"},
        {"a.mov", "-in @plain -acodec apple_lossless", "alac 48000"},
        {"a.mov", "-in @plain -acodec apple_ima4", "adpcm_ima_qt 48000"},
        {"a.mp4", "-in @plain", "aac 48000"},
        {"a.mp4", "-in @plain -acodec apple_lossless -asr 96000", "alac 96000"},
        {"a.wav", "-in @mp4 -asr 32000", "pcm_s16le 32000"},
        {"a.mov", "-in @wav -vn", "pcm_s16le 48000"},
        {"a.mov", "-in @plain -acopy", "pcm_s16le 48000"},
        {"a.mp4", "-in @mp4 -acopy -vn", "aac 48000"},
        {"a.mov", "-in @mp4", "aac 48000"},
        {"a.mov", "-in @ac3", "aac 48000"},
        {"a.mov", "-in @flac", "pcm_s16le 48000"},
    };
    const double level = loudness(clip("plain"), 0.5).at(0);
    for (const auto& [target, words, facts] : rows) {
        SCOPED_TRACE(target + " " + words);
        const ProbeResult audio = stream(probe(transcode(target, words)), "audio");
        EXPECT_EQ(text(audio, "codec_name") + " " + text(audio, "sample_rate"), facts);
        EXPECT_NEAR(number(audio, "duration"), 1, 0.03);
        EXPECT_NEAR(loudness(target, 0.5).at(0), level, 0.1 * level);
    }
}

TEST_F(TranscodeEndToEnd, audioKeepsItsTracksDepthAndPlace) {
    expectFacts(probe(transcode("a.mov", "-in @tracks")),
                "audio 0 codec_name pcm_s24le, audio 0 channels 1, audio 0 sample_rate 48000, "
                "audio 1 codec_name pcm_s24le, audio 1 channels 1, audio 1 sample_rate 44100, "
                "audio 2 codec_name pcm_s24le, audio 2 channels 6, audio 2 sample_rate 48000");
    for (const char* words : {"-in @late-mov -acodec lpcm", "-in @late-mov -acodec aac", "-in @late-mkv -acodec lpcm",
                              "-in @late-mkv -acodec aac"}) {
        const auto late = loudness(transcode("a.mov", words), 0.25);
        ASSERT_GE(late.size(), 4U) << words;
        EXPECT_LT(late[0], 0.001) << words;
        EXPECT_GT(late[2], 0.05) << words;
    }
    // Tone on the left, silence on the right.
    ffmpeg("-f lavfi -i aevalsrc=sin(440*2*PI*t)|0:s=48000:d=0.5 sides.wav");
    const std::string sides = transcode("a.mov", "-in sides.wav -vn -adiscrete");
    EXPECT_GT(loudness(sides, 0.5, 0).front(), 0.5);
    EXPECT_LT(loudness(sides, 0.5, 1).front(), 0.001);
}

TEST_F(TranscodeEndToEnd, fieldsOfInterlacedPicturesAreScaledForThemselves) {
    for (const bool isInterlaced : {true, false}) {  // one field is white, the other black
        const Picture picture(
            transcode("made.mov", std::string("-dims 64x32 -aspect_scaling stretch -vcodec prores4444 ") +
                                      (isInterlaced ? "-in @interlaced" : "-in @striped")));
        const int contrast = picture.at(0.5, 15.5 / 32).green - picture.at(0.5, 16.5 / 32).green;
        EXPECT_EQ(std::abs(contrast) > 200, isInterlaced) << contrast;
    }
}

TEST_F(TranscodeEndToEnd, picturesMatchTheSameJobByTheFfmpegProgram) {
    const std::tuple<std::string, const char*, const char*> rows[] = {
        {"@plain", "-dims 200x200 -aspect_scaling stretch", "scale=200:200"},
        {"@plain", "-dims 200x200 -aspect_scaling letterbox", "scale=200:112,pad=200:200:0:44"},
        {"@plain", "-dims 90x90 -aspect_scaling crop -crop_anchor cr", "crop=180:180:140:0,scale=90:90"},
        {"@rotated", "", "null"},
        {"@odd", "", "scale=322:182"},
        {"@fullrange", "", "scale=in_range=pc:out_range=tv"},
        {"@rgb", "", "scale=out_color_matrix=bt709:out_range=tv"},
        {"@avi", "", "null"},
        {"@ts", "", "null"},
    };
    for (const auto& [source, words, filter] : rows) {
        SCOPED_TRACE(source + " " + words);
        const std::string made = transcode("made.mov", "-vcodec prores422hq -in " + source + " " + words);
        ffmpeg("-i " + source + " -vf " + filter +
               " -an -c:v prores_ks -profile:v hq -pix_fmt yuv422p10le expected.mov");
        EXPECT_EQ(packetsOf(made), packetsOf("expected.mov"));
        EXPECT_GE(psnr(made, "expected.mov"), 35);
    }
}

TEST_F(TranscodeEndToEnd, coloursComeOutAsTheyWentIn) {
    for (const char* words :
         {"-in @rgb -vcodec h264", "-in @rgb -vcodec prores4444", "-in @rgb -vcodec mjpeg", "-in @rgb -vcodec dnxhr444",
          "-in @fields -c_matrix cm_rec_709_2", "-in @fields -c_matrix cm_rec_2020", "-in @fields -v_colrange f",
          "-in @fields -c_matrix cm_smpte_240m_1995 -vbd 10"}) {
        EXPECT_GE(psnr(transcode("made.mov", words), clip("rgb")), 28) << words;
    }
    // The motion-JPEG output is of full range: its bars are black there, too.
    const Picture boxed(transcode("box.mov", "-in @fields -vcodec mjpeg -dims 200x200 -aspect_scaling letterbox"));
    EXPECT_LE(boxed.at(0.5, 0.1).green, 3);
    expectFacts(probe(transcode("alpha.mov", "-in @alpha -vcodec prores4444")), "video 0 pix_fmt yuva444p12le");
}

/// A member of the packets of the pictures, line by line.
Words packets(const std::string& path, const std::string& member) {
    return wordsOf(runOrFail(wordsOf("ffprobe -v error -select_streams v -show_entries packet=" + member +
                                     " -of default=nokey=1:noprint_wrappers=1 " + path)));
}

/// Of all pictures, from the first one on.
std::vector<double> pictureTimes(const std::string& path) {
    std::vector<double> times;
    for (const std::string& time : packets(path, "pts_time")) times.push_back(std::stod(time));
    std::ranges::sort(times);
    for (const double first = times.at(0); double& time : times) time -= first;
    return times;
}

TEST_F(TranscodeEndToEnd, picturesThatComeAtVaryingTimesKeepThem) {
    for (const std::string source : {"varying", "varying-mkv"}) {
        for (const char* codec : {"h264", "mp4", "prores422proxy"}) {
            const auto times = pictureTimes(transcode("made.mov", "-in @" + source + " -vcodec " + codec));
            EXPECT_THAT(times, Pointwise(DoubleNear(0.002), pictureTimes(clip(source)))) << source << " " << codec;
        }
    }
}

TEST_F(TranscodeEndToEnd, keyFramesComeAtTheDistanceAskedFor) {
    for (const std::string codec : {"h264", "h265", "mp4"}) {
        std::string keys;
        for (const std::string& flags :
             packets(transcode("keys.mov", "-in @plain -key_frames 10 -vcodec " + codec), "flags"))
            keys += flags[0];
        EXPECT_EQ(keys, "K_________K_________K____") << codec;
    }
}

TEST_F(TranscodeEndToEnd, bitRatesAreKeptTo) {
    const auto rateOf = [](const std::string& path) { return number(stream(probe(path), "video"), "bit_rate"); };
    ffmpeg("-i @plain -c:v libx264 -b:v 0.2M -an expected.mov");
    EXPECT_NEAR(rateOf(transcode("small.mov", "-in @plain -vbr 0.2 -an")), rateOf("expected.mov"), 10'000);
    EXPECT_NEAR(rateOf(transcode("rated.mov", "-in @hd -vcodec dnxhd -vbr 90")), 90e6, 5e6);
    ffmpeg("-i @plain -c:v mjpeg -q:v 3 -pix_fmt yuvj422p -an expected.mov");  // the quality where no rate is asked for
    const double rate = rateOf("expected.mov");
    EXPECT_NEAR(rateOf(transcode("pictures.mov", "-in @plain -vcodec mjpeg -an")), rate, 0.02 * rate);
    expectRefusals({{"transcode -in @hd -out x.mov -vcodec dnxhd -vbr 77", 1, "expected one of 60, 75, 90"}});
}

TEST_F(TranscodeEndToEnd, filesOfGroupsFollowEachOther) {
    const std::string made =
        transcode("made.mov", "-in_1_1 @plain -in_1_0 @fields -in_0_0 @mkv -vcodec prores422proxy");
    expectFacts(probe(made), "video 0 nb_read_packets 55, video 0 duration 2.200000");
    EXPECT_LT(distance(Picture(made, 1.08).at(0.9, 0.1), {254, 0, 60}), 25);
    const auto sound = loudness(made, 0.2);  // the one in the middle is silent
    ASSERT_EQ(sound.size(), 11U);
    for (std::size_t i = 0; i < sound.size(); ++i) EXPECT_EQ(sound[i] > 0.05, i != 5) << i;
}

TEST_F(TranscodeEndToEnd, soundOfJoinedFilesStaysBesideItsPictures) {
    for (const auto& [words, isExact] : {std::pair("-in_0_0 @brief -in_0_1 @plain", true),
                                         {"-in_0_0 @brief -in_0_1 @plain -acodec aac", false},
                                         {"-in_0_0 @brief -in_0_1 @plain -acopy", true},
                                         {"-in_0_0 @brief-aac -in_0_1 @mp4 -acopy", false}}) {
        SCOPED_TRACE(words);
        const std::string made = transcode("made.mov", words);
        EXPECT_EQ(packetsOf(made), 50);
        const auto sound = loudness(made, 0.125);  // on for half a second, off for as long, on for a second
        EXPECT_GE(sound.size(), 15U);
        for (std::size_t i = 0; i < std::min<std::size_t>(15, sound.size()); ++i) {
            if (!isExact && (i == 4 || i == 7 || i == 8)) continue;  // where a coded packet straddles the change
            EXPECT_EQ(sound[i] > 0.05, i < 4 || i >= 8) << i;
        }
    }
    for (const char* words : {"-in_0_0 @overlong -in_0_1 @plain", "-in_0_0 @overlong -in_0_1 @plain -acopy"}) {
        EXPECT_NEAR(number(stream(probe(transcode("made.mov", words)), "audio"), "duration"), 2, 0.001) << words;
    }
}

TEST_F(TranscodeEndToEnd, theIndexAndTheBytesOnTheirWayStandWhereTheyAreWanted) {
    const auto isIndexInFront = [](const std::string& path) {  // ISO/IEC 14496-12
        const std::string bytes = readFile(path);
        return bytes.find("moov") < bytes.find("mdat");
    };
    for (const char* name : {"a.mov", "a.mp4"}) {
        EXPECT_TRUE(isIndexInFront(transcode(name, "-in @plain -web"))) << name;
        EXPECT_FALSE(isIndexInFront(transcode(name, "-in @plain"))) << name;
    }
    const TemporaryDirectory work("/dev/shm");
    EXPECT_EQ(packetsOf(transcode("made.mov", "-in @plain -web -work_dir " + work.path().string())), 25);
    EXPECT_EQ(work.entries(), Words{});
    EXPECT_EQ(room.entries(), (Words{"a.mov", "a.mp4", "made.mov"}));
}

TEST_F(TranscodeEndToEnd, progressIsWrittenLineByLine) {
    transcode("made.mov", "-in @plain -progress_prefix Job 7: -progress_file progress.txt");
    const std::string pattern =
        "(job 7: state=(running|finishing) frame=[0-9]+ total=25 percent=[0-9.]+ fps=[0-9.]+ eta=-?[0-9]+ "
        "read=[0-9]+ written=[0-9]+\n)+"
        "job 7: state=done frame=25 total=25 percent=100.0 fps=[0-9.]+ eta=0 read=[0-9]+ written=[0-9]+\n";
    EXPECT_THAT(readFile("progress.txt"), MatchesRegex(pattern));
    EXPECT_THAT(answerTo("transcode -in @wav -out a.wav"),
                MatchesRegex("( *[0-9.]+ %( .*)?\n)*100.0 %  read .*  done\n"));
}

TEST_F(TranscodeEndToEnd, eachOptionShowsInTheResult) {
    const std::tuple<const char*, std::string, const char*> rows[] = {
        // "@plain": 25 a second, 1 s, 16-bit stereo
        {"a.mov", "-in @plain -vbd 10 -c_space rec_2020_hlg -abpc 24 -acl quad",
         "video 0 pix_fmt yuv420p10le, video 0 color_primaries bt2020, video 0 color_transfer arib-std-b67, "
         "video 0 color_space bt2020nc, audio 0 codec_name pcm_s24le, audio 0 channels 4"},
        {"a.mov", "-in @plain -vprofile baseline -c_matrix cm_rec_709_2 -acl 1 -mf 10",
         "video 0 profile Constrained Baseline, video 0 color_space bt709, video 0 nb_read_packets 10, "
         "audio 0 channels 1, audio 0 duration 0.400000"},
        {"a.mov", "-in @plain -vprofile high422 -vbd 8 -v_colrange f -acl_tag 6553601",
         "video 0 profile High 4:2:2, video 0 pix_fmt yuvj422p, video 0 color_range pc, audio 0 channels 1"},
        {"a.mov", "-in @plain -mf 9223372036854775807", "video 0 nb_read_packets 25, audio 0 duration 1.000000"},
        {"a.mov", "-in_0_0 @mkv -in_0_1 @fields -in_0_2 @plain -mf 30", "video 0 nb_read_packets 30"},
        {"a.mov", "-in @plain -vr 29.97 -acl_bitmap L R C LFE Ls Rs",
         "video 0 r_frame_rate 30000/1001, video 0 nb_read_packets 30, audio 0 channel_layout 5.1(side)"},
        {"a.mov", "-in @plain -vr 12.5 -lang_code deu -alang_code hrv",
         "video 0 r_frame_rate 25/2, video 0 nb_read_packets 13, video 0 tag:language ger, audio 0 tag:language hr "},
        {"a.mov", "-in @plain -vscale 0.5 -dims 200x100 -c_space sRGB",
         "video 0 width 160, video 0 height 90, video 0 color_primaries bt709, video 0 color_transfer iec61966-2-1"},
        {"a.mov", "-in @anamorphic -dims 320x320", "video 0 sample_aspect_ratio 1:1, video 0 height 180"},
        {"a.mov", "-in @tracks -acodec apple_lossless -abpc 16", "audio 0 bits_per_raw_sample 16"},
        {"a.mov", "-in @tracks -ac_omit [0 2", "audio 0 sample_rate 44100, audio 1 channels"},
        {"a.mov", "-in @tracks -adiscrete", "audio 2 channels 1, audio 7 channels 1, audio 8 channels"},
        {"a.mp4", "-in @plain -lang_code cym -alang_code afr", "video 0 tag:language cym, audio 0 tag:language afr"},
        {"a.mov",
         "-in @plain -v_frame_cap 2 -max_v_frame_mem 200000 -additional_decode_options threads=1:flags=+bitexact "
         "-v_decoder ffmpeg -a_decoder ffmpeg",
         "video 0 nb_read_packets 25"},
    };
    for (const auto& [target, words, facts] : rows) {
        SCOPED_TRACE(words);
        expectFacts(probe(transcode(target, words)), facts);
    }
    // A wave file states the language of the whole.
    EXPECT_EQ(text(probe(transcode("a.wav", "-in @wav -alang_code deu"))["format"]["tags"], "language"), "deu");
}

TEST_F(TranscodeEndToEnd, theTimecodeTrackStartsWhereItShould) {
    // From the last second of a minute on, made at 09:30:15 UTC.
    ffmpeg(
        "-f lavfi -i testsrc2=size=192x108:rate=30000/1001:duration=2 -c:v libx264 -preset veryfast -pix_fmt yuv420p "
        "-timecode 00:00:59;20 -metadata creation_time=2026-11-21T09:30:15Z ntsc.mov");
    const std::pair<std::string, std::string> rows[] = {
        {"-in ntsc.mov", "00:00:59;20"},
        {"-in ntsc.mov -tc_non_drop", "00:00:59:20"},
        {"-in ntsc.mov -tc_no_ntsc", "00:00:59:20"},
        {"-in ntsc.mov -tc_creation", "09:30:15;00"},
        {"-in ntsc.mov -tc_custom 10:00:00:02 -tc_drop", "10:00:00;02"},
        {"-in ntsc.mov -file_format mp4 -tc_custom 01:02:03:04", "01:02:03:04"},
        {"-in @plain -vr 23.976 -tc_custom 00:00:59:20", "00:00:59:20"},
        {"-in @plain -vr 59.94 -tc_rate 59.94 -tc_drop", "00:00:00;00"},
    };
    for (const auto& [words, timecode] : rows) {
        SCOPED_TRACE(words);
        expectFacts(probe(transcode(words.find("mp4") == words.npos ? "t.mov" : "t.mp4", "-tc_track -mf 5 " + words)),
                    "data 0 codec_tag_string tmcd, data 0 tag:timecode " + timecode);
    }
}

// "-clut" against the ffmpeg program's own filters of look-up tables.
TEST_F(TranscodeEndToEnd, everyFrameIsTheTablesAnswerInTheColoursOfTheSource) {
    // Far from symmetric, so that no two channels or axes can be mistaken for one another.
    std::string cube = "LUT_3D_SIZE 2\n", table = "LUT_1D_SIZE 256\n";
    const auto line = [](double red, double green, double blue) {
        return std::to_string(red) + " " + std::to_string(green) + " " + std::to_string(blue) + "\n";
    };
    for (int i = 0; i < 8; ++i) {
        const int red = i % 2, green = i / 2 % 2, blue = i / 4;
        cube += line(0.1 + 0.8 * blue, 1 - 0.9 * green, 0.7 * red + 0.2 * green);
    }
    for (int i = 0; i < 256; ++i) table += line(std::pow(i / 255.0, 2), 0.2 + 0.6 * i / 255, 1 - std::sqrt(i / 255.0));
    writeFile("Look 1.cube", cube);
    writeFile("cube.cube", cube);
    writeFile("table.cube", table);
    const std::string inCube = "lut3d=cube.cube:interp=trilinear", rgb = ":matrix=gbr:range=full";
    const std::array<std::string, 5> rows[] = {
        // Untagged and small, so BT.601.
        {"sd.mkv", ",zscale=matrix=170m:range=limited -pix_fmt yuv444p10le -c:v ffv1",
         "zscale=matrixin=170m:rangein=limited" + rgb, "-vcodec prores4444 -clut 'Look 1.cube'", inCube},
        {"hd.mkv", ",zscale=matrix=709:range=limited -pix_fmt yuv422p10le -colorspace bt709 -color_range tv -c:v ffv1",
         "zscale=matrixin=709:rangein=limited" + rgb, "-vcodec prores422 -clut 'Look 1.cube'", inCube},
        {"full.avi", ",zscale=matrix=170m:range=full -pix_fmt yuvj420p -c:v mjpeg -q:v 1",
         "zscale=matrixin=170m:rangein=full" + rgb, "-vcodec h264 -clut 'Look 1.cube'", inCube},
        {"rgb.mov", " -pix_fmt rgb24 -c:v qtrle", "null", "-vcodec prores4444 -clut table.cube", "lut1d=table.cube"},
    };
    for (const auto& [source, encoding, toRgb, words, look] : rows) {
        // Colours that change slowly over the picture, so that neither a codec nor coarse chroma blurs them.
        ffmpeg(
            "-f lavfi -i nullsrc=size=320x180:rate=25:duration=0.2,format=gbrp16,geq=r='65535*X/W':g='65535*Y/H'"
            ":b='65535*(0.5+0.45*sin(N+(X+Y)/90))'" +
            encoding + " " + source);
        ffmpeg("-i " + source + " -vf " + toRgb + ",format=gbrp16," + look + " -pix_fmt gbrp16 -c:v ffv1 expected.mkv");
        const std::string made = transcode("made.mov", "-in " + source + " " + words);
        EXPECT_GE(psnr(made, "expected.mkv"), 38) << source;
        EXPECT_LE(psnr(made, source), 20) << source << ": the look is seen";
    }
}

}  // namespace
}  // namespace corvex::tool::test::transcodeEndToEndTests
