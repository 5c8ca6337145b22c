#include "bench/render/LetterMesh.h"

#include "text/FontList.h"
#include "text/TextCharacter.h"

#include <algorithm>
#include <cmath>

namespace {

struct Contour {
    std::vector<TQ3Point3D> points; // open: the repeated last point dropped
};

float signedArea(const std::vector<TQ3Point3D>& p) {
    double a = 0;
    for (std::size_t i = 0; i < p.size(); ++i) {
        const TQ3Point3D &u = p[i], &v = p[(i + 1) % p.size()];
        a += static_cast<double>(u.x) * v.y - static_cast<double>(v.x) * u.y;
    }
    return static_cast<float>(a / 2);
}

Contour readContour(const float* xy, std::uint32_t count, float dx, float dy, float scale,
                    bool counterClockwise) {
    Contour c;
    if (count > 1 && xy[0] == xy[2 * (count - 1)] && xy[1] == xy[2 * (count - 1) + 1]) --count;
    for (std::uint32_t i = 0; i < count; ++i)
        c.points.push_back({(xy[2 * i] + dx) * scale, (xy[2 * i + 1] + dy) * scale, 0});
    if ((signedArea(c.points) > 0) != counterClockwise)
        std::reverse(c.points.begin(), c.points.end());
    return c;
}

void addCap(TQ3GroupObject group, std::vector<Contour> contours, float z, bool front) {
    std::vector<std::vector<TQ3Vertex3D>> verts;
    std::vector<TQ3GeneralPolygonContourData> data;
    for (Contour& c : contours) {
        if (!front) std::reverse(c.points.begin(), c.points.end());
        std::vector<TQ3Vertex3D> v;
        for (TQ3Point3D p : c.points)
            v.push_back({{p.x, p.y, z}, nullptr});
        verts.push_back(std::move(v));
    }
    for (auto& v : verts)
        data.push_back({static_cast<TQ3Uns32>(v.size()), v.data()});
    TQ3GeneralPolygonData d{static_cast<TQ3Uns32>(data.size()), data.data(),
                            kQ3GeneralPolygonShapeHintComplex, nullptr};
    if (TQ3GeometryObject g = Q3GeneralPolygon_New(&d)) {
        Q3Group_AddObject(group, g);
        Q3Object_Dispose(g);
    }
}

// The side of one contour: a grid of two rows, front edge over back edge.
void addSide(TQ3GroupObject group, const Contour& c, float depth) {
    const std::size_t n = c.points.size();
    std::vector<TQ3Vertex3D> v;
    for (int row = 0; row < 2; ++row)
        for (std::size_t i = 0; i <= n; ++i) {
            const TQ3Point3D& p = c.points[i % n];
            v.push_back({{p.x, p.y, row == 0 ? depth / 2 : -depth / 2}, nullptr});
        }
    TQ3TriGridData d{2, static_cast<TQ3Uns32>(n + 1), v.data(), nullptr, nullptr};
    if (TQ3GeometryObject g = Q3TriGrid_New(&d)) {
        Q3Group_AddObject(group, g);
        Q3Object_Dispose(g);
    }
}

} // namespace

LetterMesh buildLetterMesh(const char* fontName, const std::vector<std::string>& lines,
                           float depth) {
    LetterMesh mesh;
    mesh.group = Q3DisplayGroup_New();
    BuildFontList();
    if (!SetCurrentFont(FindFontListPosition(fontName))) return mesh;
    // measure first, so that the block can be centred and scaled to a height
    // of one unit a line
    std::vector<TextCharacter*> chains;
    float lineHeight = 0, widest = 0;
    for (const std::string& line : lines) {
        TextCharacter* chain = nullptr;
        BuildTextCharacters(line.c_str(), 2, &chain);
        float w = 0;
        for (const TextCharacter* c = chain; c; c = c->next) {
            w += c->advance;
            lineHeight = std::max(lineHeight, c->yMax - std::min(c->yMin, 0.0f));
        }
        widest = std::max(widest, w);
        chains.push_back(chain);
    }
    if (lineHeight <= 0) lineHeight = 1;
    const float scale = 1 / lineHeight;
    mesh.width = widest * scale;
    mesh.height = static_cast<float>(lines.size());
    for (std::size_t l = 0; l < chains.size(); ++l) {
        float pen = -widest / 2;
        const float base =
            (static_cast<float>(lines.size()) / 2 - 1 - static_cast<float>(l) + 0.2f) * lineHeight;
        for (const TextCharacter* c = chains[l]; c; c = c->next) {
            for (const OuterContour* o = c->contours; o; o = o->next) {
                std::vector<Contour> cap;
                cap.push_back(readContour(o->points, o->count, pen, base, scale, true));
                for (const HoleContour* h = o->holes; h; h = h->next)
                    cap.push_back(readContour(h->points, h->count, pen, base, scale, false));
                bool usable = true;
                for (const Contour& k : cap)
                    usable &= k.points.size() >= 3;
                if (!usable) continue;
                addCap(mesh.group, cap, depth / 2, true);
                addCap(mesh.group, cap, -depth / 2, false);
                for (const Contour& k : cap) {
                    addSide(mesh.group, k, depth);
                    mesh.contourPoints += k.points.size();
                }
            }
            pen += c->advance;
        }
        FreeTextCharacters(chains[l]);
    }
    return mesh;
}
