#include <tools/corvex/worker/TextImage.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include <pango/pangocairo.h>

#include <tools/corvex/worker/FFmpeg.h>

namespace corvex::tool {
namespace {

template <class T>
using GObjectPointer = std::unique_ptr<T, Free<g_object_unref>>;
using FontPointer = std::unique_ptr<PangoFontDescription, Free<pango_font_description_free>>;
using SurfacePointer = std::unique_ptr<cairo_surface_t, Free<cairo_surface_destroy>>;
using CairoPointer = std::unique_ptr<cairo_t, Free<cairo_destroy>>;

OverlayImage::Pixel pixelOf(const Color& color) {
    const auto components = color.toRGBA().value_or(std::array<float, 4>{});
    OverlayImage::Pixel pixel;
    std::transform(components.begin(), components.end(), pixel.begin(),
                   [](float component) { return static_cast<std::uint16_t>(std::lround(component * 65535)); });
    return pixel;
}

GObjectPointer<PangoLayout> makeLayout(std::string_view text, const TextStyle& style) {
    // A font map of its own: the library's shared one belongs to a thread.
    const GObjectPointer<PangoFontMap> fonts(pango_cairo_font_map_new());
    const GObjectPointer<PangoContext> context(pango_font_map_create_context(fonts.get()));
    GObjectPointer<PangoLayout> layout(pango_layout_new(context.get()));
    const FontPointer font(
        pango_font_description_from_string(style.isMonospaced ? "DejaVu Sans Mono, Monospace" : "DejaVu Sans, Sans"));
    pango_font_description_set_absolute_size(font.get(), static_cast<double>(style.size) * PANGO_SCALE);
    pango_layout_set_font_description(layout.get(), font.get());
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    if (const int missing = pango_layout_get_unknown_glyphs_count(layout.get()); missing > 0) {
        throw JobError("the fonts of this machine lack " + std::to_string(missing) + " of the characters of " +
                       inQuotes(text));
    }
    return layout;
}

}  // namespace

OverlayImage textImage(std::string_view text, const TextStyle& style) {
    const auto layout = makeLayout(text, style);
    PangoRectangle extents;
    pango_layout_get_pixel_extents(layout.get(), nullptr, &extents);
    // Of even size, so that the box covers every chroma sample that it touches wholly.
    OverlayImage image((extents.width + 2 * style.padding + 1) / 2 * 2, (extents.height + 1) / 2 * 2);
    const SurfacePointer surface(cairo_image_surface_create(CAIRO_FORMAT_A8, image.width, image.height));
    const CairoPointer cairo(cairo_create(surface.get()));
    cairo_move_to(cairo.get(), style.padding - extents.x, -extents.y);
    pango_cairo_show_layout(cairo.get(), layout.get());
    if (const cairo_status_t status = cairo_status(cairo.get()); status != CAIRO_STATUS_SUCCESS) {
        throw JobError("cannot draw the text " + inQuotes(text) + ": " + cairo_status_to_string(status));
    }
    cairo_surface_flush(surface.get());

    const OverlayImage::Pixel font = pixelOf(style.font);
    const OverlayImage::Pixel box = pixelOf(style.box.value_or(style.font));
    const unsigned char* row = cairo_image_surface_get_data(surface.get());
    for (int y = 0; y < image.height; ++y, row += cairo_image_surface_get_stride(surface.get())) {
        for (int x = 0; x < image.width; ++x) {
            OverlayImage::Pixel& pixel = image.at(x, y);
            const unsigned coverage = row[x];
            for (std::size_t i = 0; i < 3; ++i) {
                pixel[i] = static_cast<std::uint16_t>((font[i] * coverage + box[i] * (255 - coverage)) / 255);
            }
            pixel[3] = style.box ? 65535 : static_cast<std::uint16_t>(coverage * 257);
        }
    }
    return image;
}

}  // namespace corvex::tool
