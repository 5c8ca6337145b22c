#pragma once

#include "host/HostBinding.h"

class WGWorld;

// Composites `world` into the host's output and has the host show the
// output on `surface` through its displayPixels, at the view's rectangle.
// Answers the host's result.
OSErr ShowOffscreen(const HostBinding& binding, const WGWorld& world, const Rect& viewRect,
                    int16 imageMode, PISurface* surface);

// The pixel map that describes the host's output for displayPixels; `mask`
// receives the transparency description when the image has one.
PSPixelMap MakeOutputPixelMap(const HostBinding& binding, const WGWorld& world, int16 imageMode,
                              PSPixelMask* mask);
