// The host's side of one filter run: the FilterRecord made from an image,
// and the pixel exchange behind advanceState.
//
// The host keeps two images. The source is what inData shows; it never
// changes during a run. The destination starts as a copy of the source and
// receives every outData the filter hands back. Each advanceState first
// writes the outData of the previous call back into the destination (for the
// rectangle and planes it was made for, clipped to the selection), then makes
// fresh interleaved buffers for the rectangles and planes now asked for.
// Where a request has the images' own layout (all planes, full rate, RGB,
// inside the image and, for the output, inside the selection) the buffers
// are the images themselves: inData points into the source and outData into
// the destination, which then changes as the filter writes.
//
// CMYK in the buffers is stored inverted, 255 = no ink, as image editors have
// long handed CMYK to filters: planes 0 to 2 then read roughly as red, green
// and blue. The images themselves hold ink amounts (0 = no ink).
#ifndef PLUMET_HOSTS_FILTERHOST_H
#define PLUMET_HOSTS_FILTERHOST_H

#include "hosts/HostImage.h"
#include "sdk/PIFilter.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace plumet::hosts {

struct FilterSetup {
    // The selection in image pixels; none: the whole image.
    std::optional<VRect> selection;
    // For a layer with transparency: protect it (cases 6/7) instead of
    // letting the filter edit it (cases 4/5).
    bool protectTransparency = false;
    // The pixels are a floating selection (case 3): the filter is handed the
    // colour planes only, and the transparency stays the host's.
    bool floatingSelection = false;
    // false: filterCase 0, as a host that does not report filter cases.
    bool reportFilterCases = true;
    // The play flag: false runs the filter without its dialog.
    bool showDialog = true;
    // Memory the filter may ask for; 0: what the machine has available.
    int32_t maxSpace = 0;
};

class FilterHost {
  public:
    // Fails with a message for an image the interface cannot describe or a
    // selection that is empty or not inside the image.
    static std::unique_ptr<FilterHost> Create(HostImage source, const FilterSetup& setup,
                                              std::string& error);
    ~FilterHost();
    FilterHost(const FilterHost&) = delete;
    FilterHost& operator=(const FilterHost&) = delete;

    FilterRecord& Record() { return record_; }

    // Makes this the host that advanceState reaches. Create does it; a
    // caller that keeps several hosts calls it before each run.
    void Activate();
    const HostImage& Source() const { return source_; }
    const HostImage& Destination() const { return destination_; }

    // What FilterRecord.advanceState does: noErr, memFullErr when the buffers
    // cannot be had within maxSpace, filterBadParameters for a request that
    // is inconsistent (planes out of range, a rate of 0, an output rectangle
    // outside the image, pixels outside the image without padding).
    OSErr AdvanceState();

    // The end of a run: the last outData goes into the destination and the
    // buffers are released. Discard, for a failed run, releases them without
    // writing back and returns the destination to the source.
    void Complete();
    void Discard();

    // True when inRect, outRect and maskRect are all empty, the sign for the
    // host to stop calling the continue selector.
    bool RectanglesEmpty() const;

    void SetMaxSpace(int32_t bytes) { record_.maxSpace = bytes; }

    // The filter's message for errReportString, empty if it left none.
    std::string ErrorStringText() const;

    // The filter case this host reports for an image and a setup.
    static int16 FilterCaseFor(const HostImage& image, const FilterSetup& setup);

  private:
    FilterHost() = default;

    struct OutBuffer {
        VRect rect{};
        int lo = 0, hi = -1;
        std::vector<uint8_t> bytes;
    };

    void WriteBack();
    void ReleaseBuffers();
    void FillInput(const Rect& rect, int lo, int hi, uint8_t* dst, int64_t rowBytes) const;
    uint8_t ToBuffer(uint8_t value, int plane) const;

    HostImage source_;
    HostImage destination_;
    VRect selection_{};
    bool protectedAlpha_ = false;
    FilterRecord record_{};
    PlatformData platformData_{};
    PIDescriptorParameters descriptor_{};
    Str255 errorString_{};
    std::vector<uint8_t> inBuffer_;
    OutBuffer out_;
};

} // namespace plumet::hosts

#endif
