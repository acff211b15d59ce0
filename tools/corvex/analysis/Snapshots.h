#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <tools/corvex/analysis/AnalysisResults.h>
#include <tools/corvex/analysis/ReadyPicture.h>
#include <tools/corvex/analysis/StillPicture.h>
#include <tools/corvex/worker/MediaInput.h>

namespace corvex::tool {

/// Files that go away again with the object unless they are kept.
class PendingFiles {
public:
    PendingFiles() = default;
    ~PendingFiles();
    PendingFiles(const PendingFiles&) = delete;
    PendingFiles& operator=(const PendingFiles&) = delete;

    /// Writes a file that did not exist. Throws JobError.
    void write(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes);
    void keep() noexcept { files_.clear(); }

private:
    std::vector<std::filesystem::path> files_;
};

/// Takes pictures of files as an analysis asks for.
class Snapshots {
public:
    /// `stem`: what the names of the pictures begin with. Throws JobError for a look-up table that is none.
    Snapshots(const MediaAnalysisImageRequest& request, std::filesystem::path folder, std::string stem,
              PendingFiles& files);

    /// One result for each location; where there is no picture it says why. `input`: the open file, or nullptr where it
    /// cannot be opened. `number`: of the file, from 1.
    /// Throws JobError when a picture cannot be written, or when the worker is to stop.
    [[nodiscard]] std::vector<SnapshotResult> take(const std::string& path, const MediaInput* input,
                                                   std::size_t number);

private:
    /// None where there is no picture; the result says why.
    [[nodiscard]] std::optional<StillPicture> stillAt(const std::string& path, SnapshotResult& result) const;
    void takeReadyPicture(const ReadyPicture& ready, SnapshotResult& result, const std::filesystem::path& file);
    void store(const StillPicture& still, SnapshotResult& result, const std::filesystem::path& file);

    MediaAnalysisImageRequest request_;
    std::filesystem::path folder_;
    std::string stem_;
    PendingFiles& files_;
    StillRequest still_;
};

}  // namespace corvex::tool
