#include <Corvex/timing/CommonVideoFrameRate.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include <Corvex/platform/internal/ProcessWide.h>

namespace corvex::inline v0 {
namespace {

/// The table's values as doubles, for searching.
constexpr auto values = [] {
    std::array<double, caseTable<CommonVideoFrameRate>.size()> result{};
    for (std::size_t i = 0; i < result.size(); ++i) result[i] = rational(allCases<CommonVideoFrameRate>[i]).rawValue();
    return result;
}();
static_assert(std::is_sorted(values.begin(), values.end()), "the searches below halve the table");

/// The index of the first value that is not below `value`; the count of values when there is none.
std::size_t firstNotBelow(double value) noexcept {
    std::size_t start = 0;
    for (std::size_t count = values.size(); count > 1;) {  // without branches on the values
        const std::size_t half = count / 2;
        start += values[start + half - 1] < value ? half : 0;
        count -= half;
    }
    return values[start] < value ? start + 1 : start;
}

constinit ProcessWide<std::set<CommonVideoFrameRate>> ntscSet([] {
    std::set<CommonVideoFrameRate> result;
    for (const auto& row : caseTable<CommonVideoFrameRate>) {
        if (row.timeScale == MediaTiming::ntscTimeScale) result.insert(row.value);
    }
    return result;
});

}  // namespace

std::optional<CommonVideoFrameRate> definedFrameRate(const MediaRational& rate) noexcept {
    // Up to 2^53 the quotient of the integers rounds to the same double whether they are reduced or not.
    constexpr std::int64_t exact = std::int64_t{1} << 53U;
    const auto isExact = [](std::int64_t term) { return term >= -exact && term <= exact; };
    const double value =
        isExact(rate.timeValue()) && isExact(rate.timeScale()) ? rate.rawValue() : rate.reduced().rawValue();
    const std::size_t found = firstNotBelow(value);
    if (found == values.size() || values[found] != value) return std::nullopt;
    return allCases<CommonVideoFrameRate>[found];
}

std::optional<CommonVideoFrameRate> closestFrameRate(double value, double tolerance) noexcept {
    if (!std::isfinite(value) || !(value > 0) || !(tolerance >= 0)) return std::nullopt;
    const auto distance = [value](std::size_t index) { return std::abs(values[index] - value); };
    std::size_t best = std::min(firstNotBelow(value), values.size() - 1);
    if (best > 0 && distance(best - 1) <= distance(best)) --best;
    while (best > 0 && distance(best - 1) == distance(best)) --best;  // far off, differences round away
    if (distance(best) > tolerance) return std::nullopt;
    return allCases<CommonVideoFrameRate>[best];
}

std::set<CommonVideoFrameRate> ntscFrameRates() { return ntscSet.get(); }
void setNtscFrameRates(std::set<CommonVideoFrameRate> rates) { ntscSet.set(std::move(rates)); }

}  // namespace corvex::inline v0
