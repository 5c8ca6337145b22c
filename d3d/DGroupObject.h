// Group wrappers: plain, light and display groups, and the display groups
// that keep an attribute set as their first member.
#pragma once

#include "d3d/DAttributeSet.h"
#include "d3d/DObject.h"

#include <cstdint>

class DViewerObject;

class DGroupObject : public DShapeObject {
  public:
    ~DGroupObject() override;
    TQ3Object GetObject() const override { return object; }
    // Adds a library object at the end; the group keeps a reference of its
    // own. Answers the position, null if the group refused the object.
    virtual TQ3GroupPosition AddObject(TQ3Object member);
    // Adds a library object in front of the first member.
    virtual TQ3GroupPosition AddObjectFirst(TQ3Object member);
    // Takes every member out.
    virtual void Empty();

    // The same for the object of a wrapper.
    TQ3GroupPosition AddObject(const DObject& member) { return AddObject(member.GetObject()); }
    TQ3GroupPosition AddObjectFirst(const DObject& member) {
        return AddObjectFirst(member.GetObject());
    }
    std::uint32_t CountObjects() const;
    TQ3GroupPosition GetFirstPosition() const;
    // The first position of `member`, or null if it is not in the group.
    TQ3GroupPosition GetFirstObjectPosition(TQ3Object member) const;
    TQ3GroupPosition AddObjectAfter(TQ3Object member, TQ3GroupPosition position);
    // Adds `added` after the first position of `existing`; throws kFailPlin
    // if `existing` is not in the group.
    TQ3GroupPosition InsertAfter(const DObject& existing, const DObject& added);
    void EmptyOfType(TQ3ObjectType type);
    // Takes out the member at `position` and gives back its reference.
    void RemovePosition(TQ3GroupPosition position);
    // Takes out the first place of the wrapper's object; throws kFailPlin if
    // it is not in the group.
    void Remove(const DObject& member);

    TQ3GroupObject object = nullptr;

  protected:
    DGroupObject() = default;
};

class DPlainGroup : public DGroupObject {
  public:
    DPlainGroup();
};

class DLightGroup : public DGroupObject {
  public:
    DLightGroup();
    // An ambient light of 0.2, a directional light of 0.2 with the default
    // direction, and a point light at (-10, 0, 10).
    void AddDefaultLights();
};

class DDisplayGroup : public DGroupObject {
  public:
    // Makes a display group.
    DDisplayGroup();
    // Takes over the caller's reference to an existing display group.
    explicit DDisplayGroup(TQ3GroupObject existing);

    using DGroupObject::AddObject;
    using DGroupObject::AddObjectFirst;

    // Virtual, so that a pass that submits a group (the bounds passes among
    // them) submits whatever a derived group adds to its members.
    virtual void SubmitTo(TQ3ViewObject view) const;
    virtual void Submit(const DViewerObject& viewer) const;
    // Makes the library group if there is none yet.
    virtual void MakeObject();
    // A group that is not drawn keeps its members and its place.
    void SetDrawn(bool drawn);
    bool IsDrawn() const;
    // A group that is not picked is drawn but never hit by a pick.
    void SetPicked(bool picked);
};

// A display group whose first member is its own attribute set.
class DColorGroup : public DDisplayGroup {
  public:
    DColorGroup();
    void SetColor(float red, float green, float blue);
    void Empty() override;

    DAttributeSet attributes;
};

// A display group whose first member is its own attribute set, which
// survives Empty, so that colours outlive a rebuild of the contents.
class DAttributeDisplayGroup : public DDisplayGroup {
  public:
    DAttributeDisplayGroup();
    void Empty() override;

    void SetDiffuseColor(float red, float green, float blue);
    void SetAttribute(TQ3AttributeType type, const void* data);
    // Puts a new attribute set with that colour into the group as a member
    // of its own; it colours what follows it.
    void AddColorSet(float red, float green, float blue);
    void SetUserData(std::int32_t data) { userData = data; }
    std::int32_t GetUserData() const { return userData; }
    // Stores a name in the group's attribute set.
    void SetName(const char* text);

    TQ3GroupPosition attributePosition = nullptr;
    DAttributeSet attributes;
    std::int32_t userData = 0;

  protected:
    // Puts the attribute set in as the first member again.
    void AttachAttributes();
};

// The same over an ordered display group, which sorts its members by kind.
class DAttributeOrderedDisplayGroup : public DAttributeDisplayGroup {
  public:
    DAttributeOrderedDisplayGroup();
    void MakeObject() override;
};
