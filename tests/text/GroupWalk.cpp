#include "tests/text/GroupWalk.h"

#include <cmath>
#include <map>
#include <tuple>

namespace textgeom {

namespace {

TQ3Matrix4x4 Multiply(const TQ3Matrix4x4& a, const TQ3Matrix4x4& b) {
    TQ3Matrix4x4 r;
    Q3Matrix4x4_Multiply(&a, &b, &r);
    return r;
}

TQ3Matrix4x4 Identity() {
    TQ3Matrix4x4 m;
    Q3Matrix4x4_SetIdentity(&m);
    return m;
}

bool Has(TQ3AttributeSet set, TQ3AttributeType type) {
    return set && Q3AttributeSet_Contains(set, type) == kQ3True;
}

WalkedVertex ReadVertex(const TQ3Vertex3D& v, const TQ3Matrix4x4& m) {
    WalkedVertex out;
    out.point = Apply(m, v.point);
    out.hasUV = Has(v.attributeSet, kQ3AttributeTypeSurfaceUV);
    if (Has(v.attributeSet, kQ3AttributeTypeNormal)) {
        out.hasNormal = true;
        Q3AttributeSet_Get(v.attributeSet, kQ3AttributeTypeNormal, &out.normal);
    }
    out.transparent = Has(v.attributeSet, kQ3AttributeTypeTransparencyColor);
    return out;
}

struct State {
    TQ3Matrix4x4 matrix;
    bool coloured = false;
    TQ3ColorRGB colour{};
};

void WalkInto(TQ3GroupObject group, State state, Walked& out) {
    for (TQ3Object member : Members(group)) {
        if (Q3Object_IsType(member, kQ3ShapeTypeGroup) == kQ3True) {
            WalkInto(member, state, out);
        } else if (Q3Object_IsType(member, kQ3ShapeTypeTransform) == kQ3True) {
            TQ3Matrix4x4 t;
            Q3Transform_GetMatrix(member, &t);
            state.matrix = Multiply(t, state.matrix);
        } else if (Q3Object_IsType(member, kQ3SetTypeAttribute) == kQ3True) {
            if (Has(member, kQ3AttributeTypeDiffuseColor)) {
                state.coloured = true;
                Q3AttributeSet_Get(member, kQ3AttributeTypeDiffuseColor, &state.colour);
            }
        } else if (Q3Object_IsType(member, kQ3StyleTypeBackfacing) == kQ3True) {
            TQ3BackfacingStyle b{};
            Q3BackfacingStyle_Get(member, &b);
            out.backfacing.push_back(b);
        } else if (Q3Object_IsType(member, kQ3StyleTypeFill) == kQ3True) {
            TQ3FillStyle f{};
            Q3FillStyle_Get(member, &f);
            out.fills.push_back(f);
        } else if (Q3Object_IsType(member, kQ3GeometryTypeGeneralPolygon) == kQ3True) {
            TQ3GeneralPolygonData d{};
            Q3GeneralPolygon_GetData(member, &d);
            WalkedPolygon p;
            p.transparent = Has(d.generalPolygonAttributeSet, kQ3AttributeTypeTransparencyColor);
            for (TQ3Uns32 k = 0; k < d.numContours; ++k) {
                p.contours.emplace_back();
                for (TQ3Uns32 i = 0; i < d.contours[k].numVertices; ++i)
                    p.contours.back().push_back(
                        ReadVertex(d.contours[k].vertices[i], state.matrix));
            }
            Q3GeneralPolygon_EmptyData(&d);
            out.polygons.push_back(std::move(p));
        } else if (Q3Object_IsType(member, kQ3GeometryTypeTriGrid) == kQ3True) {
            TQ3TriGridData d{};
            Q3TriGrid_GetData(member, &d);
            WalkedGrid g;
            g.rows = d.numRows;
            g.columns = d.numColumns;
            for (TQ3Uns32 i = 0; i < d.numRows * d.numColumns; ++i)
                g.vertices.push_back(ReadVertex(d.vertices[i], state.matrix));
            g.transparent = Has(d.triGridAttributeSet, kQ3AttributeTypeTransparencyColor);
            if (d.facetAttributeSet)
                for (TQ3Uns32 f = 0; f < 2 * (d.numRows - 1) * (d.numColumns - 1); ++f)
                    g.transparentFacets +=
                        Has(d.facetAttributeSet[f], kQ3AttributeTypeTransparencyColor) ? 1 : 0;
            g.coloured = state.coloured;
            g.colour = state.colour;
            Q3TriGrid_EmptyData(&d);
            out.grids.push_back(std::move(g));
        } else if (Q3Object_IsType(member, kQ3GeometryTypePolyLine) == kQ3True) {
            TQ3PolyLineData d{};
            Q3PolyLine_GetData(member, &d);
            out.lines.emplace_back();
            for (TQ3Uns32 i = 0; i < d.numVertices; ++i)
                out.lines.back().push_back(Apply(state.matrix, d.vertices[i].point));
            Q3PolyLine_EmptyData(&d);
        }
        Q3Object_Dispose(member);
    }
}

using Key = std::tuple<long, long, long>;

Key KeyOf(const TQ3Point3D& p) {
    return {std::lround(p.x * 1e4), std::lround(p.y * 1e4), std::lround(p.z * 1e4)};
}

double Det(const TQ3Point3D& a, const TQ3Point3D& b, const TQ3Point3D& c) {
    return double(a.x) * (double(b.y) * c.z - double(b.z) * c.y) -
           double(a.y) * (double(b.x) * c.z - double(b.z) * c.x) +
           double(a.z) * (double(b.x) * c.y - double(b.y) * c.x);
}

} // namespace

TQ3Point3D Apply(const TQ3Matrix4x4& m, const TQ3Point3D& p) {
    TQ3Point3D r;
    Q3Point3D_Transform(&p, &m, &r);
    return r;
}

TQ3Vector3D ApplyVector(const TQ3Matrix4x4& m, const TQ3Vector3D& v) {
    TQ3Vector3D r;
    Q3Vector3D_Transform(&v, &m, &r);
    return r;
}

Walked Walk(TQ3GroupObject group) {
    Walked out;
    WalkInto(group, State{Identity()}, out);
    return out;
}

TQ3Matrix4x4 HeadMatrix(TQ3GroupObject group) {
    TQ3Matrix4x4 m = Identity();
    for (TQ3Object member : Members(group)) {
        if (Q3Object_IsType(member, kQ3ShapeTypeTransform) == kQ3True) {
            TQ3Matrix4x4 t;
            Q3Transform_GetMatrix(member, &t);
            m = Multiply(t, m);
        }
        Q3Object_Dispose(member);
    }
    return m;
}

namespace {

struct Triangle {
    TQ3Point3D a, b, c;
};

// The cells of a grid as the library splits them.
std::vector<Triangle> GridTriangles(const WalkedGrid& grid) {
    std::vector<Triangle> out;
    auto at = [&](std::uint32_t r, std::uint32_t c) {
        return grid.vertices[r * grid.columns + c].point;
    };
    for (std::uint32_t r = 0; r + 1 < grid.rows; ++r)
        for (std::uint32_t c = 0; c + 1 < grid.columns; ++c) {
            if ((r + c) % 2 == 0) {
                out.push_back({at(r, c), at(r + 1, c), at(r + 1, c + 1)});
                out.push_back({at(r, c), at(r + 1, c + 1), at(r, c + 1)});
            } else {
                out.push_back({at(r, c), at(r + 1, c), at(r, c + 1)});
                out.push_back({at(r, c + 1), at(r + 1, c), at(r + 1, c + 1)});
            }
        }
    return out;
}

} // namespace

double SignedVolume(const Walked& walked) {
    double sum = 0;
    for (const auto& polygon : walked.polygons)
        for (const auto& contour : polygon.contours)
            for (size_t i = 1; i + 1 < contour.size(); ++i)
                sum += Det(contour[0].point, contour[i].point, contour[i + 1].point);
    for (const auto& grid : walked.grids)
        for (const Triangle& t : GridTriangles(grid))
            sum += Det(t.a, t.b, t.c);
    return sum / 6.0;
}

std::uint32_t UnpairedEdges(const Walked& walked) {
    std::map<std::pair<Key, Key>, int> edges;
    auto add = [&](const TQ3Point3D& a, const TQ3Point3D& b) {
        const Key ka = KeyOf(a), kb = KeyOf(b);
        if (ka == kb) return;
        // A directed edge cancels one running the other way.
        auto reverse = edges.find({kb, ka});
        if (reverse != edges.end()) {
            if (--reverse->second == 0) edges.erase(reverse);
        } else {
            ++edges[{ka, kb}];
        }
    };
    for (const auto& polygon : walked.polygons)
        for (const auto& contour : polygon.contours)
            for (size_t i = 0; i < contour.size(); ++i)
                add(contour[i].point, contour[(i + 1) % contour.size()].point);
    for (const auto& grid : walked.grids)
        for (const Triangle& t : GridTriangles(grid)) {
            add(t.a, t.b);
            add(t.b, t.c);
            add(t.c, t.a);
        }
    std::uint32_t left = 0;
    for (const auto& e : edges)
        left += static_cast<std::uint32_t>(e.second);
    return left;
}

} // namespace textgeom
