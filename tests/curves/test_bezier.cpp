// Bezier segments, their handles, the curve list and the merging of chains
// of segments into NURBS curves.
#include "CurveTestUtil.h"
#include "curves/VBezierCurveList.h"
#include "curves/VNurbsAlgorithms.h"

#include <gtest/gtest.h>

using namespace curvetest;

namespace {
std::unique_ptr<VBezierCurve> Segment(const KVector3D* pts, int count, int tag) {
    VCurveStatus st = kCurveOK;
    VCurveCtrlPoints cp(st, count);
    for (int i = 0; i < count; ++i)
        cp.SetPoint(i, pts[i]);
    auto seg = std::make_unique<VBezierCurve>();
    if (seg->SetPoints(count - 1, &cp, 0) != kCurveOK) return nullptr;
    seg->placeTag = tag;
    return seg;
}

bool Append(VNURBSCurveList& list, std::unique_ptr<VBezierCurve> seg) {
    std::unique_ptr<VCNurbsCurve> c(seg.release());
    return list.Insert(list.tail, c);
}
} // namespace

TEST(BezierCurve, SetPointsValidatesAndBuildsOneSegment) {
    VCurveStatus st = kCurveOK;
    VCurveCtrlPoints four(st, 4);
    for (int i = 0; i < 4; ++i)
        four.SetPoint(i, KVector3D(float(i), float(i * i), 0, 1));
    VBezierCurve c;
    EXPECT_EQ(c.placeTag, 3);
    EXPECT_TRUE(c.startHandle && c.endHandle);
    EXPECT_EQ(c.SetPoints(2, &four, 0), kCurveBadKnotCount);
    EXPECT_EQ(c.SetPoints(0, &four, 0), kCurveBadDegree);
    EXPECT_EQ(c.SetPoints(3, nullptr, 0), kCurveMissingCtrlPoints);
    VCurveCtrlPoints none;
    EXPECT_EQ(c.SetPoints(3, &none, 0), kCurveMissingCtrlPoints);
    four.dimension = 4;
    EXPECT_EQ(c.SetPoints(3, &four, 0), kCurveBadDimension);
    four.dimension = 2;
    ASSERT_EQ(c.SetPoints(3, &four, 0), kCurveOK);
    KVector3D p;
    ASSERT_EQ(c.Evaluate(0.5, true, p), kCurveOK);
    EXPECT_LT(Dist(Casteljau(four.points.get(), 3, 0.5), p), 1e-6);

    VBezierCurve sized(st, 3);
    ASSERT_EQ(st, kCurveOK);
    EXPECT_EQ(sized.placeTag, 1);
    EXPECT_EQ(sized.GetControlPointCount(), 4);
    EXPECT_EQ(sized.Evaluate(0.3, true, p), kCurveOK);
    VBezierCurve bad(st, 0);
    EXPECT_EQ(st, kCurveBadDegree);
}

