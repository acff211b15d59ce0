// The road of a ProRes 4444 XQ job whose time goes into the look-up table, its encoder replaced by a writer of raw
// pictures into /dev/null, beside ffmpeg's program at the same work. Both decode, look up and write the same pictures.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <sys/resource.h>

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <tools/corvex/worker/Decoder.h>
#include <tools/corvex/worker/PictureStages.h>

namespace {

using namespace corvex;
using namespace corvex::tool;

constexpr int pictureCount = 100;

/// A directory for what the program makes, kept for the next run.
const std::string& directory() {
    static const std::string path = [] {
        const std::filesystem::path made = std::filesystem::temp_directory_path() / "corvex-bench-transcode";
        std::filesystem::create_directories(made);
        return made.string();
    }();
    return path;
}

void run(const std::string& command) {
    if (std::system(command.c_str()) != 0) throw JobError("failed: " + command);
}

/// Full HD, moving, coded as `encoding` says.
std::string clip(const std::string& name, const std::string& encoding) {
    const std::string path = fmt::format("{}/{}-{}", directory(), pictureCount, name);
    if (!std::filesystem::exists(path)) {
        run(fmt::format("ffmpeg -v error -nostdin -y -f lavfi -i testsrc2=size=1920x1080:rate=25 -frames:v {} {} '{}'",
                        pictureCount, encoding, path));
    }
    return path;
}

/// A look of 33 points on each axis.
const std::string& look() {
    static const std::string path = [] {
        constexpr int points = 33;
        const std::string file = directory() + "/look.cube";
        std::ofstream text(file);
        text << "LUT_3D_SIZE " << points << "\n";
        const auto part = [](int i) { return i / (points - 1.0); };
        for (int b = 0; b < points; ++b) {
            for (int g = 0; g < points; ++g) {
                for (int r = 0; r < points; ++r) {
                    text << fmt::format("{:.6f} {:.6f} {:.6f}\n", 0.9 * part(r) + 0.1 * part(g) * part(g), part(g),
                                        0.95 * part(b) + 0.05 * part(r));
                }
            }
        }
        return file;
    }();
    return path;
}

double processorSeconds(int who) {
    rusage usage{};
    getrusage(who, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

class RawWriter {
public:
    RawWriter() : file_(std::fopen("/dev/null", "wb")) {}
    void write(const AVFrame& picture) {
        for (int plane = 0; plane < 3; ++plane) {
            for (int y = 0; y < picture.height; ++y) {
                const auto* row = picture.data[plane] + std::ptrdiff_t{y} * picture.linesize[plane];
                std::fwrite(row, 2, static_cast<std::size_t>(picture.width), file_.get());
            }
        }
        ++count_;
    }
    [[nodiscard]] int count() const noexcept { return count_; }

private:
    struct Close {
        void operator()(std::FILE* file) const noexcept { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Close> file_;
    int count_ = 0;
};

void ours(const std::string& source) {
    const LibraryMessages messages;
    const std::vector<std::string> words{"-vcodec", "prores4444xq", "-clut", look()};
    const std::optional<VideoRequest> request =
        VideoRequest::make(TranscodeCliArguments(words), OAVQuickTimeFileFormat);
    MediaInput input(source);
    Decoder decoder(input, *input.video());
    RawWriter writer;
    const std::size_t picturesAtWork = 2 * std::max(1U, std::thread::hardware_concurrency());  // as the worker has
    PictureStages stages(
        *request, {AV_PIX_FMT_YUV444P10, input.picture().size, AVCOL_RANGE_MPEG}, nullptr, picturesAtWork,
        [](AVFrame&, AVRational) { return true; }, [&](AVFrame& picture) { writer.write(picture); });
    stages.beginFile(input.picture(), input.video()->time_base);
    const auto take = [&](AVFrame& picture) { stages.push(picture, 1); };
    const PacketPointer packet = makePacket();
    while (input.read(*packet)) {
        if (packet->stream_index == input.video()->index) decoder.decode(packet.get(), take);
        av_packet_unref(packet.get());
    }
    decoder.decode(nullptr, take);
    stages.flush();
    if (writer.count() != pictureCount) throw JobError("pictures are missing");
}

void measure(benchmark::State& state, int who, const auto& job) {
    const double before = processorSeconds(who);
    for (auto _ : state) job();
    const double used = processorSeconds(who) - before;
    state.counters["processor ms/picture"] = used * 1e3 / pictureCount / static_cast<double>(state.iterations());
}

[[maybe_unused]] const bool isRegistered = [] {
    const auto add = [](const std::string& name, const std::string& file, const std::string& encoding) {
        const auto registerOne = [&](const std::string& who, auto function) {
            benchmark::RegisterBenchmark((name + "/" + who).c_str(), function)
                ->Unit(benchmark::kMillisecond)
                ->UseRealTime()
                ->Iterations(1);
        };
        registerOne("Corvex", [=](benchmark::State& state) {
            const std::string source = clip(file, encoding);
            (void)look();
            measure(state, RUSAGE_SELF, [&] { ours(source); });
        });
        registerOne("ffmpeg", [=](benchmark::State& state) {
            const std::string command = fmt::format(
                "ffmpeg -v error -nostdin -y -i '{}' -an -vf 'lut3d=file={}:interp=trilinear' -pix_fmt yuv444p10le "
                "-f rawvideo /dev/null",
                clip(file, encoding), look());
            measure(state, RUSAGE_CHILDREN, [&] { run(command); });
        });
    };
    add("H.264 of 8 bits", "avc.mov", "-c:v libx264 -preset veryfast -crf 12 -pix_fmt yuv420p -g 25");
    add("ProRes 422 HQ", "hq.mov", "-c:v prores_ks -profile:v hq -pix_fmt yuv422p10le");
    return true;
}();

}  // namespace
