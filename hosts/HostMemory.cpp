#include "hosts/HostMemory.h"

#include <cstdlib>
#include <fstream>
#include <limits>
#include <sstream>
#include <unistd.h>

namespace plumet::hosts {

int64_t ParseMemAvailable(const std::string& meminfo) {
    std::istringstream lines(meminfo);
    std::string line;
    while (std::getline(lines, line)) {
        if (line.rfind("MemAvailable:", 0) != 0) continue;
        const char* p = line.c_str() + 13;
        char* end = nullptr;
        const long long kib = std::strtoll(p, &end, 10);
        if (end == p || kib < 0 || kib > std::numeric_limits<int64_t>::max() / 1024) return -1;
        return int64_t(kib) * 1024;
    }
    return -1;
}

int32_t AvailableMemoryForFilter() {
    int64_t bytes = -1;
    if (std::ifstream in("/proc/meminfo"); in) {
        std::stringstream text;
        text << in.rdbuf();
        bytes = ParseMemAvailable(text.str());
    }
    if (bytes < 0) {
        const long pages = sysconf(_SC_AVPHYS_PAGES);
        const long pageSize = sysconf(_SC_PAGESIZE);
        if (pages > 0 && pageSize > 0) bytes = int64_t(pages) * pageSize;
    }
    if (bytes < 0) bytes = int64_t(64) << 20;
    return int32_t(std::min<int64_t>(bytes, std::numeric_limits<int32_t>::max()));
}

} // namespace plumet::hosts
