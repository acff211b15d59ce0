#include <Corvex/lut/internal/LutTextReader.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include <Corvex/platform/Text.h>
#include <Corvex/platform/Utf8.h>

namespace corvex::inline v0 {
namespace {

constexpr std::size_t longestCutOff = 3;
constexpr std::size_t readAhead = 16;  // scanning looks at 8 bytes at a time

/// How many bytes the newline at `at` has; 0 where there is none. `text` is whole characters.
std::size_t newlineLength(std::string_view text, std::size_t at) noexcept {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte >= 0x0A && byte <= 0x0D) return 1;
    if (byte != 0xC2 && byte != 0xE2) return 0;
    const DecodedCharacter character = firstCharacter(text.substr(at));
    return isNewline(character.codePoint) ? static_cast<std::size_t>(character.byteCount) : 0;
}

struct Newline {
    std::size_t position, length;  ///< The text's length and 0 where there is none.
};

/// Whether one of eight bytes is from 8 to 15, as the newlines of ASCII are, or from 128 on.
bool mayHoldNewline(const char* at) noexcept {
    constexpr std::uint64_t ones = 0x0101010101010101U, highBits = 0x80 * ones;
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    const std::uint64_t others = (word & 0xF8 * ones) ^ 0x08 * ones;  // zero where a byte is from 8 to 15
    return ((((others - ones) & ~others) | word) & highBits) != 0;
}

Newline findNewline(std::string_view text, std::size_t from) noexcept {
    for (std::size_t at = from; at < text.size(); ++at) {
        while (at + 8 <= text.size() && !mayHoldNewline(text.data() + at)) at += 8;
        if (at == text.size()) break;
        if (const std::size_t length = newlineLength(text, at)) return {at, length};
    }
    return {text.size(), 0};
}

/// The length of the lines at the front of `text` that are whole.
std::size_t wholeLinesLength(std::string_view text) noexcept {
    for (std::size_t at = text.size(); at > 0; --at) {
        if (const std::size_t length = newlineLength(text, at - 1)) return at - 1 + length;
    }
    return 0;
}

}  // namespace

LutTextReader::LutTextReader(GenericTextLutInterpreter& interpreter)
    : interpreter_(interpreter),
      buffer_(std::make_unique_for_overwrite<char[]>(longestCutOff + chunkSize + readAhead)) {}

bool LutTextReader::take(std::size_t count) {
    const std::string_view bytes(buffer_.get(), cutOffLength_ + count);
    std::memset(buffer_.get() + bytes.size(), 0, readAhead);
    const Utf8Extent extent = utf8Extent(bytes);
    if (extent.end == Utf8End::invalid) {
        line_.clear();
        isTooLong_ = false;
        cutOffLength_ = 0;
        return false;
    }
    takeLines(bytes.substr(0, extent.validLength));
    cutOffLength_ = bytes.size() - extent.validLength;
    std::memmove(buffer_.get(), bytes.data() + extent.validLength, cutOffLength_);
    return true;
}

bool LutTextReader::finish() {
    if (cutOffLength_ > 0) return false;
    if (isTooLong_ || !line_.empty()) finishLine();
    return true;
}

void LutTextReader::takeLines(std::string_view text) {
    if (text.empty()) return;
    std::size_t at = afterCarriageReturn_ && text.front() == '\n' ? 1 : 0;  // the rest of a CR LF
    afterCarriageReturn_ = text.back() == '\r';
    if (isTooLong_ || !line_.empty()) {
        const Newline end = findNewline(text, at);
        keep(text.substr(at, end.position - at));
        if (end.length == 0) return;
        finishLine();
        at = end.position + end.length;
        if (text[end.position] == '\r' && at < text.size() && text[at] == '\n') ++at;
    }
    const std::size_t whole = at + wholeLinesLength(text.substr(at));
    while (at < whole && !interpreter_.hasTooManyEntries()) {
        at += interpreter_.interpretPlainEntries(text.substr(at, whole - at));
        if (at == whole) break;
        const Newline end = findNewline(text, at);
        interpreter_.interpret(text.substr(at, end.position - at));
        at = end.position + end.length;
        if (text[end.position] == '\r' && at < whole && text[at] == '\n') ++at;
    }
    keep(text.substr(whole));
}

void LutTextReader::keep(std::string_view unfinished) {
    if (isTooLong_ || unfinished.size() > maximumLineLength - line_.size()) {
        isTooLong_ = true;
        line_.clear();
    } else {
        line_ += unfinished;
    }
}

void LutTextReader::finishLine() {
    if (isTooLong_) {
        interpreter_.skipLongLine();
    } else {
        interpreter_.interpret(line_);
    }
    line_.clear();
    isTooLong_ = false;
}

}  // namespace corvex::inline v0
