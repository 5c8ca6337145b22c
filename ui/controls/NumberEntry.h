// The checks of a number typed or spun into a numeric field, apart from any
// widget: what a text means, and what the field does with it.
#pragma once

#include <string>

enum class EntryAction {
    Apply,  // the value goes to the model
    Clear,  // the text is emptied, with a beep; nothing is applied
    Trim,   // the text becomes the number alone, with a beep; nothing applied
    Repair, // a beep, and the field shows the model's value again
    Stand,  // the text stays as it is: the start of a longer number
};

struct EntryResult {
    EntryAction action;
    int value = 0;
};

// Checks `text` for a field with the range low..high. `typing` is true while
// the user is still typing, false when the field loses the focus.
EntryResult CheckNumberEntry(const std::string& text, int low, int high, bool typing);

// After a value was applied while typing: true when the text shows more
// than the number ("007", " 5"), so that it is rewritten with a beep.
bool NeedsRewrite(const std::string& text, int value);

// One step of a spin: value + delta, past an end wrapped to the other end
// or held at the end.
int SpinStep(int value, int delta, int low, int high, bool wraps);
