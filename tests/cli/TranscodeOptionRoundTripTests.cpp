// What is set through the typed options and rendered is what a worker reads after parsing: numbers and structured texts of
// every kind. Plain texts, switches and closed choices are read back in the tests of their accessors and vocabulary.

#include <bit>
#include <clocale>
#include <cmath>
#include <functional>
#include <locale>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/media/AudioChannelLabel.h>
#include <Corvex/timing/TimecodeComponents.h>

namespace corvex::transcodeOptionRoundTripTests {
namespace {

using Arguments = TranscodeCliArguments;

/// Values that an argument vector can carry: nothing of them begins with "-".
class Random {
public:
    std::uint64_t below(std::uint64_t end) { return std::uniform_int_distribution<std::uint64_t>(0, end - 1)(engine_); }
    std::uint64_t bits() { return engine_() >> below(64); }
    std::int64_t integer() { return static_cast<std::int64_t>(bits() / 2); }
    /// Of any magnitude, tiny and huge ones too.
    float number() {
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(engine_()) & 0x7FFFFFFFU);
        return std::isfinite(value) ? value : 1.0F;
    }
    double factor() {
        return std::ldexp(1.0 + static_cast<double>(bits()) * 0x1p-64, static_cast<int>(below(99)) - 50);
    }
    Color color() { return Color::sRGB(component(), component(), component()); }
    std::string anyText() {
        std::string text;
        for (auto pieces = below(5); pieces > 0; --pieces) {
            constexpr const char* any[] = {"a", "B", "-", " ", "\u3000", "\n", "=", ":", "\\", "ß", "-vn", "\xFF"};
            text += any[below(std::size(any))];
        }
        return text;
    }

private:
    double component() { return static_cast<double>(below(1001)) / 1000; }
    std::mt19937_64 engine_{20260102};
};

std::map<std::string, std::string> dictionary(Random& random) {
    std::map<std::string, std::string> options;
    for (auto count = random.below(4); count > 0; --count) options["k" + random.anyText()] = random.anyText();
    for (auto count = random.below(2); count > 0; --count) options[random.anyText() + "k"] = random.anyText();
    return options;
}

std::vector<std::uint64_t> numbers(Random& random) {
    std::vector<std::uint64_t> values(1 + random.below(4));
    for (auto& value : values) value = random.bits();
    return values;
}

std::vector<AudioChannelLabel> labels(Random& random) {
    std::vector<AudioChannelLabel> values(1 + random.below(8));
    for (auto& value : values) value = allCases<AudioChannelLabel>[random.below(allCases<AudioChannelLabel>.size())];
    return values;
}

TimecodeComponents timecode(Random& random) {
    const auto field = [&random](std::uint64_t end) { return static_cast<std::int64_t>(random.below(end)); };
    return {field(200), field(60), field(60), field(120),
            random.below(2) == 0 ? DropFrameState::drop : DropFrameState::nonDrop};
}

std::map<std::uint64_t, std::set<std::uint64_t>> tracks(Random& random) {
    std::map<std::uint64_t, std::set<std::uint64_t>> files;
    for (auto count = random.below(3); count > 0; --count) files[random.below(20)].insert(random.bits());
    return files;
}

void expectRoundTrips(int rounds) {
    Random random;
    for (int round = 0; round < rounds && !testing::Test::HasFailure(); ++round) {
        Arguments set;
        std::vector<std::function<void(const Arguments&)>> checks;
        const auto option = [&](auto setter, auto getter, const auto value) {
            (set.*setter)(value);
            checks.emplace_back([=](const Arguments& parsed) { EXPECT_EQ((parsed.*getter)(), value); });
        };
        option(&Arguments::setVideoFrameRate, &Arguments::videoFrameRate, random.number());
        option(&Arguments::setVideoBitDepth, &Arguments::videoBitDepth, random.integer());
        option(&Arguments::setVideoDimensions, &Arguments::videoDimensions,
               PictureSize(random.factor(), random.factor()));
        option(&Arguments::setVideoFrameCapacity, &Arguments::videoFrameCapacity, random.bits());
        option(&Arguments::setAdditionalDecodeOptions, &Arguments::additionalDecodeOptions, dictionary(random));
        option(&Arguments::setGpuTransformationDeviceIDs, &Arguments::gpuTransformationDeviceIDs, numbers(random));
        option(&Arguments::setChannelLayoutBitmap, &Arguments::channelLayoutBitmap, labels(random));
        option(&Arguments::setTimecodeBurnFontColor, &Arguments::timecodeBurnFontColor, random.color());
        option(&Arguments::setWatermarkFileScale, &Arguments::watermarkFileScale, random.factor());
        const TimecodeComponents label = timecode(random);
        set.setTimecodeSource(label);
        const auto ignored = tracks(random);
        for (const auto& [file, numbers] : ignored) set.setIgnoredAudioTracks(file, numbers);

        const auto words = set.commandLineArguments();
        SCOPED_TRACE(testing::PrintToString(words));
        const Arguments parsed(words);
        EXPECT_TRUE(parsed.allFlagsAreValid());
        for (const auto& check : checks) check(parsed);
        EXPECT_EQ(TimecodeComponents::fromTimecode(parsed.timecode().value_or("")), label);
        EXPECT_EQ(parsed.timecodeDropFrameState(), label.dropFrameState);
        EXPECT_EQ(parsed.ignoredAudioFileTracks(), ignored);
    }
}

TEST(TranscodeOptionRoundTrip, typedOptionsSurviveRenderingAndParsing) { expectRoundTrips(3000); }

/// Writes 1.234,5.
class CommaPunctuation : public std::numpunct<char> {
    [[nodiscard]] char do_decimal_point() const override { return ','; }
    [[nodiscard]] char do_thousands_sep() const override { return '.'; }
    [[nodiscard]] std::string do_grouping() const override { return "\3"; }
};

TEST(TranscodeOptionRoundTrip, theProcessLocaleDoesNotMatter) {
    // The C library's locale too, where one with a decimal comma is installed.
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) break;
    }
    const std::locale previous = std::locale::global(std::locale(std::locale(), new CommaPunctuation));
    Arguments arguments;
    arguments.setVideoFrameRate(23.976F);
    arguments.setSampleRate(48000);
    EXPECT_EQ(arguments.flagValueLookup(), (ArgumentLookup{{"-asr", "48000"}, {"-vr", "23.976"}}));
    expectRoundTrips(300);
    std::locale::global(previous);
    std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
}  // namespace corvex::transcodeOptionRoundTripTests
