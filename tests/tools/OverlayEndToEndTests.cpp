// Burnt-in timecodes and watermarks, read back from pictures.

#include <cmath>
#include <functional>
#include <limits>
#include <set>
#include <vector>

#include <gmock/gmock.h>

#include <tests/tools/Media.h>
#include <tools/corvex/worker/Decoder.h>
#include <tools/corvex/worker/PictureStages.h>

extern "C" {
#include <libavutil/timecode.h>
}

namespace corvex::tool::test::overlayEndToEndTests {
namespace {

using Anchor = OAVTranscodeArgumentOverlayAnchorValue;

void forEachPicture(const std::string& path, const std::function<void(AVFrame&)>& take) {
    MediaInput input(path);
    Decoder decoder(input, *input.video());
    const PacketPointer packet = makePacket();
    while (input.read(*packet)) {
        if (packet->stream_index == input.video()->index) decoder.decode(packet.get(), take);
        av_packet_unref(packet.get());
    }
    decoder.decode(nullptr, take);
}

/// Reads labels of eleven characters in white on black: each character is the one whose drawing is nearest to what stands
/// in its place.
class LabelReader {
public:
    LabelReader(int size, const Anchor& anchor, int width, int height) {
        for (const char character : characters) {
            const TextStyle style{.size = size, .font = Color::gray(1), .box = Color::gray(0), .isMonospaced = true};
            drawings_.push_back(textImage(std::string_view(&character, 1), style));
        }
        const int cellWidth = drawings_.front().width;
        place_ = OverlayPlace::make(anchor, 13 * cellWidth, drawings_.front().height, width, height, 2, 2);
        place_.x += cellWidth;  // the box begins before the first character
    }

    /// From a picture of 8 bits.
    [[nodiscard]] std::string read(const AVFrame& picture) const {
        std::string label;
        for (int i = 0; i < 11; ++i) {
            int least = std::numeric_limits<int>::max();
            char nearest = ' ';
            for (std::size_t k = 0; k < drawings_.size(); ++k) {
                const int found = distance(picture, i, drawings_[k]);
                if (found < least) nearest = characters[k];
                least = std::min(least, found);
            }
            label += nearest;
        }
        return label;
    }

private:
    static constexpr std::string_view characters = "0123456789:;";

    [[nodiscard]] int distance(const AVFrame& picture, int cell, const OverlayImage& drawing) const {
        int sum = 0;
        for (int y = 0; y < drawing.height; ++y) {
            const std::uint8_t* row = picture.data[0] + std::ptrdiff_t{place_.y + y} * picture.linesize[0] + place_.x +
                                      std::ptrdiff_t{cell} * drawing.width;
            for (int x = 0; x < drawing.width; ++x) sum += std::abs(row[x] - 16 - drawing.at(x, y)[0] * 219 / 65535);
        }
        return sum;
    }

