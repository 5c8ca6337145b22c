// Sets and attribute sets: elements by type, copied in and out.
#pragma once

#include "platform/qd3d/Q3Internal.h"

namespace q3 {

class SetObject : public OpaqueTQ3Object {
  public:
    explicit SetObject(TQ3ObjectType type) : OpaqueTQ3Object(type) {}
    ~SetObject() override;
    TQ3Status submit(View& view) override;

    TQ3Status add(TQ3ElementType type, const void* data);
    TQ3Status get(TQ3ElementType type, void* data) const;
    bool contains(TQ3ElementType type) const { return find(type) != nullptr; }
    TQ3Status clear(TQ3ElementType type);
    void empty();
    // The stored bytes of an element, or null; for built-in attributes the
    // bytes are the attribute's value.
    const void* find(TQ3ElementType type) const;
    TQ3Status nextType(TQ3ElementType* type) const;
    // Copies every element of from into this set, replacing its own.
    void mergeFrom(const SetObject& from);

  private:
    struct Element {
        TQ3ElementType type;
        std::vector<unsigned char> data;
        TQ3XMetaHandler meta;
    };
    void destroy(Element& e);
    std::vector<Element> elements;
};

// The size of a built-in attribute's value, or 0 for an unknown type.
TQ3Uns32 builtinAttributeSize(TQ3AttributeType type);

} // namespace q3
