#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include <tests/tools/Command.h>

namespace corvex::tool::test {

using ProbeResult = nlohmann::json;

/// The path of a small clip, made with the ffmpeg program when it is first asked for. clips() in Media.cpp lists them.
const std::string& clip(const std::string& name);

/// Runs ffmpeg quietly; the line is read by wordsOf(), its last word is the file to write.
void ffmpeg(const std::string& line);
/// The raw numbers that ffmpeg makes of pictures or sound; the line names the file and the format.
template <class T>
std::vector<T> decoded(const std::string& line) {
    const std::string bytes = runOrFail(wordsOf("ffmpeg -v error -nostdin " + line + " -"));
    std::vector<T> numbers(bytes.size() / sizeof(T));
    std::memcpy(numbers.data(), bytes.data(), numbers.size() * sizeof(T));
    return numbers;
}

/// What ffprobe says: "format" and "streams", packets counted.
ProbeResult probe(const std::string& path);
/// Facts of streams, with ", " between: a stream's type, its number among those, ffprobe's key or "tag:" and a tag's, and
/// the value, as "audio 0 channels 2"; without a value there is no such fact.
void expectFacts(const ProbeResult& result, std::string_view facts);
/// The stream of a type ("video", "audio") by its order among those; an empty object when there is none.
ProbeResult stream(const ProbeResult& result, const std::string& type, std::size_t index = 0);
/// A text or a number; empty or 0 when absent.
std::string text(const ProbeResult& object, const std::string& key);
double number(const ProbeResult& object, const std::string& key);

/// Peak signal-to-noise ratio of all pictures of two files, in dB, as pixels of this format: R'G'B' by the files' tags, or
/// as they are coded; infinite when they are equal.
double psnr(const std::string& path, const std::string& reference, const std::string& pixels = "gbrp");

struct Pixel {
    int red = 0, green = 0, blue = 0;
};
/// Of the component that is farthest off.
int distance(const Pixel& a, const Pixel& b);

/// The picture at a time, decoded to 8-bit RGB.
class Picture {
public:
    explicit Picture(const std::string& path, double seconds = 0);
    /// At parts (0 to 1) of the width and height.
    [[nodiscard]] Pixel at(double x, double y) const;
    [[nodiscard]] int width() const noexcept { return width_; }
    [[nodiscard]] int height() const noexcept { return height_; }

private:
    int width_ = 0, height_ = 0;
    std::string bytes_;
};

/// Loudness over time: the root mean square (0 to 1) of the samples of a stream, mixed to mono, in each of the windows.
std::vector<double> loudness(const std::string& path, double windowSeconds, std::size_t track = 0);

/// Runs a job that must succeed without a word on standard error; gives the target, which it replaces.
std::string transcode(const std::string& target, const std::string& words);

}  // namespace corvex::tool::test
