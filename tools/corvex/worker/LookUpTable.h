#pragma once

#include <memory>
#include <string>

#include <tools/corvex/worker/FFmpeg.h>

namespace corvex {
inline namespace v0 {
class LutApplier;
class ParsedLutFile;
}  // namespace v0
}  // namespace corvex

namespace corvex::tool {

/// The table in a file. Throws JobError that names the file and why it is none.
[[nodiscard]] std::shared_ptr<const ParsedLutFile> readTable(const std::string& path);
/// Throws JobError for a table that cannot be applied; `reason` says why.
[[noreturn]] void refuseTable(const std::string& path, const std::string& reason);

/// A look-up table for pictures, applied as other tools of the field show the same file (docs/LUTS.md).
/// Immutable; copies share the table; any number of threads.
class LookUpTable {
public:
    /// Throws JobError that names the file and why it is no table, or cannot be applied.
    [[nodiscard]] static LookUpTable read(const std::string& path);

    /// Looks up every pixel of a picture of planar R'G'B' of 16 bits, full range, with or without alpha.
    void apply(AVFrame& frame) const;

private:
    explicit LookUpTable(std::shared_ptr<const LutApplier> applier) : applier_(std::move(applier)) {}

    std::shared_ptr<const LutApplier> applier_;
};

}  // namespace corvex::tool
