// The view's custom paths: the session's list of records, capturing the
// current path into it, reopening a record, and converting an analytic path.
#include "curves/VCurveAnalytical.h"
#include "curves/VCustomPathData.h"
#include "curves/VNurbsAlgorithms.h"
#include "scene/K3DViewMatrix.h"
#include "scene/VCBezierCurveModel.h"
#include "scene/VCNURBSCurveModel.h"
#include "scene/VNurbsCurveManipulator.h"
#include "scene/VZarbesoView.h"

#include <cmath>
#include <cstdio>
#include <cstring>

namespace {
// The record of a path that is not a curve yet: a straight cubic line.
std::unique_ptr<VCustomPathData> DefaultRecord() {
    const KVector3D points[4] = {{-6, 0, 0, 1}, {-4, 0, 0, 1}, {4, 0, 0, 1}, {6, 0, 0, 1}};
    const double knots[8] = {0, 0, 0, 0, 1, 1, 1, 1};
    auto record = std::make_unique<VCustomPathData>();
    record->SetCurve(4, points, 8, knots, 0, {1, 0, 0, 0}, {0, 1, 0, 0});
    record->isBezier = 1;
    return record;
}
} // namespace

VCBezierCurveModel* VZarbesoView::GetBezierModel() const {
    return dynamic_cast<VCBezierCurveModel*>(pathModel_);
}

bool VZarbesoView::HasCurveModel() const {
    return dynamic_cast<VCBezierCurveModel*>(pathModel_) ||
           dynamic_cast<VCNURBSCurveModel*>(pathModel_);
}

const VCustomPathData* VZarbesoView::GetCustomPath(std::int32_t index) const {
    if (index < 1 || index > GetCustomPathCount()) return nullptr;
    return static_cast<const VCustomPathData*>(customPaths_.EntryAt(std::uint32_t(index)));
}

bool VZarbesoView::GetCustomPathName(std::int32_t index, std::string& name) const {
    const VCustomPathData* record = GetCustomPath(index);
    if (!record) return false;
    name = record->name;
    return true;
}

std::int32_t VZarbesoView::MakeUniqueName(const char* stem, std::string& name) const {
    std::int32_t number = 1;
    char candidate[VCustomPathData::kNameSize];
    for (std::int32_t i = 1; i <= GetCustomPathCount();) {
        std::snprintf(candidate, sizeof candidate, "%s %d", stem ? stem : "", int(number));
        if (std::strcmp(GetCustomPath(i)->name, candidate) == 0) {
            ++number;
            i = 1; // start over the list with the next number
        } else {
            ++i;
        }
    }
    std::snprintf(candidate, sizeof candidate, "%s %d", stem ? stem : "", int(number));
    name = candidate;
    return number;
}

bool VZarbesoView::StoreCustomPath(std::int32_t index, const char* name,
                                   const VCustomPathData* record) {
    if (record) {
        std::unique_ptr<VCustomPathData> copy = record->Clone();
        if (!copy) return false;
        if (name) copy->SetName(name);
        customPaths_.Append(copy.release());
        return true;
    }
    const std::int32_t count = GetCustomPathCount();
    if (index < 1 || index > count + 1) return false;

    auto* bezier = dynamic_cast<VCBezierCurveModel*>(pathModel_);
    auto* nurbs = dynamic_cast<VCNURBSCurveModel*>(pathModel_);
    auto* path = dynamic_cast<VNurbsCurvePath*>(GetCurve());
    std::unique_ptr<VCustomPathData> captured;
    if ((bezier || nurbs) && path && path->curve) {
        std::int32_t pointCount = 0;
        const KVector3D* points = nullptr;
        const VCNurbsCurve& curve = *path->curve;
        KVector3D tangent, normal;
        path->GetStartFrame(tangent, normal);
        captured = std::make_unique<VCustomPathData>();
        if (curve.GetControlPoints(pointCount, points) != kCurveOK || !curve.knots ||
            !captured->SetCurve(pointCount, points, curve.knots->count, curve.knots->values.get(),
                                std::uint8_t(curve.closed != 0), tangent, normal))
            return false;
        captured->isBezier = bezier ? 1 : 0;
    } else {
        captured = DefaultRecord();
    }
    if (index == count + 1) {
        captured->SetName(name);
        customPaths_.Append(captured.release());
        return true;
    }
    // An existing record takes the curve, and keeps its name and its kind.
    auto* existing = static_cast<VCustomPathData*>(customPaths_.EntryAt(std::uint32_t(index)));
    return existing->SetCurve(captured->pointCount, captured->points.get(), captured->knotCount,
                              captured->knots.get(), captured->closed, captured->startTangent,
                              captured->startNormal);
}

