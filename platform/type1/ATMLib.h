#pragma once

// The Type 1 font service: a module loaded at run time that lists the Type 1
// faces of the machine and delivers their outlines through callbacks. The
// caller finds each function by its name; the typedefs below are the types
// to cast the found addresses to.

#include "platform/fonts/WinFontTypes.h"

#include <cstdint>

extern "C" {

// 16.16 fixed point.
struct ATMFixedPoint {
    std::int32_t x;
    std::int32_t y;
};

// x' = a x + c y + tx, y' = b x + d y + ty, all 16.16; x and y in pixels of
// the selected font's em.
struct ATMFixedMatrix {
    std::int32_t a;
    std::int32_t b;
    std::int32_t c;
    std::int32_t d;
    std::int32_t tx;
    std::int32_t ty;
};

// Status codes. Every function other than ATMProperlyLoaded and ATMFinish
// answers one of them.
enum : std::int32_t {
    ATM_NOERR = 0,
    ATM_INVALIDFONT = -2,  // no face is selected, or it cannot be read
    ATM_NOCHAR = -3,       // the face has no glyph for the character
    ATM_CANCELED = -4,     // a callback answered 0
    ATM_BADPARAMETER = -5, // a null argument
    ATM_NOTSTARTED = -8,   // the service is not running
    ATM_ENUMFAILED = -224, // the faces could not be listed
};

// Style word bits of the enumeration.
enum : std::uint16_t {
    ATM_TYPE1_FACE = 0x100,
    ATM_MM_INSTANCE = 0x400,
};

// Each callback answers non-zero to go on.
typedef int (*ATMMoveToProc)(const ATMFixedPoint* point, void* data);
typedef int (*ATMLineToProc)(const ATMFixedPoint* point, void* data);
// end is null when the curve closes the contour on its start point.
typedef int (*ATMCurveToProc)(const ATMFixedPoint* control1, const ATMFixedPoint* control2,
                              const ATMFixedPoint* end, void* data);
typedef int (*ATMClosePathProc)(void* data);
// Called once per face: its logical font (lfFaceName is the face's key), the
// name for a menu, the style word.
typedef int (*ATMFontEnumProc)(const LOGFONTA* font, const char* menuName, std::uint16_t style,
                               void* data);

typedef int (*ATMProperlyLoadedProc)();
typedef std::int32_t (*ATMEnumFontsAProc)(ATMFontEnumProc callback, void* data);
// The character is a byte of code page 1252; values above 255 are refused.
typedef std::int32_t (*ATMGetOutlineAProc)(HDC context, int character, const ATMFixedMatrix* matrix,
                                           ATMMoveToProc moveTo, ATMLineToProc lineTo,
                                           ATMCurveToProc curveTo, ATMClosePathProc closePath,
                                           void* data);
// The character is a UTF-16 code unit.
typedef std::int32_t (*ATMGetOutlineWProc)(HDC context, std::uint16_t character,
                                           const ATMFixedMatrix* matrix, ATMMoveToProc moveTo,
                                           ATMLineToProc lineTo, ATMCurveToProc curveTo,
                                           ATMClosePathProc closePath, void* data);
typedef int (*ATMFinishProc)();
}

// The file name of the module.
inline constexpr const char* kType1ModuleName = "plumet_type1.so";
