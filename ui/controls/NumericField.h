// A numeric field at work: a combo with an edit part and its arrows, bound
// to one value of the model. It checks what is typed, applies what passes,
// beeps at what does not, and rewrites itself from the model.
#pragma once

#include "resources/DialogTemplates.h"

#include <QObject>
#include <functional>

class DialogControls;
class QComboBox;
class SpinArrows;

class NumericField : public QObject {
  public:
    // Applies a value of the field `id` (the combo's id), with a redraw or
    // without.
    using Apply = std::function<void(int id, float value, bool redraw)>;
    // The model's value that the field shows.
    using ModelValue = std::function<int(int id)>;

    NumericField(DialogControls& controls, const plumet::NumericFieldSpec& spec, Apply apply,
                 ModelValue model);

    int Id() const { return spec_.comboId; }
    const plumet::NumericFieldSpec& Spec() const { return spec_; }
    QComboBox* Combo() const { return combo_; }

    // Writes a number into the field, with the caret behind it.
    void Show(int value);
    // Writes the model's value into the field.
    void Repair();
    // The entry as it stands, as when the field loses the focus.
    void Commit();
    // Steps as the arrows do.
    void Step(int delta);

    // Every beep of every field, for those who count them.
    static int BeepCount();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Entry(bool typing);
    void Beep();

    const plumet::NumericFieldSpec spec_;
    QComboBox* combo_;
    SpinArrows* spin_;
    Apply apply_;
    ModelValue model_;
};
