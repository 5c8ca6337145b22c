// Image files: round trips through every format, and every kind of bad file.
#include "TestSupport.h"
#include "hosts/FileMetadata.h"
#include "hosts/ImageFiles.h"

#include <QColorSpace>
#include <exiv2/exiv2.hpp>
#include <gtest/gtest.h>
#include <jpeglib.h>
#include <tiffio.h>
#include <zlib.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

using namespace plumet::hosts;
using namespace plumet::hosts::testing;

namespace {

void ExpectSamePixels(const HostImage& a, const HostImage& b) {
    ASSERT_EQ(a.width, b.width);
    ASSERT_EQ(a.height, b.height);
    ASSERT_EQ(a.model, b.model);
    ASSERT_EQ(a.hasAlpha, b.hasAlpha);
    EXPECT_EQ(a.pixels, b.pixels);
}

HostImage RoundTrip(const std::string& path, const HostImage& image) {
    std::string error;
    EXPECT_TRUE(WriteImageFile(path, image, error)) << error;
    HostImage read;
    EXPECT_TRUE(ReadImageFile(path, read, error)) << error;
    return read;
}

// A TIFF open for writing, its size, samples and colour kind set.
TIFF* NewTiff(const std::string& path, uint32_t width, uint32_t height, uint16_t bits,
              uint16_t samples, uint16_t photometric) {
    TIFF* t = TIFFOpen(path.c_str(), "w");
    if (!t) return nullptr;
    TIFFSetField(t, TIFFTAG_IMAGEWIDTH, width);
    TIFFSetField(t, TIFFTAG_IMAGELENGTH, height);
    TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, bits);
    TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, samples);
    TIFFSetField(t, TIFFTAG_PHOTOMETRIC, photometric);
    return t;
}

// A PNG of flat grey rows; `data` false leaves the pixel data out, for a
// file whose header alone is read.
std::string FlatPng(uint32_t width, uint32_t height, bool data) {
    const auto chunk = [](const char* type, const std::string& body) {
        std::string out;
        for (uint32_t v : {uint32_t(body.size())})
            for (int k = 3; k >= 0; --k)
                out += char(v >> (8 * k));
        const std::string typed = type + body;
        const uLong crc =
            crc32(0, reinterpret_cast<const Bytef*>(typed.data()), uInt(typed.size()));
        out += typed;
        for (int k = 3; k >= 0; --k)
            out += char(crc >> (8 * k));
        return out;
    };
    std::string header;
    for (uint32_t v : {width, height})
        for (int k = 3; k >= 0; --k)
            header += char(v >> (8 * k));
    header += std::string("\x08\x00\x00\x00\x00", 5); // 8-bit grey
    std::string rows;
    if (data)
        for (uint32_t r = 0; r < height; ++r)
            rows += '\0' + std::string(width, char(128));
    std::string packed(compressBound(uLong(rows.size())), '\0');
    uLongf size = uLongf(packed.size());
    compress2(reinterpret_cast<Bytef*>(packed.data()), &size,
              reinterpret_cast<const Bytef*>(rows.data()), uLong(rows.size()), 1);
    packed.resize(size);
    return "\x89PNG\r\n\x1a\n" + chunk("IHDR", header) + chunk("IDAT", packed) + chunk("IEND", "");
}

std::string ExifText(const std::string& path, const char* key) {
    auto image = Exiv2::ImageFactory::open(path);
    image->readMetadata();
    if (key[0] == 'X') {
        const auto at = image->xmpData().findKey(Exiv2::XmpKey(key));
        return at == image->xmpData().end() ? "" : at->toString();
    }
    if (key[0] == 'I') {
        const auto at = image->iptcData().findKey(Exiv2::IptcKey(key));
        return at == image->iptcData().end() ? "" : at->toString();
    }
    const auto at = image->exifData().findKey(Exiv2::ExifKey(key));
    return at == image->exifData().end() ? "" : at->toString();
}

