#include "d3d/DCustomElements.h"

#include "d3d/DObject.h"

#include <cstring>

namespace {

TQ3XObjectClass gNameClass = nullptr;
TQ3XObjectClass gTagClass = nullptr;
TQ3ElementType gNameType = 0;
TQ3ElementType gTagType = 0;

TQ3Object ReferenceOrNull(TQ3Object object) {
    return object ? Q3Shared_GetReference(object) : nullptr;
}

// Both elements hold a string object first; the traversal submits it.
TQ3Status TraverseString(TQ3Object, void* data, TQ3ViewObject view) {
    if (!data) return kQ3Success;
    TQ3Object string = *static_cast<TQ3Object*>(data);
    if (!string) return kQ3Success;
    Q3XView_SubmitWriteData(view, 0, nullptr, nullptr);
    return Q3Object_Submit(string, view);
}

template <TQ3ElementType* Type> TQ3Status ReadElement(TQ3Object parent, TQ3FileObject file) {
    TQ3Object read = Q3File_ReadObject(file);
    if (!read) return kQ3Failure;
    TQ3Status status;
    if (Type == &gTagType) {
        DTagAttributeData tag{read, 0};
        status = Q3Set_Add(parent, *Type, &tag);
    } else {
        status = Q3Set_Add(parent, *Type, &read);
    }
    // The set took a reference of its own through the copy method.
    Q3Object_Dispose(read);
    return status;
}

// ---- NameAttribute: one string object --------------------------------------

TQ3Status NameCopy(const void* from, void* to) {
    TQ3Object source = *static_cast<const TQ3Object*>(from);
    *static_cast<TQ3Object*>(to) = ReferenceOrNull(source);
    return kQ3Success;
}

TQ3Status NameReplace(const void* from, void* to) {
    TQ3Object fresh = ReferenceOrNull(*static_cast<const TQ3Object*>(from));
    TQ3Object& held = *static_cast<TQ3Object*>(to);
    if (held) Q3Object_Dispose(held);
    held = fresh;
    return kQ3Success;
}

TQ3Status NameDelete(void* element) {
    TQ3Object& held = *static_cast<TQ3Object*>(element);
    if (held) Q3Object_Dispose(held);
    held = nullptr;
    return kQ3Success;
}

TQ3XFunctionPointer NameMetaHandler(TQ3XMethodType method) {
    switch (method) {
    case kQ3XMethodTypeObjectTraverse:
        return reinterpret_cast<TQ3XFunctionPointer>(&TraverseString);
    case kQ3XMethodTypeObjectReadData:
        return reinterpret_cast<TQ3XFunctionPointer>(&ReadElement<&gNameType>);
    case kQ3XMethodTypeElementCopyAdd:
    case kQ3XMethodTypeElementCopyDuplicate:
    case kQ3XMethodTypeElementCopyGet:
        return reinterpret_cast<TQ3XFunctionPointer>(&NameCopy);
    case kQ3XMethodTypeElementCopyReplace:
        return reinterpret_cast<TQ3XFunctionPointer>(&NameReplace);
    case kQ3XMethodTypeElementDelete:
        return reinterpret_cast<TQ3XFunctionPointer>(&NameDelete);
    default:
        return nullptr;
    }
}

// ---- TagAttribute: a string object (may be null) and a number ---------------

TQ3Status TagCopy(const void* from, void* to) {
    const auto* source = static_cast<const DTagAttributeData*>(from);
    auto* target = static_cast<DTagAttributeData*>(to);
    target->string = ReferenceOrNull(source->string);
    target->number = source->number;
    return kQ3Success;
}

TQ3Status TagReplace(const void* from, void* to) {
    const auto* source = static_cast<const DTagAttributeData*>(from);
    auto* target = static_cast<DTagAttributeData*>(to);
    TQ3Object fresh = ReferenceOrNull(source->string);
    if (target->string) Q3Object_Dispose(target->string);
    target->string = fresh;
    target->number = source->number;
    return kQ3Success;
}

TQ3Status TagDelete(void* element) {
    auto* tag = static_cast<DTagAttributeData*>(element);
    if (tag->string) Q3Object_Dispose(tag->string);
    tag->string = nullptr;
    return kQ3Success;
}

TQ3XFunctionPointer TagMetaHandler(TQ3XMethodType method) {
    switch (method) {
    case kQ3XMethodTypeObjectTraverse:
        return reinterpret_cast<TQ3XFunctionPointer>(&TraverseString);
    case kQ3XMethodTypeObjectReadData:
        return reinterpret_cast<TQ3XFunctionPointer>(&ReadElement<&gTagType>);
    case kQ3XMethodTypeElementCopyAdd:
    case kQ3XMethodTypeElementCopyDuplicate:
    case kQ3XMethodTypeElementCopyGet:
        return reinterpret_cast<TQ3XFunctionPointer>(&TagCopy);
    case kQ3XMethodTypeElementCopyReplace:
        return reinterpret_cast<TQ3XFunctionPointer>(&TagReplace);
    case kQ3XMethodTypeElementDelete:
        return reinterpret_cast<TQ3XFunctionPointer>(&TagDelete);
    default:
        return nullptr;
    }
}

// Whether the class is still the library's: the end of the library drops
// every class registered from outside.
bool StillRegistered(TQ3XObjectClass objectClass, TQ3ElementType type, const char* name) {
    if (!objectClass || type == 0 || Q3XObjectHierarchy_FindClassByType(type) != objectClass)
        return false;
    TQ3ObjectClassNameString registered{};
    if (Q3ObjectHierarchy_GetStringFromType(type, registered) != kQ3Success) return false;
    return std::strcmp(registered, name) == 0;
}

constexpr const char* kNameClass = "NameAttribute";
constexpr const char* kTagClass = "TagAttribute";

void RegisterOne(TQ3XObjectClass& objectClass, TQ3ElementType& type, const char* name,
                 TQ3Uns32 size, TQ3XMetaHandler handler) {
    if (StillRegistered(objectClass, type, name)) return;
    Q3Error_Get(nullptr);
    objectClass = nullptr;
    type = 0;
    TQ3ElementType registered = 0;
    TQ3XObjectClass made = Q3XElementClass_Register(&registered, name, size, handler);
    CheckObject(made);
    TQ3ObjectType fetched = 0;
    if (Q3XObjectClass_GetType(made, &fetched) != kQ3Success) {
        Q3XObjectHierarchy_UnregisterClass(made);
        CheckStatus(kQ3Failure);
    }
    objectClass = made;
    type = fetched;
}

void UnregisterOne(TQ3XObjectClass& objectClass, TQ3ElementType& type, const char* name) {
    if (StillRegistered(objectClass, type, name)) Q3XObjectHierarchy_UnregisterClass(objectClass);
    Q3Error_Get(nullptr);
    objectClass = nullptr;
    type = 0;
}

} // namespace

void RegisterCustomElements() {
    RegisterOne(gNameClass, gNameType, kNameClass, sizeof(TQ3StringObject), &NameMetaHandler);
    try {
        RegisterOne(gTagClass, gTagType, kTagClass, sizeof(DTagAttributeData), &TagMetaHandler);
    } catch (...) {
        UnregisterOne(gNameClass, gNameType, kNameClass);
        throw;
    }
}

void UnregisterCustomElements() {
    UnregisterOne(gTagClass, gTagType, kTagClass);
    UnregisterOne(gNameClass, gNameType, kNameClass);
}

TQ3ElementType GetNameAttributeType() {
    return StillRegistered(gNameClass, gNameType, kNameClass) ? gNameType : 0;
}

TQ3ElementType GetTagAttributeType() {
    return StillRegistered(gTagClass, gTagType, kTagClass) ? gTagType : 0;
}
