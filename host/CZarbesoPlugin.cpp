#include "host/CZarbesoPlugin.h"

#include "host/Alerts.h"
#include "host/GuiSession.h"
#include "host/HostBinding.h"
#include "host/ModalRun.h"
#include "host/ModuleState.h"
#include "host/PlaneTable.h"
#include "host/PreviewScale.h"
#include "resources/Strings.h"
#include "scene/K3DSystem.h"
#include "sdk/PIGlobal.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace {
constexpr Rect kEmptyRect = {0, 0, 0, 0};

intptr_t ParentWindow(void* platformData) {
    return platformData ? static_cast<PlatformData*>(platformData)->hwnd : 0;
}

bool PlayWithoutDialog(const FilterRecord* record) {
    return record->descriptorParameters &&
           record->descriptorParameters->playInfo == plugInDialogDontDisplay;
}

// Puts `text` into the host's error string, as a length-prefixed string.
void SetErrorString(FilterRecord* record, const std::string& text) {
    if (!record->errorString) return;
    unsigned char* s = *record->errorString;
    const std::size_t n = std::min<std::size_t>(text.size(), 255);
    s[0] = static_cast<unsigned char>(n);
    std::memcpy(s + 1, text.data(), n);
}

// Calls advanceState; false when the start must end with `*result`. On a
// failure the rectangles are emptied, and an out-of-memory answer is shown
// once and turned into success with nothing to do, so that the image stays
// as it was.
bool Advance(FilterRecord* record, int16* result) {
    const OSErr err = AdvanceStateThunk();
    if (err == noErr) return true;
    record->inRect = kEmptyRect;
    record->outRect = kEmptyRect;
    *result = err;
    if (err == memFullErr) {
        ShowAlert(plumet::kStrCantComplete, nullptr);
        *result = noErr;
    }
    return false;
}
} // namespace

int16 CZarbesoPlugin::DoAbout(AboutRecord* record) {
    ShowAboutBox(record ? ParentWindow(record->platformData) : 0, true);
    return 0;
}

int16 CZarbesoPlugin::DoParameters(FilterRecord* record) {
    // A block too small to be our record (a host that kept another filter's)
    // is replaced by a fresh one.
    if (record->parameters && PIGlobalSize(record->parameters) < sizeof(PluginParameters)) {
        PIGlobalFree(record->parameters);
        record->parameters = nullptr;
    }
    if (!record->parameters) {
        auto* p = static_cast<PluginParameters*>(
            PIGlobalAlloc(PIGlobalZeroInit, sizeof(PluginParameters)));
        if (!p) return memFullErr;
        p->invocation = -1;
        record->parameters = p;
    }
    auto* params = static_cast<PluginParameters*>(record->parameters);
    params->invocation = params->invocation == -1 ? 1 : 2;
    params->platformData = record->platformData;
    params->imageMode = record->imageMode;
    gPluginParameters = params;
    return 0;
}

int16 CZarbesoPlugin::DoPrepare(FilterRecord* record) {
    if (!K3DSystem::IsAvailable() || K3DSystem::GetVersion() < kMinimumQD3DVersion)
        return userCanceledErr;
    const Rect& r = record->filterRect;
    // A signed 32-bit product, as the estimate has always been computed; an
    // area whose estimate overflows cannot fit either.
    const int64_t estimate = int64_t(r.right - r.left) * (r.bottom - r.top) * 4;
    if (estimate >= 0 && estimate <= INT32_MAX && estimate < record->maxSpace) {
        record->bufferSpace = static_cast<int32>(estimate);
        return 0;
    }
    record->bufferSpace = 0;
    ShowAlert(plumet::kStrCantComplete, nullptr);
    return memFullErr;
}

