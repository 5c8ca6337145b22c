// An image as the host holds it: 8 bits per channel, channels interleaved.
#ifndef PLUMET_HOSTS_HOSTIMAGE_H
#define PLUMET_HOSTS_HOSTIMAGE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace plumet::hosts {

enum class ColourModel { RGB, CMYK };

// The largest side the filter interface can describe (its rectangles are
// 16-bit) and the largest pixel store the host is willing to hold.
constexpr int kMaxImageSide = 32767;
constexpr std::size_t kMaxImageBytes = std::size_t(1) << 31;

// A flat image (RGB or CMYK) or an RGB layer with a transparency plane after
// the colour planes. CMYK values are ink amounts, 0 = no ink, as in TIFF
// files. Transparency is straight (not premultiplied), 255 = opaque.
struct HostImage {
    int width = 0;
    int height = 0;
    ColourModel model = ColourModel::RGB;
    bool hasAlpha = false;
    std::vector<uint8_t> pixels; // rows top-down, rowBytes() apart

    int ColourPlanes() const { return model == ColourModel::CMYK ? 4 : 3; }
    int Planes() const { return ColourPlanes() + (hasAlpha ? 1 : 0); }
    std::size_t RowBytes() const { return std::size_t(width) * std::size_t(Planes()); }
    uint8_t* Pixel(int row, int col) {
        return pixels.data() + std::size_t(row) * RowBytes() + std::size_t(col) * Planes();
    }
    const uint8_t* Pixel(int row, int col) const {
        return pixels.data() + std::size_t(row) * RowBytes() + std::size_t(col) * Planes();
    }
};

// Whether an image of that size and number of planes can be held: false
// with a message in the host's words when a side or the whole is too large.
bool CheckImageSize(int width, int height, int planes, std::string& error);

// Makes a zero-filled image. Fails with a message when the size is empty,
// beyond kMaxImageSide or kMaxImageBytes, or the memory cannot be had.
bool MakeImage(int width, int height, ColourModel model, bool hasAlpha, HostImage& image,
               std::string& error);

// "RGB", "RGB with transparency" or "CMYK", for messages.
std::string DescribeImage(const HostImage& image);

} // namespace plumet::hosts

#endif
