#include "ui/persistence/VPreferences.h"

#include "foundation/Failures.h"
#include "ui/persistence/VPreferencesFile.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>

namespace {
std::uint16_t Get16(const std::uint8_t* p) {
    return std::uint16_t(p[0] | p[1] << 8);
}

void Put16(std::uint8_t* p, std::uint16_t v) {
    p[0] = std::uint8_t(v);
    p[1] = std::uint8_t(v >> 8);
}

// Page header fields.
constexpr int kNextPage = 0;
constexpr int kPageUsed = 1;
constexpr int kHasNext = 3;
constexpr int kName = 4;
constexpr int kRoom = VPreferences::kPageSize - VPreferences::kHeaderSize;

void CopyName(char (&to)[256], const char* from) {
    std::snprintf(to, sizeof to, "%s", from ? from : "");
}
} // namespace

VPreferences::VPreferences(const char* productName, const char* companyName,
                           const char* sectionName) {
    CopyName(company, companyName);
    CopyName(product, productName);
    CopyName(section, sectionName);
    std::snprintf(fileName_, sizeof fileName_, "%s %s Preferences", company, product);
    buffer.assign(kPageSize, 0);
    capacity = kPageSize;
    Load();
    bool found = false;
    for (std::int32_t at = 0; at < used && !found; at += kPageSize)
        found = IsSectionName(&buffer[std::size_t(at) + kName]);
    if (!found) AddFirstPage();
}

VPreferences::~VPreferences() {
    Save();
}

void VPreferences::NameField(std::uint8_t* out) const {
    std::memset(out, 0, kNameSize);
    std::memcpy(out, section, std::min<std::size_t>(std::strlen(section), kNameSize - 1));
}

bool VPreferences::IsSectionName(const std::uint8_t* field) const {
    std::uint8_t name[kNameSize];
    NameField(name);
    return std::memcmp(field, name, kNameSize) == 0;
}

void VPreferences::GrowByPage() {
    if (used + kPageSize <= capacity) return;
    try {
        buffer.resize(std::size_t(capacity) + kPageSize, 0);
    } catch (const std::bad_alloc&) {
        ThrowPlin();
    }
    capacity += kPageSize;
}

void VPreferences::Load() {
    VPreferencesFile file(fileName_, false);
    std::int64_t size = 0;
    if (!file.Size(size)) return;
    std::uint8_t name[kNameSize];
    std::vector<std::uint8_t> page(kPageSize);
    for (std::int64_t at = 0; at + kPageSize <= size && used < kMaxPages * kPageSize;
         at += kPageSize) {
        if (!file.Seek(at + kName) || !file.ReadBytes(kNameSize, name)) break;
        if (!IsSectionName(name)) continue;
        if (!file.Seek(at) || !file.ReadBytes(kPageSize, page.data())) break;
        GrowByPage();
        std::memcpy(&buffer[std::size_t(used)], page.data(), kPageSize);
        used += kPageSize;
    }
}

bool VPreferences::Save() {
    if (!changed_ && !firstPageAdded_) return true; // the file has the section as it stands
    VPreferencesFile file(fileName_, true);
    std::int64_t size = 0;
    if (!file.Size(size)) return false;
    std::int32_t next = 0;
    std::uint8_t name[kNameSize];
    for (std::int64_t at = 0; at + kHeaderSize <= size && next < used; at += kPageSize) {
        if (!file.Seek(at + kName) || !file.ReadBytes(kNameSize, name)) return false;
        if (!IsSectionName(name)) continue;
        // A store that only made the section's empty first page leaves a
        // section that another run has written since.
        if (!changed_) return true;
        if (!file.Seek(at) || !file.WriteBytes(kPageSize, &buffer[std::size_t(next)])) return false;
        next += kPageSize;
    }
    if (next < used) {
        // The rest goes at the end, on the page grid: over a page cut short
        // at the end of the file, which no reader takes for a page.
        if (!file.Size(size) || !file.Seek(size - size % kPageSize) ||
            !file.WriteBytes(used - next, &buffer[std::size_t(next)]))
            return false;
    }
    if (!file.Close()) return false;
    changed_ = firstPageAdded_ = false;
    return true;
}

void VPreferences::AddFirstPage() {
    GrowByPage();
    std::uint8_t* page = &buffer[std::size_t(used)];
    std::memset(page, 0, kPageSize);
    NameField(page + kName);
    used += kPageSize;
    firstPageAdded_ = true;
}

std::int32_t VPreferences::EntriesEnd(std::int32_t page) const {
    const std::int32_t end = page + kPageSize;
    std::int32_t at = page + kHeaderSize;
    while (at + 2 <= end) {
        const std::int32_t length = Get16(&buffer[std::size_t(at)]);
        if (length == 0 || at + 2 + length > end) break;
        at += 2 + length;
    }
    return at;
}

std::int32_t VPreferences::NextPage(std::int32_t page, std::int32_t reached) const {
    const std::uint8_t* header = &buffer[std::size_t(page)];
    if (!header[kHasNext]) return -1;
    const std::int32_t next = header[kNextPage] * kPageSize;
    // A chain only runs forward, so that a page pointing back cannot loop.
    if (next < reached || next <= page || next >= used) return -1;
    return next;
}

