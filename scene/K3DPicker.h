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

    // While set, only the models of custom paths count as hits: the path
    // tools reach markers under letters that lie on the path.
    bool curvesOnly = false;
};

class VCPicker : public K3DPicker {
  public:
    void SetView(K3DView* view) override;
    // Forgets the last result, then picks.
    void PickAt(const MouseEvent& event) override;
    // A hit counts when it names a selected object's widget, a model or a
    // light of the view's scene.
    bool WantsHit(DHitData& hit) override;
    // A path model learns which of its parts lay nearest.
    void HandleHit(DHitData& firstHit) override;
    // Markers are drawn over the curve they stand on: when the pointer lies
    // on a marker of the picked path, the path learns the nearest such.
    void EndHits() override;
    K3DObject* GetPickedObject() const override { return pickedObject; }
    K3DSelectedObject* GetPickedSelected() const override { return pickedSelected; }
    K3DSelectedObject* FindSelected(K3DObject* object) override;

    VZarbesoSceneManager* sceneManager = nullptr;
    K3DObject* pickedObject = nullptr;
    K3DSelectedObject* pickedSelected = nullptr;
};
