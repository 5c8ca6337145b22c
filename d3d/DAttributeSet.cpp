#include "d3d/DAttributeSet.h"

DSetObject::~DSetObject() {
    if (object) Q3Object_Dispose(object);
}

DAttributeSet::DAttributeSet() {
    TQ3AttributeSet set = Q3AttributeSet_New();
    CheckObject(set);
    object = set;
}

DAttributeSet::DAttributeSet(TQ3AttributeSet existing) {
    CheckObject(existing);
    TQ3Object reference = Q3Shared_GetReference(existing);
    CheckObject(reference);
    object = reference;
}

void DAttributeSet::Add(TQ3AttributeType type, const void* data) {
    CheckStatus(Q3AttributeSet_Add(object, type, data));
}

void DAttributeSet::Clear(TQ3AttributeType type) {
    CheckStatus(Q3AttributeSet_Clear(object, type));
}

void DAttributeSet::Empty() {
    CheckStatus(Q3AttributeSet_Empty(object));
}

bool DAttributeSet::Get(TQ3AttributeType type, void* data) const {
    if (Q3AttributeSet_Get(object, type, data) == kQ3Success) return true;
    Q3Error_Get(nullptr);
    return false;
}
