#include "scene/KTool.h"

#include "scene/WView.h"

bool KManipulator::Release(const MouseEvent& event) {
    if (!view) return false;
    bool redraw = false;
    DoRelease(event, redraw);
    return redraw;
}

KTool::KTool(std::unique_ptr<KManipulator> m, std::unique_ptr<KToolOption> o)
    : manipulator(std::move(m)), option(std::move(o)) {
    if (option) option->SetManipulator(manipulator.get());
}

KTool::~KTool() = default;

bool KTool::Activate(WView* view) {
    return manipulator ? manipulator->Activate(view) : true;
}

bool KTool::Deactivate(WView* view) {
    return manipulator ? manipulator->Deactivate(view) : true;
}

void KTool::Click(const MouseEvent& event, WView* view) {
    if (!manipulator) return;
    manipulator->Prepare(view);
    manipulator->view = view;
    manipulator->Press(event);
}

void KTool::Track(const MouseEvent& event, WView* view) {
    if (!manipulator || !manipulator->WantsDrag()) return;
    bool redraw = false;
    if (manipulator->view) manipulator->Drag(event, redraw);
    if (redraw && view) view->Refresh();
}

void KTool::Finish(const MouseEvent& event, WView* view) {
    if (!manipulator || !manipulator->WantsDrag()) return;
    if (manipulator->Release(event) && view) view->Refresh();
}

void KTool::UpdateCursor(void* argument) {
    if (manipulator) manipulator->UpdateCursor(argument);
}

void KTool::ShowOption() {
    if (option) option->Show();
}
