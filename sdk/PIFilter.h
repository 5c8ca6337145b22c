/*
 * The filter interface between an image editor (the host) and a filter module.
 *
 * A filter module is a shared object (extension .8bf) that exports
 *
 *     void ENTRYPOINT(int16 selector, void* pluginParamBlock,
 *                     int32* pluginData, int16* result);
 *
 * with C linkage. The host calls it once per selector: for
 * filterSelectorAbout the block is an AboutRecord, for every other selector a
 * FilterRecord. The module writes its answer (one of the result codes below)
 * to *result.
 *
 * The module also exports its property list (the "PiPL" resource 16000) as
 * two data symbols, so that a host can read the filter's name, category,
 * image modes and filter cases without running it:
 *
 *     extern const unsigned char PiPL_16000[];      the encoded list
 *     extern const uint32        PiPL_16000_size;   its length in bytes
 *
 * The encoding is described with PIPropertyList below.
 *
 * Layout rules
 * - All structures use the natural C alignment of x86-64; the field order is
 *   as written here and is part of the interface.
 * - Pixel buffers are interleaved, one byte per channel: the bytes of one
 *   pixel lie side by side, the step between pixels is the number of planes
 *   asked for (hiPlane - loPlane + 1), the step between rows is the row-bytes
 *   field. Plane 0 is red (cyan in CMYK), 1 green (magenta), 2 blue (yellow),
 *   3 black in CMYK; in a layer with transparency the plane after the colour
 *   planes is the transparency.
 * - platformData points to a PlatformData: its first word is the native id of
 *   the host's parent window, 0 when the host has none.
 * - The platformContext argument of displayPixels points to a PISurface: a
 *   small 32-bit RGB picture that the filter owns. The host converts the
 *   pixels it is shown into that surface; the filter then puts the surface on
 *   the screen.
 */
#ifndef PLUMET_SDK_PIFILTER_H
#define PLUMET_SDK_PIFILTER_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef int16_t int16;
typedef int32_t int32;
typedef uint8_t uint8;
typedef uint16_t uint16;
typedef uint32_t uint32;
typedef int16_t OSErr;
typedef uint8_t Boolean;
typedef int32_t Fixed; /* 16.16 fixed point */
typedef void* Handle;  /* a block from PIGlobalAlloc, used directly as a pointer */

/* ---- selectors ---------------------------------------------------------- */
enum {
    filterSelectorAbout = 0,
    filterSelectorParameters = 1,
    filterSelectorPrepare = 2,
    filterSelectorStart = 3,
    filterSelectorContinue = 4,
    filterSelectorFinish = 5
};

/* ---- result codes ------------------------------------------------------- */
enum {
    noErr = 0,
    memFullErr = -108,      /* out of memory */
    userCanceledErr = -128, /* also: the filter's 3D system is unavailable */
    filterBadParameters = -30100,
    filterBadMode = -30101,
    errReportString = -30904 /* the filter put a message into errorString */
};

/* ---- image modes -------------------------------------------------------- */
enum {
    plugInModeBitmap = 0,
    plugInModeGrayScale = 1,
    plugInModeIndexedColor = 2,
    plugInModeRGBColor = 3,
    plugInModeCMYKColor = 4,
    plugInModeHSLColor = 5,
    plugInModeHSBColor = 6,
    plugInModeMultichannel = 7,
    plugInModeDuotone = 8,
    plugInModeLabColor = 9
};

/* ---- filter cases ------------------------------------------------------- */
enum {
    filterCaseUnsupported = -1,
    filterCaseNotReported = 0, /* the host does not report filter cases */
    filterCaseFlatImageNoSelection = 1,
    filterCaseFlatImageWithSelection = 2,
    filterCaseFloatingSelection = 3,
    filterCaseEditableTransparencyNoSelection = 4,
    filterCaseEditableTransparencyWithSelection = 5,
    filterCaseProtectedTransparencyNoSelection = 6,
    filterCaseProtectedTransparencyWithSelection = 7
};

/* ---- geometry ----------------------------------------------------------- */
typedef struct Point {
    int16 v, h;
} Point;

/* A rectangle of pixels: top and left inside, bottom and right outside. */
typedef struct Rect {
    int16 top, left, bottom, right;
} Rect;

typedef struct VRect {
    int32 top, left, bottom, right;
} VRect;

