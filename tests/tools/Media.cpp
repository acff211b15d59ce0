#include <tests/tools/Media.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <stdexcept>

#include <gtest/gtest.h>

namespace corvex::tool::test {
namespace {

struct Recipe {
    const char *name, *extension;
    std::string line;
};

const std::vector<Recipe>& recipes() {
    const std::string h264 = " -c:v libx264 -preset veryfast -crf 10 -pix_fmt yuv420p -g 25";
    // Moving pattern and tone; 25 pictures in a second.
    const std::string moving = "-f lavfi -i testsrc2=size=320x180:rate=25:duration=";
    const std::string tone = " -f lavfi -i sine=frequency=440:sample_rate=48000:duration=";
    // Nine fields: the red component tells the column, the green one the row (0, 127, 254).
    const std::string fields =
        "-f lavfi -i color=size=320x180:rate=25:duration=0.2,format=gbrp,"
        "geq=r='127*floor(3*X/W)':g='127*floor(3*Y/H)':b='60'";
    const std::string stripes =
        "-f lavfi -i color=size=64x64:rate=25:duration=0.2,format=yuv444p,geq=lum='16+219*mod(Y,2)':cb=128:cr=128";
    const std::string proRes = " -c:v prores_ks -pix_fmt yuv444p10le";
    const std::string late = "-i @silent -itsoffset 0.5" + tone + "0.5 -c:v copy -c:a pcm_s16le";
    static const std::vector<Recipe> all{
        {"plain", "mov", moving + "1" + tone + "1" + h264 + " -c:a pcm_s16le -ac 2"},
        {"front", "mov", "-i @plain -c copy -movflags +faststart"},
        {"mkv", "mkv", "-i @plain -c copy"},
        {"avi", "avi", "-i @plain -c:v mpeg4 -q:v 2 -c:a copy"},
        {"ts", "ts", "-i @plain -c:v copy -c:a aac"},
        {"mp4", "mp4", "-i @plain -c:v copy -c:a aac"},
        {"wav", "wav", "-i @plain -vn -c:a copy"},
        {"ac3", "mkv", "-i @plain -c:v copy -c:a ac3"},
        {"flac", "mkv", "-i @plain -c:v copy -c:a flac"},
        {"silent", "mov", "-i @plain -an -c:v copy"},
        {"hd", "mov", "-f lavfi -i testsrc2=size=1280x720:rate=25:duration=0.2" + h264},
        {"fields", "mp4", fields + h264 + " -crf 4"},
        {"rotated", "mp4", "-i @fields -c copy -metadata:s:v:0 rotate=90"},
        {"rgb", "mov", fields + " -c:v qtrle -pix_fmt rgb24"},
        {"alpha", "mov", "-f lavfi -i color=red@0.5:size=320x180:duration=0.2,format=rgba -c:v qtrle"},
        {"striped", "mov", stripes + proRes},
        {"interlaced", "mov", stripes + ",setfield=tff" + proRes + " -flags +ildct"},
        {"fullrange", "avi", moving + "1 -c:v mjpeg -pix_fmt yuvj420p"},
        {"odd", "mkv", moving + "0.4,scale=321:181 -c:v ffv1 -pix_fmt yuv444p"},
        {"anamorphic", "mov", "-f lavfi -i testsrc2=size=240x180:duration=0.4,setsar=4/3" + h264},
        // At 30 pictures a second, two of each seven are missing.
        {"varying", "mp4",
         "-f lavfi -i testsrc2=size=320x180:rate=30:duration=2,select='not(between(mod(n,7),2,3))' -vsync vfr "
         "-c:v libx264"},
        {"varying-mkv", "mkv", "-i @varying -c copy"},
        {"tracks", "mov",
         moving + "0.4" + tone +
             "0.4 -f lavfi -i sine=frequency=880:sample_rate=44100:duration=0.4 "
             "-f lavfi -i anullsrc=channel_layout=5.1:sample_rate=48000:duration=0.4 "
             "-map 0 -map 1 -map 2 -map 3 -c:a pcm_s24le" +
             h264},
        // Sound from 0.5 s on, or up to then only.
        {"late-mkv", "mkv", late},
        {"late-mov", "mov", late},
        {"brief", "mov", "-i @plain -c:v copy -af atrim=end=0.5 -c:a pcm_s16le"},
        {"brief-aac", "mov", "-i @plain -c:v copy -af atrim=end=0.5 -c:a aac"},
        {"overlong", "mov", "-i @plain -c:v copy -af apad=whole_dur=1.5 -c:a pcm_s16le"},
    };
    return all;
}

}  // namespace

void ffmpeg(const std::string& line) { runOrFail(wordsOf("ffmpeg -v error -nostdin -y " + line)); }

const std::string& clip(const std::string& name) {
    static const TemporaryDirectory directory;
    static std::map<std::string, std::string> made;
    if (const auto found = made.find(name); found != made.end()) return found->second;
    const auto recipe = std::ranges::find(recipes(), name, &Recipe::name);
    if (recipe == recipes().end()) throw std::invalid_argument("no clip '" + name + "'");
    const std::string path = directory.path(name + "." + recipe->extension);
    ffmpeg(recipe->line + " " + path);
    return made.emplace(name, path).first->second;
}

ProbeResult probe(const std::string& path) {
    const char* const words = "ffprobe -v error -of json -count_packets -show_streams -show_format ";
    return ProbeResult::parse(runOrFail(wordsOf(words + path)), nullptr, false);
}

void expectFacts(const ProbeResult& result, std::string_view facts) {
    for (std::size_t at = 0; at < facts.size();) {
        const std::string_view fact = facts.substr(at, facts.find(", ", at) - at);
        at += fact.size() + 2;
        const Words parts = wordsOf(std::string(fact));
        const std::string key = parts.at(2);
        const std::string_view value = fact.substr(std::min(fact.size(), fact.find(key) + key.size() + 1));
        ProbeResult found = stream(result, parts.at(0), std::stoul(parts.at(1)));
        if (key.starts_with("tag:")) found = found.value("tags", ProbeResult::object());
        const std::string name = key.substr(key.starts_with("tag:") ? 4 : 0);
        const bool isNumber = found.contains(name) && found[name].is_number();
        EXPECT_EQ(isNumber ? std::to_string(found[name].get<int>()) : text(found, name), value) << fact;
    }
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

double psnr(const std::string& path, const std::string& reference) {
    const CommandResult result =
        run(wordsOf("ffmpeg -nostdin -i " + path + " -i " + reference +
                    " -lavfi [0:v]settb=1/25,setpts=N[a];[1:v]settb=1/25,setpts=N[b];[a][b]psnr -f null -"));
    const std::size_t found = result.error.rfind(" average:");
    if (found == std::string::npos) {
        ADD_FAILURE() << path << " against " << reference << ": " << result.error;
        return 0;
    }
    return std::strtod(result.error.c_str() + found + std::strlen(" average:"), nullptr);
}

int distance(const Pixel& a, const Pixel& b) {
    return std::max({std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue)});
}

Picture::Picture(const std::string& path, double seconds) {
    const ProbeResult video = stream(probe(path), "video");
    width_ = static_cast<int>(number(video, "width"));
    height_ = static_cast<int>(number(video, "height"));
    bytes_ = decoded<std::uint8_t>("-noautorotate -ss " + std::to_string(seconds) + " -i " + path +
                                   " -frames:v 1 -f rawvideo -pix_fmt rgb24");
}

Pixel Picture::at(double x, double y) const {
    const auto column = static_cast<std::size_t>(x * width_);
    const auto row = static_cast<std::size_t>(y * height_);
    const std::size_t place = 3 * (row * static_cast<std::size_t>(width_) + column);
    if (place + 3 > bytes_.size()) return {-1, -1, -1};
    return {bytes_[place], bytes_[place + 1], bytes_[place + 2]};
}

std::vector<double> loudness(const std::string& path, double windowSeconds, std::size_t track) {
    constexpr int rate = 48000;
    const auto samples = decoded<float>("-i " + path + " -map 0:a:" + std::to_string(track) +
                                        " -af aresample=async=1:first_pts=0 -ac 1 -ar 48000 -f f32le");
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
    const std::size_t index = bytes.find("moov"), media = bytes.find("mdat");
    EXPECT_TRUE(index != bytes.npos && media != bytes.npos) << path;
    return index < media;
}

std::string TranscodeTest::transcode(const std::string& target, const std::string& words) {
    const CommandResult result = corvex("transcode -overwrite -out " + target + " " + words);
    EXPECT_EQ(result.exitStatus, 0) << words << result.error;
    EXPECT_EQ(result.error, "") << words;
    return target;
}

}  // namespace corvex::tool::test
