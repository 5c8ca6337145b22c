#include "hosts/gimp/DrawablePixels.h"

#include <libgimp/gimp.h>

#include <cstring>
#include <new>
#include <vector>

namespace plumet::hosts::gimp {

namespace {

const Babl* EightBitFormat(bool alpha) {
    return babl_format(alpha ? "R'G'B'A u8" : "R'G'B' u8");
}

// Holds a GeglBuffer for the length of a scope, or until Release.
struct BufferRef {
    GeglBuffer* buffer;
    ~BufferRef() { Release(); }
    void Release() {
        if (buffer) g_object_unref(buffer);
        buffer = nullptr;
    }
};

} // namespace

bool ReadDrawable(gint32 drawable, const DrawableArea& area, HostImage& image, std::string& error) {
    const bool alpha = gimp_drawable_has_alpha(drawable);
    if (!MakeImage(area.width, area.height, ColourModel::RGB, alpha, image, error)) return false;
    BufferRef buffer{gimp_drawable_get_buffer(drawable)};
    if (!buffer.buffer) {
        error = "the layer's pixels cannot be read";
        return false;
    }
    const GeglRectangle rect{area.x, area.y, area.width, area.height};
    gegl_buffer_get(buffer.buffer, &rect, 1.0, EightBitFormat(alpha), image.pixels.data(),
                    gint(image.RowBytes()), GEGL_ABYSS_NONE);
    return true;
}

bool WriteDrawable(gint32 drawable, const DrawableArea& area, const HostImage& source,
                   const HostImage& result, std::string& error) {
    BufferRef buffer{gimp_drawable_get_buffer(drawable)};
    BufferRef shadow{gimp_drawable_get_shadow_buffer(drawable)};
    if (!buffer.buffer || !shadow.buffer) {
        error = "the layer cannot be written";
        return false;
    }
    const GeglRectangle rect{area.x, area.y, area.width, area.height};
    const Babl* eightBit = EightBitFormat(result.hasAlpha);
    const Babl* native = gegl_buffer_get_format(buffer.buffer);
    if (native == eightBit) {
        gegl_buffer_set(shadow.buffer, &rect, 0, eightBit, result.pixels.data(),
                        gint(result.RowBytes()));
    } else {
        const std::size_t pixels = std::size_t(area.width) * std::size_t(area.height);
        const std::size_t bpp = std::size_t(babl_format_get_bytes_per_pixel(native));
        std::vector<uint8_t> kept, out;
        try {
            kept.resize(pixels * bpp);
            out.resize(pixels * bpp);
        } catch (const std::bad_alloc&) {
            error = "out of memory for the layer's pixels";
            return false;
        }
        gegl_buffer_get(buffer.buffer, &rect, 1.0, native, kept.data(), gint(area.width * bpp),
                        GEGL_ABYSS_NONE);
        babl_process(babl_fish(eightBit, native), result.pixels.data(), out.data(), long(pixels));
        const std::size_t planes = std::size_t(result.Planes());
        for (std::size_t i = 0; i < pixels; ++i)
            if (std::memcmp(source.pixels.data() + i * planes, result.pixels.data() + i * planes,
                            planes) == 0)
                std::memcpy(out.data() + i * bpp, kept.data() + i * bpp, bpp);
        gegl_buffer_set(shadow.buffer, &rect, 0, native, out.data(), gint(area.width * bpp));
    }
    // Releasing the shadow hands its last tiles to GIMP before the merge.
    shadow.Release();
    buffer.Release();
    if (!gimp_drawable_merge_shadow(drawable, TRUE)) {
        error = "GIMP refused to take the result into the layer";
        return false;
    }
    gimp_drawable_update(drawable, area.x, area.y, area.width, area.height);
    return true;
}

} // namespace plumet::hosts::gimp
