// The about box and the splash: one picture without a caption, centred on
// the screen. The about box is modal and ends at a click or a key; the
// splash stands while the main window starts.
#pragma once

#include <QDialog>

class AboutBox : public QDialog {
  public:
    explicit AboutBox(QWidget* parent);

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

// The about box over `parent`; true when it ended as a click or a key does.
bool RunAboutBox(QWidget* parent);

// Shows the splash and paints it at once; the caller deletes it.
AboutBox* OpenSplash();
