// Numeric Controls: the eight values of the text and the camera's place,
// angle, roll and orbit as numeric fields, on two tabs. It holds no model of
// its own: what it applies goes through the document, and the view's
// broadcasts keep its fields up to date while the tools drag.
#pragma once

#include <QDialog>
#include <map>
#include <memory>

class DialogControls;
class NumericField;
class VZarbesoWindow_Win;

class NumericControls : public QDialog {
  public:
    NumericControls(VZarbesoWindow_Win& window);
    ~NumericControls() override;

    enum Page { kTextPage = 0, kCameraPage = 1 };
    void SelectPage(int page);
    int CurrentPage() const;

    // Writes the view's value into the text field `id` (1109 to 1116), or
    // into all eight for -1; nothing while the document fills the fields.
    void FillTextField(int id);
    // Writes the camera's values into the Camera tab.
    void FillCameraPage();

    DialogControls& Controls() const { return *controls_; }
    NumericField* Field(int id) const;

    // The model's value that field `id` shows.
    static int ModelValue(VZarbesoWindow_Win& window, int id);

  protected:
    // Enter clicks the page's Reset All, which only commits a typed value
    // unless the button has the focus; Escape and the close box close.
    void closeEvent(QCloseEvent* event) override;

  private:
    void SwitchPage();
    void ResetText();
    void ResetCamera();

    VZarbesoWindow_Win& w_;
    std::unique_ptr<DialogControls> controls_;
    std::map<int, std::unique_ptr<NumericField>> fields_;
};

// Opens Numeric Controls over the main window, or brings the open one to
// the front on its current tab.
NumericControls* OpenNumericControls(VZarbesoWindow_Win& window, NumericControls* open);
