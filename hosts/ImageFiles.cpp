#include "hosts/ImageFiles.h"

#include "hosts/FileMetadata.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
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

// The file a write to `path` lands in: a symbolic link is followed to its
// target, which need not exist yet, so that the link stays a link.
std::string WriteTarget(const std::string& path) {
    namespace fs = std::filesystem;
    fs::path target(path);
    std::error_code ec;
    for (int hops = 0; hops < 40 && fs::is_symlink(fs::symlink_status(target, ec)); ++hops) {
        const fs::path next = fs::read_symlink(target, ec);
        if (ec) break;
        target = next.is_absolute() ? next : target.parent_path() / next;
    }
    return target.string();
}

// Makes an empty file with a unique name beside `target`, with the
// permissions of a new file, and answers its name; empty with errno set on
// failure.
std::string MakeFileBeside(const std::string& target) {
    std::string temp = target + ".partXXXXXX";
    const int fd = mkstemp(temp.data());
    if (fd < 0) return "";
    // mkstemp makes the file private; give it the permissions of a new file.
    const mode_t mask = umask(0);
    umask(mask);
    fchmod(fd, 0666 & ~mask);
    close(fd);
    return temp;
}

// Whether a colour profile's header names the colours the image holds: a
// profile for others (the grey or CMYK of a file read as RGB) no longer
// describes the pixels.
bool ProfileIsFor(const std::vector<uint8_t>& profile, const HostImage& image) {
    constexpr size_t kColourSpaceAt = 16;
    if (profile.size() < kColourSpaceAt + 4) return false;
    const char* colours = image.model == ColourModel::CMYK ? "CMYK" : "RGB ";
    return std::memcmp(profile.data() + kColourSpaceAt, colours, 4) == 0;
}

} // namespace

const char* const kDeepImageNote =
    "more than 8 bits a channel: the filter works on 8 bits a channel, so the result has 8";
const char* const kGreyImageNote =
    "a grey image: the filter works on colour images, so the result is RGB";

ImageFormat FormatFromExtension(const std::string& path) {
    const std::string ext = LowerExtension(path);
    if (ext == "png") return ImageFormat::PNG;
    if (ext == "jpg" || ext == "jpeg") return ImageFormat::JPEG;
    if (ext == "tif" || ext == "tiff") return ImageFormat::TIFF;
    return ImageFormat::Unknown;
}

bool ReadImageFile(const std::string& path, HostImage& image, std::string& error,
                   ImageExtras* extras) {
    if (access(path.c_str(), R_OK) != 0) {
        error = path + ": cannot open: " + std::strerror(errno);
        return false;
    }
    ImageExtras read;
    const bool tiff = LooksLikeTiff(path);
    JpegHeader jpeg;
    const bool isJpeg = !tiff && ReadJpegHeader(path, jpeg);
    const bool ok = tiff                  ? ReadTiffFile(path, image, read, error)
                    : isJpeg && jpeg.cmyk ? ReadCmykJpegFile(path, image, read, error)
                                          : ReadQtImageFile(path, image, read, error);
    if (!ok || !extras) return ok;
    // Qt gives a JPEG with no JFIF resolution its own default resolution
    // (96 dots per inch), which is not the file's.
    if (isJpeg && jpeg.dpiX <= 0) read.dpiX = read.dpiY = 0;
    // A profile the format's reader could not make sense of is the file's
    // all the same: it goes on as it stands, if it is for such colours.
    std::vector<uint8_t> raw;
    read.metadata = FileMetadata::Read(path, read.iccProfile.empty() ? &raw : nullptr);
    if (ProfileIsFor(raw, image)) read.iccProfile = std::move(raw);
    // A camera states its resolution in the EXIF only.
    if (read.dpiX <= 0 && read.metadata) read.metadata->Resolution(read.dpiX, read.dpiY);
    *extras = std::move(read);
    return true;
}

bool CanWriteImageFile(const std::string& path, const HostImage& image, std::string& error) {
    const ImageFormat format = FormatFromExtension(path);
    if (format == ImageFormat::Unknown) {
        error = path + ": unsupported output format (use .png, .jpg, .jpeg, .tif or .tiff)";
        return false;
    }
    if (image.model == ColourModel::CMYK && format == ImageFormat::PNG) {
        error = path + ": a CMYK image can only be written as TIFF or JPEG (.tif, .tiff, .jpg or "
                       ".jpeg)";
        return false;
    }
    // Before any work, prove that a file can be made there.
    const std::string target = WriteTarget(path);
    struct stat st {};
    if (stat(target.c_str(), &st) == 0 && S_ISDIR(st.st_mode)) {
        error = path + ": is a directory";
        return false;
    }
    const std::string probe = MakeFileBeside(target);
    if (probe.empty()) {
        error = path + ": cannot create the file: " + std::strerror(errno);
        return false;
    }
    std::remove(probe.c_str());
    return true;
}

bool WriteImageFile(const std::string& path, const HostImage& image, std::string& error,
                    const ImageExtras* extras) {
    if (!CanWriteImageFile(path, image, error)) return false;
    if (image.width <= 0 || image.height <= 0 ||
        image.pixels.size() != image.RowBytes() * std::size_t(image.height)) {
        error = path + ": nothing to write (the image is empty or inconsistent)";
        return false;
    }
    // A temporary name in the target's directory, so that the rename is atomic.
    const std::string target = WriteTarget(path);
    const std::string temp = MakeFileBeside(target);
    if (temp.empty()) {
        error = path + ": cannot create a file beside it: " + std::strerror(errno);
        return false;
    }
    const ImageExtras none;
    const ImageExtras& with = extras ? *extras : none;
    const ImageFormat format = FormatFromExtension(path);
    bool written = format == ImageFormat::TIFF ? WriteTiffFile(temp, image, with, error)
                   : image.model == ColourModel::CMYK
                       ? WriteCmykJpegFile(temp, image, with, error)
                       : WriteQtImageFile(temp, format, image, with, error);
    if (written && with.metadata)
        written = with.metadata->WriteInto(temp, image.width, image.height, error);
    if (!written) {
        std::remove(temp.c_str());
        // The message names the temporary file; name the one asked for.
        if (const auto at = error.find(temp); at != std::string::npos)
            error.replace(at, temp.size(), path);
        return false;
    }
    if (std::rename(temp.c_str(), target.c_str()) != 0) {
        error = path + ": cannot write: " + std::strerror(errno);
        std::remove(temp.c_str());
        return false;
    }
    return true;
}

} // namespace plumet::hosts
