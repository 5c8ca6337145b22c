#pragma once

// Plain records of the font interface that the text code reads outlines
// through. The layouts are fixed (they are shared with the Type 1 module,
// which is built separately and reads the device context it is handed), so
// everything here is standard layout with explicit widths.

#include <cstdint>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using WCHAR16 = std::uint16_t;

inline constexpr int LF_FACESIZE = 32;
inline constexpr int LF_FULLFACESIZE = 64;

// A logical font. lfFaceName holds the face's PostScript name (cut to 31
// bytes), which is the key by which a font is found again; lfHeight < 0 asks
// for an em of -lfHeight pixels, lfHeight > 0 for a cell of that height, 0 for
// the default em of 32 pixels.
struct LOGFONTA {
    LONG lfHeight;
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    char lfFaceName[LF_FACESIZE];
};
static_assert(sizeof(LOGFONTA) == 60);

// A logical font as the enumeration delivers it, with the face's full name
// and style name.
struct ENUMLOGFONTA {
    LOGFONTA elfLogFont;
    char elfFullName[LF_FULLFACESIZE];
    char elfStyle[LF_FACESIZE];
};
static_assert(sizeof(ENUMLOGFONTA) == 156);

struct NEWTEXTMETRICA {
    LONG tmHeight;
    LONG tmAscent;
    LONG tmDescent;
    LONG tmInternalLeading;
    LONG tmExternalLeading;
    LONG tmAveCharWidth;
    LONG tmMaxCharWidth;
    LONG tmWeight;
    LONG tmOverhang;
    LONG tmDigitizedAspectX;
    LONG tmDigitizedAspectY;
    BYTE tmFirstChar;
    BYTE tmLastChar;
    BYTE tmDefaultChar;
    BYTE tmBreakChar;
    BYTE tmItalic;
    BYTE tmUnderlined;
    BYTE tmStruckOut;
    BYTE tmPitchAndFamily;
    BYTE tmCharSet;
    DWORD ntmFlags;
    DWORD ntmSizeEM;
    DWORD ntmCellHeight;
    DWORD ntmAvgWidth;
};
static_assert(sizeof(NEWTEXTMETRICA) == 72);

// tmPitchAndFamily: the face is an outline font.
inline constexpr BYTE TMPF_TRUETYPE = 0x04;
// ntmFlags.
inline constexpr DWORD NTM_ITALIC = 0x00000001;
inline constexpr DWORD NTM_BOLD = 0x00000020;
inline constexpr DWORD NTM_REGULAR = 0x00000040;
inline constexpr DWORD NTM_PS_OPENTYPE = 0x00020000;
inline constexpr DWORD NTM_TT_OPENTYPE = 0x00040000;
// Font type bits handed to the enumeration callback.
inline constexpr DWORD TRUETYPE_FONTTYPE = 0x0004;

// 16.16 fixed point split into its fraction and integer halves.
struct FIXED {
    WORD fract;
    std::int16_t value;
};
struct POINTFX {
    FIXED x;
    FIXED y;
};
struct MAT2 {
    FIXED eM11;
    FIXED eM12;
    FIXED eM21;
    FIXED eM22;
};
struct POINT32 {
    LONG x;
    LONG y;
};
struct GLYPHMETRICS {
    DWORD gmBlackBoxX;
    DWORD gmBlackBoxY;
    POINT32 gmptGlyphOrigin;
    std::int16_t gmCellIncX;
    std::int16_t gmCellIncY;
};

// The native outline: a run of polygon headers, each followed by curve
// records. cb counts the header and all its records in bytes.
struct TTPOLYGONHEADER {
    DWORD cb;
    DWORD dwType;
    POINTFX pfxStart;
};
static_assert(sizeof(TTPOLYGONHEADER) == 16);
struct TTPOLYCURVE {
    WORD wType;
    WORD cpfx;
    POINTFX apfx[1];
};

inline constexpr DWORD TT_POLYGON_TYPE = 24;
inline constexpr WORD TT_PRIM_LINE = 1;
inline constexpr WORD TT_PRIM_QSPLINE = 2;
inline constexpr WORD TT_PRIM_CSPLINE = 3;
inline constexpr unsigned GGO_METRICS = 0;
inline constexpr unsigned GGO_NATIVE = 2;
inline constexpr DWORD GDI_ERROR = 0xFFFFFFFF;

// A device context: it only remembers the font selected into it. The Type 1
// module reads selectedFont of the context it is handed.
inline constexpr DWORD kDeviceContextMagic = 0x44435478; // "DCTx"
struct PlatformFontObject;
using HFONT = PlatformFontObject*;
struct PlatformDeviceContext {
    DWORD magic;
    std::int32_t hasFont;
    LOGFONTA selectedFont;
    HFONT selectedObject;
};
using HDC = PlatformDeviceContext*;
