#include "scene/KToolHandler.h"

#include "foundation/Messages.h"
#include "scene/WView.h"

KToolHandler::KToolHandler(WView* view) : WAttachment(kMsgAnyMessage, true), view_(view) {
    if (view_) view_->AddAttachment(this, 0, false);
}

bool KToolHandler::SetTool(KTool* tool) {
    if (tool == tool_) return true;
    if (tool_ && !tool_->Deactivate(view_)) return false;
    tool_ = tool;
    if (tool_) toolReady_ = tool_->Activate(view_);
    return true;
}

void KToolHandler::SetModifier(std::uint16_t bit, std::int16_t keyState) {
    if (static_cast<std::uint16_t>(keyState) & 0xFF00u)
        modifiers_ |= bit;
    else
        modifiers_ &= static_cast<std::uint16_t>(~bit);
}

MouseEvent KToolHandler::Event(std::int16_t x, std::int16_t y) const {
    return MakeMouseEvent(x, y, modifiers_);
}

void KToolHandler::MouseDown(std::int16_t x, std::int16_t y) {
    if (!toolReady_ && tool_) toolReady_ = tool_->Activate(view_);
    if (toolReady_ && tool_) tool_->Click(Event(x, y), view_);
}

void KToolHandler::MouseMove(std::int16_t x, std::int16_t y) {
    if (toolReady_ && tool_) tool_->Track(Event(x, y), view_);
}

void KToolHandler::MouseUp(std::int16_t x, std::int16_t y) {
    if (toolReady_ && tool_) tool_->Finish(Event(x, y), view_);
}
