// The workspace and the scene: what OK saves, and how a saved workspace, or
// the defaults, come back into the scene and the controls.
#include "scene/VCLight.h"
#include "scene/VCModel.h"
#include "text/FontList.h"
#include "ui/VZarbesoDocument.h"
#include "ui/persistence/VZarbesoWorkspace.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {
// The Numeric Controls fields of the eight layout values, in the order of
// the layout values: slide, revolve, rotate, tilt, width, height, spacing,
// depth.
constexpr std::int32_t kLayoutFieldIds[kTextLayoutValueCount] = {1109, 1112, 1111, 1113,
                                                                 1114, 1115, 1110, 1116};

void CopyMatrix(const TQ3Matrix4x4& m, float* out) {
    std::memcpy(out, m.value, sizeof m.value);
}

// A stored "row + 1" as a row; -1 for a value that names none.
std::int32_t RowOf(std::int32_t stored) {
    return stored > 0 ? stored - 1 : -1;
}

// Coordinates of a scene stand far inside this; a stored value beyond it
// is damage, and products of such values could run out of range.
constexpr float kFarthest = 1.0e6f;

bool Sane(float v) {
    return std::isfinite(v) && std::fabs(v) <= kFarthest;
}

bool ToMatrix(const float* in, TQ3Matrix4x4& m) {
    std::memcpy(m.value, in, sizeof m.value);
    return std::all_of(in, in + 16, Sane);
}
} // namespace

// ---- saving ------------------------------------------------------------------------

void VZarbesoDocument::SaveCamera(VZarbesoWorkspace& w) const {
    const DAngleAspectCamera& camera = *view_->camera;
    w.camera.aspectRatio = camera.GetAspect();
    w.camera.fieldOfView = camera.GetFieldOfView(); // over the longer side
    TQ3Matrix4x4 scale, orbit, pan;
    view_->GetAll(&scale, &orbit, &pan);
    CopyMatrix(scale, w.camera.scale);
    CopyMatrix(pan, w.camera.pan);
    CopyMatrix(orbit, w.camera.orbit);
    const std::int32_t row = controls.viewRow + 1;
    w.camera.viewRow = row >= 1 && row <= 7 ? row : 7;
}

// Copies one light's place and colour into the workspace.
class save_light_functoid : public KListFunctoid {
  public:
    void Apply(KListEntry* entry, void* workspace) override {
        const auto* light = static_cast<const VCLight*>(entry);
        KVector3D position;
        light->GetPosition(position);
        float rgb[3];
        light->GetColor(rgb[0], rgb[1], rgb[2]);
        static_cast<VZarbesoWorkspace*>(workspace)->AddLight(position, rgb);
    }
};

void VZarbesoDocument::SaveLights(VZarbesoWorkspace& w) const {
    const VZarbesoSceneManager* scene = view_->GetSceneManager();
    w.lighting.lightCount = 0;
    save_light_functoid save;
    scene->ForEachLight(save, &w);
    w.lighting.ambientIntensity =
        std::uint16_t(std::clamp(scene->ambientBrightness * 100.0f, 0.0f, 65535.0f));
    std::copy_n(scene->ambientColor, 3, w.lighting.ambientColor);
}

