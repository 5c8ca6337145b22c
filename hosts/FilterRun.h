// The order in which the host calls a filter's selectors.
#ifndef PLUMET_HOSTS_FILTERRUN_H
#define PLUMET_HOSTS_FILTERRUN_H

#include "hosts/FilterHost.h"
#include "hosts/FilterModule.h"

#include <string>

namespace plumet::hosts {

struct RunOutcome {
    int16 result = 0;          // the first non-zero result, or 0
    int16 failedSelector = -1; // the selector that gave it; -1 if none or the host
    std::string hostMessage;   // set when the host itself stopped the run
};

// Guards against a filter that never empties its rectangles.
constexpr long kMaxContinueCalls = 1000000;
constexpr long kMaxSameRequests = 1000;

// Runs the filter over the host's image.
//
// A normal run calls parameters, prepare, start, then continue for as long as
// inRect, outRect or maskRect is not empty (the host advancing the buffers
// before each call), then finish. A repeat starts at prepare with the kept
// record. The run stops at the first non-zero result. Finish is called exactly
// when start succeeded, even if a continue failed, so that a filter can always
// release what start acquired; nothing after a failed parameters, prepare or
// start. On success the last outData goes into the destination; on failure
// the destination returns to the source, as an editor leaves the image
// untouched when a filter fails.
//
// `parameters` is the filter's record kept by the host: passed in (null, or a
// block from an earlier run) and updated with whatever the filter left in
// FilterRecord.parameters, which the caller then owns.
RunOutcome RunFilter(FilterModule& module, FilterHost& host, Handle& parameters, bool repeat);

// Calls the about selector with an AboutRecord whose platformData points to
// a PlatformData with no window.
int16 RunAbout(FilterModule& module);

} // namespace plumet::hosts

#endif
