#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <vector>

#include <Corvex/lut/GenericTextLutInterpreter.h>
#include <Corvex/lut/ParsedLutFactory.h>
#include <Corvex/lut/ParsedLutFile.h>
#include <Corvex/platform/Text.h>
#include <Corvex/platform/Utf8.h>

using namespace corvex;

namespace {

void check(bool holds) {
    if (!holds) std::abort();
}

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
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const LutReading reading = ParsedLutFactory::readText(text, "fuzz.cube");
    check((reading.file != nullptr) != reading.problem.has_value());
    check(reading.isValidText == (utf8Extent(text).end == Utf8End::complete));
    if (reading.isValidText) {
        GenericTextLutInterpreter interpreter;
        interpretLines(interpreter, text);
        check(interpreter.report().dataLineCount == reading.lines.dataLineCount);
        check(interpreter.explicitDimensions() == reading.lines.declaredDimensions);
        if (reading.file) {
            const auto entries = reading.file->orderedEntries();
            check(std::vector(entries.begin(), entries.end()) == interpreter.triplets());
        }
    }
    if (!reading.file) return 0;
    const auto* cube = dynamic_cast<const ThreeDimensionalSampleConverter*>(&reading.file->converter());
    double low = 0;
    for (const auto& entry : reading.file->orderedEntries()) low = entry.smallest() < low ? entry.smallest() : low;
    const bool canBeSampled = low >= 0 && (cube == nullptr || (cube->cube().highValue() > 0));
    if (canBeSampled && (cube == nullptr || cube->cube().highValue() < 1e9)) {
        (void)reading.file->converter().sample({0, 100, 1023}, 10, 8, AnswerDepth::output);
    }
    return 0;
}
