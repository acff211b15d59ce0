#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <Corvex/lut/LutApplier.h>

namespace corvex::inline v0 {

// What an applier works from. Not for callers: it may change with any version.

/// One channel's way into a table, in doubles: limit to low and high, subtract the offset, divide by the span, multiply
/// by the factor. The arithmetic and its order are those of one-pixel sampling.
struct LutAxis {
    double low = 0, high = 1, offset = 0, span = 1, factor = 1;
};

/// Where a number lies on an axis: its lower point, times the axis's stride, and the fraction above it.
struct LutPosition {
    double fraction = 0;
    std::uint32_t entry = 0;
};

/// A table made ready for one way of applying it. Immutable once made.
struct LutPlan {
    /// The axis of the lattice that a channel's fraction weighs on.
    enum Axis : std::uint8_t { slow, middle, fast };
    /// The entries of a lattice are padded to four numbers.
    static constexpr std::size_t entryWidth = 4;

    LutApplierSettings settings;
    bool isCube = false;
    std::size_t pointCount = 0;  ///< Of an axis of the lattice, at least 2; of a table, its entries.

    std::array<LutAxis, 3> axes;
    std::array<std::size_t, 3> strides{};  ///< Of channels, in entries of the lattice.
    std::array<Axis, 3> weighedAxes{};     ///< Of channels.
    /// From a source's number to the units of the axes: numbers are multiplied; code values get another depth by
    /// shifting (0: they keep theirs), and are divided.
    double inputFactor = 1, inputDivisor = 1;
    std::int64_t inputDepth = 0;
    /// Code values' positions, for each channel; empty for floating point.
    std::array<std::vector<LutPosition>, 3> codePositions;

    /// pointCount^3 entries for cubes, pointCount for tables.
    std::vector<double> lattice;
    bool takesEntriesUnblended = false;  ///< Tables of code values, as stated.

    /// From the lattice's numbers to the destination's: divided (floating point), or multiplied, rounded down after
    /// adding, given another depth by shifting (0: they keep theirs), and limited.
    double outputDivisor = 1, outputFactor = 1, outputBias = 0, outputLimit = 0;
    std::int64_t outputDepth = 0;

    /// Single precision; empty where the exact arithmetic is at work. A position is number * (scale + scaleTail).
    struct Single {
        std::vector<float> lattice;  ///< For codes: multiplied.
        std::array<float, 3> high{}, scale{}, scaleTail{};
        float outputLimit = 0;
        bool needsLimits = false;  ///< Some entry does not fit the destination.
    } single;                      ///< Single precision.
    bool usesVectorCode = false;

    [[nodiscard]] bool isFast() const noexcept { return !single.lattice.empty(); }

    /// A code value in the units of the axes.
    [[nodiscard]] double inputNumber(std::uint32_t code) const noexcept;
    /// Where a number in the units of the axes lies.
    [[nodiscard]] LutPosition position(std::size_t channel, double number) const noexcept;

    /// Throws LutApplierError.
    [[nodiscard]] static std::unique_ptr<const LutPlan> make(const ParsedLutFile& file,
                                                             const LutApplierSettings& settings);
};

}  // namespace corvex::inline v0
