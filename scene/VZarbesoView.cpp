#include "scene/VZarbesoView.h"

#include "curves/VAnalyticPathTable.h"
#include "curves/VCurveAnalyticPaths.h"
#include "d3d/DTransformObject.h"
#include "foundation/Messages.h"
#include "host/Composite.h"
#include "host/ShowOffscreen.h"
#include "render/TextureImage.h"
#include "scene/PathGeometry.h"
#include "text/FontList.h"
#include "text/VAlignedText.h"

#include <algorithm>
#include <cmath>
#include <cstring>

VZarbesoView::VZarbesoView(int width, int height) {
    for (auto& slot : customViews_)
        slot.fill(IdentityMatrix());
    K3DView::ResizeTo(width, height);
    InitView();
    keepImage = true;
    SetBackColor(0, 0, 0);
    MakeWorld(GetFrame());
    // Layout values and a path may be set before the text is.
    curveData_ = std::make_unique<VCurveData>(nullptr);
}

VZarbesoView::~VZarbesoView() {
    FreeChars();
    // The scene's models hold the text and path groups; they go first.
    sceneManager.reset();
}

void VZarbesoView::FreeChars() {
    FreeTextCharacters(textChars_);
    textChars_ = nullptr;
}

// ---- frames ------------------------------------------------------------------

void VZarbesoView::Draw(int) {
    // A finished render stays on the screen until the scene changes.
    if (renderShowing_ && offscreen)
        ShowBack();
    else
        Render();
}

void VZarbesoView::Render() {
    if (offscreen) {
        PrepareBack();
        K3DView::Render();
        worldHoldsPicture_ = true;
        ShowBack();
    } else {
        K3DView::Render();
    }
}

void VZarbesoView::PlaceCamera() {
    const TQ3Point3D location{0, 0, 10}, interest{0, 0, 0};
    const TQ3Vector3D up{0, 1, 0};
    const float d = 10.0f;
    float angle = 2.0f * std::atan(5.0f / d) * 57.29578f;
    if (camera->GetAspect() > 1.0f) angle *= camera->GetAspect();
    camera->SetFieldOfView(angle);
    camera->SetPlacement(location, interest, up);
    camera->SetRange(0.1f, 100.0f);
}

void VZarbesoView::AboutToTrack(void*) {
    if (!renderShowing_) return;
    SetRenderShowing(false);
    Refresh();
}

void VZarbesoView::RefreshUnlessKept() {
    if (renderShowing_ && !keepRender_) Refresh();
    keepRender_ = false;
}

// ---- camera ------------------------------------------------------------------

float VZarbesoView::GetFieldOfView() const {
    return camera->GetFieldOfView();
}

void VZarbesoView::SetFieldOfView(float value, bool absolute, bool notify) {
    if (!std::isfinite(value)) return;
    const float aspect = camera->GetAspect();
    float f = absolute ? value : camera->fieldOfView * 180.0f / 3.1415927f;
    if (aspect > 1.0f) f *= aspect;
    if (!absolute) f -= value / 2.0f;
    if (f > 175.0f)
        f = 175.0f;
    else if (f < 25.0f)
        f = 25.0f;
    camera->SetFieldOfView(f);
    if (notify) Broadcast(kMsgFieldOfViewChanged, &f);
}

void VZarbesoView::SetStandardView(int which, int customIndex, bool redraw) {
    const TQ3Matrix4x4 identity = IdentityMatrix();
    const float quarter = 1.5707964f;
    switch (which) {
    case kHome: {
        SetFieldOfView(45.0f, true, false);
        const TQ3Matrix4x4 orbitM = MatrixFromRotation(0.17453292f, 0, 0);
        SetAll(nullptr, &orbitM, &identity);
        break;
    }
    case kFront:
        SetAll(nullptr, &identity, &identity);
        break;
    case kTop: {
        const TQ3Matrix4x4 o = MatrixFromRotation(quarter, 0, 0);
        SetAll(nullptr, &o, nullptr);
        break;
    }
    case kBottom: {
        const TQ3Matrix4x4 o = MatrixFromRotation(-quarter, 0, 0);
        const TQ3Matrix4x4 p = TranslationMatrix(0, 0, 1.0f);
        SetAll(nullptr, &o, &p);
        break;
    }
    case kLeftSide: {
        const TQ3Matrix4x4 o = MatrixFromRotation(0, quarter, 0);
        SetAll(nullptr, &o, &identity);
        break;
    }
    case kRightSide: {
        const TQ3Matrix4x4 o = MatrixFromRotation(0, -quarter, 0);
        SetAll(nullptr, &o, &identity);
        break;
    }
    case kCustom:
        if (customIndex < 0 || customIndex >= 4) return;
        SetAll(&customViews_[customIndex][0], &customViews_[customIndex][1],
               &customViews_[customIndex][2]);
        return; // a custom view never redraws by itself
    default:
        return;
    }
    if (redraw) Refresh();
}

