#include "d3d/DPolygon.h"

#include <cmath>

DPolygon::DPolygon() : vertices{} {}

DPolygon::DPolygon(int n, const TQ3Point3D* points, const TQ3Vector3D* normals) : vertices{} {
    CheckVertexCount(n);
    if (n > 0 && !points) CheckObject(nullptr);
    std::vector<DReference> sets;
    std::vector<TQ3Vertex3D> own(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        own[i].point = points[i];
        if (normals) {
            sets.push_back(MakeNormalSet(normals[i]));
            own[i].attributeSet = sets.back().get();
        }
    }
    TQ3PolygonData data{static_cast<TQ3Uns32>(n), own.data(), nullptr};
    object = Q3Polygon_New(&data);
    CheckObject(object);
}

void DPolygon::AddVertex(const TQ3Point3D& point) {
    if (count > 260) throw kFailTooManyVertices;
    vertices[count++] = {point, nullptr};
}

void DPolygon::Finish() {
    ReleaseObject();
    for (int i = 0; i < count; ++i)
        vertices[i].attributeSet = nullptr;
    TQ3PolygonData data{static_cast<TQ3Uns32>(count), vertices, nullptr};
    object = Q3Polygon_New(&data);
    CheckObject(object);
}

DTransparencySets::DTransparencySets(float opacity)
    : active(opacity < 1.0f), color{opacity, opacity, opacity} {
    if (!active) return;
    if (!std::isfinite(opacity)) color = {0, 0, 0};
    geometrySet.reset(Q3AttributeSet_New());
    CheckObject(geometrySet.get());
    CheckStatus(Q3AttributeSet_Add(geometrySet.get(), kQ3AttributeTypeTransparencyColor, &color));
}

TQ3AttributeSet DTransparencySets::ForVertex(TQ3AttributeSet own) {
    if (!active) return own;
    DReference set(Q3AttributeSet_New());
    CheckObject(set.get());
    // The caller's set may be shared by other geometry, so the
    // transparency goes on a copy of it rather than on the set itself.
    if (own)
        CheckStatus(Q3AttributeSet_Inherit(own, geometrySet.get(), set.get()));
    else
        CheckStatus(Q3AttributeSet_Add(set.get(), kQ3AttributeTypeTransparencyColor, &color));
    vertexSets.push_back(std::move(set));
    return vertexSets.back().get();
}

DGenPolygon::DGenPolygon() = default;

namespace {

TQ3GeometryObject NewGeneralPolygon(std::vector<std::vector<TQ3Vertex3D>>& contours,
                                    TQ3AttributeSet set) {
    std::vector<TQ3GeneralPolygonContourData> data;
    for (auto& c : contours)
        data.push_back({static_cast<TQ3Uns32>(c.size()), c.data()});
    TQ3GeneralPolygonData polygon{static_cast<TQ3Uns32>(data.size()), data.data(),
                                  data.size() == 1 ? kQ3GeneralPolygonShapeHintConcave
                                                   : kQ3GeneralPolygonShapeHintComplex,
                                  set};
    return Q3GeneralPolygon_New(&polygon);
}

} // namespace

DGenPolygon::DGenPolygon(int n, const TQ3Point3D* points, const TQ3Vector3D* normals)
    : DGenPolygon(1, &n, &points, normals ? &normals : nullptr) {}

DGenPolygon::DGenPolygon(int contourCount, const int* counts, const TQ3Point3D* const* points,
                         const TQ3Vector3D* const* normals) {
    if (contourCount <= 0 || !counts || !points) CheckObject(nullptr);
    CheckVertexCount(contourCount);
    std::vector<DReference> sets;
    std::vector<std::vector<TQ3Vertex3D>> contours(static_cast<size_t>(contourCount));
    for (int k = 0; k < contourCount; ++k) {
        CheckVertexCount(counts[k]);
        if (counts[k] > 0 && !points[k]) CheckObject(nullptr);
        const TQ3Vector3D* n = normals ? normals[k] : nullptr;
        for (int i = 0; i < counts[k]; ++i) {
            TQ3AttributeSet set = nullptr;
            if (n) {
                sets.push_back(MakeNormalSet(n[i]));
                set = sets.back().get();
            }
            contours[k].push_back({points[k][i], set});
        }
    }
    object = NewGeneralPolygon(contours, nullptr);
    CheckObject(object);
}

DGenPolygon::DGenPolygon(int contourCount, const int* counts,
                         const TQ3Vertex3D* const* vertexArrays, float opacity) {
    if (contourCount <= 0 || !counts || !vertexArrays) CheckObject(nullptr);
    CheckVertexCount(contourCount);
    DTransparencySets transparency(opacity);
    std::vector<std::vector<TQ3Vertex3D>> contours(static_cast<size_t>(contourCount));
    for (int k = 0; k < contourCount; ++k) {
        CheckVertexCount(counts[k]);
        if (counts[k] > 0 && !vertexArrays[k]) CheckObject(nullptr);
        for (int i = 0; i < counts[k]; ++i) {
            TQ3Vertex3D v = vertexArrays[k][i];
            v.attributeSet = transparency.ForVertex(v.attributeSet);
            contours[k].push_back(v);
        }
    }
    object = NewGeneralPolygon(contours, transparency.GeometrySet());
    CheckObject(object);
}

void DGenPolygon::Finish() {
    ReleaseObject();
    std::vector<std::vector<TQ3Vertex3D>> contours(1);
    for (int i = 0; i < count; ++i)
        contours[0].push_back({vertices[i].point, nullptr});
    object = NewGeneralPolygon(contours, nullptr);
    CheckObject(object);
}
