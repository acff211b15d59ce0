#include <tools/corvex/worker/TimecodeRequest.h>

#include <tools/corvex/RateText.h>
#include <tools/corvex/worker/RequestText.h>

namespace corvex::tool {
namespace {

using Arguments = TranscodeCliArguments;

/// Hours, minutes and seconds of "2026-11-21T09:30:00.000000Z" as a label of frame 0.
std::optional<TimecodeComponents> creationTime(const MediaInput& input) {
    const AVDictionaryEntry* entry = av_dict_get(input.context().metadata, "creation_time", nullptr, 0);
    if (entry == nullptr) return std::nullopt;
    const std::string_view text = entry->value;
    const std::size_t mark = text.find_first_of("T ");
    if (mark == std::string_view::npos || text.size() < mark + 9) return std::nullopt;
    return TimecodeComponents::fromTimecode(std::string(text.substr(mark + 1, 8)) + ":00");
}

std::string textOf(AVRational rate) { return std::to_string(rate.num) + "/" + std::to_string(rate.den); }

/// Labels a second at most of a timecode track, whose sample description has 8 bits for them (QuickTime File Format).
constexpr std::int64_t mostLabels = 255;

/// Labels a second at a rate: 30 for 29.97.
std::int64_t quantaOf(AVRational rate) { return av_rescale_rnd(1, rate.num, rate.den, AV_ROUND_NEAR_INF); }

bool dropsFrames(AVRational rate) {
    // Drop frame is defined for 30000/1001 and its multiples (SMPTE ST 12-1).
    return rate.den == 1001 && rate.num % 30000 == 0;
}

}  // namespace

std::optional<std::string> statedTimecode(const MediaInput& input) {
    const AVFormatContext& context = input.context();
    if (const AVDictionaryEntry* entry = av_dict_get(context.metadata, "timecode", nullptr, 0)) return entry->value;
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        if (const auto* entry = av_dict_get(context.streams[i]->metadata, "timecode", nullptr, 0)) return entry->value;
    }
    return std::nullopt;
}

std::optional<TimecodeRequest> TimecodeRequest::make(const Arguments& arguments) {
    if (!arguments.includeTimecode()) {
        for (const auto& flag : {OAVTimecodeMatchSourceFlag, OAVTimecodeFromCreationDateFlag, OAVTimecodeCustomFlag,
                                 OAVTimecodeFrameRateFlag, OAVTimecodeIsDropFlag, OAVTimecodeIsNonDropFlag,
                                 OAVTimecodeBypassNTSCDropFlag}) {
            if (arguments.hasArgumentFlag(flag.cliFlag())) {
                throw UsageError(std::string(flag.cliFlag()) + ": expected -tc_track or -tc_burn beside it");
            }
        }
        return std::nullopt;
    }
    TimecodeRequest request;
    request.addsTrack = arguments.addTimecodeTrack();
    request.source = arguments.timecodeSource();
    if (request.source == TimecodeSource::custom) {
        const std::string_view text = arguments.timecode().value_or("");
        request.custom = TimecodeComponents::fromTimecode(text);
        if (!request.custom) failExpecting("-tc_custom", text, "a timecode, as 01:00:00:00 or 01:00:00;00");
    }
    request.dropFrameState = arguments.timecodeDropFrameState();
    request.bypassesNtscDrop = arguments.bypassNTSCDrop();
    if (const auto text = arguments.argumentFlagValue(OAVTimecodeFrameRateFlag.cliFlag())) {
        const auto rate = arguments.timecodeFrameRate();
        const auto common = rate ? roundedCommonRate(static_cast<double>(*rate)) : std::nullopt;
        if (!common) failExpecting("-tc_rate", *text, "a standard frame rate, as 29.97; corvex rate list shows them");
        const auto& row = caseOf(*common);
        request.frameRate = AVRational{static_cast<int>(row.timeValue), static_cast<int>(row.timeScale)};
    }
    return request;
}

TimecodeComponents TimecodeRequest::start(const MediaInput& first, AVRational rate) const {
    if (addsTrack && frameRate && av_cmp_q(*frameRate, rate) != 0) {
        throw JobError("-tc_rate: a timecode track counts the frames of its video, which has " + textOf(rate) +
                       " a second; -vr would change that");
    }
    if (addsTrack && quantaOf(rate) > mostLabels) {
        throw JobError("-tc_track: a timecode track counts up to 255 frames a second, not " + textOf(rate) +
                       "; -vr would change that");
    }
    std::optional<TimecodeComponents> start = custom;
    if (source == TimecodeSource::creationDate) {
        start = creationTime(first);
        if (!start) throw JobError("-tc_creation: '" + first.path() + "' does not state when it was made");
    } else if (source == TimecodeSource::match) {
        const auto stated = statedTimecode(first);
        start = stated ? TimecodeComponents::fromTimecode(*stated) : std::nullopt;
        if (!start) start = TimecodeComponents();
    }
    const bool isStated = start->dropFrameState == DropFrameState::drop;
    DropFrameState state = dropFrameState;
    if (state == DropFrameState::unknown && source == TimecodeSource::match) {
        state = isStated ? DropFrameState::drop : DropFrameState::nonDrop;
    }
    if (state == DropFrameState::unknown) state = dropsFrames(rate) ? DropFrameState::drop : DropFrameState::nonDrop;
    if (bypassesNtscDrop) state = DropFrameState::nonDrop;
    if (state == DropFrameState::drop && !dropsFrames(rate)) {
        throw JobError("a timecode of " + textOf(rate) +
                       " frames a second cannot drop frames; expected 29.97 or a multiple, or -tc_non_drop");
    }
    start->dropFrameState = state;
    return *start;
}

TimecodeCount TimecodeRequest::count(const MediaInput& first, AVRational videoRate) const {
    const AVRational rate = frameRate.value_or(videoRate);
    const std::int64_t pictures = quantaOf(videoRate), labels = quantaOf(rate);
    if (labels == 0 || pictures % labels != 0) {
        throw JobError("-tc_rate: expected a rate that the video's " + textOf(videoRate) +
                       " pictures a second are a whole multiple of, not " + textOf(rate));
    }
    return {TimecodeFrame(start(first, rate), MediaRational(rate.num, rate.den)), pictures / labels};
}

}  // namespace corvex::tool
