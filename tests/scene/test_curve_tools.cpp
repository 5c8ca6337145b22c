// Drawing and editing custom paths with whole gestures through the view's
// tool handler, on a real view with its text.
#include "SceneTestSupport.h"
#include "curves/VCustomPathData.h"
#include "d3d/DTransformObject.h"
#include "foundation/Messages.h"
#include "scene/VCBezierCurveModel.h"
#include "scene/VCNURBSCurveModel.h"
#include "scene/VNurbsCurShapeManipulators.h"
#include "scene/VNurbsCurveManipulator.h"
#include "scene/VZarbesoView.h"
#include "text/FontList.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {
struct CurveTools : ::testing::Test {
    static void SetUpTestSuite() { BuildFontList(); }
    void SetUp() override {
        view.SetupText("Plumet");
        // Letters a third of their usual size, to stand on short paths.
        for (TextLayoutValue which : {TextLayoutValue::kWidth, TextLayoutValue::kHeight})
            view.SetLayout(which, view.GetLayout(which) / 3, true, true);
        view.AddListener(&heard);
    }
    void Click(QPoint at, QPoint dragTo = {-1, -1}, std::uint16_t modifiers = 0) {
        if (dragTo.x() < 0)
            Gesture(view, {at}, modifiers);
        else
            Gesture(view, {at, dragTo}, modifiers);
    }
    // Where a point of the path model lands in the window.
    QPoint At(const VCBezierCurveModel& model, std::int32_t piece, std::int32_t place) {
        return WindowPointOf(view, ObjectToWorld(model, model.GetPiece(piece)->GetPosition(place)));
    }
    KVector3D Point(const VCBezierCurveModel& model, std::int32_t piece, std::int32_t place) {
        return model.GetPiece(piece)->GetPosition(place);
    }
    // Draws through the window points, pulling each anchor's handle to the
    // paired point when one is given.
    VCBezierCurveModel* Draw(const std::vector<std::pair<QPoint, QPoint>>& clicks) {
        view.SetTool(kToolCurveDraw);
        for (const auto& [at, drag] : clicks)
            Click(at, drag);
        return view.GetBezierModel();
    }
    // The share of the letters' pixels within `distance` of the path, drawn
    // alone.
    double TextNearPath(double distance) {
        const bool controls = view.GetBezierModel() && view.GetBezierModel()->AreControlsShown();
        view.ShowPath(false);
        view.EndCurveEdit();
        scene.SetGridVisible(false);
        view.SetOffscreen(true);
        view.Refresh();
        const std::vector<QPointF> line = ProjectPath(view, *view.GetCurve());
        int letters = 0, near = 0;
        for (int y = 0; y < view.frontWorld->GetHeight(); ++y)
            for (int x = 0; x < view.frontWorld->GetWidth(); ++x) {
                if (!(view.frontWorld->Pixel32(x, y) >> 24)) continue;
                ++letters;
                double best = 1e9;
                for (const QPointF& q : line)
                    best = std::min(best, std::hypot(q.x() - x, q.y() - y));
                near += best <= distance;
            }
        view.ShowPath(true);
        if (controls) view.BeginCurveEdit();
        return letters > 200 ? double(near) / letters : 0.0;
    }

    VC3DSystem system;
    VZarbesoView view{400, 300};
    VZarbesoSceneManager& scene = *view.GetSceneManager();
    Heard heard;
};
} // namespace

