// The records of the "Settings" section of the preferences file, as plain
// structures of the file's layout: little-endian fields at fixed offsets, and
// in the last four bytes a checksum of the bytes before it. Each structure's
// initial values are the record's defaults.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>

static_assert(std::endian::native == std::endian::little, "records are read as they lie in memory");
static_assert(std::numeric_limits<float>::is_iec559, "records hold IEEE single floats");

// A colour of three 16-bit components: red, green, blue.
using VColor16 = std::uint16_t[3];

struct VAppRecord {
    std::uint16_t stamp = 1011; // written, never read
    std::uint8_t saved = 0;     // 1 once the user has pressed OK
    std::uint8_t link = 0;      // the Link check box
    float lightIconSize = 3.0f;
    std::uint8_t showTooltips = 1;
    std::uint8_t zero[3] = {};
    std::int32_t checksum = 0;
};

struct VModelRecord {
    std::uint8_t unused[264] = {};
    std::int32_t checksum = 0;
};

// The text model's place; written, not applied.
struct VModelPositionRecord {
    float position[4] = {};
    float rotation[16] = {};
    float scale[4] = {};
    std::int32_t checksum = 0;
};

struct VCameraRecord {
    float aspectRatio = 0.0f;
    float fieldOfView = 0.0f; // degrees, times the aspect ratio when that is above 1
    float scale[16] = {};
    float pan[16] = {};
    float orbit[16] = {};
    std::uint8_t zero1[40] = {};
    std::int32_t viewRow = -1; // View combo row + 1, 1 to 7; -1: no saved camera
    std::uint8_t zero2[40] = {};
    std::int32_t checksum = 0;
};

struct VLightingRecord {
    static constexpr int kMaxLights = 5;
    std::uint16_t lightCount = 0;
    std::uint8_t zero[2] = {};
    float positions[kMaxLights][4] = {};
    float colors[kMaxLights][3] = {};
    std::uint16_t ambientIntensity = 80; // percent
    std::uint16_t ambientColor[3] = {0xFFFF, 0xFFFF, 0xFFFF};
    std::int32_t checksum = 0;
};

struct VFontRecord {
    std::int32_t fontRow = -1; // Font combo row + 1; -1: keep the list's font
    std::int32_t checksum = 0;
};

struct VPathsRecord {
    std::int32_t pathRow = 1; // Path combo row + 1
    std::int32_t checksum = 0;
};

struct VTextRecord {
    std::int32_t transparency = 0; // percent
    std::int32_t surfaceRow = 1;   // Surface combo row + 1; 8: a custom texture
    std::uint16_t faceColor[3] = {0, 0x6666, 0xFFFF};
    std::uint16_t sideColor[3] = {0, 0, 0x8888};
    char text[256] = "Lumerra 3D";
    std::int32_t checksum = 0;
};

// As the controls show them: slide, revolve, rotate, tilt, width, height,
// spacing, depth.
struct VTextAlignmentRecord {
    float values[8] = {50, 0, 0, 0, 10, 10, 0, 4};
    std::int32_t checksum = 0;
};

struct VSwitchesRecord {
    std::uint8_t grid = 1, image = 1, lights = 1, text = 1, path = 1;
    std::uint8_t zero[3] = {};
    std::int32_t checksum = 0;
};

struct VRenderingRecord {
    std::uint16_t rendererRow = 0xFFFF; // Final Render combo row + 1; 0xFFFF: none saved
    std::uint8_t zero[2] = {};
    std::int32_t checksum = 0;
};

// The two values of each analytic path's page, by path number 1 to 8; pair 0
// is not used.
struct VAnalyticPrefsRecord {
    std::int32_t pathValues[9][2] = {{0, 0},   {0, 0},   {40, 60}, {30, 80}, {45, 66},
                                     {40, 73}, {40, 40}, {11, 33}, {12, 27}};
    std::int32_t checksum = 0;
};

// The sum of the bytes before the last four, each as a signed byte.
std::int32_t RecordChecksum(const void* record, std::size_t size);
// Whether the last four of `size` bytes hold the checksum of the rest.
bool RecordChecksumHolds(const void* record, std::size_t size);

template <class R> void StampChecksum(R& record) {
    record.checksum = RecordChecksum(&record, sizeof record);
}

// Sizes and offsets as the file has them.
static_assert(sizeof(VAppRecord) == 16 && offsetof(VAppRecord, lightIconSize) == 4);
static_assert(sizeof(VModelRecord) == 268);
static_assert(sizeof(VModelPositionRecord) == 100 && offsetof(VModelPositionRecord, scale) == 80);
static_assert(sizeof(VCameraRecord) == 288 && offsetof(VCameraRecord, viewRow) == 240);
static_assert(sizeof(VLightingRecord) == 156 && offsetof(VLightingRecord, colors) == 84 &&
              offsetof(VLightingRecord, ambientIntensity) == 144);
static_assert(sizeof(VFontRecord) == 8 && sizeof(VPathsRecord) == 8);
static_assert(sizeof(VTextRecord) == 280 && offsetof(VTextRecord, text) == 20);
static_assert(sizeof(VTextAlignmentRecord) == 36);
static_assert(sizeof(VSwitchesRecord) == 12);
static_assert(sizeof(VRenderingRecord) == 8);
static_assert(sizeof(VAnalyticPrefsRecord) == 76);
