#include "render/TextureImage.h"

#include "platform/bitmaps/PlatformBitmap.h"
#include "resources/BuiltInBitmaps.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace {
TextureFileChooser gChooser = nullptr;

void CopyPath(char (&dest)[256], const std::string& path) {
    const std::size_t n = std::min<std::size_t>(path.size(), sizeof dest - 1);
    std::memcpy(dest, path.data(), n);
    dest[n] = 0;
}
} // namespace

void SetTextureFileChooser(TextureFileChooser chooser) {
    gChooser = chooser;
}

TextureImage::~TextureImage() {
    Release();
}

void TextureImage::Release() {
    if (!storage_) return;
    unsigned char* buffer = nullptr;
    TQ3Uns32 valid = 0, size = 0;
    if (Q3MemoryStorage_GetBuffer(storage_, &buffer, &valid, &size) == kQ3Success)
        std::free(buffer);
    Q3Object_Dispose(storage_);
    storage_ = nullptr;
}

bool TextureImage::Take(const PlatformBitmap& bitmap) {
    Release();
    const uint64_t size = uint64_t(bitmap.width) * bitmap.height * 4;
    if (bitmap.width <= 0 || bitmap.height <= 0 || size > UINT32_MAX) return false;
    auto* buffer = static_cast<unsigned char*>(std::malloc(size));
    if (!buffer) return false;
    // Every pixel is opaque: a bitmap has no alpha of its own.
    auto* words = reinterpret_cast<uint32_t*>(buffer);
    for (std::size_t i = 0; i < bitmap.pixels.size(); ++i)
        words[i] = 0xFF000000u | bitmap.pixels[i];
    storage_ =
        Q3MemoryStorage_NewBuffer(buffer, static_cast<TQ3Uns32>(size), static_cast<TQ3Uns32>(size));
    if (!storage_) {
        std::free(buffer);
        return false;
    }
    width_ = static_cast<uint32_t>(bitmap.width);
    height_ = static_cast<uint32_t>(bitmap.height);
    rowBytes_ = width_ * 4;
    return true;
}

bool TextureImage::LoadFromResource(int id) {
    PlatformBitmap bitmap;
    if (!LoadBitmapResource(id, &bitmap)) return false;
    return Take(bitmap);
}

bool TextureImage::LoadFromFile(std::string& path, std::string* error) {
    if (path.empty()) {
        path = gChooser ? gChooser() : std::string();
        if (path.empty()) return false;
    }
    PlatformBitmap bitmap;
    if (!LoadBitmapFile(path, &bitmap, error)) return false;
    if (!Take(bitmap)) {
        if (error) *error = "not enough memory for the texture";
        return false;
    }
    return true;
}

uint32_t TextureImage::GetPixel(uint32_t x, uint32_t y) const {
    if (!storage_ || x >= width_ || y >= height_) return 0;
    unsigned char* buffer = nullptr;
    TQ3Uns32 valid = 0, size = 0;
    if (Q3MemoryStorage_GetBuffer(storage_, &buffer, &valid, &size) != kQ3Success) return 0;
    uint32_t v;
    std::memcpy(&v, buffer + std::size_t(y) * rowBytes_ + std::size_t(x) * 4, 4);
    return v;
}

void TextureImage::Apply(TQ3GroupObject group) const {
    if (!storage_ || !group) return;
    const TQ3StoragePixmap pixmap = {storage_,   width_,     height_,   rowBytes_,
                                     pixelSize_, pixelType_, bitOrder_, byteOrder_};
    TQ3TextureObject texture = Q3PixmapTexture_New(&pixmap);
    if (!texture) return;

    TQ3GroupPosition position = nullptr;
    TQ3Object first = nullptr;
    if (Q3Group_GetFirstPosition(group, &position) == kQ3Success && position)
        Q3Group_GetPositionObject(group, position, &first);

    if (first && Q3Object_IsType(first, kQ3SurfaceShaderTypeTexture)) {
        TQ3TextureObject old = nullptr;
        if (Q3TextureShader_GetTexture(first, &old) == kQ3Success && old) Q3Object_Dispose(old);
        Q3TextureShader_SetTexture(first, texture);
    } else if (TQ3ShaderObject shader = Q3TextureShader_New(texture)) {
        // Before everything, so that it reaches every letter of the group.
        if (position)
            Q3Group_AddObjectBefore(group, position, shader);
        else
            Q3Group_AddObject(group, shader);
        Q3Object_Dispose(shader);
    }
    Q3Object_Dispose(texture);
    if (first) Q3Object_Dispose(first);
}

VTextureFileName::VTextureFileName(const std::string& p) {
    CopyPath(path, p);
}

TextureData::TextureData(int16_t i, const std::string& p) : id(i) {
    CopyPath(path, p);
}
