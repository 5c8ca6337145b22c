#include "d3d/DDrawContext.h"

DDrawContext::~DDrawContext() {
    if (object) Q3Object_Dispose(object);
}

TQ3DrawContextData DDrawContext::Data() const {
    return {clearMethod, clearColor, pane, paneState, mask, maskState, doubleBuffer};
}

TQ3Area DDrawContext::GetPane() const {
    TQ3Area area{};
    CheckStatus(Q3DrawContext_GetPane(object, &area));
    return area;
}

void DDrawContext::SetPane(const TQ3Area& area) {
    CheckStatus(Q3DrawContext_SetPane(object, &area));
    CheckStatus(Q3DrawContext_SetPaneState(object, kQ3True));
    pane = area;
    paneState = kQ3True;
}

void DDrawContext::SetClearColor(float alpha, float red, float green, float blue) {
    TQ3ColorARGB color{alpha, red, green, blue};
    CheckStatus(Q3DrawContext_SetClearImageColor(object, &color));
    clearColor = color;
}

void DDrawContext::SetClear(bool clear) {
    TQ3DrawContextClearImageMethod method = clear ? kQ3ClearMethodWithColor : kQ3ClearMethodNone;
    CheckStatus(Q3DrawContext_SetClearImageMethod(object, method));
    clearMethod = method;
}

DDCDrawContext::DDCDrawContext(TQ3DeviceContext dc) {
    TQ3Win32DCDrawContextData data{Data(), dc};
    object = Q3Win32DCDrawContext_New(&data);
    CheckObject(object);
}

DPixmapDrawContext::DPixmapDrawContext(void* image, std::uint32_t width, std::uint32_t height,
                                       std::uint32_t rowBytes) {
    clearColor = {0, 0, 0, 0};
    pixmap = {image,           width,          height, rowBytes, 32, kQ3PixelTypeARGB32,
              kQ3EndianLittle, kQ3EndianLittle};
    TQ3PixmapDrawContextData data{Data(), pixmap};
    object = Q3PixmapDrawContext_New(&data);
    CheckObject(object);
}

void DPixmapDrawContext::SetPixmap(void* image, std::uint32_t rowBytes) {
    if (image == pixmap.image && rowBytes == pixmap.rowBytes) return;
    SetPixmap(image, pixmap.width, pixmap.height, rowBytes);
}

void DPixmapDrawContext::SetPixmap(void* image, std::uint32_t width, std::uint32_t height,
                                   std::uint32_t rowBytes) {
    TQ3Pixmap next = pixmap;
    next.image = image;
    next.width = width;
    next.height = height;
    next.rowBytes = rowBytes;
    CheckStatus(Q3PixmapDrawContext_SetPixmap(object, &next));
    pixmap = next;
}
