// Reading and writing image files: PNG and JPEG through Qt's image I/O, TIFF
// (RGB, RGB with transparency, CMYK) through libtiff.
#ifndef PLUMET_HOSTS_IMAGEFILES_H
#define PLUMET_HOSTS_IMAGEFILES_H

#include "hosts/HostImage.h"

#include <string>

namespace plumet::hosts {

enum class ImageFormat { Unknown, PNG, JPEG, TIFF };

// The format named by a file's extension (case-insensitive): .png, .jpg,
// .jpeg, .tif, .tiff.
ImageFormat FormatFromExtension(const std::string& path);

// Reads an image. TIFF is recognised by its header; everything else goes to
// Qt's readers. RGB files become flat RGB images, files with transparency
// become RGB layers, CMYK TIFF becomes a flat CMYK image. On failure returns
// false with a one-line message naming the file.
bool ReadImageFile(const std::string& path, HostImage& image, std::string& error);

// Checks before any work is done that an image of this kind can be written
// under this name.
bool CanWriteImageFile(const std::string& path, const HostImage& image, std::string& error);

// Writes an image in the format of the file's extension. The file is written
// under a temporary name beside it and renamed at the end, so that a failure
// never leaves a partial file. PNG and TIFF keep transparency; JPEG cannot
// hold it, so a layer is flattened over white first. CMYK goes to TIFF only.
bool WriteImageFile(const std::string& path, const HostImage& image, std::string& error);

// The format-specific halves (in TiffFiles.cpp and QtImageFiles.cpp). They
// write straight to the path given.
bool ReadTiffFile(const std::string& path, HostImage& image, std::string& error);
bool WriteTiffFile(const std::string& path, const HostImage& image, std::string& error);
bool ReadQtImageFile(const std::string& path, HostImage& image, std::string& error);
bool WriteQtImageFile(const std::string& path, ImageFormat format, const HostImage& image,
                      std::string& error);

} // namespace plumet::hosts

#endif
