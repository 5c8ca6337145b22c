#include "scene/WView.h"

#include <algorithm>

void WView::ResizeTo(int width, int height) {
    width_ = std::max(width, 1);
    height_ = std::max(height, 1);
}

void WView::MoveBy(int dx, int dy, bool) {
    left_ += dx;
    top_ += dy;
}

Rect WView::GetFrame() const {
    return {0, 0, static_cast<int16>(height_), static_cast<int16>(width_)};
}

Rect WView::GetBounds() const {
    return {static_cast<int16>(top_), static_cast<int16>(left_), static_cast<int16>(top_ + height_),
            static_cast<int16>(left_ + width_)};
}
