// Helpers of the scene tests: where a scene point lands in a view's window,
// the view's picture as a PNG, whole gestures and the messages heard.
#pragma once

#include "curves/VCurve.h"
#include "foundation/WListener.h"
#include "scene/K3DSystem.h"
#include "scene/VC3DView.h"

#include <QImage>
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

// Records the messages a view broadcasts.
struct Heard : KListener {
    std::vector<std::int32_t> messages;
    void HearMessage(std::int32_t message, void*) override { messages.push_back(message); }
    long Count(std::int32_t message) const {
        return std::count(messages.begin(), messages.end(), message);
    }
};

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

// Where a path runs in the view's window: 201 points evenly along it.
inline std::vector<QPointF> ProjectPath(VC3DView& view, VCurve& path) {
    std::vector<QPointF> line;
    for (int i = 0; i <= 200; ++i) {
        KVector3D p;
        path.GetPointAt(path.GetLength() * float(i) / 200.0f * 0.9999f, p);
        p.w = 1;
        line.emplace_back(WindowPointOf(view, p));
    }
    return line;
}

inline float Distance(QPoint a, QPoint b) {
    return std::hypot(float(a.x() - b.x()), float(a.y() - b.y()));
}

// Writes the view's front world into the test output folder.
inline void SaveFrontWorld(const VC3DView& view, const std::string& name) {
    const KGWorld& world = *view.frontWorld;
    QImage(world.Row(0), world.GetWidth(), world.GetHeight(), world.GetRowBytes(),
           QImage::Format_ARGB32_Premultiplied)
        .save(QString::fromStdString(std::string(PLUMET_TEST_OUTPUT) + "/" + name));
}

// Window coordinates as the window passes them to the tool handler.
inline std::int16_t X(QPoint p) {
    return static_cast<std::int16_t>(p.x());
}
inline std::int16_t Y(QPoint p) {
    return static_cast<std::int16_t>(p.y());
}

// The modifier keys as the window reports them: a press starts afresh.
inline void HoldKeys(VC3DView& view, std::uint16_t modifiers, bool press) {
    if (press) view.ResetModifiers();
    for (std::uint16_t bit : {kModCtrl, kModShift, kModAlt})
        view.SetModifier(bit, (modifiers & bit) ? std::int16_t(0x8000) : std::int16_t(1));
}

// Press, moves through the points, release at the last, with the modifiers
// held throughout.
inline void Gesture(VC3DView& view, const std::vector<QPoint>& points,
                    std::uint16_t modifiers = 0) {
    HoldKeys(view, modifiers, true);
    view.MouseDown(X(points.front()), Y(points.front()));
    for (std::size_t i = 1; i < points.size(); ++i) {
        HoldKeys(view, modifiers, false);
        view.MouseMove(X(points[i]), Y(points[i]));
    }
    HoldKeys(view, modifiers, false);
    view.MouseUp(X(points.back()), Y(points.back()));
}
