#pragma once

#include "d3d/DLightObject.h"
#include "foundation/KList.h"
#include "foundation/WListener.h"
#include "scene/VCLight.h"

#include <cstdint>

class DLightGroup;
class DViewerObject;
class K3DView;
class VCSceneManager;
class WBroadcaster;

// The lighting of a scene: the ambient light, which the user can dim and
// tint, and the point lights the user places. All of them stand in the
// view's light group; the point lights follow each change of the view's
// adorners (message 20003).
class VCLightManager : public KListener {
  public:
    explicit VCLightManager(VCSceneManager* sceneManager);
    ~VCLightManager() override;
    // 20003: every light is told the new adorner matrix.
    void HearMessage(std::int32_t message, void* parameter) override;
    // A new point light at the scene's origin, with the scene's next id,
    // seen through the view's adorners and added to its light group.
    virtual VCLight* AddLight(K3DView* view);

    // Takes the light out of the list and its library light out of the
    // light group, and deletes it.
    virtual void DeleteLight(VCLight* light);
    void DeleteAllLights();
    std::uint32_t GetLightCount() const { return lights.GetCount(); }
    VCLight* GetLight(std::uint32_t position) const;
    void ForEachLight(KListFunctoid& functoid, void* argument) const;
    // The icons of all lights.
    void SubmitIcons(const DViewerObject& viewer) const;
    // The light whose object id is `id`, or null.
    VCLight* GetLightByPickId(std::uint32_t id) const;
    // The greatest distance from the point to a light, 0 without lights.
    float GetFarthestLight(const KVector3D& point) const;

    void SetAmbientBrightness(float value);
    float GetAmbientBrightness() const { return ambientBrightness; }
    // Colours as fractions; the copy keeps them as 16-bit values.
    void SetAmbientColor(float red, float green, float blue);
    void SetAmbientColor16(std::uint16_t red, std::uint16_t green, std::uint16_t blue);
    // Empties the view's light group, puts the ambient light in it and
    // listens to the view's broadcaster.
    void StartListening(DLightGroup& lightGroup, WBroadcaster& broadcaster);

    DAmbientLight ambient;
    KList lights;
    float ambientBrightness = 0.2f;
    std::uint16_t ambientColor[3] = {65535, 65535, 65535};

  protected:
    VCSceneManager* sceneManager_;
    // The light group the lights stand in, from StartListening on.
    DLightGroup* lightGroup_ = nullptr;
};
