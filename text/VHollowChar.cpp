#include "text/VHollowChar.h"

#include "d3d/DPolyLine.h"
#include "d3d/DStyleObject.h"
#include "d3d/DTriGrid.h"
#include "text/GroupMember.h"

#include <algorithm>
#include <cmath>
#include <vector>

VHollowChar::VHollowChar(const OuterContour& contour, float depthValue)
    : halfDepth(std::isfinite(depthValue) ? depthValue / 10.0f : 0.0f) {
    if (halfDepth <= 0.0f) {
        MakeLine(contour.points, contour.count);
        for (const HoleContour* hole = contour.holes; hole; hole = hole->next)
            MakeLine(hole->points, hole->count);
        return;
    }
    DFillStyle edges;
    edges.Set(kQ3FillStyleEdges);
    AddMember(*this, edges);
    DBackfacingStyle both;
    both.Set(kQ3BackfacingStyleBoth);
    AddMember(*this, both);
    MakeCage(contour.points, contour.count);
    for (const HoleContour* hole = contour.holes; hole; hole = hole->next)
        MakeCage(hole->points, hole->count);
}

void VHollowChar::MakeLine(const float* points, std::uint32_t count) {
    if (!points || count < 2) return;
    const std::uint32_t capacity = DPolyLine::kCapacity;
    std::uint32_t start = 0;
    while (start + 1 < count) {
        const std::uint32_t end = std::min(count, start + capacity);
        DPolyLine line(static_cast<int>(end - start));
        for (std::uint32_t i = start; i < end; ++i)
            line.AddPoint({points[2 * i], points[2 * i + 1], 0.0f});
        line.Finish(false);
        AddMember(*this, line);
        // The next piece starts on the last point of this one.
        start = end - 1;
    }
}

void VHollowChar::MakeCage(const float* points, std::uint32_t count) {
    if (!points || count < 2) return;
    std::vector<TQ3Vertex3D> vertices(2 * static_cast<size_t>(count));
    for (std::uint32_t i = 0; i < count; ++i) {
        const float x = points[2 * i], y = points[2 * i + 1];
        vertices[i] = {{x, y, halfDepth}, nullptr};
        vertices[count + i] = {{x, y, -halfDepth}, nullptr};
    }
    DTriGrid cage(static_cast<int>(count), 2, vertices.data(), 1.0f);
    AddMember(*this, cage);
}
