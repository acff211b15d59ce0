#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <Corvex/lut/LutApplier.h>
#include <Corvex/lut/ParsedLutFile.h>

namespace corvex::tool {

/// What a colourist wants to know of a table, as other tools of the field show it. A plain value.
struct LutFacts {
    /// Where a channel's answer to greys falls although the greys rise.
    struct Falls {
        std::size_t count = 0;
        std::size_t firstPoint = 0;  ///< The point from which the first one falls, from 0.
        friend bool operator==(const Falls&, const Falls&) = default;
    };

    explicit LutFacts(const ParsedLutFile& file);

    bool isCube = false;
    std::size_t pointCount = 0;                          ///< On each axis.
    std::size_t missingEntries = 0, surplusEntries = 0;  ///< White stands for the former; the latter do nothing.
    std::int64_t bitDepth = 0;                           ///< Of the entries, where they are code values; 0 for numbers.
    double fullScale = 1;                                ///< What of an entry stands for full scale.
    double lowValue = 0, highValue = 0;
    LutDomain domain;
    LutAxisOrder axisOrder = LutAxisOrder::redFastest;  ///< Of a cube, by the dialect.
    /// By the entries: along which axis red and blue change most. None for a table, and where neither order stands out.
    std::optional<LutAxisOrder> apparentAxisOrder;
    /// The answers to greys at the table's points, in parts of full scale.
    std::vector<LutValueTriplet> greyAxis;
    std::array<Falls, 3> greyFalls;
    /// A cube's answers to the corners of its domain, in parts of full scale: bit 0 of the index is red, 1 green, 2 blue.
    std::array<LutValueTriplet, 8> corners{};

    /// Whether some entry lies below 0 or above full scale, so that integers of any depth clip it.
    [[nodiscard]] bool clips() const noexcept { return lowValue < 0 || highValue > fullScale; }
    [[nodiscard]] bool isGreyAxisMonotone() const noexcept { return greyFalls == std::array<Falls, 3>{}; }

private:
    void readCube(const ThreeDimensionalLutCube& cube, const ParsedLutFile& file);
    void countFalls();
};

}  // namespace corvex::tool
