#include "ui/persistence/VZarbesoWorkspace.h"

#include "curves/VCustomPathData.h"
#include "curves/VCustomPathsFile.h"
#include "ui/persistence/VPreferences.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {
constexpr const char* kTextureCountKey = "Num Custom Texture";
constexpr std::int32_t kTextureRecordSize = 258;
// A damaged count cannot make the reading walk on for long.
constexpr std::int32_t kMaxCustomTextures = 64;

void TextureKey(char (&key)[32], std::int32_t oneBased) {
    std::snprintf(key, sizeof key, "CT %i", static_cast<int>(oneBased));
}

// Deletes the entries past the first `count`.
void DropPast(KList& list, std::int32_t count) {
    while (list.GetCount() > std::uint32_t(std::max(count, 0))) {
        KListEntry* last = list.EntryAt(list.GetCount());
        list.RemoveEntry(last);
        delete last;
    }
}

// The sections' records in the order they are written, each with its key.
template <class Visit> void ForEachRecord(VZarbesoWorkspace& w, Visit visit) {
    visit("App", w.app);
    visit("Model", w.model);
    visit("Model Position", w.modelPosition);
    visit("Camera", w.camera);
    visit("Lighting", w.lighting);
    visit("Font", w.font);
    visit("Paths", w.paths);
    visit("Text", w.text);
    visit("Text Alignment", w.textAlignment);
    visit("Switches", w.switches);
    visit("Rendering", w.rendering);
    visit("Analytic Prefs", w.analyticPrefs);
}
} // namespace

VZarbesoWorkspace::VZarbesoWorkspace(bool loadFromFile) {
    std::snprintf(customPathsFile, sizeof customPathsFile, "%s", kCustomPathsFileName);
    SetDefaults();
    if (loadFromFile) ReadFromFile();
}

VZarbesoWorkspace::~VZarbesoWorkspace() = default;

void VZarbesoWorkspace::ResetRecords() {
    ForEachRecord(*this, [](const char*, auto& record) {
        record = std::remove_reference_t<decltype(record)>{};
    });
}

void VZarbesoWorkspace::SetDefaults() {
    ResetRecords();
    customPathCount = 0;
    customTextureCount = 0;
}

// ---- reading -------------------------------------------------------------------

void VZarbesoWorkspace::ReadFromFile() {
    try {
        VPreferences store(kProduct, kCompany, kSection);
        preferences = &store;
        if (!ReadRecords(store)) ResetRecords();
        ReadCustomTextures(store);
        preferences = nullptr;
    } catch (...) {
        // A store that cannot be opened leaves the defaults.
        preferences = nullptr;
        ResetRecords();
    }
    // The custom paths have a file of their own, with checksums of its own.
    DropPast(customPaths, 0);
    customPathCount = ReadCustomPathsFile(customPathsFile, customPaths);
}

bool VZarbesoWorkspace::ReadRecords(const VPreferences& store) {
    auto read = [&store](const char* key, auto& record) {
        std::int32_t length = 0;
        if (!store.Read(key, &record, std::int32_t(sizeof record), length)) return true;
        // A stored record of another length is tested over what was read.
        return RecordChecksumHolds(&record, std::size_t(length));
    };
    if (!read("App", app)) return false;
    if (!app.saved) return true; // nothing but the defaults was ever confirmed
    bool sound = true;
    ForEachRecord(*this, [&](const char* key, auto& record) {
        if (sound && static_cast<const void*>(&record) != &app) sound = read(key, record);
    });
    return sound;
}

void VZarbesoWorkspace::ReadCustomTextures(const VPreferences& store) {
    DropPast(customTextures, 0);
    customTextureCount = 0;
    std::int32_t count = 0;
    if (!store.ReadLong(kTextureCountKey, count)) return;
    for (std::int32_t i = 1; i <= std::min(count, kMaxCustomTextures); ++i) {
        char key[32];
        TextureKey(key, i);
        std::uint8_t bytes[kTextureRecordSize] = {};
        std::int32_t length = 0;
        if (!store.Read(key, bytes, kTextureRecordSize, length) || length != kTextureRecordSize)
            break;
        char path[256];
        std::memcpy(path, bytes + 2, sizeof path);
        path[sizeof path - 1] = 0;
        AddCustomTexture(std::uint16_t(bytes[0] | bytes[1] << 8), path);
    }
}

// ---- writing -------------------------------------------------------------------

bool VZarbesoWorkspace::WriteToFile() {
    DropPast(customPaths, customPathCount);
    DropPast(customTextures, customTextureCount);
    bool written = true;
    try {
        VPreferences store(kProduct, kCompany, kSection);
        preferences = &store;
        ForEachRecord(*this, [&](const char* key, auto& record) {
            StampChecksum(record);
            written = store.Write(key, &record, std::int32_t(sizeof record)) && written;
        });
        written = store.WriteLong(kTextureCountKey, customTextureCount) && written;
        for (std::int32_t i = 0; i < customTextureCount; ++i) {
            const auto* texture = static_cast<const TextureData*>(customTextures.EntryAt(i + 1));
            std::uint8_t bytes[kTextureRecordSize] = {};
            bytes[0] = std::uint8_t(texture->id);
            bytes[1] = std::uint8_t(texture->id >> 8);
            std::memcpy(bytes + 2, texture->path, sizeof texture->path);
            char key[32];
            TextureKey(key, i + 1);
            written = store.Write(key, bytes, kTextureRecordSize) && written;
        }
        written = store.Save() && written;
        preferences = nullptr;
    } catch (...) {
        preferences = nullptr;
        written = false;
    }
    return WriteCustomPathsFile(customPathsFile, customPaths) && written;
}

