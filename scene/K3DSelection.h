// The selection of a scene: the selected objects, each wrapped with its
// widget, and the view's access to it.
#pragma once

#include "foundation/KList.h"
#include "foundation/WListener.h"
#include "scene/K3DSelectedObject.h"

class K3DView;
class VC3DObject;
class VCSceneManager;

class K3DSelection {
  public:
    K3DSelection() = default;
    K3DSelection(const K3DSelection&) = delete;
    K3DSelection& operator=(const K3DSelection&) = delete;
    virtual ~K3DSelection();

    // Null clears. An object not yet selected replaces the selection, or
    // joins it with `extend`; a selected one leaves it with `extend` and
    // otherwise stays as it is.
    virtual void Select(K3DObject* object, int widgetKind, bool extend);
    virtual K3DSelectedObject* MakeSelected(K3DObject* object, int widgetKind) = 0;

    void Add(K3DObject* object, int widgetKind);
    void Deselect(K3DObject* object);
    void Clear();
    K3DSelectedObject* FindObject(K3DObject* object) const;
    std::uint32_t GetCount() const { return entries.GetCount(); }
    bool IsEmpty() const { return GetCount() == 0; }
    // The entry when there is exactly one.
    K3DSelectedObject* GetSingle() const;
    // Over the entries from the last to the first; the functoid may remove
    // and delete the entry it is given.
    void ForEach(KListFunctoid& functoid, void* argument) const;
    // Gives every entry a widget of this kind.
    void SetWidgetKind(int kind);

    KList entries;
};

class VCSelection : public K3DSelection, public KListener {
  public:
    // Models are selected without a widget; other objects get one of the
    // kind asked for.
    K3DSelectedObject* MakeSelected(K3DObject* object, int widgetKind) override;
    virtual K3DSelectedObject* NewSelected(VC3DObject* object, std::uint32_t id);

    // The entry whose widget a pick id names: ids below 2^24 are plain
    // objects and find nothing. The entry keeps the whole id.
    K3DSelectedObject* FindByPickId(std::uint32_t pickId) const;
    // 20003: every widget follows the camera.
    void HearMessage(std::int32_t message, void* parameter) override;
    // Deletes every selected object the scene allows the user to delete,
    // entry first.
    void DeleteDeletable(VCSceneManager& sceneManager);
    // Shows or hides every widget.
    void ShowWidgets(bool flag);
};

// What has a selection: the tools find the scene's selection through it.
class K3DHasSelection {
  public:
    virtual ~K3DHasSelection() = default;
    virtual K3DSelection* GetSelection() = 0;
};

class VCHasSelection : public K3DHasSelection {
  public:
    explicit VCHasSelection(K3DView* view) : view_(view) {}
    // The selection of the view's scene.
    K3DSelection* GetSelection() override;

  private:
    K3DView* view_;
};
