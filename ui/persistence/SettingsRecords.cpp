#include "ui/persistence/SettingsRecords.h"

#include "ui/persistence/VPreferencesFile.h"

#include <cstring>

std::int32_t RecordChecksum(const void* record, std::size_t size) {
    return size < 4 ? 0 : SignedByteSum(record, size - 4);
}

bool RecordChecksumHolds(const void* record, std::size_t size) {
    if (size < 4) return false;
    std::int32_t stored;
    std::memcpy(&stored, static_cast<const std::uint8_t*>(record) + size - 4, 4);
    return stored == RecordChecksum(record, size);
}