typedef struct RGBColor {
    uint16 red, green, blue;
} RGBColor;

typedef unsigned char Str255[256]; /* length byte, then up to 255 characters */

/* The first word is the native id of the host's parent window (0: none). */
typedef struct PlatformData {
    intptr_t hwnd;
} PlatformData;

/* The picture behind displayPixels' platformContext: width by height pixels,
 * each a 32-bit word 0x00RRGGBB, rows rowBytes apart. Owned by the filter. */
typedef struct PISurface {
    int32 width;
    int32 height;
    int32 rowBytes;
    uint32* pixels;
} PISurface;

/* ---- pixel maps for displayPixels --------------------------------------- */
typedef struct PSPixelMask {
    struct PSPixelMask* next;
    void* maskData;
    int32 rowBytes;
    int32 colBytes;
    int32 maskDescription; /* 0: transparency mask */
} PSPixelMask;

typedef struct PSPixelMap {
    int32 version; /* 1 */
    VRect bounds;
    int32 imageMode;
    int32 rowBytes;
    int32 colBytes;
    int32 planeBytes;
    void* baseAddr;
    void* mat;          /* colour matrix; unused, null */
    PSPixelMask* masks; /* transparency of the pixels, or null */
    int32 maskPhaseRow;
    int32 maskPhaseCol;
} PSPixelMap;

/* ---- colour services ---------------------------------------------------- */
enum { plugIncolorServicesChooseColor = 0, plugIncolorServicesConvertColor = 1 };

enum {
    plugIncolorServicesRGBSpace = 0,
    plugIncolorServicesHSBSpace = 1,
    plugIncolorServicesCMYKSpace = 2,
    plugIncolorServicesLabSpace = 3,
    plugIncolorServicesGraySpace = 4,
    plugIncolorServicesHSLSpace = 5,
    plugIncolorServicesXYZSpace = 6,
    plugIncolorServicesChosenSpace = -1
};

typedef struct ColorServicesInfo {
    int32 infoSize;
    int16 selector;
    int16 sourceSpace;
    int16 resultSpace;
    Boolean resultGamutInfoValid;
    Boolean resultInGamut;
    void* reservedSourceSpaceInfo;
    void* reservedResultSpaceInfo;
    int16 colorComponents[4]; /* in and out; 0..255 per component for RGB */
    void* reserved;
    union {
        Str255* pickerPrompt; /* for plugIncolorServicesChooseColor */
        Point* globalSamplePoint;
        int32 specialColorID;
    } selectorParameter;
} ColorServicesInfo;

/* ---- host callbacks ----------------------------------------------------- */
typedef OSErr (*AdvanceStateProc)(void);
typedef OSErr (*DisplayPixelsProc)(const PSPixelMap* source, const VRect* srcRect, int32 dstRow,
                                   int32 dstCol, void* platformContext);
typedef OSErr (*ProcessEventProc)(void* event);
typedef OSErr (*ColorServicesProc)(ColorServicesInfo* info);
typedef Boolean (*TestAbortProc)(void);
typedef void (*ProgressProc)(int32 done, int32 total);

/* ---- recorded and played parameters ------------------------------------- */
enum {
    plugInDialogDontDisplay = 0, /* the play flag: run without showing a dialog */
    plugInDialogDisplay = 1,
    plugInDialogSilent = 2
};

typedef struct PIDescriptorParameters {
    int16 descriptorParametersVersion;
    int16 playInfo;   /* one of plugInDialog... */
    int16 recordInfo; /* one of plugInDialog... */
    void* descriptor;
} PIDescriptorParameters;

/* ---- the records -------------------------------------------------------- */
typedef struct AboutRecord {
    void* platformData; /* points to a PlatformData, or null */
    int32 reserved[16];
} AboutRecord;

