// The view of this application: the camera placements, the host's image
// behind the scene, the final picture, and the text with its path.
#pragma once

#include "curves/VCurve.h"
#include "curves/VCurveData.h"
#include "foundation/KList.h"
#include "host/HostBinding.h"
#include "scene/VC3DView.h"
#include "text/TextCharacter.h"
#include "text/TextLayout.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

class TextureImage;
class VAlignedText;
class VCBezierCurveModel;
class VCustomPathData;

class VZarbesoView : public VC3DView {
  public:
    // The view of `width` by `height` pixels, with its scene and text.
    VZarbesoView(int width = 515, int height = 324);
    ~VZarbesoView() override;

    // ---- frames ----
    void Draw(int argument) override;
    void Render() override;
    void ShowBack() override { ShowOffscreen(); }
    void PlaceCamera() override;
    void CreateTools() override;
    // Before a press in the view: a finished render that stands in the view
    // gives way to the scene.
    void AboutToTrack(void* argument);
    // Draws again when a render stands in the view that was not to be kept;
    // forgets the wish to keep it in any case.
    void RefreshUnlessKept();

    // ---- camera ----
    enum StandardView { kHome = 1, kFront, kTop, kBottom, kLeftSide, kRightSide, kCustom };
    void SetFieldOfView(float value, bool absolute, bool notify);
    float GetFieldOfView() const;
    void SetStandardView(int which, int customIndex, bool redraw);
    void SaveCustomView(int slot);
    void DeleteCustomView(int slot);
    // A new size; with keepCentre the view moves so that its centre stays.
    void Resize(int width, int height, int oldWidth, int oldHeight, bool keepCentre);

    // ---- the host's image ----
    void SetHostImage(void* inData, int32 inRowBytes, void* outData, int32 outRowBytes, int16 width,
                      int16 height, int16 planes, int16 alphaPlane, uint8 protectedTransparency,
                      int16 imageMode);
    const HostBinding& GetHostBinding() const { return binding_; }
    void CompositeToHost(bool useProtectedBlend);
    // Composites and has the host show the result on the view's surface.
    void ShowOffscreen();
    // A render is ready: drawn into the front world and composited (not
    // interactive), or shown in the view (interactive). A picture larger
    // than a band is drawn and composited a band of rows at a time, so that
    // the world the size of the image is never drawn into. False when the
    // renderer was stopped: the output is then as it was, and no render
    // stands in the view.
    bool ShowRender(bool interactive, bool keep);
    // Told during each render how much of it is done, 0 to 1; answers false
    // to stop it. Empty: nothing is told.
    void SetRenderProgress(std::function<bool(double done)> progress);
    // The renderer's word on the band it draws: current of completed.
    bool TellRenderProgress(TQ3Uns32 current, TQ3Uns32 completed);
    // Pixels a band of the final render holds at most: 16 M (64 MB).
    void SetBandPixels(std::int64_t pixels) { bandPixels_ = std::max<std::int64_t>(pixels, 1); }
    void SetOffscreen(bool flag) override;
    // Whether frames are to go offscreen, as the Image box says, also while
    // a render is showing.
    bool IsOffscreenWanted() const { return offscreenWanted_; }
    void SetRenderShowing(bool flag);
    bool IsRenderShowing() const { return renderShowing_; }

    // ---- the text ----
    // The text and its model; the Line becomes its path unless one was set.
    void SetupText(const char* text);
    void SetText(const char* text);
    const char* GetText() const { return text_; }
    bool SetFont(std::uint32_t position);
    void RebuildGlyphs();
    void UpdateText();
    void SetOpacity(float percent);
    float GetOpacity() const { return opacity_; }
    void SetDragOutline(bool flag);
    bool GetDragOutline() const { return dragOutline_; }
    void SetFaceColor(std::uint16_t red, std::uint16_t green, std::uint16_t blue);
    void SetSideColor(std::uint16_t red, std::uint16_t green, std::uint16_t blue);
    const std::array<std::uint16_t, 3>& GetFaceColor() const { return faceColor_; }
    const std::array<std::uint16_t, 3>& GetSideColor() const { return sideColor_; }
    // One of the eight layout values; see TextLayout. Answers the shown value.
    float SetLayout(TextLayoutValue which, float value, bool update, bool absolute);
    float GetLayout(TextLayoutValue which) const;
    // The analytic path 1 to 8 of the Path combo, with its slider values.
    bool SetPath(std::int32_t index, std::int32_t slider1, std::int32_t slider2);
    // One slider value (which 1 or 2, 0 to 100) of the current analytic
    // path; false when the path has no such value.
    bool SetPathSlider(std::int32_t which, std::int32_t value);
    bool SetBuiltInTexture(int id);
    bool SetTextureFile(std::string& path, std::string* error = nullptr);
    const TextureImage* GetTexture() const { return texture_.get(); }

