#include "hosts/HostState.h"

#include "sdk/PIGlobal.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace plumet::hosts {

namespace {

constexpr char kMagic[8] = {'P', 'L', 'M', 'H', 'O', 'S', 'T', '2'};

uint32_t Checksum(const uint8_t* data, std::size_t size, uint32_t hash = 2166136261u) {
    for (std::size_t i = 0; i < size; ++i)
        hash = (hash ^ data[i]) * 16777619u;
    return hash;
}

void PutLE(std::vector<uint8_t>& out, uint64_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        out.push_back(uint8_t(value >> (8 * i)));
}

uint64_t GetLE(const uint8_t* p, int bytes) {
    uint64_t value = 0;
    for (int i = 0; i < bytes; ++i)
        value |= uint64_t(p[i]) << (8 * i);
    return value;
}

bool MakeDirectories(const std::string& dir) {
    if (dir.empty()) return true;
    struct stat st {};
    if (stat(dir.c_str(), &st) == 0) return S_ISDIR(st.st_mode);
    const auto slash = dir.find_last_of('/');
    if (slash != std::string::npos && slash > 0 && !MakeDirectories(dir.substr(0, slash)))
        return false;
    return mkdir(dir.c_str(), 0700) == 0 || errno == EEXIST;
}

} // namespace

std::string DefaultStatePath() {
    const char* state = std::getenv("XDG_STATE_HOME");
    if (state && state[0] == '/') return std::string(state) + "/plumet/host-state";
    const char* home = std::getenv("HOME");
    if (home && home[0]) return std::string(home) + "/.local/state/plumet/host-state";
    return "";
}

std::string KeptRecordOwner(const PiPLInfo& info) {
    return info.name + "\n" + info.category + "\n" + VersionText(info.version);
}

std::vector<uint8_t> EncodeKeptRecord(const std::string& owner, Handle block) {
    const std::string cut = owner.substr(0, kMaxOwner);
    const auto* ownerBytes = reinterpret_cast<const uint8_t*>(cut.data());
    const std::size_t size = PIGlobalSize(block);
    std::vector<uint8_t> out(kMagic, kMagic + sizeof kMagic);
    PutLE(out, cut.size(), 4);
    out.insert(out.end(), ownerBytes, ownerBytes + cut.size());
    PutLE(out, size, 8);
    const auto* data = static_cast<const uint8_t*>(block);
    if (size) out.insert(out.end(), data, data + size);
    PutLE(out, Checksum(data, size, Checksum(ownerBytes, cut.size())), 4);
    return out;
}

StateLoad DecodeKeptRecord(const uint8_t* data, std::size_t size, const std::string& owner,
                           Handle& block, std::string& why) {
    block = nullptr;
    const auto damaged = [&](const char* reason) {
        why = reason;
        return StateLoad::Damaged;
    };
    if (size < 12) return damaged("too short");
    if (std::memcmp(data, kMagic, sizeof kMagic) != 0) return damaged("not a host state file");
    const uint64_t ownerLength = GetLE(data + 8, 4);
    if (ownerLength > kMaxOwner) return damaged("owner length out of range");
    if (size - 12 < ownerLength + 8) return damaged("too short");
    const uint8_t* keptOwner = data + 12;
    const uint64_t length = GetLE(keptOwner + ownerLength, 8);
    if (length > kMaxKeptRecord) return damaged("record length out of range");
    const uint64_t rest = size - 12 - ownerLength - 8;
    if (rest < length + 4) return damaged("shorter than its length says");
    if (rest > length + 4) return damaged("longer than its length says");
    const uint8_t* bytes = keptOwner + ownerLength + 8;
    const uint32_t sum =
        Checksum(bytes, std::size_t(length), Checksum(keptOwner, std::size_t(ownerLength)));
    if (sum != uint32_t(GetLE(bytes + length, 4))) return damaged("checksum mismatch");
    if (std::string(reinterpret_cast<const char*>(keptOwner), std::size_t(ownerLength)) !=
        owner.substr(0, kMaxOwner))
        return StateLoad::OtherOwner;
    block = PIGlobalAlloc(PIGlobalZeroInit, std::size_t(length));
    if (!block) return damaged("out of memory");
    if (length) std::memcpy(block, bytes, std::size_t(length));
    return StateLoad::Loaded;
}

StateLoad LoadKeptRecord(const std::string& path, const std::string& owner, Handle& block,
                         std::string& warning) {
    block = nullptr;
    struct stat st {};
    if (stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode)) {
        warning = path + " is a directory, not the host's state file; the filter's settings "
                         "can be neither read nor kept there";
        return StateLoad::Unusable;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) return StateLoad::Missing;
    // The largest file a kept record makes, and one byte more to tell it is longer.
    constexpr std::size_t kMaxFile = 12 + kMaxOwner + 8 + kMaxKeptRecord + 4 + 1;
    in.seekg(0, std::ios::end);
    const std::streamoff fileSize = in.tellg();
    in.seekg(0, std::ios::beg);
    if (fileSize < 0) return StateLoad::Missing;
    std::vector<uint8_t> bytes(std::min<std::size_t>(std::size_t(fileSize), kMaxFile));
    in.read(reinterpret_cast<char*>(bytes.data()), std::streamsize(bytes.size()));
    bytes.resize(std::size_t(in.gcount()));
    std::string why;
    const StateLoad load = DecodeKeptRecord(bytes.data(), bytes.size(), owner, block, why);
    if (load == StateLoad::Damaged)
        warning = path + " is damaged (" + why + "); the kept filter settings are ignored";
    return load;
}

bool SaveKeptRecord(const std::string& path, const std::string& owner, Handle block,
                    std::string& error) {
    if (path.empty()) {
        error = "no place for the host state (neither XDG_STATE_HOME nor HOME is set)";
        return false;
    }
    if (!block) {
        std::remove(path.c_str());
        return true;
    }
    const std::size_t size = PIGlobalSize(block);
    if (size > kMaxKeptRecord) {
        error = "the filter's record is too large to keep (" + std::to_string(size) + " bytes)";
        return false;
    }
    const auto slash = path.find_last_of('/');
    if (slash != std::string::npos && !MakeDirectories(path.substr(0, slash))) {
        error = "cannot make the directory of " + path + ": " + std::strerror(errno);
        return false;
    }
    const std::vector<uint8_t> out = EncodeKeptRecord(owner, block);

    const std::string temp = path + ".new" + std::to_string(getpid());
    {
        std::ofstream file(temp, std::ios::binary | std::ios::trunc);
        if (!file.write(reinterpret_cast<const char*>(out.data()), std::streamsize(out.size())) ||
            !file.flush()) {
            error = "cannot write " + temp;
            std::remove(temp.c_str());
            return false;
        }
    }
    if (std::rename(temp.c_str(), path.c_str()) != 0) {
        error = "cannot write " + path + ": " + std::strerror(errno);
        std::remove(temp.c_str());
        return false;
    }
    return true;
}

} // namespace plumet::hosts
