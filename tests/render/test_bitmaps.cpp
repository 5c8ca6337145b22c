// Bitmaps from the module's resources and from files.
#include "platform/bitmaps/PlatformBitmap.h"
#include "resources/BuiltInBitmaps.h"
#include "resources/ToolBitmaps.h"

#include <QImage>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>

namespace fs = std::filesystem;

namespace {
fs::path TempDir() {
    fs::path dir = fs::temp_directory_path() / ("plumet-bitmaps-" + std::to_string(getpid()));
    fs::create_directories(dir);
    return dir;
}

QImage Pattern(int w, int h) {
    QImage img(w, h, QImage::Format_RGB32);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            img.setPixel(x, y, qRgb(x * 40 % 256, y * 70 % 256, (x ^ y) * 30 % 256));
    return img;
}
} // namespace

TEST(BuiltInBitmaps, FourTexturesOfFixedSizesAndAtMost256Colours) {
    const std::pair<int, std::pair<int, int>> sizes[] = {
        {9000, {256, 256}}, {9001, {256, 256}}, {9002, {256, 256}}, {9003, {142, 128}}};
    for (const auto& [id, size] : sizes) {
        PlatformBitmap b;
        ASSERT_TRUE(LoadBitmapResource(id, &b)) << id;
        EXPECT_EQ(b.width, size.first);
        EXPECT_EQ(b.height, size.second);
        std::set<uint32_t> colours(b.pixels.begin(), b.pixels.end());
        EXPECT_LE(colours.size(), 256u) << id;
        EXPECT_GT(colours.size(), 16u) << id << " should be a picture, not a flat fill";
        for (uint32_t p : b.pixels)
            ASSERT_EQ(p >> 24, 0u);
        PlatformBitmap again;
        LoadBitmapResource(id, &again);
        EXPECT_EQ(b.pixels, again.pixels) << "the same picture every time";

        QImage img(b.width, b.height, QImage::Format_RGB32);
        for (int y = 0; y < b.height; ++y)
            for (int x = 0; x < b.width; ++x)
                img.setPixel(x, y, 0xFF000000u | b.GetPixel(x, y));
        img.save(QString("%1/builtin-%2.png").arg(PLUMET_TEST_OUTPUT).arg(id));
    }
    PlatformBitmap none;
    EXPECT_FALSE(LoadBitmapResource(8999, &none));
    EXPECT_STREQ(BuiltInTextureName(9003), "Sunflower");
    EXPECT_EQ(BuiltInTextureName(1), nullptr);
}

TEST(BuiltInBitmaps, ToolPicturesAre22By20InSixteenColoursEachOfItsOwn) {
    std::set<std::vector<uint32_t>> pictures;
    for (int id : {120, 121, 122, 123, 124, 125, 126, 127, 128, 129, 9004, 9005, 9006, 9007, 9008,
                   9009, 9010, 9011}) {
        PlatformBitmap b;
        ASSERT_TRUE(LoadBitmapResource(id, &b)) << id;
        EXPECT_EQ(b.width, 22);
        EXPECT_EQ(b.height, 20);
        std::set<uint32_t> colours(b.pixels.begin(), b.pixels.end());
        EXPECT_LE(colours.size(), 16u) << id;
        EXPECT_GE(colours.size(), 3u) << id;
        EXPECT_EQ(b.GetPixel(0, 19) == kButtonFace || b.GetPixel(21, 0) == kButtonFace, true)
            << id << " stands on the button face";
        pictures.insert(b.pixels);
    }
    EXPECT_EQ(pictures.size(), 18u) << "no two tools look alike";
}

TEST(BitmapFiles, BitmapsOfEveryDepthReadLikeTrueColour) {
    const fs::path dir = TempDir();
    const QImage source = Pattern(13, 7); // an odd width, so rows are padded
    struct Case {
        const char* name;
        QImage image;
    } cases[] = {
        {"rgb24.bmp", source.convertToFormat(QImage::Format_RGB888)},
        {"indexed8.bmp", source.convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither)},
        {"mono.bmp", source.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither)},
        {"picture.png", source},
    };
    for (const Case& c : cases) {
        const fs::path path = dir / c.name;
        ASSERT_TRUE(c.image.save(QString::fromStdString(path.string())));
        PlatformBitmap b;
        std::string error;
        ASSERT_TRUE(LoadBitmapFile(path.string(), &b, &error)) << c.name << ": " << error;
        ASSERT_EQ(b.width, 13);
        ASSERT_EQ(b.height, 7);
        const QImage expect = c.image.convertToFormat(QImage::Format_RGB32);
        for (int y = 0; y < 7; ++y)
            for (int x = 0; x < 13; ++x)
                ASSERT_EQ(b.GetPixel(x, y), expect.pixel(x, y) & 0xFFFFFFu)
                    << c.name << " " << x << "," << y;
    }
    // JPEG is lossy: close, not equal.
    const fs::path jpeg = dir / "photo.jpg";
    QImage flat(32, 32, QImage::Format_RGB32);
    flat.fill(qRgb(200, 100, 50));
    ASSERT_TRUE(flat.save(QString::fromStdString(jpeg.string()), "JPEG", 95));
    PlatformBitmap b;
    ASSERT_TRUE(LoadBitmapFile(jpeg.string(), &b, nullptr));
    EXPECT_NEAR(int(b.GetPixel(16, 16) >> 16), 200, 4);
    fs::remove_all(dir);
}

TEST(BitmapFiles, FilesThatAreNotPicturesAreRefusedWithAReason) {
    const fs::path dir = TempDir();
    PlatformBitmap b;
    b.width = 5;
    std::string error;
    EXPECT_FALSE(LoadBitmapFile("", &b, &error));
    EXPECT_FALSE(LoadBitmapFile((dir / "missing.bmp").string(), &b, &error));
    EXPECT_FALSE(error.empty());

    std::ofstream(dir / "text.bmp") << "this is not a bitmap at all";
    EXPECT_FALSE(LoadBitmapFile((dir / "text.bmp").string(), &b, &error));

    // A real bitmap cut short after its header.
    const fs::path whole = dir / "whole.bmp";
    Pattern(64, 64).save(QString::fromStdString(whole.string()));
    std::ifstream in(whole, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), {});
    std::ofstream(dir / "cut.bmp", std::ios::binary) << bytes.substr(0, 80);
    // The reader keeps what it could read of a bitmap cut short, as image
    // editors do; what matters is a picture of the stated size or a refusal.
    PlatformBitmap cut;
    if (LoadBitmapFile((dir / "cut.bmp").string(), &cut, &error)) {
        EXPECT_EQ(cut.pixels.size(), 64u * 64u);
    }

    // A header that claims a picture of 60000 by 60000 pixels.
    std::string huge = bytes.substr(0, 54);
    const int32_t side = 60000;
    std::memcpy(&huge[18], &side, 4);
    std::memcpy(&huge[22], &side, 4);
    std::ofstream(dir / "huge.bmp", std::ios::binary) << huge;
    EXPECT_FALSE(LoadBitmapFile((dir / "huge.bmp").string(), &b, &error));
    EXPECT_EQ(b.width, 5) << "a failed load leaves the bitmap as it was";
    fs::remove_all(dir);
}
