// TIFF through libtiff. 8-bit RGB and RGB with transparency in strips, and
// CMYK of 8 or 16 bits in strips or tiles, are read sample for sample, so
// that 8-bit files round-trip exactly; any other TIFF that libtiff can decode
// (grey, palette, 16-bit or tiled RGB, YCbCr, ...) is read through its RGBA
// reader. Whatever the orientation tag says, the image
// comes out upright: rows top-down, columns left to right.
#include "hosts/ImageFiles.h"

#include <tiffio.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace plumet::hosts {

namespace {

// libtiff's messages go into the open file's own string, not to stderr.
struct TiffMessages {
    std::string firstError;
};

int OnTiffError(TIFF*, void* user, const char*, const char* fmt, va_list args) {
    auto* messages = static_cast<TiffMessages*>(user);
    if (messages && messages->firstError.empty()) {
        char text[512];
        std::vsnprintf(text, sizeof text, fmt, args);
        messages->firstError = text;
    }
    return 1;
}

int OnTiffWarning(TIFF*, void*, const char*, const char*, va_list) {
    return 1;
}

struct TiffCloser {
    void operator()(TIFF* tif) const { TIFFClose(tif); }
};
using TiffPtr = std::unique_ptr<TIFF, TiffCloser>;

TiffPtr OpenTiff(const std::string& path, const char* mode, TiffMessages& messages) {
    TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
    if (!options) return nullptr;
    TIFFOpenOptionsSetErrorHandlerExtR(options, OnTiffError, &messages);
    TIFFOpenOptionsSetWarningHandlerExtR(options, OnTiffWarning, &messages);
    // A damaged header must not make libtiff ask for gigabytes at once.
    TIFFOpenOptionsSetMaxSingleMemAlloc(options, tmsize_t(kMaxImageBytes));
    TiffPtr tif(TIFFOpenExt(path.c_str(), mode, options));
    TIFFOpenOptionsFree(options);
    return tif;
}

std::string Reason(const TiffMessages& messages, const char* fallback) {
    return messages.firstError.empty() ? fallback : messages.firstError;
}

// Straight alpha from premultiplied colour.
void Unpremultiply(uint8_t* px) {
    const unsigned a = px[3];
    if (a == 0 || a == 255) return;
    for (int k = 0; k < 3; ++k)
        px[k] = uint8_t(std::min(255u, (px[k] * 255u + a / 2) / a));
}

// Puts `count` pixels' samples, as stored from (row, col) on, into the image:
// all of each pixel's colour (and transparency) samples when they are
// stored together, or the one plane `plane` when each has its own. 16-bit
// samples are rounded to the nearest 8-bit value, as libtiff's own reader
// and Qt do for the other deep inputs.
void PutSamples(HostImage& image, int row, int col, int count, const uint8_t* src, int perPixel,
                int sampleBytes, int plane) {
    const int planes = image.Planes();
    const auto sample = [sampleBytes](const uint8_t* at) {
        if (sampleBytes == 1) return *at;
        uint16_t v;
        std::memcpy(&v, at, 2); // libtiff hands samples over in the machine's byte order
        return uint8_t((unsigned(v) + 128u) / 257u);
    };
    uint8_t* dst = image.Pixel(row, col);
    const size_t stride = size_t(perPixel) * size_t(sampleBytes);
    for (int i = 0; i < count; ++i, src += stride, dst += planes) {
        if (plane < 0) {
            for (int p = 0; p < planes; ++p)
                dst[p] = sample(src + p * sampleBytes);
        } else {
            dst[plane] = sample(src);
        }
    }
}

// Reads the samples as stored, in strips or in tiles, 8 or 16 bits each,
// with the planes together or apart.
bool ReadSamples(TIFF* tif, HostImage& image, uint16_t planar, int samples, int bits,
                 bool associated, const std::string& path, const TiffMessages& messages,
                 std::string& error) {
    const bool contig = planar == PLANARCONFIG_CONTIG;
    const int perPixel = contig ? samples : 1;
    const int sampleBytes = bits / 8;
    const int planes = image.Planes();
    const int passes = contig ? 1 : samples;
    const bool tiled = TIFFIsTiled(tif);
    uint32_t tileWidth = uint32_t(image.width), tileLength = 1;
    if (tiled && (!TIFFGetField(tif, TIFFTAG_TILEWIDTH, &tileWidth) ||
                  !TIFFGetField(tif, TIFFTAG_TILELENGTH, &tileLength) || tileWidth == 0 ||
                  tileLength == 0)) {
        error = path + ": damaged TIFF: no tile size";
        return false;
    }
    const uint64_t wanted = uint64_t(tileWidth) * tileLength * perPixel * sampleBytes;
    const uint64_t stored = tiled ? TIFFTileSize64(tif) : uint64_t(TIFFScanlineSize64(tif));
    if (stored < wanted || stored > kMaxImageBytes) {
        error = path + ": inconsistent TIFF " + (tiled ? "tile" : "scanline") + " size";
        return false;
    }
    std::vector<uint8_t> buffer;
    try {
        buffer.resize(size_t(stored));
    } catch (const std::bad_alloc&) {
        error = path + ": out of memory reading the TIFF";
        return false;
    }
    const size_t rowBytes = size_t(tileWidth) * size_t(perPixel) * size_t(sampleBytes);
    for (int pass = 0; pass < passes; ++pass) {
        const int plane = contig ? -1 : pass;
        if (plane >= planes) continue;
        for (uint32_t top = 0; top < uint32_t(image.height); top += tileLength) {
            for (uint32_t left = 0; left < uint32_t(image.width); left += tileWidth) {
                const bool read =
                    tiled ? TIFFReadTile(tif, buffer.data(), left, top, 0, uint16_t(pass)) >= 0
                          : TIFFReadScanline(tif, buffer.data(), top, uint16_t(pass)) >= 0;
                if (!read) {
                    error =
                        path + ": damaged TIFF: " +
                        Reason(messages, tiled ? "cannot read a tile" : "cannot read a scanline");
                    return false;
                }
                const int count = int(std::min<uint32_t>(tileWidth, uint32_t(image.width) - left));
                const int rows = int(std::min<uint32_t>(tileLength, uint32_t(image.height) - top));
                for (int r = 0; r < rows; ++r)
                    PutSamples(image, int(top) + r, int(left), count,
                               buffer.data() + size_t(r) * rowBytes, perPixel, sampleBytes, plane);
            }
        }
    }
    if (associated && image.hasAlpha)
        for (int row = 0; row < image.height; ++row)
            for (int col = 0; col < image.width; ++col)
                Unpremultiply(image.Pixel(row, col));
    return true;
}

// Reads the pixels in the order they are stored (the reader is asked for the
// file's own orientation, so it turns nothing; it could only mirror, not turn
// a quarter).
bool ReadThroughRgba(TIFF* tif, HostImage& image, bool hasAlpha, uint16_t orientation,
                     const std::string& path, const TiffMessages& messages, std::string& error) {
    std::vector<uint32_t> raster;
    try {
        raster.resize(size_t(image.width) * size_t(image.height));
    } catch (const std::bad_alloc&) {
        error = path + ": out of memory reading the TIFF";
        return false;
    }
    if (!TIFFReadRGBAImageOriented(tif, uint32_t(image.width), uint32_t(image.height),
                                   raster.data(), orientation, 0)) {
        error =
            path + ": unsupported or damaged TIFF: " + Reason(messages, "libtiff cannot decode it");
        return false;
    }
    const uint32_t* src = raster.data();
    for (int row = 0; row < image.height; ++row) {
        uint8_t* dst = image.Pixel(row, 0);
        for (int col = 0; col < image.width; ++col, ++src) {
            dst[0] = uint8_t(TIFFGetR(*src));
            dst[1] = uint8_t(TIFFGetG(*src));
            dst[2] = uint8_t(TIFFGetB(*src));
            if (hasAlpha) {
                dst[3] = uint8_t(TIFFGetA(*src));
                Unpremultiply(dst); // the RGBA reader premultiplies
                dst += 4;
            } else {
                dst += 3;
            }
        }
    }
    return true;
}

} // namespace

