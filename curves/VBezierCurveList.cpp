#include "curves/VBezierCurveList.h"

#include <vector>

VCurveStatus VBezierCurveList::Mark(std::int32_t tag) {
    if (!current) return kCurveNoSuchOperation;
    auto* piece = dynamic_cast<VBezierCurve*>(current->curve.get());
    if (!piece) return kCurveNoSuchOperation;
    piece->placeTag = tag;
    return kCurveOK;
}

VCurveStatus VBezierCurveList::MarkFirst() {
    return Mark(VBezierCurve::kPlaceFirst);
}
VCurveStatus VBezierCurveList::MarkLast() {
    return Mark(VBezierCurve::kPlaceLast);
}

VCurveStatus VBezierCurveList::MergeToNurbs(KList& list) {
    try {
        ListNode* node = head;
        while (node) {
            auto* first = dynamic_cast<VBezierCurve*>(node->curve.get());
            if (!first || first->placeTag != VBezierCurve::kPlaceFirst)
                return kCurveRunWithoutFirst;
            const std::int32_t p = first->degree;
            std::vector<KVector3D> points;
            std::vector<double> knots;
            double start = 0.0;
            bool ended = false;
            for (; node; node = node->next) {
                auto* piece = dynamic_cast<VBezierCurve*>(node->curve.get());
                if (!piece) return kCurveRunWithoutLast;
                if (piece != first && piece->placeTag == VBezierCurve::kPlaceFirst)
                    return kCurveRunWithoutLast;
                VCurveStatus st = piece->CheckValid();
                if (st != kCurveOK) return st;
                if (piece->degree != p) return kCurveBadKnotCount;
                double a = 0, b = 0;
                piece->GetDomain(a, b);
                // Each segment continues where the one before ended.
                for (std::int32_t k = 0; k <= p; ++k)
                    knots.push_back(start);
                for (std::int32_t k = 0; k < piece->ctrlPoints->count; ++k)
                    points.push_back(piece->ctrlPoints->points[k]);
                start += b - a;
                if (piece->placeTag == VBezierCurve::kPlaceLast) {
                    ended = true;
                    node = node->next;
                    break;
                }
            }
            if (!ended) return kCurveRunWithoutLast;
            for (std::int32_t k = 0; k <= p; ++k)
                knots.push_back(start);
            auto merged = std::unique_ptr<VCNurbsCurve>(new (std::nothrow) VCNurbsCurve());
            if (!merged) return kCurveNoMemory;
            VCurveStatus st = merged->Set(p, std::int32_t(points.size()), points.data(),
                                          std::int32_t(knots.size()), knots.data(), 0);
            if (st != kCurveOK) return st;
            merged->RemoveKnots(0.01f);
            list.Append(merged.release());
        }
        return kCurveOK;
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
}
