// A small filter module for testing the host on its own. It inverts every
// plane it is handed in outData (from the same planes of inData) over the
// filter rectangle, choosing planes by filter case the way a real filter
// does. Environment variables steer it:
//   TESTFILTER_LOG=path        append one line per selector call
//   TESTFILTER_FAIL=sel:code   answer `code` at selector `sel` (-30904 also
//                              fills errorString)
//   TESTFILTER_STYLE=tiles     (default) work in continue, TESTFILTER_TILE rows
//                              at a time (default 7)
//   TESTFILTER_STYLE=start     ask for the pixels with advanceState inside
//                              start, work there, empty the rectangles in
//                              continue
//   TESTFILTER_STYLE=endless   never empty the rectangles
//   TESTFILTER_COLOR=1         ask the host's colorServices for a colour at
//                              start (from 10,200,30) and log the answer
// Compile definitions make broken variants for the loader's tests.
#include "sdk/PIFilter.h"
#include "sdk/PIGlobal.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#define LE32(v)                                                                                    \
    (unsigned char)((v)&0xFF), (unsigned char)(((v) >> 8) & 0xFF),                                 \
        (unsigned char)(((v) >> 16) & 0xFF), (unsigned char)(((v) >> 24) & 0xFF)
#define PROPERTY(key, length) LE32(PIAdobeVendorID), LE32(key), LE32(0), LE32(length)

#ifdef TESTFILTER_WRONG_KIND
#define TESTFILTER_KIND PI_FOURCC('8', 'B', 'X', 'M')
#else
#define TESTFILTER_KIND PIFilterKind
#endif
#ifdef TESTFILTER_NEWER
#define TESTFILTER_VERSION 0x00040002
#else
#define TESTFILTER_VERSION 0x00040001
#endif
#ifdef TESTFILTER_OTHER_ENTRY
#define TESTFILTER_ENTRY_BYTES 'O', 't', 'h', 'e', 'r', 'E', 'n', 't', 'r', 'y', 0, 0
#else
#define TESTFILTER_ENTRY_BYTES 'E', 'N', 'T', 'R', 'Y', 'P', 'O', 'I', 'N', 'T', 0, 0
#endif

#ifndef TESTFILTER_NO_PIPL
extern "C" {
extern const unsigned char PiPL_16000[];
// clang-format off
const unsigned char PiPL_16000[] = {
    LE32(0), LE32(7),
    PROPERTY(PIKindProperty, 4), LE32(TESTFILTER_KIND),
    PROPERTY(PINameProperty, 12), 11, 'T', 'e', 's', 't', ' ', 'I', 'n', 'v', 'e', 'r', 't',
    PROPERTY(PICategoryProperty, 13), 12, 'P', 'l', 'u', 'm', 'e', 't', ' ', 'T', 'e', 's', 't', 's',
    0, 0, 0,
    PROPERTY(PIVersionProperty, 4), LE32(TESTFILTER_VERSION),
    PROPERTY(PIWin64X86CodeProperty, 12), TESTFILTER_ENTRY_BYTES,
    PROPERTY(PIImageModesProperty, 4), 0x18, 0, 0, 0,
    PROPERTY(PIFilterCaseInfoProperty, 28),
    1, 1, 0, 0,  1, 1, 0, 0,  1, 1, 0, 0,  1, 1, 2, 0,  1, 1, 2, 0,  1, 1, 0, 0,  1, 1, 0, 0};
// clang-format on
#ifndef TESTFILTER_NO_PIPL_SIZE
extern const uint32 PiPL_16000_size;
const uint32 PiPL_16000_size = sizeof(PiPL_16000);
#endif
}
#endif