bool StoredAcross(uint16_t orientation) {
    return orientation >= ORIENTATION_LEFTTOP && orientation <= ORIENTATION_LEFTBOT;
}

// A mirror or a half turn is done in place; a quarter turn needs a second
// buffer the size of the image while it lasts.
bool TurnUpright(HostImage& image, uint16_t orientation, const std::string& path,
                 std::string& error) {
    // Whether the stored rows, and the pixels along them, run against the
    // picture's order (bottom to top or right to left).
    bool rowsBack = false, pixelsBack = false;
    switch (orientation) {
    case ORIENTATION_TOPRIGHT:
        pixelsBack = true;
        break;
    case ORIENTATION_BOTRIGHT:
        rowsBack = pixelsBack = true;
        break;
    case ORIENTATION_BOTLEFT:
        rowsBack = true;
        break;
    case ORIENTATION_LEFTTOP:
        break;
    case ORIENTATION_RIGHTTOP:
        rowsBack = true;
        break;
    case ORIENTATION_RIGHTBOT:
        rowsBack = pixelsBack = true;
        break;
    case ORIENTATION_LEFTBOT:
        pixelsBack = true;
        break;
    default: // top-left, or a value the tag cannot hold: as stored
        return true;
    }
    const int planes = image.Planes();
    const size_t pixelBytes = size_t(planes);
    if (!StoredAcross(orientation)) {
        if (rowsBack)
            for (int row = 0; row < image.height / 2; ++row)
                std::swap_ranges(image.Pixel(row, 0), image.Pixel(row, 0) + image.RowBytes(),
                                 image.Pixel(image.height - 1 - row, 0));
        if (pixelsBack)
            for (int row = 0; row < image.height; ++row)
                for (int col = 0; col < image.width / 2; ++col)
                    std::swap_ranges(image.Pixel(row, col), image.Pixel(row, col) + pixelBytes,
                                     image.Pixel(row, image.width - 1 - col));
        return true;
    }
    HostImage turned;
    if (!MakeImage(image.height, image.width, image.model, image.hasAlpha, turned, error)) {
        error = path + ": " + error;
        return false;
    }
    // Stored row i becomes the picture's column i, stored column j its row j,
    // each counted from the far end when it runs backwards.
    for (int i = 0; i < image.height; ++i) {
        const int toCol = rowsBack ? image.height - 1 - i : i;
        const uint8_t* src = image.Pixel(i, 0);
        for (int j = 0; j < image.width; ++j, src += planes) {
            const int toRow = pixelsBack ? image.width - 1 - j : j;
            std::memcpy(turned.Pixel(toRow, toCol), src, pixelBytes);
        }
    }
    image = std::move(turned);
    return true;
}

