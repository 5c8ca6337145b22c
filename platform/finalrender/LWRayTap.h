// For benchmarks: a tap that sees every stream of rays a renderer of this
// class traces (see RayTap), so that the same rays can be timed through
// Embree alone.
#pragma once

#include "platform/finalrender/LWTracer.h"
#include "platform/qd3d/QD3DRenderer.h"

namespace lwsl {

// Sets or, with null, removes the tap; false for a renderer of another class.
bool SetRayTap(TQ3RendererObject renderer, RayTap* tap);

} // namespace lwsl
