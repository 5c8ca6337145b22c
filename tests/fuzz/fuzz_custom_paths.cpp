// Fuzz target: any bytes as the custom paths file. Whatever records are read
// are well formed, and written and read again they come back the same.
#include "curves/VCustomPathData.h"
#include "curves/VCustomPathsFile.h"
#include "foundation/KList.h"

#include <cstdlib>
#include <cstring>

#include <cstdio>

// A broken promise of the code under test ends the run where it is seen.
#define Check(condition)                                                                           \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition);                   \
            std::abort();                                                                          \
        }                                                                                          \
    } while (0)

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    KList records;
    const std::int32_t count = ParseCustomPaths(data, size, records);
    Check(count >= 0 && std::uint32_t(count) == records.GetCount());
    for (std::uint32_t i = 1; i <= records.GetCount(); ++i) {
        const auto* r = static_cast<const VCustomPathData*>(records.EntryAt(i));
        Check(r->pointCount > 1 && r->points && (r->knotCount == 0) == !r->knots);
        Check(std::memchr(r->name, 0, sizeof r->name) != nullptr);
    }
    const std::vector<std::uint8_t> bytes = FormatCustomPaths(records);
    KList again;
    Check(ParseCustomPaths(bytes.data(), bytes.size(), again) == count);
    Check(FormatCustomPaths(again) == bytes);
    return 0;
}
