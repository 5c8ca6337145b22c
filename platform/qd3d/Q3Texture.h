// Fast reads of pixmap textures for renderers.
#pragma once

#include "platform/qd3d/Q3Internal.h"

namespace q3 {

struct TextureView {
    const unsigned char* bytes = nullptr;
    TQ3Uns32 width = 0, height = 0, rowBytes = 0;
    bool hasAlpha = false;
    TQ3ShaderUVBoundary uBoundary = kQ3ShaderUVBoundaryWrap;
    TQ3ShaderUVBoundary vBoundary = kQ3ShaderUVBoundaryWrap;
};

// Fills view for a live pixmap texture whose storage holds all its pixels.
bool textureView(TQ3Object texture, TextureView& view);
// Bilinear read at (u, v), v = 0 at the bottom row; colour not premultiplied.
TQ3ColorARGB sampleTexture(const TextureView& view, float u, float v);

} // namespace q3
