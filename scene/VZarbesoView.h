// The view of this application: the camera placements, the host's image
// behind the scene, the final picture, and the text with its path.
#pragma once

#include "curves/VCurve.h"
#include "curves/VCurveData.h"
#include "host/HostBinding.h"
#include "scene/VC3DView.h"
#include "text/TextCharacter.h"
#include "text/TextLayout.h"

#include <array>
#include <cstdint>
#include <memory>

class TextureImage;
class VAlignedText;

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
    // interactive), or shown in the view (interactive).
    void ShowRender(bool interactive, bool keep);
    void SetOffscreen(bool flag) override;
    void SetRenderShowing(bool flag);
    bool IsRenderShowing() const { return renderShowing_; }

    // ---- the text ----
    void SetupText(const char* text);
    void SetText(const char* text);
    const char* GetText() const { return text_; }
    bool SetFont(std::uint32_t position);
    void RebuildGlyphs();
    void UpdateText();
    void SetOpacity(float percent);
    float GetOpacity() const { return opacity_; }
    void SetDragOutline(bool flag);
    void SetFaceColor(std::uint16_t red, std::uint16_t green, std::uint16_t blue);
    void SetSideColor(std::uint16_t red, std::uint16_t green, std::uint16_t blue);
    // One of the eight layout values; see TextLayout. Answers the shown value.
    float SetLayout(TextLayoutValue which, float value, bool update, bool absolute);
    float GetLayout(TextLayoutValue which) const;
    // The analytic path 1 to 8 of the Path combo, with its slider values.
    bool SetPath(std::int32_t index, std::int32_t slider1, std::int32_t slider2);
    bool SetBuiltInTexture(int id);
    bool SetTextureFile(std::string& path, std::string* error = nullptr);
    const TextureImage* GetTexture() const { return texture_.get(); }

    VCurveData* GetCurveData() const { return curveData_.get(); }
    VCurve* GetCurve() const { return curve_.get(); }
    VAlignedText* GetAlignedText() const { return alignedText_.get(); }
    VZarbesoModel* GetTextModel() const { return textModel_; }
    VZarbesoModel* GetPathModel() const { return pathModel_; }
    const TextCharacter* GetTextChars() const { return textChars_; }

  private:
    void MakePathModel();
    void FreeChars();

    // Host binding and offscreen state.
    HostBinding binding_;
    int16 imageMode_ = plugInModeRGBColor;
    bool renderShowing_ = false;
    bool offscreenWanted_ = false;
    bool keepRender_ = false;

    // Camera placements the user kept: scale, orbit and pan of four slots.
    std::array<std::array<TQ3Matrix4x4, 3>, 4> customViews_;

    // Text state.
    TextCharacter* textChars_ = nullptr;
    std::unique_ptr<VCurve> curve_;
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