    // ---- custom paths ----
    // With a record: appends a copy of it to the session's list, under
    // `name` if one is given. Without one: captures the current path (the
    // curve of a curve model, or else a straight line) into record `index`
    // (from 1), overwriting its curve, or, one past the last, into a new
    // record under `name`. False when nothing was stored.
    bool StoreCustomPath(std::int32_t index, const char* name,
                         const VCustomPathData* record = nullptr);
    // Reopens record `index` (from 1) as the current path, in the model its
    // record asks for, with its stored start frame. False for a record whose
    // curve does not hold; the path is then unchanged.
    bool SelectCustomPath(std::int32_t index, const char* name);
    // Turns the current analytic path into a custom one: a cubic curve
    // through 20 samples of it, in Bezier form. False, with nothing changed,
    // when the path is not analytic or the curve cannot be made.
    bool ConvertToCustomPath();
    // A freshly drawn curve becomes the current path; letters stand in the
    // drawing plane (the XY plane, or the plane that faces the camera) when
    // the curve starts in it.
    void SetCurvePath(VZarbesoModel* model, VCurve* path);
    void SetCurvePathWithFrame(VZarbesoModel* model, VCurve* path, const KVector3D& tangent,
                               const KVector3D& normal);
    bool DeleteCustomPath(std::int32_t index);
    std::int32_t GetCustomPathCount() const { return std::int32_t(customPaths_.GetCount()); }
    // Index from 1; null for another.
    const VCustomPathData* GetCustomPath(std::int32_t index) const;
    bool GetCustomPathName(std::int32_t index, std::string& name) const;
    // Completes the stem to "stem n", with the first n from 1 that no
    // record has as its name; answers n.
    std::int32_t MakeUniqueName(const char* stem, std::string& name) const;
    // Drops the current path: the text has none to follow until the next.
    void DropPath();
    bool HasPath() const { return curveData_ && curveData_->curve; }
    // Whether the current path belongs to a curve model.
    bool HasCurveModel() const;

    // ---- editing custom paths ----
    // Makes tool `index` current. While a tool that edits a path's points
    // (13, 14, 19, 20) is current, the path shows its anchors.
    bool SetTool(int index) override;
    using VC3DView::SetTool;
    // An edit of the current path begins: the selection empties and the
    // path shows its anchors. The end of an edit hides them.
    void BeginCurveEdit();
    void EndCurveEdit();
    // The Delete key: with a tool that edits points current, the selected
    // anchor of the path goes and the text follows the path again. False
    // when the key is not for the path (it is then for the lights).
    bool DeleteSelectedPoint();
    // The model of the current path when it is a chain of Bezier pieces.
    VCBezierCurveModel* GetBezierModel() const;

    // ---- what is shown ----
    void ShowPath(bool flag);
    bool IsPathShown() const { return pathShown_; }
    void ShowText(bool flag);
    bool IsTextShown() const { return textShown_; }

    VCurveData* GetCurveData() const { return curveData_.get(); }
    // The current path, null when there is none.
    VCurve* GetCurve() const { return curveData_ ? curveData_->curve : nullptr; }
    VAlignedText* GetAlignedText() const { return alignedText_.get(); }
    VZarbesoModel* GetTextModel() const { return textModel_; }
    VZarbesoModel* GetPathModel() const { return pathModel_; }
    const TextCharacter* GetTextChars() const { return textChars_; }

  private:
    void MakePathModel();
    // Whether the current tool edits a path's points, and the path's
    // anchors shown or hidden by that.
    bool EditsPoints() const;
    // The direction from the point of interest to the eye, in the scene.
    KVector3D FacingDirection() const;
    void ShowCurveControls();
    // Deletes the present path and its model, without a new layout.
    void DiscardPath();
    void FreeChars();
    // The final picture into the host's output; false when stopped.
    bool DrawToHost();
    bool DrawBandsToHost();
    // Composites rows of a band world into the host's output at row top.
    void CompositeBand(const KGWorld& band, int top, int rows);
    bool LastPassStopped() const { return submitDraw.GetStatus() == kQ3ViewStatusCancelled; }

    std::function<bool(double)> renderProgress_;
    int bandTop_ = 0, bandRows_ = 0; // the rows the renderer draws now
    std::int64_t bandPixels_ = std::int64_t(1) << 24;
    // False after a picture drawn in bands: the front world does not hold it,
    // and compositing the world would wipe it from the output.
    bool worldHoldsPicture_ = true;

    // Host binding and offscreen state.
    HostBinding binding_;
    int16 imageMode_ = plugInModeRGBColor;
    bool renderShowing_ = false;
    bool offscreenWanted_ = false;
    bool keepRender_ = false;

    // Camera placements the user kept: scale, orbit and pan of four slots.
    std::array<std::array<TQ3Matrix4x4, 3>, 4> customViews_;

    // Text state. An analytic path is owned here; a custom path belongs to
    // its curve model.
    TextCharacter* textChars_ = nullptr;
    std::unique_ptr<VCurve> curve_;
    std::int32_t pathIndex_ = 0; // the analytic path's number, 0 for a custom one
    KList customPaths_;          // of VCustomPathData: the session's custom paths
    bool pathShown_ = true;
    bool textShown_ = true;
    std::unique_ptr<VCurveData> curveData_;
    std::unique_ptr<VAlignedText> alignedText_;
    std::array<std::uint16_t, 3> faceColor_ = {0, 0x6666, 0xFFFF};
    std::array<std::uint16_t, 3> sideColor_ = {0, 0, 0x8888};
    VZarbesoModel* pathModel_ = nullptr;
    std::unique_ptr<DAttributeDisplayGroup> pathGroup_;
    float opacity_ = 100.0f;
    char text_[256] = {};
    bool dragOutline_ = false;
    int flattenQuality_ = 1;
    VZarbesoModel* textModel_ = nullptr;
    std::unique_ptr<TextureImage> texture_;
};
