// The host's displayPixels: shows a filter's pixels on the PISurface that the
// filter passes as platformContext.
#ifndef PLUMET_HOSTS_DISPLAYPIXELS_H
#define PLUMET_HOSTS_DISPLAYPIXELS_H

#include "sdk/PIFilter.h"

namespace plumet::hosts {

// Converts srcRect of the pixel map (in its bounds' coordinates, clipped to
// them) to 0x00RRGGBB words of the surface, with the rectangle's top left at
// (dstRow, dstCol); what falls outside the surface is left out. RGB is copied;
// CMYK (inverted, 255 = no ink, as in the filter's buffers) is turned into RGB
// naively, each colour = (255 - ink) * (255 - black) / 255. With a
// transparency mask the pixels are laid over a grey checkerboard of 8-pixel
// squares, fixed to the image.
//
// Returns noErr, filterBadParameters for missing or inconsistent arguments
// (null pointers, version not 1, strides that cannot hold the planes, a
// surface whose rows are shorter than its width) and filterBadMode for a
// mode other than RGB or CMYK. Nothing is written outside the surface.
OSErr DisplayPixelsOnSurface(const PSPixelMap* source, const VRect* srcRect, int32 dstRow,
                             int32 dstCol, void* platformContext);

// The two greys of the checkerboard, 0x00RRGGBB.
constexpr uint32 kCheckerLight = 0xFFFFFF;
constexpr uint32 kCheckerDark = 0xCCCCCC;

} // namespace plumet::hosts

#endif
