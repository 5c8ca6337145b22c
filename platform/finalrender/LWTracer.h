// One picture: camera rays through jittered samples of every pixel the scene
// can be seen in, layers of see-through surfaces followed to the first
// opaque one, and premultiplied ARGB out into the pass's pixmap. The pixmap
// is cut into tiles that worker threads take in turn; all of them end before
// trace returns.
#pragma once

#include "platform/finalrender/LWScene.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace lwsl {

struct TraceOptions {
    unsigned samplesPerSide = 2;
    // A pixel whose samples disagree (an edge, the rim of a shadow) gets
    // twice as many a side, in the cells its first ones left empty.
    bool adaptive = true;
    bool transparencyAffectsAlpha = false;
    bool shadows = true;
};

struct TraceFigures {
    std::uint64_t primaryRays = 0;
    std::uint64_t shadowRays = 0;
    std::uint64_t tracedPixels = 0;  // the others are outside what the scene covers
    std::uint64_t refinedPixels = 0; // pixels that got the extra samples
    unsigned threads = 0;
};

// Sees every stream of rays just before Embree traces it; a benchmark traces
// the same rays through Embree alone. Worker w of `workers` calls it from
// its own thread. A stream holds count rays, one array a part, some of
// them left out (kLeftOut).
class RayTap {
  public:
    virtual ~RayTap() = default;
    virtual void begin(RTCScene scene, unsigned workers) = 0;
    virtual void cameraRays(unsigned worker, const RTCRayHitNp& rays, unsigned count) = 0;
    virtual void shadowRays(unsigned worker, const RTCRayNp& rays, unsigned count) = 0;
};

// Told now and then, on the calling thread, how many of the pixels to trace
// are done; answers false to stop the picture.
using TraceProgress = std::function<bool(std::uint64_t done, std::uint64_t total)>;

enum class TraceResult { Done, Stopped, NoTarget };

// Renders the scene into pass.pixmap. NoTarget when the pass gives nothing
// to draw into; Stopped when progress asked to stop, with the picture half
// drawn.
TraceResult trace(const Scene& scene, const TQ3XPassInfo& pass,
                  const std::vector<TQ3XLight>& lights, const TraceOptions& options,
                  TraceFigures& figures, const TraceProgress& progress = {}, RayTap* tap = nullptr);

} // namespace lwsl
