#include "host/ModuleState.h"

OSErr AdvanceStateThunk() {
    if (!gPluginParameters || !gPluginParameters->advanceState) return filterBadParameters;
    return gPluginParameters->advanceState();
}

OSErr ProcessEventThunk(void* event) {
    if (!gPluginParameters || !gPluginParameters->processEvent) return filterBadParameters;
    return gPluginParameters->processEvent(event);
}

OSErr DisplayPixelsThunk(const PSPixelMap* source, const VRect* srcRect, int32 dstRow, int32 dstCol,
                         void* platformContext) {
    if (!gPluginParameters || !gPluginParameters->displayPixels) return filterBadParameters;
    return gPluginParameters->displayPixels(source, srcRect, dstRow, dstCol, platformContext);
}

OSErr ColorServicesThunk(ColorServicesInfo* info) {
    if (!gPluginParameters || !gPluginParameters->colorServices) return filterBadParameters;
    return gPluginParameters->colorServices(info);
}
