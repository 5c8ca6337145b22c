#include "hosts/FilterHost.h"

#include "hosts/DisplayPixels.h"
#include "hosts/HostMemory.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace plumet::hosts {

namespace {

// advanceState takes no arguments, so the running host is found here. One
// filter runs at a time, on the host's thread.
FilterHost* gActiveHost = nullptr;

OSErr AdvanceStateThunk() {
    return gActiveHost ? gActiveHost->AdvanceState() : OSErr(filterBadParameters);
}

Boolean NeverAbort() {
    return 0;
}
void IgnoreProgress(int32, int32) {}
OSErr IgnoreEvent(void*) {
    return noErr;
}

bool IsEmpty(const Rect& r) {
    return r.top >= r.bottom || r.left >= r.right;
}

// Floor of value * rate / 65536 for a 16.16 rate.
int64_t Subsampled(int64_t value, int32_t rate) {
    const int64_t product = value * int64_t(rate);
    return product >= 0 ? product / 65536 : -((-product + 65535) / 65536);
}

} // namespace

int16 FilterHost::FilterCaseFor(const HostImage& image, const FilterSetup& setup) {
    if (!setup.reportFilterCases) return filterCaseNotReported;
    const bool selected = setup.selection.has_value();
    if (setup.floatingSelection) return filterCaseFloatingSelection;
    if (!image.hasAlpha)
        return selected ? filterCaseFlatImageWithSelection : filterCaseFlatImageNoSelection;
    if (setup.protectTransparency)
        return selected ? filterCaseProtectedTransparencyWithSelection
                        : filterCaseProtectedTransparencyNoSelection;
    return selected ? filterCaseEditableTransparencyWithSelection
                    : filterCaseEditableTransparencyNoSelection;
}

std::unique_ptr<FilterHost> FilterHost::Create(HostImage source, const FilterSetup& setup,
                                               std::string& error) {
    if (source.width <= 0 || source.height <= 0 || source.width > kMaxImageSide ||
        source.height > kMaxImageSide ||
        source.pixels.size() != source.RowBytes() * std::size_t(source.height)) {
        error = "the image cannot be handed to a filter (empty, inconsistent or larger than " +
                std::to_string(kMaxImageSide) + " pixels a side)";
        return nullptr;
    }
    if (source.model == ColourModel::CMYK && source.hasAlpha) {
        error = "a CMYK image with transparency cannot be handed to the filter";
        return nullptr;
    }
    VRect selection{0, 0, source.height, source.width};
    if (setup.selection) {
        const VRect& s = *setup.selection;
        if (s.top >= s.bottom || s.left >= s.right) {
            error = "the selection is empty";
            return nullptr;
        }
        if (s.top < 0 || s.left < 0 || s.bottom > source.height || s.right > source.width) {
            error = "the selection (" + std::to_string(s.left) + "," + std::to_string(s.top) +
                    " to " + std::to_string(s.right) + "," + std::to_string(s.bottom) +
                    ") is not inside the image of " + std::to_string(source.width) + " by " +
                    std::to_string(source.height) + " pixels";
            return nullptr;
        }
        selection = s;
    }

    std::unique_ptr<FilterHost> host(new (std::nothrow) FilterHost());
    if (!host) {
        error = "out of memory";
        return nullptr;
    }
    try {
        host->destination_ = source;
    } catch (const std::bad_alloc&) {
        error = "out of memory for a copy of the image";
        return nullptr;
    }
    host->source_ = std::move(source);
    host->selection_ = selection;
    host->protectedAlpha_ =
        host->source_.hasAlpha && (setup.protectTransparency || setup.floatingSelection);

    const HostImage& image = host->source_;
    FilterRecord& r = host->record_;
    r.abortProc = NeverAbort;
    r.progressProc = IgnoreProgress;
    r.imageSize = Point{int16(image.height), int16(image.width)};
    r.planes = int16(image.Planes());
    r.filterRect = Rect{int16(selection.top), int16(selection.left), int16(selection.bottom),
                        int16(selection.right)};
    r.background = RGBColor{0xFFFF, 0xFFFF, 0xFFFF};
    r.foreground = RGBColor{0, 0, 0};
    r.maxSpace = setup.maxSpace > 0 ? setup.maxSpace : AvailableMemoryForFilter();
    r.inLoPlane = r.outLoPlane = 0;
    r.inHiPlane = r.outHiPlane = int16(image.Planes() - 1);
    r.autoMask = 1; // the host masks the result by the selection
    r.imageMode = image.model == ColourModel::CMYK ? plugInModeCMYKColor : plugInModeRGBColor;
    r.inputRate = r.maskRate = 0x10000;
    r.inputPadding = -1;
    r.advanceState = AdvanceStateThunk;
    r.displayPixels = DisplayPixelsOnSurface;
    r.processEvent = IgnoreEvent;
    r.colorServices = nullptr;
    r.platformData = &host->platformData_; // hwnd 0: the host has no window
    r.filterCase = FilterCaseFor(image, setup);
    const bool layer = image.hasAlpha && setup.reportFilterCases && !setup.floatingSelection;
    r.inLayerPlanes = int16(layer ? image.ColourPlanes() : 0);
    r.inTransparencyMask = int16(layer ? 1 : 0);
    host->descriptor_.descriptorParametersVersion = 1;
    host->descriptor_.playInfo = setup.showDialog ? plugInDialogDisplay : plugInDialogDontDisplay;
    host->descriptor_.recordInfo = plugInDialogDontDisplay;
    r.descriptorParameters = &host->descriptor_;
    r.errorString = &host->errorString_;

    host->Activate();
    return host;
}

