#include "hosts/FileMetadata.h"

#include "hosts/ImageFiles.h"

#include <exiv2/exiv2.hpp>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <mutex>

namespace plumet::hosts {

struct FileMetadata::Data {
    Exiv2::ExifData exif;
    Exiv2::XmpData xmp;
    Exiv2::IptcData iptc;
};

namespace {

// The library reports what it finds odd on stderr; a damaged tag costs that
// tag, which the user need not hear about.
void QuietLibrary() {
    static std::once_flag once;
    std::call_once(once, [] { Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute); });
}

// Tags of the first image that describe how the input stored its pixels, or
// that the output's format keeps elsewhere: they would lie about the output.
bool DescribesStorage(const std::string& tag) {
    static const char* const kTags[] = {"ImageWidth",
                                        "ImageLength",
                                        "BitsPerSample",
                                        "Compression",
                                        "PhotometricInterpretation",
                                        "StripOffsets",
                                        "SamplesPerPixel",
                                        "RowsPerStrip",
                                        "StripByteCounts",
                                        "PlanarConfiguration",
                                        "Predictor",
                                        "ExtraSamples",
                                        "SampleFormat",
                                        "TileWidth",
                                        "TileLength",
                                        "TileOffsets",
                                        "TileByteCounts",
                                        "InkSet",
                                        "NewSubfileType",
                                        "SubfileType",
                                        "SubIFDs",
                                        "FillOrder",
                                        "JPEGInterchangeFormat",
                                        "JPEGInterchangeFormatLength",
                                        "InterColorProfile",
                                        "XMLPacket",
                                        "IPTCNAA",
                                        "ImageResources"};
    return std::find(std::begin(kTags), std::end(kTags), tag) != std::end(kTags);
}

// Groups of further images in the file (thumbnails, reduced copies).
bool OtherImageGroup(const std::string& group) {
    if (group.rfind("SubImage", 0) == 0 || group.rfind("SubThumb", 0) == 0 ||
        group.rfind("Thumbnail", 0) == 0)
        return true;
    return group.size() > 5 && group.rfind("Image", 0) == 0 &&
           std::isdigit(static_cast<unsigned char>(group[5]));
}

// The value of a numeric EXIF tag; `fallback` when it is missing or not a
// number.
double ExifNumber(const Exiv2::ExifData& exif, const char* key, double fallback) {
    const auto at = exif.findKey(Exiv2::ExifKey(key));
    if (at == exif.end() || at->count() == 0) return fallback;
    const float value = at->toFloat(0);
    return std::isfinite(value) ? value : fallback;
}

uint16_t OrientationOf(const Exiv2::ExifData& exif) {
    const double orientation = ExifNumber(exif, "Exif.Image.Orientation", 1);
    return orientation >= 1 && orientation <= 8 ? uint16_t(orientation) : 1;
}

template <class Data, class Key, class Value>
void SetIfPresent(Data& data, const char* key, const Value& value) {
    const auto at = data.findKey(Key(key));
    if (at != data.end()) *at = value;
}

} // namespace

FileMetadata::FileMetadata(std::unique_ptr<Data> data) : data_(std::move(data)) {}
FileMetadata::~FileMetadata() = default;

std::shared_ptr<const FileMetadata> FileMetadata::Read(const std::string& path,
                                                       std::vector<uint8_t>* profile) {
    QuietLibrary();
    try {
        auto image = Exiv2::ImageFactory::open(path);
        if (!image.get()) return nullptr;
        image->readMetadata();
        if (const Exiv2::DataBuf* icc = image->iccProfile();
            profile && icc->pData_ && icc->size_ > 0)
            profile->assign(icc->pData_, icc->pData_ + icc->size_);
        auto data = std::make_unique<Data>();
        for (const Exiv2::Exifdatum& d : image->exifData()) {
            if (OtherImageGroup(d.groupName())) continue;
            if (d.groupName() == "Image" && DescribesStorage(d.tagName())) continue;
            data->exif.add(d);
        }
        data->xmp = image->xmpData();
        data->iptc = image->iptcData();
        if (data->exif.empty() && data->xmp.empty() && data->iptc.empty()) return nullptr;
        return std::shared_ptr<const FileMetadata>(new FileMetadata(std::move(data)));
    } catch (...) {
        return nullptr;
    }
}

