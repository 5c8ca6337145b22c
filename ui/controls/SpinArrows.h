// The pair of arrows beside a numeric field. It holds no value of its own:
// a press asks for one step up or down, and a held button repeats.
#pragma once

#include <QWidget>

class QTimer;

class SpinArrows : public QWidget {
    Q_OBJECT
  public:
    explicit SpinArrows(QWidget* parent = nullptr);

  signals:
    // +1 for the upper arrow, -1 for the lower one.
    void stepped(int delta);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    int pressed_ = 0;
    QTimer* repeat_;
};
