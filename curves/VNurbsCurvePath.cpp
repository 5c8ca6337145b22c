#include "curves/VNurbsCurvePath.h"

bool VNurbsCurvePath::GetPointAt(float s, KVector3D& point) {
    return curve && curve->GetPointAt(s, point);
}

void VNurbsCurvePath::Recalculate() {
    length = 0.0f;
    if (curve && curve->CalcLength() == kCurveOK) length = curve->arcLength;
}

bool VNurbsCurvePath::GetFrameAt(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                                 KVector3D& binormal) {
    return curve && curve->GetFrameAt(s, point, tangent, normal, binormal);
}

bool VNurbsCurvePath::GetTangentAt(float s, KVector3D& tangent) {
    return curve && curve->GetTangentAt(s, tangent);
}
