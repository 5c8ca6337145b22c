// The Options dialog: the size of the light icons, the tool tips, and Reset
// to the defaults of a first start.
#pragma once

#include <functional>

class QWidget;

// `size` is 2, 3 or 4; both values go in and come out. `reset` runs at once
// when Reset is chosen. Answers true whichever button ended the dialog; the
// values stand as they were when it opened if it ended with Cancel.
bool AskOptions(QWidget* window, bool& showTooltips, int& size, const std::function<void()>& reset);
