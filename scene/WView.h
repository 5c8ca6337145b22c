// The window side of a view: its place and size, and a redraw.
#pragma once

#include "foundation/WAttachable.h"
#include "sdk/PIFilter.h"

class WView : public WAttachable {
  public:
    virtual void Draw(int argument) = 0;
    virtual void SetWindow(void* window) { window_ = window; }
    void* GetWindow() const { return window_; }

    short GetClickCount() const { return clickCount_; }
    void SetClickCount(short count) { clickCount_ = count; }
    void Refresh() { Draw(0); }

    // Gives the view a new size, keeping its top left.
    virtual void ResizeTo(int width, int height);
    // Moves the view in its parent, keeping its size.
    virtual void MoveBy(int dx, int dy, bool repaint);
    // Top 0, left 0, and the view's height and width.
    Rect GetFrame() const;
    // The view's rectangle in its parent.
    Rect GetBounds() const;

  protected:
    short clickCount_ = 1;
    void* window_ = nullptr;
    int left_ = 0, top_ = 0;
    int width_ = 515, height_ = 324;
};

class KView : public WView {};
