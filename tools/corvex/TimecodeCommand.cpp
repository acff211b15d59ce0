// corvex timecode: labels to frame numbers and back.

#include <fmt/format.h>
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <Corvex/platform/NumberText.h>
#include <Corvex/timing/TimecodeFrame.h>
#include <tools/corvex/RateText.h>
#include <tools/corvex/Subcommand.h>
#include <tools/corvex/jsonOutput.h>

namespace corvex::tool {
namespace {

struct TimecodeChoices {
    std::string text;
    std::string count;
    std::string rate;
    bool isLenient = false;
    bool isDrop = false;
    bool json = false;
};

TimecodeComponents parseTimecode(const std::string& text) {
    const auto components = TimecodeComponents::fromTimecode(text);
    if (components) return *components;
    throw UsageError(inQuotes(text) +
                     " is no timecode; expected hours, minutes, seconds and frames of two digits, as 01:00:00:00, or "
                     "01:00:00;00 for drop frame");
}

std::int64_t parseFrames(const std::string& text) {
    const auto frames = parseInteger<std::int64_t>(text);
    if (!frames) throw UsageError(inQuotes(text) + " is no whole number of frames of 64 bits");
    return *frames;
}

/// Whether counting comes by the frame's label: not by 00:00:00:25 at 25, nor by one that drop frame leaves out.
bool isLabelOf(const TimecodeFrame& frame, bool dropsFrames) {
    const auto counted =
        TimecodeComponents::timecodeComponents(frame.frameNumber(), frame.fullFramesPerSecond(), dropsFrames);
    return counted.timecodeString() == frame.components().timecodeString();
}

/// The frame of a label whose number, and that of the label `count` frames on, fit into 64 bits and are not below 0.
TimecodeFrame frameOf(const TimecodeChoices& choices, std::int64_t count = 0) {
    const TimecodeComponents components = parseTimecode(choices.text);
    const VideoFrameRate rate = parseRate(choices.rate);
    const TimecodeFrame frame(components, rate.rational());
    // No term is negative, so the sum outweighs every step on the way to it.
    const Int128 seconds = (Int128{components.hours} * 60 + components.minutes) * 60 + components.seconds;
    const Int128 number = seconds * frame.fullFramesPerSecond() + components.frames;
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    if (number > most || number + count > most) {
        throw UsageError("the frame number of " + inQuotes(choices.text) + " goes beyond 64 bits");
    }
    if (frame.frameNumber() + Int128{count} < 0) {
        throw UsageError(inQuotes(choices.count) + " frames from " + inQuotes(choices.text) +
                         " lies before 00:00:00:00; no label does");
    }
    const bool dropsFrames = components.isDropFrame() && rate.rational().isNTSCDropFrameCompliant();
    if (components.isDropFrame() != dropsFrames) {
        fmt::print(stderr, "corvex: note: {} frames per second drop no frames; the label is counted without drops\n",
                   choices.rate);
    } else if (!isLabelOf(frame, dropsFrames)) {
        fmt::print(stderr, "corvex: note: {} frames per second have no label {}; it is counted as it stands\n",
                   choices.rate, choices.text);
    }
    return frame;
}

Json frameJson(const TimecodeChoices& choices) { return {{"rate", rateJson(parseRate(choices.rate))}}; }

ExitStatus parse(const TimecodeChoices& choices) {
    const auto components =
        choices.isLenient ? TimecodeComponents::sanitizedTimecode(choices.text) : parseTimecode(choices.text);
    if (choices.json) {
        printJson({{"timecode", components.timecodeString()}, {"components", components}});
    } else {
        fmt::print("{} {}\n", components.timecodeString(), description(components.dropFrameState));
    }
    return ExitStatus::success;
}

ExitStatus number(const TimecodeChoices& choices) {
    const TimecodeFrame frame = frameOf(choices);
    if (choices.json) {
        Json json = frameJson(choices);
        json["timecode"] = frame.components().timecodeString();
        json["frameNumber"] = frame.frameNumber();
        json["actualFrameNumber"] = frame.actualFrameNumber();
        printJson(json);
    } else {
        fmt::print("{}\n", frame.frameNumber());
    }
    return ExitStatus::success;
}

void printLabel(const TimecodeChoices& choices, const TimecodeComponents& label) {
    if (choices.json) {
        Json json = frameJson(choices);
        json["timecode"] = label.timecodeString();
        json["components"] = label;
        printJson(json);
    } else {
        fmt::print("{}\n", label.timecodeString());
    }
}

ExitStatus at(const TimecodeChoices& choices) {
    const std::int64_t frame = parseFrames(choices.text);
    if (frame < 0) throw UsageError(inQuotes(choices.text) + " lies before 00:00:00:00; expected a frame from 0");
    const MediaRational rate = parseRate(choices.rate).rational();
    if (choices.isDrop && !rate.isNTSCDropFrameCompliant()) {
        fmt::print(stderr, "corvex: note: {} frames per second is no drop-frame rate of SMPTE ST 12-1\n", choices.rate);
    }
    const std::int64_t fps = TimecodeFrame({}, rate).fullFramesPerSecond();
    printLabel(choices, TimecodeComponents::timecodeComponents(frame, fps, choices.isDrop));
    return ExitStatus::success;
}

ExitStatus add(const TimecodeChoices& choices) {
    const std::int64_t count = parseFrames(choices.count);
    printLabel(choices, frameOf(choices, count).addingFrames(count).components());
    return ExitStatus::success;
}

}  // namespace

void addTimecodeCommand(CLI::App& app, const Invocation& /*invocation*/, Action& action) {
    auto choices = std::make_shared<TimecodeChoices>();
    CLI::App* command = app.add_subcommand("timecode", "Timecode labels to frame numbers and back");
    command->require_subcommand(1);
    const auto addCommand = [&](const char* name, const char* purpose, ExitStatus (*run)(const TimecodeChoices&)) {
        CLI::App* added = command->add_subcommand(name, purpose);
        added->add_flag("--json", choices->json, "Print one JSON object");
        added->callback([choices, run, &action] { action = [choices, run] { return run(*choices); }; });
        return added;
    };
    const auto addText = [&](CLI::App* to) {
        to->add_option("TEXT", choices->text, "As 01:00:00:00, or 01:00:00;00 for drop frame")->required();
    };
    const auto addRate = [&](CLI::App* to) {
        to->add_option("--rate", choices->rate, "As 29.97, 30000/1001 or fps29_97")->required();
    };

    CLI::App* reader = addCommand("parse", "Whether a text is timecode, and which", parse);
    addText(reader);
    reader->add_flag("--lenient", choices->isLenient, "Take any text; what cannot be read is 0");

    CLI::App* numberer = addCommand("number", "The frame number of a label", number);
    addText(numberer);
    addRate(numberer);
    numberer->footer("Example:\n  corvex timecode number '00:01:00;02' --rate 29.97");

    CLI::App* labeller = addCommand("at", "The label of a frame number", at);
    labeller->add_option("FRAME", choices->text, "From 0 at 00:00:00:00")->required();
    addRate(labeller);
    labeller->add_flag("--drop", choices->isDrop, "Drop-frame counting");

    CLI::App* adder = addCommand("add", "The label some frames on, or back", add);
    addText(adder);
    adder->add_option("N", choices->count, "How many frames; negative for back")->required();
    addRate(adder);
    adder->footer("Example:\n  corvex timecode add '00:00:59;29' 1 --rate 29.97");
}

}  // namespace corvex::tool