// ---- lists ---------------------------------------------------------------------

bool VZarbesoWorkspace::AddCustomPath(const VCustomPathData& record) {
    std::unique_ptr<VCustomPathData> copy = record.Clone();
    if (!copy) return false;
    DropPast(customPaths, customPathCount);
    customPaths.Append(copy.release());
    ++customPathCount;
    return true;
}

bool VZarbesoWorkspace::SetCustomPath(std::int32_t index, const VCustomPathData& record) {
    if (index < 0 || index >= customPathCount) return false;
    std::unique_ptr<VCustomPathData> copy = record.Clone();
    if (!copy) return false;
    KListEntry* old = customPaths.EntryAt(std::uint32_t(index + 1));
    customPaths.RemoveEntry(old);
    delete old;
    customPaths.InsertEntryAt(std::uint32_t(index + 1), copy.release());
    return true;
}

void VZarbesoWorkspace::ClearCustomPaths() {
    DropPast(customPaths, 0);
    customPathCount = 0;
}

const VCustomPathData* VZarbesoWorkspace::GetCustomPath(std::int32_t index) const {
    if (index < 0 || index >= customPathCount) return nullptr;
    return static_cast<const VCustomPathData*>(customPaths.EntryAt(std::uint32_t(index + 1)));
}

void VZarbesoWorkspace::AddCustomTexture(std::uint16_t id, const char* path) {
    DropPast(customTextures, customTextureCount);
    auto* texture = new TextureData;
    texture->id = id;
    std::snprintf(texture->path, sizeof texture->path, "%s", path ? path : "");
    customTextures.Append(texture);
    ++customTextureCount;
}

bool VZarbesoWorkspace::GetCustomTexture(std::int32_t index, std::uint16_t& id, char* path) const {
    if (index < 0 || index >= customTextureCount) return false;
    const auto* texture =
        static_cast<const TextureData*>(customTextures.EntryAt(std::uint32_t(index + 1)));
    id = texture->id;
    std::memcpy(path, texture->path, sizeof texture->path);
    return true;
}

// ---- fields --------------------------------------------------------------------

namespace {
void Put(float* to, const KVector3D& v) {
    to[0] = v.x;
    to[1] = v.y;
    to[2] = v.z;
    to[3] = v.w;
}

KVector3D Get(const float* from) {
    return {from[0], from[1], from[2], from[3]};
}
} // namespace

void VZarbesoWorkspace::SetModelPosition(const KVector3D& v) {
    Put(modelPosition.position, v);
}
KVector3D VZarbesoWorkspace::GetModelPosition() const {
    return Get(modelPosition.position);
}
void VZarbesoWorkspace::SetModelRotation(const float* m) {
    std::copy_n(m, 16, modelPosition.rotation);
}
void VZarbesoWorkspace::GetModelRotation(float* m) const {
    std::copy_n(modelPosition.rotation, 16, m);
}
void VZarbesoWorkspace::SetModelScale(const KVector3D& v) {
    Put(modelPosition.scale, v);
}
KVector3D VZarbesoWorkspace::GetModelScale() const {
    return Get(modelPosition.scale);
}
void VZarbesoWorkspace::SetCameraScale(const float* m) {
    std::copy_n(m, 16, camera.scale);
}
void VZarbesoWorkspace::GetCameraScale(float* m) const {
    std::copy_n(camera.scale, 16, m);
}
void VZarbesoWorkspace::SetCameraPan(const float* m) {
    std::copy_n(m, 16, camera.pan);
}
void VZarbesoWorkspace::GetCameraPan(float* m) const {
    std::copy_n(camera.pan, 16, m);
}
void VZarbesoWorkspace::SetCameraOrbit(const float* m) {
    std::copy_n(m, 16, camera.orbit);
}
void VZarbesoWorkspace::GetCameraOrbit(float* m) const {
    std::copy_n(camera.orbit, 16, m);
}

void VZarbesoWorkspace::SetLightPosition(int index, const KVector3D& position) {
    if (index >= 0 && index < kMaxLights) Put(lighting.positions[index], position);
}

KVector3D VZarbesoWorkspace::GetLightPosition(int index) const {
    return index >= 0 && index < kMaxLights ? Get(lighting.positions[index]) : KVector3D{};
}

void VZarbesoWorkspace::SetLightColor(int index, const float* rgb) {
    if (index >= 0 && index < kMaxLights) std::copy_n(rgb, 3, lighting.colors[index]);
}

void VZarbesoWorkspace::GetLightColor(int index, float* rgb) const {
    if (index >= 0 && index < kMaxLights) std::copy_n(lighting.colors[index], 3, rgb);
}

bool VZarbesoWorkspace::AddLight(const KVector3D& position, const float* rgb) {
    const int index = lighting.lightCount;
    if (index >= kMaxLights) return false;
    SetLightPosition(index, position);
    SetLightColor(index, rgb);
    lighting.lightCount = std::uint16_t(index + 1);
    return true;
}

int VZarbesoWorkspace::GetLightCount() const {
    return std::min<int>(lighting.lightCount, kMaxLights);
}