TEST(BezierHandle, MovingAJointCarriesFourPoints) {
    const KVector3D a[4] = {{0, 0, 0, 1}, {1, 1, 0, 1}, {2, 1, 0, 1}, {3, 0, 0, 1}};
    const KVector3D b[4] = {{3, 0, 0, 1}, {4, -1, 0, 2}, {5, -1, 0, 1}, {6, 0, 0, 1}};
    auto first = Segment(a, 4, 0), second = Segment(b, 4, 2);
    ASSERT_TRUE(first && second);
    ASSERT_EQ(first->SetHandles(nullptr, second.get()), kCurveOK);
    ASSERT_EQ(second->SetHandles(first.get(), nullptr), kCurveOK);
    first->pointsPerSpan = 6;
    first->Tessellate(0.1);
    ASSERT_TRUE(first->drawingData);
    ASSERT_EQ(first->endHandle->MoveAnchor(KVector3D(3, 2, 1)), kCurveOK);
    KVector3D p;
    first->GetControlPoint(3, p);
    EXPECT_LT((p - KVector3D(3, 2, 1)).Length(), 1e-6);
    first->GetControlPoint(2, p);
    EXPECT_LT((p - KVector3D(2, 3, 1)).Length(), 1e-6);
    second->GetControlPoint(0, p);
    EXPECT_LT((p - KVector3D(3, 2, 1)).Length(), 1e-6);
    second->GetControlPoint(1, p); // weight 2: moves by twice the offset in homogeneous form
    EXPECT_LT((ToEuclidean(p) - KVector3D(2, -0.5f + 2, 1)).Length(), 1e-6);
    second->GetControlPoint(2, p);
    EXPECT_LT((p - KVector3D(5, -1, 0)).Length(), 1e-6); // untouched
    EXPECT_FALSE(first->drawingData);                    // invalidated

    VBezierHandle h;
    KVector3D x;
    EXPECT_EQ(h.Set(nullptr, &x, nullptr, nullptr, nullptr), kCurveMissingHandlePointer);
    EXPECT_EQ(h.Set(&x, &x, &x, nullptr, nullptr), kCurveMissingHandlePointer);
    EXPECT_EQ(h.MoveAnchor(KVector3D(1, 1, 1)), kCurveMissingHandlePointer);
}

TEST(CurveList, InsertRemoveAndMembership) {
    VNURBSCurveList list;
    const KVector3D pts[2] = {{0, 0, 0, 1}, {1, 0, 0, 1}};
    std::unique_ptr<VCNurbsCurve> none;
    EXPECT_FALSE(list.Insert(nullptr, none));
    std::vector<VNURBSCurveList::ListNode*> nodes;
    for (int i = 0; i < 4; ++i) {
        std::unique_ptr<VCNurbsCurve> c = MakeBezierCurve(2, pts);
        ASSERT_TRUE(list.Insert(list.tail, c));
        EXPECT_FALSE(c);
        nodes.push_back(list.current);
    }
    std::unique_ptr<VCNurbsCurve> front = MakeBezierCurve(2, pts);
    ASSERT_TRUE(list.Insert(nullptr, front));
    EXPECT_EQ(list.head, list.current);
    std::unique_ptr<VCNurbsCurve> middle = MakeBezierCurve(2, pts);
    ASSERT_TRUE(list.Insert(nodes[1], middle));
    EXPECT_EQ(nodes[1]->next, list.current);
    EXPECT_EQ(list.count, 6);
    VNURBSCurveList::ListNode stranger;
    EXPECT_FALSE(list.Contains(&stranger));
    EXPECT_FALSE(list.Remove(&stranger));
    EXPECT_FALSE(list.RemoveUpTo(&stranger));
    std::unique_ptr<VCNurbsCurve> lost = MakeBezierCurve(2, pts);
    EXPECT_FALSE(list.Insert(&stranger, lost));
    EXPECT_TRUE(lost);
    EXPECT_TRUE(list.RemoveUpTo(nodes[0]));
    EXPECT_EQ(list.count, 4);
    EXPECT_EQ(list.head, nodes[1]);
    EXPECT_EQ(list.head->previous, nullptr);
    EXPECT_TRUE(list.Remove(list.tail));
    EXPECT_EQ(list.tail, nodes[2]);
    list.current = nodes[2];
    EXPECT_TRUE(list.RemoveCurrent());
    EXPECT_EQ(list.count, 2);
    int walked = 0;
    for (auto* n = list.Next(nullptr); n; n = list.Next(n))
        ++walked;
    EXPECT_EQ(walked, 2);
}

