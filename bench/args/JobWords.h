#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A job of thirty flags, each with a value: the names without their dash, so that every parser can spell them its way.
inline constexpr std::array<std::pair<std::string_view, std::string_view>, 30> jobFlags{{
    {"in", "/Volumes/Card A/Clips/A001_C002_0614X7_001.mov"},
    {"out", "/Volumes/Work/Proxies/A001_C002_0614X7_001.mov"},
    {"progress_file", "/tmp/progress-4711.txt"},
    {"progress_prefix", "job-4711"},
    {"work_dir", "/Volumes/Work/Scratch"},
    {"lang_code", "en"},
    {"file_format", "qt"},
    {"clut", "/Volumes/Work/Looks/Show LUT v2.cube"},
    {"vcodec", "prores422"},
    {"vr", "23.976"},
    {"dims", "1920x1080"},
    {"aspect_scaling", "letterbox"},
    {"crop_anchor", "c"},
    {"vbr", "45"},
    {"vbd", "10"},
    {"c_space", "rec_709"},
    {"c_matrix", "cm_rec_709_2"},
    {"c_transfer", "tf_rec_709"},
    {"key_frames", "24"},
    {"v_frame_cap", "16"},
    {"v_decoder", "ffmpeg"},
    {"acodec", "lpcm"},
    {"asr", "48000"},
    {"abpc", "24"},
    {"acl", "stereo"},
    {"alang_code", "eng"},
    {"tc_custom", "01:00:00:00"},
    {"tc_burn_size", "32"},
    {"wmt_text", "Dailies - not for release"},
    {"wmt_size", "28"},
}};

/// `count` words of a job: the flags above, `dash` in front of each, and from 60 words on numbered inputs beside them.
inline std::vector<std::string> jobWords(std::size_t count, std::string_view dash = "-") {
    std::vector<std::string> words;
    words.reserve(count);
    for (std::size_t i = 0; words.size() < count; ++i) {
        const bool isInput = i >= jobFlags.size();
        words.push_back(std::string(dash) + (isInput ? "in_0_" + std::to_string(i) : std::string(jobFlags[i].first)));
        words.push_back(isInput ? "/Volumes/Card A/Clips/A001_C" + std::to_string(i) + ".mov"
                                : std::string(jobFlags[i].second));
    }
    return words;
}
