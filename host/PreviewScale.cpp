#include "host/PreviewScale.h"

namespace {
constexpr int kDefaultViewWidth = 515;
constexpr int kDefaultViewHeight = 324;
constexpr int kControlsWidth = 240;
constexpr int kControlsHeight = 180;

int CeilDiv(int a, int b) {
    return (a + b - 1) / b;
}
} // namespace

int ComputePreviewScale(int w, int h, int desktopWidth, int desktopHeight) {
    const int availW = desktopWidth - kControlsWidth;
    const int availH = desktopHeight - kControlsHeight;
    if (availW > kDefaultViewWidth && availH > kDefaultViewHeight && w <= kDefaultViewWidth &&
        h <= kDefaultViewHeight)
        return 1;
    if (w <= availW && h <= availH) return 1;
    // A desktop smaller than the controls leaves no room at all: reduce as if
    // one pixel were left, which keeps the division defined.
    const int byH = availH < h ? CeilDiv(h, availH > 0 ? availH : 1) : 1;
    const int byW = availW < w ? CeilDiv(w, availW > 0 ? availW : 1) : 1;
    return byH > byW ? byH : byW;
}
