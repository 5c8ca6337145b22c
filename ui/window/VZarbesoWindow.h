// The main window of a run: the document of the session bound to the window
// of template "ZARBESO", with its tool buttons, pages, view and buttons.
// Controls call the view's setters and end with ClearRender and Redraw; the
// view's broadcasts come back through Respond.
#pragma once

#include "host/WFilterWindow.h"
#include "ui/VZarbesoDocument.h"

#include <QPoint>
#include <QPointer>
#include <array>
#include <memory>
#include <string>
#include <vector>

class DialogControls;
class MainDialog;
class NumericControls;
class HelpWindow;
class QWidget;
class ViewWidget;
class TextPage;
class PathPage;
class SurfacePage;
class ScenePage;
class ViewRow;
class RenderProgressDialog;

// Whether the view holds the mouse: from a press until its release.
extern bool gMouseCaptured;

class VZarbesoWindow_Win : public VZarbesoDocument, public WFilterWindow {
  public:
    // Builds the window over the host's window `parentWindow` (0: none) and
    // runs the start-up. With `invocation` 0 it renders at once and asks the
    // loop to end with OK; with 1 it shows the splash while it starts.
    VZarbesoWindow_Win(intptr_t parentWindow, int16 invocation);
    ~VZarbesoWindow_Win() override;

    static WFilterWindow* Make(intptr_t parentWindow, int16 invocation);

    // ---- WFilterWindow ----
    QWidget* Widget() override;
    void OnAccelerator(int commandId) override;

    // ---- the document's operations ----
    void Redraw() override;
    void UpdateControls() override;
    void ReportTextureFailure(const std::string& path) override;
    void HearMessage(std::int32_t message, void* parameter) override;
    void SetTool(int number);
    bool HasPath();
    void ApplySwitches();
    void SwitchPage();

    // Unchecks every tool button and checks `id`.
    void SelectToolButton(int id);
    // A command of the window, by control id, as a click or a key gives it.
    void Command(int id);
    // A double click on a tool button.
    void ToolDoubleClicked(int id);

    // The one operation through which Numeric Controls applies a value.
    void ApplyNumericValue(int id, float value, bool redraw);
    // The camera fields of Numeric Controls, relative to the last angles
    // shown for roll and orbit.
    void ApplyCameraField(int id, float value);
    // Reads the orbit matrix into orbitX, orbitY and roll.
    void UpdateCameraAngles();
    // The text value of a Numeric Controls field (1109 to 1124).
    static TextLayoutValue LayoutOfField(int id);
    // The Numeric Controls field (1109 to 1116) whose value a broadcast of
    // the view reports, or 0.
    static int FieldOfMessage(std::int32_t message);

    // The switch of a check box under the view (1027 to 1031).
    static VSwitch SwitchOf(int id);
    void SetTooltipsActive(bool active);

    // The mouse in the view, with the tools' modifier bits.
    void MouseDown(QPoint at, std::uint16_t modifiers, short clicks);
    void MouseMove(QPoint at, std::uint16_t modifiers);
    void MouseUp(QPoint at, std::uint16_t modifiers);

    DialogControls& Controls() const { return *controls_; }
    QWidget* Window() const;
    ViewWidget* GetViewWidget() const { return viewWidget_; }
    NumericControls* GetNumericControls() const;
    PathPage& GetPathPage() const { return *pathPage_; }
    SurfacePage& GetSurfacePage() const { return *surfacePage_; }

    // ---- fields of the window ----
    int frameWidth = 515;
    int frameHeight = 324;
    bool polygonNotStar = true;
    bool fillingNumericControls = false;
    bool updatingFromScene = false;
    float orbitX = 0, orbitY = 0, roll = 0;

  protected:
    void AdjustViewSize(int width, int height, bool scaled) override;
    // The host hears the render's progress, and the window shows it; Escape
    // or the Stop button stops the render.
    bool RenderProgress(double done) override;

  private:
    void Start(int16 invocation);
    void MakeToolTips();
    void PlaceWindow();
    void FitWindowToImage();
    void OkFlow();
    void OptionsFlow();
    void PreviewFlow();
    void ViewSwitch(int id);
    void Nudge(int commandId);
    void DeleteKey();
    // The tools' modifier bits from the mouse's message.
    void SetToolModifiers(std::uint16_t modifiers);
    void OpenHelp();
    // Ends the run: invocation 0, and the loop ends with `code` once the
    // document is gone.
    void EndRun(int code);

    intptr_t parentWindow_;
    std::unique_ptr<MainDialog> dialog_;
    std::unique_ptr<DialogControls> controls_;
    ViewWidget* viewWidget_ = nullptr;
    std::unique_ptr<TextPage> textPage_;
    std::unique_ptr<PathPage> pathPage_;
    std::unique_ptr<SurfacePage> surfacePage_;
    std::unique_ptr<ScenePage> scenePage_;
    std::unique_ptr<ViewRow> viewRow_;
    QPointer<NumericControls> numericControls_;
    QPointer<HelpWindow> helpWindow_;
    bool ended_ = false;
    RenderProgressDialog* progress_ = nullptr; // while OK or Preview renders
};
