// A tool of the view: the object that holds the logic of one gesture (the
// manipulator) and the tool that drives it through a press, any number of
// drags and a release.
#pragma once

#include "scene/MouseEvent.h"

#include <memory>

class WView;
class KManipulator;

// A cursor resource of a tool. The view shows the arrow in every tool, so
// a cursor keeps nothing.
class KCursor {
  public:
    explicit KCursor(int /*resourceId*/ = 0) {}
    virtual ~KCursor() = default;
    void Show() {}
};

// Settings of a tool shown beside the view; no tool of the system has one.
class KToolOption {
  public:
    virtual ~KToolOption() = default;
    virtual void SetManipulator(KManipulator* /*manipulator*/) {}
    virtual void Show() {}
    virtual void Hide() {}
    virtual void Update() {}
    virtual void Enable(bool /*flag*/) {}
    virtual void Read() {}
    virtual void Write() {}
    virtual void Reset() {}
};

class KManipulator {
  public:
    KManipulator() = default;
    KManipulator(const KManipulator&) = delete;
    KManipulator& operator=(const KManipulator&) = delete;
    virtual ~KManipulator() = default;

    // The end of a gesture: DoRelease, if a press ever gave this
    // manipulator a view. Answers whether the view must be drawn.
    virtual bool Release(const MouseEvent& event);
    // The tool was chosen; false means it is not ready yet.
    virtual bool Activate(WView* /*view*/) { return true; }
    // Another tool is wanted; false keeps this one.
    virtual bool Deactivate(WView* /*view*/) { return true; }
    // One step of the gesture; sets `redraw` when the view must be drawn.
    virtual void Drag(const MouseEvent& /*event*/, bool& /*redraw*/) {}
    virtual bool WantsDrag() { return true; }
    // Before each press.
    virtual void Prepare(WView* /*view*/) {}
    virtual void UpdateCursor(void* /*argument*/) {}
    virtual void Press(const MouseEvent& event) = 0;
    // By default one last step.
    virtual void DoRelease(const MouseEvent& event, bool& redraw) { Drag(event, redraw); }

    // The view of the gesture under way; null before the first press.
    WView* view = nullptr;
};

class KTool {
  public:
    // Owns both; a tool without a manipulator does nothing.
    explicit KTool(std::unique_ptr<KManipulator> manipulator,
                   std::unique_ptr<KToolOption> option = nullptr);
    virtual ~KTool();
    virtual void Idle() {}
    // The manipulator's answer, or true without one.
    virtual bool Activate(WView* view);
    virtual bool Deactivate(WView* view);

    // A press: Prepare, then Press.
    void Click(const MouseEvent& event, WView* view);
    // A move while pressed: one Drag, and a frame if it asked for one.
    void Track(const MouseEvent& event, WView* view);
    // The release, and a frame if it asked for one.
    void Finish(const MouseEvent& event, WView* view);
    void UpdateCursor(void* argument);
    void ShowOption();

    KManipulator* GetManipulator() const { return manipulator.get(); }

    std::unique_ptr<KManipulator> manipulator;
    std::unique_ptr<KToolOption> option;
};
