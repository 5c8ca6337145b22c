#pragma once

#include <cstdint>

// What the 3D system answers about its library before anything is started:
// the library is part of the module, so it is always there, at the interface
// version 1.5.0 that the scene code is written against.
inline bool IsQD3DAvailable() {
    return true;
}
inline uint32_t QD3DVersion() {
    return 0x10500;
}
