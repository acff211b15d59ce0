#pragma once

#include <memory>
#include <optional>
#include <utility>

#include <Corvex/color/OrvaneColorSpaceSignal.h>
#include <Corvex/color/OrvanePixelColorRange.h>

namespace corvex::inline v0 {

/// How pictures are encoded, and whether the output says so. A plain value; signals are immutable and shared.
struct OrvaneColorEncoding {
    /// nullptr: not known.
    std::shared_ptr<const OrvaneColorSpaceSignal> signal;
    /// None: not known.
    std::optional<OrvanePixelColorRange> range;
    /// Whether the output is to be tagged with the signal. An untagged file is shown by each player's own guess.
    bool shouldTag = false;

    OrvaneColorEncoding() = default;
    /// Shares the signal.
    OrvaneColorEncoding(std::shared_ptr<const OrvaneColorSpaceSignal> theSignal,
                        std::optional<OrvanePixelColorRange> theRange, bool tags) noexcept
        : signal(std::move(theSignal)), range(theRange), shouldTag(tags) {}
};

}  // namespace corvex::inline v0
