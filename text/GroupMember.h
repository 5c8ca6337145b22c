// Adding to a group where a refusal is a failure of the library: the letters
// are built whole or not at all.
#pragma once

#include "d3d/DGroupObject.h"

inline void AddMember(DGroupObject& group, const DObject& member) {
    if (!group.AddObject(member)) ThrowPlin();
}
