// PNG, JPEG and the other formats Qt reads. Only QImage and its readers are
// used: they need no application object and no display.
#include "hosts/ImageFiles.h"

#include "hosts/FileMetadata.h"

#include <QColorSpace>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QString>
#include <QTransform>
#include <QtGlobal>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace plumet::hosts {

namespace {

QString ToQString(const std::string& s) {
    return QString::fromLocal8Bit(s.data(), qsizetype(s.size()));
}

// Qt's image plugins report damage as Qt warnings, and libpng prints its
// errors straight to stderr. While a file is read or written both are caught
// here instead, so that the host says one line of its own that includes them.
class DiagnosticCatcher {
  public:
    DiagnosticCatcher() : previous_(qInstallMessageHandler(Catch)) {
        caught_.clear();
        std::fflush(stderr);
        file_ = std::tmpfile();
        saved_ = file_ ? dup(STDERR_FILENO) : -1;
        if (saved_ >= 0) dup2(fileno(file_), STDERR_FILENO);
    }
    ~DiagnosticCatcher() {
        Restore();
        qInstallMessageHandler(previous_);
    }
    DiagnosticCatcher(const DiagnosticCatcher&) = delete;
    DiagnosticCatcher& operator=(const DiagnosticCatcher&) = delete;

    // " (first message)" or "".
    std::string Detail() {
        Restore();
        return caught_.empty() ? "" : " (" + caught_ + ")";
    }

  private:
    static void Catch(QtMsgType, const QMessageLogContext&, const QString& text) {
        if (caught_.empty()) caught_ = text.toStdString();
    }
    void Restore() {
        if (saved_ >= 0) {
            std::fflush(stderr);
            dup2(saved_, STDERR_FILENO);
            close(saved_);
            saved_ = -1;
            char line[256] = {};
            std::rewind(file_);
            if (caught_.empty() && std::fgets(line, sizeof line, file_)) {
                caught_ = line;
                while (!caught_.empty() && (caught_.back() == '\n' || caught_.back() == '\r'))
                    caught_.pop_back();
            }
        }
        if (file_) std::fclose(file_);
        file_ = nullptr;
    }
    QtMessageHandler previous_;
    std::FILE* file_ = nullptr;
    int saved_ = -1;
    static inline std::string caught_;
};

constexpr double kMetresPerInch = 0.0254;

bool MoreThan8Bits(QImage::Format format) {
    switch (format) {
    case QImage::Format_RGBX64:
    case QImage::Format_RGBA64:
    case QImage::Format_RGBA64_Premultiplied:
    case QImage::Format_Grayscale16:
    case QImage::Format_RGBX16FPx4:
    case QImage::Format_RGBA16FPx4:
    case QImage::Format_RGBA16FPx4_Premultiplied:
    case QImage::Format_RGBX32FPx4:
    case QImage::Format_RGBA32FPx4:
    case QImage::Format_RGBA32FPx4_Premultiplied:
        return true;
    default:
        return false;
    }
}

// The JPEG decoder goes on over a file that ends early or holds garbage,
// filling the rest with grey, and only warns. Those warnings mean damage.
bool JpegDamage(const std::string& diagnostic) {
    return diagnostic.find("Premature end of JPEG file") != std::string::npos ||
           diagnostic.find("Corrupt JPEG data") != std::string::npos;
}

// Turns a picture upright as its file says (EXIF orientation). Done here
// rather than by the reader, whose own turn loses the colour profile.
QImage Upright(const QImage& image, QImageIOHandler::Transformations how) {
    if (how == QImageIOHandler::TransformationNone) return image;
    if (how == QImageIOHandler::TransformationRotate270)
        return image.transformed(QTransform().rotate(270));
    QImage turned = image.mirrored(how & QImageIOHandler::TransformationMirror,
                                   how & QImageIOHandler::TransformationFlip);
    if (how & QImageIOHandler::TransformationRotate90)
        turned = turned.transformed(QTransform().rotate(90));
    return turned;
}

} // namespace