namespace {

// The resolution and the colour profile, as far as the file states them; the
// resolution across and down the upright picture.
void ReadExtras(TIFF* tif, uint16_t bits, uint16_t orientation, ImageExtras& extras) {
    float x = 0, y = 0;
    uint16_t unit = RESUNIT_INCH;
    TIFFGetFieldDefaulted(tif, TIFFTAG_RESOLUTIONUNIT, &unit);
    if (unit != RESUNIT_NONE && TIFFGetField(tif, TIFFTAG_XRESOLUTION, &x) &&
        TIFFGetField(tif, TIFFTAG_YRESOLUTION, &y) && x > 0 && y > 0) {
        const double perInch = unit == RESUNIT_CENTIMETER ? kCentimetresPerInch : 1.0;
        extras.dpiX = x * perInch;
        extras.dpiY = y * perInch;
        if (StoredAcross(orientation)) std::swap(extras.dpiX, extras.dpiY);
    }
    uint32_t iccSize = 0;
    const uint8_t* icc = nullptr;
    if (TIFFGetField(tif, TIFFTAG_ICCPROFILE, &iccSize, &icc) && icc && iccSize > 0)
        extras.iccProfile.assign(icc, icc + iccSize);
    if (bits > 8) extras.notes.push_back(kDeepImageNote);
}

} // namespace

