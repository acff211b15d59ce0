// The options of TranscodeCliArguments that concern the job as a whole.

#include <Corvex/cli/transcode/TranscodeCLIFlag.h>
#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/cli/transcode/internal/TranscodeOptionAccess.h>
#include <Corvex/exported/OrvaneUTType.h>

namespace corvex::inline v0 {

using namespace options;  // NOLINT(google-build-using-namespace): the other half of this file
using Arguments = TranscodeCliArguments;

namespace {

constexpr std::string_view explicitOutputFileTypeKey = rawValue(TranscodeCLIFlag::ftype);

}  // namespace

OptionalText Arguments::outputFile() const { return valueOf(*this, OAVOutputFileFlag); }
void Arguments::setOutputFile(OptionalText value) { setText(*this, value, OAVOutputFileFlag); }

OptionalText Arguments::progressFile() const { return valueOf(*this, OAVProgressFileFlag); }
void Arguments::setProgressFile(OptionalText value) { setText(*this, value, OAVProgressFileFlag); }

OptionalText Arguments::progressOutputPrefix() const { return valueOf(*this, OAVProgressOutputPrefixFlag); }
void Arguments::setProgressOutputPrefix(OptionalText value) { setText(*this, value, OAVProgressOutputPrefixFlag); }

OptionalText Arguments::workDirectory() const { return valueOf(*this, OAVWorkDirectoryFlag); }
void Arguments::setWorkDirectory(OptionalText value) { setText(*this, value, OAVWorkDirectoryFlag); }

OptionalText Arguments::languageCode() const { return valueOf(*this, OAVLanguageCodeFlag); }
void Arguments::setLanguageCode(OptionalText value) { setText(*this, value, OAVLanguageCodeFlag); }

bool Arguments::shouldOverwrite() const { return isSet(*this, OAVOverwriteExistingFlag); }
void Arguments::setShouldOverwrite(bool isOn) { setSwitch(*this, isOn, OAVOverwriteExistingFlag); }

bool Arguments::useLegacyPipeline() const { return isSet(*this, OAVLegacyTranscodePipelineFlag); }
void Arguments::setUseLegacyPipeline(bool isOn) { setSwitch(*this, isOn, OAVLegacyTranscodePipelineFlag); }

bool Arguments::prepareForWeb() const { return isSet(*this, OAVPrepareForWebFlag); }
void Arguments::setPrepareForWeb(bool isOn) { setSwitch(*this, isOn, OAVPrepareForWebFlag); }

std::optional<OAVTranscodeArgumentFileFormatValue> Arguments::outputFileFormat() const {
    return typedValueOf<OAVTranscodeArgumentFileFormatValue>(*this, OAVFileFormatFlag);
}
void Arguments::setOutputFileFormat(const std::optional<OAVTranscodeArgumentFileFormatValue>& value) {
    setTypedValue(*this, value, OAVFileFormatFlag);
}

std::optional<OrvaneUTType> Arguments::explicitOutputFileType() const {
    const auto text = argumentFlagValue(explicitOutputFileTypeKey);
    return text ? fromRawValue<OrvaneUTType>(*text) : std::nullopt;
}
void Arguments::setExplicitOutputFileType(std::optional<OrvaneUTType> type) {
    setArgumentFlagValue(type ? OptionalText(rawValue(*type)) : std::nullopt, explicitOutputFileTypeKey);
}

}  // namespace corvex::inline v0
