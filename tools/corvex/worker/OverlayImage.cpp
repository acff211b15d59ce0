#include <tools/corvex/worker/OverlayImage.h>

#include <cmath>
#include <cstring>

#include <tools/corvex/worker/Decoder.h>
#include <tools/corvex/worker/PictureGraph.h>

namespace corvex::tool {
namespace {

FramePointer firstPicture(const std::string& path) {
    MediaInput input(path);
    if (input.video() == nullptr) throw JobError("'" + path + "': expected an image");
    Decoder decoder(input, *input.video());
    FramePointer picture;
    const auto keepFirst = [&](AVFrame& frame) {
        if (picture) return;
        picture = makeFrame();
        av_frame_move_ref(picture.get(), &frame);
    };
    const PacketPointer packet = makePacket();
    while (!picture && input.read(*packet)) {
        if (packet->stream_index == input.video()->index) decoder.decode(packet.get(), keepFirst);
        av_packet_unref(packet.get());
    }
    if (!picture) decoder.decode(nullptr, keepFirst);
    if (!picture) throw JobError("'" + path + "' holds no picture");
    return picture;
}

int scaled(int side, double scale) { return static_cast<int>(std::max(1.0, std::round(side * scale))); }

}  // namespace

OverlayImage OverlayImage::read(const std::string& path, double scale) {
    const FramePointer picture = firstPicture(path);
    // Twice the largest picture's side: what is above fits no picture, and would only fill the memory.
    constexpr double largestSide = 32768;
    if (std::max(picture->width, picture->height) * scale > largestSide) {
        throw JobError("'" + path + "' of " + std::to_string(picture->width) + "x" + std::to_string(picture->height) +
                       " pixels is too large at that scale; expected no side above 32768 pixels");
    }
    OverlayImage image(scaled(picture->width, scale), scaled(picture->height, scale));
    std::string filters = "format=pix_fmts=gbrap16";
    if (image.width != picture->width || image.height != picture->height) {
        // Colours of transparent pixels must not bleed into their neighbours.
        filters += ",premultiply=inplace=1,scale=" + std::to_string(image.width) + ":" + std::to_string(image.height) +
                   ",unpremultiply=inplace=1";
    }
    PictureGraph graph({picture->width, picture->height, picture->format, {1, 1}, {0, 1}}, filters);
    picture->pts = 0;
    graph.push(*picture);
    graph.close(1);
    if (!graph.pull(*picture)) throw JobError("'" + path + "': the picture was lost on its way");
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            constexpr int planes[] = {2, 0, 1, 3};  // red, green, blue, alpha: the media libraries keep green first
            for (std::size_t i = 0; i < 4; ++i) {
                const std::uint8_t* row = picture->data[planes[i]] + std::ptrdiff_t{y} * picture->linesize[planes[i]];
                std::memcpy(&image.at(x, y)[i], row + std::ptrdiff_t{x} * 2, sizeof(std::uint16_t));
            }
        }
    }
    return image;
}

}  // namespace corvex::tool
