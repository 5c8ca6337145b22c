#include "text/VSolidChar.h"

#include "d3d/DPolygon.h"
#include "d3d/DStyleObject.h"
#include "d3d/DTransformObject.h"
#include "d3d/DTriGrid.h"
#include "text/GroupMember.h"

#include <cmath>
#include <vector>

namespace {

constexpr std::uint32_t kMinimumContourCount = 4; // three corners and the close

float FiniteOr(float value, float fallback) {
    return std::isfinite(value) ? value : fallback;
}

// A new attribute set holding a surface UV and, if given, a normal.
DReference MakeVertexSet(float u, float v, const TQ3Vector3D* normal) {
    DReference set(Q3AttributeSet_New());
    CheckObject(set.get());
    const TQ3Param2D uv{u, v};
    CheckStatus(Q3AttributeSet_Add(set.get(), kQ3AttributeTypeSurfaceUV, &uv));
    if (normal) CheckStatus(Q3AttributeSet_Add(set.get(), kQ3AttributeTypeNormal, normal));
    return set;
}

// The direction whose normal the side takes at point i, by how smooth the
// point and its neighbours are; false for a corner between straight edges,
// which keeps the flat normals of its triangles.
bool SideDirection(const float* points, const std::uint8_t* smooth, std::uint32_t n,
                   std::uint32_t i, float& dx, float& dy) {
    // The last point repeats the first: the one before 0 is n - 2, the one
    // after n - 1 is 1.
    const std::uint32_t p = i == 0 ? n - 2 : i - 1;
    const std::uint32_t q = i == n - 1 ? 1 : i + 1;
    const bool si = smooth && smooth[i], sp = smooth && smooth[p], sq = smooth && smooth[q];
    std::uint32_t from, to;
    if (si || (sp && sq)) {
        from = p;
        to = q;
    } else if (sq) {
        from = p;
        to = i;
    } else if (sp) {
        from = i;
        to = q;
    } else {
        return false;
    }
    dx = points[2 * to] - points[2 * from];
    dy = points[2 * to + 1] - points[2 * from + 1];
    return true;
}

} // namespace

bool IsDrawableContour(const float* points, std::uint32_t count) {
    return points && count >= kMinimumContourCount;
}

VSolidChar::VSolidChar(const OuterContour& contour, float depthValue, float textYMin,
                       float textYMax, float textOpacity, const std::uint16_t* sides)
    : depth(std::fmax(FiniteOr(depthValue, 0.0f), 0.0f) / 5.0f), yMin(FiniteOr(textYMin, 0.0f)),
      yMax(FiniteOr(textYMax, 0.0f)), textureScale(1.0f), opacity(FiniteOr(textOpacity, 1.0f)),
      sideColor(sides) {
    const float span = yMax - yMin;
    if (span > 0.0f && std::isfinite(1.0f / span)) textureScale = 1.0f / span;

    if (opacity < 1.0f) {
        // The inside of a see-through letter shows through its front.
        DBackfacingStyle both;
        both.Set(kQ3BackfacingStyleBoth);
        AddMember(*this, both);
    }
    DTranslateTransform centre(0.0f, 0.0f, -depth / 2.0f);
    AddMember(*this, centre);

    if (!IsDrawableContour(contour.points, contour.count)) return;
    MakeFaces(contour);
    if (depth == 0.0f) return;
    MakeSide(contour.points, contour.smooth, contour.count);
    for (const HoleContour* hole = contour.holes; hole; hole = hole->next)
        if (IsDrawableContour(hole->points, hole->count))
            MakeSide(hole->points, hole->smooth, hole->count);
}

void VSolidChar::MakeFaces(const OuterContour& contour) {
    struct Source {
        const float* points;
        std::uint32_t count;
    };
    std::vector<Source> sources{{contour.points, contour.count}};
    for (const HoleContour* hole = contour.holes; hole; hole = hole->next)
        if (IsDrawableContour(hole->points, hole->count))
            sources.push_back({hole->points, hole->count});

    const size_t contours = sources.size();
    std::vector<int> counts(contours);
    std::vector<std::vector<TQ3Vertex3D>> near(contours), far(contours);
    std::vector<DReference> sets;
    for (size_t k = 0; k < contours; ++k) {
        // The closing point repeats the first and is left out of the face.
        const std::uint32_t n = sources[k].count - 1;
        counts[k] = static_cast<int>(n);
        near[k].resize(n);
        far[k].resize(n);
        for (std::uint32_t i = 0; i < n; ++i) {
            const float x = sources[k].points[2 * i], y = sources[k].points[2 * i + 1];
            sets.push_back(MakeVertexSet(textureScale * x, textureScale * (y - yMin), nullptr));
            TQ3AttributeSet set = sets.back().get();
            near[k][i] = {{x, y, 0.0f}, set};
            // The far face runs each contour backwards, so that it looks
            // toward +z as the near one looks toward -z.
            far[k][n - 1 - i] = {{x, y, depth}, set};
        }
    }
    std::vector<const TQ3Vertex3D*> nearArrays(contours), farArrays(contours);
    for (size_t k = 0; k < contours; ++k) {
        nearArrays[k] = near[k].data();
        farArrays[k] = far[k].data();
    }
    const int contourCount = static_cast<int>(contours);
    DGenPolygon nearFace(contourCount, counts.data(), nearArrays.data(), opacity);
    AddMember(*this, nearFace);
    DGenPolygon farFace(contourCount, counts.data(), farArrays.data(), opacity);
    AddMember(*this, farFace);
}

void VSolidChar::MakeSide(const float* points, const std::uint8_t* smooth, std::uint32_t n) {
    // Row 0 lies at z = 0 and row 1 at z = depth: the library forms the
    // cell (0, i) (1, i) (1, i + 1) (0, i + 1), which, along a contour that
    // runs clockwise seen from +z (and a hole, which runs the other way),
    // faces out of the body.
    std::vector<TQ3Vertex3D> vertices(2 * static_cast<size_t>(n));
    std::vector<DReference> sets;
    sets.reserve(2 * static_cast<size_t>(n));
    float s = 0.0f;
    for (std::uint32_t i = 0; i < n; ++i) {
        const float x = points[2 * i], y = points[2 * i + 1];
        if (i > 0) s += std::hypot(x - points[2 * i - 2], y - points[2 * i - 1]);
        TQ3Vector3D normal{};
        const TQ3Vector3D* normalIf = nullptr;
        float dx = 0.0f, dy = 0.0f;
        if (SideDirection(points, smooth, n, i, dx, dy)) {
            const float length = std::hypot(dx, dy);
            if (length > 0.0f && std::isfinite(length)) {
                normal = {-dy / length, dx / length, 0.0f};
                normalIf = &normal;
            }
        }
        sets.push_back(MakeVertexSet(0.0f, s * textureScale, normalIf));
        vertices[i] = {{x, y, 0.0f}, sets.back().get()};
        sets.push_back(MakeVertexSet(depth / 2.0f * textureScale, s * textureScale, normalIf));
        vertices[n + i] = {{x, y, depth}, sets.back().get()};
    }
    DTriGrid band(static_cast<int>(n), 2, vertices.data(), opacity);
    if (sideColor) {
        DAttributeDisplayGroup coloured;
        coloured.SetDiffuseColor(sideColor[0] / 65535.0f, sideColor[1] / 65535.0f,
                                 sideColor[2] / 65535.0f);
        AddMember(coloured, band);
        AddMember(*this, coloured);
    } else {
        AddMember(*this, band);
    }
}
