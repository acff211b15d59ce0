#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include <Corvex/timing/TimecodeFrame.h>

using corvex::TimecodeComponents;

/// The lenient parser: never fails, agrees with the fields that it decomposes, and its result can be printed and, where
/// the numbers are small enough for arithmetic, counted at a drop-frame rate.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto parts = TimecodeComponents::decomposeTimecodeString(text);
    const auto lenient = TimecodeComponents::sanitizedTimecode(text);
    const TimecodeComponents fromParts(parts.hours.value_or(0), parts.minutes.value_or(0), parts.seconds.value_or(0),
                                       parts.frames.value_or(0), parts.dropFrameState);
    const bool isDrop = text.find(';') != std::string_view::npos;
    if (lenient != fromParts || lenient.isDropFrame() != isDrop) std::abort();
    const std::string printed = lenient.timecodeString();
    if (printed.size() > TimecodeComponents::longestText) std::abort();

    constexpr std::int64_t limit = std::int64_t{1} << 40U;
    const auto isSmall = [](std::int64_t number) { return number > -limit && number < limit; };
    if (isSmall(lenient.hours) && isSmall(lenient.minutes) && isSmall(lenient.seconds) && isSmall(lenient.frames)) {
        const corvex::TimecodeFrame frame(lenient, {60000, 1001});
        const auto next = frame.incremented();
        if (lenient.isDropFrame() && !next.components().isDropFrame()) std::abort();
    }
    return 0;
}
