// The document's view bound to a host image of its own, drawing offscreen,
// as the filter runs it: the setting of the view benchmarks.
#pragma once

#include "scene/VZarbesoView.h"
#include "ui/VZarbesoDocument.h"

#include <QImage>
#include <cstdint>
#include <string>
#include <vector>

struct HostImage {
    HostImage(int w, int h) : width(w), height(h), in(std::size_t(w) * h * 3), out(in.size()) {
        for (std::size_t i = 0; i < in.size(); ++i)
            in[i] = static_cast<uint8_t>(i * 13);
    }
    int width, height;
    std::vector<uint8_t> in, out;
};

// The default document's view bound to `image` at its size, drawing offscreen.
inline VZarbesoView& Bind(VZarbesoDocument& document, HostImage& image) {
    document.ApplyDefaults();
    VZarbesoView& view = *document.GetView();
    view.Resize(image.width, image.height, 515, 324, false);
    view.SetHostImage(image.in.data(), image.width * 3, image.out.data(), image.width * 3,
                      static_cast<int16>(image.width), static_cast<int16>(image.height), 3, -1, 0,
                      plugInModeRGBColor);
    view.SetOffscreen(true);
    return view;
}

// The view's front world as a PNG of at most 1000 pixels across.
inline void SaveFrontWorld(const VZarbesoView& view, const std::string& path) {
    const KGWorld& world = *view.frontWorld;
    QImage image(world.Row(0), world.GetWidth(), world.GetHeight(), world.GetRowBytes(),
                 QImage::Format_ARGB32_Premultiplied);
    if (image.width() > 1000) image = image.scaledToWidth(1000, Qt::SmoothTransformation);
    image.save(QString::fromStdString(path));
}