bool ReadTiffFile(const std::string& path, HostImage& image, ImageExtras& extras,
                  std::string& error) {
    TiffMessages messages;
    TiffPtr tif = OpenTiff(path, "r", messages);
    if (!tif) {
        error = path + ": cannot read the TIFF: " + Reason(messages, "not a TIFF file");
        return false;
    }
    uint32_t width = 0, height = 0;
    uint16_t bits = 8, samples = 1, photometric = PHOTOMETRIC_RGB, planar = PLANARCONFIG_CONTIG;
    uint16_t inkSet = INKSET_CMYK, sampleFormat = SAMPLEFORMAT_UINT;
    uint16_t extraCount = 0;
    uint16_t* extra = nullptr;
    TIFFGetField(tif.get(), TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tif.get(), TIFFTAG_IMAGELENGTH, &height);
    TIFFGetFieldDefaulted(tif.get(), TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetFieldDefaulted(tif.get(), TIFFTAG_SAMPLESPERPIXEL, &samples);
    TIFFGetFieldDefaulted(tif.get(), TIFFTAG_PLANARCONFIG, &planar);
    TIFFGetFieldDefaulted(tif.get(), TIFFTAG_EXTRASAMPLES, &extraCount, &extra);
    if (!TIFFGetField(tif.get(), TIFFTAG_PHOTOMETRIC, &photometric)) {
        error = path + ": damaged TIFF: no photometric interpretation";
        return false;
    }
    TIFFGetFieldDefaulted(tif.get(), TIFFTAG_INKSET, &inkSet);
    TIFFGetFieldDefaulted(tif.get(), TIFFTAG_SAMPLEFORMAT, &sampleFormat);
    uint16_t orientation = ORIENTATION_TOPLEFT;
    TIFFGetFieldDefaulted(tif.get(), TIFFTAG_ORIENTATION, &orientation);
    if (width == 0 || height == 0 || width > uint32_t(kMaxImageSide) ||
        height > uint32_t(kMaxImageSide)) {
        error = path + ": the TIFF is " + std::to_string(width) + " by " + std::to_string(height) +
                " pixels; between 1 and " + std::to_string(kMaxImageSide) +
                " a side can be filtered";
        return false;
    }
    const bool alphaSample =
        extraCount > 0 && extra &&
        (extra[0] == EXTRASAMPLE_UNASSALPHA || extra[0] == EXTRASAMPLE_ASSOCALPHA);
    const bool associated = alphaSample && extra[0] == EXTRASAMPLE_ASSOCALPHA;
    const bool strips = !TIFFIsTiled(tif.get());

    if (photometric == PHOTOMETRIC_SEPARATED) {
        if (inkSet != INKSET_CMYK || samples - extraCount != 4) {
            error = path + ": unsupported TIFF: separated colour other than CMYK";
            return false;
        }
        if (alphaSample) {
            error = path + ": unsupported TIFF: CMYK with transparency";
            return false;
        }
        if ((bits != 8 && bits != 16) || sampleFormat != SAMPLEFORMAT_UINT) {
            error = path + ": unsupported TIFF: CMYK must have 8 or 16 bits per sample";
            return false;
        }
        HostImage made;
        if (!MakeImage(int(width), int(height), ColourModel::CMYK, false, made, error)) {
            error = path + ": " + error;
            return false;
        }
        if (!ReadSamples(tif.get(), made, planar, samples, bits, false, path, messages, error) ||
            !TurnUpright(made, orientation, path, error))
            return false;
        ReadExtras(tif.get(), bits, orientation, extras);
        image = std::move(made);
        return true;
    }

    const bool direct = photometric == PHOTOMETRIC_RGB && bits == 8 && strips &&
                        (samples == 3 || (samples == 4 && alphaSample));
    HostImage made;
    if (!MakeImage(int(width), int(height), ColourModel::RGB, alphaSample, made, error)) {
        error = path + ": " + error;
        return false;
    }
    const bool ok =
        direct
            ? ReadSamples(tif.get(), made, planar, samples, bits, associated, path, messages, error)
            : ReadThroughRgba(tif.get(), made, alphaSample, orientation, path, messages, error);
    if (!ok || !TurnUpright(made, orientation, path, error)) return false;
    ReadExtras(tif.get(), bits, orientation, extras);
    if (photometric == PHOTOMETRIC_MINISBLACK || photometric == PHOTOMETRIC_MINISWHITE)
        extras.notes.push_back(kGreyImageNote);
    image = std::move(made);
    return true;
}

bool WriteTiffFile(const std::string& path, const HostImage& image, const ImageExtras& extras,
                   std::string& error) {
    TiffMessages messages;
    TiffPtr tif = OpenTiff(path, "w", messages);
    if (!tif) {
        error = path + ": cannot write: " + Reason(messages, "cannot create the file");
        return false;
    }
    TIFF* t = tif.get();
    const int planes = image.Planes();
    TIFFSetField(t, TIFFTAG_IMAGEWIDTH, uint32_t(image.width));
    TIFFSetField(t, TIFFTAG_IMAGELENGTH, uint32_t(image.height));
    TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, uint16_t(8));
    TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, uint16_t(planes));
    TIFFSetField(t, TIFFTAG_PLANARCONFIG, uint16_t(PLANARCONFIG_CONTIG));
    TIFFSetField(t, TIFFTAG_ORIENTATION, uint16_t(ORIENTATION_TOPLEFT));
    TIFFSetField(t, TIFFTAG_COMPRESSION, uint16_t(COMPRESSION_LZW));
    TIFFSetField(t, TIFFTAG_PREDICTOR, uint16_t(PREDICTOR_HORIZONTAL));
    if (image.model == ColourModel::CMYK) {
        TIFFSetField(t, TIFFTAG_PHOTOMETRIC, uint16_t(PHOTOMETRIC_SEPARATED));
        TIFFSetField(t, TIFFTAG_INKSET, uint16_t(INKSET_CMYK));
    } else {
        TIFFSetField(t, TIFFTAG_PHOTOMETRIC, uint16_t(PHOTOMETRIC_RGB));
    }
    if (image.hasAlpha) {
        const uint16_t extra[1] = {EXTRASAMPLE_UNASSALPHA};
        TIFFSetField(t, TIFFTAG_EXTRASAMPLES, uint16_t(1), extra);
    }
    if (extras.dpiX > 0 && extras.dpiY > 0) {
        TIFFSetField(t, TIFFTAG_RESOLUTIONUNIT, uint16_t(RESUNIT_INCH));
        TIFFSetField(t, TIFFTAG_XRESOLUTION, float(extras.dpiX));
        TIFFSetField(t, TIFFTAG_YRESOLUTION, float(extras.dpiY));
    }
    if (!extras.iccProfile.empty())
        TIFFSetField(t, TIFFTAG_ICCPROFILE, uint32_t(extras.iccProfile.size()),
                     extras.iccProfile.data());
    TIFFSetField(t, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(t, 0));
    std::vector<uint8_t> line(image.RowBytes()); // libtiff may scribble on the row it is given
    for (int row = 0; row < image.height; ++row) {
        std::memcpy(line.data(), image.Pixel(row, 0), line.size());
        if (TIFFWriteScanline(t, line.data(), uint32_t(row), 0) < 0) {
            error = path + ": cannot write: " + Reason(messages, "libtiff failed");
            return false;
        }
    }
    if (!TIFFFlush(t)) {
        error = path + ": cannot write: " + Reason(messages, "libtiff failed to flush");
        return false;
    }
    return true;
}

} // namespace plumet::hosts