TEST_F(CurveTools, FourClicksDrawAPathOfFourAnchorsThatCarriesTheText) {
    const QPoint a{60, 170}, b{150, 110}, c{250, 190}, d{340, 130};
    // A drag of 2 pixels pulls no handle out; one of 3 does, mirrored.
    VCBezierCurveModel* model =
        Draw({{a, {-1, -1}}, {b, b + QPoint(2, 0)}, {c, c + QPoint(3, 0)}, {d, {-1, -1}}});
    ASSERT_NE(model, nullptr);
    ASSERT_EQ(model->GetPieceCount(), 3);
    EXPECT_EQ(view.GetCurve(), model->GetPath()) << "the path carries the text";
    const QPoint clicks[4] = {a, b, c, d};
    for (int k = 0; k < 3; ++k)
        EXPECT_LT(Distance(At(*model, k, 0), clicks[k]), 1.0f) << "anchor " << k;
    EXPECT_LT(Distance(At(*model, 2, 3), d), 1.0f);
    EXPECT_EQ(Point(*model, 0, 1).x, Point(*model, 0, 0).x) << "a plain click has no handle";
    EXPECT_EQ(Point(*model, 1, 1).x, Point(*model, 1, 0).x) << "2 pixels pull nothing";
    const KVector3D anchor = Point(*model, 1, 3);
    EXPECT_GT(Point(*model, 2, 1).x - anchor.x, 0.0f) << "3 pixels pull the handle ahead";
    EXPECT_NEAR((Point(*model, 1, 2) + Point(*model, 2, 1)).x, 2 * anchor.x, 1e-5)
        << "and its mirror behind";
    // The second press of a double click on the last anchor adds nothing.
    view.SetClickCount(2);
    view.MouseDown(X(d), Y(d));
    view.SetClickCount(1);
    EXPECT_EQ(model->GetPieceCount(), 3);
    // Letters stand on the path from its start.
    EXPECT_GT(TextNearPath(40), 0.9);
    SaveFrontWorld(view, "curve-four-clicks.png");

    // A single click of a new drawing and a change of tool leave nothing.
    const std::uint32_t models = scene.GetModelCount();
    view.SetTool(kToolCurveDraw - 1);
    view.SetTool(kToolCurveDraw);
    Click({200, 40});
    view.SetTool(kToolMove);
    EXPECT_EQ(scene.GetModelCount(), models - 1) << "the first click let the old path go";
    EXPECT_EQ(view.GetBezierModel(), nullptr);
}

TEST_F(CurveTools, DraggedPointsMoveWithTheirJoints) {
    // Under a turned camera the path is drawn and dragged in the plane that
    // faces it.
    const TQ3Matrix4x4 orbit = MatrixFromRotation(0.4f, -0.5f, 0.1f);
    view.ApplyTo(K3DViewAdorner::kOrbit, K3DViewAdorner::kApply, &orbit, false);
    const QPoint a{60, 150}, b{300, 60}, c{340, 240};
    VCBezierCurveModel* model = Draw({{a, {-1, -1}}, {b, b + QPoint(40, 0)}, {c, {-1, -1}}});
    ASSERT_NE(model, nullptr);
    view.SetTool(kToolCurveDrag);
    EXPECT_TRUE(model->AreControlsShown());

    // A press on the anchor that lies on the curve takes the anchor, and
    // the drag carries both its handles along: four points move as one.
    const KVector3D before[4] = {Point(*model, 0, 2), Point(*model, 0, 3), Point(*model, 1, 0),
                                 Point(*model, 1, 1)};
    Gesture(view, {b, b + QPoint(0, -10), b + QPoint(0, -20)});
    EXPECT_EQ(model->GetSelectedAnchor(), VCBezierCurveModel::kPieceSize) << "the joint at b";
    const KVector3D step = Point(*model, 0, 3) - before[1];
    const QPoint moved = b + QPoint(0, -20);
    EXPECT_LT(Distance(At(*model, 0, 3), moved), 1.0f);
    for (int i = 0; i < 4; ++i)
        EXPECT_NEAR((Point(*model, i / 2, (i + 2) % 4) - before[i] - step).Length(), 0.0f, 1e-5);

    // Its handle drags; on the smooth joint the twin turns with it and keeps
    // its own length.
    const KVector3D anchor = Point(*model, 1, 0);
    const float twinLength = (Point(*model, 0, 2) - anchor).Length();
    const QPoint handle = At(*model, 1, 1);
    Gesture(view, {handle, handle + QPoint(5, 15), handle + QPoint(10, 30)});
    EXPECT_LT(Distance(At(*model, 1, 1), handle + QPoint(10, 30)), 1.5f);
    const KVector3D ahead = Point(*model, 1, 1) - anchor, behind = Point(*model, 0, 2) - anchor;
    EXPECT_NEAR(behind.Length(), twinLength, 1e-4);
    EXPECT_NEAR(ahead.Unit().Dot(behind.Unit()), -1.0f, 1e-4);
    EXPECT_LT(Distance(At(*model, 1, 0), moved), 1.0f) << "the anchor stays";

    // The handle tool breaks the joint: the twin no longer follows.
    view.SetTool(kToolCurveHandle);
    const QPoint handleNow = At(*model, 1, 1);
    const KVector3D twin = Point(*model, 0, 2);
    Gesture(view, {handleNow, handleNow + QPoint(-20, 0)});
    EXPECT_EQ(model->GetJoin(1, false), kJoinCorner);
    EXPECT_LT(Distance(At(*model, 1, 1), handleNow + QPoint(-20, 0)), 1.5f);
    EXPECT_NEAR((Point(*model, 0, 2) - twin).Length(), 0.0f, 1e-6);
    // The text follows the path as it stands after each gesture.
    EXPECT_NEAR(
        (Euclidean(model->GetCurve()->ctrlPoints->points[5]) - Point(*model, 1, 1)).Length(), 0.0f,
        1e-6);
}

