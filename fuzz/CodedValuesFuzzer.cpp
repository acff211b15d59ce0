#include <optional>

#include <nlohmann/json.hpp>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/cli/transcode/TranscodeVideoOptionsTemplate.h>
#include <Corvex/color/OrvaneVideoColorSpace.h>
#include <Corvex/exported/ORVMediaFileContainer.h>
#include <Corvex/platform/Error.h>
#include <Corvex/platform/Json.h>
#include <Corvex/timing/CommonVideoFrameRate.h>
#include <Corvex/timing/DeprecatedVideoFrameRate.h>
#include <Corvex/timing/MediaRational.h>
#include <Corvex/timing/NumericRational.h>
#include <Corvex/timing/TimecodeComponents.h>

#include "support/Fuzzer.h"

namespace {

using namespace corvex;

enum class Coding : std::uint8_t { exact, rounded };

/// Decodes a value; what it is coded as again must be read as the same, or at least be read where coding rounds.
template <class Value>
void check(const Json& json, Coding coding = Coding::exact) {
    std::optional<Value> value;
    try {
        value = json.get<Value>();
    } catch (const DecodingError&) {  // says what is wrong
        return;
    }
    const auto again = Json::parse(jsonText(Json(*value))).get<Value>();
    require(coding == Coding::rounded || again == *value, "a value is not read as it was coded");
}

}  // namespace

/// Values that other programs have coded, in JSON of any kind.
void corvex::fuzz(std::string_view input) {
    const Json json = Json::parse(input, nullptr, /*allow_exceptions=*/false);
    if (json.is_discarded()) return;
    check<NumericRational>(json);
    check<MediaRational>(json, Coding::rounded);
    check<TimecodeComponents>(json);
    check<DropFrameState>(json);
    check<DeprecatedVideoFrameRate>(json, Coding::rounded);
    check<CommonVideoFrameRate>(json);
    check<OrvaneVideoColorSpace>(json);
    check<TranscodeVideoOptionsTemplate>(json);
    check<ORVMediaFileContainer>(json);
    check<TranscodeCliArguments>(json);
}
