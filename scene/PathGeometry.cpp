#include "scene/PathGeometry.h"

#include "curves/VCurveAnalytical.h"
#include "d3d/DGroupObject.h"
#include "d3d/DPolyLine.h"
#include "d3d/DShaderObject.h"

#include <algorithm>
#include <vector>

void AddUnlitGreen(DDisplayGroup& group) {
    DNullIllumination unlit;
    group.AddObject(unlit);
    TQ3AttributeSet colour = Q3AttributeSet_New();
    const TQ3ColorRGB green = {kPathColour[0], kPathColour[1], kPathColour[2]};
    Q3AttributeSet_Add(colour, kQ3AttributeTypeDiffuseColor, &green);
    group.AddObject(colour);
    Q3Object_Dispose(colour);
}

void BuildPathGeometry(const VCurve& curve, DDisplayGroup& group) {
    const auto* analytic = dynamic_cast<const VCurveAnalytical*>(&curve);
    group.Empty();
    if (!analytic) return;
    const int count = std::min<int>(analytic->sampleCount, DPolyLine::kCapacity);
    std::vector<KVector3D> points(static_cast<std::size_t>(count > 0 ? count : 0));
    const int n = analytic->GetGridPoints(points.data(), count);
    DPolyLine line(count);
    for (int i = 0; i < n && i < count; ++i)
        line.AddPoint({points[i].x, points[i].y, points[i].z});
    if (n < 2) return;
    line.Finish(false);
    AddUnlitGreen(group);
    group.AddObject(line);
}
