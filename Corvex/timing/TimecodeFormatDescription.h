#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include <Corvex/platform/Error.h>
#include <Corvex/timing/MediaTime.h>
#include <Corvex/timing/TimecodeFormatType.h>

namespace corvex::inline v0 {

/// A timecode format that cannot be described, or bytes that describe none.
class CORVEX_EXPORT TimecodeFormatError : public Error {
public:
    enum class Case : std::uint8_t {
        frameDuration,  ///< Not positive, or its value or scale beyond 31 bits. Offender: the value.
        frameQuanta,    ///< 0, or more than the sample description can hold (255). Offender: the quanta.
        length,         ///< Fewer bytes than a sample description has, or than it says. Offender: the count of bytes.
        formatType,     ///< No timecode format. Offender: the code.
    };

    TimecodeFormatError(Case which, std::int64_t offender);  ///< The message names both.
    ~TimecodeFormatError() override;
    TimecodeFormatError(const TimecodeFormatError&) = default;
    TimecodeFormatError& operator=(const TimecodeFormatError&) = default;

    [[nodiscard]] Case which() const noexcept { return case_; }
    [[nodiscard]] std::int64_t offender() const noexcept { return offender_; }

    friend bool operator==(const TimecodeFormatError& a, const TimecodeFormatError& b) noexcept {
        return a.case_ == b.case_ && a.offender_ == b.offender_;
    }

private:
    Case case_;
    std::int64_t offender_;
};

/// Describes the timecode samples of a media track: what they carry, how long a frame lasts and how many frames a label's
/// second has. A value that is always describable. Any thread.
/// Source   QuickTime File Format, "Timecode sample description".
class TimecodeFormatDescription {
public:
    /// Labels are skipped.
    static constexpr std::uint32_t dropFrameFlag = 1;
    /// Labels start again after 24 hours.
    static constexpr std::uint32_t twentyFourHourMaximumFlag = 2;
    /// Times before 0 are allowed.
    static constexpr std::uint32_t negativeTimesFlag = 4;
    /// Samples are plain counts, not labels.
    static constexpr std::uint32_t counterFlag = 8;

    /// Throws TimecodeFormatError unless the frame duration is valid and positive, in 31 bits over 31 bits, and there is
    /// at least one frame a second.
    CORVEX_EXPORT TimecodeFormatDescription(TimecodeFormatType formatType, const MediaTime& frameDuration,
                                            std::uint32_t frameQuanta, std::uint32_t flags);

    [[nodiscard]] TimecodeFormatType formatType() const noexcept { return formatType_; }
    /// Valid and above 0; 1001/30000 s for 29.97.
    [[nodiscard]] const MediaTime& frameDuration() const noexcept { return frameDuration_; }
    [[nodiscard]] std::uint32_t frameQuanta() const noexcept { return frameQuanta_; }  ///< Frames in a label's second.
    [[nodiscard]] std::uint32_t flags() const noexcept { return flags_; }
    [[nodiscard]] bool isDropFrame() const noexcept { return (flags_ & dropFrameFlag) != 0; }

    /// The sample description atom: size, format type, data reference 1, flags, time scale, frame duration, number of
    /// frames; big-endian, without a source name. Throws TimecodeFormatError when the quanta are above 255.
    static constexpr std::size_t sampleDescriptionSize = 34;
    using SampleDescription = std::array<std::uint8_t, sampleDescriptionSize>;
    /// Throws TimecodeFormatError when the quanta are above 255.
    [[nodiscard]] CORVEX_EXPORT SampleDescription sampleDescription() const;

    /// Reads what `sampleDescription` writes; atoms that follow the fields (a source name) are skipped. Throws
    /// TimecodeFormatError.
    [[nodiscard]] CORVEX_EXPORT static TimecodeFormatDescription fromSampleDescription(
        std::span<const std::uint8_t> bytes);

    friend bool operator==(const TimecodeFormatDescription&, const TimecodeFormatDescription&) noexcept = default;

private:
    TimecodeFormatType formatType_;
    MediaTime frameDuration_;
    std::uint32_t frameQuanta_;
    std::uint32_t flags_;
};

}  // namespace corvex::inline v0