void VZarbesoDocument::SaveWorkspace() {
    VZarbesoModel* textModel = view_->GetTextModel();
    if (!textModel) return;
    workspace_ = std::make_unique<VZarbesoWorkspace>(false);
    VZarbesoWorkspace& w = *workspace_;

    w.app.saved = 1;
    w.app.lightIconSize = lightIconSize;
    w.app.link = controls.link;
    w.app.showTooltips = showTooltips;

    KVector3D position;
    textModel->GetPosition(position);
    w.SetModelPosition(position);
    TQ3Matrix4x4 m;
    textModel->GetRotationMatrix(m);
    w.SetModelRotation(&m.value[0][0]);
    textModel->GetScaleMatrix(m);
    w.SetModelScale({m.value[0][0], m.value[1][1], m.value[2][2], m.value[3][3]});

    SaveCamera(w);
    SaveLights(w);

    w.rendering.rendererRow = std::uint16_t(controls.rendererRow + 1);
    const auto face = view_->GetFaceColor();
    std::copy(face.begin(), face.end(), w.text.faceColor);
    std::copy(sideColor.begin(), sideColor.end(), w.text.sideColor);
    w.text.transparency = std::int32_t(100.0f - view_->GetOpacity());

    std::memset(w.text.text, 0, sizeof w.text.text);
    std::memcpy(
        w.text.text, controls.text.data(),
        std::min<std::size_t>({controls.text.size(), std::size_t(std::max(maxTextLength, 0)),
                               sizeof w.text.text - 1}));
    w.paths.pathRow = controls.pathRow + 1;
    w.font.fontRow = controls.fontRow + 1;

    for (std::int32_t i = 0; i < kTextLayoutValueCount; ++i)
        w.textAlignment.values[i] = view_->GetLayout(static_cast<TextLayoutValue>(i));

    w.switches.image = GetSwitch(VSwitch::kImage);
    w.switches.text = GetSwitch(VSwitch::kText);
    w.switches.path = GetSwitch(VSwitch::kPath);
    w.switches.lights = GetSwitch(VSwitch::kLights);
    w.switches.grid = GetSwitch(VSwitch::kGrid);

    StoreCurrentCustomPath();
    for (std::int32_t i = 1; i <= view_->GetCustomPathCount(); ++i)
        w.AddCustomPath(*view_->GetCustomPath(i));

    w.text.surfaceRow = controls.surfaceRow + 1;
    const std::int32_t custom = controls.surfaceRow - kFirstCustomTextureRow;
    if (custom >= 0) {
        // Only the custom texture in use is kept.
        if (auto* texture =
                static_cast<VTextureFileName*>(customTextures.EntryAt(std::uint32_t(custom) + 1)))
            w.AddCustomTexture(0, texture->path);
        w.text.surfaceRow = kFirstCustomTextureRow + 1;
    }
    std::memcpy(w.analyticPrefs.pathValues, pathValues, sizeof pathValues);
    w.WriteToFile();
}

// ---- applying ----------------------------------------------------------------------

void VZarbesoDocument::ApplyCamera(const VZarbesoWorkspace& w) {
    TQ3Matrix4x4 scale, orbit, pan;
    const bool saved = w.camera.viewRow != -1 && ToMatrix(w.camera.scale, scale) &&
                       ToMatrix(w.camera.orbit, orbit) && ToMatrix(w.camera.pan, pan);
    if (!saved) {
        SelectViewRow(0); // Home
        return;
    }
    view_->SetAll(&scale, &orbit, &pan);
    view_->camera->SetAspect(w.camera.aspectRatio);
    // The view keeps the angle over the longer side within 25 to 175 degrees.
    if (std::isfinite(w.camera.fieldOfView))
        view_->camera->SetFieldOfView(std::clamp(w.camera.fieldOfView, 25.0f, 175.0f));
    controls.viewRow = kViewRowCustom;
    selectedView = kViewRowCustom;
}

void VZarbesoDocument::ApplyLights(const VZarbesoWorkspace& w) {
    SetIntensity(w.lighting.ambientIntensity);
    SetAmbientColor(
        {w.lighting.ambientColor[0], w.lighting.ambientColor[1], w.lighting.ambientColor[2]});
    // The lights are made anew, each of its colour at its place.
    VZarbesoSceneManager* scene = view_->GetSceneManager();
    scene->DeleteAllLights();
    for (int i = 0; i < w.GetLightCount(); ++i) {
        const KVector3D position = w.GetLightPosition(i);
        float rgb[3];
        w.GetLightColor(i, rgb);
        if (!std::all_of(rgb, rgb + 3, Sane) || !Sane(position.x) || !Sane(position.y) ||
            !Sane(position.z))
            continue;
        VCLight* light = nullptr;
        try {
            light = scene->AddLight(view_.get());
            if (light) light->Translate({position.x, position.y, position.z, 0});
        } catch (...) {
            // A light the library refuses is left out.
            if (light) scene->DeleteLight(light);
            continue;
        }
        if (!light) continue;
        light->SetColor(std::clamp(rgb[0], 0.0f, 1.0f), std::clamp(rgb[1], 0.0f, 1.0f),
                        std::clamp(rgb[2], 0.0f, 1.0f));
    }
}

