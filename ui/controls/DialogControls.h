// The widgets of one dialog template, made as children of one window, each
// at its place and under its id. Handlers reach a control by its id, and
// walk ranges of ids as the templates number them.
#pragma once

#include "resources/DialogTemplates.h"

#include <QPixmap>
#include <QRect>
#include <map>

class QAbstractButton;
class QComboBox;
class QFont;
class QLabel;
class QLineEdit;
class QTabWidget;
class QWidget;
class ColorButton;
class SpinArrows;

class DialogControls {
  public:
    // Makes every control of `dialog` inside `window`, which is given the
    // template's size and font.
    DialogControls(const plumet::DialogTemplate& dialog, QWidget* window);

    const plumet::DialogTemplate& Template() const { return dialog_; }
    QWidget* Window() const { return window_; }

    // The control `id`, or null.
    QWidget* Get(int id) const;
    QAbstractButton* Button(int id) const;
    QComboBox* Combo(int id) const;
    QLabel* Label(int id) const;
    QLineEdit* Edit(int id) const;
    QTabWidget* Tabs(int id) const;
    SpinArrows* Spin(int id) const;
    ColorButton* Color(int id) const;
    bool IsChecked(int id) const;
    void SetChecked(int id, bool checked);

    void Show(int id, bool show);
    // Shows or hides every control whose id lies in first..last.
    void ShowRange(int first, int last, bool show);
    // The ids of the template, in its order.
    std::vector<int> Ids() const;

    // The rectangle of a control of the template, in pixels.
    static QRect PixelRect(const plumet::ControlTemplate& control);

    static QSize PixelSize(const plumet::DialogTemplate& dialog);
    // The font the templates are laid out for.
    static QFont TemplateFont();

  private:
    QWidget* Make(const plumet::ControlTemplate& control);
    // The template's rectangle of a control, widened where its one line of
    // text needs it and its row has room.
    QRect FittedRect(const plumet::ControlTemplate& control, QWidget* widget) const;
    // The pixels from the control's left to what stands next on its right.
    int RoomRightOf(const plumet::ControlTemplate& control) const;

    const plumet::DialogTemplate& dialog_;
    QWidget* window_;
    std::map<int, QWidget*> controls_;
};

// A bitmap resource as a pixmap for a widget of `window`, drawn for its
// screen's scale, with the button face made transparent when asked.
QPixmap BitmapPixmap(int bitmapId, QWidget* window, bool faceTransparent);
