#include "foundation/WCommander.h"

namespace {

WCommander* gDefaultCommander = nullptr;
WCommander* gNewestCommander = nullptr;

} // namespace

WCommander* WCommander::GetDefaultCommander() {
    return gDefaultCommander;
}

WCommander::WCommander() : fParent(gDefaultCommander) {
    Register();
}

WCommander::WCommander(WCommander* parent) : fParent(parent) {
    Register();
}

void WCommander::Register() {
    fOlder = gNewestCommander;
    if (fOlder) fOlder->fNewer = this;
    gNewestCommander = this;
    gDefaultCommander = this;
}

WCommander::~WCommander() {
    if (gDefaultCommander == this) gDefaultCommander = nullptr;
    for (WCommander* c = gNewestCommander; c; c = c->fOlder)
        if (c->fParent == this) c->fParent = fParent;
    fParent = nullptr;

    if (fNewer)
        fNewer->fOlder = fOlder;
    else
        gNewestCommander = fOlder;
    if (fOlder) fOlder->fNewer = fNewer;
}

void WCommander::SetParentCommander(WCommander* parent) {
    for (WCommander* c = parent; c; c = c->fParent)
        if (c == this) return;
    fParent = parent;
}

bool WCommander::DispatchCommand(std::int32_t command, void* parameter) {
    if (!RunAttachments(command, parameter)) return true;
    return PerformCommand(command, parameter);
}

bool WCommander::PerformCommand(std::int32_t command, void* parameter) {
    return fParent ? fParent->DispatchCommand(command, parameter) : false;
}
