#include "scene/VNurbsCurShapeManipulators.h"

#include "curves/VCArc.h"
#include "curves/VCNgon.h"
#include "curves/VCRect.h"
#include "curves/VNurbsAlgorithms.h"
#include "foundation/Messages.h"
#include "scene/VCBezierCurveModel.h"
#include "scene/VCNURBSCurveModel.h"
#include "scene/VZarbesoView.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {
std::int32_t gPolygonSides = 4;
std::int32_t gStarPoints = 5;

std::int32_t HeldCount(std::int32_t n) {
    return std::clamp(n, kMinShapeCount, kMaxShapeCount);
}

// Where the first corner of a polygon or star of n corners stands: half a
// side round, or, for three and five, up the screen, so that they stand on
// a base with a point up whichever way the rectangle was dragged.
double StartAngle(std::int32_t n, bool draggedUp) {
    const float pi = 3.1415927f;
    if (n == 3 || n == 5) return draggedUp ? pi / 2 : -pi / 2;
    return pi / n;
}

std::unique_ptr<VCNurbsCurve> Take(VC2DNCurveShape& shape, const k3dNurbsCurPrimManipulator& m,
                                   VCurveStatus status) {
    if (status != kCurveOK || shape.SetFrame(m.center, m.uAxis, m.vAxis) != kCurveOK)
        return nullptr;
    return shape.TakeCurve();
}
} // namespace

std::int32_t GetPolygonSides() {
    return gPolygonSides;
}

void SetPolygonSides(std::int32_t sides) {
    gPolygonSides = HeldCount(sides);
}

std::int32_t GetStarPoints() {
    return gStarPoints;
}

void SetStarPoints(std::int32_t points) {
    gStarPoints = HeldCount(points);
}

std::int32_t GetShapeCount(const KTool* tool) {
    const KManipulator* m = tool ? tool->GetManipulator() : nullptr;
    if (dynamic_cast<const VNurbsCurNGonManipulator*>(m)) return gPolygonSides;
    if (dynamic_cast<const VNurbsCurStarManipulator*>(m)) return gStarPoints;
    return 0;
}

// ---- k3dNurbsCurPrimManipulator -----------------------------------------------------

void k3dNurbsCurPrimManipulator::Press(const MouseEvent& event) {
    if (!viewMatrix) return;
    startPixel = currentPixel = event.local;
    SetDepthFromCamera();
    pressed = true;
}

void k3dNurbsCurPrimManipulator::Drag(const MouseEvent& event, bool& redraw) {
    currentPixel = event.local;
    constrain = event.Shift();
    int dx = currentPixel.h - startPixel.h, dy = currentPixel.v - startPixel.v;
    if (std::abs(dx) <= 3 || std::abs(dy) <= 3) return;
    if (constrain) {
        const int side = std::min(std::abs(dx), std::abs(dy));
        dx = dx < 0 ? -side : side;
        dy = dy < 0 ? -side : side;
    }
    const auto x0 = std::int16_t(startPixel.h), y0 = std::int16_t(startPixel.v);
    const auto x1 = std::int16_t(x0 + dx), y1 = std::int16_t(y0 + dy);
    KVector3D start, below, corner;
    ScreenToWorld(MakeScreenPoint(x0, y0), start);
    ScreenToWorld(MakeScreenPoint(x0, y1), below);
    ScreenToWorld(MakeScreenPoint(x1, y1), corner);
    const KVector3D v = below - start, u = corner - below;
    height = v.Length();
    width = u.Length();
    vAxis = v.Unit();
    uAxis = u.Unit();
    center = start + uAxis * float(width / 2) + vAxis * float(height / 2);
    center.w = 1.0f;
    std::unique_ptr<VCNurbsCurve> curve = BuildShape(startPixel, {y1, x1});
    if (!curve) return;
    ShowPreview(std::move(curve));
    redraw = true;
}

void k3dNurbsCurPrimManipulator::DoRelease(const MouseEvent& event, bool& redraw) {
    Drag(event, redraw);
    FinishShape();
    pressed = false;
    redraw = true;
}

std::unique_ptr<VCNurbsCurve> k3DNurbsCurOvalManipulator::BuildShape(const Point&, const Point&) {
    VCArc arc;
    return Take(arc, *this, arc.SetRadii(width / 2, height / 2));
}