TEST_F(CurveTools, DeletedAnchorsLeaveAValidPathThatTheTextFollows) {
    const QPoint a{60, 170}, b{150, 110}, c{250, 190}, d{340, 130};
    VCBezierCurveModel* model = Draw(
        {{a, a + QPoint(20, -20)}, {b, b + QPoint(30, 0)}, {c, c + QPoint(30, 0)}, {d, {-1, -1}}});
    ASSERT_NE(model, nullptr);
    view.SetTool(kToolCurveDeletePoint);
    Click(b);
    ASSERT_EQ(model->GetPieceCount(), 2);
    EXPECT_LT(Distance(At(*model, 0, 0), a), 1.0f);
    EXPECT_LT(Distance(At(*model, 1, 0), c), 1.0f) << "the neighbours joined";
    EXPECT_EQ(model->GetCurve()->CheckValid(), kCurveOK);
    EXPECT_EQ(model->GetCurve()->GetControlPointCount(), 8);
    EXPECT_EQ(view.GetCurve(), model->GetPath());
    EXPECT_GT(TextNearPath(40), 0.9);

    // The Delete key takes the anchor the drag tool selected: here the end,
    // which takes its piece along.
    view.SetTool(kToolCurveDrag);
    Click(d);
    view.SetTool(kToolMove);
    EXPECT_FALSE(view.DeleteSelectedPoint()) << "other tools leave the key to the lights";
    view.SetTool(kToolCurveDrag);
    Click(d);
    EXPECT_EQ(model->GetSelectedAnchor(), 7);
    EXPECT_TRUE(view.DeleteSelectedPoint());
    ASSERT_EQ(model->GetPieceCount(), 1);
    EXPECT_LT(Distance(At(*model, 0, 3), c), 1.0f);
    // A single piece keeps both its anchors.
    Click(c);
    EXPECT_FALSE(view.DeleteSelectedPoint());
    view.SetTool(kToolCurveDeletePoint);
    Click(a);
    EXPECT_EQ(model->GetPieceCount(), 1);
}