void FilterHost::Activate() {
    gActiveHost = this;
}

FilterHost::~FilterHost() {
    if (gActiveHost == this) gActiveHost = nullptr;
}

bool FilterHost::RectanglesEmpty() const {
    return IsEmpty(record_.inRect) && IsEmpty(record_.outRect) && IsEmpty(record_.maskRect);
}

std::string FilterHost::ErrorStringText() const {
    std::string text(reinterpret_cast<const char*>(errorString_ + 1), errorString_[0]);
    // The message is shown as one line.
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = ' ';
    return text;
}

uint8_t FilterHost::ToBuffer(uint8_t value, int plane) const {
    return source_.model == ColourModel::CMYK && plane < 4 ? uint8_t(255 - value) : value;
}

void FilterHost::WriteBack() {
    if (out_.bytes.empty()) return;
    const int planes = destination_.Planes();
    const int alpha = destination_.hasAlpha ? destination_.ColourPlanes() : -1;
    const int n = out_.hi - out_.lo + 1;
    const int64_t rowBytes = int64_t(out_.rect.right - out_.rect.left) * n;
    // Only the selection is changed: the host masks the result by it.
    const int32_t top = std::max(out_.rect.top, selection_.top);
    const int32_t bottom = std::min(out_.rect.bottom, selection_.bottom);
    const int32_t left = std::max(out_.rect.left, selection_.left);
    const int32_t right = std::min(out_.rect.right, selection_.right);
    for (int32_t row = top; row < bottom; ++row) {
        const uint8_t* src = out_.bytes.data() + (row - out_.rect.top) * rowBytes +
                             int64_t(left - out_.rect.left) * n;
        uint8_t* dst = destination_.Pixel(row, left);
        for (int32_t col = left; col < right; ++col, src += n, dst += planes)
            for (int p = out_.lo; p <= out_.hi; ++p) {
                if (protectedAlpha_ && p == alpha) continue; // the host protects transparency
                dst[p] = ToBuffer(src[p - out_.lo], p);
            }
    }
}

void FilterHost::ReleaseBuffers() {
    inBuffer_ = {};
    out_ = OutBuffer{};
    record_.inData = record_.outData = record_.maskData = nullptr;
    record_.inRowBytes = record_.outRowBytes = record_.maskRowBytes = 0;
}

void FilterHost::Complete() {
    WriteBack();
    ReleaseBuffers();
}

void FilterHost::Discard() {
    ReleaseBuffers();
    // What earlier calls wrote back is undone too: a failed run leaves the
    // image as it was. The copy reuses the destination's memory.
    destination_.pixels = source_.pixels;
}

void FilterHost::FillInput(const Rect& rect, int lo, int hi, uint8_t* dst, int64_t rowBytes) const {
    const int n = hi - lo + 1;
    const uint8_t pad = uint8_t(record_.inputPadding < 0 ? 0 : record_.inputPadding);
    for (int32_t r = rect.top; r < rect.bottom; ++r, dst += rowBytes) {
        const int64_t row = Subsampled(r, record_.inputRate);
        uint8_t* px = dst;
        for (int32_t c = rect.left; c < rect.right; ++c, px += n) {
            const int64_t col = Subsampled(c, record_.inputRate);
            if (row < 0 || col < 0 || row >= source_.height || col >= source_.width) {
                std::memset(px, pad, size_t(n));
                continue;
            }
            const uint8_t* src = source_.Pixel(int(row), int(col));
            for (int p = lo; p <= hi; ++p)
                px[p - lo] = ToBuffer(src[p], p);
        }
    }
}

