#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include <Corvex/lut/GenericTextLutInterpreter.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// Cuts the chunks of a LUT text into lines for an interpreter. Memory stays flat, whatever the text: one chunk, and one
/// unfinished line up to its limit. Time is linear. For one text; not synchronised.
class CORVEX_EXPORT LutTextReader {
public:
    static constexpr std::size_t chunkSize = 1'000'000;
    /// A longer line is counted and dropped.
    static constexpr std::size_t maximumLineLength = std::size_t{4} << 20U;

    /// `interpreter` gets the lines and outlives the reader.
    explicit LutTextReader(GenericTextLutInterpreter& interpreter);

    /// Where the next chunk goes: chunkSize bytes.
    [[nodiscard]] std::span<char> room() noexcept { return {buffer_.get() + cutOffLength_, chunkSize}; }

    /// Takes the first `count` bytes in room(); a character may be cut in two between chunks. False where they are no
    /// valid UTF-8: then the chunk gives no line, the unfinished line is dropped, and the text is over.
    [[nodiscard]] bool take(std::size_t count);

    /// Takes what is left. False where the text ends within a character; then the unfinished line is dropped.
    [[nodiscard]] bool finish();

private:
    void takeLines(std::string_view text);
    void keep(std::string_view unfinished);
    void finishLine();

    GenericTextLutInterpreter& interpreter_;
    std::unique_ptr<char[]> buffer_;  ///< The start of a cut-off character, the chunk, and room for reading ahead.
    std::size_t cutOffLength_ = 0;
    std::string line_;        ///< The unfinished line.
    bool isTooLong_ = false;  ///< The unfinished line is over its limit and no longer kept.
    bool afterCarriageReturn_ = false;
};

}  // namespace corvex::inline v0