void VZarbesoView::SaveCustomView(int slot) {
    if (slot < 0 || slot >= 4) return;
    GetAll(&customViews_[slot][0], &customViews_[slot][1], &customViews_[slot][2]);
}

void VZarbesoView::DeleteCustomView(int slot) {
    if (slot < 0 || slot >= 4) return;
    for (int i = slot; i < 3; ++i)
        customViews_[i] = customViews_[i + 1];
    customViews_[3].fill(IdentityMatrix());
}

void VZarbesoView::Resize(int width, int height, int oldWidth, int oldHeight, bool keepCentre) {
    const bool firstWorld = !frontWorld;
    K3DView::ResizeTo(width, height);
    Rect rect = GetFrame();
    if (keepCentre) {
        MoveBy((oldWidth - width_) / 2, (oldHeight - height_) / 2, true);
        rect = GetBounds();
    }
    MakeWorld(rect);
    camera->SetPane(GetArea());
    if (offscreen)
        viewer.SetDrawContext(*pixmapContext);
    else
        viewer.SetDrawContext(*drawContext);
    if (firstWorld && !keepImage && offscreen) {
        K3DBackView::SetOffscreen(false);
        K3DBackView::SetOffscreen(true);
    }
}

// ---- the host's image ----------------------------------------------------------

void VZarbesoView::SetHostImage(void* inData, int32 inRowBytes, void* outData, int32 outRowBytes,
                                int16 width, int16 height, int16 planes, int16 alphaPlane,
                                uint8 protectedTransparency, int16 imageMode) {
    binding_ = MakeHostBinding(inData, inRowBytes, outData, outRowBytes, width, height, planes,
                               alphaPlane, protectedTransparency);
    imageMode_ = imageMode;
}

void VZarbesoView::CompositeToHost(bool useProtectedBlend) {
    if (frontWorld) ::CompositeToHost(binding_, *frontWorld, useProtectedBlend);
}

void VZarbesoView::ShowOffscreen() {
    if (!frontWorld || !binding_.outData || !worldHoldsPicture_) return;
    ::ShowOffscreen(binding_, *frontWorld, GetFrame(), imageMode_, GetSurface());
}

void VZarbesoView::SetOffscreen(bool flag) {
    offscreenWanted_ = flag;
    if (!renderShowing_) K3DBackView::SetOffscreen(flag);
}

void VZarbesoView::SetRenderShowing(bool flag) {
    const bool ending = renderShowing_ && !flag;
    renderShowing_ = flag;
    if (ending) K3DBackView::SetOffscreen(offscreenWanted_);
}

// ---- the text ----------------------------------------------------------------

void VZarbesoView::SetupText(const char* text) {
    std::strncpy(text_, text ? text : "", sizeof text_ - 1);
    FreeChars();
    if (!BuildTextCharacters(text_, flattenQuality_, &textChars_)) textChars_ = nullptr;
    if (!HasPath()) {
        DiscardPath();
        curve_ = std::make_unique<VCurveAxis>(-24.0f, 24.0f, 24.0f);
        pathIndex_ = 1; // the Line
        curveData_->curve = curve_.get();
        MakePathModel();
    }
    if (textModel_) sceneManager->RemoveModel(textModel_);
    alignedText_ = std::make_unique<VAlignedText>();
    alignedText_->SetDiffuseColor(faceColor_[0] / 65535.0f, faceColor_[1] / 65535.0f,
                                  faceColor_[2] / 65535.0f);
    UpdateText();
    textModel_ = sceneManager->NewTextModelFromGroup(*alignedText_);
    textModel_->selectable = 0;
}

void VZarbesoView::MakePathModel() {
    pathGroup_ = std::make_unique<DAttributeDisplayGroup>();
    BuildPathGeometry(*curve_, *pathGroup_);
    pathModel_ = sceneManager->NewTextModelFromGroup(*pathGroup_);
    pathModel_->selectable = 0;
    pathModel_->SetDrawn(pathShown_);
}

