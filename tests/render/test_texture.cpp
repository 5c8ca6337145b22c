// The texture of the text: loading pictures and putting the shader on a group.
#include "render/TextureImage.h"
#include "tests/qd3d/Q3LibraryTest.h"

#include <QImage>
#include <filesystem>

namespace {
using Library = q3test::LibraryTest;

TQ3Uns32 CountObjects(TQ3GroupObject group) {
    TQ3Uns32 n = 0;
    Q3Group_CountObjects(group, &n);
    return n;
}
} // namespace

TEST_F(Library, BuiltInTexturesKeepTheirSizeAndAreOpaque) {
    TextureImage texture;
    EXPECT_FALSE(texture.HasImage());
    ASSERT_TRUE(texture.LoadFromResource(9003));
    EXPECT_EQ(texture.GetWidth(), 142u);
    EXPECT_EQ(texture.GetHeight(), 128u);
    EXPECT_EQ(texture.GetPixel(0, 0) >> 24, 0xFFu);
    // Another built-in one reuses the same record; an unknown id changes nothing.
    ASSERT_TRUE(texture.LoadFromResource(9000));
    EXPECT_EQ(texture.GetWidth(), 256u);
    EXPECT_FALSE(texture.LoadFromResource(42));
    EXPECT_EQ(texture.GetWidth(), 256u);
    EXPECT_TRUE(texture.HasImage());
}

TEST_F(Library, FilesLoadOrFailWithoutHarm) {
    const auto path = std::filesystem::temp_directory_path() / "plumet-texture-test.bmp";
    QImage img(3, 2, QImage::Format_RGB32);
    img.fill(qRgb(10, 20, 30));
    img.setPixel(2, 1, qRgb(200, 100, 50));
    ASSERT_TRUE(img.save(QString::fromStdString(path.string())));
    TextureImage texture;
    std::string p = path.string();
    ASSERT_TRUE(texture.LoadFromFile(p));
    EXPECT_EQ(texture.GetPixel(2, 1), 0xFFC86432u);
    EXPECT_EQ(texture.GetPixel(0, 0), 0xFF0A141Eu);
    std::filesystem::remove(path);

    std::string missing = "/nonexistent/picture.bmp", error;
    EXPECT_FALSE(texture.LoadFromFile(missing, &error));
    EXPECT_FALSE(error.empty());
    std::string empty;
    EXPECT_FALSE(texture.LoadFromFile(empty)) << "no chooser: nothing to ask";
    SetTextureFileChooser([] { return std::string(); });
    EXPECT_FALSE(texture.LoadFromFile(empty)) << "the user cancelled";
    SetTextureFileChooser(nullptr);
}

TEST_F(Library, ApplyPutsOneShaderAtTheHeadAndReplacesItsTexture) {
    TextureImage texture;
    TQ3GroupObject group = Q3DisplayGroup_New();
    texture.Apply(group);
    EXPECT_EQ(CountObjects(group), 0u) << "no picture: no shader";

    const TQ3PointData data = {{1, 2, 3}, nullptr};
    TQ3GeometryObject point = Q3Point_New(&data);
    Q3Group_AddObject(group, point);
    Q3Object_Dispose(point);
    ASSERT_TRUE(texture.LoadFromResource(9001));
    texture.Apply(group);
    texture.Apply(group); // again: the shader is reused, not stacked
    EXPECT_EQ(CountObjects(group), 2u);
    TQ3GroupPosition position = nullptr;
    ASSERT_EQ(Q3Group_GetFirstPosition(group, &position), kQ3Success);
    TQ3Object first = nullptr;
    Q3Group_GetPositionObject(group, position, &first);
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(Q3Object_IsType(first, kQ3SurfaceShaderTypeTexture));
    TQ3TextureObject inShader = nullptr;
    Q3TextureShader_GetTexture(first, &inShader);
    ASSERT_NE(inShader, nullptr);
    TQ3Uns32 w = 0, h = 0;
    Q3Texture_GetWidth(inShader, &w);
    Q3Texture_GetHeight(inShader, &h);
    EXPECT_EQ(w, 256u);
    EXPECT_EQ(h, 256u);
    Q3Object_Dispose(inShader);
    Q3Object_Dispose(first);
    Q3Object_Dispose(group);
}
