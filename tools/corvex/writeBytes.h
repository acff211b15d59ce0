#pragma once

#include <cstddef>
#include <span>

#include <tools/corvex/worker/OutputFile.h>

namespace corvex::tool {

/// Writes the bytes as the beginning of a file that is not published yet. Throws JobError, which names the file's target
/// and the system's reason.
void writeBytes(const OutputFile& file, std::span<const std::byte> bytes);

}  // namespace corvex::tool
