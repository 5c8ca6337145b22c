// PNG, JPEG and the other formats Qt reads. Only QImage and its readers are
// used: they need no application object and no display.
#include "hosts/ImageFiles.h"

#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QString>
#include <QtGlobal>

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

} // namespace

bool ReadQtImageFile(const std::string& path, HostImage& image, std::string& error) {
    DiagnosticCatcher catcher;
    QImageReader reader(ToQString(path));
    reader.setAutoTransform(true);
    if (!reader.canRead()) {
        error = path + ": unsupported or unreadable image file";
        return false;
    }
    const QSize size = reader.size();
    if (size.isValid() && (size.width() > kMaxImageSide || size.height() > kMaxImageSide)) {
        error = path + ": the image is " + std::to_string(size.width()) + " by " +
                std::to_string(size.height()) + " pixels; at most " +
                std::to_string(kMaxImageSide) + " a side can be filtered";
        return false;
    }
    QImage read;
    if (!reader.read(&read) || read.isNull()) {
        error = path + ": cannot read the image: " + reader.errorString().toStdString() +
                catcher.Detail();
        return false;
    }
    const bool alpha = read.hasAlphaChannel();
    const QImage pixels =
        read.convertToFormat(alpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    if (pixels.isNull()) {
        error = path + ": out of memory while converting the image";
        return false;
    }
    HostImage made;
    if (!MakeImage(pixels.width(), pixels.height(), ColourModel::RGB, alpha, made, error)) {
        error = path + ": " + error;
        return false;
    }
    for (int row = 0; row < made.height; ++row)
        std::memcpy(made.Pixel(row, 0), pixels.constScanLine(row), made.RowBytes());
    image = std::move(made);
    return true;
}

bool WriteQtImageFile(const std::string& path, ImageFormat format, const HostImage& image,
                      std::string& error) {
    if (image.model != ColourModel::RGB) {
        error = path + ": only RGB images can be written in this format";
        return false;
    }
    // JPEG holds no transparency: a layer is flattened over white, as an
    // editor does when it exports a layer to a format without alpha.
    const bool keepAlpha = image.hasAlpha && format == ImageFormat::PNG;
    QImage out(image.width, image.height,
               keepAlpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    if (out.isNull()) {
        error = path + ": out of memory for the image to write";
        return false;
    }
    for (int row = 0; row < image.height; ++row) {
        uchar* dst = out.scanLine(row);
        const uint8_t* src = image.Pixel(row, 0);
        if (keepAlpha || !image.hasAlpha) {
            std::memcpy(dst, src, image.RowBytes());
            continue;
        }
        for (int col = 0; col < image.width; ++col, src += 4, dst += 3) {
            const unsigned a = src[3];
            for (int k = 0; k < 3; ++k)
                dst[k] = uchar((src[k] * a + 255u * (255u - a) + 127u) / 255u);
        }
    }
    DiagnosticCatcher catcher;
    QImageWriter writer(ToQString(path), format == ImageFormat::PNG ? "png" : "jpeg");
    if (format == ImageFormat::JPEG) writer.setQuality(92);
    if (!writer.write(out)) {
        error = path + ": cannot write: " + writer.errorString().toStdString() + catcher.Detail();
        return false;
    }
    return true;
}

} // namespace plumet::hosts
