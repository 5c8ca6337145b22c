// Two custom path records alike to the bit: counts, points, knots, name,
// kind and start frame.
#pragma once

#include "curves/VCustomPathData.h"

#include <cstring>

inline bool SameCustomPath(const VCustomPathData* a, const VCustomPathData* b) {
    return a && b && a->pointCount == b->pointCount && a->knotCount == b->knotCount &&
           !std::memcmp(a->points.get(), b->points.get(), sizeof(KVector3D) * a->pointCount) &&
           !std::memcmp(a->knots.get(), b->knots.get(), sizeof(double) * a->knotCount) &&
           a->closed == b->closed && !std::memcmp(a->name, b->name, sizeof a->name) &&
           a->isBezier == b->isBezier && !std::memcmp(&a->startTangent, &b->startTangent, 16) &&
           !std::memcmp(&a->startNormal, &b->startNormal, 16);
}
