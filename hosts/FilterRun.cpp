#include "hosts/FilterRun.h"

#include <cstring>

namespace plumet::hosts {

namespace {

bool SameRequest(const FilterRecord& a, const FilterRecord& b) {
    const auto same = [](const Rect& x, const Rect& y) {
        return x.top == y.top && x.left == y.left && x.bottom == y.bottom && x.right == y.right;
    };
    return same(a.inRect, b.inRect) && same(a.outRect, b.outRect) && same(a.maskRect, b.maskRect) &&
           a.inLoPlane == b.inLoPlane && a.inHiPlane == b.inHiPlane &&
           a.outLoPlane == b.outLoPlane && a.outHiPlane == b.outHiPlane &&
           a.inputRate == b.inputRate;
}

} // namespace

RunOutcome RunFilter(FilterModule& module, FilterHost& host, Handle& parameters, bool repeat) {
    host.Activate();
    FilterRecord& record = host.Record();
    record.parameters = parameters;
    RunOutcome outcome;
    const auto call = [&](int16 selector) {
        const int16 result = module.Call(selector, &record);
        parameters = record.parameters; // the filter may have made or replaced it
        if (result != 0 && outcome.result == 0) {
            outcome.result = result;
            outcome.failedSelector = selector;
        }
        return result == 0;
    };

    if (!repeat && !call(filterSelectorParameters)) return outcome;
    if (!call(filterSelectorPrepare)) return outcome;
    if (!call(filterSelectorStart)) {
        host.Discard();
        return outcome;
    }

    long calls = 0, same = 0;
    FilterRecord previous = record;
    while (!host.RectanglesEmpty()) {
        if (++calls > kMaxContinueCalls ||
            (SameRequest(record, previous) && ++same > kMaxSameRequests)) {
            outcome.result = -1;
            outcome.hostMessage = "the filter kept asking for pixels without finishing";
            break;
        }
        if (!SameRequest(record, previous)) same = 0;
        previous = record;
        if (const OSErr err = host.AdvanceState(); err != noErr) {
            outcome.result = err;
            outcome.failedSelector = filterSelectorContinue;
            outcome.hostMessage = "the host could not deliver the pixels the filter asked for";
            break;
        }
        if (!call(filterSelectorContinue)) break;
    }
    call(filterSelectorFinish);
    if (outcome.result == 0)
        host.Complete();
    else
        host.Discard();
    return outcome;
}

int16 RunAbout(FilterModule& module) {
    PlatformData platform{};
    AboutRecord about{};
    about.platformData = &platform;
    return module.Call(filterSelectorAbout, &about);
}

} // namespace plumet::hosts
