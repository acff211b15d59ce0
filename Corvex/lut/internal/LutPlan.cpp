#include <Corvex/lut/internal/LutPlan.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <string>

#include <Corvex/lut/BitDepth.h>
#include <Corvex/lut/ParsedLutFile.h>
#include <Corvex/lut/internal/VectorLutKernel.h>
#include <Corvex/platform/DoubleText.h>

namespace corvex::inline v0 {
namespace {

/// Makes the plan of one file, step by step.
class Planner {
public:
    Planner(const ParsedLutFile& file, const LutApplierSettings& settings)
        : file_(file),
          cube_(dynamic_cast<const ThreeDimensionalSampleConverter*>(&file.converter())),
          integerCube_(dynamic_cast<const Integer3DSampleConverter*>(&file.converter())),
          integerTable_(dynamic_cast<const OneDimensionsUnsignedIntegerConverter*>(&file.converter())),
          isStated_(settings.application == LutApplication::asStated),
          plan_(std::make_unique<LutPlan>()) {
        plan_->settings = settings;
        plan_->isCube = cube_ != nullptr;
    }

    std::unique_ptr<const LutPlan> make() {
        check();
        planAxes();
        planUnits();
        planLattice();
        planCodes();
        plan_->usesVectorCode = plan_->isCube && plan_->settings.allowsVectorCode && VectorLutKernel::isSupported() &&
                                hasSmallEntryNumbers();
        // Crossed fractions jump between cells, so there a rounded position could be off by a whole step.
        if (plan_->usesVectorCode && !isStated_ && plan_->settings.arithmetic == LutArithmetic::fast &&
            plan_->settings.outOfRange == OutOfRangePolicy::clamp) {
            planFast();
        }
        return std::move(plan_);
    }

private:
    void check() const;
    void planAxes();
    void planUnits();
    void planLattice();
    void planCodes();
    void planFast();

    /// The bits of a table of code values; 0 for numbers.
    [[nodiscard]] std::int64_t tableDepth() const noexcept {
        return integerCube_ ? integerCube_->bitDepth() : integerTable_ ? integerTable_->valueBitDepth() : 0;
    }
    [[nodiscard]] bool hasSmallEntryNumbers() const noexcept {  // offsets of 32 bits, in numbers
        return plan_->lattice.size() < (std::size_t{1} << 31U);
    }

    const ParsedLutFile& file_;
    const ThreeDimensionalSampleConverter* cube_;
    const Integer3DSampleConverter* integerCube_;
    const OneDimensionsUnsignedIntegerConverter* integerTable_;
    bool isStated_;
    std::unique_ptr<LutPlan> plan_;
};

void Planner::check() const {
    if (plan_->settings.blending == LutBlending::tetrahedral && (isStated_ || !cube_)) {
        throw LutApplierError(LutApplierProblem::blendingNotStated, cube_ ? "asStated" : "a 1D table");
    }
    if (isStated_) {
        if (cube_ && !(cube_->cube().highValue() > 0)) {
            throw LutApplierError(LutApplierProblem::highValueNotPositive, defaultText(cube_->cube().highValue()));
        }
        return;
    }
    const LutDomain& domain = file_.domain();
    for (const auto channel : {&RGB<double>::r, &RGB<double>::g, &RGB<double>::b}) {
        const double minimum = domain.minimum.*channel, maximum = domain.maximum.*channel;
        if (minimum < maximum && std::isfinite(maximum - minimum)) continue;
        throw LutApplierError(LutApplierProblem::emptyDomain, defaultText(minimum) + " to " + defaultText(maximum));
    }
}

void Planner::planAxes() {
    LutPlan& plan = *plan_;
    // There is always a cell. Straight blending reaches the last point by its last cell's full fraction; crossed
    // fractions may not be traded for an index, so the last point has a twin beyond it.
    const std::size_t entryCount = cube_ ? cube_->cube().faceSize() : file_.orderedEntries().size();
    plan.pointCount = !cube_ ? entryCount : isStated_ ? entryCount + 1 : std::max<std::size_t>(entryCount, 2);
    if (cube_) {
        const std::size_t n = plan.pointCount;
        const bool redFastest = !isStated_ && plan.settings.axisOrder.value_or(conventionalAxisOrder(file_.file())) ==
                                                  LutAxisOrder::redFastest;
        plan.strides = redFastest ? std::array<std::size_t, 3>{1, n, n * n} : std::array<std::size_t, 3>{n * n, n, 1};
        using enum LutPlan::Axis;
        // As stated, green's fraction weighs along blue's axis, and blue's along green's.
        plan.weighedAxes = isStated_    ? std::array{slow, fast, middle}
                           : redFastest ? std::array{fast, middle, slow}
                                        : std::array{slow, middle, fast};
    } else {
        plan.strides = {1, 1, 1};
    }
    const auto last = static_cast<double>(entryCount - 1);
    plan.takesEntriesUnblended = isStated_ && integerTable_;
    if (isStated_ && cube_) {
        const LutCube& cube = cube_->cube();
        plan.axes.fill({cube.lowValue(), cube.highValue(), 0, cube.highValue()});
    } else if (plan.takesEntriesUnblended) {
        plan.axes.fill({0, last, 0, 1, 1});  // entries are numbers of their own
        return;
    } else if (!isStated_) {
        const auto axis = [](double low, double high) { return LutAxis{low, high, low, high - low}; };
        const LutDomain& domain = file_.domain();
        plan.axes = {axis(domain.minimum.r, domain.maximum.r), axis(domain.minimum.g, domain.maximum.g),
                     axis(domain.minimum.b, domain.maximum.b)};
    }
    for (LutAxis& axis : plan.axes) axis.factor = last;
}

void Planner::planUnits() {
    LutPlan& plan = *plan_;
    const auto& settings = plan.settings;
    const bool isFloatSource = settings.source == SampleFormat::float32;
    const bool isFloatDestination = settings.destination == SampleFormat::float32;
    const std::int64_t depth = tableDepth();
    if (!isFloatSource) plan.inputDivisor = fullScale(settings.source);
    if (!isFloatDestination) {
        plan.outputFactor = fullScale(settings.destination);
        plan.outputLimit = plan.outputFactor;
        plan.outputBias = isStated_ ? 0 : 0.5;
    }
    if (!isStated_ || depth == 0) return;
    // Code values stay code values; depths change by shifting.
    const auto largest = static_cast<double>(largestCodeValue(depth));
    if (isFloatDestination) {
        plan.outputDivisor = largest;
    } else {
        plan.outputDepth = depth;
        plan.outputFactor = 1;
        plan.outputLimit = largest;
    }
    plan.inputDepth = integerCube_ ? depth : integerTable_->lutBitDepth();
    plan.inputFactor = static_cast<double>(largestCodeValue(plan.inputDepth));
    plan.inputDivisor = 1;
}

void Planner::planLattice() {
    LutPlan& plan = *plan_;
    const std::span<const LutValueTriplet> entries = cube_ ? cube_->cube().lattice() : file_.orderedEntries();
    const double divisor = !isStated_ && tableDepth() > 0 ? static_cast<double>(largestCodeValue(tableDepth())) : 1.0;
    const std::size_t n = plan.pointCount;
    plan.lattice.resize((cube_ ? n * n * n : n) * LutPlan::entryWidth);
    double* to = plan.lattice.data();
    const auto add = [&](std::size_t entry) {
        to[0] = entries[entry].first / divisor;
        to[1] = entries[entry].second / divisor;
        to[2] = entries[entry].third / divisor;
        to += LutPlan::entryWidth;
    };
    if (!cube_) {
        for (std::size_t i = 0; i < n; ++i) add(i);
        return;
    }
    const std::size_t face = cube_->cube().faceSize();
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = 0; j < n; ++j) {
            const std::size_t row = (std::min(i, face - 1) * face + std::min(j, face - 1)) * face;
            for (std::size_t k = 0; k < n; ++k) add(row + std::min(k, face - 1));
        }
    }
}