void VZarbesoDocument::ApplyLayout(const float* values) {
    for (std::int32_t i = 0; i < kTextLayoutValueCount; ++i)
        view_->SetLayout(static_cast<TextLayoutValue>(i), values[i], i == kTextLayoutValueCount - 1,
                         true);
}

void VZarbesoDocument::TakeTextDefaults() {
    for (std::int32_t i = 0; i < kTextLayoutValueCount; ++i) {
        textDefaults[i][0] = kLayoutFieldIds[i];
        textDefaults[i][1] = std::int32_t(view_->GetLayout(static_cast<TextLayoutValue>(i)));
    }
}

void VZarbesoDocument::ApplyWorkspace() {
    const VZarbesoWorkspace& w = *workspace_;
    suspendRedraw = 1;
    showTooltips = w.app.showTooltips;
    SetLightIconSize(w.app.lightIconSize);

    ApplyCamera(w);
    if (RowOf(w.font.fontRow) >= 0)
        SelectFontRow(RowOf(w.font.fontRow));
    else
        controls.fontRow = std::max<std::int32_t>(std::int32_t(GetCurrentFont()) - 1, 0);
    if (w.rendering.rendererRow != 0xFFFF) SelectRendererRow(w.rendering.rendererRow - 1);
    ApplyLights(w);

    const std::array<std::uint16_t, 3> face = {w.text.faceColor[0], w.text.faceColor[1],
                                               w.text.faceColor[2]};
    const std::array<std::uint16_t, 3> side = {w.text.sideColor[0], w.text.sideColor[1],
                                               w.text.sideColor[2]};
    view_->SetFaceColor(face[0], face[1], face[2]);
    view_->SetSideColor(side[0], side[1], side[2]);
    sideColor = side;
    SetTransparency(w.text.transparency);
    SetText(std::string(w.text.text, strnlen(w.text.text, sizeof w.text.text)));
    SetLink(w.app.link != 0);

    for (std::int32_t i = 0; i < w.customTextureCount; ++i) {
        std::uint16_t id = 0;
        auto* entry = new VTextureFileName;
        w.GetCustomTexture(i, id, entry->path);
        customTextures.Append(entry);
    }
    SelectSurfaceRow(RowOf(w.text.surfaceRow));

    ApplyLayout(w.textAlignment.values);

    for (std::int32_t i = 0; i < w.customPathCount; ++i)
        view_->StoreCustomPath(0, nullptr, w.GetCustomPath(i));
    std::memcpy(pathValues, w.analyticPrefs.pathValues, sizeof pathValues);
    SelectPathRow(RowOf(w.paths.pathRow));
    workspace_->ClearCustomPaths();

    TakeTextDefaults();
    SetSwitch(VSwitch::kImage, w.switches.image);
    SetSwitch(VSwitch::kText, w.switches.text);
    SetSwitch(VSwitch::kPath, w.switches.path);
    SetSwitch(VSwitch::kLights, w.switches.lights);
    SetSwitch(VSwitch::kGrid, w.switches.grid);
    suspendRedraw = 0;
    UpdateControls();
}

void VZarbesoDocument::ResetAll() {
    workspace_->SetDefaults();
    ApplyWorkspace();
    ClearRender(false);
    Redraw();
}

void VZarbesoDocument::ApplyDefaults() {
    workspace_->SetDefaults();
    InitControls();
    ApplyWorkspace();
}
