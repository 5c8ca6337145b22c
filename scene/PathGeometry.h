#pragma once

class VCurve;
class DDisplayGroup;

// Puts the drawable form of a path into `group`: for an analytic path a
// light green polyline through its grid samples, not lit. A custom path has
// a model of its own that draws it, so nothing is added for it.
void BuildPathGeometry(const VCurve& curve, DDisplayGroup& group);

// What draws a path, its controls and its guides the colour they are given:
// no lighting, and the light green of a path for what has no colour of its
// own. Goes first into a group.
void AddUnlitGreen(DDisplayGroup& group);