// Writes a JPEG with libjpeg itself, as other programs do: CMYK stored
// inverted under an Adobe marker, as image editors save it, or RGB with no
// JFIF header, as a camera saves it.
void WriteJpeg(const std::string& path, const HostImage& image,
               const std::vector<uint8_t>& profile = {}) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    ASSERT_NE(file, nullptr);
    jpeg_compress_struct c;
    jpeg_error_mgr errors;
    c.err = jpeg_std_error(&errors);
    jpeg_create_compress(&c);
    jpeg_stdio_dest(&c, file);
    const bool cmyk = image.model == ColourModel::CMYK;
    c.image_width = JDIMENSION(image.width);
    c.image_height = JDIMENSION(image.height);
    c.input_components = image.Planes();
    c.in_color_space = cmyk ? JCS_CMYK : JCS_RGB;
    jpeg_set_defaults(&c);
    if (cmyk) jpeg_set_colorspace(&c, JCS_YCCK);
    c.write_JFIF_header = FALSE;
    jpeg_set_quality(&c, 95, TRUE);
    jpeg_start_compress(&c, TRUE);
    if (!profile.empty()) jpeg_write_icc_profile(&c, profile.data(), unsigned(profile.size()));
    std::vector<uint8_t> row(image.RowBytes());
    for (int r = 0; r < image.height; ++r) {
        for (size_t i = 0; i < row.size(); ++i)
            row[i] = cmyk ? uint8_t(255 - image.Pixel(r, 0)[i]) : image.Pixel(r, 0)[i];
        JSAMPROW rows[1] = {row.data()};
        jpeg_write_scanlines(&c, rows, 1);
    }
    jpeg_finish_compress(&c);
    jpeg_destroy_compress(&c);
    std::fclose(file);
}

// The largest difference between two images' bytes.
int Worst(const HostImage& a, const HostImage& b) {
    int worst = 0;
    for (size_t i = 0; i < std::min(a.pixels.size(), b.pixels.size()); ++i)
        worst = std::max(worst, std::abs(int(a.pixels[i]) - int(b.pixels[i])));
    return worst;
}

} // namespace

