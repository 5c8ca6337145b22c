// Where the view's window sends the mouse: the handler turns a press, a
// move and a release into mouse events for the current tool. The window
// sends moves and the release only while the button it saw go down is
// held (it has the mouse captured), and reports the modifier keys before
// each call.
#pragma once

#include "foundation/WAttachment.h"
#include "scene/KTool.h"

#include <cstdint>

class KToolHandler : public WAttachment {
  public:
    // Joins the view's attachments, not owned by it.
    explicit KToolHandler(WView* view);

    // Makes `tool` the current tool. The same tool changes nothing; the
    // present tool may refuse to go (false). The new tool's answer to
    // Activate says whether it is ready.
    bool SetTool(KTool* tool);
    KTool* GetTool() const { return tool_; }

    // Clears the modifiers; the window calls it at each press.
    void ResetModifiers() { modifiers_ = 0; }
    // Sets `bit` (kModCtrl, kModShift, kModAlt) when the key state's high
    // byte is not zero, as a key that is down reports it, and clears it
    // otherwise.
    void SetModifier(std::uint16_t bit, std::int16_t keyState);
    std::uint16_t GetModifiers() const { return modifiers_; }

    // Window coordinates of the view.
    void MouseDown(std::int16_t x, std::int16_t y);
    void MouseMove(std::int16_t x, std::int16_t y);
    void MouseUp(std::int16_t x, std::int16_t y);

  private:
    MouseEvent Event(std::int16_t x, std::int16_t y) const;

    KTool* tool_ = nullptr;
    WView* view_;
    bool toolReady_ = false;
    std::uint16_t modifiers_ = 0;
};
