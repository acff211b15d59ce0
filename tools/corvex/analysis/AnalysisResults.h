#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <Corvex/platform/Json.h>

namespace corvex::tool {

// What a media analysis finds out, as the results file keeps it (docs/ANALYSIS.md, docs/analysis-results.schema.json).
// Each record names its members once, for writing and for reading; what is absent is not written.

/// Frames per second.
struct RateResult {
    std::int64_t timeValue = 0, timeScale = 1;
    double value = 0;
    std::optional<std::string> common;  ///< The common rate that it is, or that it is a rounding of: "fps23_976".
    bool isConstant = false;

    template <class Self, class Visit>
    static void members(Self& self, Visit&& visit) {
        visit("timeValue", self.timeValue), visit("timeScale", self.timeScale), visit("value", self.value);
        visit("common", self.common), visit("isConstant", self.isConstant);
    }
};

/// How pictures are tagged, by case names of the colour vocabulary; absent where the file does not say, or says what the
/// vocabulary has no name for.
struct ColorResult {
    std::optional<std::string> primaries, transferFunction, matrix, range;

    template <class Self, class Visit>
    static void members(Self& self, Visit&& visit) {
        visit("primaries", self.primaries), visit("transferFunction", self.transferFunction);
        visit("matrix", self.matrix), visit("range", self.range);
    }
};

struct VideoResult {
    std::int64_t width = 0, height = 0;  ///< As they lie in the file.
    std::int64_t pixelAspectWidth = 1, pixelAspectHeight = 1;
    std::int64_t rotation = 0;  ///< Clockwise degrees that set the picture upright.
    bool isMirrored = false;    ///< Whether it has to be mirrored from left to right before it is turned.
    std::optional<RateResult> frameRate;
    std::optional<std::int64_t> statedFrames;  ///< As the container counts them.
    std::string pixelFormat;
    std::int64_t bitDepth = 0;  ///< Of the deepest component; 0: not known.
    bool hasAlpha = false;
    ColorResult color;

    template <class Self, class Visit>
    static void members(Self& self, Visit&& visit) {
        visit("width", self.width), visit("height", self.height);
        visit("pixelAspectWidth", self.pixelAspectWidth), visit("pixelAspectHeight", self.pixelAspectHeight);
        visit("rotation", self.rotation), visit("isMirrored", self.isMirrored);
        visit("frameRate", self.frameRate);
        visit("statedFrames", self.statedFrames), visit("pixelFormat", self.pixelFormat);
        visit("bitDepth", self.bitDepth), visit("hasAlpha", self.hasAlpha), visit("color", self.color);
    }
};

struct AudioResult {
    std::int64_t sampleRate = 0, channels = 0;
    std::string channelLayout;
    std::int64_t bitsPerSample = 0;                ///< 0: not a matter of the format.
    std::optional<std::string> formatCode;         ///< Four characters of QuickTime and Core Audio.
    std::string replacement, losslessReplacement;  ///< What can be written in its place, as a value of "-acodec".

    template <class Self, class Visit>
    static void members(Self& self, Visit&& visit) {
        visit("sampleRate", self.sampleRate), visit("channels", self.channels);
        visit("channelLayout", self.channelLayout), visit("bitsPerSample", self.bitsPerSample);
        visit("formatCode", self.formatCode), visit("replacement", self.replacement);
        visit("losslessReplacement", self.losslessReplacement);
    }
};

struct TrackResult {
    std::int64_t index = 0;
    std::string kind;                  ///< video, picture (an embedded one), audio, timecode, subtitle, other.
    std::optional<std::string> codec;  ///< In the terms of the media constants.
    std::string codecName;             ///< In the media libraries' terms.
    std::optional<std::string> codecTag, profile, language;
    std::optional<double> durationInSeconds;
    std::optional<VideoResult> video;
    std::optional<AudioResult> audio;

