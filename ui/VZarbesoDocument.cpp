#include "ui/VZarbesoDocument.h"

#include "foundation/Messages.h"
#include "host/Alerts.h"
#include "host/ModuleState.h"
#include "resources/Strings.h"
#include "scene/SceneAlerts.h"
#include "text/FontList.h"
#include "ui/persistence/VZarbesoWorkspace.h"

#include <QApplication>
#include <algorithm>

#include <algorithm>

namespace {
// The scene's messages to the user, over the active window.
void ShowSceneAlert(int stringId) {
    ShowAlert(stringId, qApp ? QApplication::activeWindow() : nullptr);
}
} // namespace

VZarbesoDocument::VZarbesoDocument(bool loadWorkspace) {
    BuildFontList();
    workspace_ = std::make_unique<VZarbesoWorkspace>(loadWorkspace);
    view_ = std::make_unique<VZarbesoView>();
    view_->SetupText(workspace_->text.text);
    view_->AddListener(this);
    // Widgets and lights made outside a gesture read the view from here.
    SetCurrent3DView(view_.get());
    // Light icons start at the default size, three times their own.
    view_->GetSceneManager()->ScaleLights(lightIconSize);
    SetSceneAlert(&ShowSceneAlert);
    renderer_ = std::make_unique<QRenderer>(view_.get());
    renderer_->SelectFinalRenderer(kFinalRendererNickName);
    renderer_->UseInteractivePreview();
}

VZarbesoDocument::~VZarbesoDocument() {
    SetSceneAlert(nullptr);
    renderer_.reset();
    view_.reset();
}

void VZarbesoDocument::InitControls() {
    const std::uint32_t font = GetCurrentFont();
    controls.fontRow = font > 0 ? std::int32_t(font) - 1 : 0;
    const std::vector<std::string> names = GetRendererRows();
    const auto ours = std::find(names.begin(), names.end(), kFinalRendererNickName);
    controls.rendererRow = -1;
    if (!names.empty())
        SelectRendererRow(ours == names.end() ? 0 : std::int32_t(ours - names.begin()));
}

// ---- the run -------------------------------------------------------------------

void VZarbesoDocument::AdjustViewSize(int width, int height, bool) {
    const Rect frame = view_->GetFrame();
    view_->Resize(width, height, frame.right, frame.bottom, false);
}

void VZarbesoDocument::BindImage(bool final) {
    if (!gFilterRecord) return;
    const int width = final || !gPreviewScaled ? gFullWidth : gPreviewWidth;
    const int height = final || !gPreviewScaled ? gFullHeight : gPreviewHeight;
    AdjustViewSize(width, height, !final && gPreviewScaled);
    view_->SetHostImage(
        gFilterRecord->inData, gFilterRecord->inRowBytes, gFilterRecord->outData,
        gFilterRecord->outRowBytes, static_cast<int16>(width), static_cast<int16>(height),
        gPlaneCount, gAlphaPlane, gProtectedTransparency,
        gPluginParameters ? gPluginParameters->imageMode : gFilterRecord->imageMode);
}

bool VZarbesoDocument::RenderFinal() {
    renderStopped_ = false;
    FilterRecord* record = gFilterRecord;
    if (!record) return false;
    const PreviewRequest preview{record->inRect,     record->outRect,    record->inputRate,
                                 record->maskRate,   record->inLoPlane,  record->inHiPlane,
                                 record->outLoPlane, record->outHiPlane, gPlaneCount,
                                 gAlphaPlane};
    record->inputRate = 0x10000;
    record->maskRate = 0x10000;
    record->outRect = record->filterRect;
    record->inRect = record->outRect;
    if (gProtectedTransparency) {
        // The final pass sees a plain image of three planes; the host keeps
        // the layer's transparency.
        record->outHiPlane = 2;
        record->inHiPlane = 2;
        gPlaneCount = 3;
        gAlphaPlane = -1;
    }
    const OSErr err = AdvanceStateThunk();
    if (err == memFullErr) ShowAlert(plumet::kStrCantComplete, nullptr);
    if (err != noErr) return false;
    // A Preview at full size already stands in the output.
    if (view_->IsRenderShowing() && gPluginParameters && gPluginParameters->previewScale == 1)
        return true;
    BindImage(true);
    view_->SetOffscreen(true);
    if (RenderScene(false)) return true;
    // Stopped: the window goes on with the buffers it had before.
    record->inRect = preview.inRect;
    record->outRect = preview.outRect;
    record->inputRate = preview.inputRate;
    record->maskRate = preview.maskRate;
    record->inLoPlane = preview.inLoPlane;
    record->inHiPlane = preview.inHiPlane;
    record->outLoPlane = preview.outLoPlane;
    record->outHiPlane = preview.outHiPlane;
    gPlaneCount = preview.planes;
    gAlphaPlane = preview.alphaPlane;
    if (AdvanceStateThunk() == noErr) BindImage(false);
    return false;
}

bool VZarbesoDocument::RenderProgress(double done) {
    FilterRecord* record = gFilterRecord;
    if (!record) return true;
    constexpr int32 kSteps = 1000;
    if (record->progressProc)
        record->progressProc(static_cast<int32>(std::clamp(done, 0.0, 1.0) * kSteps), kSteps);
    return !(record->abortProc && record->abortProc());
}