TEST(BezierMerge, RunsBecomeCurvesAndSplitCubicsJoinAgain) {
    VBezierCurveList empty;
    KList out;
    EXPECT_EQ(empty.MergeToNurbs(out), kCurveOK);
    EXPECT_EQ(out.GetCount(), 0u);

    // A cubic split in two, and a separate straight run after it.
    const KVector3D P[4] = {{0, 0, 0, 1}, {1, 3, 0, 1}, {3, -2, 1, 1}, {4, 1, 0, 1}};
    KVector3D L[4], R[4];
    ASSERT_EQ(SplitBezier(3, P, 0.5, L, R), kCurveOK);
    const KVector3D S1[4] = {{0, 5, 0, 1}, {1, 5, 0, 1}, {2, 5, 0, 1}, {3, 5, 0, 1}};
    const KVector3D S2[4] = {{3, 5, 0, 1}, {4, 5, 0, 1}, {5, 5, 0, 1}, {6, 5, 0, 1}};
    VBezierCurveList list;
    ASSERT_TRUE(Append(list, Segment(L, 4, 0)));
    ASSERT_TRUE(Append(list, Segment(R, 4, 2)));
    ASSERT_TRUE(Append(list, Segment(S1, 4, 1)));
    ASSERT_EQ(list.MarkFirst(), kCurveOK);
    ASSERT_TRUE(Append(list, Segment(S2, 4, 1)));
    ASSERT_EQ(list.MarkLast(), kCurveOK);
    ASSERT_EQ(list.MergeToNurbs(out), kCurveOK);
    ASSERT_EQ(out.GetCount(), 2u);
    auto* joined = static_cast<VCNurbsCurve*>(out.EntryAt(1));
    EXPECT_EQ(joined->GetControlPointCount(), 4);
    double a, b;
    joined->GetDomain(a, b);
    EXPECT_DOUBLE_EQ(b - a, 2.0);
    for (int i = 0; i <= 20; ++i) {
        KVector3D q;
        joined->Evaluate(a + (b - a) * i / 20.0, true, q);
        EXPECT_LT(Dist(Casteljau(P, 3, i / 20.0), q), 1e-3);
    }
    auto* straight = static_cast<VCNurbsCurve*>(out.EntryAt(2));
    EXPECT_EQ(straight->GetControlPointCount(), 4);
    KVector3D q;
    straight->Evaluate(1.0, true, q);
    EXPECT_NEAR(q.x, 3.0f, 1e-4);
}

TEST(BezierMerge, RunsMustBeginWithAFirstAndEndWithALast) {
    const KVector3D S[3] = {{0, 0, 0, 1}, {1, 1, 0, 1}, {2, 0, 0, 1}};
    const KVector3D C[4] = {{0, 0, 0, 1}, {1, 1, 0, 1}, {2, 1, 0, 1}, {3, 0, 0, 1}};
    KList out;
    {
        VBezierCurveList list;
        ASSERT_TRUE(Append(list, Segment(S, 3, 1)));
        EXPECT_EQ(list.MergeToNurbs(out), kCurveRunWithoutFirst);
    }
    {
        VBezierCurveList list;
        ASSERT_TRUE(Append(list, Segment(S, 3, 0)));
        ASSERT_TRUE(Append(list, Segment(S, 3, 1)));
        EXPECT_EQ(list.MergeToNurbs(out), kCurveRunWithoutLast);
        ASSERT_TRUE(Append(list, Segment(S, 3, 0)));
        EXPECT_EQ(list.MergeToNurbs(out), kCurveRunWithoutLast);
    }
    {
        VBezierCurveList list;
        ASSERT_TRUE(Append(list, Segment(S, 3, 0)));
        ASSERT_TRUE(Append(list, Segment(C, 4, 2)));
        EXPECT_EQ(list.MergeToNurbs(out), kCurveBadKnotCount); // mixed degrees
        std::unique_ptr<VCNurbsCurve> plain = MakeBezierCurve(3, S);
        ASSERT_TRUE(list.Insert(list.tail, plain));
        EXPECT_EQ(list.MarkFirst(), kCurveNoSuchOperation);
    }
    VBezierCurveList none;
    EXPECT_EQ(none.MarkLast(), kCurveNoSuchOperation);
    EXPECT_EQ(out.GetCount(), 0u);
}
