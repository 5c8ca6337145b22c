#include "ui/controls/DialogControls.h"

#include "platform/bitmaps/PlatformBitmap.h"
#include "resources/BuiltInBitmaps.h"
#include "resources/Pictures.h"
#include "resources/ToolBitmaps.h"
#include "ui/controls/ColorButton.h"
#include "ui/controls/SpinArrows.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QToolButton>
#include <QWindow>
#include <cmath>

using plumet::ControlKind;
using plumet::ControlTemplate;
using plumet::kEveryPage;

namespace {
qreal ScaleOf(QWidget* window) {
    return window ? window->devicePixelRatioF() : 1.0;
}

// Pixel art keeps its hard edges when the screen scales it up.
QImage PixelArt(const PlatformBitmap& b, bool faceTransparent, qreal scale) {
    QImage image(b.width, b.height, QImage::Format_ARGB32);
    for (int y = 0; y < b.height; ++y)
        for (int x = 0; x < b.width; ++x) {
            const std::uint32_t c = b.GetPixel(x, y);
            image.setPixel(x, y, faceTransparent && c == kButtonFace ? 0u : 0xFF000000u | c);
        }
    const int factor = std::max(1, int(std::lround(scale)));
    QImage scaled = image.scaled(b.width * factor, b.height * factor);
    scaled.setDevicePixelRatio(factor);
    return scaled;
}
} // namespace

QPixmap BitmapPixmap(int bitmapId, QWidget* window, bool faceTransparent) {
    PlatformBitmap bitmap;
    if (!LoadBitmapResource(bitmapId, &bitmap)) return {};
    return QPixmap::fromImage(PixelArt(bitmap, faceTransparent, ScaleOf(window)));
}

QFont DialogControls::TemplateFont() {
    QFont font("Liberation Sans");
    font.setPixelSize(11);
    return font;
}

QRect DialogControls::PixelRect(const ControlTemplate& c) {
    const int left = plumet::DluToPixelsX(c.x), top = plumet::DluToPixelsY(c.y);
    return QRect(left, top, plumet::DluToPixelsX(c.x + c.cx) - left,
                 plumet::DluToPixelsY(c.y + c.cy) - top);
}

QRect DialogControls::FittedRect(const ControlTemplate& c, QWidget* w) const {
    QRect r = PixelRect(c);
    const bool oneLine = c.kind == ControlKind::CheckBox || c.kind == ControlKind::Radio ||
                         (c.kind == ControlKind::Label && c.cy <= 14);
    if (!oneLine || !c.text) return r;
    // Where the system's font sets the text wider than the template allowed
    // for, the control takes the free space to its right; what still does
    // not fit is set a little narrower, rather than cut.
    const int wanted = w->sizeHint().width();
    r.setWidth(std::min(wanted, std::max(r.width(), RoomRightOf(c))));
    if (wanted > r.width()) {
        QFont font = w->font();
        const int text = QFontMetrics(font).horizontalAdvance(QString::fromUtf8(c.text));
        const int stretch = text > 0 ? 100 * (text - (wanted - r.width())) / text : 100;
        font.setStretch(std::max(70, stretch));
        w->setFont(font);
    }
    return r;
}

int DialogControls::RoomRightOf(const ControlTemplate& c) const {
    // A label ends where its field begins; another control where the next
    // control of its row begins, or its box ends.
    int right = dialog_.cx;
    for (std::size_t i = 0; i < dialog_.count; ++i) {
        const ControlTemplate& o = dialog_.controls[i];
        if (c.buddy) {
            if (o.id == c.buddy) right = o.x;
            continue;
        }
        const bool samePage = o.page == c.page || o.page == kEveryPage || c.page == kEveryPage;
        const bool sameRow = o.y < c.y + c.cy && c.y < o.y + o.cy;
        if (&o == &c || !samePage || !sameRow || o.kind == ControlKind::Placeholder) continue;
        if (o.x > c.x)
            right = std::min(right, o.x);
        else if (o.x + o.cx > c.x)
            right = std::min(right, o.x + o.cx);
    }
    return plumet::DluToPixelsX(right) - plumet::DluToPixelsX(c.x);
}

QSize DialogControls::PixelSize(const plumet::DialogTemplate& dialog) {
    return QSize(plumet::DluToPixelsX(dialog.cx), plumet::DluToPixelsY(dialog.cy));
}

DialogControls::DialogControls(const plumet::DialogTemplate& dialog, QWidget* window)
    : dialog_(dialog), window_(window) {
    window->setFont(TemplateFont());
    window->resize(PixelSize(dialog));
    std::map<QLabel*, int> buddies;
    for (std::size_t i = 0; i < dialog.count; ++i) {
        const ControlTemplate& c = dialog.controls[i];
        QWidget* w = Make(c);
        w->setGeometry(FittedRect(c, w));
        if (c.id) {
            w->setObjectName(QString::number(c.id));
            controls_[c.id] = w;
        }
        if (c.kind == ControlKind::Label && c.buddy) buddies[static_cast<QLabel*>(w)] = c.buddy;
    }
    // Each label names its field, for the keyboard and for assistive tools;
    // a button keeps its own text as its name, and the label describes it.
    for (auto [label, id] : buddies)
        if (QWidget* field = Get(id)) {
            label->setBuddy(field);
            auto* button = qobject_cast<QAbstractButton*>(field);
            if (button && !button->text().isEmpty())
                field->setAccessibleDescription(label->text());
            else if (field->accessibleName().isEmpty())
                field->setAccessibleName(label->text());
        }
}

