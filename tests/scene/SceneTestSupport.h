// Helpers of the scene tests: where a scene point lands in a view's window,
// and the view's picture as a PNG.
#pragma once

#include "scene/K3DSystem.h"
#include "scene/VC3DView.h"

#include <QImage>
#include <string>

// The window point of a scene point, through the view's present camera
// transforms.
inline QPoint WindowPointOf(VC3DView& view, const KVector3D& p) {
    VCViewMatrix matrix;
    matrix.Compute(&view);
    KVector3D v;
    matrix.WorldToView(p, v);
    const KVector3D f =
        TransformPoint(TransformPoint(v, matrix.viewToFrustum), matrix.frustumToWindow);
    return {static_cast<int>(f.x + 0.5f), static_cast<int>(f.y + 0.5f)};
}

// Writes the view's front world into the test output folder.
inline void SaveFrontWorld(const VC3DView& view, const std::string& name) {
    const KGWorld& world = *view.frontWorld;
    QImage(world.Row(0), world.GetWidth(), world.GetHeight(), world.GetRowBytes(),
           QImage::Format_ARGB32_Premultiplied)
        .save(QString::fromStdString(std::string(PLUMET_TEST_OUTPUT) + "/" + name));
}
