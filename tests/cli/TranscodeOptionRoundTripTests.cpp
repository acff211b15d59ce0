// What is set through the typed options and rendered is what a worker reads after parsing: numbers of any magnitude and
// the texts with a form of their own. Every option is read back once in the tests of the accessors.

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

namespace corvex::transcodeOptionRoundTripTests {
namespace {

using Arguments = TranscodeCliArguments;

/// Values that an argument vector can carry: nothing of them begins with "-".
class Random {
public:
    std::uint64_t below(std::uint64_t end) { return std::uniform_int_distribution<std::uint64_t>(0, end - 1)(engine_); }
    std::uint64_t bits() { return engine_() >> below(64); }
    /// Of any magnitude, tiny and huge ones too.
    float number() {
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(engine_()) & 0x7FFFFFFFU);
        return std::isfinite(value) ? value : 1.0F;
    }
    double factor() {
        return std::ldexp(1.0 + static_cast<double>(bits()) * 0x1p-64, static_cast<int>(below(99)) - 50);
    }
    std::string anyText() {
        std::string text;
        for (auto pieces = below(5); pieces > 0; --pieces) {
            constexpr const char* any[] = {"a", "B", "-", " ", "\u3000", "\n", "=", ":", "\\", "ß", "-vn", "\xFF"};
            text += any[below(std::size(any))];
        }
        return text;
    }

private:
    std::mt19937_64 engine_{20260102};
};

std::map<std::string, std::string> dictionary(Random& random) {
    std::map<std::string, std::string> options;
    for (auto count = random.below(4); count > 0; --count) options["k" + random.anyText()] = random.anyText();
    for (auto count = random.below(2); count > 0; --count) options[random.anyText() + "k"] = random.anyText();
    return options;
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
        option(&Arguments::setVideoDimensions, &Arguments::videoDimensions,
               PictureSize(random.factor(), random.factor()));
        option(&Arguments::setVideoFrameCapacity, &Arguments::videoFrameCapacity, random.bits());
        option(&Arguments::setAdditionalDecodeOptions, &Arguments::additionalDecodeOptions, dictionary(random));
        option(&Arguments::setWatermarkFileScale, &Arguments::watermarkFileScale, random.factor());
        const auto ignored = tracks(random);
        for (const auto& [file, numbers] : ignored) set.setIgnoredAudioTracks(file, numbers);

        const auto words = set.commandLineArguments();
        SCOPED_TRACE(testing::PrintToString(words));
        const Arguments parsed(words);
        EXPECT_TRUE(parsed.allFlagsAreValid());
        for (const auto& check : checks) check(parsed);
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
