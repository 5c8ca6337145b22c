#include "d3d/DAxesObject.h"

#include "d3d/DGeometryObject.h"
#include "d3d/DPolyLine.h"

namespace {

TQ3Point3D P(const KVector3D& v) {
    return {v.x, v.y, v.z};
}

} // namespace

DAxesObject::DAxesObject(const KVector3D& o, const KVector3D& l) : DAxesObject(o, l, nullptr) {}

DAxesObject::DAxesObject(const KVector3D& o, const KVector3D& l, const char* name) {
    const float a = l.x, b = l.y, c = l.z;
    const KVector3D tips[3] = {o + KVector3D{a, 0, 0}, o + KVector3D{0, b, 0},
                               o + KVector3D{0, 0, c}};
    // For each axis, two heads of (q1, q2) each.
    const KVector3D heads[3][2][2] = {{{{0.25f * a, 0.1f * b, 0}, {0.25f * a, -0.1f * b, 0}},
                                       {{0.25f * a, 0, 0.1f * c}, {0.25f * a, 0, -0.1f * c}}},
                                      {{{0.1f * a, 0.25f * b, 0}, {-0.1f * a, 0.25f * b, 0}},
                                       {{0, 0.25f * b, 0.1f * c}, {0, 0.25f * b, -0.1f * c}}},
                                      {{{0.1f * a, 0, 0.25f * c}, {-0.1f * a, 0, 0.25f * c}},
                                       {{0, 0.1f * b, 0.25f * c}, {0, -0.1f * b, 0.25f * c}}}};
    for (int axis = 0; axis < 3; ++axis) {
        const KVector3D& t = tips[axis];
        DPolyLine shaft(2);
        shaft.AddPoint(P(o));
        shaft.AddPoint(P(t));
        shaft.Finish(false);
        if (name) shaft.SetTag(name, 0);
        AddObject(shaft);
        for (const auto& head : heads[axis]) {
            const TQ3Point3D corners[3] = {P(t), P(t - head[0]), P(t - head[1])};
            DTriangle triangle(corners, nullptr);
            if (name) triangle.SetTag(name, 0);
            AddObject(triangle);
        }
    }
}

DGuideLineObject::DGuideLineObject(const KVector3D& point) {
    Build(point);
}

void DGuideLineObject::MoveTo(const KVector3D& point) {
    Empty();
    Build(point);
}

void DGuideLineObject::Build(const KVector3D& p) {
    const float x = p.x, y = p.y, z = p.z;
    const TQ3Point3D ends[4][2] = {{{500 * x, 500 * y, 500 * z}, {-500 * x, -500 * y, -500 * z}},
                                   {{500 * x, y, z}, {-500 * x, y, z}},
                                   {{x, 500 * y, z}, {x, -500 * y, z}},
                                   {{x, y, 500 * z}, {x, y, -500 * z}}};
    for (const auto& e : ends) {
        DLineObject line(e[0], e[1], -1, -1, -1);
        AddObject(line);
    }
}
