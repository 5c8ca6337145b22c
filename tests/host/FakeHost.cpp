#include "tests/host/FakeHost.h"

#include "sdk/PIGlobal.h"

FakeHost* FakeHost::current = nullptr;

namespace {
OSErr FakeAdvance() {
    FakeHost* h = FakeHost::current;
    h->inRects.push_back(h->record.inRect);
    h->rates.push_back(h->record.inputRate);
    if (h->failOnCall && int(h->inRects.size()) == h->failOnCall) return h->failWith;
    FilterRecord& r = h->record;
    const int inPlanes = r.inHiPlane - r.inLoPlane + 1;
    const int outPlanes = r.outHiPlane - r.outLoPlane + 1;
    const int rate = r.inputRate >> 16 ? r.inputRate >> 16 : 1;
    const int iw = r.inRect.right - r.inRect.left, ih = r.inRect.bottom - r.inRect.top;
    const int ow = r.outRect.right - r.outRect.left, oh = r.outRect.bottom - r.outRect.top;
    h->inBuffer.assign(std::size_t(iw > 0 ? iw : 0) * (ih > 0 ? ih : 0) * inPlanes, 0);
    h->outBuffer.assign(std::size_t(ow > 0 ? ow : 0) * (oh > 0 ? oh : 0) * outPlanes, 0);
    for (int y = 0; y < ih; ++y)
        for (int x = 0; x < iw; ++x)
            for (int p = 0; p < inPlanes; ++p) {
                const int sy = (r.inRect.top + y) * rate, sx = (r.inRect.left + x) * rate;
                h->inBuffer[(std::size_t(y) * iw + x) * inPlanes + p] =
                    h->image[(std::size_t(sy) * h->width + sx) * h->planes + r.inLoPlane + p];
            }
    for (int y = 0; y < oh; ++y)
        for (int x = 0; x < ow; ++x)
            for (int p = 0; p < outPlanes; ++p)
                h->outBuffer[(std::size_t(y) * ow + x) * outPlanes + p] =
                    h->image[(std::size_t(r.outRect.top + y) * h->width + r.outRect.left + x) *
                                 h->planes +
                             r.outLoPlane + p];
    r.inData = h->inBuffer.empty() ? nullptr : h->inBuffer.data();
    r.outData = h->outBuffer.empty() ? nullptr : h->outBuffer.data();
    r.inRowBytes = iw * inPlanes - h->shortRows;
    r.outRowBytes = ow * outPlanes - h->shortRows;
    return noErr;
}

OSErr FakeDisplay(const PSPixelMap*, const VRect*, int32, int32, void*) {
    ++FakeHost::current->displayCalls;
    return noErr;
}
} // namespace

FakeHost::FakeHost(int w, int h, int p, int16 mode, int16 filterCase)
    : width(w), height(h), planes(p), image(std::size_t(w) * h * p) {
    for (std::size_t i = 0; i < image.size(); ++i)
        image[i] = static_cast<uint8>(i * 7);
    current = this;
    record.imageSize = {static_cast<int16>(h), static_cast<int16>(w)};
    record.planes = static_cast<int16>(p);
    record.filterRect = {0, 0, static_cast<int16>(h), static_cast<int16>(w)};
    record.maxSpace = 1 << 30;
    record.imageMode = mode;
    record.filterCase = filterCase;
    record.inLayerPlanes = p == 4 && filterCase >= 4 ? 3 : 0;
    record.inTransparencyMask = p == 4 && filterCase >= 4 ? 1 : 0;
    record.advanceState = &FakeAdvance;
    record.displayPixels = &FakeDisplay;
    record.platformData = &platform;
    // The tests never show a window: they run as a repeat without a dialog.
    descriptor.playInfo = plugInDialogDontDisplay;
    record.descriptorParameters = &descriptor;
    record.errorString = &errorText;
}

FakeHost::~FakeHost() {
    PIGlobalFree(record.parameters);
    if (current == this) current = nullptr;
}
