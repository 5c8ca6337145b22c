#pragma once

class VCurve;
class VCNurbsCurve;
class DDisplayGroup;

// Puts the drawable form of a path into `group`: for an analytic path a
// light green polyline through its grid samples, not lit. A custom path has
// a model of its own that draws it, so nothing is added for it.
void BuildPathGeometry(const VCurve& curve, DDisplayGroup& group);

// Puts the drawn form of a custom path's curve into `group`: the NURBS curve
// itself in the same light green, not lit.
void BuildCurveGeometry(const VCNurbsCurve& curve, DDisplayGroup& group);