    std::vector<OverlayImage> drawings_;
    OverlayPlace place_;
};

/// The labels that a file's timecode track gives its pictures, counted by the media libraries.
class TrackLabels {
public:
    explicit TrackLabels(const std::string& path) {
        const MediaInput input(path);
        for (unsigned i = 0; i < input.context().nb_streams; ++i) {
            const AVStream& track = *input.context().streams[i];
            const AVDictionaryEntry* first = av_dict_get(track.metadata, "timecode", nullptr, 0);
            if (track.codecpar->codec_type != AVMEDIA_TYPE_DATA || first == nullptr) continue;
            first_ = first->value;
            check(av_timecode_init_from_string(&timecode_, track.avg_frame_rate, first->value, nullptr), "timecode");
            timecode_.flags |= AV_TIMECODE_FLAG_24HOURSMAX;
        }
    }
    [[nodiscard]] const std::string& first() const noexcept { return first_; }
    [[nodiscard]] std::string at(int picture) const {
        char text[AV_TIMECODE_STR_SIZE];
        return av_timecode_make_string(&timecode_, text, picture);
    }

private:
    std::string first_;
    AVTimecode timecode_{};
};

using OverlayEndToEnd = TranscodeTest;

TEST_F(OverlayEndToEnd, theLabelsInThePicturesAreThoseOfTheTrack) {
    struct Row {
        const char *source, *first, *more;
        Anchor anchor;
        int pictures = 5;
    };
    const Row rows[] = {
        {"ntsc.mov", "00:00:59;28", "", OAVAnchorTopLeft},
        {"doubled.mov", "00:00:59;58", "", OAVAnchorTopCenter},
        {"film.mov", "23:59:59:22", "", OAVAnchorTopRight},
        {"pal.mov", "00:09:59:23", "", OAVAnchorCenterLeft},
        {"ntsc.mov", "00:09:59;28", "", OAVAnchorCenter},
        {"doubled.mov", "00:00:59:58", "-tc_non_drop", OAVAnchorCenterRight},
        {"film.mov", "00:00:59:22", "", OAVAnchorBottomLeft},
        {"pal.mov", "23:59:59:23", "", OAVAnchorBottomCenter},
        {"ntsc.mov", "23:59:59;28", "", OAVAnchorBottomRight},
        // A picture a second, of which a change of rate makes more than a minute.
        {"slow.mov", "00:00:59;28", "-vr 29.97 -v_frame_cap 3", OAVAnchorBottomCenter, 1918},
    };
    for (const char* source : {"24000/1001 -frames:v 5 -c:v mpeg4 film.mov", "25 -frames:v 5 -c:v mpeg4 pal.mov",
                               "30000/1001 -frames:v 5 -c:v mpeg4 ntsc.mov", "1 -frames:v 64 -c:v mpeg4 slow.mov",
                               "60000/1001 -frames:v 5 -c:v mpeg4 doubled.mov"}) {
        ffmpeg(std::string("-f lavfi -i testsrc2=size=128x96:rate=") + source);
    }
    for (const Row& row : rows) {
        const std::string anchor(row.anchor.rawValue());
        SCOPED_TRACE(anchor + " " + row.first);
        const std::string burnt =
            transcode("burnt.mov", std::string("-vcodec mp4 -tc_track -tc_burn -tc_burn_size 12 -in ") + row.source +
                                       " -tc_burn_anchor " + anchor + " -tc_custom " + row.first + " " + row.more);
        const TrackLabels track(burnt);
        EXPECT_EQ(track.first(), row.first);
        const LabelReader reader(12, row.anchor, 128, 96);
        int count = 0, wrong = 0;
        forEachPicture(burnt, [&](const AVFrame& picture) {
            const std::string label = reader.read(picture), expected = track.at(count++);
            if (label != expected && wrong++ < 3) ADD_FAILURE() << label << " stands where " << expected << " should";
        });
        EXPECT_EQ(wrong, 0);
        EXPECT_EQ(count, row.pictures);
    }
}

/// What a job without marks makes of the same source is the measure: Motion JPEG codes each block of 16x8 pixels for
/// itself, so that blocks without a mark are the same to the bit.
TEST_F(OverlayEndToEnd, marksLieOverTheFinishedPictureAndTouchNothingElse) {
    ffmpeg("-f lavfi -i testsrc2=size=320x160:rate=25 -frames:v 1 -c:v mpeg4 -q:v 2 source.mov");
    // Red on the left, transparent on the right.
    ffmpeg("-f lavfi -i nullsrc=size=32x32,format=gbrap,geq=r=255:g=0:b=0:a='255*lt(X,16)' -frames:v 1 Mark.png");
    writeFile("negative.cube", "LUT_3D_SIZE 2\n1 1 1\n0 1 1\n1 0 1\n0 0 1\n1 1 0\n0 1 0\n1 0 0\n0 0 0\n");
    const std::string words = "-in source.mov -clut negative.cube -vcodec mjpeg -dims 160x160 -aspect_scaling crop ";
    const std::string plain = transcode("plain.mov", words);
    const std::string marked =
        transcode("marked.mov", words +
                                    "-wmf_path Mark.png -wmf_scale 2 -wmf_anchor bl "
                                    "-wmt_burn -wmt_text Dailies -wmt_size 10 -wmt_anchor tr -wmt_box_rgb 0,1,0 "
                                    "-tc_burn -tc_burn_size 8 -tc_burn_anchor bl -tc_burn_box_rgb 0,0,1");
    const Picture picture(marked);
    struct Row {
        double x, y;
        Pixel color;
    };
    // Within the inner 90 %: the image's red at (8, 88) to (39, 151), the label over it from line 142 on.
    for (const auto& [x, y, color] :
         {Row{9, 89, {254, 0, 0}}, Row{36, 89, {254, 0, 0}}, Row{9, 134, {254, 0, 0}}, Row{36, 134, {254, 0, 0}},
          Row{10, 145, {0, 0, 254}}, Row{150, 10, {0, 255, 0}}}) {
        EXPECT_LT(distance(picture.at((x + 0.5) / 160, (y + 0.5) / 160), color), 12) << "at " << x << ", " << y;
    }

    std::vector<FramePointer> pictures;
    for (const std::string& path : {plain, marked}) {
        forEachPicture(path, [&](AVFrame& frame) {
            pictures.push_back(makeFrame());
            av_frame_move_ref(pictures.back().get(), &frame);
        });
    }
    ASSERT_EQ(pictures.size(), 2U);
    std::set<std::pair<int, int>> changed;  // blocks, by column and row
    for (int plane = 0; plane < 3; ++plane) {
        const int shift = plane == 0 ? 4 : 3;
        for (int i = 0; i < 160 * (10 << shift); ++i) {
            const int x = i % (10 << shift), y = i / (10 << shift);
            const auto at = [&](const FramePointer& frame) {
                return frame->data[plane][std::ptrdiff_t{y} * frame->linesize[plane] + x];
            };
            if (at(pictures[0]) != at(pictures[1])) changed.emplace(x >> shift, y >> 3);
        }
    }
    for (const auto& [column, row] : changed) {
        const bool isImage = column <= 2 && row >= 11 && row <= 18;  // the seam of the halves is in the third column
        const bool isLabel = column <= 5 && row >= 17 && row <= 18;
        const bool isText = column >= 5 && row >= 1 && row <= 2;
        EXPECT_TRUE(isImage || isLabel || isText) << "block " << column << ", " << row;
    }
}

TEST(PictureStages, labelsCountThePicturesThatLeave) {
    const LibraryMessages messages;
    const Words words{"-dims", "128x96", "-aspect_scaling", "stretch", "-tc_burn", "-tc_burn_size", "12"};
    const auto request = VideoRequest::make(TranscodeCliArguments(words), OAVQuickTimeFileFormat);
    const PictureStamp::Target target{AV_PIX_FMT_YUV420P, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG};
    const TimecodeCount count(TimecodeFrame(*TimecodeComponents::fromTimecode("00:00:59;28"), {30000, 1001}), 1);
    const LabelReader reader(12, OAVAnchorBottomCenter, 128, 96);
    Words labels;
    int offered = 0;
    PictureStages stages(
        *request, {target.format, {128, 96}, target.range},
        std::make_shared<const PictureOverlays>(request->overlays, target, 128, 96, count), 2,
        [&](AVFrame&, AVRational) { return offered++ != 1; },  // the second is left out
        [&](AVFrame& picture) { labels.push_back(reader.read(picture)); });
    // A size of their own for the third and the fourth picture, another file for the last one.
    for (const auto& [width, isNewFile] :
         {std::pair(64, true), std::pair(64, false), std::pair(80, false), std::pair(80, false), std::pair(64, true)}) {
        if (isNewFile) {
            stages.flush();
            stages.beginFile({{64, 48}, {1, 1}, {}}, {1, 25});
        }
        const FramePointer picture = makeFrame();
        picture->format = AV_PIX_FMT_YUV420P;
        picture->width = width;
        picture->height = 48;
        check(av_frame_get_buffer(picture.get(), 0), "frame");
        picture->pts = offered;
        stages.push(*picture, 1);
    }
    stages.flush();
    EXPECT_THAT(labels, ::testing::ElementsAre("00:00:59;28", "00:00:59;29", "00:01:00;02", "00:01:00;03"));
}

}  // namespace
}  // namespace corvex::tool::test::overlayEndToEndTests
