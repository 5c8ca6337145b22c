#include "d3d/DWidget.h"

#include "d3d/DGeometryObject.h"
#include "d3d/DPolyLine.h"
#include "d3d/DPolygon.h"
#include "d3d/DStyleObject.h"
#include "d3d/DWidgetColors.h"

#include <cmath>

DWidget::DWidget(std::uint32_t id) : pickId(id | kWidgetPickBit) {
    SetDiffuseColor(kWidgetGrey, kWidgetGrey, kWidgetGrey);
}

namespace {

TQ3Point3D P(const KVector3D& v) {
    return {v.x, v.y, v.z};
}

} // namespace

DWidgetHandle::DWidgetHandle(const KVector3D& p, const KVector3D& h, const char*,
                             std::uint32_t id) {
    SetDiffuseColor(1, 0, 0);
    DPickIDStyle pick(id);
    AddObject(pick);
    DBackfacingStyle both;
    AddObject(both);
    const KVector3D hx{h.x, 0, 0}, hy{0, h.y, 0}, hz{0, 0, h.z};
    const KVector3D diamonds[3][4] = {{p + hx, p - hz, p - hx, p + hz},
                                      {p + hx, p - hy, p - hx, p + hy},
                                      {p + hz, p - hy, p - hz, p + hy}};
    const TQ3Vector3D normals[3] = {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}};
    for (int d = 0; d < 3; ++d) {
        TQ3Point3D points[4];
        TQ3Vector3D n[4];
        for (int i = 0; i < 4; ++i) {
            points[i] = P(diamonds[d][i]);
            n[i] = normals[d];
        }
        DPolygon diamond(4, points, n);
        AddObject(diamond);
    }
}

DWidgetHandle::DWidgetHandle(const KVector3D& point, float halfSize, const char* name,
                             std::uint32_t id)
    : DWidgetHandle(point, KVector3D{halfSize, halfSize, halfSize}, name, id) {}

float UsableScale(float s) {
    return std::isfinite(s) && s != 0.0f ? s : 1.0f;
}

void BoxCorners(const TQ3BoundingBox& box, KVector3D c[8]) {
    const float x0 = box.min.x, y0 = box.min.y, z0 = box.min.z;
    const float x1 = box.max.x, y1 = box.max.y, z1 = box.max.z;
    c[0] = {x1, y1, z1};
    c[1] = {x1, y1, z0};
    c[2] = {x1, y0, z0};
    c[3] = {x1, y0, z1};
    c[4] = {x0, y1, z1};
    c[5] = {x0, y1, z0};
    c[6] = {x0, y0, z0};
    c[7] = {x0, y0, z1};
}

void AddWireBox(DGroupObject& group, const KVector3D c[8], std::uint32_t id) {
    DPickIDStyle pick(id);
    group.AddObject(pick);
    static const int edges[12][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {0, 4}, {1, 5},
                                     {2, 6}, {3, 7}, {4, 5}, {5, 6}, {6, 7}, {7, 4}};
    for (const auto& e : edges) {
        DLineObject line(P(c[e[0]]), P(c[e[1]]), -1, -1, -1);
        group.AddObject(line);
    }
}

void AddRing(DGroupObject& group, int ring, const KVector3D& c, float r, const char* tag,
             std::int32_t tagNumber) {
    DPolyLine line(32);
    for (int k = 0; k < 32; ++k) {
        const float t = static_cast<float>(k) * (2.0f * 3.1415927f / 32.0f);
        const float s = r * std::sin(t), co = r * std::cos(t);
        TQ3Point3D p;
        if (ring == 1)
            p = {c.x + s, c.y + co, c.z};
        else if (ring == 2)
            p = {c.x, c.y + s, c.z + co};
        else
            p = {c.x + co, c.y, c.z + s};
        line.AddPoint(p);
    }
    line.Finish(true);
    if (tag) line.SetTag(tag, tagNumber);
    group.AddObject(line);
}