typedef struct FilterRecord {
    int32 serialNumber;
    TestAbortProc abortProc;
    ProgressProc progressProc;
    Handle parameters; /* the filter's own record, kept by the host between selectors */

    Point imageSize;
    int16 planes;    /* planes of the image the filter works on */
    Rect filterRect; /* the area to filter, in image coordinates */
    RGBColor background;
    RGBColor foreground;
    int32 maxSpace;    /* memory the filter may ask for */
    int32 bufferSpace; /* memory the filter says it needs (written in Prepare) */

    Rect inRect; /* written by the filter: the area wanted from inData */
    int16 inLoPlane;
    int16 inHiPlane;
    Rect outRect; /* written by the filter: the area wanted in outData */
    int16 outLoPlane;
    int16 outHiPlane;
    void* inData; /* set by the host in advanceState */
    int32 inRowBytes;
    void* outData;
    int32 outRowBytes;

    Boolean isFloating;
    Boolean haveMask;
    Boolean autoMask; /* never written by a filter that masks nothing itself */
    Rect maskRect;
    void* maskData;
    int32 maskRowBytes;

    int16 imageMode; /* one of plugInMode... */
    Fixed inputRate; /* subsampling of inData, 16.16; 0x10000 = full size */
    Fixed maskRate;
    int16 inputPadding; /* value of pixels outside the image, 0..255, or -1 */

    AdvanceStateProc advanceState;
    DisplayPixelsProc displayPixels;
    ProcessEventProc processEvent;
    ColorServicesProc colorServices;
    void* platformData; /* points to a PlatformData */

    int16 filterCase;         /* one of filterCase... */
    int16 inLayerPlanes;      /* colour planes of a layer */
    int16 inTransparencyMask; /* 1 if a transparency plane follows them */

    PIDescriptorParameters* descriptorParameters; /* may be null: then display */
    Str255* errorString;                          /* the message for errReportString, or null */
} FilterRecord;

/* ---- the property list ("PiPL") ----------------------------------------- */
/*
 * PIPropertyList: int32 version (0), int32 count, then count properties.
 * PIProperty: uint32 vendorID, uint32 propertyKey, int32 propertyID,
 * int32 propertyLength, then propertyLength bytes of data, padded with zero
 * bytes to a multiple of 4. Every number is stored little-endian; a
 * four-character code is stored as the 32-bit number whose most significant
 * byte is its first character, so in memory its characters read backwards.
 */
#define PI_FOURCC(a, b, c, d)                                                                      \
    ((uint32)(uint8)(a) << 24 | (uint32)(uint8)(b) << 16 | (uint32)(uint8)(c) << 8 |               \
     (uint32)(uint8)(d))

#define PIPL_RESOURCE_SYMBOL "PiPL_16000"
#define PIPL_RESOURCE_SIZE_SYMBOL "PiPL_16000_size"
#define PI_ENTRYPOINT_SYMBOL "ENTRYPOINT"

enum {
    PIAdobeVendorID = PI_FOURCC('8', 'B', 'I', 'M'),
    PIKindProperty = PI_FOURCC('k', 'i', 'n', 'd'),
    PIFilterKind = PI_FOURCC('8', 'B', 'F', 'M'),
    PINameProperty = PI_FOURCC('n', 'a', 'm', 'e'),          /* length-prefixed string */
    PICategoryProperty = PI_FOURCC('c', 'a', 't', 'g'),      /* length-prefixed string */
    PIVersionProperty = PI_FOURCC('v', 'e', 'r', 's'),       /* major << 16 | minor */
    PIWin64X86CodeProperty = PI_FOURCC('w', 'x', '8', '6'),  /* C string: entry name */
    PIImageModesProperty = PI_FOURCC('m', 'o', 'd', 'e'),    /* flag bytes */
    PIFilterCaseInfoProperty = PI_FOURCC('f', 'i', 'c', 'i') /* 7 entries of 4 bytes */
};

/* Bits of the first flag byte of the image modes property. */
enum {
    PIModeBitmapFlag = 0x80,
    PIModeGrayScaleFlag = 0x40,
    PIModeIndexedFlag = 0x20,
    PIModeRGBFlag = 0x10,
    PIModeCMYKFlag = 0x08,
    PIModeHSLFlag = 0x04,
    PIModeHSBFlag = 0x02,
    PIModeMultichannelFlag = 0x01
};

/* One filter case entry: how the filter wants its input and output. */
typedef struct FilterCaseInfo {
    uint8 inputHandling;  /* 1: straight data */
    uint8 outputHandling; /* 1: straight data */
    uint8 flags1;         /* 2: works with blank data */
    uint8 flags2;
} FilterCaseInfo;

typedef void (*PluginEntryProc)(int16 selector, void* pluginParamBlock, int32* pluginData,
                                int16* result);

#ifdef __cplusplus
}
#endif

#endif
