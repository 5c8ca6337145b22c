// Draw contexts: where a view's renderer puts its pixels.
#pragma once

#include "d3d/DObject.h"

class DDrawContext : public DShapeObject {
  public:
    ~DDrawContext() override;
    TQ3Object GetObject() const override { return object; }

    TQ3Area GetPane() const;
    // Draws into `pane` only.
    void SetPane(const TQ3Area& pane);
    void SetClearColor(float alpha, float red, float green, float blue);
    // Whether each frame starts from the clear colour.
    void SetClear(bool clear);

    TQ3DrawContextClearImageMethod clearMethod = kQ3ClearMethodWithColor;
    TQ3ColorARGB clearColor{1, 1, 1, 1};
    TQ3Area pane{{0, 0}, {0, 0}};
    TQ3Boolean paneState = kQ3False;
    TQ3Bitmap mask{};
    TQ3Boolean maskState = kQ3False;
    TQ3Boolean doubleBuffer = kQ3True;
    TQ3DrawContextObject object = nullptr;

  protected:
    DDrawContext() = default;
    TQ3DrawContextData Data() const;
};

// Draws into a window's device context.
class DDCDrawContext : public DDrawContext {
  public:
    explicit DDCDrawContext(TQ3DeviceContext dc);
};

// Draws into memory of the caller: 32-bit ARGB pixels, little-endian, rows
// of `rowBytes`. The memory must outlive the context or be replaced first.
class DPixmapDrawContext : public DDrawContext {
  public:
    DPixmapDrawContext(void* image, std::uint32_t width, std::uint32_t height,
                       std::uint32_t rowBytes);
    // Points the context at other memory of the same size.
    void SetPixmap(void* image, std::uint32_t rowBytes);
    // Points the context at other memory of another size.
    void SetPixmap(void* image, std::uint32_t width, std::uint32_t height, std::uint32_t rowBytes);

    TQ3Pixmap pixmap{};
};
