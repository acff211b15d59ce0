#include <tools/corvex/worker/OverlayImage.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include <tools/corvex/image/StillImage.h>
#include <tools/corvex/worker/PictureGraph.h>

namespace corvex::tool {
namespace {

/// Twice the largest picture's side: what is above fits no picture, and would only fill the memory.
constexpr double largestSide = 32768;

int scaled(int side, double scale) { return static_cast<int>(std::max(1.0, std::round(side * scale))); }

OverlayImage imageOf(StillImage& still) {
    const PixelBuffer pixels = still.pixels();
    const auto fullScale = static_cast<std::uint32_t>(corvex::fullScale(still.format()));
    const auto sampleAt = [&](std::size_t channel, int x, int y) {
        const std::byte* sample = pixels.sample(channel, static_cast<std::size_t>(y), static_cast<std::size_t>(x));
        std::uint16_t value = std::to_integer<std::uint16_t>(*sample);
        if (still.format() != SampleFormat::unsigned8) std::memcpy(&value, sample, sizeof value);
        return static_cast<std::uint16_t>((value * 65535U + fullScale / 2) / fullScale);
    };
    OverlayImage image(still.width(), still.height());
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            for (std::size_t channel = 0; channel < 3; ++channel) image.at(x, y)[channel] = sampleAt(channel, x, y);
            image.at(x, y)[3] = still.hasAlpha() ? sampleAt(3, x, y) : std::uint16_t{65535};
        }
    }
    return image;
}

/// Colours of transparent pixels must not bleed into their neighbours: they are scaled multiplied by alpha.
OverlayImage resized(const OverlayImage& image, int width, int height) {
    constexpr std::size_t planeOf[] = {2, 0, 1, 3};  // red, green, blue, alpha: the media libraries keep green first
    const FramePointer picture = makeFrame();
    picture->width = image.width;
    picture->height = image.height;
    picture->format = AV_PIX_FMT_GBRAP16;
    check(av_frame_get_buffer(picture.get(), 0), "image watermark");
    const auto sampleAt = [&](std::size_t channel, int x, int y) {
        const std::size_t plane = planeOf[channel];
        return picture->data[plane] + std::ptrdiff_t{y} * picture->linesize[plane] + std::ptrdiff_t{x} * 2;
    };
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            for (std::size_t i = 0; i < 4; ++i) std::memcpy(sampleAt(i, x, y), &image.at(x, y)[i], 2);
        }
    }
    PictureGraph graph({image.width, image.height, picture->format, {1, 1}, {0, 1}},
                       "premultiply=inplace=1,zscale=width=" + std::to_string(width) +
                           ":height=" + std::to_string(height) + ":filter=bicubic,unpremultiply=inplace=1");
    picture->pts = 0;
    graph.push(*picture);
    graph.close(1);
    if (!graph.pull(*picture)) throw JobError("video filter: the image watermark was kept back");
    OverlayImage result(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (std::size_t i = 0; i < 4; ++i) std::memcpy(&result.at(x, y)[i], sampleAt(i, x, y), 2);
        }
    }
    return result;
}

}  // namespace

OverlayImage OverlayImage::read(const std::string& path, double scale) {
    StillImage still = StillImage::read(path);
    if (std::max(still.width(), still.height()) * scale > largestSide) {
        throw JobError("'" + path + "' of " + std::to_string(still.width()) + "x" + std::to_string(still.height()) +
                       " pixels is too large at that scale; expected no side above 32768 pixels");
    }
    const OverlayImage image = imageOf(still);
    const int width = scaled(image.width, scale), height = scaled(image.height, scale);
    return width == image.width && height == image.height ? image : resized(image, width, height);
}

}  // namespace corvex::tool
