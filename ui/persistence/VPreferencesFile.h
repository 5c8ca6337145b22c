// One of the filter's own files in the user's configuration folder
// ($XDG_CONFIG_HOME, else ~/.config), read or written as a whole.
//
// A file opened for reading is read into memory at once and closed, so a
// reader never holds it. A file opened for writing is locked against other
// writers, read into memory, changed there, and on Close written to a new
// file beside the old one that then takes its name. A crash or a full disk
// therefore leaves the old file as it was, and a reader in another process
// sees either the old or the new file, never a half-written one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class VPreferencesFile {
  public:
    // Files larger than this are not the filter's: they are neither read nor
    // replaced.
    static constexpr std::int64_t kMaxSize = 16 << 20;

    // Opens `name` in the configuration folder. A missing file reads as
    // empty; for writing, the folder is made if needed.
    VPreferencesFile(const char* name, bool forWriting);
    // Closes the file; a write that was not closed yet is committed.
    virtual ~VPreferencesFile();

    VPreferencesFile(const VPreferencesFile&) = delete;
    VPreferencesFile& operator=(const VPreferencesFile&) = delete;

    // Whether the file could be opened. Without it every operation answers
    // false and does nothing.
    bool IsOpen() const { return open_; }
    bool Tell(std::int64_t& position) const;
    // From the start; a position past the end is refused.
    bool Seek(std::int64_t position);
    bool Size(std::int64_t& size) const;
    bool SeekEnd();
    // Reads exactly count bytes, or nothing and false.
    bool ReadBytes(std::int64_t count, void* buffer);
    // Writes at the position, growing the file where it passes the end.
    bool WriteBytes(std::int64_t count, const void* buffer);
    // Makes what was written the file's content. False when that failed:
    // the file then keeps what it had before. Reading files just close.
    bool Close();

    // The configuration folder, or empty when neither XDG_CONFIG_HOME nor
    // HOME names one. A relative XDG_CONFIG_HOME is ignored.
    static std::string Folder();
    // The full name of `name` in the folder, or empty.
    static std::string PathOf(const char* name);

  private:
    bool OpenForReading();
    bool OpenForWriting();
    bool Commit();
    void Release();

    std::string path_;
    std::vector<std::uint8_t> data_;
    std::int64_t position_ = 0;
    int lockFd_ = -1;
    bool open_ = false;
    bool writing_ = false;
    bool changed_ = false;
};

// The checksum of the filter's files: the sum of the bytes, each taken as a
// signed byte, in a wrapping 32-bit total.
std::int32_t SignedByteSum(const void* bytes, std::size_t count);
