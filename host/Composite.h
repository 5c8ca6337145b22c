// Compositing the rendered scene over the host's image.
#pragma once

#include "host/HostBinding.h"

#include <cstdint>

class WGWorld;

// The result of one pixel of the composite.
struct BlendResult {
    uint8_t r, g, b, alpha;
};

// Limits premultiplied colours to their alpha: a pixel whose brightest
// channel exceeds its alpha is scaled down so that it does not.
void LimitToAlpha(uint8_t a, uint8_t* r, uint8_t* g, uint8_t* b);

// The normal blend of source (s, alpha a, already limited) over destination
// (d, alpha da). The output colours are not premultiplied.
BlendResult NormalBlend(const uint8_t s[3], uint8_t a, const uint8_t d[3], uint8_t da);

// The blend over a layer whose transparency is protected: alpha is left to
// the host.
BlendResult ProtectedBlend(const uint8_t s[3], uint8_t a, const uint8_t d[3], uint8_t da);

// Composites the binding's width by height pixels of the 32-bit `world` over
// inData into outData. Planes past the third (CMYK's black) are never
// written; alpha is written only with an alpha plane and the normal blend.
// When the input and output plane counts differ only the protected blend
// may run; otherwise nothing is composited.
void CompositeToHost(const HostBinding& binding, const WGWorld& world, bool useProtectedBlend);
