#include "ui/VZarbesoDocument.h"

#include "curves/VAnalyticPathTable.h"
#include "host/Alerts.h"
#include "host/ModuleState.h"
#include "resources/Strings.h"
#include "scene/SceneAlerts.h"
#include "text/FontList.h"

#include <QApplication>

namespace {
// The starting values of a session, as the preferences keep them.
constexpr const char* kDefaultText = "Lumerra 3D";
constexpr std::uint16_t kFaceColor[3] = {0, 0x6666, 0xFFFF};
constexpr std::uint16_t kSideColor[3] = {0, 0, 0x8888};
constexpr float kAmbientIntensity = 0.8f;
constexpr std::int32_t kDefaultPath = 1; // the line
// Slide, revolve, rotate, tilt, width, height, spacing, depth, as shown.
constexpr float kLayout[kTextLayoutValueCount] = {50, 0, 0, 0, 10, 10, 0, 4};
// The size of the light icons, until the Options dialog changes it.
constexpr float kLightIconSize = 3.0f;

// The scene's messages to the user, over the active window.
void ShowSceneAlert(int stringId) {
    ShowAlert(stringId, qApp ? QApplication::activeWindow() : nullptr);
}
} // namespace

VZarbesoDocument::VZarbesoDocument() {
    BuildFontList();
    view_ = std::make_unique<VZarbesoView>();
    view_->SetupText(kDefaultText);
    view_->GetSceneManager()->ScaleLights(kLightIconSize);
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

void VZarbesoDocument::ApplyDefaults() {
    VZarbesoView& v = *view_;
    v.SetStandardView(VZarbesoView::kHome, 0, false);
    v.SetFont(GetCurrentFont());
    VZarbesoSceneManager* scene = v.GetSceneManager();
    scene->SetAmbientBrightness(kAmbientIntensity);
    scene->SetAmbientColor(1, 1, 1);
    v.SetFaceColor(kFaceColor[0], kFaceColor[1], kFaceColor[2]);
    v.SetSideColor(kSideColor[0], kSideColor[1], kSideColor[2]);
    v.SetOpacity(100);
    v.SetText(kDefaultText);
    for (std::int32_t i = 0; i < kTextLayoutValueCount; ++i)
        v.SetLayout(static_cast<TextLayoutValue>(i), kLayout[i], i == kTextLayoutValueCount - 1,
                    true);
    const VAnalyticPathEntry* path = GetAnalyticPathEntry(kDefaultPath);
    v.SetPath(kDefaultPath, path ? path->startSliders[0] : 0, path ? path->startSliders[1] : 0);
    v.SetOffscreen(true);
}

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
    FilterRecord* record = gFilterRecord;
    if (!record) return false;
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
    RenderScene(false);
    return true;
}

void VZarbesoDocument::RenderScene(bool interactive) {
    VZarbesoSceneManager* scene = view_->GetSceneManager();
    const bool lights = scene->GetLightsVisible();
    const bool models = scene->GetModelsVisible();
    const bool grid = scene->GetGridVisible();
    scene->SetLightsVisible(false);
    scene->SetGridVisible(false);
    scene->SetModelsVisible(true);
    renderer_->Render(interactive);
    scene->SetLightsVisible(lights);
    scene->SetModelsVisible(models);
    scene->SetGridVisible(grid);
}
