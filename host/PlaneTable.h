#pragma once

#include "sdk/PIFilter.h"

// The planes the filter asks for in one filter case.
struct PlaneChoice {
    bool supported;
    int16 inHiPlane;
    int16 outHiPlane;
    int16 planeCount;
    int16 alphaPlane;
    uint8 protectedTransparency;
};

// Chooses the planes by filter case, first match wins; an unsupported
// combination answers supported = false.
PlaneChoice ChoosePlanes(int16 filterCase, int16 planes, int16 imageMode, int16 inLayerPlanes,
                         int16 inTransparencyMask);