uint16_t FileMetadata::Orientation(const std::string& path) {
    QuietLibrary();
    try {
        auto image = Exiv2::ImageFactory::open(path);
        if (!image.get()) return 1;
        image->readMetadata();
        return OrientationOf(image->exifData());
    } catch (...) {
        return 1;
    }
}

bool FileMetadata::Resolution(double& dpiX, double& dpiY) const {
    constexpr double kInch = 2, kCentimetre = 3;
    const double unit = ExifNumber(data_->exif, "Exif.Image.ResolutionUnit", kInch);
    const double x = ExifNumber(data_->exif, "Exif.Image.XResolution", 0);
    const double y = ExifNumber(data_->exif, "Exif.Image.YResolution", 0);
    if ((unit != kInch && unit != kCentimetre) || !(x > 0) || !(y > 0)) return false;
    const double perInch = unit == kCentimetre ? kCentimetresPerInch : 1.0;
    dpiX = x * perInch;
    dpiY = y * perInch;
    if (StoredAcross(OrientationOf(data_->exif))) std::swap(dpiX, dpiY);
    return true;
}

bool FileMetadata::WriteInto(const std::string& path, int width, int height,
                             std::string& error) const {
    QuietLibrary();
    try {
        Exiv2::ExifData exif = data_->exif;
        // The thumbnail shows the picture before the filter.
        Exiv2::ExifThumb(exif).erase();
        // The pixels are written upright, whatever the input said.
        SetIfPresent<Exiv2::ExifData, Exiv2::ExifKey>(exif, "Exif.Image.Orientation", uint16_t(1));
        SetIfPresent<Exiv2::ExifData, Exiv2::ExifKey>(exif, "Exif.Photo.PixelXDimension",
                                                      uint32_t(width));
        SetIfPresent<Exiv2::ExifData, Exiv2::ExifKey>(exif, "Exif.Photo.PixelYDimension",
                                                      uint32_t(height));
        Exiv2::XmpData xmp = data_->xmp;
        SetIfPresent<Exiv2::XmpData, Exiv2::XmpKey>(xmp, "Xmp.tiff.Orientation", std::string("1"));
        SetIfPresent<Exiv2::XmpData, Exiv2::XmpKey>(xmp, "Xmp.exif.PixelXDimension",
                                                    std::to_string(width));
        SetIfPresent<Exiv2::XmpData, Exiv2::XmpKey>(xmp, "Xmp.exif.PixelYDimension",
                                                    std::to_string(height));

        auto image = Exiv2::ImageFactory::open(path);
        // What the image library wrote (the colour profile among it) stays.
        image->readMetadata();
        image->setExifData(exif);
        image->setXmpData(xmp);
        image->setIptcData(data_->iptc);
        image->writeMetadata();
        return true;
    } catch (const std::exception& e) {
        error = path + ": cannot write the metadata: " + e.what();
    } catch (...) {
        error = path + ": cannot write the metadata";
    }
    return false;
}

bool WriteRawColourProfile(const std::string& path, const std::vector<uint8_t>& profile,
                           std::string& error) {
    QuietLibrary();
    try {
        auto image = Exiv2::ImageFactory::open(path);
        image->readMetadata();
        Exiv2::DataBuf bytes(profile.data(), long(profile.size()));
        // as it is: whether it makes sense is for the program that shows it
        image->setIccProfile(bytes, false);
        image->writeMetadata();
        return true;
    } catch (const std::exception& e) {
        error = path + ": cannot write the colour profile: " + e.what();
    } catch (...) {
        error = path + ": cannot write the colour profile";
    }
    return false;
}

} // namespace plumet::hosts
