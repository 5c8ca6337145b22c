// Draws a path and some of its frames into a PNG so that a person can look
// at what the tests measured: an oblique projection of the grid polygon, the
// tangents in red, normals in green and binormals in blue.
#pragma once

#include "curves/VCurve.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPointF>
#include <QString>

#include <algorithm>
#include <string>
#include <vector>

namespace curvetest {

inline QPointF Project(const KVector3D& p) {
    // A view from the front, slightly from above and right.
    return QPointF(p.x + 0.35 * p.z, -(p.y - 0.35 * p.z));
}

// Plots polygon points and frames taken every `step` of arc length; returns
// whether the file was written.
inline bool PlotPath(VCurve& curve, const std::vector<KVector3D>& polygon, const std::string& name,
                     int frames = 40) {
    const int size = 600;
    QImage img(size, size, QImage::Format_RGB32);
    img.fill(QColor(250, 250, 250));
    std::vector<QPointF> pts;
    for (const KVector3D& p : polygon)
        pts.push_back(Project(p));
    if (pts.empty()) return false;
    double x0 = pts[0].x(), x1 = x0, y0 = pts[0].y(), y1 = y0;
    for (const QPointF& q : pts) {
        x0 = std::min(x0, q.x());
        x1 = std::max(x1, q.x());
        y0 = std::min(y0, q.y());
        y1 = std::max(y1, q.y());
    }
    const double span = std::max({x1 - x0, y1 - y0, 1e-3});
    const double scale = (size - 80) / span;
    auto map = [&](const QPointF& q) {
        return QPointF(40 + (q.x() - x0) * scale + ((size - 80) - (x1 - x0) * scale) / 2,
                       40 + (q.y() - y0) * scale + ((size - 80) - (y1 - y0) * scale) / 2);
    };
    QPainter painter(&img);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(40, 40, 40), 1.5));
    for (std::size_t i = 1; i < pts.size(); ++i)
        painter.drawLine(map(pts[i - 1]), map(pts[i]));
    const float len = curve.GetLength();
    const double arm = 18.0 / scale;
    for (int i = 0; i < frames && len > 0; ++i) {
        KVector3D p, t, n, b;
        if (!curve.GetFrame(len * float(i) / float(frames), p, t, n, b)) continue;
        QPointF o = map(Project(p));
        painter.setPen(QPen(QColor(220, 30, 30), 1.5));
        painter.drawLine(o, map(Project(p + t * float(arm))));
        painter.setPen(QPen(QColor(20, 170, 20), 1.5));
        painter.drawLine(o, map(Project(p + n * float(arm))));
        painter.setPen(QPen(QColor(30, 60, 220), 1.5));
        painter.drawLine(o, map(Project(p + b * float(arm))));
    }
    painter.end();
    return img.save(QString::fromStdString(std::string(PLUMET_TEST_OUTPUT) + "/" + name));
}

} // namespace curvetest
