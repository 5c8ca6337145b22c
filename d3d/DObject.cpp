#include "d3d/DObject.h"

void CheckStatus(TQ3Status status) {
    if (status == kQ3Success) return;
    // The library's own error says nothing a user could act on; only the
    // fact of the failure travels on.
    Q3Error_Get(nullptr);
    throw kFailLF3q;
}

void CheckObject(const void* object) {
    if (!object) {
        Q3Error_Get(nullptr);
        throw kFailPlin;
    }
}

void DObjectHierarchy::GetSubClassData(TQ3ObjectType type, TQ3SubClassData* data) {
    CheckStatus(Q3ObjectHierarchy_GetSubClassData(type, data));
}

void DObjectHierarchy::EmptySubClassData(TQ3SubClassData* data) {
    CheckStatus(Q3ObjectHierarchy_EmptySubClassData(data));
}

void DObjectHierarchy::GetStringFromType(TQ3ObjectType type, std::string& text) {
    TQ3ObjectClassNameString name{};
    CheckStatus(Q3ObjectHierarchy_GetStringFromType(type, name));
    name[kQ3StringMaximumLength - 1] = '\0';
    text = name;
}

void DObjectHierarchy::GetTypeFromString(const char* text, TQ3ObjectType* type) {
    CheckStatus(Q3ObjectHierarchy_GetTypeFromString(text, type));
}
