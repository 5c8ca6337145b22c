// Fuzz target: any bytes as the custom paths file. Whatever records are read
// are well formed, written and read again they come back the same, and a
// record reopened as a path gives its frames or refuses, as the text's
// layout asks for them.
#include "curves/VCustomPathData.h"
#include "curves/VCustomPathsFile.h"
#include "curves/VNurbsCurvePath.h"
#include "foundation/KList.h"
#include "tests/fuzz/FuzzCheck.h"

#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    KList records;
    const std::int32_t count = ParseCustomPaths(data, size, records);
    Check(count >= 0 && std::uint32_t(count) == records.GetCount());
    for (std::uint32_t i = 1; i <= records.GetCount(); ++i) {
        const auto* r = static_cast<const VCustomPathData*>(records.EntryAt(i));
        Check(r->pointCount > 1 && r->points && (r->knotCount == 0) == !r->knots);
        Check(std::memchr(r->name, 0, sizeof r->name) != nullptr);
        VCNurbsCurve curve;
        if (curve.Set(r->knotCount - r->pointCount - 1, r->pointCount, r->points.get(),
                      r->knotCount, r->knots.get(), r->closed) != kCurveOK)
            continue;
        VNurbsCurvePath path;
        path.curve = &curve;
        path.Rebuild();
        path.SetStartFrame(r->startTangent, r->startNormal);
        KVector3D point, tangent, normal, binormal;
        for (float s : {0.0f, 0.37f * path.GetLength(), path.GetLength()})
            path.GetFrame(s, point, tangent, normal, binormal);
    }
    const std::vector<std::uint8_t> bytes = FormatCustomPaths(records);
    KList again;
    Check(ParseCustomPaths(bytes.data(), bytes.size(), again) == count);
    Check(FormatCustomPaths(again) == bytes);
    return 0;
}
