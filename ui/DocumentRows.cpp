// The combo boxes of the main window whose choice the workspace keeps: their
// rows and the flows that run when a row is chosen.
#include "curves/VAnalyticPathTable.h"
#include "curves/VCustomPathData.h"
#include "resources/Strings.h"
#include "text/FontList.h"
#include "ui/VZarbesoDocument.h"

#include <algorithm>
#include <cstdio>
#include <strings.h>

namespace {
const std::string kHyphens(30, '-');
constexpr const char* kViewRows[] = {"Home", "Front", "Top", "Bottom", "Left Side", "Right Side"};
constexpr const char* kTextureRows[] = {"Clouds", "Leopard Skin", "Neon", "Sunflower"};
constexpr int kFirstTextureBitmap = 9000;

std::int32_t FindRow(const std::vector<std::string>& rows, const std::string& name) {
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (strcasecmp(rows[i].c_str(), name.c_str()) == 0) return std::int32_t(i);
    return -1;
}

// The file's name without its folder, as the Surface combo shows it.
std::string FileTitle(const char* path) {
    const std::string full = path;
    const std::size_t slash = full.find_last_of('/');
    return slash == std::string::npos ? full : full.substr(slash + 1);
}
} // namespace

// ---- View ------------------------------------------------------------------------

std::vector<std::string> VZarbesoDocument::GetViewRows() const {
    std::vector<std::string> rows(std::begin(kViewRows), std::end(kViewRows));
    rows.push_back(plumet::LoadString(plumet::kStrCustomViewRow));
    rows.insert(rows.end(), customViewNames.begin(), customViewNames.end());
    if (!customViewNames.empty()) rows.push_back(kHyphens);
    rows.push_back("Set View...");
    return rows;
}

void VZarbesoDocument::SelectViewRow(std::int32_t row) {
    const std::int32_t custom = row - kFirstCustomViewRow;
    keepViewSelection = 1;
    if (row >= 0 && row < kViewRowCustom) {
        view_->SetStandardView(row + 1, 0, false);
        selectedView = row;
    } else if (custom >= 0 && custom < GetCustomViewCount()) {
        view_->SetStandardView(VZarbesoView::kCustom, custom, false);
        selectedView = row;
    }
    keepViewSelection = 0;
    controls.viewRow = selectedView;
    ClearRender(false);
    Redraw();
}

std::string VZarbesoDocument::ProposeCustomViewName() const {
    const std::string stem = plumet::LoadString(plumet::kStrCustomViewStem);
    const std::vector<std::string> rows = GetViewRows();
    char name[300];
    for (std::int32_t number = nextCustomViewNumber;; ++number) {
        std::snprintf(name, sizeof name, "%s %d", stem.c_str(), int(number));
        if (std::find(rows.begin(), rows.end(), name) == rows.end()) return name;
    }
}

std::int32_t VZarbesoDocument::FindViewRow(const std::string& name) const {
    return FindRow(GetViewRows(), name);
}

void VZarbesoDocument::AddCustomView(const std::string& name) {
    customViewNames.push_back(name);
    if (GetCustomViewCount() > kMaxCustomViews) {
        // The earliest view makes room.
        customViewNames.erase(customViewNames.begin());
        view_->DeleteCustomView(0);
    }
    ReplaceCustomView(kViewRowCustom + GetCustomViewCount());
}

void VZarbesoDocument::ReplaceCustomView(std::int32_t row) {
    selectedView = row;
    controls.viewRow = row;
    view_->SaveCustomView(row - kFirstCustomViewRow);
    ++nextCustomViewNumber;
    UpdateControls();
}

// ---- Font and Final Render ---------------------------------------------------------

void VZarbesoDocument::SelectFontRow(std::int32_t row) {
    if (row < 0 || !view_->SetFont(std::uint32_t(row) + 1)) return;
    controls.fontRow = row;
    ClearRender(false);
    Redraw();
}

std::vector<std::string> VZarbesoDocument::GetRendererRows() const {
    return renderer_->FillRendererNames();
}

