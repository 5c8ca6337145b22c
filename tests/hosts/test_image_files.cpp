// Image files: round trips through every format, and every kind of bad file.
#include "TestSupport.h"
#include "hosts/ImageFiles.h"

#include <gtest/gtest.h>
#include <tiffio.h>

#include <cstdlib>
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
        TIFF* t = TIFFOpen((dir + "/planar.tif").c_str(), "w");
        ASSERT_NE(t, nullptr);
        TIFFSetField(t, TIFFTAG_IMAGEWIDTH, 20);
        TIFFSetField(t, TIFFTAG_IMAGELENGTH, 9);
        TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, 8);
        TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, 4);
        TIFFSetField(t, TIFFTAG_PLANARCONFIG, PLANARCONFIG_SEPARATE);
        TIFFSetField(t, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_SEPARATED);
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
        TIFF* t = TIFFOpen((dir + "/tiled.tif").c_str(), "w");
        ASSERT_NE(t, nullptr);
        TIFFSetField(t, TIFFTAG_IMAGEWIDTH, 40);
        TIFFSetField(t, TIFFTAG_IMAGELENGTH, 40);
        TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, 8);
        TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, 3);
        TIFFSetField(t, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        TIFFSetField(t, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
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

TEST(HostImageFiles, BadInputGivesAMessageNamingTheFile) {
    const std::string dir = ScratchDir("badinput");
    const HostImage image = Pattern(30, 30, ColourModel::RGB, false);
    std::string error;
    ASSERT_TRUE(WriteImageFile(dir + "/good.png", image, error));
    ASSERT_TRUE(WriteImageFile(dir + "/good.tif", image, error));
    const std::string png = ReadText(dir + "/good.png");
    const std::string tif = ReadText(dir + "/good.tif");
    WriteBytes(dir + "/text.png", "this is not an image\n");
    WriteBytes(dir + "/cut.png", png.substr(0, png.size() / 2));
    WriteBytes(dir + "/cut.tif", tif.substr(0, 40));
    WriteBytes(dir + "/headonly.tif", std::string("II*\0\x08\0\0\0", 8));
    WriteBytes(dir + "/empty.jpg", "");
    for (const char* name :
         {"missing.png", "text.png", "cut.png", "cut.tif", "headonly.tif", "empty.jpg"}) {
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
    EXPECT_NE(error.find("TIFF"), std::string::npos) << error;
    EXPECT_FALSE(WriteImageFile(dir + "/cmyk.jpg", cmyk, error));
    EXPECT_FALSE(WriteImageFile(dir + "/rgb.bmp", rgb, error));
    EXPECT_NE(error.find("unsupported output format"), std::string::npos) << error;
    EXPECT_FALSE(WriteImageFile(dir + "/no/such/dir/rgb.png", rgb, error));
    EXPECT_FALSE(WriteImageFile(dir + "/empty.png", HostImage{}, error));
    // Nothing, not even a temporary file, is left behind.
    EXPECT_TRUE(std::filesystem::is_empty(dir));
}

TEST(HostImageFiles, SizesTheInterfaceCannotCarryAreRefused) {
    HostImage image;
    std::string error;
    EXPECT_FALSE(MakeImage(40000, 10, ColourModel::RGB, false, image, error));
    EXPECT_NE(error.find("32767"), std::string::npos);
    // A TIFF wider than the interface allows is refused before any pixel is
    // read.
    const std::string dir = ScratchDir("hugetiff");
    TIFF* t = TIFFOpen((dir + "/huge.tif").c_str(), "w");
    ASSERT_NE(t, nullptr);
    TIFFSetField(t, TIFFTAG_IMAGEWIDTH, 100000);
    TIFFSetField(t, TIFFTAG_IMAGELENGTH, 1);
    TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, 3);
    TIFFSetField(t, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    std::vector<uint8_t> line(300000, 7);
    TIFFWriteScanline(t, line.data(), 0, 0);
    TIFFClose(t);
    EXPECT_FALSE(ReadImageFile(dir + "/huge.tif", image, error));
    EXPECT_NE(error.find("100000"), std::string::npos) << error;
}