#ifndef TESTFILTER_NO_ENTRY
namespace {

struct TestRecord {
    uint32 magic;
    int32 parametersCalls;
    int32 starts;
};
constexpr uint32 kMagic = PI_FOURCC('T', 'F', 'R', 'C');

int gTileTop = 0; // the next row of the filter rectangle to work on

void Log(const char* format, ...) {
    const char* path = std::getenv("TESTFILTER_LOG");
    if (!path) return;
    if (FILE* f = std::fopen(path, "a")) {
        va_list args;
        va_start(args, format);
        std::vfprintf(f, format, args);
        va_end(args);
        std::fclose(f);
    }
}

bool FailureFor(int selector, int16* code) {
    const char* failure = std::getenv("TESTFILTER_FAIL");
    int sel = 0, value = 0;
    if (!failure || std::sscanf(failure, "%d:%d", &sel, &value) != 2 || sel != selector)
        return false;
    *code = int16(value);
    return true;
}

const char* Style() {
    const char* style = std::getenv("TESTFILTER_STYLE");
    return style ? style : "tiles";
}

// Inverts outData from inData over the current out rectangle.
void Invert(FilterRecord* fr) {
    if (!fr->inData || !fr->outData) return;
    const int inPlanes = fr->inHiPlane - fr->inLoPlane + 1;
    const int outPlanes = fr->outHiPlane - fr->outLoPlane + 1;
    const int rows = fr->outRect.bottom - fr->outRect.top;
    const int cols = fr->outRect.right - fr->outRect.left;
    for (int r = 0; r < rows; ++r) {
        const auto* in = static_cast<const uint8*>(fr->inData) + r * fr->inRowBytes;
        auto* out = static_cast<uint8*>(fr->outData) + r * fr->outRowBytes;
        for (int c = 0; c < cols; ++c)
            for (int p = 0; p < outPlanes; ++p)
                out[c * outPlanes + p] = uint8(255 - in[c * inPlanes + p]);
    }
}

void AskForColor(FilterRecord* fr) {
    static Str255 prompt = "\016 Select color:";
    ColorServicesInfo info{};
    info.infoSize = sizeof info;
    info.selector = plugIncolorServicesChooseColor;
    info.sourceSpace = info.resultSpace = plugIncolorServicesRGBSpace;
    info.colorComponents[0] = 10;
    info.colorComponents[1] = 200;
    info.colorComponents[2] = 30;
    info.selectorParameter.pickerPrompt = &prompt;
    const OSErr err = fr->colorServices(&info);
    Log("color result=%d rgb=%d,%d,%d\n", int(err), info.colorComponents[0],
        info.colorComponents[1], info.colorComponents[2]);
}

int16 ChoosePlanes(FilterRecord* fr) {
    fr->inLoPlane = fr->outLoPlane = 0;
    switch (fr->filterCase) {
    case filterCaseEditableTransparencyNoSelection:
    case filterCaseEditableTransparencyWithSelection:
        if (fr->inLayerPlanes <= 0 || fr->inTransparencyMask != 1) return filterBadMode;
        fr->inHiPlane = fr->outHiPlane = int16(fr->inLayerPlanes + fr->inTransparencyMask - 1);
        return noErr;
    case filterCaseProtectedTransparencyNoSelection:
    case filterCaseProtectedTransparencyWithSelection:
        if (fr->planes <= 2) return filterBadMode;
        fr->inHiPlane = int16(fr->inLayerPlanes + fr->inTransparencyMask - 1);
        fr->outHiPlane = 2;
        return noErr;
    case filterCaseFlatImageNoSelection:
    case filterCaseFlatImageWithSelection:
        if (fr->planes <= 2) return filterBadMode;
        fr->inHiPlane = fr->outHiPlane = fr->imageMode == plugInModeCMYKColor ? 3 : 2;
        return noErr;
    case filterCaseNotReported:
        fr->inHiPlane = fr->outHiPlane = 2;
        return noErr;
    default:
        return filterBadMode;
    }
}

void SetTile(FilterRecord* fr) {
    const Rect& f = fr->filterRect;
    if (gTileTop >= f.bottom) {
        fr->inRect = fr->outRect = Rect{0, 0, 0, 0};
        return;
    }
    const char* tile = std::getenv("TESTFILTER_TILE");
    const int rows = tile ? std::atoi(tile) : 7;
    const int bottom =
        gTileTop + (rows > 0 ? rows : 7) < f.bottom ? gTileTop + (rows > 0 ? rows : 7) : f.bottom;
    fr->inRect = fr->outRect = Rect{int16(gTileTop), f.left, int16(bottom), f.right};
    gTileTop = bottom;
}

int16 DoParameters(FilterRecord* fr) {
    if (!fr->parameters) {
        fr->parameters = PIGlobalAlloc(PIGlobalZeroInit, sizeof(TestRecord));
        if (!fr->parameters) return memFullErr;
        static_cast<TestRecord*>(fr->parameters)->magic = kMagic;
    }
    static_cast<TestRecord*>(fr->parameters)->parametersCalls++;
    return noErr;
}

int16 DoPrepare(FilterRecord* fr) {
    const int32 need = (fr->filterRect.right - fr->filterRect.left) *
                       (fr->filterRect.bottom - fr->filterRect.top) * 4;
    if (need >= fr->maxSpace) {
        fr->bufferSpace = 0;
        return memFullErr;
    }
    fr->bufferSpace = need;
    return noErr;
}

int16 DoStart(FilterRecord* fr) {
    if (!fr->parameters) return 1;
    auto* record = static_cast<TestRecord*>(fr->parameters);
    if (record->magic != kMagic) return filterBadParameters;
    record->starts++;
    if (const int16 err = ChoosePlanes(fr); err != noErr) return err;
    if (std::strcmp(Style(), "start") == 0) {
        fr->inRect = fr->outRect = fr->filterRect;
        if (const OSErr err = fr->advanceState(); err != noErr) {
            fr->inRect = fr->outRect = Rect{0, 0, 0, 0};
            return err;
        }
        Invert(fr);
        return noErr;
    }
    gTileTop = fr->filterRect.top;
    SetTile(fr);
    return noErr;
}

int16 DoContinue(FilterRecord* fr) {
    const char* style = Style();
    if (std::strcmp(style, "endless") == 0) return noErr;
    if (std::strcmp(style, "start") == 0) {
        fr->inRect = fr->outRect = Rect{0, 0, 0, 0};
        return noErr;
    }
    Invert(fr);
    SetTile(fr);
    return noErr;
}

} // namespace
#endif

