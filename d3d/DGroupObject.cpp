#include "d3d/DGroupObject.h"

#include "d3d/DCustomElements.h"
#include "d3d/DLightObject.h"
#include "d3d/DViewerObject.h"

DGroupObject::~DGroupObject() {
    if (object) Q3Object_Dispose(object);
}

TQ3GroupPosition DGroupObject::AddObject(TQ3Object member) {
    TQ3GroupPosition position = Q3Group_AddObject(object, member);
    if (!position) Q3Error_Get(nullptr);
    return position;
}

TQ3GroupPosition DGroupObject::AddObjectFirst(TQ3Object member) {
    TQ3GroupPosition first = GetFirstPosition();
    TQ3GroupPosition position =
        first ? Q3Group_AddObjectBefore(object, first, member) : Q3Group_AddObject(object, member);
    if (!position) Q3Error_Get(nullptr);
    return position;
}

void DGroupObject::Empty() {
    CheckStatus(Q3Group_EmptyObjects(object));
}

std::uint32_t DGroupObject::CountObjects() const {
    TQ3Uns32 n = 0;
    CheckStatus(Q3Group_CountObjects(object, &n));
    return n;
}

TQ3GroupPosition DGroupObject::GetFirstPosition() const {
    TQ3GroupPosition position = nullptr;
    CheckStatus(Q3Group_GetFirstPosition(object, &position));
    return position;
}

TQ3GroupPosition DGroupObject::GetFirstObjectPosition(TQ3Object member) const {
    TQ3GroupPosition position = nullptr;
    if (Q3Group_GetFirstObjectPosition(object, member, &position) != kQ3Success) {
        Q3Error_Get(nullptr);
        return nullptr;
    }
    return position;
}

TQ3GroupPosition DGroupObject::AddObjectAfter(TQ3Object member, TQ3GroupPosition position) {
    TQ3GroupPosition added = Q3Group_AddObjectAfter(object, position, member);
    if (!added) Q3Error_Get(nullptr);
    return added;
}

TQ3GroupPosition DGroupObject::InsertAfter(const DObject& existing, const DObject& added) {
    TQ3GroupPosition position = GetFirstObjectPosition(existing.GetObject());
    if (!position) throw kFailPlin;
    return AddObjectAfter(added.GetObject(), position);
}

void DGroupObject::EmptyOfType(TQ3ObjectType type) {
    CheckStatus(Q3Group_EmptyObjectsOfType(object, type));
}

void DGroupObject::RemovePosition(TQ3GroupPosition position) {
    TQ3Object removed = Q3Group_RemovePosition(object, position);
    if (removed)
        Q3Object_Dispose(removed);
    else
        Q3Error_Get(nullptr);
}

void DGroupObject::Remove(const DObject& member) {
    TQ3GroupPosition position = GetFirstObjectPosition(member.GetObject());
    if (!position) throw kFailPlin;
    RemovePosition(position);
}

DPlainGroup::DPlainGroup() {
    object = Q3Group_New();
    CheckObject(object);
}

DLightGroup::DLightGroup() {
    object = Q3LightGroup_New();
    CheckObject(object);
}

void DLightGroup::AddDefaultLights() {
    DAmbientLight ambient(0.2f);
    AddObject(ambient);
    DDirectionalLight directional(nullptr, 0.2f);
    AddObject(directional);
    DPointLight point({-10, 0, 10});
    AddObject(point);
}

DDisplayGroup::DDisplayGroup() {
    MakeObject();
}

DDisplayGroup::DDisplayGroup(TQ3GroupObject existing) {
    CheckObject(existing);
    object = existing;
}

void DDisplayGroup::MakeObject() {
    if (object) return;
    object = Q3DisplayGroup_New();
    CheckObject(object);
}

void DDisplayGroup::SubmitTo(TQ3ViewObject view) const {
    CheckStatus(Q3DisplayGroup_Submit(object, view));
}

void DDisplayGroup::Submit(const DViewerObject& viewer) const {
    SubmitTo(viewer.GetObject());
}

namespace {
void SetStateBit(TQ3GroupObject group, TQ3DisplayGroupState bit, bool on) {
    TQ3DisplayGroupState state = 0;
    CheckStatus(Q3DisplayGroup_GetState(group, &state));
    if (on)
        state |= bit;
    else
        state &= ~bit;
    CheckStatus(Q3DisplayGroup_SetState(group, state));
}
} // namespace

void DDisplayGroup::SetDrawn(bool drawn) {
    SetStateBit(object, kQ3DisplayGroupStateMaskIsDrawn, drawn);
}

void DDisplayGroup::SetPicked(bool picked) {
    SetStateBit(object, kQ3DisplayGroupStateMaskIsPicked, picked);
}

bool DDisplayGroup::IsDrawn() const {
    TQ3DisplayGroupState state = 0;
    CheckStatus(Q3DisplayGroup_GetState(object, &state));
    return (state & kQ3DisplayGroupStateMaskIsDrawn) != 0;
}

DColorGroup::DColorGroup() {
    AddObject(attributes);
}

void DColorGroup::SetColor(float red, float green, float blue) {
    TQ3ColorRGB color{red, green, blue};
    attributes.Add(kQ3AttributeTypeDiffuseColor, &color);
}

void DColorGroup::Empty() {
    DGroupObject::Empty();
    AddObject(attributes);
}

DAttributeDisplayGroup::DAttributeDisplayGroup() {
    AttachAttributes();
}

void DAttributeDisplayGroup::AttachAttributes() {
    attributePosition = AddObject(attributes);
    if (!attributePosition) throw kFailPlin;
}

void DAttributeDisplayGroup::Empty() {
    DGroupObject::Empty();
    AttachAttributes();
}

void DAttributeDisplayGroup::SetDiffuseColor(float red, float green, float blue) {
    TQ3ColorRGB color{red, green, blue};
    attributes.Add(kQ3AttributeTypeDiffuseColor, &color);
}

void DAttributeDisplayGroup::SetAttribute(TQ3AttributeType type, const void* data) {
    attributes.Add(type, data);
}

void DAttributeDisplayGroup::AddColorSet(float red, float green, float blue) {
    DAttributeSet set;
    TQ3ColorRGB color{red, green, blue};
    set.Add(kQ3AttributeTypeDiffuseColor, &color);
    AddObject(set);
}

void DAttributeDisplayGroup::SetName(const char* text) {
    DReference string(Q3CString_New(text ? text : ""));
    CheckObject(string.get());
    TQ3Object raw = string.get();
    if (GetNameAttributeType() == 0) CheckStatus(kQ3Failure);
    attributes.Add(GetNameAttributeType(), &raw);
}

DAttributeOrderedDisplayGroup::DAttributeOrderedDisplayGroup() {
    MakeObject();
    AttachAttributes();
}

void DAttributeOrderedDisplayGroup::MakeObject() {
    TQ3GroupObject ordered = Q3OrderedDisplayGroup_New();
    CheckObject(ordered);
    if (object) Q3Object_Dispose(object);
    object = ordered;
}
