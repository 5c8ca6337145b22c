// A chain of Bezier segments, marked into runs that merge into NURBS curves.
#pragma once

#include "curves/VBezierCurve.h"
#include "curves/VNURBSCurveList.h"
#include "foundation/KList.h"

class VBezierCurveList : public VNURBSCurveList {
  public:
    // Tag the current node's segment first or last of a run; status 11
    // without a current node or when its curve is no VBezierCurve.
    VCurveStatus MarkFirst();
    VCurveStatus MarkLast();
    // One NURBS curve per run, appended to list (which owns them): the
    // segments laid end to end in parameter, their points concatenated, and
    // the joint knots then removed as far as a tolerance of 0.01 allows.
    // Status 9 for a run that does not begin with a first segment, 10 for
    // one without a last, 7 for segments of different degrees.
    VCurveStatus MergeToNurbs(KList& list);

  private:
    VCurveStatus Mark(std::int32_t tag);
};
