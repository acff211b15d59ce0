#pragma once

#include <optional>
#include <string>

#include <Corvex/exported/ORVMediaFileContainer.h>
#include <Corvex/exported/ORVVideoCodec.h>
#include <tools/corvex/worker/FFmpeg.h>

namespace corvex::tool {

/// The container of an open file; none where the vocabulary has no term for it (Matroska, MPEG transport streams, ...).
[[nodiscard]] std::optional<ORVMediaFileContainer> containerOf(const AVFormatContext& context);

/// The codec of a video or audio track; none where the vocabulary has no term for it.
[[nodiscard]] std::optional<ORVVideoCodec> codecTermOf(const AVCodecParameters& parameters);

}  // namespace corvex::tool
