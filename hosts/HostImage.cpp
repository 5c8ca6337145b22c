#include "hosts/HostImage.h"

#include <new>

namespace plumet::hosts {

bool CheckImageSize(int width, int height, int planes, std::string& error) {
    if (width <= 0 || height <= 0) {
        error = "the image is empty";
        return false;
    }
    const std::string size = std::to_string(width) + " by " + std::to_string(height) + " pixels";
    if (width > kMaxImageSide || height > kMaxImageSide) {
        error = "the image is " + size + ", too large: at most " + std::to_string(kMaxImageSide) +
                " a side can be filtered";
        return false;
    }
    const std::size_t bytes = std::size_t(width) * std::size_t(height) * std::size_t(planes);
    if (bytes > kMaxImageBytes) {
        error = "the image is " + size + ", too large: its " + std::to_string(bytes >> 20) +
                " MiB exceed the " + std::to_string(kMaxImageBytes >> 20) + " MiB the host holds";
        return false;
    }
    return true;
}

bool MakeImage(int width, int height, ColourModel model, bool hasAlpha, HostImage& image,
               std::string& error) {
    HostImage made;
    made.width = width;
    made.height = height;
    made.model = model;
    made.hasAlpha = hasAlpha;
    if (!CheckImageSize(width, height, made.Planes(), error)) return false;
    const std::size_t bytes = made.RowBytes() * std::size_t(height);
    try {
        made.pixels.assign(bytes, 0);
    } catch (const std::bad_alloc&) {
        error = "out of memory for an image of " + std::to_string(bytes >> 20) + " MiB";
        return false;
    }
    image = std::move(made);
    return true;
}

std::string DescribeImage(const HostImage& image) {
    if (image.model == ColourModel::CMYK) return image.hasAlpha ? "CMYK with transparency" : "CMYK";
    return image.hasAlpha ? "RGB with transparency" : "RGB";
}

} // namespace plumet::hosts