bool VZarbesoDocument::RenderScene(bool interactive) {
    VZarbesoSceneManager* scene = view_->GetSceneManager();
    const bool lights = scene->GetLightsVisible();
    const bool models = scene->GetModelsVisible();
    const bool grid = scene->GetGridVisible();
    scene->SetLightsVisible(false);
    scene->SetGridVisible(false);
    scene->SetModelsVisible(true);
    scene->SetWidgetsVisible(false);
    renderStopped_ = false;
    view_->SetRenderProgress([this](double done) { return RenderProgress(done); });
    bool done;
    try {
        done = renderer_->Render(interactive);
    } catch (...) {
        view_->SetRenderProgress({});
        throw;
    }
    view_->SetRenderProgress({});
    scene->SetWidgetsVisible(true);
    scene->SetLightsVisible(lights);
    scene->SetModelsVisible(models);
    scene->SetGridVisible(grid);
    renderStopped_ = !done;
    // the half-drawn picture goes: the scene as it was shows again
    if (!done && interactive) view_->Refresh();
    return done;
}

void VZarbesoDocument::PreviewRender() {
    if (view_->IsRenderShowing()) return;
    const bool offscreen = view_->IsOffscreen();
    view_->SetOffscreen(true);
    view_->SetRenderShowing(false);
    RenderScene(true);
    view_->SetOffscreen(offscreen);
}

bool VZarbesoDocument::DeleteSelection(bool all) {
    SetCurrent3DView(view_.get());
    if (view_->DeleteSelectedPoint()) return true;
    VZarbesoSceneManager* scene = view_->GetSceneManager();
    const std::uint32_t lights = scene->GetLightCount();
    if (all)
        scene->DeleteAllLights();
    else
        scene->DeleteSelected();
    return scene->GetLightCount() != lights;
}

bool VZarbesoDocument::ConfirmRun() {
    SaveWorkspace();
    const bool rendered = RenderFinal();
    if (gPluginParameters) gPluginParameters->invocation = 0;
    return rendered;
}

// ---- the window's part ---------------------------------------------------------

void VZarbesoDocument::ClearRender(bool redrawToo) {
    if (!view_->IsRenderShowing()) return;
    view_->SetRenderShowing(false);
    if (redrawToo) Redraw();
}

void VZarbesoDocument::ReportTextureFailure(const std::string& path) {
    ShowAlertText(plumet::kStrTextureLoadFailed,
                  plumet::LoadString(plumet::kStrTextureLoadFailed) + path +
                      plumet::LoadString(plumet::kStrTextureLoadFailedEnd),
                  nullptr);
}

void VZarbesoDocument::HearMessage(std::int32_t message, void*) {
    if (message != kMsgViewMatrixChanged && message != kMsgFieldOfViewChanged) return;
    // A camera moved by hand reads "Custom View".
    if (keepViewSelection || controls.viewRow == kViewRowCustom) return;
    controls.viewRow = kViewRowCustom;
    UpdateControls();
}

// ---- colours, Link, fields, text, switches, options ------------------------------

void VZarbesoDocument::SetFaceColor(const std::array<std::uint16_t, 3>& c) {
    view_->SetFaceColor(c[0], c[1], c[2]);
    if (controls.link) view_->SetSideColor(c[0], c[1], c[2]);
}

void VZarbesoDocument::SetSideColor(const std::array<std::uint16_t, 3>& c) {
    view_->SetSideColor(c[0], c[1], c[2]);
    if (controls.link)
        view_->SetFaceColor(c[0], c[1], c[2]);
    else
        sideColor = c;
}

void VZarbesoDocument::SetLink(bool on) {
    controls.link = on ? 1 : 0;
    const std::array<std::uint16_t, 3> c = on ? view_->GetFaceColor() : sideColor;
    view_->SetSideColor(c[0], c[1], c[2]);
}

void VZarbesoDocument::SetAmbientColor(const std::array<std::uint16_t, 3>& c) {
    view_->GetSceneManager()->SetAmbientColor16(c[0], c[1], c[2]);
}

bool VZarbesoDocument::SetIntensity(std::int32_t percent) {
    if (percent < 0 || percent > 100) return false;
    view_->GetSceneManager()->SetAmbientBrightness(float(percent) / 100.0f);
    return true;
}

bool VZarbesoDocument::SetTransparency(std::int32_t percent) {
    if (percent < 0 || percent > 100) return false;
    view_->SetOpacity(float(100 - percent));
    return true;
}

void VZarbesoDocument::SetText(const std::string& text) {
    controls.text = text.substr(0, std::size_t(std::max(maxTextLength, 0)));
    try {
        view_->SetText(controls.text.c_str());
    } catch (...) {
        // Letters that cannot be built leave the old ones standing.
    }
}

void VZarbesoDocument::SetSwitch(VSwitch which, bool on) {
    VZarbesoSceneManager* scene = view_->GetSceneManager();
    switch (which) {
    case VSwitch::kImage:
        view_->SetOffscreen(on);
        break;
    case VSwitch::kText:
        view_->ShowText(on);
        break;
    case VSwitch::kPath:
        view_->ShowPath(on);
        break;
    case VSwitch::kLights:
        scene->SetLightsVisible(on);
        break;
    case VSwitch::kGrid:
        scene->SetGridVisible(on);
        break;
    }
}

bool VZarbesoDocument::GetSwitch(VSwitch which) const {
    const VZarbesoSceneManager* scene = view_->GetSceneManager();
    switch (which) {
    case VSwitch::kImage:
        return view_->IsOffscreenWanted();
    case VSwitch::kText:
        return view_->IsTextShown();
    case VSwitch::kPath:
        return view_->IsPathShown();
    case VSwitch::kLights:
        return scene->GetLightsVisible();
    case VSwitch::kGrid:
        return scene->GetGridVisible();
    }
    return false;
}

void VZarbesoDocument::SetLightIconSize(float size) {
    // The dialog offers 2, 3 and 4; a stored size far outside is not one.
    if (!(size >= 0.5f && size <= 16.0f)) return;
    view_->GetSceneManager()->ScaleLights(size / lightIconSize);
    lightIconSize = size;
}
