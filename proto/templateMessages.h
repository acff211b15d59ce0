#pragma once

#include <Corvex/cli/transcode/TranscodeVideoOptionsTemplate.h>
#include <proto/corvex_cloud.pb.h>

namespace corvex::inline v0 {

/// How the template encodes video.
[[nodiscard]] Cloud_VideoConversionOptions templateVideoOptions(TranscodeVideoOptionsTemplate videoTemplate);

/// The template as a complete pipeline: one transcode preset, known by the template's definedPresetID. The system's own
/// name for it is `template`, which is a word of the language here.
[[nodiscard]] Cloud_PresetPipeline templatePipeline(TranscodeVideoOptionsTemplate videoTemplate);

}  // namespace corvex::inline v0
