// One run of a filter module over a GIMP drawable.
#ifndef PLUMET_HOSTS_GIMP_BRIDGERUN_H
#define PLUMET_HOSTS_GIMP_BRIDGERUN_H

#include "hosts/FilterModule.h"

#include <libgimp/gimp.h>

#include <string>

namespace plumet::hosts::gimp {

struct BridgeOutcome {
    GimpPDBStatusType status = GIMP_PDB_SUCCESS;
    std::string message; // for an error: one line for GIMP to show
};

// Runs the filter over the part of the drawable that the selection touches.
//
// The filter case follows the drawable: a layer without transparency is a
// flat image, with transparency an editable layer, with its transparency
// locked a protected one, a floating selection its own case; each "with
// selection" when the image has one. The filter's parameter record is kept
// with gimp_set_data under the procedure's name. Interactive runs start with
// the parameters selector and the window; non-interactive runs and runs with
// the last values repeat from the kept record without a window, or, when
// nothing is kept yet, run once from the start without a window. On success
// the result goes into the drawable as one undo step.
BridgeOutcome RunFilterOnDrawable(FilterModule& module, const std::string& procedure,
                                  GimpRunMode mode, gint32 image, gint32 drawable);

} // namespace plumet::hosts::gimp

#endif
