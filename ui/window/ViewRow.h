// The row under the view: the View combo with the standard and the custom
// views, and the five switches Image, Text, Path, Lights and Grid.
#pragma once

#include <QObject>

class VZarbesoWindow_Win;
class DialogControls;

class ViewRow : public QObject {
  public:
    explicit ViewRow(VZarbesoWindow_Win& window);
    void Init();
    // Shows the document's view row and switches.
    void Fill();

    // The flow of a row of the View combo.
    void ViewSelected(int row);

  protected:
    // The row that reads "Custom View" is a separator while the list is
    // open.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void SetView();
    DialogControls& Controls() const;

    VZarbesoWindow_Win& w_;
};
