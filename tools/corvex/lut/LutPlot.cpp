#include <tools/corvex/lut/LutPlot.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace corvex::tool {
namespace {

using Layout = LutPlotLayout;
using Pixel = std::array<std::uint8_t, 3>;

std::uint8_t codeOf(double part) noexcept {
    return static_cast<std::uint8_t>(std::lround(std::clamp(part, 0.0, 1.0) * 255));
}

class Plot {
public:
    explicit Plot(bool isCube)
        : image_(isCube ? Layout::cubeWidth : Layout::tableWidth, Layout::height, SampleFormat::unsigned8, false),
          pixels_(image_.pixels()) {}

    void set(int x, int y, std::size_t channel, std::uint8_t value) {
        *pixels_.sample(channel, static_cast<std::size_t>(y), static_cast<std::size_t>(x)) = std::byte{value};
    }
    void fill(int left, int top, int width, int height, const Pixel& color) {
        for (int y = top; y < top + height; ++y) {
            for (int x = left; x < left + width; ++x) {
                for (std::size_t channel = 0; channel < 3; ++channel) set(x, y, channel, color[channel]);
            }
        }
    }
    void drawGrid();
    void drawCurve(const std::vector<LutValueTriplet>& greys, std::size_t channel, double LutValueTriplet::*value);
    void drawCorners(const LutFacts& facts);

    StillImage take() { return std::move(image_); }

private:
    StillImage image_;
    PixelBuffer pixels_;
};

void Plot::drawGrid() {
    constexpr Pixel ground{24, 24, 24}, line{64, 64, 64};
    fill(0, 0, image_.width(), image_.height(), ground);
    constexpr int parts = 4;
    for (int i = 0; i <= parts; ++i) {
        const int at = Layout::margin + std::min(i * Layout::curveSide / parts, Layout::curveSide - 1);
        fill(at, Layout::margin, 1, Layout::curveSide, line);
        fill(Layout::margin, at, Layout::curveSide, 1, line);
    }
}

void Plot::drawCurve(const std::vector<LutValueTriplet>& greys, std::size_t channel, double LutValueTriplet::*value) {
    constexpr int last = Layout::curveSide - 1;
    const auto rowAt = [&](int x) {
        const double at = static_cast<double>(x) / last * static_cast<double>(greys.size() - 1);
        const auto lower = static_cast<std::size_t>(at);
        const std::size_t upper = std::min(lower + 1, greys.size() - 1);
        const double fraction = at - static_cast<double>(lower);
        const double part = (1 - fraction) * greys[lower].*value + fraction * greys[upper].*value;
        return static_cast<int>(std::lround((1 - std::clamp(part, 0.0, 1.0)) * last));
    };
    int previous = rowAt(0);
    for (int x = 0; x <= last; ++x) {
        const int row = rowAt(x);
        for (int y = std::min(previous, row); y <= std::max(previous, row); ++y) {
            set(Layout::margin + x, Layout::margin + y, channel, 255);
        }
        previous = row;
    }
}

void Plot::drawCorners(const LutFacts& facts) {
    for (std::size_t corner = 0; corner < facts.corners.size(); ++corner) {
        const int top = Layout::margin + static_cast<int>(corner) * Layout::swatchHeight;
        const auto own = [corner](unsigned axis) { return codeOf(corner >> axis & 1U ? 1.0 : 0.0); };
        const LutValueTriplet& answer = facts.corners[corner];
        fill(Layout::swatchLeft, top, Layout::swatchWidth, Layout::swatchHeight, {own(0), own(1), own(2)});
        fill(Layout::swatchLeft + Layout::swatchWidth, top, Layout::swatchWidth, Layout::swatchHeight,
             {codeOf(answer.first), codeOf(answer.second), codeOf(answer.third)});
    }
}

}  // namespace

StillImage plotted(const LutFacts& facts) {
    Plot plot(facts.isCube);
    plot.drawGrid();
    plot.drawCurve(facts.greyAxis, 0, &LutValueTriplet::first);
    plot.drawCurve(facts.greyAxis, 1, &LutValueTriplet::second);
    plot.drawCurve(facts.greyAxis, 2, &LutValueTriplet::third);
    if (facts.isCube) plot.drawCorners(facts);
    return plot.take();
}

}  // namespace corvex::tool