bool ReadQtImageFile(const std::string& path, HostImage& image, ImageExtras& extras,
                     std::string& error) {
    DiagnosticCatcher catcher;
    QImageReader reader(ToQString(path));
    reader.setAutoTransform(false);
    if (!reader.canRead()) {
        error = path + ": unsupported or unreadable image file";
        return false;
    }
    const QSize size = reader.size();
    const QImage::Format stored = reader.imageFormat();
    const bool jpeg = reader.format() == "jpeg";
    if (size.isValid()) {
        const bool alpha = QImage::toPixelFormat(stored).alphaUsage() == QPixelFormat::UsesAlpha;
        if (!CheckImageSize(size.width(), size.height(), alpha ? 4 : 3, error)) {
            error = path + ": " + error;
            return false;
        }
        // The reader's own limit stands for a desktop program's needs; what
        // the host can hold decides here, with room for the widest form the
        // reader decodes into (8 bytes a pixel).
        const qint64 decoded = qint64(size.width()) * size.height() * 8;
        QImageReader::setAllocationLimit(int(std::min<qint64>(INT_MAX, (decoded >> 20) + 1)));
    }
    QImage read;
    const bool ok = reader.read(&read) && !read.isNull();
    const std::string detail = catcher.Detail();
    if (!ok) {
        error = path + ": cannot read the image: " + reader.errorString().toStdString() + detail;
        return false;
    }
    if (jpeg && JpegDamage(detail)) {
        error = path + ": damaged JPEG" + detail;
        return false;
    }
    const bool alpha = read.hasAlphaChannel();
    const QImageIOHandler::Transformations turn = reader.transformation();
    // what the file says besides pixels, before turning drops it
    extras.dpiX = read.dotsPerMeterX() * kMetresPerInch;
    extras.dpiY = read.dotsPerMeterY() * kMetresPerInch;
    if (turn & QImageIOHandler::TransformationRotate90) std::swap(extras.dpiX, extras.dpiY);
    const QByteArray icc = read.colorSpace().iccProfile();
    extras.iccProfile.assign(icc.begin(), icc.end());
    if (MoreThan8Bits(read.format()) || MoreThan8Bits(stored))
        extras.notes.push_back(kDeepImageNote);
    // (a palette image asks only its colour table; a colour image is not
    // searched for colour)
    const QPixelFormat::ColorModel colours = QImage::toPixelFormat(read.format()).colorModel();
    if (colours == QPixelFormat::Grayscale || colours == QPixelFormat::Alpha ||
        (colours == QPixelFormat::Indexed && read.allGray()))
        extras.notes.push_back(kGreyImageNote);
    if (turn != QImageIOHandler::TransformationNone) read = Upright(read, turn);
    const QImage::Format format = alpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888;
    HostImage made;
    if (!MakeImage(read.width(), read.height(), ColourModel::RGB, alpha, made, error)) {
        error = path + ": " + error;
        return false;
    }
    // Converted a band of rows at a time, so that a large image is not held
    // a third time in the middle.
    constexpr int kBand = 256;
    for (int top = 0; top < made.height; top += kBand) {
        const int rows = std::min(kBand, made.height - top);
        const QImage band = read.copy(0, top, made.width, rows).convertToFormat(format);
        if (band.isNull()) {
            error = path + ": out of memory while converting the image";
            return false;
        }
        for (int row = 0; row < rows; ++row)
            std::memcpy(made.Pixel(top + row, 0), band.constScanLine(row), made.RowBytes());
    }
    image = std::move(made);
    return true;
}

bool WriteQtImageFile(const std::string& path, ImageFormat format, const HostImage& image,
                      const ImageExtras& extras, std::string& error) {
    if (image.model != ColourModel::RGB) {
        error = path + ": only RGB images can be written in this format";
        return false;
    }
    // JPEG holds no transparency: a layer is flattened over white, as an
    // editor does when it exports a layer to a format without alpha.
    const bool keepAlpha = image.hasAlpha && format == ImageFormat::PNG;
    QImage out;
    if (keepAlpha || !image.hasAlpha) {
        // the image's own rows, with no copy; the writer only reads them, and
        // over memory it may write to, setting the resolution below does not
        // copy them either
        out = QImage(const_cast<uint8_t*>(image.pixels.data()), image.width, image.height,
                     qsizetype(image.RowBytes()),
                     keepAlpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    } else {
        out = QImage(image.width, image.height, QImage::Format_RGB888);
        if (out.isNull()) {
            error = path + ": out of memory for the image to write";
            return false;
        }
        for (int row = 0; row < image.height; ++row) {
            uchar* dst = out.scanLine(row);
            const uint8_t* src = image.Pixel(row, 0);
            for (int col = 0; col < image.width; ++col, src += 4, dst += 3) {
                const unsigned a = src[3];
                for (int k = 0; k < 3; ++k)
                    dst[k] = uchar((src[k] * a + 255u * (255u - a) + 127u) / 255u);
            }
        }
    }
    if (extras.dpiX > 0 && extras.dpiY > 0) {
        out.setDotsPerMeterX(int(extras.dpiX / kMetresPerInch + 0.5));
        out.setDotsPerMeterY(int(extras.dpiY / kMetresPerInch + 0.5));
    }
    // Qt writes only a profile it understands; any other goes in afterwards
    // as it stands. What Qt says about one it does not understand is not
    // the user's concern.
    bool rawProfile = false;
    if (!extras.iccProfile.empty()) {
        DiagnosticCatcher quiet;
        const QColorSpace space = QColorSpace::fromIccProfile(
            QByteArray(reinterpret_cast<const char*>(extras.iccProfile.data()),
                       qsizetype(extras.iccProfile.size())));
        if (space.isValid())
            out.setColorSpace(space);
        else
            rawProfile = true;
    }
    DiagnosticCatcher catcher;
    QImageWriter writer(ToQString(path), format == ImageFormat::PNG ? "png" : "jpeg");
    if (format == ImageFormat::JPEG) writer.setQuality(kJpegQuality);
    if (!writer.write(out)) {
        error = path + ": cannot write: " + writer.errorString().toStdString() + catcher.Detail();
        return false;
    }
    return !rawProfile || WriteRawColourProfile(path, extras.iccProfile, error);
}

} // namespace plumet::hosts