std::unique_ptr<VCNurbsCurve> k3DNurbsCurNGonManipulator::BuildShape(const Point& start,
                                                                     const Point& current) {
    const std::int32_t n = GetPolygonSides();
    if (n == 4) {
        VCRect rect;
        return Take(rect, *this, rect.SetSize(width, height));
    }
    VCNgon ngon;
    VCurveStatus status = ngon.SetAll(n, width / 2, height / 2);
    if (status == kCurveOK) status = ngon.SetStartAngle(StartAngle(n, current.v < start.v));
    return Take(ngon, *this, status);
}

std::unique_ptr<VCNurbsCurve> k3DNurbsCurStarManipulator::BuildShape(const Point& start,
                                                                     const Point& current) {
    const std::int32_t n = GetStarPoints();
    VCStar star;
    VCurveStatus status =
        star.SetAll(n, width / 2, height / 2, 0.32 * width / 2, 0.32 * height / 2);
    if (status == kCurveOK) status = star.SetStartAngle(StartAngle(n, current.v < start.v));
    return Take(star, *this, status);
}

// ---- VNurbsCurShapeTool -------------------------------------------------------------

template <class Shape> bool VNurbsCurShapeTool<Shape>::Activate(WView* view) {
    zview = dynamic_cast<VZarbesoView*>(view);
    return true;
}

template <class Shape> bool VNurbsCurShapeTool<Shape>::Deactivate(WView*) {
    DropPreview();
    this->pressed = false;
    return true;
}

template <class Shape> void VNurbsCurShapeTool<Shape>::DropPreview() {
    if (preview && zview && zview->GetSceneManager()->HasModel(preview))
        zview->GetSceneManager()->RemoveModel(preview);
    preview = nullptr;
}

template <class Shape> bool VNurbsCurShapeTool<Shape>::Release(const MouseEvent& event) {
    const bool redraw = Shape::Release(event);
    this->pressed = false;
    if (zview) zview->Broadcast(kMsgShapeFinished, nullptr);
    return redraw;
}

template <class Shape>
void VNurbsCurShapeTool<Shape>::ShowPreview(std::unique_ptr<VCNurbsCurve> curve) {
    if (!zview) return;
    if (preview && zview->GetSceneManager()->HasModel(preview))
        preview->SetCurve(std::move(curve));
    else
        preview = zview->GetSceneManager()->NewNURBSModel(std::move(curve));
}

template <class Shape> void VNurbsCurShapeTool<Shape>::FinishShape() {
    std::int32_t count = 0, knotCount = 0;
    const KVector3D* points = nullptr;
    const double* knots = nullptr;
    if (!zview || !preview || !zview->GetSceneManager()->HasModel(preview) ||
        !preview->GetCurveArrays(count, points, knotCount, knots)) {
        DropPreview();
        return;
    }
    const std::int32_t degree = preview->GetCurve()->degree;
    const std::vector<KVector3D> shape(points, points + count);
    DropPreview();
    if (degree < 1 || degree > 2) return;
    // Each side (or each quarter of the ellipse) becomes a cubic piece.
    VCBezierCurveModel* model = zview->GetSceneManager()->NewBezierModel(nullptr);
    for (std::int32_t i = 0; i + degree < count; i += degree) {
        KVector3D cubic[VCBezierCurveModel::kPieceSize];
        if (ElevateBezier(degree, 3 - degree, &shape[std::size_t(i)], cubic) != kCurveOK ||
            !model->AddPiece(VCBezierCurveModel::kPieceSize, cubic))
            continue;
        if (degree == 1) {
            DBezierCurveObject* piece = model->GetPiece(model->GetPieceCount() - 1);
            piece->startJoin = piece->endJoin = kJoinCorner;
        }
    }
    if (degree == 1)
        model->closed = 1; // its last corner is its first: the corners stay
    else
        model->CloseCurve();
    model->Rebuild();
    model->CalcBoundingBox(zview);
    if (model->BuildPath())
        zview->SetCurvePath(model, model->GetPath());
    else
        zview->GetSceneManager()->RemoveModel(model);
}

template class VNurbsCurShapeTool<k3DNurbsCurOvalManipulator>;
template class VNurbsCurShapeTool<k3DNurbsCurNGonManipulator>;
template class VNurbsCurShapeTool<k3DNurbsCurStarManipulator>;
