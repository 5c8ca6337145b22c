// One picture: camera rays through jittered samples of every pixel, layers
// of see-through surfaces followed to the first opaque one, and premultiplied
// ARGB out into the pass's pixmap. The pixmap is cut into tiles that worker
// threads take in turn; all of them end before render returns.
#pragma once

#include "platform/finalrender/LWScene.h"

#include <cstdint>
#include <vector>

namespace lwsl {

struct TraceOptions {
    unsigned samplesPerSide = 3;
    bool transparencyAffectsAlpha = false;
    bool shadows = true;
};

struct TraceFigures {
    std::uint64_t primaryRays = 0;
    std::uint64_t shadowRays = 0;
    unsigned threads = 0;
};

// Renders the scene into pass.pixmap. False when the pass gives nothing to
// draw into or the camera has no rays.
bool trace(const Scene& scene, const TQ3XPassInfo& pass, const std::vector<TQ3XLight>& lights,
           const TraceOptions& options, TraceFigures& figures);

} // namespace lwsl
