#include "scene/K3DSelection.h"

#include "foundation/Messages.h"
#include "scene/K3DView.h"
#include "scene/SceneManagers.h"

namespace {
K3DSelectedObject* Entry(KListEntry* entry) {
    return static_cast<K3DSelectedObject*>(entry);
}

struct SameObject : KListTestoid {
    bool Test(KListEntry* entry, std::intptr_t object) override {
        return Entry(entry)->GetObject() == reinterpret_cast<K3DObject*>(object);
    }
};

// Compares the object id bits and keeps the whole pick id in the entry.
struct SameSelectionId : KListTestoid {
    bool Test(KListEntry* entry, std::intptr_t pickId) override {
        auto* selected = dynamic_cast<VCSelectedObject*>(Entry(entry));
        const auto id = static_cast<std::uint32_t>(pickId);
        if (!selected || (selected->id & 0xFFFFFFu) != (id & 0xFFFFFFu)) return false;
        selected->lastPickId = id;
        return true;
    }
};

struct SetWidget : KListFunctoid {
    void Apply(KListEntry* entry, void* kind) override {
        Entry(entry)->SetWidget(*static_cast<const int*>(kind));
    }
};

struct UpdateWidget : KListFunctoid {
    void Apply(KListEntry* entry, void*) override { Entry(entry)->UpdateWidget(); }
};

struct ShowWidget : KListFunctoid {
    void Apply(KListEntry* entry, void* flag) override {
        Entry(entry)->ShowWidget(*static_cast<const bool*>(flag));
    }
};

// Deletes the entry of an object the scene lets the user delete, then the
// object.
struct DeleteDeletableEntry : KListFunctoid {
    KList* entries;
    void Apply(KListEntry* entry, void* scene) override {
        auto& sceneManager = *static_cast<VCSceneManager*>(scene);
        K3DObject* object = Entry(entry)->GetObject();
        if (!sceneManager.CanDelete(object)) return;
        entries->RemoveEntry(entry);
        delete entry;
        sceneManager.DeleteObject(object);
    }
};
} // namespace

// ---- K3DSelection ---------------------------------------------------------------

K3DSelection::~K3DSelection() {
    Clear();
}

void K3DSelection::Select(K3DObject* object, int widgetKind, bool extend) {
    if (!object) {
        Clear();
        return;
    }
    if (FindObject(object)) {
        if (extend) Deselect(object);
        return;
    }
    if (!extend) Clear();
    Add(object, widgetKind);
}

void K3DSelection::Add(K3DObject* object, int widgetKind) {
    K3DSelectedObject* selected = MakeSelected(object, widgetKind);
    if (selected) entries.Append(selected);
}

void K3DSelection::Deselect(K3DObject* object) {
    if (K3DSelectedObject* selected = FindObject(object)) {
        entries.RemoveEntry(selected);
        delete selected;
    }
}

void K3DSelection::Clear() {
    entries.DeleteAll();
}

K3DSelectedObject* K3DSelection::FindObject(K3DObject* object) const {
    SameObject test;
    return Entry(entries.FirstThat(test, reinterpret_cast<std::intptr_t>(object)));
}

K3DSelectedObject* K3DSelection::GetSingle() const {
    return GetCount() == 1 ? Entry(entries.EntryAt(1)) : nullptr;
}

void K3DSelection::ForEach(KListFunctoid& functoid, void* argument) const {
    entries.ForEachBackward(functoid, argument);
}

void K3DSelection::SetWidgetKind(int kind) {
    SetWidget set;
    ForEach(set, &kind);
}

// ---- VCSelection ----------------------------------------------------------------

K3DSelectedObject* VCSelection::MakeSelected(K3DObject* object, int widgetKind) {
    auto* sceneObject = dynamic_cast<VC3DObject*>(object);
    if (!sceneObject) return nullptr;
    K3DSelectedObject* selected = NewSelected(sceneObject, sceneObject->GetId() | 0x80000000u);
    if (!dynamic_cast<VCModel*>(object)) {
        try {
            selected->SetWidget(widgetKind);
        } catch (...) {
            delete selected;
            throw;
        }
    }
    return selected;
}

K3DSelectedObject* VCSelection::NewSelected(VC3DObject* object, std::uint32_t id) {
    return new VCSelectedObject(object, id);
}

K3DSelectedObject* VCSelection::FindByPickId(std::uint32_t pickId) const {
    if (pickId < 0x1000000u) return nullptr;
    SameSelectionId test;
    return Entry(entries.FirstThat(test, static_cast<std::intptr_t>(pickId)));
}

void VCSelection::HearMessage(std::int32_t message, void*) {
    if (message != kMsgViewMatrixChanged) return;
    UpdateWidget update;
    ForEach(update, nullptr);
}

void VCSelection::DeleteDeletable(VCSceneManager& sceneManager) {
    DeleteDeletableEntry remove;
    remove.entries = &entries;
    ForEach(remove, &sceneManager);
}

void VCSelection::ShowWidgets(bool flag) {
    ShowWidget show;
    ForEach(show, &flag);
}

// ---- VCHasSelection -------------------------------------------------------------

K3DSelection* VCHasSelection::GetSelection() {
    VCSceneManager* scene = view_ ? view_->GetSceneManager() : nullptr;
    return scene ? scene->GetSelection() : nullptr;
}
