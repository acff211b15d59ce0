#include <filesystem>

#include <Corvex/lut/GenericTextLutInterpreter.h>
#include <Corvex/lut/ParsedLutFactory.h>
#include <Corvex/lut/ParsedLutFile.h>
#include <Corvex/platform/Utf8.h>

#include "support/Fuzzer.h"

namespace {

using namespace corvex;

/// The lines of a text one by one, by the careful way alone.
void interpretLines(GenericTextLutInterpreter& interpreter, std::string_view text) {
    while (!text.empty()) {
        std::size_t at = 0, length = 0;
        for (; at < text.size() && length == 0; ++at) {
            const DecodedCharacter next = firstCharacter(text.substr(at));
            if (next.isValid && isNewline(next.codePoint)) length = static_cast<std::size_t>(next.byteCount);
        }
        interpreter.interpret(text.substr(0, length == 0 ? at : at - 1));
        text.remove_prefix(length == 0 ? at : at - 1 + length);
    }
}

}  // namespace

/// Reading files against the interpreter fed by hand, whatever the bytes; what is read can be sampled where no value can
/// stop the process.
void corvex::fuzz(std::string_view input) {
    const LutReading reading = ParsedLutFactory::readText(input, "fuzz.cube");
    require((reading.file != nullptr) != reading.problem.has_value(), "neither a file nor a problem");
    require(reading.isValidText == (utf8Extent(input).end == Utf8End::complete), "text that is no UTF-8");
    if (reading.isValidText) {
        GenericTextLutInterpreter interpreter;
        interpretLines(interpreter, input);
        require(interpreter.report().dataLineCount == reading.lines.dataLineCount, "entries were lost");
        require(interpreter.explicitDimensions() == reading.lines.declaredDimensions, "another declaration");
        if (reading.file) {
            const auto entries = reading.file->orderedEntries();
            require(std::vector(entries.begin(), entries.end()) == interpreter.triplets(), "other entries");
        }
    }
    if (!reading.file) return;
    const auto* cube = dynamic_cast<const ThreeDimensionalSampleConverter*>(&reading.file->converter());
    double low = 0;
    for (const auto& entry : reading.file->orderedEntries()) low = entry.smallest() < low ? entry.smallest() : low;
    const bool canBeSampled = low >= 0 && (cube == nullptr || (cube->cube().highValue() > 0));
    if (canBeSampled && (cube == nullptr || cube->cube().highValue() < 1e9)) {
        (void)reading.file->converter().sample({0, 100, 1023}, 10, 8, AnswerDepth::output);
    }
}
