// Page 1, Path: the path combo, the two values of an analytic path with
// their labels, "Convert..." and the tools of a custom path.
#pragma once

#include "ui/pages/WindowPage.h"

#include <memory>

class NumericField;

class PathPage : public WindowPage {
  public:
    explicit PathPage(VZarbesoWindow_Win& window);
    ~PathPage() override;
    void Init() override;
    void Fill() override;

    // Shows the controls that fit the row of the Path combo.
    void ShowPathControls();
    // The flow of a row of the Path combo.
    void PathSelected(int row);
    // "Convert...": the analytic path becomes a custom one.
    void Convert();

  private:
    // Asks for the name of a new custom path; false when the user gave up.
    bool AskNewPathName(std::string& name);
    void NewPath();
    void DeletePaths();

    std::unique_ptr<NumericField> first_, second_;
};
