#pragma once

#include "d3d/DLightObject.h"
#include "foundation/WListener.h"

#include <cstdint>

class DLightGroup;
class WBroadcaster;

// The lighting of a scene: the ambient light, which the user can dim and
// tint, always in the view's light group.
class VCLightManager : public KListener {
  public:
    VCLightManager();
    ~VCLightManager() override;
    void HearMessage(std::int32_t message, void* parameter) override;

    void SetAmbientBrightness(float value);
    float GetAmbientBrightness() const { return ambientBrightness; }
    // Colours as fractions; the copy keeps them as 16-bit values.
    void SetAmbientColor(float red, float green, float blue);
    void SetAmbientColor16(std::uint16_t red, std::uint16_t green, std::uint16_t blue);
    // Empties the view's light group, puts the ambient light in it and
    // listens to the view's broadcaster.
    void StartListening(DLightGroup& lightGroup, WBroadcaster& broadcaster);

    DAmbientLight ambient;
    float ambientBrightness = 0.2f;
    std::uint16_t ambientColor[3] = {65535, 65535, 65535};
};
