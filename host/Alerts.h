// Message boxes of the filter: alerts by string number, the Yes/No question,
// and the about box.
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

// The answers of a question.
enum AlertAnswer : int { kAnswerYes = 6, kAnswerNo = 7, kAnswerCancel = 2 };

// Asks string `stringId` with Yes and No under the title "FlyWord Alert".
int AskYesNo(int stringId, QWidget* parent);
// Asks `text` with Yes, No and Cancel under the title "FlyWORD Alert";
// `stringId` names the question.
int AskYesNoCancel(const std::string& text, QWidget* parent, int stringId);

// Shows the about box over the host's window `parentWindow` (0: none).
void ShowAboutBox(intptr_t parentWindow, bool useModuleResources);
// The about box of the filter's own window, once the window code is there;
// until then a plain message box stands in.
using AboutBoxRunner = void (*)(intptr_t parentWindow);
void SetAboutBoxRunner(AboutBoxRunner runner);

// Where alerts and the about box go instead, while set (for tests and for
// hosts that collect messages). Pass null to restore the default.
using MessageSink = void (*)(int stringId, const std::string& text);
void SetMessageSink(MessageSink sink);
// Where questions go instead, while set; it gives the answer.
using QuestionSink = int (*)(int stringId, const std::string& text);
void SetQuestionSink(QuestionSink sink);

// The string number the about box reports to a message sink.
constexpr int kAboutBoxId = 18000;
// The title of the Yes/No question, which is not in the string table.
constexpr const char* kQuestionTitle = "FlyWord Alert";
