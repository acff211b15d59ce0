#include <tools/corvex/worker/TimecodeBurn.h>

#include <array>
#include <string_view>

namespace corvex::tool {
namespace {

/// What a label consists of, the blank being the box's end on either side.
constexpr std::string_view characters = "0123456789:; ";

}  // namespace

TimecodeBurn::TimecodeBurn(const TimecodeCount& count, const OAVTranscodeArgumentOverlayAnchorValue& anchor,
                           TextStyle style, const PictureStamp::Target& target, int pictureWidth, int pictureHeight)
    : count_(count) {
    style.isMonospaced = true;
    style.padding = 0;
    for (const char character : characters) {
        cells_.emplace_back(textImage(std::string_view(&character, 1), style), target);
    }
    const int width = cells_.front().width() * (count_.characters() + 2), height = cells_.front().height();
    if (width > pictureWidth || height > pictureHeight) {
        throw JobError("-tc_burn_size " + std::to_string(style.size) + ": the timecode would take " +
                       std::to_string(width) + "x" + std::to_string(height) + " pixels; expected no more than the " +
                       std::to_string(pictureWidth) + "x" + std::to_string(pictureHeight) + " of the picture");
    }
    place_ = OverlayPlace::make(anchor, width, height, pictureWidth, pictureHeight, cells_.front().horizontalStep(),
                                cells_.front().verticalStep());
}

const PictureStamp& TimecodeBurn::cell(char character) const { return cells_[characters.find(character)]; }

void TimecodeBurn::apply(AVFrame& frame, std::int64_t picture) const {
    std::array<char, TimecodeComponents::longestText> buffer{};
    const std::string_view label = count_.label(picture).writeTimecode(buffer);
    int x = place_.x;
    const auto stamp = [&](char character) {
        const PictureStamp& drawn = cell(character);
        drawn.apply(frame, x, place_.y);
        x += drawn.width();
    };
    stamp(' ');
    for (const char character : label) stamp(character);
    for (int written = static_cast<int>(label.size()); written <= count_.characters(); ++written) stamp(' ');
}

}  // namespace corvex::tool
