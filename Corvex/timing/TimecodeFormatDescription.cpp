#include <Corvex/timing/TimecodeFormatDescription.h>

#include <limits>
#include <string>

namespace corvex::inline v0 {
namespace {

// Where the fields begin in a sample description.
constexpr std::size_t sizeAt = 0;
constexpr std::size_t formatTypeAt = 4;
constexpr std::size_t dataReferenceAt = 14;
constexpr std::size_t flagsAt = 20;
constexpr std::size_t timeScaleAt = 24;
constexpr std::size_t frameDurationAt = 28;
constexpr std::size_t frameQuantaAt = 32;

const char* problem(TimecodeFormatError::Case which) {
    switch (which) {
        case TimecodeFormatError::Case::frameDuration: return "a frame must last between 1 and 2^31 - 1 ticks";
        case TimecodeFormatError::Case::frameQuanta: return "a timecode track has 1 to 255 frames in a second";
        case TimecodeFormatError::Case::length: return "too few bytes for a timecode sample description";
        case TimecodeFormatError::Case::formatType: return "no timecode format";
    }
    return "";
}

void writeNumber(std::span<std::uint8_t> to, std::uint32_t number) {
    for (std::size_t i = 0; i < 4; ++i) to[i] = static_cast<std::uint8_t>(number >> (24U - 8U * i));
}

std::uint32_t readNumber(std::span<const std::uint8_t> from) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) number = number << 8U | from[i];
    return number;
}

}  // namespace

TimecodeFormatError::TimecodeFormatError(Case which, std::int64_t offender)
    : Error(std::string(problem(which)) + ": " + std::to_string(offender)), case_(which), offender_(offender) {}

TimecodeFormatError::~TimecodeFormatError() = default;

TimecodeFormatDescription::TimecodeFormatDescription(TimecodeFormatType formatType, const MediaTime& frameDuration,
                                                     std::uint32_t frameQuanta, std::uint32_t flags)
    : formatType_(formatType), frameDuration_(frameDuration), frameQuanta_(frameQuanta), flags_(flags) {
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    const bool fits = frameDuration.isValid() && frameDuration.value() >= 1 && frameDuration.value() <= most;
    if (!fits) throw TimecodeFormatError(TimecodeFormatError::Case::frameDuration, frameDuration.value());
    if (frameDuration.timeScale() > most) {
        throw TimecodeFormatError(TimecodeFormatError::Case::frameDuration, frameDuration.timeScale());
    }
    if (frameQuanta == 0) throw TimecodeFormatError(TimecodeFormatError::Case::frameQuanta, 0);
}

TimecodeFormatDescription::SampleDescription TimecodeFormatDescription::sampleDescription() const {
    if (frameQuanta_ > std::numeric_limits<std::uint8_t>::max()) {
        throw TimecodeFormatError(TimecodeFormatError::Case::frameQuanta, frameQuanta_);
    }
    SampleDescription bytes{};
    const std::span<std::uint8_t> all(bytes);
    writeNumber(all.subspan(sizeAt), sampleDescriptionSize);
    writeNumber(all.subspan(formatTypeAt), rawValue(formatType_));
    bytes[dataReferenceAt + 1] = 1;
    writeNumber(all.subspan(flagsAt), flags_);
    writeNumber(all.subspan(timeScaleAt), static_cast<std::uint32_t>(frameDuration_.timeScale()));
    writeNumber(all.subspan(frameDurationAt), static_cast<std::uint32_t>(frameDuration_.value()));
    bytes[frameQuantaAt] = static_cast<std::uint8_t>(frameQuanta_);
    return bytes;
}

TimecodeFormatDescription TimecodeFormatDescription::fromSampleDescription(std::span<const std::uint8_t> bytes) {
    const auto count = static_cast<std::int64_t>(bytes.size());
    if (bytes.size() < sampleDescriptionSize) throw TimecodeFormatError(TimecodeFormatError::Case::length, count);
    const std::uint32_t size = readNumber(bytes.subspan(sizeAt));
    if (size < sampleDescriptionSize || size > bytes.size()) {
        throw TimecodeFormatError(TimecodeFormatError::Case::length, size);
    }
    const std::uint32_t code = readNumber(bytes.subspan(formatTypeAt));
    const auto formatType = fromRawValue<TimecodeFormatType>(code);
    if (!formatType) throw TimecodeFormatError(TimecodeFormatError::Case::formatType, code);
    const std::uint32_t timeScale = readNumber(bytes.subspan(timeScaleAt));
    const std::uint32_t duration = readNumber(bytes.subspan(frameDurationAt));
    if (timeScale == 0) throw TimecodeFormatError(TimecodeFormatError::Case::frameDuration, 0);
    return {*formatType, MediaTime(duration, timeScale), bytes[frameQuantaAt], readNumber(bytes.subspan(flagsAt))};
}

}  // namespace corvex::inline v0
