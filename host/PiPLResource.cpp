// The property list as data symbols of the module, readable by a host that
// does not run the filter.
#include "host/PiPL.h"

#include <array>
#include <cstdint>

namespace {
constexpr std::size_t kPiPLSize =
    8 + (16 + 4) + (16 + 16) + (16 + 12) + (16 + 4) + (16 + 12) + (16 + 4) + (16 + 28);
} // namespace

extern "C" {
__attribute__((visibility("default"))) unsigned char PiPL_16000[kPiPLSize];
__attribute__((visibility("default"))) extern const uint32_t PiPL_16000_size = kPiPLSize;
}

namespace {
__attribute__((constructor)) void FillPiPL() {
    const std::vector<uint8_t> bytes = BuildFilterPiPL();
    for (std::size_t i = 0; i < kPiPLSize && i < bytes.size(); ++i)
        PiPL_16000[i] = bytes[i];
}
} // namespace
