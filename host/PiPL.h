#pragma once

#include <cstdint>
#include <vector>

// The filter's property list, encoded as the host reads it: name, category,
// version, entry, image modes and the filter case table.
std::vector<uint8_t> BuildFilterPiPL();
