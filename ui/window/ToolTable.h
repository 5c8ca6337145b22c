// The tools of the window: which button and which key reach each, and the
// tool tip of each button.
#pragma once

#include <cstddef>

struct ToolEntry {
    int tool;      // the number that goes to SetTool
    int buttonId;  // its tool button
    int commandId; // its accelerator command, 0 for none
    int tipId;     // string of its tool tip, 0 for none
    int nameId;    // string that names the button for assistive tools
};

// All 18 tools with a button, in the order of the tool buttons' ids.
const ToolEntry* ToolTable(std::size_t* count);
const ToolEntry* ToolOfButton(int buttonId);
const ToolEntry* ToolOfNumber(int tool);
const ToolEntry* ToolOfCommand(int commandId);

// The tool buttons of every page and those of the Path page.
constexpr int kFirstToolButton = 1001, kLastToolButton = 1010;
constexpr int kFirstPathToolButton = 1063, kLastPathToolButton = 1070;
