#include <tools/corvex/worker/LookUpTable.h>

#include <filesystem>
#include <utility>

#include <Corvex/lut/LutApplier.h>
#include <Corvex/lut/ParsedLutFactory.h>
#include <Corvex/lut/ParsedLutFile.h>

namespace corvex::tool {

std::shared_ptr<const ParsedLutFile> readTable(const std::string& path) {
    LutReading reading = ParsedLutFactory::read(path);
    if (!reading.file) {
        throw JobError(inQuotes(path) + " is no look-up table: " + std::string(description(*reading.problem)));
    }
    return std::move(reading.file);
}

void refuseTable(const std::string& path, const std::string& reason) {
    throw JobError(inQuotes(path) + " cannot be applied: " + reason);
}

LookUpTable LookUpTable::read(const std::string& path) {
    const auto file = readTable(path);
    LutApplierSettings settings;
    settings.source = settings.destination = SampleFormat::unsigned16;
    try {
        return LookUpTable(std::make_shared<const LutApplier>(*file, settings));
    } catch (const LutApplierError& error) {
        refuseTable(path, error.what());
    }
}

void LookUpTable::apply(AVFrame& frame) const {
    check(av_frame_make_writable(&frame), "look-up table");
    const auto plane = [&](int index) { return PixelBuffer::Plane{frame.data[index], frame.linesize[index]}; };
    // The media libraries keep planes as green, blue, red; alpha stays as it is.
    const auto pixels =
        PixelBuffer::planar(plane(2), plane(0), plane(1), {}, SampleFormat::unsigned16,
                            static_cast<std::size_t>(frame.width), static_cast<std::size_t>(frame.height));
    applier_->apply(pixels, pixels);
}

}  // namespace corvex::tool
