// The host's colorServices inside GIMP.
#ifndef PLUMET_HOSTS_GIMP_GIMPCOLORPICKER_H
#define PLUMET_HOSTS_GIMP_GIMPCOLORPICKER_H

#include "sdk/PIFilter.h"

namespace plumet::hosts::gimp {

// Answers a filter's request to choose a colour with GIMP's colour selector,
// in a dialog titled with the filter's prompt and opened at the colour the
// filter passes. Only RGB is spoken: components 0..255 in, the chosen colour
// out in the same form. noErr when the user chose, userCanceledErr when the
// user cancelled (the components are then left alone), filterBadParameters
// for any other selector or colour space. Needs GIMP's user interface to be
// set up (gimp_ui_init).
OSErr ChooseColorWithGimp(ColorServicesInfo* info);

} // namespace plumet::hosts::gimp

#endif
