#include "hosts/HostImage.h"

#include <new>

namespace plumet::hosts {

bool MakeImage(int width, int height, ColourModel model, bool hasAlpha, HostImage& image,
               std::string& error) {
    if (width <= 0 || height <= 0) {
        error = "the image is empty";
        return false;
    }
    if (width > kMaxImageSide || height > kMaxImageSide) {
        error = "the image is " + std::to_string(width) + " by " + std::to_string(height) +
                " pixels; at most " + std::to_string(kMaxImageSide) + " a side can be filtered";
        return false;
    }
    HostImage made;
    made.width = width;
    made.height = height;
    made.model = model;
    made.hasAlpha = hasAlpha;
    const std::size_t bytes = made.RowBytes() * std::size_t(height);
    if (bytes > kMaxImageBytes) {
        error =
            "the image is too large to hold in memory (" + std::to_string(bytes >> 20) + " MiB)";
        return false;
    }
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
