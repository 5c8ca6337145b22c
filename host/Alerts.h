// Message boxes of the filter: alerts by string number and the about box.
#pragma once

#include <cstdint>
#include <string>

class QWidget;

// Shows alert `stringId` with the title "FlyWORD Alert". With a window
// session running it is a message box over `parent`; without one (a run with
// no window, or a host with no display) the text goes to standard error,
// since there is no screen to put it on.
void ShowAlert(int stringId, QWidget* parent);
// The same with a text made from that string and others.
void ShowAlertText(int stringId, const std::string& text, QWidget* parent);

// Shows the about box over the host's window `parentWindow` (0: none).
void ShowAboutBox(intptr_t parentWindow, bool useModuleResources);

// Where alerts and the about box go instead, while set (for tests and for
// hosts that collect messages). Pass null to restore the default.
using MessageSink = void (*)(int stringId, const std::string& text);
void SetMessageSink(MessageSink sink);

// The string number the about box reports to a message sink.
constexpr int kAboutBoxId = 18000;
