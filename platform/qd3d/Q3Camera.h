// Camera matrices for the view.
#pragma once

#include "platform/qd3d/Q3Internal.h"

namespace q3 {
// False when the camera's data cannot make a projection (it then posts an
// error): a location at its point of interest, an empty range, a zero field.
bool cameraMatrices(TQ3Object camera, TQ3Matrix4x4& worldToView, TQ3Matrix4x4& viewToFrustum,
                    TQ3CameraData* data);
} // namespace q3