void VZarbesoView::DiscardPath() {
    // A curve model owns its curve and path: they go with it.
    if (pathModel_) sceneManager->RemoveModel(pathModel_);
    pathModel_ = nullptr;
    if (curveData_) curveData_->curve = nullptr;
    curve_.reset();
    pathIndex_ = 0;
}

void VZarbesoView::DropPath() {
    DiscardPath();
    UpdateText();
}

void VZarbesoView::ShowPath(bool flag) {
    pathShown_ = flag;
    if (pathModel_) pathModel_->SetDrawn(flag);
}

void VZarbesoView::ShowText(bool flag) {
    textShown_ = flag;
    if (textModel_) textModel_->SetDrawn(flag);
}

void VZarbesoView::SetText(const char* text) {
    std::strncpy(text_, text ? text : "", sizeof text_ - 1);
    RebuildGlyphs();
}

bool VZarbesoView::SetFont(std::uint32_t position) {
    if (!SetCurrentFont(position)) return false;
    RebuildGlyphs();
    return true;
}

void VZarbesoView::RebuildGlyphs() {
    FreeChars();
    if (!BuildTextCharacters(text_, flattenQuality_, &textChars_)) textChars_ = nullptr;
    UpdateText();
}

void VZarbesoView::UpdateText() {
    if (!alignedText_) return;
    alignedText_->Rebuild(textChars_, *curveData_, dragOutline_, opacity_ / 100.0f,
                          texture_ ? nullptr : sideColor_.data());
    if (!dragOutline_ && texture_) texture_->Apply(alignedText_->object);
}

void VZarbesoView::SetOpacity(float percent) {
    if (!std::isfinite(percent)) return;
    opacity_ = std::clamp(percent, 0.0f, 100.0f);
    UpdateText();
}

void VZarbesoView::SetDragOutline(bool flag) {
    dragOutline_ = flag;
    UpdateText();
    Refresh();
}

void VZarbesoView::SetFaceColor(std::uint16_t r, std::uint16_t g, std::uint16_t b) {
    // Colours replace a texture; the stored colours come back without one.
    texture_.reset();
    faceColor_ = {r, g, b};
    if (alignedText_) alignedText_->SetDiffuseColor(r / 65535.0f, g / 65535.0f, b / 65535.0f);
    UpdateText();
}

void VZarbesoView::SetSideColor(std::uint16_t r, std::uint16_t g, std::uint16_t b) {
    texture_.reset();
    sideColor_ = {r, g, b};
    UpdateText();
}

float VZarbesoView::SetLayout(TextLayoutValue which, float value, bool update, bool absolute) {
    const float shown = TextLayout::Set(*curveData_, which, value, absolute);
    std::int32_t whole = TextLayout::ShownWhole(which, TextLayout::Field(*curveData_, which));
    Broadcast(static_cast<std::int32_t>(TextLayout::Message(which)), &whole);
    if (update) UpdateText();
    return shown;
}

float VZarbesoView::GetLayout(TextLayoutValue which) const {
    return TextLayout::Get(*curveData_, which);
}

bool VZarbesoView::SetPath(std::int32_t index, std::int32_t slider1, std::int32_t slider2) {
    std::unique_ptr<VCurveAnalytical> path = MakeAnalyticPathWithSliders(index, slider1, slider2);
    if (!path) return false;
    DiscardPath();
    curve_ = std::move(path);
    pathIndex_ = index;
    curveData_->curve = curve_.get();
    MakePathModel();
    UpdateText();
    return true;
}

bool VZarbesoView::SetPathSlider(std::int32_t which, std::int32_t value) {
    auto* analytic = dynamic_cast<VCurveAnalytical*>(curve_.get());
    if (!analytic || !pathModel_ ||
        !ApplyPathSlider(*analytic, pathIndex_, which - 1, std::clamp(value, 0, 100)))
        return false;
    BuildPathGeometry(*curve_, *pathGroup_);
    UpdateText();
    return true;
}

bool VZarbesoView::SetBuiltInTexture(int id) {
    const bool made = !texture_;
    if (made) texture_ = std::make_unique<TextureImage>();
    if (!texture_->LoadFromResource(id)) {
        if (made) texture_.reset();
        return false;
    }
    UpdateText();
    return true;
}

bool VZarbesoView::SetTextureFile(std::string& path, std::string* error) {
    if (!texture_) texture_ = std::make_unique<TextureImage>();
    const bool ok = texture_->LoadFromFile(path, error);
    if (!ok) texture_.reset();
    UpdateText();
    return ok;
}
