// JPEG through libjpeg, for what Qt's reader cannot hold: CMYK (and YCCK)
// files are read and written as CMYK, and the header of any JPEG is looked
// at for its colours and whether it states a resolution. Image editors store
// CMYK JPEG inverted (255 = no ink) and say so with an Adobe marker; files
// are read that way when they carry it, and written that way.
#include "hosts/FileMetadata.h"
#include "hosts/ImageFiles.h"

#include <algorithm>
#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <jerror.h>
#include <jpeglib.h>
#include <memory>
#include <vector>

namespace plumet::hosts {

namespace {

// libjpeg reports errors by calling back; they jump back to the call that
// set `jump`, and its messages are kept here rather than printed.
struct JpegErrors {
    jpeg_error_mgr manager{};
    std::jmp_buf jump{};
    char error[JMSG_LENGTH_MAX] = {};
    char damage[JMSG_LENGTH_MAX] = {}; // the first warning that means damage
};

[[noreturn]] void OnJpegError(j_common_ptr info) {
    auto* errors = reinterpret_cast<JpegErrors*>(info->err);
    (*info->err->format_message)(info, errors->error);
    std::longjmp(errors->jump, 1);
}

// The decoder goes on over a file that ends early or holds garbage, filling
// the rest with grey, and only warns: those warnings mean damage.
void OnJpegMessage(j_common_ptr info, int level) {
    auto* errors = reinterpret_cast<JpegErrors*>(info->err);
    if (level >= 0) return; // trace messages
    ++info->err->num_warnings;
    const int code = info->err->msg_code;
    const bool damage = code == JWRN_JPEG_EOF || code == JWRN_EXTRANEOUS_DATA ||
                        code == JWRN_HIT_MARKER || code == JWRN_MUST_RESYNC ||
                        code == JWRN_NOT_SEQUENTIAL;
    if (damage && !errors->damage[0]) (*info->err->format_message)(info, errors->damage);
}

jpeg_error_mgr* SetUp(JpegErrors& errors) {
    jpeg_error_mgr* manager = jpeg_std_error(&errors.manager);
    manager->error_exit = OnJpegError;
    manager->emit_message = OnJpegMessage;
    return manager;
}

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

// The JFIF resolution, when the file states one in real units.
void ReadDensity(const jpeg_decompress_struct& d, JpegHeader& header) {
    if (!d.saw_JFIF_marker || d.X_density == 0 || d.Y_density == 0) return;
    if (d.density_unit != 1 && d.density_unit != 2) return; // 0: an aspect ratio only
    const double perInch = d.density_unit == 2 ? kCentimetresPerInch : 1.0;
    header.dpiX = d.X_density * perInch;
    header.dpiY = d.Y_density * perInch;
}

// Decodes into `made` (the header only when null). No object with a
// destructor lives in this function, so that libjpeg's jump out of an error
// leaves nothing behind.
bool Decode(std::FILE* file, JpegErrors& errors, JpegHeader& header, HostImage* made,
            std::string& error) {
    jpeg_decompress_struct d;
    d.err = SetUp(errors);
    if (setjmp(errors.jump)) {
        jpeg_destroy_decompress(&d);
        error = errors.error;
        return false;
    }
    jpeg_create_decompress(&d);
    jpeg_stdio_src(&d, file);
    jpeg_read_header(&d, TRUE);
    header.cmyk =
        d.num_components == 4 && (d.jpeg_color_space == JCS_CMYK || d.jpeg_color_space == JCS_YCCK);
    header.inverted = d.saw_Adobe_marker;
    ReadDensity(d, header);
    if (!made || !header.cmyk) {
        jpeg_destroy_decompress(&d);
        return true;
    }
    if (!MakeImage(int(std::min<JDIMENSION>(d.image_width, kMaxImageSide + 1)),
                   int(std::min<JDIMENSION>(d.image_height, kMaxImageSide + 1)), ColourModel::CMYK,
                   false, *made, error)) {
        jpeg_destroy_decompress(&d);
        return false;
    }
    d.out_color_space = JCS_CMYK;
    jpeg_start_decompress(&d);
    while (d.output_scanline < d.output_height) {
        JSAMPROW row = made->Pixel(int(d.output_scanline), 0);
        jpeg_read_scanlines(&d, &row, 1);
    }
    jpeg_finish_decompress(&d);
    jpeg_destroy_decompress(&d);
    return true;
}

bool Encode(std::FILE* file, JpegErrors& errors, const HostImage& image, const ImageExtras& extras,
            uint8_t* row, std::string& error) {
    jpeg_compress_struct c;
    c.err = SetUp(errors);
    if (setjmp(errors.jump)) {
        jpeg_destroy_compress(&c);
        error = errors.error;
        return false;
    }
    jpeg_create_compress(&c);
    jpeg_stdio_dest(&c, file);
    c.image_width = JDIMENSION(image.width);
    c.image_height = JDIMENSION(image.height);
    c.input_components = 4;
    c.in_color_space = JCS_CMYK;
    jpeg_set_defaults(&c); // CMYK kept as CMYK, with the Adobe marker
    jpeg_set_quality(&c, kJpegQuality, TRUE);
    if (extras.dpiX > 0 && extras.dpiY > 0) {
        // The resolution goes where readers look for it in any JPEG.
        c.write_JFIF_header = TRUE;
        c.density_unit = 1;
        c.X_density = UINT16(std::clamp(extras.dpiX + 0.5, 1.0, 65535.0));
        c.Y_density = UINT16(std::clamp(extras.dpiY + 0.5, 1.0, 65535.0));
    }
    jpeg_start_compress(&c, TRUE);
    if (!extras.iccProfile.empty())
        jpeg_write_icc_profile(&c, extras.iccProfile.data(), unsigned(extras.iccProfile.size()));
    while (c.next_scanline < c.image_height) {
        const uint8_t* src = image.Pixel(int(c.next_scanline), 0);
        for (size_t i = 0; i < image.RowBytes(); ++i)
            row[i] = uint8_t(255 - src[i]);
        JSAMPROW rows[1] = {row};
        jpeg_write_scanlines(&c, rows, 1);
    }
    jpeg_finish_compress(&c);
    jpeg_destroy_compress(&c);
    return true;
}

} // namespace

bool ReadJpegHeader(const std::string& path, JpegHeader& header) {
    FilePtr file(std::fopen(path.c_str(), "rb"));
    unsigned char start[2] = {};
    if (!file || std::fread(start, 1, 2, file.get()) != 2 || start[0] != 0xFF || start[1] != 0xD8)
        return false;
    std::rewind(file.get());
    JpegErrors errors;
    std::string error;
    return Decode(file.get(), errors, header, nullptr, error);
}

bool ReadCmykJpegFile(const std::string& path, HostImage& image, ImageExtras& extras,
                      std::string& error) {
    FilePtr file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        error = path + ": cannot open: " + std::strerror(errno);
        return false;
    }
    JpegErrors errors;
    JpegHeader header;
    HostImage made;
    if (!Decode(file.get(), errors, header, &made, error)) {
        error = path + ": cannot read the CMYK JPEG: " + error;
        return false;
    }
    if (errors.damage[0]) {
        error = path + ": damaged JPEG (" + errors.damage + ")";
        return false;
    }
    if (header.inverted)
        for (uint8_t& v : made.pixels)
            v = uint8_t(255 - v);
    const uint16_t orientation = FileMetadata::Orientation(path);
    if (!TurnUpright(made, orientation, path, error)) return false;
    extras.dpiX = header.dpiX;
    extras.dpiY = header.dpiY;
    if (StoredAcross(orientation)) std::swap(extras.dpiX, extras.dpiY);
    image = std::move(made);
    return true;
}

bool WriteCmykJpegFile(const std::string& path, const HostImage& image, const ImageExtras& extras,
                       std::string& error) {
    if (image.model != ColourModel::CMYK || image.hasAlpha) {
        error = path + ": only flat CMYK images are written this way";
        return false;
    }
    FilePtr file(std::fopen(path.c_str(), "wb"));
    if (!file) {
        error = path + ": cannot write: " + std::strerror(errno);
        return false;
    }
    JpegErrors errors;
    std::vector<uint8_t> row(image.RowBytes());
    if (!Encode(file.get(), errors, image, extras, row.data(), error)) {
        error = path + ": cannot write: " + error;
        return false;
    }
    if (std::fflush(file.get()) != 0 || std::ferror(file.get())) {
        error = path + ": cannot write: " + std::strerror(errno);
        return false;
    }
    return true;
}

} // namespace plumet::hosts
