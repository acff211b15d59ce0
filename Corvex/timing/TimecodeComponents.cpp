#include <Corvex/timing/TimecodeComponents.h>

#include <nlohmann/json.hpp>

#include <array>
#include <charconv>

#include <Corvex/timing/SmpteTime.h>
#include <Corvex/timing/internal/decodeMember.h>

namespace corvex::inline v0 {
namespace {

/// "00" to "99", one after the other.
constexpr auto digitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

char* writeNumber(char* to, std::int64_t number) noexcept {
    if (number >= 0 && number < 100) {
        const char* pair = digitPairs.data() + 2 * number;
        to[0] = pair[0];
        to[1] = pair[1];
        return to + 2;
    }
    if (number < 0) *to++ = '0';
    constexpr std::ptrdiff_t longestNumber = 20;
    return std::to_chars(to, to + longestNumber, number).ptr;
}

DropFrameState dropFrameState(const SmpteTime& time, std::optional<std::uint32_t> formatDescriptionFlags) noexcept {
    if (formatDescriptionFlags && (*formatDescriptionFlags & 1U) != 0) return DropFrameState::drop;
    switch (static_cast<SmpteTimeType>(time.type)) {
        case SmpteTimeType::type30Drop:
        case SmpteTimeType::type2997Drop: return DropFrameState::drop;
        case SmpteTimeType::type24:
        case SmpteTimeType::type25:
        case SmpteTimeType::type30:
        case SmpteTimeType::type2997:
        case SmpteTimeType::type60:
        case SmpteTimeType::type5994: return DropFrameState::nonDrop;
    }
    return DropFrameState::unknown;
}

}  // namespace

TimecodeComponents::TimecodeComponents(const SmpteTime& smpteTime,
                                       std::optional<std::uint32_t> formatDescriptionFlags) noexcept
    : TimecodeComponents(smpteTime.hours, smpteTime.minutes, smpteTime.seconds, smpteTime.frames,
                         corvex::dropFrameState(smpteTime, formatDescriptionFlags)) {}

std::string_view TimecodeComponents::writeTimecode(std::span<char, longestText> buffer) const noexcept {
    char* to = writeNumber(buffer.data(), hours);
    *to++ = ':';
    to = writeNumber(to, minutes);
    *to++ = ':';
    to = writeNumber(to, seconds);
    *to++ = isDropFrame() ? ';' : ':';
    to = writeNumber(to, frames);
    return {buffer.data(), static_cast<std::size_t>(to - buffer.data())};
}

std::string TimecodeComponents::timecodeString() const {
    std::array<char, longestText> buffer;  // NOLINT(cppcoreguidelines-pro-type-member-init): written before it is read
    return std::string(writeTimecode(buffer));
}

template <class JsonType>
void to_json(JsonType& json, const TimecodeComponents& value) {
    json = Json{{"hours", value.hours},
                {"minutes", value.minutes},
                {"seconds", value.seconds},
                {"frames", value.frames},
                {"dropFrameState", value.dropFrameState}};
}

template <class JsonType>
void from_json(const JsonType& coded, TimecodeComponents& value) {
    const Json& json = coded;  // converted where it is of the other kind
    value = {decodeIntegerMember(json, "hours"), decodeIntegerMember(json, "minutes"),
             decodeIntegerMember(json, "seconds"), decodeIntegerMember(json, "frames"),
             requireMember(json, "dropFrameState").get<DropFrameState>()};
}

template CORVEX_EXPORT void to_json(Json&, const TimecodeComponents&);
template CORVEX_EXPORT void to_json(nlohmann::json&, const TimecodeComponents&);
template CORVEX_EXPORT void from_json(const Json&, TimecodeComponents&);
template CORVEX_EXPORT void from_json(const nlohmann::json&, TimecodeComponents&);

}  // namespace corvex::inline v0
