// The texture of the text: a bitmap held in a memory storage of the 3D
// library, and the shader that puts it on a group.
#pragma once

#include "foundation/KListEntry.h"
#include "platform/qd3d/QD3D.h"

#include <cstdint>
#include <string>

struct PlatformBitmap;

class TextureImage {
  public:
    TextureImage() = default;
    ~TextureImage();
    TextureImage(const TextureImage&) = delete;
    TextureImage& operator=(const TextureImage&) = delete;

    // A built-in texture (9000 to 9003); false for an unknown id or when the
    // memory cannot be had, leaving the texture as it was.
    bool LoadFromResource(int id);
    // A picture file (Windows bitmap, PNG or JPEG). With an empty `path` the
    // user is asked for a file first and the choice is written to `path`;
    // false if the user cancels or the file cannot be read as a picture, with
    // the reason in `error` when given.
    bool LoadFromFile(std::string& path, std::string* error = nullptr);
    // Puts the texture at the head of `group`: the group's first object
    // becomes a texture shader over it. Without a picture nothing changes.
    void Apply(TQ3GroupObject group) const;

    bool HasImage() const { return storage_ != nullptr; }
    uint32_t GetWidth() const { return width_; }
    uint32_t GetHeight() const { return height_; }
    // The pixel at (x, y): 0xFFRRGGBB.
    uint32_t GetPixel(uint32_t x, uint32_t y) const;

  private:
    bool Take(const PlatformBitmap& bitmap);
    void Release();

    // The layout of the library's storage pixmap: the storage over the
    // pixels, width, height, row length, pixel size, pixel type, bit and
    // byte order.
    TQ3StorageObject storage_ = nullptr;
    uint32_t width_ = 0;
    uint32_t height_ = 0;
    uint32_t rowBytes_ = 0;
    uint32_t pixelSize_ = 32;
    TQ3PixelType pixelType_ = kQ3PixelTypeRGB32;
    TQ3Endian bitOrder_ = kQ3EndianBig;
    TQ3Endian byteOrder_ = kQ3EndianBig;
};

// One texture file the user has loaded in this run.
class VTextureFileName : public KListEntry {
  public:
    explicit VTextureFileName(const std::string& path);
    char path[256];
};

// A custom texture as the workspace keeps it.
class TextureData : public KListEntry {
  public:
    TextureData(int16_t id, const std::string& path);
    int16_t id;
    char path[256];
};

// Asks the user for a texture file; empty when cancelled or when there is
// no window to ask in. Installed by the window; none by default.
using TextureFileChooser = std::string (*)();
void SetTextureFileChooser(TextureFileChooser chooser);
