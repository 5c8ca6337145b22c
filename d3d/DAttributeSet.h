// Wrappers over the library's sets: a plain set root and the attribute set.
#pragma once

#include "d3d/DObject.h"

// One library set. The destructor gives back the set's reference, if any.
class DSetObject : public DSharable {
  public:
    ~DSetObject() override;
    TQ3Object GetObject() const override { return object; }

    TQ3SetObject object = nullptr;
};

// One attribute set: diffuse colour, normal, transparency and the registered
// name and tag elements.
class DAttributeSet : public DSetObject {
  public:
    DAttributeSet();
    // A second wrapper over an existing set, with a reference of its own.
    explicit DAttributeSet(TQ3AttributeSet existing);

    void Add(TQ3AttributeType type, const void* data);
    void Clear(TQ3AttributeType type);
    void Empty();
    // True if the set holds the attribute; an absent one is no failure.
    bool Get(TQ3AttributeType type, void* data) const;
};