void VZarbesoDocument::SelectRendererRow(std::int32_t row) {
    const std::vector<std::string> names = GetRendererRows();
    if (row < 0 || row >= std::int32_t(names.size())) return;
    renderer_->SelectFinalRenderer(names[std::size_t(row)].c_str());
    controls.rendererRow = row;
    ClearRender(false);
    Redraw();
}

// ---- Path ------------------------------------------------------------------------

std::int32_t VZarbesoDocument::GetPathRowCount() const {
    const std::int32_t custom = view_->GetCustomPathCount();
    return kFirstCustomPathRow + custom + (custom > 0 ? 1 : 0) + 2;
}

VPathRowKind VZarbesoDocument::GetPathRowKind(std::int32_t row) const {
    const std::int32_t count = GetPathRowCount();
    if (row >= 0 && row < kAnalyticPathCount) return VPathRowKind::kAnalytic;
    if (row >= kFirstCustomPathRow && row < kFirstCustomPathRow + view_->GetCustomPathCount())
        return VPathRowKind::kCustom;
    if (row == count - 2) return VPathRowKind::kNewPath;
    if (row == count - 1) return VPathRowKind::kDeletePath;
    return VPathRowKind::kSeparator;
}

std::vector<std::string> VZarbesoDocument::GetPathRows() const {
    std::vector<std::string> rows;
    for (std::int32_t i = 1; i <= kAnalyticPathCount; ++i)
        rows.push_back(GetAnalyticPathEntry(i)->name);
    rows.push_back(kHyphens);
    for (std::int32_t i = 1; i <= view_->GetCustomPathCount(); ++i)
        rows.push_back(view_->GetCustomPath(i)->name);
    if (view_->GetCustomPathCount() > 0) rows.push_back(kHyphens);
    rows.push_back("New Path...");
    rows.push_back("Delete Path...");
    return rows;
}

void VZarbesoDocument::StoreCurrentCustomPath() {
    // Edits of the custom path in use are kept when another path is chosen.
    std::string name;
    if (currentCustomPath > 0 && view_->HasCurveModel() &&
        view_->GetCustomPathName(currentCustomPath, name))
        view_->StoreCustomPath(currentCustomPath, name.c_str());
}

void VZarbesoDocument::SelectPathRow(std::int32_t row) {
    drawingPath = 0;
    StoreCurrentCustomPath();
    switch (GetPathRowKind(row)) {
    case VPathRowKind::kAnalytic:
        selectedPath = row;
        currentCustomPath = 0;
        view_->SetPath(row + 1, pathValues[row + 1][0], pathValues[row + 1][1]);
        break;
    case VPathRowKind::kCustom:
        // A record that cannot be reopened leaves the path as it was.
        if (view_->SelectCustomPath(row - kPathRowSeparator, nullptr)) {
            selectedPath = row;
            currentCustomPath = row - kPathRowSeparator;
        }
        break;
    default: // a separator, or the window's New Path and Delete Path flows
        break;
    }
    controls.pathRow = selectedPath;
    view_->ShowPath(view_->IsPathShown());
    ClearRender(false);
    Redraw();
}

void VZarbesoDocument::SetPathValue(std::int32_t which, float value, bool redraw) {
    const std::int32_t number = controls.pathRow + 1;
    if (which < 1 || which > 2 || number < 1 || number > kAnalyticPathCount) return;
    pathValues[number][which - 1] = std::int32_t(value);
    view_->SetPathSlider(which, std::int32_t(value));
    if (!redraw) return;
    ClearRender(false);
    Redraw();
}

std::string VZarbesoDocument::ProposeCustomPathName() const {
    std::string name;
    view_->MakeUniqueName(plumet::LoadString(plumet::kStrCustomPathStem).c_str(), name);
    return name;
}

std::int32_t VZarbesoDocument::FindPathRow(const std::string& name) const {
    return FindRow(GetPathRows(), name);
}

bool VZarbesoDocument::NewCustomPath(const std::string& name) {
    const std::int32_t index = view_->GetCustomPathCount() + 1;
    if (!view_->StoreCustomPath(index, name.c_str())) return false;
    currentCustomPath = index;
    selectedPath = kPathRowSeparator + index;
    controls.pathRow = selectedPath;
    drawingPath = 1;
    view_->DropPath();
    ClearRender(false);
    Redraw();
    UpdateControls();
    return true;
}