bool VZarbesoView::SelectCustomPath(std::int32_t index, const char*) {
    const VCustomPathData* record = GetCustomPath(index);
    if (!record) return false;
    auto curve = std::make_unique<VCNurbsCurve>();
    if (curve->Set(record->knotCount - record->pointCount - 1, record->pointCount,
                   record->points.get(), record->knotCount, record->knots.get(),
                   record->closed) != kCurveOK)
        return false;
    // A record of pieces reopens in pieces; one whose curve cannot be held
    // so opens as one curve.
    VZarbesoModel* model = nullptr;
    if (record->isBezier && VCBezierCurveModel::CanHold(*curve))
        model = sceneManager->NewBezierModel(std::move(curve));
    else
        model = sceneManager->NewNURBSModel(std::move(curve));
    if (!model->BuildPath()) {
        sceneManager->RemoveModel(model);
        return false;
    }
    SetCurvePathWithFrame(model, model->GetPath(), record->startTangent, record->startNormal);
    return true;
}

bool VZarbesoView::ConvertToCustomPath() {
    auto* analytic = dynamic_cast<VCurveAnalytical*>(GetCurve());
    if (!analytic) return false;
    KVector3D samples[VCurveAnalytical::kConversionSamples];
    KVector3D startTangent, endTangent, startNormal;
    std::int32_t count = 0;
    analytic->SampleForConversion(count, samples, startTangent, endTangent, startNormal);
    std::unique_ptr<VCNurbsCurve> curve;
    if (InterpolateCubic(samples, count, startTangent, endTangent, kParamCentripetal, curve) !=
            kCurveOK ||
        !curve)
        return false;
    VCBezierCurveModel* model = sceneManager->NewBezierModel(std::move(curve));
    if (!model->BuildPath()) {
        sceneManager->RemoveModel(model);
        return false;
    }
    SetCurvePathWithFrame(model, model->GetPath(), startTangent, startNormal);
    return true;
}

KVector3D VZarbesoView::FacingDirection() const {
    // From the point of interest to the eye, behind the camera transforms.
    const TQ3CameraPlacement& p = camera->GetData().placement;
    const KVector3D eye{p.cameraLocation.x - p.pointOfInterest.x,
                        p.cameraLocation.y - p.pointOfInterest.y,
                        p.cameraLocation.z - p.pointOfInterest.z, 0};
    TQ3Matrix4x4 adorner;
    GetAdornerMatrix(adorner);
    return TransformVector(eye, InvertedMatrix(adorner)).Unit();
}

void VZarbesoView::SetCurvePath(VZarbesoModel* model, VCurve* path) {
    if (!model || !path) return;
    path->SetFrameMode(kFrameModeDirect);
    KVector3D point, tangent, normal, binormal;
    path->GetFrame(0, point, tangent, normal, binormal);
    // A curve that starts in the drawing plane keeps its letters standing in
    // it, as on an analytic path: the XY plane, or else the plane that faces
    // the camera, in which the tools draw.
    const KVector3D facing = FacingDirection();
    if (std::fabs(tangent.z) < 0.00005f)
        normal = {-tangent.y, tangent.x, 0, 0};
    else if (std::fabs(facing.Dot(tangent)) < 0.001f)
        normal = facing.Cross(tangent).Unit();
    SetCurvePathWithFrame(model, path, tangent, normal);
}

void VZarbesoView::SetCurvePathWithFrame(VZarbesoModel* model, VCurve* path,
                                         const KVector3D& tangent, const KVector3D& normal) {
    if (!model || !path) return;
    if (pathModel_ != model) DiscardPath();
    path->SetStartFrame(tangent, normal);
    pathModel_ = model;
    pathModel_->SetDrawn(pathShown_);
    ShowCurveControls();
    curveData_->curve = path;
    UpdateText();
}

bool VZarbesoView::DeleteCustomPath(std::int32_t index) {
    KListEntry* record = const_cast<VCustomPathData*>(GetCustomPath(index));
    if (!record) return false;
    customPaths_.RemoveEntry(record);
    delete record;
    return true;
}

// ---- editing ---------------------------------------------------------------------

bool VZarbesoView::EditsPoints() const {
    const KTool* tool = GetTool();
    for (int index : {kToolCurveDrag, kToolCurveHandle, kToolCurveAddPoint, kToolCurveDeletePoint})
        if (tool && tool == GetToolAt(index)) return true;
    return false;
}

void VZarbesoView::ShowCurveControls() {
    if (HasCurveModel()) pathModel_->ShowControls(EditsPoints());
}

bool VZarbesoView::SetTool(int index) {
    if (!VC3DView::SetTool(index)) return false;
    ShowCurveControls();
    return true;
}

void VZarbesoView::BeginCurveEdit() {
    SetCurrent3DView(this);
    sceneManager->GetSelection()->Clear();
    if (HasCurveModel()) pathModel_->ShowControls(true);
}

void VZarbesoView::EndCurveEdit() {
    SetCurrent3DView(this);
    sceneManager->GetSelection()->Clear();
    if (HasCurveModel()) pathModel_->ShowControls(false);
}

bool VZarbesoView::DeleteSelectedPoint() {
    KTool* tool = GetTool();
    auto* curveTool =
        dynamic_cast<VNurbsCurveManipulator*>(tool ? tool->GetManipulator() : nullptr);
    SetCurrent3DView(this);
    return curveTool && curveTool->DeleteSelectedPoint(*this);
}
