// EXIF, XMP and IPTC of an image file, and its colour profile as it stands,
// read from the input and written into the output through the metadata
// library.
#ifndef PLUMET_HOSTS_FILEMETADATA_H
#define PLUMET_HOSTS_FILEMETADATA_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace plumet::hosts {

class FileMetadata {
  public:
    ~FileMetadata();
    FileMetadata(const FileMetadata&) = delete;
    FileMetadata& operator=(const FileMetadata&) = delete;

    // The metadata of a PNG, JPEG or TIFF file; null when it holds none or
    // the library cannot read it (the pixels are read all the same). With
    // `profile`, also the file's colour profile byte for byte, whether or not
    // it makes sense (empty: none).
    static std::shared_ptr<const FileMetadata> Read(const std::string& path,
                                                    std::vector<uint8_t>* profile = nullptr);

    // The orientation a file's EXIF states, 1 to 8 as in TIFF; 1 (upright)
    // when it states none or cannot be read.
    static uint16_t Orientation(const std::string& path);

    // The resolution the EXIF states in dots per inch, across and down the
    // upright picture; false when it states none in real units.
    bool Resolution(double& dpiX, double& dpiY) const;

    // Puts the metadata into an image file of `width` by `height` upright
    // pixels: the orientation becomes "upright", the pixel dimensions follow
    // the image, and what described the input's own layout (strips, a
    // thumbnail of the old picture, an embedded profile) is left out.
    bool WriteInto(const std::string& path, int width, int height, std::string& error) const;

  private:
    struct Data;
    explicit FileMetadata(std::unique_ptr<Data> data);
    std::unique_ptr<Data> data_;
};

// Embeds a colour profile in an image file byte for byte, in place of any it
// holds.
bool WriteRawColourProfile(const std::string& path, const std::vector<uint8_t>& profile,
                           std::string& error);

} // namespace plumet::hosts

#endif
