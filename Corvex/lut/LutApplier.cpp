#include <Corvex/lut/LutApplier.h>

#include <algorithm>
#include <filesystem>

#include <Corvex/lut/ParsedLutFile.h>
#include <Corvex/lut/internal/LutPlan.h>
#include <Corvex/lut/internal/PlainLutKernel.h>
#include <Corvex/lut/internal/VectorLutKernel.h>
#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {
namespace {

/// Looks up a row in doubles, block by block: each is read whole before any of it is written.
std::optional<OffendingPixel> applyExactly(const LutPlan& plan, const ConstPixelBuffer& source,
                                           const PixelBuffer& destination, std::size_t row) noexcept {
    alignas(64) PlainLutKernel::Block colors;
    const std::size_t width = source.width();
    for (std::size_t column = 0; column < width; column += PlainLutKernel::blockSize) {
        std::size_t count = std::min(PlainLutKernel::blockSize, width - column);
        if (plan.usesVectorCode) {
            VectorLutKernel::lookUp(plan, source, row, column, count, colors);
        } else {
            PlainLutKernel::lookUp(plan, source, row, column, count, colors);
        }
        std::optional<OffendingPixel> offender;
        if (plan.settings.outOfRange == OutOfRangePolicy::report) {
            offender = PlainLutKernel::findOffender(plan, source, row, column, count, colors);
            if (offender) count = offender->column - column;
        }
        PlainLutKernel::storeAlpha(source, destination, row, column, count);
        PlainLutKernel::store(plan, colors, destination, row, column, count);
        if (offender) return offender;
    }
    return std::nullopt;
}

}  // namespace

LutApplierError::LutApplierError(LutApplierProblem problem, const std::string& offender)
    : Error(offender + ": " + std::string(description(problem))), problem_(problem) {}
LutApplierError::~LutApplierError() = default;

LutAxisOrder conventionalAxisOrder(const std::filesystem::path& lutFilePath) {
    std::string extension = lutFilePath.extension().string();
    for (char& letter : extension) letter = static_cast<char>(letter >= 'A' && letter <= 'Z' ? letter + 32 : letter);
    return extension == ".3dl" ? LutAxisOrder::blueFastest : LutAxisOrder::redFastest;
}

LutApplier::LutApplier(const ParsedLutFile& file, const LutApplierSettings& settings)
    : plan_(LutPlan::make(file, settings)) {}
LutApplier::~LutApplier() = default;
LutApplier::LutApplier(LutApplier&&) noexcept = default;
LutApplier& LutApplier::operator=(LutApplier&&) noexcept = default;

bool LutApplier::usesVectorCode() const noexcept { return plan_->usesVectorCode; }

std::optional<OffendingPixel> LutApplier::apply(const ConstPixelBuffer& source, const PixelBuffer& destination,
                                                std::size_t firstRow, std::size_t rowCount) const noexcept {
    const LutPlan& plan = *plan_;
    require(source.format() == plan.settings.source && destination.format() == plan.settings.destination,
            "the buffers have other sample formats than the applier was made for");
    require(source.width() == destination.width() && source.height() == destination.height(),
            "source and destination differ in size");
    require(firstRow <= source.height() && rowCount <= source.height() - firstRow, "rows beyond the buffer");
    for (std::size_t row = firstRow; row < firstRow + rowCount; ++row) {
        if (plan.isFast()) {
            VectorLutKernel::applyFast(plan, source, destination, row);
        } else if (const auto offender = applyExactly(plan, source, destination, row)) {
            return offender;
        }
    }
    return std::nullopt;
}

}  // namespace corvex::inline v0