    template <class Self, class Visit>
    static void members(Self& self, Visit&& visit) {
        visit("index", self.index), visit("kind", self.kind), visit("codec", self.codec);
        visit("codecName", self.codecName), visit("codecTag", self.codecTag), visit("profile", self.profile);
        visit("language", self.language), visit("durationInSeconds", self.durationInSeconds);
        visit("video", self.video), visit("audio", self.audio);
    }
};

struct TimecodeResult {
    std::string text;
    bool isDropFrame = false;
    std::optional<std::int64_t> frameNumber;  ///< Frames from 00:00:00:00, where the rate is known.

    template <class Self, class Visit>
    static void members(Self& self, Visit&& visit) {
        visit("text", self.text), visit("isDropFrame", self.isDropFrame), visit("frameNumber", self.frameNumber);
    }
};

struct SnapshotResult {
    double location = 0;
    std::optional<std::string> source;    ///< frame, embedded, desktop; absent with a problem.
    std::optional<double> timeInSeconds;  ///< Of the frame, from the start of the file.
    std::optional<std::string> file;
    std::optional<std::int64_t> width, height;
    std::optional<std::string> problem;

    template <class Self, class Visit>
    static void members(Self& self, Visit&& visit) {
        visit("location", self.location), visit("source", self.source), visit("timeInSeconds", self.timeInSeconds);
        visit("file", self.file), visit("width", self.width), visit("height", self.height);
        visit("problem", self.problem);
    }
};

struct DecodedTrackResult {
    std::int64_t index = 0;
    std::int64_t frames = 0;  ///< Pictures, or samples of one channel.
    std::int64_t decodeErrors = 0;
    std::string sha256;  ///< Of what was decoded, hexadecimal.

    template <class Self, class Visit>
    static void members(Self& self, Visit&& visit) {
        visit("index", self.index), visit("frames", self.frames), visit("decodeErrors", self.decodeErrors);
        visit("sha256", self.sha256);
    }
};

struct DeepResult {
    std::vector<DecodedTrackResult> tracks;
    std::optional<std::string> problem;  ///< Why the file could not be read to its end.

    template <class Self, class Visit>
    static void members(Self& self, Visit&& visit) {
        visit("tracks", self.tracks), visit("problem", self.problem);
    }
};

struct FileResult {
    std::string path;
    std::optional<std::string> problem;  ///< Why it is no readable media; nothing is said of what it holds then.
    std::optional<std::int64_t> sizeInBytes;
    std::optional<std::string> container;  ///< In the terms of the media constants.
    std::optional<std::string> format;     ///< In the media libraries' terms.
    std::optional<double> durationInSeconds;
    std::optional<TimecodeResult> startTimecode;
    std::vector<TrackResult> tracks;
    std::vector<SnapshotResult> snapshots;
    std::optional<DeepResult> deep;

    /// Whether something that was asked for could not be had.
    [[nodiscard]] bool hasProblem() const;

    template <class Self, class Visit>
    static void members(Self& self, Visit&& visit) {
        visit("path", self.path), visit("problem", self.problem), visit("sizeInBytes", self.sizeInBytes);
        visit("container", self.container), visit("format", self.format);
        visit("durationInSeconds", self.durationInSeconds), visit("startTimecode", self.startTimecode);
        visit("tracks", self.tracks), visit("snapshots", self.snapshots), visit("deep", self.deep);
    }
};

struct AnalysisResults {
    static constexpr std::int64_t currentVersion = 1;

    std::int64_t version = currentVersion;
    std::string writer;
    std::optional<std::string> analysisId;
    bool deepAnalysis = false;
    std::vector<FileResult> files;

    template <class Self, class Visit>
    static void members(Self& self, Visit&& visit) {
        visit("version", self.version), visit("writer", self.writer), visit("analysisId", self.analysisId);
        visit("deepAnalysis", self.deepAnalysis), visit("files", self.files);
    }

    /// The text of a results file.
    [[nodiscard]] std::string text() const;
    /// Throws DecodingError for a text that is no results file, or one of another version.
    [[nodiscard]] static AnalysisResults parse(std::string_view text);
};

}  // namespace corvex::tool
