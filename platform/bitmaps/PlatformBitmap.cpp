#include "platform/bitmaps/PlatformBitmap.h"

#include <QImage>
#include <QImageReader>
#include <new>

bool LoadBitmapFile(const std::string& path, PlatformBitmap* bitmap, std::string* error) {
    auto fail = [error](const std::string& why) {
        if (error) *error = why;
        return false;
    };
    if (path.empty()) return fail("no file was given");
    QImageReader reader(QString::fromStdString(path));
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (size.isValid() && int64_t(size.width()) * size.height() > kMaxBitmapPixels)
        return fail("the picture is too large to use as a texture");
    QImage image;
    try {
        image = reader.read();
    } catch (const std::bad_alloc&) {
        return fail("not enough memory to read the picture");
    }
    if (image.isNull()) return fail(reader.errorString().toStdString());
    if (int64_t(image.width()) * image.height() > kMaxBitmapPixels)
        return fail("the picture is too large to use as a texture");
    image = image.convertToFormat(QImage::Format_RGB32);
    if (image.isNull()) return fail("not enough memory to read the picture");
    PlatformBitmap out;
    out.width = image.width();
    out.height = image.height();
    try {
        out.pixels.resize(std::size_t(out.width) * out.height);
    } catch (const std::bad_alloc&) {
        return fail("not enough memory to read the picture");
    }
    for (int y = 0; y < out.height; ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < out.width; ++x)
            out.pixels[std::size_t(y) * out.width + x] = row[x] & 0xFFFFFFu;
    }
    *bitmap = std::move(out);
    return true;
}