int16 CZarbesoPlugin::DoStart(FilterRecord* record) {
    if (!record->parameters) return 1;
    if (PIGlobalSize(record->parameters) < sizeof(PluginParameters)) return filterBadParameters;
    auto* params = static_cast<PluginParameters*>(record->parameters);
    gPluginParameters = params;
    if (!record->advanceState) {
        ShowAlert(plumet::kStrHostTooOld, nullptr);
        return 1;
    }
    if (record->imageMode != plugInModeRGBColor && record->imageMode != plugInModeCMYKColor)
        return filterBadMode;

    params->advanceStateThunk = &AdvanceStateThunk;
    params->advanceState = record->advanceState;
    params->processEventThunk = &ProcessEventThunk;
    params->processEvent = record->processEvent;
    params->displayPixelsThunk = &DisplayPixelsThunk;
    params->displayPixels = record->displayPixels;
    params->colorServicesThunk = &ColorServicesThunk;
    params->colorServices = record->colorServices;

    record->inLoPlane = 0;
    record->outLoPlane = 0;
    const PlaneChoice planes = ChoosePlanes(record->filterCase, record->planes, record->imageMode,
                                            record->inLayerPlanes, record->inTransparencyMask);
    if (!planes.supported) return filterBadMode;
    record->inHiPlane = planes.inHiPlane;
    record->outHiPlane = planes.outHiPlane;

    // A repeat told not to show a dialog runs as the run without a window.
    if (PlayWithoutDialog(record)) params->invocation = 0;
    std::optional<GuiSession> gui;
    if (params->invocation != 0) {
        gui.emplace();
        if (!gui->Ok()) {
            SetErrorString(record, plumet::LoadString(plumet::kStrNoDisplay));
            return errReportString;
        }
    }

    const Rect full = record->filterRect;
    const int width = full.right - full.left;
    const int height = full.bottom - full.top;
    if (width <= 0 || height <= 0) return 1;

    record->inRect = full;
    record->outRect = full;
    record->maskRect = kEmptyRect;
    record->inputRate = 0x10000;
    int16 result = noErr;
    if (!Advance(record, &result)) return result;

    // The run without a window shows no preview, so nothing needs to fit a
    // screen: it works on the selection at full size.
    int scale = 1;
    if (params->invocation != 0) {
        int desktopW = 0, desktopH = 0;
        GuiSession::DesktopSize(&desktopW, &desktopH);
        scale = ComputePreviewScale(width, height, desktopW, desktopH);
    }
    params->previewScale = static_cast<int16>(scale);

    record->inRect = {static_cast<int16>(full.top / scale), static_cast<int16>(full.left / scale),
                      static_cast<int16>(full.bottom / scale),
                      static_cast<int16>(full.right / scale)};
    record->maskRect = kEmptyRect;
    record->inputRate = scale << 16;
    record->inputPadding = 255;
    const int previewW = record->inRect.right - record->inRect.left;
    const int previewH = record->inRect.bottom - record->inRect.top;
    if (previewW <= 5 || previewH <= 5) return 1;
    if (!Advance(record, &result)) return result;
    // A host that answers success without buffers, or with rows too short
    // for the pixels it was asked for, has nothing to filter.
    if (!record->inData || !record->outData ||
        !RowsHold(record->inRowBytes, previewW, record->inHiPlane - record->inLoPlane + 1) ||
        !RowsHold(record->outRowBytes, previewW, record->outHiPlane - record->outLoPlane + 1))
        return filterBadParameters;

    gRunningAsPlugin = 1;
    gFilterRecord = record;
    gPlaneCount = planes.planeCount;
    gAlphaPlane = planes.alphaPlane;
    gProtectedTransparency = planes.protectedTransparency;
    gPreviewWidth = static_cast<int16>(previewW);
    gPreviewHeight = static_cast<int16>(previewH);
    gFullWidth = static_cast<int16>(width);
    gFullHeight = static_cast<int16>(height);
    gPreviewScaled = scale != 1;

    // The 3D library lives exactly as long as the run of the window.
    VC3DSystem system;
    const bool confirmed = RunFilterDialog(record->platformData, params->invocation);
    return confirmed ? 0 : 1;
}

int16 CZarbesoPlugin::DoContinue(FilterRecord* record) {
    record->inRect = kEmptyRect;
    record->outRect = kEmptyRect;
    return 0;
}

int16 CZarbesoPlugin::DoFinish(FilterRecord*) {
    return 0;
}
