// The pixels of a GIMP drawable as the host library holds them, and the way
// back through the shadow buffer.
#ifndef PLUMET_HOSTS_GIMP_DRAWABLEPIXELS_H
#define PLUMET_HOSTS_GIMP_DRAWABLEPIXELS_H

#include "hosts/HostImage.h"

#include <glib.h>
#include <string>

namespace plumet::hosts::gimp {

// A rectangle of the drawable, in its own pixel coordinates.
struct DrawableArea {
    int x = 0, y = 0, width = 0, height = 0;
};

// Reads the area as 8-bit non-linear RGB, with the transparency when the
// drawable has it, whatever the drawable's own precision.
bool ReadDrawable(gint32 drawable, const DrawableArea& area, HostImage& image, std::string& error);

// Writes `result` over the area of the drawable's shadow buffer and merges
// it into the drawable as one undo step. GIMP masks the merge by the
// selection (pixels outside it stay as they were, feathered edges blend) and
// by the layer's locked transparency. A pixel whose 8-bit value is the same
// in `source` and `result` keeps the drawable's own value, so a drawable of
// higher precision loses nothing where the filter left it alone.
bool WriteDrawable(gint32 drawable, const DrawableArea& area, const HostImage& source,
                   const HostImage& result, std::string& error);

} // namespace plumet::hosts::gimp

#endif