void Planner::planCodes() {
    LutPlan& plan = *plan_;
    const SampleFormat format = plan.settings.source;
    if (format == SampleFormat::float32) return;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        auto& positions = plan.codePositions[channel];
        positions.resize(std::size_t{1} << bitDepth(format));
        for (std::size_t code = 0; code < positions.size(); ++code) {
            positions[code] = plan.position(channel, plan.inputNumber(static_cast<std::uint32_t>(code)));
        }
    }
}

void Planner::planFast() {
    LutPlan& plan = *plan_;
    constexpr double largestNumber = 1e30;
    constexpr std::size_t largestWhole = std::size_t{1} << 24U;  // up to which all whole numbers are exact
    if (plan.lattice.size() > largestWhole * LutPlan::entryWidth) return;
    const double units = plan.inputFactor / plan.inputDivisor;
    LutPlan::Single single;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const LutAxis& axis = plan.axes[channel];
        const double scale = axis.factor / axis.span * units;
        // Domains that do not begin at 0 would lose digits that the bound needs.
        if (axis.offset != 0 || !(scale > 1 / largestNumber && scale < largestNumber)) return;
        single.high[channel] = static_cast<float>(axis.high / units);
        single.scale[channel] = static_cast<float>(scale);
        single.scaleTail[channel] = static_cast<float>(scale - static_cast<double>(single.scale[channel]));
    }
    // Blending keeps what is between the entries between them, so codes can be made of them beforehand.
    single.lattice.reserve(plan.lattice.size());
    for (const double value : plan.lattice) {
        const double number = value * plan.outputFactor;
        if (std::abs(number) > largestNumber) return;
        single.needsLimits = single.needsLimits || number < 0 || number > plan.outputLimit;
        single.lattice.push_back(static_cast<float>(number));
    }
    single.outputLimit = static_cast<float>(plan.outputLimit);
    plan.lattice = {};
    for (auto& positions : plan.codePositions) positions = {};
    plan.single = std::move(single);
}

}  // namespace

std::unique_ptr<const LutPlan> LutPlan::make(const ParsedLutFile& file, const LutApplierSettings& settings) {
    return Planner(file, settings).make();
}

double LutPlan::inputNumber(std::uint32_t code) const noexcept {
    return static_cast<double>(normalizedUnsignedInteger(code, bitDepth(settings.source), inputDepth)) / inputDivisor;
}

LutPosition LutPlan::position(std::size_t channel, double number) const noexcept {
    const LutAxis& axis = axes[channel];
    if (!(number >= axis.low)) number = axis.low;  // NaN too
    if (number > axis.high) number = axis.high;
    const auto cell = static_cast<double>(pointCount - 2);
    double at = (number - axis.offset) / axis.span * axis.factor;
    if (takesEntriesUnblended) at = std::trunc(at);
    const double lower = at >= 1 ? std::min(std::trunc(at), cell) : 0;
    return {at - lower, static_cast<std::uint32_t>(lower) * static_cast<std::uint32_t>(strides[channel])};
}

}  // namespace corvex::inline v0