#ifdef TESTFILTER_UNDEFINED
extern "C" void plumet_testfilter_symbol_nobody_defines();
#endif

#ifndef TESTFILTER_NO_ENTRY
extern "C" void ENTRYPOINT(int16 selector, void* block, int32* pluginData, int16* result) {
    (void)pluginData;
#ifdef TESTFILTER_UNDEFINED
    plumet_testfilter_symbol_nobody_defines();
#endif
    int16 answer = noErr;
    auto* fr = static_cast<FilterRecord*>(block);
    if (FailureFor(selector, &answer)) {
        if (answer == errReportString && selector != filterSelectorAbout && fr->errorString) {
            const char text[] = "test filter\nsays no"; // the host shows it on one line
            (*fr->errorString)[0] = uint8(sizeof text - 1);
            std::memcpy(*fr->errorString + 1, text, sizeof text - 1);
        }
    } else {
        switch (selector) {
        case filterSelectorAbout:
            break;
        case filterSelectorParameters:
            answer = DoParameters(fr);
            break;
        case filterSelectorPrepare:
            answer = DoPrepare(fr);
            break;
        case filterSelectorStart:
            if (std::getenv("TESTFILTER_COLOR") && fr->colorServices) AskForColor(fr);
            answer = DoStart(fr);
            break;
        case filterSelectorContinue:
            answer = DoContinue(fr);
            break;
        case filterSelectorFinish:
            break;
        default:
            answer = filterBadParameters;
            break;
        }
    }
    if (selector == filterSelectorAbout) {
        const auto* about = static_cast<AboutRecord*>(block);
        const auto* platform = static_cast<const PlatformData*>(about->platformData);
        Log("about hwnd=%d result=%d\n", platform ? int(platform->hwnd) : -1, int(answer));
    } else {
        const auto* record = static_cast<const TestRecord*>(fr->parameters);
        Log("%d case=%d play=%d params=%d starts=%d result=%d\n", int(selector),
            int(fr->filterCase), fr->descriptorParameters ? fr->descriptorParameters->playInfo : -1,
            record ? record->parametersCalls : 0, record ? record->starts : 0, int(answer));
    }
    *result = answer;
}
#endif
