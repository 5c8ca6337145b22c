// The one picker of the system: what lies under the pointer, as a scene
// object or as a selected object whose widget was hit.
#pragma once

#include "d3d/DPickingLoop.h"

class K3DObject;
class K3DSelectedObject;
class K3DView;
class VZarbesoSceneManager;

class K3DPicker : public DPickingLoop {
  public:
    // Picks in this view from now on.
    virtual void SetView(K3DView* view);
    virtual K3DObject* GetPickedObject() const { return nullptr; }
    virtual K3DSelectedObject* GetPickedSelected() const { return nullptr; }
    // The selected object that wraps `object`.
    virtual K3DSelectedObject* FindSelected(K3DObject* /*object*/) { return nullptr; }
};

class VCPicker : public K3DPicker {
  public:
    void SetView(K3DView* view) override;
    // Forgets the last result, then picks.
    void PickAt(const MouseEvent& event) override;
    // A hit counts when it names a selected object's widget, a model or a
    // light of the view's scene.
    bool WantsHit(DHitData& hit) override;
    // A Bezier path model learns which of its parts lay nearest.
    void HandleHit(DHitData& firstHit) override;
    K3DObject* GetPickedObject() const override { return pickedObject; }
    K3DSelectedObject* GetPickedSelected() const override { return pickedSelected; }
    K3DSelectedObject* FindSelected(K3DObject* object) override;

    VZarbesoSceneManager* sceneManager = nullptr;
    K3DObject* pickedObject = nullptr;
    K3DSelectedObject* pickedSelected = nullptr;
};
