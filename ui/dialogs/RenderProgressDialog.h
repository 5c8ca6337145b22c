// The progress of a render started in the window: a bar with a Stop button
// that appears once the render takes a while, and Escape, which stops it at
// any time. While the render runs the window takes no other input, so that
// nothing changes the scene under it.
#pragma once

#include <QObject>

#include <memory>

class QProgressDialog;
class QWidget;

class RenderProgressDialog : public QObject {
  public:
    // `still` keeps what it shows until the render is done.
    RenderProgressDialog(QWidget* window, QWidget* still);
    ~RenderProgressDialog() override;

    // Shows how much is done, 0 to 1, and handles what came meanwhile;
    // false once the user asked to stop.
    bool Tell(double done);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* window_;
    QWidget* still_;
    std::unique_ptr<QProgressDialog> dialog_;
    bool stopped_ = false;
    bool windowWasActive_ = false;
};
