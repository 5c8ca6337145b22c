// The peer: the same triangles through Mesa's software OpenGL (OSMesa).
#pragma once

#include "bench/qd3d/TextMesh.h"

#include <cstdint>
#include <memory>
#include <vector>

class OSMesaPeer {
  public:
    OSMesaPeer(const TextMesh& mesh, int width, int height);
    ~OSMesaPeer();
    bool ok() const { return context != nullptr; }
    void drawFrame(); // returns when the frame is finished
    const std::vector<std::uint8_t>& pixels() const { return buffer; }

  private:
    void* context = nullptr;
    int width, height;
    std::vector<std::uint8_t> buffer;
    unsigned buffers[3] = {0, 0, 0};
    int count = 0;
};
