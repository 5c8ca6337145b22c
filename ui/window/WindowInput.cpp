// The keys of the main window's accelerator table, and the mouse in the
// view, as they reach the tools.
#include "ui/window/VZarbesoWindow.h"

#include "host/ModuleState.h"
#include "scene/MouseEvent.h"
#include "ui/dialogs/HelpWindow.h"
#include "ui/dialogs/NumericControls.h"
#include "ui/window/MainDialog.h"
#include "ui/window/ToolTable.h"
#include "ui/window/ViewWidget.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTabBar>
#include <algorithm>
#include <vector>

// Whether the view holds the mouse: from a press until its release, and
// not after a double click.
bool gMouseCaptured = false;

namespace {
using TL = TextLayoutValue;

// The window's point as the view's, held to 16 bits.
std::int16_t Coordinate(int v) {
    return static_cast<std::int16_t>(std::clamp(v, -32768, 32767));
}

// The arrow keys of the text tools: which value moves, by how much, and a
// second value that moves with it.
struct NudgeEntry {
    int tool;
    int command;
    TL which;
    float delta;
    bool both; // width and height together
};
constexpr NudgeEntry kNudges[] = {
    {8, 2011, TL::kSlide, 1, false},    {8, 2018, TL::kSlide, 1, false},
    {8, 2012, TL::kSlide, -1, false},   {8, 2017, TL::kSlide, -1, false},
    {8, 2015, TL::kSpacing, 1, false},  {8, 2022, TL::kSpacing, 1, false},
    {8, 2016, TL::kSpacing, -1, false}, {8, 2021, TL::kSpacing, -1, false},
    {9, 2011, TL::kHeight, 1, false},   {9, 2012, TL::kHeight, -1, false},
    {9, 2018, TL::kWidth, 1, false},    {9, 2017, TL::kWidth, -1, false},
    {9, 2013, TL::kWidth, 1, true},     {9, 2020, TL::kWidth, 1, true},
    {9, 2014, TL::kWidth, -1, true},    {9, 2019, TL::kWidth, -1, true},
    {10, 2011, TL::kDepth, 1, false},   {10, 2018, TL::kDepth, 1, false},
    {10, 2012, TL::kDepth, -1, false},  {10, 2017, TL::kDepth, -1, false},
    {11, 2011, TL::kRevolve, 5, false}, {11, 2012, TL::kRevolve, -5, false},
    {11, 2018, TL::kRotate, 5, false},  {11, 2017, TL::kRotate, -5, false},
    {11, 2022, TL::kTilt, 5, false},    {11, 2021, TL::kTilt, -5, false},
};

// A key that belongs in the focused control, which then keeps the keys of
// the table: a letter typed into a text field, a letter that picks a row of
// a list or a combo, the arrows that move among the pages of the tabs.
// A window can get keys before it is made the active one (a new window that
// the window manager did not activate, or one under the pointer with no
// window manager); the application then has no focus widget, and the keys go
// to the control that has the window's own focus.
bool FocusWantsChars(QWidget* window) {
    QWidget* focus = QApplication::focusWidget();
    if (!focus && window) focus = window->focusWidget();
    return qobject_cast<QLineEdit*>(focus) || qobject_cast<QAbstractSpinBox*>(focus) ||
           qobject_cast<QAbstractItemView*>(focus) || qobject_cast<QComboBox*>(focus) ||
           qobject_cast<QTabBar*>(focus);
}
} // namespace

// ---- keys ----------------------------------------------------------------------

void VZarbesoWindow_Win::OnAccelerator(int commandId) {
    gAcceleratorHandled = 0;
    if (ended_ || FocusWantsChars(dialog_.get())) return;
    if (const ToolEntry* tool = ToolOfCommand(commandId)) {
        SelectToolButton(tool->buttonId);
        SetTool(tool->tool);
        gAcceleratorHandled = 1;
    } else if (commandId == 2010) {
        DeleteKey();
    } else if (commandId >= 2011 && commandId <= 2022) {
        Nudge(commandId);
    }
}

void VZarbesoWindow_Win::DeleteKey() {
    // With nothing to delete the key goes on to the control that has the
    // focus.
    if (!DeleteSelection(QApplication::keyboardModifiers() & Qt::ControlModifier)) return;
    gAcceleratorHandled = 1;
    ClearRender(false);
    Redraw();
}

void VZarbesoWindow_Win::Nudge(int commandId) {
    VZarbesoView& view = *GetView();
    for (const NudgeEntry& n : kNudges) {
        if (n.tool != currentTool || n.command != commandId) continue;
        auto step = [&view](TL which, float delta) {
            const float shown = view.GetLayout(which);
            view.SetLayout(which, shown + delta, true, true);
        };
        step(n.which, n.delta);
        if (n.both) step(TL::kHeight, n.delta);
        ClearRender(false);
        Redraw();
        gAcceleratorHandled = 1;
        return;
    }
}

// ---- the mouse -----------------------------------------------------------------

void VZarbesoWindow_Win::MouseDown(QPoint at, std::uint16_t modifiers, short clicks) {
    VZarbesoView& view = *GetView();
    view.SetClickCount(clicks);
    // A press ends a finished render that stands in the view.
    view.AboutToTrack(nullptr);
    SetCurrent3DView(&view);
    const bool twice = clicks > 1;
    // While a double click runs its tool, the other windows wait.
    const std::vector<QWidget*> waiting = {dialog_.get(), numericControls_.data(),
                                           helpWindow_.data()};
    if (twice)
        for (QWidget* w : waiting)
            if (w) w->setEnabled(false);
    gMouseCaptured = true;
    view.ResetModifiers();
    SetToolModifiers(modifiers);
    view.KToolHandler::MouseDown(Coordinate(at.x()), Coordinate(at.y()));
    if (twice) {
        gMouseCaptured = false;
        for (QWidget* w : waiting)
            if (w) w->setEnabled(true);
    }
    viewWidget_->repaint();
}

void VZarbesoWindow_Win::MouseMove(QPoint at, std::uint16_t modifiers) {
    if (!gMouseCaptured) return;
    SetToolModifiers(modifiers);
    GetView()->KToolHandler::MouseMove(Coordinate(at.x()), Coordinate(at.y()));
    viewWidget_->repaint();
}

void VZarbesoWindow_Win::MouseUp(QPoint at, std::uint16_t modifiers) {
    if (!gMouseCaptured) return;
    gMouseCaptured = false;
    SetToolModifiers(modifiers);
    GetView()->KToolHandler::MouseUp(Coordinate(at.x()), Coordinate(at.y()));
    viewWidget_->repaint();
}

void VZarbesoWindow_Win::SetToolModifiers(std::uint16_t modifiers) {
    // A key that is down reports its high bit.
    for (std::uint16_t bit : {kModCtrl, kModShift, kModAlt})
        GetView()->SetModifier(bit, (modifiers & bit) ? std::int16_t(-0x8000) : std::int16_t(0));
}
