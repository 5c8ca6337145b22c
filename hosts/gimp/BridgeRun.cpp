#include "hosts/gimp/BridgeRun.h"

#include "hosts/FilterHost.h"
#include "hosts/FilterRun.h"
#include "hosts/HostState.h"
#include "hosts/ResultCodes.h"
#include "hosts/gimp/DrawablePixels.h"
#include "hosts/gimp/GimpColorPicker.h"
#include "sdk/PIGlobal.h"

#include <memory>
#include <vector>

namespace plumet::hosts::gimp {

namespace {

// The filter's record, freed however the run ends.
struct KeptRecord {
    Handle block = nullptr;
    ~KeptRecord() { PIGlobalFree(block); }
};

void LoadKept(const std::string& procedure, const std::string& owner, KeptRecord& kept) {
    const gint size = gimp_get_data_size(procedure.c_str());
    if (size <= 0) return;
    std::vector<uint8_t> bytes(std::size_t(size), 0);
    if (!gimp_get_data(procedure.c_str(), bytes.data())) return;
    std::string why;
    // A record that is damaged or another filter's is not handed on.
    DecodeKeptRecord(bytes.data(), bytes.size(), owner, kept.block, why);
}

void SaveKept(const std::string& procedure, const std::string& owner, Handle block) {
    if (!block || PIGlobalSize(block) > kMaxKeptRecord) return;
    const std::vector<uint8_t> bytes = EncodeKeptRecord(owner, block);
    gimp_set_data(procedure.c_str(), bytes.data(), guint32(bytes.size()));
}

RGBColor ToRGBColor(const GimpRGB& color) {
    guchar r = 0, g = 0, b = 0;
    gimp_rgb_get_uchar(&color, &r, &g, &b);
    return RGBColor{uint16(r * 257), uint16(g * 257), uint16(b * 257)};
}

void ReportProgress(int32 done, int32 total) {
    if (total > 0) gimp_progress_update(double(done) / double(total));
}

BridgeOutcome Failure(GimpPDBStatusType status, const std::string& message) {
    return BridgeOutcome{status, message};
}

} // namespace

BridgeOutcome RunFilterOnDrawable(FilterModule& module, const std::string& procedure,
                                  GimpRunMode mode, gint32 image, gint32 drawable) {
    const std::string& name = module.Info().name;
    if (!gimp_item_is_valid(drawable) || !gimp_item_is_drawable(drawable))
        return Failure(GIMP_PDB_CALLING_ERROR, name + ": no drawable to filter");
    if (!gimp_drawable_is_rgb(drawable))
        return Failure(GIMP_PDB_CALLING_ERROR, name + " works on RGB layers only");

    DrawableArea area;
    if (!gimp_drawable_mask_intersect(drawable, &area.x, &area.y, &area.width, &area.height))
        return {}; // the selection does not touch the layer: nothing to do

    const bool layer = gimp_item_is_layer(drawable);
    FilterSetup setup;
    if (!gimp_selection_is_empty(image)) setup.selection = VRect{0, 0, area.height, area.width};
    setup.protectTransparency = layer && gimp_layer_get_lock_alpha(drawable);
    setup.floatingSelection = layer && gimp_layer_is_floating_sel(drawable);
    setup.showDialog = mode == GIMP_RUN_INTERACTIVE;

    std::string error;
    HostImage pixels;
    if (!ReadDrawable(drawable, area, pixels, error))
        return Failure(GIMP_PDB_EXECUTION_ERROR, name + ": " + error);
    std::unique_ptr<FilterHost> host = FilterHost::Create(std::move(pixels), setup, error);
    if (!host) return Failure(GIMP_PDB_EXECUTION_ERROR, name + ": " + error);

    FilterRecord& record = host->Record();
    GimpRGB color;
    if (gimp_context_get_foreground(&color)) record.foreground = ToRGBColor(color);
    if (gimp_context_get_background(&color)) record.background = ToRGBColor(color);
    record.progressProc = ReportProgress;
    if (mode == GIMP_RUN_INTERACTIVE) {
        // The filter's window stands over the image window that started it.
        static_cast<PlatformData*>(record.platformData)->hwnd =
            intptr_t(gimp_progress_get_window_handle());
        record.colorServices = ChooseColorWithGimp;
    }

    const std::string owner = KeptRecordOwner(module.Info());
    KeptRecord kept;
    LoadKept(procedure, owner, kept);
    const bool repeat = mode != GIMP_RUN_INTERACTIVE && kept.block;

    gimp_progress_init(name.c_str());
    const RunOutcome outcome = RunFilter(module, *host, kept.block, repeat);
    SaveKept(procedure, owner, kept.block);
    gimp_progress_end();

    if (outcome.result > 0) return Failure(GIMP_PDB_CANCEL, "");
    if (outcome.result < 0) {
        const ResultReport report = ReportForResult(outcome.result, host->ErrorStringText());
        return Failure(GIMP_PDB_EXECUTION_ERROR,
                       name + ": " +
                           (outcome.hostMessage.empty()
                                ? report.message
                                : outcome.hostMessage + ": " + report.message));
    }
    if (!WriteDrawable(drawable, area, host->Source(), host->Destination(), error))
        return Failure(GIMP_PDB_EXECUTION_ERROR, name + ": " + error);
    if (mode == GIMP_RUN_INTERACTIVE) gimp_displays_flush();
    return {};
}

} // namespace plumet::hosts::gimp