std::int32_t VPreferences::Find(const char* key) const {
    if (!key || used < kPageSize) return -1;
    const std::size_t keyLength = std::strlen(key);
    std::int32_t page = 0;
    while (page >= 0) {
        const std::int32_t end = page + kPageSize;
        std::int32_t at = page + kHeaderSize;
        while (at + 2 <= end) {
            const std::int32_t length = Get16(&buffer[std::size_t(at)]);
            if (length == 0 || at + 2 + length > end) break;
            const std::uint8_t* entry = &buffer[std::size_t(at) + 2];
            if (std::size_t(length) > keyLength && entry[keyLength] == 0 &&
                std::memcmp(entry, key, keyLength) == 0)
                return at;
            at += 2 + length;
        }
        page = NextPage(page, at);
    }
    return -1;
}

bool VPreferences::Read(const char* key, void* out, std::int32_t size, std::int32_t& length) const {
    length = 0;
    const std::int32_t at = Find(key);
    if (at < 0 || !out || size < 0) return false;
    const std::int32_t keyBytes = std::int32_t(std::strlen(key)) + 1;
    const std::int32_t valueLength = Get16(&buffer[std::size_t(at)]) - keyBytes;
    length = std::min(size, valueLength);
    if (length > 0) std::memcpy(out, &buffer[std::size_t(at + 2 + keyBytes)], std::size_t(length));
    return true;
}

bool VPreferences::ReadLong(const char* key, std::int32_t& value) const {
    std::uint8_t bytes[4];
    std::int32_t length = 0;
    if (!Read(key, bytes, 4, length) || length != 4) return false;
    value = std::int32_t(std::uint32_t(bytes[0]) | std::uint32_t(bytes[1]) << 8 |
                         std::uint32_t(bytes[2]) << 16 | std::uint32_t(bytes[3]) << 24);
    return true;
}

bool VPreferences::WriteLong(const char* key, std::int32_t value) {
    const std::uint32_t v = std::uint32_t(value);
    const std::uint8_t bytes[4] = {std::uint8_t(v), std::uint8_t(v >> 8), std::uint8_t(v >> 16),
                                   std::uint8_t(v >> 24)};
    return Write(key, bytes, 4);
}

bool VPreferences::Write(const char* key, const void* data, std::int32_t length) {
    if (!key || !*key || length < 0 || (length > 0 && !data)) return false;
    if (std::int32_t(std::strlen(key)) + length + 3 > kRoom) return false;
    // A file from elsewhere may hold the key twice: no older entry may
    // stand in front of the new one.
    while (Delete(key)) {
    }
    changed_ = true;
    return Add(key, data, length);
}

bool VPreferences::Delete(const char* key) {
    const std::int32_t at = Find(key);
    if (at < 0) return false;
    DeleteAt(at);
    changed_ = true;
    return true;
}

void VPreferences::DeleteAt(std::int32_t at) {
    const std::int32_t page = at / kPageSize * kPageSize;
    const std::int32_t end = page + kPageSize;
    const std::int32_t size = Get16(&buffer[std::size_t(at)]) + 2;
    // The entries behind move down; what lay past the last readable entry
    // of a damaged page is not moved into reach, but cleared with the rest.
    const std::int32_t entriesEnd = EntriesEnd(page);
    std::uint8_t* base = buffer.data();
    std::memmove(base + at, base + at + size, std::size_t(entriesEnd - at - size));
    std::memset(base + entriesEnd - size, 0, std::size_t(end - entriesEnd + size));
    const std::int32_t pageUsed = Get16(base + page + kPageUsed);
    Put16(base + page + kPageUsed, std::uint16_t(std::max(0, pageUsed - size)));
}

bool VPreferences::Add(const char* key, const void* data, std::int32_t length) {
    const std::int32_t keyLength = std::int32_t(std::strlen(key));
    const std::int32_t need = keyLength + length + 3;
    auto hasRoom = [&](std::int32_t page) {
        const std::int32_t pageUsed = Get16(&buffer[std::size_t(page) + kPageUsed]);
        return kRoom - pageUsed >= need && EntriesEnd(page) + need <= page + kPageSize;
    };
    std::int32_t page = 0;
    for (std::int32_t next; !hasRoom(page) && (next = NextPage(page, page + 1)) >= 0;)
        page = next;
    if (!hasRoom(page)) {
        if (used / kPageSize >= kMaxPages) return false;
        GrowByPage();
        buffer[std::size_t(page) + kHasNext] = 1;
        buffer[std::size_t(page) + kNextPage] = std::uint8_t(used / kPageSize);
        page = used;
        std::memset(&buffer[std::size_t(page)], 0, kPageSize);
        NameField(&buffer[std::size_t(page) + kName]);
        used += kPageSize;
    }
    std::uint8_t* header = &buffer[std::size_t(page)];
    Put16(header + kPageUsed, std::uint16_t(Get16(header + kPageUsed) + need));
    const std::int32_t at = EntriesEnd(page);
    std::uint8_t* entry = &buffer[std::size_t(at)];
    Put16(entry, std::uint16_t(need - 2));
    std::memcpy(entry + 2, key, std::size_t(keyLength) + 1);
    if (length > 0) std::memcpy(entry + 3 + keyLength, data, std::size_t(length));
    // Behind the entry the page is empty: on a damaged page, whatever lay
    // there must not read as entries.
    std::memset(entry + need, 0, std::size_t(page + kPageSize - at - need));
    return true;
}
