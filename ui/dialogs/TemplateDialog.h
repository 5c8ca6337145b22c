// A modal dialog made from one template: its controls, its title from the
// string table, OK (id 1) and Cancel (id 2).
#pragma once

#include "ui/controls/DialogControls.h"

#include <QDialog>
#include <functional>

class TemplateDialog : public QDialog {
  public:
    TemplateDialog(int templateId, QWidget* parent);

    DialogControls& Controls() { return controls_; }
    // Checked before OK ends the dialog; false keeps it open.
    void SetOkCheck(std::function<bool()> check) { okCheck_ = std::move(check); }

    // Where a test looks in while the dialog runs.
    using Observer = void (*)(TemplateDialog* dialog);
    static void SetObserver(Observer observer);

    int exec() override;

  private:
    DialogControls controls_;
    std::function<bool()> okCheck_;
};
