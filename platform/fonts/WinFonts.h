#pragma once

// The font calls the text code makes, over fontconfig (which faces exist) and
// FreeType (their outlines). Only outline faces that the platform reads
// natively are offered here, TrueType and OpenType with TrueType or CFF
// outlines; Type 1 faces are the Type 1 module's affair.
//
// Units: a logical font as the enumeration delivers it has an em of 32
// pixels, so that outlines divided by 32 come out at one unit per em.

#include "platform/fonts/WinFontTypes.h"

#include <cstdint>

// Called once per family (no family name given; lfFaceName then holds the
// family name) or once per face of the named family (lfFaceName then holds
// the face's key); enumeration goes on while it answers non-zero.
using FONTENUMPROCA = int (*)(const ENUMLOGFONTA* font, const NEWTEXTMETRICA* metrics,
                              DWORD fontType, std::intptr_t data);

// An information context for reading outlines; the driver name is ignored.
HDC CreateICA(const char* driver, const char* device, const char* port, const void* mode);
bool DeleteDC(HDC context);

// A font object from a logical font; null for a null argument. The face is
// looked up when outlines are read, by lfFaceName.
HFONT CreateFontIndirectA(const LOGFONTA* font);
// Selects the font into the context and answers the font selected before
// (null for the context's initial font). A null font deselects.
HFONT SelectObject(HDC context, HFONT font);
bool DeleteObject(HFONT font);

// Enumerates faces, answers the last value of the callback (1 when it was
// never called). All faces offered have TRUETYPE_FONTTYPE.
int EnumFontFamiliesA(HDC context, const char* family, FONTENUMPROCA callback, std::intptr_t data);

// Outline of one character of the selected font. format must be GGO_NATIVE.
// With no buffer (or size 0) answers the size the outline needs, 0 for a
// character with no contours; with a buffer writes the outline and answers
// its size. GDI_ERROR for no font, a face that cannot be read, a character
// the face does not have, or a buffer too small; metrics are left untouched
// then. Outer contours always run clockwise with y upward (the TrueType
// direction), whatever the font file does.
DWORD GetGlyphOutlineA(HDC context, unsigned character, unsigned format, GLYPHMETRICS* metrics,
                       DWORD size, void* buffer, const MAT2* matrix);

// Converts 8-bit text (code page 0 and 1252: Windows Latin 1) to 16-bit code
// units. A length of -1 converts up to and including the terminating zero.
// Without an output buffer answers the number of units needed; 0 on failure.
int MultiByteToWideChar(unsigned codePage, DWORD flags, const char* text, int length, WCHAR16* wide,
                        int wideLength);

// Forgets the list of faces and closes every open font file, so that the next
// call looks at fontconfig again.
void ResetFontCatalogue();
