// The two naming dialogs: a name for a custom view (template 144) and for a
// custom path (template 147). `name` comes in as the proposal and goes out
// as the result; true when OK was chosen with a name that is not empty.
#pragma once

#include <string>

class QWidget;

bool AskCustomViewName(QWidget* window, std::string& name);
bool AskCustomPathName(QWidget* window, std::string& name);

// The longest name the dialogs take.
constexpr int kMaxCustomNameLength = 39;
