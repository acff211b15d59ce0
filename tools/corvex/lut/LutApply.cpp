#include <tools/corvex/lut/LutApply.h>

#include <Corvex/lut/LutApplier.h>
#include <tools/corvex/image/StillImage.h>
#include <tools/corvex/lut/LutFacts.h>
#include <tools/corvex/worker/LookUpTable.h>
#include <tools/corvex/worker/OutputFile.h>

namespace corvex::tool {
namespace {

LutApplier makeApplier(const LutApplyChoices& choices, const ParsedLutFile& table, SampleFormat source,
                       SampleFormat destination) {
    LutApplierSettings settings;
    settings.application = choices.asStated ? LutApplication::asStated : LutApplication::conventional;
    settings.blending = choices.tetrahedral ? LutBlending::tetrahedral : LutBlending::trilinear;
    settings.arithmetic = LutArithmetic::exact;  // the same picture on every machine
    settings.source = source;
    settings.destination = destination;
    try {
        return LutApplier(table, settings);
    } catch (const LutApplierError& error) {
        refuseTable(choices.table, error.what());
    }
}

}  // namespace

ExitStatus applyLut(const LutApplyChoices& choices) {
    const auto kind = stillFileKindOf(choices.output);
    if (!kind) {
        throw UsageError(inQuotes(choices.output) + ": expected a name that ends in .png, .tif, .tiff or .dpx");
    }
    const LibraryMessages messages;
    OutputFile target(choices.output, {}, choices.overwrites, "--overwrite");
    const auto table = readTable(choices.table);
    StillImage input = StillImage::read(choices.input);
    StillImage output = input.blankCopy(input.formatIn(*kind));
    makeApplier(choices, *table, input.format(), output.format()).apply(input.pixels(), output.pixels());
    output.write(target, *kind);
    target.publish();
    if (LutFacts(*table).clips()) {
        printError("note: values of " + inQuotes(choices.table) + " below 0 or above full scale were clipped");
    }
    return ExitStatus::success;
}

}  // namespace corvex::tool
