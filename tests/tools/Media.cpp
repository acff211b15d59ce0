#include <tests/tools/Media.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>

#include <Corvex/platform/Text.h>

namespace corvex::tool::test {
namespace {

/// Names of the files and what ffmpeg makes them of.
const std::map<std::string, std::string>& recipes() {
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
    const std::string part = "-i @plain -c:v copy -af ";
    static const std::map<std::string, std::string> all{
        {"plain.mov", moving + "1" + tone + "1" + h264 + " -c:a pcm_s16le -ac 2"},
        {"front.mov", "-i @plain -c copy -movflags +faststart"},
        {"mkv.mkv", "-i @plain -c copy"},
        {"avi.avi", "-i @plain -c:v mpeg4 -q:v 2 -c:a copy"},
        {"ts.ts", "-i @plain -c:v copy -c:a aac"},
        {"mp4.mp4", "-i @plain -c:v copy -c:a aac"},
        {"wav.wav", "-i @plain -vn -c:a copy"},
        {"ac3.mkv", "-i @plain -c:v copy -c:a ac3"},
        {"flac.mkv", "-i @plain -c:v copy -c:a flac"},
        {"silent.mov", "-i @plain -an -c:v copy"},
        {"hd.mov", "-f lavfi -i testsrc2=size=1280x720:rate=25:duration=0.2" + h264},
        {"fields.mp4", fields + h264 + " -crf 4"},
        {"rotated.mp4", "-i @fields -c copy -metadata:s:v:0 rotate=90"},
        {"rgb.mov", fields + " -c:v qtrle -pix_fmt rgb24"},
        {"alpha.mov", "-f lavfi -i color=red@0.5:size=320x180:duration=0.2,format=rgba -c:v qtrle"},
        {"striped.mov", stripes + proRes},
        {"interlaced.mov", stripes + ",setfield=tff" + proRes + " -flags +ildct"},
        {"fullrange.avi", moving + "1 -c:v mjpeg -pix_fmt yuvj420p"},
        {"odd.mkv", moving + "0.4,scale=321:181 -c:v ffv1 -pix_fmt yuv444p"},
        {"anamorphic.mov", "-f lavfi -i testsrc2=size=240x180:duration=0.4,setsar=4/3" + h264},
        // At 30 pictures a second, two of each seven are missing.
        {"varying.mp4",
         "-f lavfi -i testsrc2=size=320x180:rate=30:duration=2,select='not(between(mod(n,7),2,3))' -vsync vfr "
         "-c:v libx264"},
        {"varying-mkv.mkv", "-i @varying -c copy"},
        {"tracks.mov", moving + "0.4" + tone +
                           "0.4 -f lavfi -i sine=frequency=880:sample_rate=44100:duration=0.4 "
                           "-f lavfi -i anullsrc=channel_layout=5.1:sample_rate=48000:duration=0.4 "
                           "-map 0 -map 1 -map 2 -map 3 -c:a pcm_s24le" +
                           h264},
        // Sound from 0.5 s on, or up to then only.
        {"late-mkv.mkv", late},
        {"late-mov.mov", late},
        {"brief.mov", part + "atrim=end=0.5 -c:a pcm_s16le"},
        {"brief-aac.mov", part + "atrim=end=0.5 -c:a aac"},
        {"overlong.mov", part + "apad=whole_dur=1.5 -c:a pcm_s16le"},
    };
    return all;
}

}  // namespace

void ffmpeg(const std::string& line) { runOrFail(wordsOf("ffmpeg -v error -nostdin -y " + line)); }

const std::string& clip(const std::string& name) {
    static const TemporaryDirectory directory;
    static std::map<std::string, std::string> made;
    if (const auto found = made.find(name); found != made.end()) return found->second;
    const auto recipe = recipes().lower_bound(name + ".");
    if (recipe == recipes().end() || !recipe->first.starts_with(name + ".")) {
        throw std::invalid_argument("no clip '" + name + "'");
    }
    const std::string path = directory.path(recipe->first);
    ffmpeg(recipe->second + " " + path);
    return made.emplace(name, path).first->second;
}

ProbeResult probe(const std::string& path) {
    const char* const words = "ffprobe -v error -of json -count_packets -show_streams -show_format ";
    return ProbeResult::parse(runOrFail(wordsOf(words + path)), nullptr, false);
}

void expectFacts(const ProbeResult& result, std::string_view facts) {
    forEachPiece(facts, ",", [&](std::string_view fact) {
        const Words parts = wordsOf(std::string(fact));
        std::string key = parts.at(2);
        const std::string_view value = fact.substr(std::min(fact.size(), fact.find(key) + key.size() + 1));
        ProbeResult found = stream(result, parts.at(0), std::stoul(parts.at(1)));
        if (key.starts_with("tag:")) {
            found = found.value("tags", ProbeResult::object());
            key.erase(0, 4);
        }
        EXPECT_EQ(text(found, key), value) << fact;
    });
}

ProbeResult stream(const ProbeResult& result, const std::string& type, std::size_t index) {
    for (const auto& candidate : result.value("streams", ProbeResult::array())) {
        if (candidate.value("codec_type", "") == type && index-- == 0) return candidate;
    }
    return ProbeResult::object();
}

std::string text(const ProbeResult& object, const std::string& key) {
    const ProbeResult found = object.value(key, ProbeResult(""));
    return found.is_string() ? found.get<std::string>() : found.dump();
}

double number(const ProbeResult& object, const std::string& key) {
    return std::strtod(text(object, key).c_str(), nullptr);
}

double psnr(const std::string& path, const std::string& reference, const std::string& pixels) {
    const std::string chain = "settb=1/25,setpts=N,format=" + pixels;
    const std::string result = run(wordsOf("ffmpeg -nostdin -i " + path + " -i " + reference + " -lavfi [0:v]" + chain +
                                           "[a];[1:v]" + chain + "[b];[a][b]psnr -f null -"))
                                   .error;
    const std::string mark = " average:";
    const std::size_t found = result.rfind(mark);
    EXPECT_NE(found, result.npos) << path << " against " << reference << ": " << result;
    return found == result.npos ? 0 : std::strtod(result.c_str() + found + mark.size(), nullptr);
}

int distance(const Pixel& a, const Pixel& b) {
    return std::max({std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue)});
}

Picture::Picture(const std::string& path, double seconds) {
    // In some JPEG files of their own ffmpeg finds no picture when it is to start at 0.
    const std::string start = seconds > 0 ? "-ss " + std::to_string(seconds) + " " : "";
    const std::string pixmap = runOrFail(wordsOf("ffmpeg -v error -nostdin -noautorotate " + start + "-i " + path +
                                                 " -frames:v 1 -c:v ppm -pix_fmt rgb24 -f image2pipe -"));
    std::string magic;
    std::istringstream(pixmap) >> magic >> width_ >> height_;
    bytes_ = pixmap.substr(pixmap.size() - 3 * static_cast<std::size_t>(width_ * height_));
}

Pixel Picture::at(double x, double y) const {
    const auto column = static_cast<int>(x * width_), row = static_cast<int>(y * height_);
    const auto component = [&](int i) {
        return int{static_cast<std::uint8_t>(bytes_.at(static_cast<std::size_t>(3 * (row * width_ + column) + i)))};
    };
    return {component(0), component(1), component(2)};
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

std::string transcode(const std::string& target, const std::string& words) {
    const CommandResult result = corvex("transcode -overwrite -out " + target + " " + words);
    EXPECT_EQ(result.exitStatus, 0) << words << result.error;
    EXPECT_EQ(result.error, "") << words;
    return target;
}

}  // namespace corvex::tool::test