TEST_F(CurveTools, ShapesDraggedInARectangleBecomeClosedPaths) {
    // A star of n points has 2n corners, each a piece's anchor.
    SetStarPoints(7);
    view.SetTool(kToolCurveStar);
    Gesture(view, {{100, 60}, {200, 150}, {300, 240}});
    VCBezierCurveModel* star = view.GetBezierModel();
    ASSERT_NE(star, nullptr);
    EXPECT_EQ(star->GetPieceCount(), 14);
    EXPECT_TRUE(star->closed);
    EXPECT_EQ(star->GetJoin(3, true), kJoinCorner);
    EXPECT_EQ(heard.messages.back(), kMsgShapeFinished) << "the window goes on to the drag tool";
    EXPECT_TRUE(star->GetPath()->IsClosed());

    // An ellipse dragged in a square is a circle.
    view.SetTool(kToolCurveOval);
    Gesture(view, {{150, 100}, {230, 170}, {250, 200}});
    VCBezierCurveModel* oval = view.GetBezierModel();
    ASSERT_NE(oval, nullptr);
    ASSERT_NE(oval, star);
    EXPECT_EQ(scene.HasModel(star), false) << "the new path took the place of the old";
    ASSERT_EQ(oval->GetPieceCount(), 4);
    EXPECT_TRUE(oval->closed);
    VCNurbsCurve& circle = *oval->GetCurve();
    const KVector3D centre =
        (oval->GetPiece(0)->GetPosition(0) + oval->GetPiece(2)->GetPosition(0)) * 0.5f;
    const float radius = (oval->GetPiece(0)->GetPosition(0) - centre).Length();
    EXPECT_GT(radius, 0.3f);
    for (int i = 0; i <= 64; ++i) {
        KVector3D p;
        ASSERT_EQ(circle.Evaluate(1.0 + 4.0 * i / 64, false, p), kCurveOK);
        EXPECT_NEAR((p - centre).Length(), radius, 1e-4) << "at " << i;
    }

    // Its pieces are rational; a drag keeps their weights. Deleting an
    // anchor where the ends meet opens it.
    const float weight = oval->GetPiece(1)->GetPoint(1).w;
    EXPECT_LT(weight, 0.99f);
    view.SetTool(kToolCurveDrag);
    const QPoint anchor = At(*oval, 1, 0);
    Gesture(view, {anchor, anchor + QPoint(0, 10), anchor + QPoint(0, 20)});
    EXPECT_LT(Distance(At(*oval, 1, 0), anchor + QPoint(0, 20)), 1.0f);
    EXPECT_EQ(oval->GetPiece(1)->GetPoint(1).w, weight);
    view.SetTool(kToolCurveDeletePoint);
    Click(At(*oval, 0, 0));
    EXPECT_EQ(oval->GetPieceCount(), 3);
    EXPECT_FALSE(oval->closed);
    EXPECT_FALSE(view.GetCurve()->IsClosed());

    // Too narrow a rectangle makes nothing; the message comes all the same.
    const std::uint32_t models = scene.GetModelCount();
    heard.messages.clear();
    SetPolygonSides(5);
    view.SetTool(kToolCurvePolygon);
    EXPECT_EQ(GetShapeCount(view.GetTool()), 5);
    Gesture(view, {{100, 100}, {103, 200}});
    EXPECT_EQ(scene.GetModelCount(), models);
    EXPECT_EQ(view.GetBezierModel(), oval);
    EXPECT_EQ(heard.messages, std::vector<std::int32_t>{kMsgShapeFinished});

    // A pentagon stands on its base with a point up, also when drawn upwards.
    Gesture(view, {{150, 220}, {250, 120}});
    VCBezierCurveModel* pentagon = view.GetBezierModel();
    ASSERT_EQ(pentagon->GetPieceCount(), 5);
    int top = 0;
    for (int k = 0; k < 5; ++k)
        if (At(*pentagon, k, 0).y() < At(*pentagon, top, 0).y()) top = k;
    const QPoint apex = At(*pentagon, top, 0);
    EXPECT_NEAR(apex.x(), 200, 1) << "the point is over the middle";
    for (int k = 0; k < 5; ++k)
        if (k != top) {
            EXPECT_GT(At(*pentagon, k, 0).y(), apex.y() + 20);
        }
}

