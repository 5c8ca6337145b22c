#include "ui/persistence/VPreferencesFile.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
// Makes the folder and those above it that are missing.
bool MakeFolder(const std::string& folder) {
    struct stat st {};
    if (stat(folder.c_str(), &st) == 0) return S_ISDIR(st.st_mode);
    const std::size_t slash = folder.find_last_of('/');
    if (slash != std::string::npos && slash > 0 && !MakeFolder(folder.substr(0, slash)))
        return false;
    return mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST;
}

// Reads the whole of an open file, at most VPreferencesFile::kMaxSize bytes.
bool ReadAll(int fd, std::vector<std::uint8_t>& out) {
    struct stat st {};
    if (fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) || st.st_size > VPreferencesFile::kMaxSize)
        return false;
    out.resize(static_cast<std::size_t>(st.st_size));
    std::size_t done = 0;
    while (done < out.size()) {
        const ssize_t n = pread(fd, out.data() + done, out.size() - done, off_t(done));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break; // shorter than it said: keep what is there
        done += std::size_t(n);
    }
    out.resize(done);
    return true;
}

bool WriteAll(int fd, const std::vector<std::uint8_t>& data) {
    std::size_t done = 0;
    while (done < data.size()) {
        const ssize_t n = write(fd, data.data() + done, data.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        done += std::size_t(n);
    }
    return true;
}
} // namespace

std::string VPreferencesFile::Folder() {
    const char* config = std::getenv("XDG_CONFIG_HOME");
    if (config && config[0] == '/') return config;
    const char* home = std::getenv("HOME");
    if (home && home[0] == '/') return std::string(home) + "/.config";
    return {};
}

std::string VPreferencesFile::PathOf(const char* name) {
    const std::string folder = Folder();
    if (folder.empty() || !name || !*name || std::strchr(name, '/')) return {};
    return folder + "/" + name;
}

VPreferencesFile::VPreferencesFile(const char* name, bool forWriting) : path_(PathOf(name)) {
    if (path_.empty()) return;
    writing_ = forWriting;
    open_ = forWriting ? OpenForWriting() : OpenForReading();
    if (!open_) Release();
}

VPreferencesFile::~VPreferencesFile() {
    Close();
}

bool VPreferencesFile::OpenForReading() {
    const int fd = ::open(path_.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return errno == ENOENT; // a missing file reads as empty
    const bool ok = ReadAll(fd, data_);
    ::close(fd);
    return ok;
}

bool VPreferencesFile::OpenForWriting() {
    const std::size_t slash = path_.find_last_of('/');
    if (!MakeFolder(path_.substr(0, slash))) return false;
    // Writers take turns on the file's lock. The file a writer waited for
    // may have been replaced by the one before it: it then locks the new one.
    for (int attempt = 0; attempt < 100; ++attempt) {
        const int fd = ::open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (fd < 0) return false;
        int locked;
        do
            locked = flock(fd, LOCK_EX);
        while (locked != 0 && errno == EINTR);
        struct stat held {
        }, named{};
        if (locked == 0 && fstat(fd, &held) == 0 && stat(path_.c_str(), &named) == 0 &&
            held.st_ino == named.st_ino && held.st_dev == named.st_dev) {
            lockFd_ = fd;
            return ReadAll(fd, data_);
        }
        ::close(fd);
        if (locked != 0) return false;
    }
    return false;
}

bool VPreferencesFile::Commit() {
    // The new content goes to a file of its own in the same folder, which
    // then takes the old one's name in one step.
    std::string temp = path_ + ".XXXXXX";
    const int fd = mkstemp(temp.data());
    if (fd < 0) return false;
    struct stat old {};
    bool ok = WriteAll(fd, data_);
    if (ok && fstat(lockFd_, &old) == 0) fchmod(fd, old.st_mode & 0777);
    ok = ok && fsync(fd) == 0;
    ok = ::close(fd) == 0 && ok;
    ok = ok && rename(temp.c_str(), path_.c_str()) == 0;
    if (!ok) unlink(temp.c_str());
    return ok;
}

void VPreferencesFile::Release() {
    if (lockFd_ >= 0) ::close(lockFd_);
    lockFd_ = -1;
    open_ = false;
    data_.clear();
    data_.shrink_to_fit();
}

bool VPreferencesFile::Close() {
    if (!open_) return false;
    const bool ok = !writing_ || !changed_ || Commit();
    Release();
    return ok;
}

bool VPreferencesFile::Tell(std::int64_t& position) const {
    if (!open_) return false;
    position = position_;
    return true;
}

bool VPreferencesFile::Seek(std::int64_t position) {
    if (!open_ || position < 0 || position > std::int64_t(data_.size())) return false;
    position_ = position;
    return true;
}

bool VPreferencesFile::Size(std::int64_t& size) const {
    if (!open_) return false;
    size = std::int64_t(data_.size());
    return true;
}

bool VPreferencesFile::SeekEnd() {
    return Seek(std::int64_t(data_.size()));
}

bool VPreferencesFile::ReadBytes(std::int64_t count, void* buffer) {
    if (!open_ || count < 0 || count > std::int64_t(data_.size()) - position_) return false;
    if (count > 0) std::memcpy(buffer, data_.data() + position_, std::size_t(count));
    position_ += count;
    return true;
}

bool VPreferencesFile::WriteBytes(std::int64_t count, const void* buffer) {
    if (!open_ || !writing_ || count < 0 || count > kMaxSize - position_) return false;
    const std::size_t end = std::size_t(position_ + count);
    if (end > data_.size()) data_.resize(end);
    if (count > 0) std::memcpy(data_.data() + position_, buffer, std::size_t(count));
    position_ += count;
    changed_ = true;
    return true;
}

std::int32_t SignedByteSum(const void* bytes, std::size_t count) {
    const auto* p = static_cast<const std::uint8_t*>(bytes);
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum += std::uint32_t(std::int32_t(static_cast<std::int8_t>(p[i])));
    return std::int32_t(sum);
}