TEST(HostImageFiles, LosslessFormatsRoundTripExactly) {
    const std::string dir = ScratchDir("lossless");
    struct Case {
        const char* file;
        ColourModel model;
        bool alpha;
    } cases[] = {{"rgb.png", ColourModel::RGB, false},
                 {"rgba.png", ColourModel::RGB, true},
                 {"rgb.tif", ColourModel::RGB, false},
                 {"rgba.tiff", ColourModel::RGB, true},
                 {"cmyk.tif", ColourModel::CMYK, false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        const HostImage image = Pattern(37, 23, c.model, c.alpha);
        ExpectSamePixels(RoundTrip(dir + "/" + c.file, image), image);
    }
}

TEST(HostImageFiles, JpegKeepsColoursCloselyAndFlattensTransparencyOverWhite) {
    const std::string dir = ScratchDir("jpeg");
    HostImage flat;
    std::string error;
    ASSERT_TRUE(MakeImage(32, 16, ColourModel::RGB, false, flat, error));
    for (int r = 0; r < 16; ++r)
        for (int c = 0; c < 32; ++c) {
            uint8_t* px = flat.Pixel(r, c);
            px[0] = uint8_t(c * 8), px[1] = 128, px[2] = uint8_t(255 - r * 8);
        }
    const HostImage read = RoundTrip(dir + "/flat.jpg", flat);
    ASSERT_EQ(read.width, 32);
    ASSERT_FALSE(read.hasAlpha);
    int worst = 0;
    for (size_t i = 0; i < read.pixels.size(); ++i)
        worst = std::max(worst, std::abs(int(read.pixels[i]) - int(flat.pixels[i])));
    EXPECT_LT(worst, 24);

    // A fully transparent layer comes out white; an opaque one keeps its colour.
    HostImage layer;
    ASSERT_TRUE(MakeImage(16, 16, ColourModel::RGB, true, layer, error));
    for (int r = 0; r < 16; ++r)
        for (int c = 0; c < 16; ++c) {
            uint8_t* px = layer.Pixel(r, c);
            px[0] = 0, px[1] = 0, px[2] = 200, px[3] = c < 8 ? 0 : 255;
        }
    const HostImage flattened = RoundTrip(dir + "/layer.jpeg", layer);
    ASSERT_FALSE(flattened.hasAlpha);
    EXPECT_GT(flattened.Pixel(8, 2)[0], 230);
    EXPECT_LT(flattened.Pixel(8, 13)[0], 30);
    EXPECT_GT(flattened.Pixel(8, 13)[2], 170);
}

TEST(HostImageFiles, OtherTiffLayoutsAreRead) {
    const std::string dir = ScratchDir("tifflayouts");
    // CMYK with separate planes, and a tiled RGB, written with libtiff itself.
    const HostImage cmyk = Pattern(20, 9, ColourModel::CMYK, false);
    {
        TIFF* t = NewTiff(dir + "/planar.tif", 20, 9, 8, 4, PHOTOMETRIC_SEPARATED);
        ASSERT_NE(t, nullptr);
        TIFFSetField(t, TIFFTAG_PLANARCONFIG, PLANARCONFIG_SEPARATE);
        TIFFSetField(t, TIFFTAG_ROWSPERSTRIP, 9);
        for (uint16_t s = 0; s < 4; ++s)
            for (int r = 0; r < 9; ++r) {
                uint8_t line[20];
                for (int c = 0; c < 20; ++c)
                    line[c] = cmyk.Pixel(r, c)[s];
                ASSERT_GE(TIFFWriteScanline(t, line, uint32_t(r), s), 0);
            }
        TIFFClose(t);
    }
    const HostImage rgb = Pattern(40, 40, ColourModel::RGB, false);
    {
        TIFF* t = NewTiff(dir + "/tiled.tif", 40, 40, 8, 3, PHOTOMETRIC_RGB);
        ASSERT_NE(t, nullptr);
        TIFFSetField(t, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        TIFFSetField(t, TIFFTAG_TILEWIDTH, 16);
        TIFFSetField(t, TIFFTAG_TILELENGTH, 16);
        std::vector<uint8_t> tile(16 * 16 * 3);
        for (int ty = 0; ty < 40; ty += 16)
            for (int tx = 0; tx < 40; tx += 16) {
                for (int r = 0; r < 16; ++r)
                    for (int c = 0; c < 16; ++c)
                        for (int p = 0; p < 3; ++p)
                            tile[size_t((r * 16 + c) * 3 + p)] =
                                ty + r < 40 && tx + c < 40 ? rgb.Pixel(ty + r, tx + c)[p] : 0;
                ASSERT_GE(TIFFWriteTile(t, tile.data(), uint32_t(tx), uint32_t(ty), 0, 0), 0);
            }
        TIFFClose(t);
    }
    HostImage read;
    std::string error;
    ASSERT_TRUE(ReadImageFile(dir + "/planar.tif", read, error)) << error;
    ExpectSamePixels(read, cmyk);
    ASSERT_TRUE(ReadImageFile(dir + "/tiled.tif", read, error)) << error;
    ExpectSamePixels(read, rgb);
}

TEST(HostImageFiles, DeepAndTiledCmykTiffIsReadAsEightBitCmyk) {
    const std::string dir = ScratchDir("deepcmyk");
    constexpr int w = 21, h = 18, tile = 16;
    const HostImage want = Pattern(w, h, ColourModel::CMYK, false);
    // A 16-bit sample whose nearest 8-bit value is the pattern's, but whose
    // high byte alone is not: truncating or misplacing a sample shows.
    const auto deep = [](uint8_t v) { return uint16_t(v * 257 + (v < 128 ? 128 : -128)); };
    struct Case {
        const char* name;
        uint16_t bits, planar, orientation;
        bool tiled;
    } cases[] = {{"deep-strips", 16, PLANARCONFIG_CONTIG, ORIENTATION_TOPLEFT, false},
                 {"deep-tiles-planes", 16, PLANARCONFIG_SEPARATE, ORIENTATION_TOPLEFT, true},
                 {"tiles-turned", 8, PLANARCONFIG_CONTIG, ORIENTATION_RIGHTTOP, true}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        // Stored as the orientation says: for "right, top" the stored rows are
        // the picture's columns, right to left.
        const bool across = c.orientation == ORIENTATION_RIGHTTOP;
        const int sw = across ? h : w, sh = across ? w : h;
        const auto stored = [&](int r, int col, int p) {
            return across ? want.Pixel(col, w - 1 - r)[p] : want.Pixel(r, col)[p];
        };
        const std::string in = dir + "/" + c.name + ".tif";
        TIFF* t = NewTiff(in, uint32_t(sw), uint32_t(sh), c.bits, 4, PHOTOMETRIC_SEPARATED);
        ASSERT_NE(t, nullptr);
        TIFFSetField(t, TIFFTAG_PLANARCONFIG, c.planar);
        TIFFSetField(t, TIFFTAG_ORIENTATION, c.orientation);
        TIFFSetField(t, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
        const bool contig = c.planar == PLANARCONFIG_CONTIG;
        const int perPixel = contig ? 4 : 1, across16 = c.tiled ? tile : sw;
        const int down = c.tiled ? tile : 1;
        if (c.tiled) {
            TIFFSetField(t, TIFFTAG_TILEWIDTH, tile);
            TIFFSetField(t, TIFFTAG_TILELENGTH, tile);
        } else {
            TIFFSetField(t, TIFFTAG_ROWSPERSTRIP, 4);
        }
        std::vector<uint16_t> block(size_t(across16 * down * perPixel));
        for (int s = 0; s < (contig ? 1 : 4); ++s)
            for (int top = 0; top < sh; top += down)
                for (int left = 0; left < sw; left += across16) {
                    size_t k = 0;
                    for (int r = top; r < top + down; ++r)
                        for (int col = left; col < left + across16; ++col)
                            for (int p = contig ? 0 : s; p < (contig ? 4 : s + 1); ++p) {
                                const uint8_t v = r < sh && col < sw ? stored(r, col, p) : 0;
                                block[k++] = c.bits == 16 ? deep(v) : v;
                            }
                    if (c.bits == 8) // the same values, one byte each
                        for (size_t i = 0; i < k; ++i)
                            reinterpret_cast<uint8_t*>(block.data())[i] = uint8_t(block[i]);
                    const tmsize_t done =
                        c.tiled ? TIFFWriteTile(t, block.data(), uint32_t(left), uint32_t(top), 0,
                                                uint16_t(s))
                                : TIFFWriteScanline(t, block.data(), uint32_t(top), uint16_t(s));
                    ASSERT_GE(done, 0);
                }
        TIFFClose(t);

        HostImage read;
        ImageExtras extras;
        std::string error;
        ASSERT_TRUE(ReadImageFile(in, read, error, &extras)) << error;
        ExpectSamePixels(read, want);
        EXPECT_EQ(extras.notes.size(), c.bits == 16 ? 1u : 0u);

        // Cut short, the file is refused with the reason, not read in part.
        const std::string whole = ReadText(in);
        WriteBytes(dir + "/cut.tif", whole.substr(0, whole.size() * 2 / 3));
        HostImage cut;
        EXPECT_FALSE(ReadImageFile(dir + "/cut.tif", cut, error));
        EXPECT_NE(error.find("cut.tif"), std::string::npos) << error;
        EXPECT_TRUE(cut.pixels.empty());
    }

    // Transparency and inks other than CMYK are still refused by name.
    TIFF* t = NewTiff(dir + "/alpha.tif", 2, 1, 16, 5, PHOTOMETRIC_SEPARATED);
    ASSERT_NE(t, nullptr);
    const uint16_t alpha[1] = {EXTRASAMPLE_UNASSALPHA};
    TIFFSetField(t, TIFFTAG_EXTRASAMPLES, 1, alpha);
    std::vector<uint16_t> line(10, 1000);
    TIFFWriteScanline(t, line.data(), 0, 0);
    TIFFClose(t);
    t = NewTiff(dir + "/inks.tif", 2, 1, 16, 4, PHOTOMETRIC_SEPARATED);
    ASSERT_NE(t, nullptr);
    TIFFSetField(t, TIFFTAG_INKSET, INKSET_MULTIINK);
    TIFFWriteScanline(t, line.data(), 0, 0);
    TIFFClose(t);
    HostImage read;
    std::string error;
    EXPECT_FALSE(ReadImageFile(dir + "/alpha.tif", read, error));
    EXPECT_NE(error.find("CMYK with transparency"), std::string::npos) << error;
    EXPECT_FALSE(ReadImageFile(dir + "/inks.tif", read, error));
    EXPECT_NE(error.find("other than CMYK"), std::string::npos) << error;
}

TEST(HostImageFiles, BadInputGivesAMessageNamingTheFile) {
    const std::string dir = ScratchDir("badinput");
    const HostImage image = Pattern(30, 30, ColourModel::RGB, false);
    std::string error;
    ASSERT_TRUE(WriteImageFile(dir + "/good.png", image, error));
    ASSERT_TRUE(WriteImageFile(dir + "/good.tif", image, error));
    ASSERT_TRUE(WriteImageFile(dir + "/good.jpg", image, error));
    const std::string png = ReadText(dir + "/good.png");
    const std::string tif = ReadText(dir + "/good.tif");
    const std::string jpg = ReadText(dir + "/good.jpg");
    WriteBytes(dir + "/cut.jpg", jpg.substr(0, jpg.size() * 2 / 3));
    WriteBytes(dir + "/text.png", "this is not an image\n");
    WriteBytes(dir + "/cut.png", png.substr(0, png.size() / 2));
    WriteBytes(dir + "/cut.tif", tif.substr(0, 40));
    WriteBytes(dir + "/headonly.tif", std::string("II*\0\x08\0\0\0", 8));
    WriteBytes(dir + "/empty.jpg", "");
    for (const char* name : {"missing.png", "text.png", "cut.png", "cut.tif", "headonly.tif",
                             "empty.jpg", "cut.jpg"}) {
        SCOPED_TRACE(name);
        HostImage read;
        error.clear();
        EXPECT_FALSE(ReadImageFile(dir + "/" + name, read, error));
        EXPECT_NE(error.find(name), std::string::npos) << error;
        EXPECT_EQ(read.pixels.size(), 0u);
    }
}

TEST(HostImageFiles, WritingRefusesWhatTheFormatCannotHoldAndLeavesNoFile) {
    const std::string dir = ScratchDir("badoutput");
    const HostImage cmyk = Pattern(8, 8, ColourModel::CMYK, false);
    const HostImage rgb = Pattern(8, 8, ColourModel::RGB, false);
    std::string error;
    EXPECT_FALSE(WriteImageFile(dir + "/cmyk.png", cmyk, error));
    EXPECT_FALSE(WriteImageFile(dir + "/rgb.bmp", rgb, error));
    EXPECT_NE(error.find("unsupported output format"), std::string::npos) << error;
    EXPECT_FALSE(WriteImageFile(dir + "/no/such/dir/rgb.png", rgb, error));
    EXPECT_FALSE(WriteImageFile(dir + "/empty.png", HostImage{}, error));
    std::filesystem::create_directory(dir + "/folder.png");
    EXPECT_FALSE(CanWriteImageFile(dir + "/folder.png", rgb, error));
    EXPECT_NE(error.find("is a directory"), std::string::npos) << error;
    EXPECT_FALSE(CanWriteImageFile(dir + "/no/rgb.png", rgb, error));
    std::filesystem::remove(dir + "/folder.png");
    // Nothing, not even a temporary file, is left behind.
    EXPECT_TRUE(std::filesystem::is_empty(dir));

    // A symbolic link is written through: the link stays, its target changes.
    std::filesystem::create_symlink("target.png", dir + "/link.png");
    ASSERT_TRUE(WriteImageFile(dir + "/link.png", rgb, error)) << error;
    EXPECT_TRUE(std::filesystem::is_symlink(dir + "/link.png"));
    HostImage read;
    ASSERT_TRUE(ReadImageFile(dir + "/target.png", read, error)) << error;
    ExpectSamePixels(read, rgb);
}

TEST(HostImageFiles, SizesTheInterfaceCannotCarryAreRefused) {
    HostImage image;
    std::string error;
    EXPECT_FALSE(MakeImage(40000, 10, ColourModel::RGB, false, image, error));
    EXPECT_NE(error.find("32767"), std::string::npos);
    // A TIFF wider than the interface allows is refused before any pixel is
    // read.
    const std::string dir = ScratchDir("hugetiff");
    TIFF* t = NewTiff(dir + "/huge.tif", 100000, 1, 8, 3, PHOTOMETRIC_RGB);
    ASSERT_NE(t, nullptr);
    std::vector<uint8_t> line(300000, 7);
    TIFFWriteScanline(t, line.data(), 0, 0);
    TIFFClose(t);
    EXPECT_FALSE(ReadImageFile(dir + "/huge.tif", image, error));
    EXPECT_NE(error.find("100000"), std::string::npos) << error;

    // A photo larger than a desktop program's reader allows at first is read;
    // one beyond what the host holds is refused as too large, unread.
    WriteBytes(dir + "/photo.png", FlatPng(6000, 5600, true));
    ASSERT_TRUE(ReadImageFile(dir + "/photo.png", image, error)) << error;
    EXPECT_EQ(image.Pixel(5599, 5999)[2], 128);
    WriteBytes(dir + "/vast.png", FlatPng(30000, 30000, false));
    EXPECT_FALSE(ReadImageFile(dir + "/vast.png", image, error));
    EXPECT_NE(error.find("too large"), std::string::npos) << error;
}

TEST(HostImageFiles, WhatTheFileHoldsBesidesPixelsGoesIntoTheOutput) {
    const std::string dir = ScratchDir("extras");
    ImageExtras given;
    given.dpiX = given.dpiY = 300;
    const QByteArray icc = QColorSpace(QColorSpace::DisplayP3).iccProfile();
    given.iccProfile.assign(icc.begin(), icc.end());
    std::string error;
    // A camera's picture: stored on its side, with EXIF that says to turn it.
    ASSERT_TRUE(WriteImageFile(dir + "/photo.jpg", Pattern(40, 20, ColourModel::RGB, false), error,
                               &given));
    {
        auto image = Exiv2::ImageFactory::open(dir + "/photo.jpg");
        image->readMetadata();
        image->exifData()["Exif.Image.Orientation"] = uint16_t(6);
        image->exifData()["Exif.Image.Model"] = "Plumet Test";
        image->exifData()["Exif.Photo.PixelXDimension"] = uint32_t(40);
        image->xmpData()["Xmp.dc.title"] = "Banner";
        image->iptcData()["Iptc.Application2.Caption"] = "By the sea";
        image->writeMetadata();
    }
    HostImage read;
    ImageExtras extras;
    ASSERT_TRUE(ReadImageFile(dir + "/photo.jpg", read, error, &extras)) << error;
    EXPECT_EQ(read.width, 20) << "turned upright";
    for (const char* name : {"out.png", "out.jpg", "out.tif"}) {
        SCOPED_TRACE(name);
        const std::string out = dir + "/" + name;
        ASSERT_TRUE(WriteImageFile(out, read, error, &extras)) << error;
        HostImage again;
        ImageExtras kept;
        ASSERT_TRUE(ReadImageFile(out, again, error, &kept)) << error;
        EXPECT_EQ(again.width, 20) << "not turned twice";
        EXPECT_NEAR(kept.dpiX, 300, 0.1);
        EXPECT_NEAR(kept.dpiY, 300, 0.1);
        EXPECT_EQ(kept.iccProfile, given.iccProfile);
        EXPECT_EQ(ExifText(out, "Exif.Image.Model"), "Plumet Test");
        EXPECT_EQ(ExifText(out, "Exif.Image.Orientation"), "1");
        EXPECT_EQ(ExifText(out, "Exif.Photo.PixelXDimension"), "20");
        EXPECT_EQ(ExifText(out, "Xmp.dc.title"), "lang=\"x-default\" Banner");
        EXPECT_EQ(ExifText(out, "Iptc.Application2.Caption"), "By the sea");
        EXPECT_TRUE(kept.notes.empty());
    }

    // 16 bits a channel are read, and the reader says what becomes of them.
    TIFF* t = NewTiff(dir + "/deep.tif", 4, 1, 16, 3, PHOTOMETRIC_RGB);
    ASSERT_NE(t, nullptr);
    const std::vector<uint16_t> line(12, 0x8000);
    TIFFWriteScanline(t, const_cast<uint16_t*>(line.data()), 0, 0);
    TIFFClose(t);
    ASSERT_TRUE(ReadImageFile(dir + "/deep.tif", read, error, &extras)) << error;
    EXPECT_EQ(extras.notes, std::vector<std::string>{kDeepImageNote});

    // A grey image is filtered as RGB, and the reader says so, in PNG and TIFF.
    WriteBytes(dir + "/grey.png", FlatPng(3, 2, true));
    t = NewTiff(dir + "/grey.tif", 3, 1, 8, 1, PHOTOMETRIC_MINISBLACK);
    ASSERT_NE(t, nullptr);
    const uint8_t grey[3] = {10, 128, 250};
    TIFFWriteScanline(t, const_cast<uint8_t*>(grey), 0, 0);
    TIFFClose(t);
    for (const char* name : {"grey.png", "grey.tif"}) {
        SCOPED_TRACE(name);
        ImageExtras said;
        ASSERT_TRUE(ReadImageFile(dir + "/" + name, read, error, &said)) << error;
        EXPECT_EQ(read.model, ColourModel::RGB);
        EXPECT_EQ(said.notes, std::vector<std::string>{kGreyImageNote});
    }
}

TEST(HostImageFiles, TiffStoredTurnedComesOutUpright) {
    const std::string dir = ScratchDir("tiffturned");
    constexpr int w = 5, h = 3;
    for (const ColourModel model : {ColourModel::CMYK, ColourModel::RGB}) {
        const HostImage stored = Pattern(w, h, model, false);
        const int planes = stored.Planes();
        // The upright size, and where the stored first row lands in the
        // upright picture: mirrored (2, 4), turned half round (3), along the
        // left or right side (5 to 8).
        struct Case {
            uint16_t orientation;
            int width, height;
            int row0, col0, rowStep, colStep;
        } cases[] = {{2, w, h, 0, w - 1, 0, -1}, {3, w, h, h - 1, w - 1, 0, -1},
                     {4, w, h, h - 1, 0, 0, 1},  {5, h, w, 0, 0, 1, 0},
                     {6, h, w, 0, h - 1, 1, 0},  {7, h, w, w - 1, h - 1, -1, 0},
                     {8, h, w, w - 1, 0, -1, 0}};
        for (const Case& c : cases) {
            SCOPED_TRACE(DescribeImage(stored) + ", orientation " + std::to_string(c.orientation));
            const std::string in = dir + "/in" + std::to_string(c.orientation) + ".tif";
            TIFF* t = NewTiff(in, w, h, 8, uint16_t(planes),
                              model == ColourModel::CMYK ? PHOTOMETRIC_SEPARATED : PHOTOMETRIC_RGB);
            ASSERT_NE(t, nullptr);
            TIFFSetField(t, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
            TIFFSetField(t, TIFFTAG_ORIENTATION, c.orientation);
            TIFFSetField(t, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
            TIFFSetField(t, TIFFTAG_XRESOLUTION, 100.f);
            TIFFSetField(t, TIFFTAG_YRESOLUTION, 200.f);
            for (int r = 0; r < h; ++r) {
                std::vector<uint8_t> line(stored.Pixel(r, 0), stored.Pixel(r, 0) + w * planes);
                ASSERT_GE(TIFFWriteScanline(t, line.data(), uint32_t(r), 0), 0);
            }
            TIFFClose(t);

            HostImage read;
            ImageExtras extras;
            std::string error;
            ASSERT_TRUE(ReadImageFile(in, read, error, &extras)) << error;
            ASSERT_EQ(read.width, c.width);
            ASSERT_EQ(read.height, c.height);
            for (int col = 0; col < w; ++col)
                for (int p = 0; p < planes; ++p)
                    ASSERT_EQ(read.Pixel(c.row0 + col * c.rowStep, c.col0 + col * c.colStep)[p],
                              stored.Pixel(0, col)[p])
                        << "column " << col << " plane " << p;
            EXPECT_EQ(extras.dpiX, c.width == w ? 100 : 200);

            // The output is stored upright and says so, and is not turned again.
            const std::string out = dir + "/out" + std::to_string(c.orientation) + ".tif";
            ASSERT_TRUE(WriteImageFile(out, read, error, &extras)) << error;
            t = TIFFOpen(out.c_str(), "r");
            ASSERT_NE(t, nullptr);
            uint16_t orientation = 0;
            TIFFGetFieldDefaulted(t, TIFFTAG_ORIENTATION, &orientation);
            TIFFClose(t);
            EXPECT_EQ(orientation, ORIENTATION_TOPLEFT);
            HostImage again;
            ImageExtras kept;
            ASSERT_TRUE(ReadImageFile(out, again, error, &kept)) << error;
            ExpectSamePixels(again, read);
            EXPECT_EQ(kept.dpiX, extras.dpiX);
        }
    }
}

TEST(HostImageFiles, ColourProfileQtCannotParseIsCarriedAsItIs) {
    const std::string dir = ScratchDir("rawicc");
    // An RGB display profile's header with no tags: it says what it is for,
    // but holds nothing Qt can build a colour space from.
    std::vector<uint8_t> icc(132, 0);
    const auto put = [&icc](size_t at, const char* text) { std::memcpy(&icc[at], text, 4); };
    icc[3] = 132;
    icc[8] = 2, icc[9] = 0x10;
    put(12, "mntr"), put(16, "RGB "), put(20, "XYZ "), put(36, "acsp");
    ASSERT_FALSE(QColorSpace::fromIccProfile(
                     QByteArray(reinterpret_cast<const char*>(icc.data()), qsizetype(icc.size())))
                     .isValid());
    const auto rawProfile = [](const std::string& path) {
        auto image = Exiv2::ImageFactory::open(path);
        image->readMetadata();
        const Exiv2::DataBuf* buf = image->iccProfile();
        return std::vector<uint8_t>(buf->pData_, buf->pData_ + buf->size_);
    };
    std::string error;
    for (const char* input : {"in.png", "in.jpg"}) {
        const std::string in = dir + "/" + input;
        ASSERT_TRUE(WriteImageFile(in, Pattern(12, 8, ColourModel::RGB, false), error)) << error;
        {
            auto image = Exiv2::ImageFactory::open(in);
            image->readMetadata();
            Exiv2::DataBuf buf(icc.data(), long(icc.size()));
            image->setIccProfile(buf, false);
            image->writeMetadata();
        }
        ASSERT_EQ(rawProfile(in), icc);
        HostImage read;
        ImageExtras extras;
        ASSERT_TRUE(ReadImageFile(in, read, error, &extras)) << error;
        EXPECT_EQ(extras.iccProfile, icc) << input;
        for (const char* output : {"out.png", "out.jpg", "out.tif"}) {
            SCOPED_TRACE(std::string(input) + " to " + output);
            const std::string out = dir + "/" + output;
            ASSERT_TRUE(WriteImageFile(out, read, error, &extras)) << error;
            EXPECT_EQ(rawProfile(out), icc);
        }
    }
}

TEST(HostImageFiles, CmykJpegStaysCmykWithItsProfileAndMetadata) {
    const std::string dir = ScratchDir("cmykjpeg");
    // Smooth ink ramps, which JPEG keeps closely, different in every plane.
    constexpr int w = 48, h = 32;
    HostImage inks;
    std::string error;
    ASSERT_TRUE(MakeImage(w, h, ColourModel::CMYK, false, inks, error));
    for (int r = 0; r < h; ++r)
        for (int c = 0; c < w; ++c) {
            uint8_t* px = inks.Pixel(r, c);
            px[0] = uint8_t(c * 5), px[1] = uint8_t(r * 7), px[2] = 200, px[3] = uint8_t(40 + c);
        }
    // A printer's CMYK profile header; its class and colours are what count.
    std::vector<uint8_t> icc(132, 0);
    icc[3] = 132, icc[8] = 2, icc[9] = 0x10;
    std::memcpy(&icc[12], "prtrCMYKLab ", 12);
    std::memcpy(&icc[36], "acsp", 4);
    const std::string in = dir + "/in.jpg";
    WriteJpeg(in, inks, icc);
    {
        auto image = Exiv2::ImageFactory::open(in);
        image->readMetadata();
        image->exifData()["Exif.Image.Orientation"] = uint16_t(6);
        image->exifData()["Exif.Image.Model"] = "Plumet Test";
        image->xmpData()["Xmp.dc.title"] = "Poster";
        image->writeMetadata();
    }
    HostImage read;
    ImageExtras extras;
    ASSERT_TRUE(ReadImageFile(in, read, error, &extras)) << error;
    ASSERT_EQ(read.model, ColourModel::CMYK);
    // Stored on its side: stored (r, c) is upright (c, h - 1 - r).
    ASSERT_EQ(read.width, h);
    ASSERT_EQ(read.height, w);
    HostImage upright;
    ASSERT_TRUE(MakeImage(h, w, ColourModel::CMYK, false, upright, error));
    for (int r = 0; r < h; ++r)
        for (int c = 0; c < w; ++c)
            std::memcpy(upright.Pixel(c, h - 1 - r), inks.Pixel(r, c), 4);
    EXPECT_LT(Worst(read, upright), 12);
    EXPECT_EQ(extras.iccProfile, icc);

    // Written as CMYK JPEG, inverted under the Adobe marker, with what the
    // input held besides pixels; PNG cannot hold CMYK.
    const std::string out = dir + "/out.jpeg";
    ASSERT_TRUE(WriteImageFile(out, read, error, &extras)) << error;
    JpegHeader header;
    ASSERT_TRUE(ReadJpegHeader(out, header));
    EXPECT_TRUE(header.cmyk);
    EXPECT_TRUE(header.inverted);
    HostImage again;
    ImageExtras kept;
    ASSERT_TRUE(ReadImageFile(out, again, error, &kept)) << error;
    ASSERT_EQ(again.model, ColourModel::CMYK);
    ASSERT_EQ(again.width, h) << "not turned twice";
    EXPECT_LT(Worst(again, upright), 16);
    EXPECT_EQ(kept.iccProfile, icc);
    EXPECT_EQ(ExifText(out, "Exif.Image.Model"), "Plumet Test");
    EXPECT_EQ(ExifText(out, "Xmp.dc.title"), "lang=\"x-default\" Poster");
    EXPECT_FALSE(WriteImageFile(dir + "/out.png", read, error, &extras));
    EXPECT_NE(error.find("TIFF or JPEG"), std::string::npos) << error;

    // Cut short, it is refused, not read in part.
    const std::string whole = ReadText(in);
    WriteBytes(dir + "/cut.jpg", whole.substr(0, whole.size() / 2));
    EXPECT_FALSE(ReadImageFile(dir + "/cut.jpg", again, error));
    EXPECT_NE(error.find("cut.jpg"), std::string::npos) << error;
}

TEST(HostImageFiles, JpegResolutionIsTheOneTheFileStates) {
    const std::string dir = ScratchDir("jpegdpi");
    // A camera's JPEG: no JFIF header, 72 dots per inch in its EXIF.
    const std::string camera = dir + "/camera.jpg", bare = dir + "/bare.jpg";
    WriteJpeg(camera, Pattern(16, 8, ColourModel::RGB, false));
    WriteJpeg(bare, Pattern(16, 8, ColourModel::RGB, false));
    {
        auto image = Exiv2::ImageFactory::open(camera);
        image->readMetadata();
        image->exifData()["Exif.Image.XResolution"] = Exiv2::URational(72, 1);
        image->exifData()["Exif.Image.YResolution"] = Exiv2::URational(72, 1);
        image->exifData()["Exif.Image.ResolutionUnit"] = uint16_t(2);
        image->writeMetadata();
    }
    HostImage read;
    ImageExtras extras;
    std::string error;
    ASSERT_TRUE(ReadImageFile(camera, read, error, &extras)) << error;
    EXPECT_EQ(extras.dpiX, 72);
    EXPECT_EQ(extras.dpiY, 72);
    const std::string out = dir + "/out.jpg";
    ASSERT_TRUE(WriteImageFile(out, read, error, &extras)) << error;
    JpegHeader header;
    ASSERT_TRUE(ReadJpegHeader(out, header));
    EXPECT_EQ(header.dpiX, 72) << "the JFIF agrees with the EXIF";
    EXPECT_EQ(ExifText(out, "Exif.Image.XResolution"), "72/1");
    // A JPEG that states none has none, whatever Qt supposes.
    ASSERT_TRUE(ReadImageFile(bare, read, error, &extras)) << error;
    EXPECT_EQ(extras.dpiX, 0);
}