TEST_F(CurveTools, AddedPointsSplitThePathOrExtendItsNearerEnd) {
    const QPoint a{80, 200}, b{320, 200};
    VCBezierCurveModel* model = Draw({{a, a + QPoint(40, -60)}, {b, b + QPoint(40, 60)}});
    ASSERT_NE(model, nullptr);
    view.SetTool(kToolCurveAddPoint);
    // A click on the curve splits its piece there; the shape stays.
    KVector3D middle;
    model->GetCurve()->Evaluate(1.5, false, middle);
    const QPoint onCurve = WindowPointOf(view, ObjectToWorld(*model, middle));
    double length = 0, lengthAfter = 0;
    model->GetCurve()->LengthByBezierPieces(1e-5, length);
    Click(onCurve);
    ASSERT_EQ(model->GetPieceCount(), 2);
    EXPECT_LT(Distance(At(*model, 1, 0), onCurve), 6.0f) << "at the nearest sample of the curve";
    model->GetCurve()->LengthByBezierPieces(1e-5, lengthAfter);
    EXPECT_NEAR(lengthAfter, length, 1e-4);
    EXPECT_EQ(model->GetJoin(0, true), kJoinAligned);

    // With Ctrl, a click beside the path extends its nearer end; without,
    // nothing happens.
    Click({60, 80});
    EXPECT_EQ(model->GetPieceCount(), 2);
    const QPoint before{40, 90};
    Gesture(view, {before, before + QPoint(0, -30)}, kModCtrl);
    ASSERT_EQ(model->GetPieceCount(), 3);
    EXPECT_LT(Distance(At(*model, 0, 0), before), 1.0f) << "the new first anchor";
    EXPECT_LT(Distance(At(*model, 0, 1), before + QPoint(0, 30)), 1.5f) << "its handle mirrored";
    EXPECT_LT(Distance(At(*model, 0, 3), a), 1.0f);
    EXPECT_EQ(view.GetCurve(), model->GetPath());
    EXPECT_EQ(model->GetCurve()->GetControlPointCount(), 12);

    // A closed path has no end to extend.
    view.SetTool(kToolCurveOval);
    Gesture(view, {{150, 100}, {250, 200}});
    VCBezierCurveModel* oval = view.GetBezierModel();
    view.SetTool(kToolCurveAddPoint);
    Gesture(view, {{20, 20}, {20, 40}}, kModCtrl);
    EXPECT_EQ(oval->GetPieceCount(), 4);
}

TEST_F(CurveTools, APathOfOneCurveMovesItsControlPointsAndKeepsItsEndsTogether) {
    // A closed square of degree 1, stored as one curve.
    const KVector3D square[5] = {
        {1, 1, 0, 1}, {-1, 1, 0, 1}, {-1, -1, 0, 1}, {1, -1, 0, 1}, {1, 1, 0, 1}};
    const double knots[7] = {0, 0, 0.25, 0.5, 0.75, 1, 1};
    VCustomPathData record;
    ASSERT_TRUE(record.SetCurve(5, square, 7, knots, 1, {-1, 0, 0, 0}, {0, 1, 0, 0}));
    record.isBezier = 0;
    ASSERT_TRUE(view.StoreCustomPath(1, "Square", &record));
    ASSERT_TRUE(view.SelectCustomPath(1, "Square"));
    auto* model = dynamic_cast<VCNURBSCurveModel*>(view.GetPathModel());
    ASSERT_NE(model, nullptr);

    view.SetTool(kToolCurveDrag);
    const QPoint corner = WindowPointOf(view, square[0]);
    Gesture(view, {corner, corner + QPoint(10, 5), corner + QPoint(20, 10)});
    KVector3D first, last;
    model->GetCurve()->GetControlPoint(0, first);
    model->GetCurve()->GetControlPoint(4, last);
    EXPECT_LT(Distance(WindowPointOf(view, first), corner + QPoint(20, 10)), 1.0f);
    EXPECT_EQ(first.x, last.x);
    EXPECT_EQ(first.y, last.y);
    // The text follows the moved corner.
    KVector3D start;
    view.GetCurve()->GetPointAt(0, start);
    EXPECT_NEAR((start - first).Length(), 0.0f, 1e-5);
}
