// Accelerator table 176: the keys of the main window that select tools,
// delete and nudge.
#pragma once

#include <cstddef>

namespace plumet {

enum AcceleratorModifier : unsigned { kAccelNone = 0, kAccelShift = 1, kAccelCtrl = 2 };

// Keys are the toolkit-neutral codes below: printable ASCII for letters, and
// the named keys for the rest.
enum AcceleratorKey : int {
    kKeyBackspace = 8,
    kKeyDelete = 0x7F,
    kKeyUp = 0x1001,
    kKeyDown,
    kKeyLeft,
    kKeyRight,
};

struct Accelerator {
    int id;
    int key;
    unsigned modifiers;
};

// The whole table, in order; letters appear in both cases.
const Accelerator* AcceleratorTable(std::size_t* count);

// The command id for a key with its modifiers, or 0 when the table has none.
int FindAccelerator(int key, unsigned modifiers);

} // namespace plumet
