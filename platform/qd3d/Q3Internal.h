// The object model behind the C interface: the base of every object, the
// class table, checked handles and the error record.
#pragma once

#include "platform/qd3d/QD3D.h"
#include "platform/qd3d/QD3DRendererExtension.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace q3 {
class View;
}

struct OpaqueTQ3Object {
    explicit OpaqueTQ3Object(TQ3ObjectType leafType);
    virtual ~OpaqueTQ3Object();
    OpaqueTQ3Object(const OpaqueTQ3Object&) = delete;
    OpaqueTQ3Object& operator=(const OpaqueTQ3Object&) = delete;

    // What the object does when submitted in a pass.
    virtual TQ3Status submit(q3::View& view);
    // Shared objects are reference counted; the others die at their dispose.
    bool isShared() const { return shared; }
    TQ3ObjectType leafType() const { return type; }
    void edited() { ++editIndex; }

    std::uint32_t magic;
    TQ3ObjectType type;
    bool shared;
    std::uint32_t refCount = 1;
    std::uint32_t editIndex = 0;
};

namespace q3 {

constexpr std::uint32_t kLiveMagic = 0x51334f42;

struct ClassInfo {
    TQ3ObjectType type = 0;
    TQ3ObjectType parent = 0;
    std::string name;
    std::string nickName;
    bool builtin = true;
    // registered element classes
    TQ3Uns32 elementSize = 0;
    TQ3XMetaHandler metaHandler = nullptr;
    // renderer classes
    bool isRenderer = false;
    TQ3XRendererMethods rendererMethods{};
};

// The class table. Lookups answer null for an unknown type.
const ClassInfo* findClass(TQ3ObjectType type);
ClassInfo* findClassMutable(TQ3ObjectType type);
bool isSubtype(TQ3ObjectType type, TQ3ObjectType ancestor);
// The ancestor of type that stands directly below 'parent', or 0.
TQ3ObjectType typeBelow(TQ3ObjectType type, TQ3ObjectType parent);
TQ3XObjectClass registerClass(ClassInfo info, TQ3ObjectType* outType);

void postError(TQ3Error error);
// A global stamp that moves whenever any attribute set changes; caches of
// resolved vertex attributes compare against it.
std::uint64_t attributeStamp();
void bumpAttributeStamp();

// Is this a live object of the library?
bool isLive(const void* object);
// The object as T when it is live and of the given type (or a subtype);
// otherwise posts the error and answers null.
OpaqueTQ3Object* checkObject(TQ3Object object, TQ3ObjectType type);
template <class T> T* check(TQ3Object object, TQ3ObjectType type) {
    return static_cast<T*>(checkObject(object, type));
}
// Same as check, but a null object is allowed and answers null silently.
template <class T> bool checkOptional(TQ3Object object, TQ3ObjectType type, T** out) {
    *out = nullptr;
    if (!object) return true;
    *out = check<T>(object, type);
    return *out != nullptr;
}

// Reference helpers on objects already known to be live.
TQ3Object retain(TQ3Object object);
void release(TQ3Object object);
// Replaces a held reference: retains the new object first.
void replaceRef(TQ3Object& slot, TQ3Object object);

// Hands a new object to the caller, or null after posting the error.
template <class T, class... A> TQ3Object make(A&&... args) {
    try {
        return new T(static_cast<A&&>(args)...);
    } catch (...) {
        postError(kQ3ErrorOutOfMemory);
        return nullptr;
    }
}

// The number behind an enum argument, read without trusting that it is one
// of the enum's values (a C caller may pass any int).
template <class E> inline std::int32_t enumValue(const E& e) {
    static_assert(sizeof(E) == sizeof(std::int32_t));
    std::int32_t v;
    std::memcpy(&v, &e, sizeof v);
    return v;
}

inline TQ3Status status(bool ok) {
    return ok ? kQ3Success : kQ3Failure;
}
bool finite(float v);
bool finite(const TQ3Point3D& p);
bool finite(const TQ3Vector3D& v);

} // namespace q3