QWidget* DialogControls::Make(const ControlTemplate& c) {
    const QString text = c.text ? QString::fromUtf8(c.text) : QString();
    switch (c.kind) {
    case ControlKind::TabControl: {
        auto* tabs = new QTabWidget(window_);
        tabs->setDocumentMode(false);
        return tabs;
    }
    case ControlKind::Picture: {
        auto* label = new QLabel(window_);
        const QRect r = PixelRect(c);
        const qreal scale = ScaleOf(window_);
        QPixmap pixmap;
        const QImage picture =
            LoadPicture(c.picture, int(r.width() * scale), int(r.height() * scale));
        if (!picture.isNull()) {
            pixmap = QPixmap::fromImage(picture);
            pixmap.setDevicePixelRatio(scale);
        } else {
            pixmap = BitmapPixmap(c.picture, window_, true);
        }
        label->setPixmap(pixmap);
        label->setAlignment(Qt::AlignCenter);
        return label;
    }
    case ControlKind::ToolButton: {
        auto* button = new QToolButton(window_);
        button->setCheckable(true);
        button->setIcon(QIcon(BitmapPixmap(c.picture, window_, true)));
        button->setIconSize(QSize(kToolBitmapWidth, kToolBitmapHeight));
        button->setFocusPolicy(Qt::StrongFocus);
        return button;
    }
    case ControlKind::Button:
    case ControlKind::DefaultButton: {
        auto* button = new QPushButton(text, window_);
        button->setAutoDefault(false);
        button->setDefault(c.kind == ControlKind::DefaultButton);
        return button;
    }
    case ControlKind::Label: {
        auto* label = new QLabel(text, window_);
        label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        label->setWordWrap(c.cy > 14);
        return label;
    }
    case ControlKind::Edit:
        return new QLineEdit(window_);
    case ControlKind::DropList:
        return new QComboBox(window_);
    case ControlKind::NumberCombo: {
        auto* combo = new QComboBox(window_);
        combo->setEditable(true);
        combo->setInsertPolicy(QComboBox::NoInsert);
        return combo;
    }
    case ControlKind::Spin:
        return new SpinArrows(window_);
    case ControlKind::CheckBox:
        return new QCheckBox(text, window_);
    case ControlKind::Radio:
        return new QRadioButton(text, window_);
    case ControlKind::GroupBox:
        return new QGroupBox(text, window_);
    case ControlKind::Frame: {
        auto* frame = new QFrame(window_);
        frame->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
        return frame;
    }
    case ControlKind::Placeholder: {
        auto* place = new QWidget(window_);
        place->hide();
        return place;
    }
    case ControlKind::ColorButton: {
        auto* button = new ColorButton(window_);
        button->setAutoDefault(false);
        return button;
    }
    case ControlKind::ListBox: {
        auto* list = new QListWidget(window_);
        list->setSelectionMode(QAbstractItemView::MultiSelection);
        return list;
    }
    }
    return new QWidget(window_);
}

QWidget* DialogControls::Get(int id) const {
    auto it = controls_.find(id);
    return it == controls_.end() ? nullptr : it->second;
}

QAbstractButton* DialogControls::Button(int id) const {
    return qobject_cast<QAbstractButton*>(Get(id));
}
QComboBox* DialogControls::Combo(int id) const {
    return qobject_cast<QComboBox*>(Get(id));
}
QLabel* DialogControls::Label(int id) const {
    return qobject_cast<QLabel*>(Get(id));
}
QLineEdit* DialogControls::Edit(int id) const {
    return qobject_cast<QLineEdit*>(Get(id));
}
QTabWidget* DialogControls::Tabs(int id) const {
    return qobject_cast<QTabWidget*>(Get(id));
}
SpinArrows* DialogControls::Spin(int id) const {
    return qobject_cast<SpinArrows*>(Get(id));
}
ColorButton* DialogControls::Color(int id) const {
    return dynamic_cast<ColorButton*>(Get(id));
}

bool DialogControls::IsChecked(int id) const {
    QAbstractButton* b = Button(id);
    return b && b->isChecked();
}

void DialogControls::SetChecked(int id, bool checked) {
    if (QAbstractButton* b = Button(id)) b->setChecked(checked);
}

void DialogControls::Show(int id, bool show) {
    if (QWidget* w = Get(id)) w->setVisible(show);
}

void DialogControls::ShowRange(int first, int last, bool show) {
    for (auto it = controls_.lower_bound(first); it != controls_.end() && it->first <= last; ++it)
        if (dialog_.Find(it->first)->kind != ControlKind::Placeholder) it->second->setVisible(show);
}

std::vector<int> DialogControls::Ids() const {
    std::vector<int> ids;
    for (std::size_t i = 0; i < dialog_.count; ++i)
        if (dialog_.controls[i].id) ids.push_back(dialog_.controls[i].id);
    return ids;
}
