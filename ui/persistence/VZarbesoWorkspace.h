// All that a session of the window leaves behind, as the records of the
// preferences file, with the lists of custom paths and custom textures that
// live in their own file and entries. Read from the files at the start of a
// session, filled from the scene on OK and written back.
#pragma once

#include "curves/KVector3D.h"
#include "foundation/KList.h"
#include "ui/persistence/SettingsRecords.h"

#include <cstdint>

class VCustomPathData;
class VPreferences;

// A custom texture as the workspace keeps it.
class TextureData : public KListEntry {
  public:
    std::uint16_t id = 0; // always 0
    char path[256] = {};  // the texture file's full name
};

class VZarbesoWorkspace {
  public:
    static constexpr const char* kCompany = "Lumerra 3D";
    static constexpr const char* kProduct = "FlyWORD Plumet";
    static constexpr const char* kSection = "Settings";
    static constexpr int kMaxLights = VLightingRecord::kMaxLights;

    // Sets all defaults; with loadFromFile, reads the files: the records of
    // the section (all of them fall back to the defaults if one is damaged),
    // then the custom paths and textures, which are read on their own.
    explicit VZarbesoWorkspace(bool loadFromFile);
    virtual ~VZarbesoWorkspace();

    VZarbesoWorkspace(const VZarbesoWorkspace&) = delete;
    VZarbesoWorkspace& operator=(const VZarbesoWorkspace&) = delete;

    // Every record back to its defaults. The lists keep their entries, but
    // their counts become 0.
    void SetDefaults();
    // Writes the records, the custom textures and the custom paths file.
    // False when a file could not be written.
    bool WriteToFile();

    // The lists own their entries; the record is cloned.
    bool AddCustomPath(const VCustomPathData& record);
    // Replaces the record at index 0 to count - 1.
    bool SetCustomPath(std::int32_t index, const VCustomPathData& record);
    void ClearCustomPaths();
    const VCustomPathData* GetCustomPath(std::int32_t index) const;
    void AddCustomTexture(std::uint16_t id, const char* path);
    // Index 0 to count - 1; path receives 256 bytes.
    bool GetCustomTexture(std::int32_t index, std::uint16_t& id, char* path) const;

    // The raw fields; a matrix is 16 floats, row by row.
    void SetModelPosition(const KVector3D& v);
    KVector3D GetModelPosition() const;
    void SetModelRotation(const float* matrix);
    void GetModelRotation(float* matrix) const;
    void SetModelScale(const KVector3D& v);
    KVector3D GetModelScale() const;
    void SetCameraScale(const float* matrix);
    void GetCameraScale(float* matrix) const;
    void SetCameraPan(const float* matrix);
    void GetCameraPan(float* matrix) const;
    void SetCameraOrbit(const float* matrix);
    void GetCameraOrbit(float* matrix) const;
    // Lights 0 to 4; other indices are ignored.
    void SetLightPosition(int index, const KVector3D& position);
    KVector3D GetLightPosition(int index) const;
    void SetLightColor(int index, const float* rgb);
    void GetLightColor(int index, float* rgb) const;
    // Stores a light in the next free entry; nothing when five are there.
    bool AddLight(const KVector3D& position, const float* rgb);
    int GetLightCount() const;

    VAppRecord app;
    VModelPositionRecord modelPosition;
    VLightingRecord lighting;
    VCameraRecord camera;
    VSwitchesRecord switches;
    VFontRecord font;
    VPathsRecord paths;
    VRenderingRecord rendering;
    VModelRecord model;
    VTextRecord text;
    VTextAlignmentRecord textAlignment;

    char customPathsFile[256] = {};
    std::int32_t customPathCount = 0;
    KList customPaths; // of VCustomPathData
    std::int32_t customTextureCount = 0;
    KList customTextures; // of TextureData
    VAnalyticPrefsRecord analyticPrefs;
    VPreferences* preferences = nullptr; // only while the file is open

  private:
    void ReadFromFile();
    // False when a record with the key is there but its checksum fails.
    bool ReadRecords(const VPreferences& store);
    void ReadCustomTextures(const VPreferences& store);
    void ResetRecords();
};
