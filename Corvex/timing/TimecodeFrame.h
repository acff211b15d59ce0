#pragma once

#include <cstdint>

#include <Corvex/timing/MediaRational.h>
#include <Corvex/timing/MediaTime.h>
#include <Corvex/timing/TimecodeComponents.h>
#include <Corvex/timing/TimecodeFormatDescription.h>

namespace corvex::inline v0 {

/// A timecode bound to a frame rate: labels become frame numbers and go on from frame to frame. Frame arithmetic is
/// exact; one beyond 64 bits stops the process, and so does a rate of 0 where a label or a duration is divided by it.
/// Pure value; any thread; nothing allocates.
class TimecodeFrame {
public:
    /// Stops the process when the rate, rounded, is beyond 32 bits.
    constexpr TimecodeFrame(const TimecodeComponents& components, const MediaRational& frameRate,
                            const TimecodeFormatOptions& formatOptions = {}) noexcept
        : components_(components),
          frameRate_(frameRate),
          frameQuanta_(checkedCast<std::uint32_t>(checkedMagnitude(frameRate.quantizedValue()))),
          formatOptions_(formatOptions) {}

    [[nodiscard]] constexpr const TimecodeComponents& components() const noexcept { return components_; }
    [[nodiscard]] constexpr const MediaRational& frameRate() const noexcept { return frameRate_; }
    /// The magnitude of the rate rounded half away from zero: 30 for 29.97.
    [[nodiscard]] constexpr std::uint32_t frameQuanta() const noexcept { return frameQuanta_; }
    [[nodiscard]] constexpr const TimecodeFormatOptions& formatOptions() const noexcept { return formatOptions_; }

    /// The rate rounded up: 30 for 29.97, 60 for 59.94, 25 for 25.
    [[nodiscard]] constexpr std::int64_t fullFramesPerSecond() const noexcept {
        return checkedInt64(roundedUp(frameRate_.rawValue()));
    }

    /// The plain count of labels from 00:00:00:00, never adjusted for drop frame.
    [[nodiscard]] constexpr std::int64_t actualFrameNumber() const noexcept {
        const std::int64_t seconds =
            checkedAdd(checkedMultiply<std::int64_t>(components_.fullMinutesRepresented(), 60), components_.seconds);
        return checkedAdd(checkedMultiply(seconds, fullFramesPerSecond()), components_.frames);
    }

    /// The count of frames from 00:00:00;00: without the labels that drop frame skips, in state `drop` at a compliant
    /// rate. A label that does not exist is accepted: 00:01:00;00 at 29.97 is frame 1798.
    [[nodiscard]] constexpr std::int64_t frameNumber() const noexcept;

    /// The frame `count` frames on, or back. 0 changes nothing. Otherwise drop frame goes on as drop frame where the
    /// options or the rate allow it; a state of `unknown` becomes `drop` there too; on a rate that is not compliant it
    /// becomes `unknown`, on purpose. The result has the default format options, whatever they were before.
    [[nodiscard]] constexpr TimecodeFrame addingFrames(std::int64_t count) const noexcept;
    /// addingFrames(1): the label of the next frame.
    [[nodiscard]] constexpr TimecodeFrame incremented() const noexcept { return addingFrames(1); }

    /// How long a frame lasts: the rate's time scale over its time value, unreduced (1001/30000 s).
    [[nodiscard]] constexpr MediaTime frameDuration() const noexcept {
        return {frameRate_.timeScale(), frameRate_.timeValue()};
    }
    /// `frameNumber` such durations, unreduced.
    [[nodiscard]] constexpr MediaTime presentationTimeStamp() const noexcept {
        return {checkedMultiply(frameNumber(), frameRate_.timeScale()), frameRate_.timeValue()};
    }
    /// Both; the decode time is invalid.
    [[nodiscard]] constexpr SampleTimingInfo sampleTimingInfo() const noexcept {
        return {frameDuration(), presentationTimeStamp(), {}};
    }

    /// The format of a media sample that carries this timecode, under two names: the format type of the options, the
    /// frame duration, the quanta, and the drop-frame flag in state `drop`. Throws TimecodeFormatError.
    [[nodiscard]] TimecodeFormatDescription formatDescription() const { return timecodeFormatDescription(); }
    /// See formatDescription().
    [[nodiscard]] TimecodeFormatDescription timecodeFormatDescription() const {
        return {formatOptions_.formatType, frameDuration(), frameQuanta_,
                components_.isDropFrame() ? TimecodeFormatDescription::dropFrameFlag : 0U};
    }

private:
    TimecodeComponents components_;
    MediaRational frameRate_;
    std::uint32_t frameQuanta_;
    TimecodeFormatOptions formatOptions_;
};

constexpr std::int64_t TimecodeFrame::frameNumber() const noexcept {
    const std::int64_t number = actualFrameNumber();
    if (!components_.isDropFrame() || !frameRate_.isNTSCDropFrameCompliant()) return number;
    const std::int64_t dropped = fullFramesPerSecond() / 30 * 2;
    const std::int64_t minutes = components_.fullMinutesRepresented();
    const std::int64_t droppingMinutes = minutes - minutes / 10;  // a smaller magnitude: cannot overflow
    return checkedSubtract(number, checkedMultiply(dropped, droppingMinutes));
}

constexpr TimecodeFrame TimecodeFrame::addingFrames(std::int64_t count) const noexcept {
    if (count == 0) return *this;
    const std::int64_t frame = checkedAdd(frameNumber(), count);
    const std::int64_t fps = fullFramesPerSecond();
    const bool isNonDrop = components_.dropFrameState == DropFrameState::nonDrop;
    if (!isNonDrop && (!formatOptions_.ensureValidDropFrameRates || frameRate_.isNTSCDropFrameCompliant())) {
        return {TimecodeComponents::dropFrameComponents(frame, fps), frameRate_};
    }
    const std::int64_t seconds = checkedDivide(frame, fps);
    const TimecodeFields fields{seconds / 3600, seconds % 3600 / 60, seconds % 60, frame - seconds * fps};
    return {{fields, isNonDrop ? DropFrameState::nonDrop : DropFrameState::unknown}, frameRate_};
}

}  // namespace corvex::inline v0
