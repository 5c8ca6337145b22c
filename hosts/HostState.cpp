#include "hosts/HostState.h"

#include "sdk/PIGlobal.h"

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

StateLoad LoadKeptRecord(const std::string& path, const std::string& owner, Handle& block,
                         std::string& warning) {
    block = nullptr;
    std::ifstream in(path, std::ios::binary);
    if (!in) return StateLoad::Missing;
    const auto damaged = [&](const std::string& why) {
        warning = path + " is damaged (" + why + "); the kept filter settings are ignored";
        return StateLoad::Damaged;
    };
    uint8_t head[12];
    if (!in.read(reinterpret_cast<char*>(head), sizeof head)) return damaged("too short");
    if (std::memcmp(head, kMagic, sizeof kMagic) != 0) return damaged("not a host state file");
    const uint64_t ownerLength = GetLE(head + 8, 4);
    if (ownerLength > kMaxOwner) return damaged("owner length out of range");
    std::vector<uint8_t> keptOwner(std::size_t(ownerLength) + 8);
    if (!in.read(reinterpret_cast<char*>(keptOwner.data()), std::streamsize(keptOwner.size())))
        return damaged("too short");
    const uint64_t length = GetLE(keptOwner.data() + ownerLength, 8);
    keptOwner.resize(std::size_t(ownerLength));
    if (length > kMaxKeptRecord) return damaged("record length out of range");
    std::vector<uint8_t> bytes(std::size_t(length) + 4);
    if (!in.read(reinterpret_cast<char*>(bytes.data()), std::streamsize(bytes.size())))
        return damaged("shorter than its length says");
    if (in.peek() != std::char_traits<char>::eof()) return damaged("longer than its length says");
    const uint32_t sum =
        Checksum(bytes.data(), std::size_t(length), Checksum(keptOwner.data(), keptOwner.size()));
    if (sum != uint32_t(GetLE(bytes.data() + length, 4))) return damaged("checksum mismatch");
    const std::string cut = owner.substr(0, kMaxOwner);
    if (std::string(keptOwner.begin(), keptOwner.end()) != cut) return StateLoad::OtherOwner;
    block = PIGlobalAlloc(PIGlobalZeroInit, std::size_t(length));
    if (!block) {
        warning = "out of memory for the kept filter settings; they are ignored";
        return StateLoad::Damaged;
    }
    if (length) std::memcpy(block, bytes.data(), std::size_t(length));
    return StateLoad::Loaded;
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
    const std::string cut = owner.substr(0, kMaxOwner);
    const auto* ownerBytes = reinterpret_cast<const uint8_t*>(cut.data());
    std::vector<uint8_t> out(kMagic, kMagic + sizeof kMagic);
    PutLE(out, cut.size(), 4);
    out.insert(out.end(), ownerBytes, ownerBytes + cut.size());
    PutLE(out, size, 8);
    const auto* data = static_cast<const uint8_t*>(block);
    out.insert(out.end(), data, data + size);
    PutLE(out, Checksum(data, size, Checksum(ownerBytes, cut.size())), 4);

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
