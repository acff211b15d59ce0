// The timecode and watermark options of TranscodeCliArguments.

#include <array>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/cli/transcode/internal/TranscodeOptionAccess.h>
#include <Corvex/exported/OAVTranscodeWatermarkTextArgumentFlag.h>
#include <Corvex/platform/Log.h>
#include <Corvex/platform/Number.h>
#include <Corvex/timing/TimecodeComponents.h>

namespace corvex::inline v0 {

using namespace options;  // NOLINT(google-build-using-namespace): the other half of this file
using Arguments = TranscodeCliArguments;

namespace {

constexpr OAVTranscodeTimecodeArgumentFlag burnAnchorFlag = OAVTimecodeBurnAnchorFlag;

/// "r g b" from 0 to 1; between the numbers blanks or commas, in front perhaps the mark of a list.
std::optional<Color> colorOf(const Arguments& arguments, const auto& flag) {
    auto text = valueOf(arguments, flag);
    if (!text) return std::nullopt;
    if (text->starts_with('[')) text->remove_prefix(1);
    std::array<double, 3> components{};
    std::size_t count = 0;
    bool isColor = true;
    forEachPiece(*text, " ,", [&](std::string_view piece) {
        if (piece.empty()) return;
        const auto component = parseFloat<double>(piece);
        isColor = isColor && count < components.size() && component && *component >= 0 && *component <= 1;
        if (isColor) components[count++] = *component;
    });
    if (!isColor || count != components.size()) return std::nullopt;
    return Color::sRGB(components[0], components[1], components[2]);
}

void setColor(Arguments& arguments, const std::optional<Color>& color, const auto& flag) {
    if (!color) {
        setText(arguments, std::nullopt, flag);
        return;
    }
    const auto rgba = color->toRGBA();
    if (!rgba) {
        logError("CVX_TCLIA_USS-Could not get rgb components for color");
        return;
    }
    std::string text;
    for (std::size_t i = 0; i < 3; ++i) {
        if (i > 0) text += ' ';
        text += shortestText((*rgba)[i] == 0 ? 0.0F : (*rgba)[i]);  // no negative zero
    }
    setText(arguments, text, flag);
}

}  // namespace

TimecodeSource Arguments::timecodeSource() const {
    for (const TimecodeSource source : allCases<TimecodeSource>) {
        if (isSet(*this, tcFlag(source))) return source;
    }
    return TimecodeSource::match;
}
void Arguments::setTimecodeSource(TimecodeSource source) {
    const std::string custom(timecode().value_or(TimecodeComponents::defaultNonDropTimecode));
    for (const TimecodeSource other : allCases<TimecodeSource>) setText(*this, std::nullopt, tcFlag(other));
    setText(*this, source == TimecodeSource::custom ? custom : std::string(), tcFlag(source));
}
void Arguments::setTimecodeSource(const TimecodeComponents& custom) {
    setTimecode(custom.timecodeString());
    setTimecodeSource(TimecodeSource::custom);
}

OptionalText Arguments::timecode() const { return valueOf(*this, OAVTimecodeCustomFlag); }
void Arguments::setTimecode(OptionalText value) { setText(*this, value, OAVTimecodeCustomFlag); }

std::optional<float> Arguments::timecodeFrameRate() const { return numberOf<float>(*this, OAVTimecodeFrameRateFlag); }
void Arguments::setTimecodeFrameRate(std::optional<float> value) { setNumber(*this, value, OAVTimecodeFrameRateFlag); }

DropFrameState Arguments::timecodeDropFrameState() const {
    if (isSet(*this, OAVTimecodeIsDropFlag)) return DropFrameState::drop;
    if (isSet(*this, OAVTimecodeIsNonDropFlag)) return DropFrameState::nonDrop;
    const auto text = timecode();
    const auto components = text ? TimecodeComponents::fromTimecode(*text) : std::nullopt;
    return components ? components->dropFrameState : DropFrameState::unknown;
}
void Arguments::setTimecodeDropFrameState(DropFrameState state) {
    setSwitch(*this, state == DropFrameState::drop, OAVTimecodeIsDropFlag);
    setSwitch(*this, state == DropFrameState::nonDrop, OAVTimecodeIsNonDropFlag);
}

bool Arguments::addTimecodeTrack() const { return isSet(*this, OAVTimecodeAddTrackFlag); }
void Arguments::setAddTimecodeTrack(bool isOn) { setSwitch(*this, isOn, OAVTimecodeAddTrackFlag); }

bool Arguments::addTimecodeBurn() const { return isSet(*this, OAVTimecodeAddBurnFlag); }
void Arguments::setAddTimecodeBurn(bool isOn) { setSwitch(*this, isOn, OAVTimecodeAddBurnFlag); }

bool Arguments::bypassNTSCDrop() const { return isSet(*this, OAVTimecodeBypassNTSCDropFlag); }
void Arguments::setBypassNTSCDrop(bool isOn) { setSwitch(*this, isOn, OAVTimecodeBypassNTSCDropFlag); }

bool Arguments::includeTimecode() const { return addTimecodeBurn() || addTimecodeTrack(); }
void Arguments::setIncludeTimecode(bool includes) {
    if (includes && !includeTimecode()) setAddTimecodeTrack(true);
    if (includes) return;
    setAddTimecodeTrack(false);
    setAddTimecodeBurn(false);
}

std::optional<TimecodeBurnAnchor> Arguments::timecodeBurnAnchor() const {
    return anchorOf<TimecodeBurnAnchor>(*this, burnAnchorFlag);
}
void Arguments::setTimecodeBurnAnchor(const std::optional<TimecodeBurnAnchor>& value) {
    setTypedValue(*this, value, burnAnchorFlag);
}

std::optional<std::int64_t> Arguments::timecodeBurnFontSize() const {
    return numberOf<std::int64_t>(*this, OAVTimecodeBurnFontSize);
}
void Arguments::setTimecodeBurnFontSize(std::optional<std::int64_t> value) {
    setNumber(*this, value, OAVTimecodeBurnFontSize);
}

std::optional<Number> Arguments::timecodeBurnFontSizeNumber() const {
    const auto size = timecodeBurnFontSize();
    return size ? std::optional<Number>(*size) : std::nullopt;
}

std::optional<Color> Arguments::timecodeBurnFontColor() const { return colorOf(*this, OAVTimecodeBurnFontRGB); }
void Arguments::setTimecodeBurnFontColor(const std::optional<Color>& color) {
    setColor(*this, color, OAVTimecodeBurnFontRGB);
}

std::optional<Color> Arguments::timecodeBurnBoxColor() const { return colorOf(*this, OAVTimecodeBurnBoxRGB); }
void Arguments::setTimecodeBurnBoxColor(const std::optional<Color>& color) {
    setColor(*this, color, OAVTimecodeBurnBoxRGB);
}

std::optional<Color> Arguments::watermarkTextFontColor() const {
    return colorOf(*this, OAVWatermarkTextBurnFontRGBFlag);
}
void Arguments::setWatermarkTextFontColor(const std::optional<Color>& color) {
    setColor(*this, color, OAVWatermarkTextBurnFontRGBFlag);
}

std::optional<Color> Arguments::watermarkTextBoxColor() const { return colorOf(*this, OAVWatermarkTextBurnBoxRGBFlag); }
void Arguments::setWatermarkTextBoxColor(const std::optional<Color>& color) {
    setColor(*this, color, OAVWatermarkTextBurnBoxRGBFlag);
}

OptionalText Arguments::watermarkFilePath() const { return valueOf(*this, OAVWatermarkFileBurnFilePathFlag); }
void Arguments::setWatermarkFilePath(OptionalText value) { setText(*this, value, OAVWatermarkFileBurnFilePathFlag); }

std::optional<WatermarkBurnAnchor> Arguments::watermarkFileAnchor() const {
    return anchorOf<WatermarkBurnAnchor>(*this, OAVWatermarkFileBurnAnchorFlag);
}
void Arguments::setWatermarkFileAnchor(const std::optional<WatermarkBurnAnchor>& value) {
    setTypedValue(*this, value, OAVWatermarkFileBurnAnchorFlag);
}

std::optional<double> Arguments::watermarkFileScale() const {
    const auto factor = numberOf<double>(*this, OAVWatermarkFileBurnScaleFlag);
    return factor && *factor > 0 ? factor : std::nullopt;
}
void Arguments::setWatermarkFileScale(std::optional<double> factor) {
    setNumber(*this, factor, OAVWatermarkFileBurnScaleFlag);
}

bool Arguments::addWatermarkText() const { return isSet(*this, OAVWatermarkTextAddBurnFlag); }
void Arguments::setAddWatermarkText(bool isOn) { setSwitch(*this, isOn, OAVWatermarkTextAddBurnFlag); }

OptionalText Arguments::watermarkText() const { return valueOf(*this, OAVWatermarkTextBurnTextFlag); }
void Arguments::setWatermarkText(OptionalText value) { setText(*this, value, OAVWatermarkTextBurnTextFlag); }

std::optional<std::int64_t> Arguments::watermarkTextBurnFontSize() const {
    return numberOf<std::int64_t>(*this, OAVWatermarkTextBurnFontSizeFlag);
}
void Arguments::setWatermarkTextBurnFontSize(std::optional<std::int64_t> value) {
    setNumber(*this, value, OAVWatermarkTextBurnFontSizeFlag);
}

std::optional<OAVTranscodeArgumentOverlayAnchorValue> Arguments::watermarkTextAnchor() const {
    return typedValueOf<OAVTranscodeArgumentOverlayAnchorValue>(*this, OAVWatermarkTextBurnAnchorFlag);
}
void Arguments::setWatermarkTextAnchor(const std::optional<OAVTranscodeArgumentOverlayAnchorValue>& value) {
    setTypedValue(*this, value, OAVWatermarkTextBurnAnchorFlag);
}

}  // namespace corvex::inline v0
