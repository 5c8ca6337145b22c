// The module's dialog templates: every window of the filter as a table of
// controls with their ids, kinds, places and texts. Places and sizes are in
// dialog units of the templates' font (MS Sans Serif 8), whose base units
// are 6 by 13 pixels: a dialog unit is 6/4 of a pixel across and 13/8 down.
#pragma once

#include <cstddef>

namespace plumet {

enum class ControlKind {
    TabControl,
    Picture,    // a bitmap, `picture`
    ToolButton, // a check button with the bitmap `picture`
    Button,     // a push button
    DefaultButton,
    Label, // static text; `buddy` names the field it labels
    Edit,
    DropList,    // a combo that offers only its rows
    NumberCombo, // a combo with an edit part; see NumericFieldSpec
    Spin,        // the arrows beside a NumberCombo
    CheckBox,
    Radio,
    GroupBox,
    Frame,       // an etched frame
    Placeholder, // hidden; gives a rectangle
    ColorButton, // a button that shows a colour
    ListBox,     // with multiple selection
};

// Where a control stands: on every page, or on one page of its dialog's tab
// control.
constexpr int kEveryPage = -1;

struct ControlTemplate {
    int id; // 0 for a static text that needs no id
    ControlKind kind;
    int x, y, cx, cy; // dialog units
    const char* text; // null for none
    int page = kEveryPage;
    int picture = 0; // bitmap id of a picture or tool button
    int buddy = 0;   // the field a label names
};

struct DialogTemplate {
    int id;
    const char* name;
    int cx, cy;  // dialog units
    int titleId; // string id of the title, 0 for none
    const ControlTemplate* controls;
    std::size_t count;

    const ControlTemplate* Find(int controlId) const;
};

enum DialogId : int {
    kDialogMain = 1, // template "ZARBESO"
    kDialogCustomView = 144,
    kDialogNumericControls = 146,
    kDialogCustomPath = 147,
    kDialogPolygonOptions = 148,
    kDialogDeletePaths = 149,
    kDialogOptions = 154,
    kDialogHelp = 155,
    kDialogAbout = 156,
};

// The template `id`, or null.
const DialogTemplate* FindDialogTemplate(int id);

// A numeric field: a NumberCombo with its Spin, the menu of its list, the
// row shown first, its range and whether the spin wraps at the ends.
struct NumericFieldSpec {
    int comboId;
    int spinId;
    int listMenu;
    int firstRow;
    int low, high;
    bool wraps;
};

// The field whose combo or spin is `id`, or null.
const NumericFieldSpec* FindNumericField(int id);

// Dialog units to pixels, rounded to the nearest as the platform does.
constexpr int DluToPixelsX(int x) {
    return (x * 6 + (x >= 0 ? 2 : -2)) / 4;
}
constexpr int DluToPixelsY(int y) {
    return (y * 13 + (y >= 0 ? 4 : -4)) / 8;
}

} // namespace plumet