OSErr FilterHost::AdvanceState() {
    WriteBack();
    ReleaseBuffers();
    FilterRecord& r = record_;
    const int planes = source_.Planes();
    const auto planesValid = [planes](int lo, int hi) {
        return 0 <= lo && lo <= hi && hi < planes;
    };

    const Rect in = r.inRect;
    const Rect out = r.outRect;
    const bool wantIn = !IsEmpty(in);
    const bool wantOut = !IsEmpty(out);
    int64_t inBytes = 0, outBytes = 0;
    if (wantIn) {
        if (!planesValid(r.inLoPlane, r.inHiPlane) || r.inputRate <= 0 || r.inputPadding < -1 ||
            r.inputPadding > 255)
            return filterBadParameters;
        const bool inside = Subsampled(in.top, r.inputRate) >= 0 &&
                            Subsampled(in.left, r.inputRate) >= 0 &&
                            Subsampled(in.bottom - 1, r.inputRate) < source_.height &&
                            Subsampled(in.right - 1, r.inputRate) < source_.width;
        if (!inside && r.inputPadding == -1) return filterBadParameters;
        inBytes =
            int64_t(in.bottom - in.top) * (in.right - in.left) * (r.inHiPlane - r.inLoPlane + 1);
    }
    if (wantOut) {
        if (!planesValid(r.outLoPlane, r.outHiPlane) || out.top < 0 || out.left < 0 ||
            out.bottom > source_.height || out.right > source_.width)
            return filterBadParameters;
        outBytes = int64_t(out.bottom - out.top) * (out.right - out.left) *
                   (r.outHiPlane - r.outLoPlane + 1);
    }
    if (inBytes + outBytes > int64_t(r.maxSpace)) return memFullErr;

    // Where the layout allows it, the buffers are the images themselves: the
    // source as inData, the destination as outData, so that a large image is
    // not held twice more and nothing is copied.
    const bool sameLayout = source_.model != ColourModel::CMYK;
    if (wantIn && sameLayout && r.inputRate == 0x10000 && r.inLoPlane == 0 &&
        r.inHiPlane == planes - 1 && in.top >= 0 && in.left >= 0 && in.bottom <= source_.height &&
        in.right <= source_.width) {
        r.inData = source_.Pixel(in.top, in.left);
        r.inRowBytes = int32(source_.RowBytes());
        inBytes = 0;
    }
    const bool outDirect = wantOut && sameLayout && !protectedAlpha_ && r.outLoPlane == 0 &&
                           r.outHiPlane == planes - 1 && out.top >= selection_.top &&
                           out.left >= selection_.left && out.bottom <= selection_.bottom &&
                           out.right <= selection_.right;
    if (outDirect) {
        r.outData = destination_.Pixel(out.top, out.left);
        r.outRowBytes = int32(destination_.RowBytes());
        outBytes = 0;
    }
    try {
        if (wantIn && inBytes > 0) {
            inBuffer_.resize(size_t(inBytes));
            const int64_t rowBytes = int64_t(in.right - in.left) * (r.inHiPlane - r.inLoPlane + 1);
            FillInput(in, r.inLoPlane, r.inHiPlane, inBuffer_.data(), rowBytes);
            r.inData = inBuffer_.data();
            r.inRowBytes = int32(rowBytes);
        }
        if (wantOut && !outDirect) {
            out_.rect = VRect{out.top, out.left, out.bottom, out.right};
            out_.lo = r.outLoPlane;
            out_.hi = r.outHiPlane;
            out_.bytes.resize(size_t(outBytes));
            const int n = out_.hi - out_.lo + 1;
            const int64_t rowBytes = int64_t(out.right - out.left) * n;
            for (int32_t row = out.top; row < out.bottom; ++row) {
                uint8_t* dst = out_.bytes.data() + (row - out.top) * rowBytes;
                for (int32_t col = out.left; col < out.right; ++col, dst += n) {
                    const uint8_t* src = destination_.Pixel(row, col);
                    for (int p = out_.lo; p <= out_.hi; ++p)
                        dst[p - out_.lo] = ToBuffer(src[p], p);
                }
            }
            r.outData = out_.bytes.data();
            r.outRowBytes = int32(rowBytes);
        }
    } catch (const std::bad_alloc&) {
        ReleaseBuffers();
        return memFullErr;
    }
    return noErr;
}

} // namespace plumet::hosts
