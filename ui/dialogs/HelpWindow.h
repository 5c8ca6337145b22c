// The Help window: one tall picture in a window that scrolls both ways, can
// be sized between 200 by 200 and the picture's size, and stays open beside
// the main window.
#pragma once

#include <QScrollArea>

class HelpWindow : public QScrollArea {
  public:
    HelpWindow();

    // The largest and smallest outer sizes the window takes.
    QSize LargestSize() const;
    static constexpr int kSmallest = 200;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
};

// Opens the Help window, or brings the open one to the front.
HelpWindow* OpenHelp(HelpWindow* open);
