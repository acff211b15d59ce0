#include <tools/corvex/worker/LookUpTable.h>

#include <utility>

#include <Corvex/lut/LutApplier.h>
#include <Corvex/lut/ParsedLutFactory.h>

namespace corvex::tool {

LookUpTable LookUpTable::read(const std::string& path) {
    const LutReading reading = ParsedLutFactory::read(path);
    if (!reading.file) {
        throw JobError("'" + path + "' is no look-up table: " + std::string(description(*reading.problem)));
    }
    LutApplierSettings settings;
    settings.source = settings.destination = SampleFormat::unsigned16;
    try {
        return LookUpTable(std::make_shared<const LutApplier>(*reading.file, settings));
    } catch (const LutApplierError& error) {
        throw JobError("'" + path + "' cannot be applied: " + error.what());
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
