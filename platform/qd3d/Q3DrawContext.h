// What the view reads from a draw context at the start of a pass.
#pragma once

#include "platform/qd3d/Q3Internal.h"

namespace q3 {
// The context's data and its pixmap (image null when it has none).
bool drawContextTarget(TQ3Object context, TQ3DrawContextData& data, TQ3Pixmap& pixmap);
} // namespace q3
