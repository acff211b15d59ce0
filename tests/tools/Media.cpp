#include <tests/tools/Media.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <limits>
#include <map>

#include <gtest/gtest.h>

namespace corvex::tool::test {
namespace {

struct Recipe {
    Words words;
    const char* extension;
};

Words withSource(const std::string& video, const std::string& audio, Words encoding) {
    Words words;
    if (!video.empty()) words.insert(words.end(), {"-f", "lavfi", "-i", video});
    if (!audio.empty()) words.insert(words.end(), {"-f", "lavfi", "-i", audio});
    words.insert(words.end(), encoding.begin(), encoding.end());
    return words;
}

Words copyOf(const std::string& name, Words words) {
    words.insert(words.begin(), {"-i", clip(name)});
    return words;
}

/// Moving pattern and tone; 25 pictures in a second.
const std::string moving = "testsrc2=size=320x180:rate=25:duration=";
const std::string tone = "sine=frequency=440:sample_rate=48000:duration=";
/// Nine fields: the red component tells the column, the green one the row (0, 127, 254).
const std::string fields =
    "color=size=320x180:rate=25:duration=0.2,format=gbrp,"
    "geq=r='127*floor(3*X/W)':g='127*floor(3*Y/H)':b='60'";

Recipe recipeOf(const std::string& name) {
    const Words h264{"-c:v", "libx264", "-preset", "veryfast", "-crf", "10", "-pix_fmt", "yuv420p", "-g", "25"};
    const Words pcm{"-c:a", "pcm_s16le", "-ac", "2"};
    const auto with = [](Words words, const Words& more) {
        words.insert(words.end(), more.begin(), more.end());
        return words;
    };
    if (name == "plain") return {withSource(moving + "1", tone + "1", with(h264, pcm)), "mov"};
    if (name == "front") return {copyOf("plain", {"-c", "copy", "-movflags", "+faststart"}), "mov"};
    if (name == "mkv") return {copyOf("plain", {"-c", "copy"}), "mkv"};
    if (name == "avi") return {copyOf("plain", {"-c:v", "mpeg4", "-q:v", "2", "-c:a", "copy"}), "avi"};
    if (name == "ts") return {copyOf("plain", {"-c:v", "copy", "-c:a", "aac"}), "ts"};
    if (name == "mp4") return {copyOf("plain", {"-c:v", "copy", "-c:a", "aac"}), "mp4"};
    if (name == "wav") return {copyOf("plain", {"-vn", "-c:a", "copy"}), "wav"};
    if (name == "ac3" || name == "flac") return {copyOf("plain", {"-c:v", "copy", "-c:a", name}), "mkv"};
    if (name == "silent") return {copyOf("plain", {"-an", "-c:v", "copy"}), "mov"};
    if (name == "hd") return {withSource("testsrc2=size=1280x720:rate=25:duration=0.2", "", h264), "mov"};
    if (name == "rotated") return {copyOf("fields", {"-c", "copy", "-metadata:s:v:0", "rotate=90"}), "mp4"};
    if (name == "fields") return {withSource(fields, "", with(h264, {"-crf", "4"})), "mp4"};
    if (name == "rgb") return {withSource(fields, "", {"-c:v", "qtrle", "-pix_fmt", "rgb24"}), "mov"};
    if (name == "alpha") {
        return {withSource("color=red@0.5:size=320x180:duration=0.2,format=rgba", "", {"-c:v", "qtrle"}), "mov"};
    }
    if (name == "interlaced" || name == "striped") {
        const std::string stripes =
            "color=size=64x64:rate=25:duration=0.2,format=yuv444p,"
            "geq=lum='16+219*mod(Y,2)':cb=128:cr=128";
        const Words proRes{"-c:v", "prores_ks", "-pix_fmt", "yuv444p10le"};
        if (name == "striped") return {withSource(stripes, "", proRes), "mov"};
        return {withSource(stripes + ",setfield=tff", "", with(proRes, {"-flags", "+ildct"})), "mov"};
    }
    if (name == "fullrange") return {withSource(moving + "1", "", {"-c:v", "mjpeg", "-pix_fmt", "yuvj420p"}), "avi"};
    if (name == "odd") {
        return {withSource(moving + "0.4,scale=321:181", "", {"-c:v", "ffv1", "-pix_fmt", "yuv444p"}), "mkv"};
    }
    if (name == "anamorphic") {
        return {withSource("testsrc2=size=240x180:duration=0.4,setsar=4/3", "", h264), "mov"};
    }
    if (name == "varying") {  // at 30 pictures a second, two of each seven are missing
        const std::string thinned = "testsrc2=size=320x180:rate=30:duration=2,select='not(between(mod(n,7),2,3))'";
        return {withSource(thinned, "", {"-vsync", "vfr", "-c:v", "libx264"}), "mp4"};
    }
    if (name == "varying-mkv") return {copyOf("varying", {"-c", "copy"}), "mkv"};
    if (name == "tracks") {
        return {with(withSource(moving + "0.4", tone + "0.4",
                                {"-f", "lavfi", "-i", "sine=frequency=880:sample_rate=44100:duration=0.4", "-f",
                                 "lavfi", "-i", "anullsrc=channel_layout=5.1:sample_rate=48000:duration=0.4"}),
                     with({"-map", "0", "-map", "1", "-map", "2", "-map", "3", "-c:a", "pcm_s24le"}, h264)),
                "mov"};
    }
    // Sound from 0.5 s on, or up to then only.
    if (name == "late-mkv" || name == "late-mov") {
        return {with({"-i", clip("silent"), "-itsoffset", "0.5", "-f", "lavfi", "-i", tone + "0.5"},
                     {"-c:v", "copy", "-c:a", "pcm_s16le"}),
                name == "late-mkv" ? "mkv" : "mov"};
    }
    if (name == "brief" || name == "brief-aac") {
        return {
            copyOf("plain", {"-c:v", "copy", "-af", "atrim=end=0.5", "-c:a", name == "brief" ? "pcm_s16le" : "aac"}),
            "mov"};
    }
    if (name == "overlong") {
        return {copyOf("plain", {"-c:v", "copy", "-af", "apad=whole_dur=1.5", "-c:a", "pcm_s16le"}), "mov"};
    }
    ADD_FAILURE() << "no clip '" << name << "'";
    return {};
}

}  // namespace

void ffmpeg(Words words) {
    words.insert(words.begin(), {"ffmpeg", "-v", "error", "-nostdin", "-y"});
    runOrFail(std::move(words));
}

const std::string& clip(const std::string& name) {
    static const TemporaryDirectory directory;
    static std::map<std::string, std::string> made;
    if (const auto found = made.find(name); found != made.end()) return found->second;
    Recipe recipe = recipeOf(name);
    const std::string path = directory.path(name + "." + recipe.extension);
    recipe.words.push_back(path);
    ffmpeg(recipe.words);
    return made.emplace(name, path).first->second;
}

ProbeResult probe(const std::string& path) {
    const std::string output =
        runOrFail({"ffprobe", "-v", "error", "-of", "json", "-count_packets", "-show_streams", "-show_format", path});
    return ProbeResult::parse(output, nullptr, false);
}

ProbeResult stream(const ProbeResult& result, const std::string& type, std::size_t index) {
    for (const auto& candidate : result.value("streams", ProbeResult::array())) {
        if (candidate.value("codec_type", "") == type && index-- == 0) return candidate;
    }
    return ProbeResult::object();
}

double number(const ProbeResult& object, const std::string& key) {
    if (!object.contains(key)) return 0;
    return object[key].is_string() ? std::strtod(object[key].get<std::string>().c_str(), nullptr)
                                   : object[key].get<double>();
}

std::string text(const ProbeResult& object, const std::string& key) { return object.value(key, ""); }

double psnr(const std::string& path, const std::string& reference, const std::string& filter) {
    const CommandResult result =
        run({"ffmpeg", "-nostdin", "-i", path, "-i", reference, "-lavfi",
             "[0:v]settb=1/25,setpts=N[a];[1:v]" + filter + ",settb=1/25,setpts=N[b];[a][b]psnr", "-f", "null", "-"});
    const std::size_t found = result.error.rfind(" average:");
    if (found == std::string::npos) {
        ADD_FAILURE() << path << " against " << reference << ": " << result.error;
        return 0;
    }
    return std::strtod(result.error.c_str() + found + std::strlen(" average:"), nullptr);
}

Picture::Picture(const std::string& path, double seconds) {
    const ProbeResult video = stream(probe(path), "video");
    width_ = static_cast<int>(number(video, "width"));
    height_ = static_cast<int>(number(video, "height"));
    bytes_ = runOrFail({"ffmpeg", "-v", "error", "-nostdin", "-noautorotate", "-ss", std::to_string(seconds), "-i",
                        path, "-frames:v", "1", "-f", "rawvideo", "-pix_fmt", "rgb24", "-"});
}

Pixel Picture::at(double x, double y) const {
    const auto column = static_cast<std::size_t>(x * width_);
    const auto row = static_cast<std::size_t>(y * height_);
    const std::size_t place = 3 * (row * static_cast<std::size_t>(width_) + column);
    if (place + 3 > bytes_.size()) return {-1, -1, -1};
    const auto component = [&](std::size_t i) {
        return static_cast<int>(static_cast<std::uint8_t>(bytes_[place + i]));
    };
    return {component(0), component(1), component(2)};
}

std::vector<double> loudness(const std::string& path, double windowSeconds, std::size_t track) {
    constexpr int rate = 48000;
    const std::string bytes =
        runOrFail({"ffmpeg", "-v", "error", "-nostdin", "-i", path, "-map", "0:a:" + std::to_string(track), "-af",
                   "aresample=async=1:first_pts=0", "-ac", "1", "-ar", std::to_string(rate), "-f", "f32le", "-"});
    std::vector<float> samples(bytes.size() / sizeof(float));
    std::memcpy(samples.data(), bytes.data(), samples.size() * sizeof(float));
    const auto window = static_cast<std::size_t>(windowSeconds * rate);
    std::vector<double> result;
    for (std::size_t begin = 0; begin + window <= samples.size(); begin += window) {
        double sum = 0;
        for (std::size_t i = begin; i < begin + window; ++i) sum += double{samples[i]} * double{samples[i]};
        result.push_back(std::sqrt(sum / static_cast<double>(window)));
    }
    return result;
}

bool isIndexInFront(const std::string& path) {
    const std::string bytes = readFile(path);
    for (std::size_t at = 0; at + 16 <= bytes.size();) {
        const auto numberAt = [&](std::size_t place, std::size_t count) {
            std::uint64_t value = 0;
            for (std::size_t i = 0; i < count; ++i) value = value << 8 | static_cast<std::uint8_t>(bytes[place + i]);
            return value;
        };
        const std::string type = bytes.substr(at + 4, 4);
        if (type == "moov" || type == "mdat") return type == "moov";
        const std::uint64_t size = numberAt(at, 4) == 1 ? numberAt(at + 8, 8) : numberAt(at, 4);
        if (size < 8) break;
        at += size;
    }
    ADD_FAILURE() << path << ": neither index nor media";
    return false;
}

}  // namespace corvex::tool::test
