#include "hosts/ImageFiles.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace plumet::hosts {

namespace {

std::string LowerExtension(const std::string& path) {
    const auto slash = path.find_last_of('/');
    const auto dot = path.find_last_of('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return "";
    std::string ext = path.substr(dot + 1);
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return char(std::tolower(c)); });
    return ext;
}

bool LooksLikeTiff(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    char head[4] = {};
    if (!in.read(head, 4)) return false;
    return (std::memcmp(head, "II*\0", 4) == 0) || (std::memcmp(head, "MM\0*", 4) == 0) ||
           (std::memcmp(head, "II+\0", 4) == 0) || (std::memcmp(head, "MM\0+", 4) == 0);
}

} // namespace

ImageFormat FormatFromExtension(const std::string& path) {
    const std::string ext = LowerExtension(path);
    if (ext == "png") return ImageFormat::PNG;
    if (ext == "jpg" || ext == "jpeg") return ImageFormat::JPEG;
    if (ext == "tif" || ext == "tiff") return ImageFormat::TIFF;
    return ImageFormat::Unknown;
}

bool ReadImageFile(const std::string& path, HostImage& image, std::string& error) {
    if (access(path.c_str(), R_OK) != 0) {
        error = path + ": cannot open: " + std::strerror(errno);
        return false;
    }
    if (LooksLikeTiff(path)) return ReadTiffFile(path, image, error);
    return ReadQtImageFile(path, image, error);
}

bool CanWriteImageFile(const std::string& path, const HostImage& image, std::string& error) {
    const ImageFormat format = FormatFromExtension(path);
    if (format == ImageFormat::Unknown) {
        error = path + ": unsupported output format (use .png, .jpg, .jpeg, .tif or .tiff)";
        return false;
    }
    if (image.model == ColourModel::CMYK && format != ImageFormat::TIFF) {
        error = path + ": a CMYK image can only be written as TIFF (.tif or .tiff)";
        return false;
    }
    return true;
}

bool WriteImageFile(const std::string& path, const HostImage& image, std::string& error) {
    if (!CanWriteImageFile(path, image, error)) return false;
    if (image.width <= 0 || image.height <= 0 ||
        image.pixels.size() != image.RowBytes() * std::size_t(image.height)) {
        error = path + ": nothing to write (the image is empty or inconsistent)";
        return false;
    }
    // A temporary name in the same directory, so that the rename is atomic.
    std::string temp = path + ".partXXXXXX";
    std::vector<char> name(temp.begin(), temp.end());
    name.push_back('\0');
    const int fd = mkstemp(name.data());
    if (fd < 0) {
        error = path + ": cannot create a file beside it: " + std::strerror(errno);
        return false;
    }
    // mkstemp makes the file private; give it the permissions of a new file.
    const mode_t mask = umask(0);
    umask(mask);
    fchmod(fd, 0666 & ~mask);
    close(fd);
    temp = name.data();

    const ImageFormat format = FormatFromExtension(path);
    const bool written = format == ImageFormat::TIFF ? WriteTiffFile(temp, image, error)
                                                     : WriteQtImageFile(temp, format, image, error);
    if (!written) {
        std::remove(temp.c_str());
        // The message names the temporary file; name the one asked for.
        if (const auto at = error.find(temp); at != std::string::npos)
            error.replace(at, temp.size(), path);
        return false;
    }
    if (std::rename(temp.c_str(), path.c_str()) != 0) {
        error = path + ": cannot write: " + std::strerror(errno);
        std::remove(temp.c_str());
        return false;
    }
    return true;
}

} // namespace plumet::hosts
