// The two elements of this system's own that ride in attribute sets: a name
// ("NameAttribute") and a tag of a name and a number ("TagAttribute"). They
// are registered with the library when the 3D system starts and unregistered
// when it ends.
#pragma once

#include "platform/qd3d/QD3D.h"

#include <cstdint>

// The data of a tag: a string object (may be null) and a signed number.
struct DTagAttributeData {
    TQ3StringObject string;
    std::int32_t number;
};

// Registers both element classes; throws kFailPlin or kFailLF3q when the
// library refuses. Registering twice does nothing the second time.
void RegisterCustomElements();
// Unregisters both; safe to call when they are not registered.
void UnregisterCustomElements();

// The types the library gave the two elements; 0 while not registered.
TQ3ElementType GetNameAttributeType();
TQ3ElementType GetTagAttributeType();