bool VZarbesoDocument::ConvertPath(const std::string& name) {
    if (!view_->HasPath() || view_->HasCurveModel()) return false;
    const std::int32_t index = view_->GetCustomPathCount() + 1;
    if (!view_->StoreCustomPath(index, name.c_str())) return false;
    currentCustomPath = index;
    selectedPath = kPathRowSeparator + index;
    controls.pathRow = selectedPath;
    const bool converted = view_->ConvertToCustomPath();
    drawingPath = 0;
    ClearRender(false);
    Redraw();
    UpdateControls();
    return converted;
}

void VZarbesoDocument::DeleteCustomPathRows(std::vector<std::int32_t> rows) {
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    for (auto it = rows.rbegin(); it != rows.rend(); ++it) {
        if (GetPathRowKind(*it) != VPathRowKind::kCustom) continue;
        if (*it == selectedPath)
            selectedPath = 0;
        else if (*it < selectedPath)
            --selectedPath;
        view_->DeleteCustomPath(*it - kPathRowSeparator);
    }
    // The path in use is dropped and chosen again from what stays.
    currentCustomPath = 0;
    view_->DropPath();
    SelectPathRow(selectedPath);
    UpdateControls();
}

// ---- Surface ---------------------------------------------------------------------

std::int32_t VZarbesoDocument::GetSurfaceRowCount() const {
    const std::int32_t custom = std::int32_t(customTextures.GetCount());
    return kFirstCustomTextureRow + custom + (custom > 0 ? 1 : 0) + 1;
}

std::vector<std::string> VZarbesoDocument::GetSurfaceRows() const {
    std::vector<std::string> rows = {"Color", kHyphens};
    rows.insert(rows.end(), std::begin(kTextureRows), std::end(kTextureRows));
    rows.push_back(kHyphens);
    for (std::uint32_t i = 1; i <= customTextures.GetCount(); ++i)
        rows.push_back(FileTitle(static_cast<VTextureFileName*>(customTextures.EntryAt(i))->path));
    if (customTextures.GetCount() > 0) rows.push_back(kHyphens);
    rows.push_back("New Texture...");
    return rows;
}

void VZarbesoDocument::SelectSurfaceRow(std::int32_t row) {
    const std::int32_t custom = row - kFirstCustomTextureRow;
    if (row == kSurfaceRowColor) {
        const auto face = view_->GetFaceColor(), side = view_->GetSideColor();
        view_->SetFaceColor(face[0], face[1], face[2]);
        view_->SetSideColor(side[0], side[1], side[2]);
        selectedSurface = row;
    } else if (row >= kFirstTextureRow && row < kFirstTextureRow + 4) {
        if (view_->SetBuiltInTexture(kFirstTextureBitmap + row - kFirstTextureRow))
            selectedSurface = row;
    } else if (custom >= 0 && custom < std::int32_t(customTextures.GetCount())) {
        std::string path =
            static_cast<VTextureFileName*>(customTextures.EntryAt(std::uint32_t(custom) + 1))->path;
        if (view_->SetTextureFile(path)) {
            selectedSurface = row;
        } else {
            ReportTextureFailure(path);
            if (selectedSurface == row) selectedSurface = kSurfaceRowColor;
            SelectSurfaceRow(selectedSurface);
            return;
        }
    }
    controls.surfaceRow = selectedSurface;
    ClearRender(false);
    Redraw();
}

bool VZarbesoDocument::AddCustomTexture(const std::string& file) {
    std::string path = file;
    if (path.empty() || path.size() >= sizeof VTextureFileName::path ||
        !view_->SetTextureFile(path)) {
        if (!path.empty()) ReportTextureFailure(path);
        SelectSurfaceRow(selectedSurface);
        return false;
    }
    auto* entry = new VTextureFileName;
    std::snprintf(entry->path, sizeof entry->path, "%s", path.c_str());
    customTextures.Append(entry);
    selectedSurface = kFirstCustomTextureRow + std::int32_t(customTextures.GetCount()) - 1;
    controls.surfaceRow = selectedSurface;
    ClearRender(false);
    Redraw();
    UpdateControls();
    return true;
}
