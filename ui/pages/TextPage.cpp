#include "ui/pages/TextPage.h"

#include "text/FontList.h"

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>

namespace {
// Calls `onFocusOut` when the watched widget loses the focus.
class FocusOutFilter : public QObject {
  public:
    FocusOutFilter(QObject* parent, std::function<void()> onFocusOut)
        : QObject(parent), onFocusOut_(std::move(onFocusOut)) {}
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::FocusOut) onFocusOut_();
        return QObject::eventFilter(watched, event);
    }

  private:
    std::function<void()> onFocusOut_;
};
} // namespace

TextPage::~TextPage() {
    delete focusOutFilter_.data();
}

void TextPage::Init() {
    QLineEdit* text = Controls().Edit(1041);
    text->setMaxLength(w_.maxTextLength);
    // Each change is stored without a redraw; leaving the field draws.
    QObject::connect(text, &QLineEdit::textChanged, text,
                     [this](const QString& typed) { w_.SetText(typed.toLatin1().toStdString()); });
    focusOutFilter_ = new FocusOutFilter(text, [this] { Changed(); });
    text->installEventFilter(focusOutFilter_);

    QComboBox* fonts = Controls().Combo(1043);
    for (std::uint32_t i = 1; i <= GetFontList().GetCount(); ++i)
        if (const FontListEntry* e = FontListEntryAt(i))
            fonts->addItem(QString::fromStdString(e->name));
    fonts->setMaxVisibleItems(20);
    QObject::connect(fonts, &QComboBox::activated, fonts,
                     [this](int row) { w_.SelectFontRow(row); });
}

void TextPage::Fill() {
    QLineEdit* text = Controls().Edit(1041);
    const QString shown = QString::fromLatin1(w_.controls.text.c_str());
    if (text->text() != shown) {
        const QSignalBlocker block(text);
        text->setText(shown);
    }
    const QSignalBlocker block(Controls().Combo(1043));
    Controls().Combo(1043)->setCurrentIndex(w_.controls.fontRow);
}
