// How much memory the host offers a filter (FilterRecord.maxSpace).
#ifndef PLUMET_HOSTS_HOSTMEMORY_H
#define PLUMET_HOSTS_HOSTMEMORY_H

#include <cstdint>
#include <string>

namespace plumet::hosts {

// MemAvailable from a /proc/meminfo text, in bytes, or -1 if absent.
int64_t ParseMemAvailable(const std::string& meminfo);

// What the machine has available now: MemAvailable of /proc/meminfo, else the
// free pages the system reports, else 64 MiB; at most INT32_MAX.
int32_t AvailableMemoryForFilter();

} // namespace plumet::hosts

#endif
