// Reading and writing image files: PNG and JPEG through Qt's image I/O, CMYK
// JPEG through libjpeg, TIFF (RGB, RGB with transparency, CMYK) through
// libtiff.
#ifndef PLUMET_HOSTS_IMAGEFILES_H
#define PLUMET_HOSTS_IMAGEFILES_H

#include "hosts/HostImage.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace plumet::hosts {

enum class ImageFormat { Unknown, PNG, JPEG, TIFF };

class FileMetadata;

// What a file holds besides its pixels, carried from the input to the output
// as far as the output's format can hold it.
struct ImageExtras {
    double dpiX = 0; // resolution in dots per inch; 0: the file states none
    double dpiY = 0;
    std::vector<uint8_t> iccProfile; // the colour profile; empty: none
    // EXIF, XMP and IPTC; null: none.
    std::shared_ptr<const FileMetadata> metadata;
    // What reading changed that the user should know ("16 bits a channel
    // ..."), one line each.
    std::vector<std::string> notes;
};

// The format named by a file's extension (case-insensitive): .png, .jpg,
// .jpeg, .tif, .tiff.
ImageFormat FormatFromExtension(const std::string& path);

// Reads an image. TIFF is recognised by its header; everything else goes to
// Qt's readers. RGB files become flat RGB images, files with transparency
// become RGB layers, CMYK TIFF and JPEG become flat CMYK images. On failure returns
// false with a one-line message naming the file. A damaged file is refused,
// not read in part. With `extras`, also what the file holds besides pixels.
bool ReadImageFile(const std::string& path, HostImage& image, std::string& error,
                   ImageExtras* extras = nullptr);

// Checks before any work is done that an image of this kind can be written
// under this name: a format that holds it, and a place where a file can be
// created.
bool CanWriteImageFile(const std::string& path, const HostImage& image, std::string& error);

// Writes an image in the format of the file's extension. The file is written
// under a temporary name beside it and renamed at the end, so that a failure
// never leaves a partial file; a symbolic link is written through to its
// target. PNG and TIFF keep transparency; JPEG cannot hold it, so a layer is
// flattened over white first. CMYK goes to TIFF or JPEG only. With `extras`, the
// resolution, colour profile and metadata go into the file too.
bool WriteImageFile(const std::string& path, const HostImage& image, std::string& error,
                    const ImageExtras* extras = nullptr);

// The format-specific halves (in TiffFiles.cpp and QtImageFiles.cpp). They
// write straight to the path given, and read and write the resolution and
// the colour profile of `extras`.
bool ReadTiffFile(const std::string& path, HostImage& image, ImageExtras& extras,
                  std::string& error);
bool WriteTiffFile(const std::string& path, const HostImage& image, const ImageExtras& extras,
                   std::string& error);
bool ReadQtImageFile(const std::string& path, HostImage& image, ImageExtras& extras,
                     std::string& error);
bool WriteQtImageFile(const std::string& path, ImageFormat format, const HostImage& image,
                      const ImageExtras& extras, std::string& error);

// What libjpeg finds in a JPEG's header, without decoding it.
struct JpegHeader {
    bool cmyk = false;     // four colour components, CMYK or YCCK
    bool inverted = false; // an Adobe marker: values stored as 255 - ink
    double dpiX = 0;       // the JFIF resolution; 0: the file states none
    double dpiY = 0;
};
// False when the file is not a JPEG whose header libjpeg can read.
bool ReadJpegHeader(const std::string& path, JpegHeader& header);
// CMYK and YCCK JPEG as a flat CMYK image, and a CMYK image as CMYK JPEG (in
// JpegFiles.cpp).
bool ReadCmykJpegFile(const std::string& path, HostImage& image, ImageExtras& extras,
                      std::string& error);
bool WriteCmykJpegFile(const std::string& path, const HostImage& image, const ImageExtras& extras,
                       std::string& error);

// Turns pixels read as stored into the upright picture an orientation (TIFF
// and EXIF number them alike, 1 to 8) describes.
bool TurnUpright(HostImage& image, uint16_t orientation, const std::string& path,
                 std::string& error);
// Whether the stored rows are the picture's columns (orientations 5 to 8).
bool StoredAcross(uint16_t orientation);

// The note for an image of more than 8 bits a channel.
extern const char* const kDeepImageNote;
// The note for a grey image, which is filtered, and written, as RGB.
extern const char* const kGreyImageNote;
// The quality JPEG files are written with.
constexpr int kJpegQuality = 92;
// For resolutions stated per centimetre.
constexpr double kCentimetresPerInch = 2.54;

} // namespace plumet::hosts

#endif
