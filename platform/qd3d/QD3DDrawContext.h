/* Draw contexts: where a view's renderer puts its pixels. A pixmap draw
 * context draws into the caller's memory: 32 bits a pixel, colours
 * premultiplied by alpha. With clear method kQ3ClearMethodWithColor each frame
 * starts from the clear colour, premultiplied by its alpha. */
#ifndef QD3D_DRAWCONTEXT_H
#define QD3D_DRAWCONTEXT_H

#include "platform/qd3d/QD3DTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef enum TQ3DrawContextClearImageMethod {
    kQ3ClearMethodNone = 0,
    kQ3ClearMethodWithColor = 1
} TQ3DrawContextClearImageMethod;

typedef struct TQ3DrawContextData {
    TQ3DrawContextClearImageMethod clearImageMethod;
    TQ3ColorARGB clearImageColor;
    TQ3Area pane; /* used when paneState is true: the part of the pixmap drawn */
    TQ3Boolean paneState;
    TQ3Bitmap mask; /* not used by the renderers here */
    TQ3Boolean maskState;
    TQ3Boolean doubleBufferState;
} TQ3DrawContextData;

typedef struct TQ3PixmapDrawContextData {
    TQ3DrawContextData drawContextData;
    TQ3Pixmap pixmap;
} TQ3PixmapDrawContextData;

/* On this platform a device context is a pixmap that a window keeps. */
typedef TQ3Pixmap* TQ3DeviceContext;
typedef struct TQ3Win32DCDrawContextData {
    TQ3DrawContextData drawContextData;
    TQ3DeviceContext hdc;
} TQ3Win32DCDrawContextData;

TQ3ObjectType Q3DrawContext_GetType(TQ3DrawContextObject drawContext);
TQ3Status Q3DrawContext_SetData(TQ3DrawContextObject context, const TQ3DrawContextData* data);
TQ3Status Q3DrawContext_GetData(TQ3DrawContextObject context, TQ3DrawContextData* data);
TQ3Status Q3DrawContext_SetClearImageColor(TQ3DrawContextObject context, const TQ3ColorARGB* color);
TQ3Status Q3DrawContext_GetClearImageColor(TQ3DrawContextObject context, TQ3ColorARGB* color);
TQ3Status Q3DrawContext_SetClearImageMethod(TQ3DrawContextObject context,
                                            TQ3DrawContextClearImageMethod method);
TQ3Status Q3DrawContext_GetClearImageMethod(TQ3DrawContextObject context,
                                            TQ3DrawContextClearImageMethod* method);
TQ3Status Q3DrawContext_SetPane(TQ3DrawContextObject context, const TQ3Area* pane);
TQ3Status Q3DrawContext_GetPane(TQ3DrawContextObject context, TQ3Area* pane);
TQ3Status Q3DrawContext_SetPaneState(TQ3DrawContextObject context, TQ3Boolean state);
TQ3Status Q3DrawContext_GetPaneState(TQ3DrawContextObject context, TQ3Boolean* state);
TQ3Status Q3DrawContext_SetDoubleBufferState(TQ3DrawContextObject context, TQ3Boolean state);
TQ3Status Q3DrawContext_GetDoubleBufferState(TQ3DrawContextObject context, TQ3Boolean* state);
TQ3Status Q3DrawContext_SetMaskState(TQ3DrawContextObject context, TQ3Boolean state);
TQ3Status Q3DrawContext_GetMaskState(TQ3DrawContextObject context, TQ3Boolean* state);

/* Only 32-bit pixels (kQ3PixelTypeRGB32, kQ3PixelTypeARGB32) are accepted. */
TQ3DrawContextObject Q3PixmapDrawContext_New(const TQ3PixmapDrawContextData* contextData);
TQ3Status Q3PixmapDrawContext_SetPixmap(TQ3DrawContextObject drawContext, const TQ3Pixmap* pixmap);
TQ3Status Q3PixmapDrawContext_GetPixmap(TQ3DrawContextObject drawContext, TQ3Pixmap* pixmap);

TQ3DrawContextObject Q3Win32DCDrawContext_New(const TQ3Win32DCDrawContextData* drawContextData);
TQ3Status Q3Win32DCDrawContext_SetDC(TQ3DrawContextObject drawContext, TQ3DeviceContext newHDC);
TQ3Status Q3Win32DCDrawContext_GetDC(TQ3DrawContextObject drawContext, TQ3DeviceContext* curHDC);

#ifdef __cplusplus
}
#endif

#endif
