#pragma once

#include "platform/fonts/WinFontTypes.h"

// The 16-bit code unit of a byte of Windows code page 1252 (Latin 1 with
// typographic marks from 0x80 to 0x9F; the five unassigned bytes map to the
// control codes of the same value).
WCHAR16 WideFromCodePage1252(unsigned char byte);

// The byte of code page 1252 for a 16-bit code unit; false, and the byte left
// alone, for a unit the code page cannot write. For turning typed text into
// the 8-bit text the outline readers take.
bool CodePage1252FromWide(WCHAR16 unit, unsigned char* byte);
