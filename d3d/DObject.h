// The root of the wrappers over the 3D library's objects, the two checks that
// turn library failures into thrown codes, and the class hierarchy queries.
#pragma once

#include "foundation/Failures.h"
#include "platform/qd3d/QD3D.h"

#include <memory>
#include <string>

// Returns when the library answered success; otherwise reads and drops the
// library's error and throws kFailLF3q.
void CheckStatus(TQ3Status status);
// Throws kFailPlin when a library constructor answered null.
void CheckObject(const void* object);

// Root of all wrappers. A wrapper owns exactly one reference to one library
// object for as long as it lives; wrappers are never copied.
class DObject {
  public:
    virtual ~DObject() = default;
    // The library object this wrapper owns.
    virtual TQ3Object GetObject() const = 0;

    DObject(const DObject&) = delete;
    DObject& operator=(const DObject&) = delete;

  protected:
    DObject() = default;
};

// Root of what wraps a library shared (reference-counted) object.
class DSharable : public DObject {};

// Root of what can stand in a scene.
class DShapeObject : public DSharable {};

// Gives back one reference when it goes out of scope: for library objects a
// constructor makes on its way, so that a throw in the middle leaks nothing.
struct DDisposer {
    void operator()(TQ3Object object) const {
        if (object) Q3Object_Dispose(object);
    }
};
using DReference = std::unique_ptr<OpaqueTQ3Object, DDisposer>;

// The library's list of subclasses of a class.
class DSubClassData {
  public:
    virtual ~DSubClassData() = default;
    TQ3SubClassData data{0, nullptr};
};

// Queries of the library's class hierarchy, each checked.
class DObjectHierarchy {
  public:
    virtual ~DObjectHierarchy() = default;
    void GetSubClassData(TQ3ObjectType type, TQ3SubClassData* data);
    void EmptySubClassData(TQ3SubClassData* data);
    // The class name of a type, at most kQ3StringMaximumLength bytes.
    void GetStringFromType(TQ3ObjectType type, std::string& text);
    void GetTypeFromString(const char* text, TQ3ObjectType* type);
};
