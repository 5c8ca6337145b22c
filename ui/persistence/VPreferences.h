// The paged key and value store of the preferences file. A section is the
// set of 512-byte pages that bear its name, in file order; pages of other
// sections may lie between them and are kept as they are.
//
// Page: nextPage (1 byte, a page number within the section), pageUsed
// (2 bytes, bytes of entries), hasNext (1 byte), the section name (20 bytes,
// zero-filled), then entries up to the end of the page. Entry: length
// (2 bytes: key length + 1 + value length; 0 ends the page), the key with its
// terminating zero, the value. Numbers are little-endian.
#pragma once

#include <cstdint>
#include <vector>

class VPreferences {
  public:
    static constexpr std::int32_t kPageSize = 512;
    static constexpr std::int32_t kHeaderSize = 24;
    static constexpr std::int32_t kNameSize = 20;
    // nextPage is one byte: a chain reaches no further page than this.
    static constexpr std::int32_t kMaxPages = 256;

    // Loads the section from the file "<company> <product> Preferences" and,
    // if the file has no page of it, makes its first page.
    VPreferences(const char* product, const char* company, const char* section);
    // Saves the section back if it changed since it was loaded, or if the
    // file had none of its pages.
    virtual ~VPreferences();

    VPreferences(const VPreferences&) = delete;
    VPreferences& operator=(const VPreferences&) = delete;

    // Copies up to size bytes of the value to buffer and stores the number
    // copied in length; length 0 and false when the key is missing.
    bool Read(const char* key, void* buffer, std::int32_t size, std::int32_t& length) const;
    // Replaces the entry, or adds one. False when the value cannot fit a page
    // or the section has no page number left.
    bool Write(const char* key, const void* data, std::int32_t length);
    // Four-byte values; a missing key keeps the caller's value.
    bool ReadLong(const char* key, std::int32_t& value) const;
    bool WriteLong(const char* key, std::int32_t value);
    bool Delete(const char* key);

    // Reads the section's pages from the file into the buffer.
    void Load();
    // Writes the section's pages over those of the file, and the rest at its
    // end. A section that was only made empty is written only into a file
    // that still has none. False when the file could not be written.
    bool Save();

    // The file's name, without a folder.
    const char* GetFileName() const { return fileName_; }
    std::int32_t GetUsed() const { return used; }
    const std::uint8_t* GetBuffer() const { return buffer.data(); }

  protected:
    void AddFirstPage();
    // The offset of the key's entry in the buffer, or -1.
    std::int32_t Find(const char* key) const;
    bool Add(const char* key, const void* data, std::int32_t length);
    void DeleteAt(std::int32_t offset);

    std::vector<std::uint8_t> buffer; // `capacity` bytes, of which `used` hold pages
    std::int32_t capacity = 0;
    std::int32_t used = 0;
    std::int32_t pageSize = kPageSize;
    char company[256] = {};
    char product[256] = {};
    char section[256] = {};

  private:
    // The name as it stands in a page header.
    void NameField(std::uint8_t* out) const;
    bool IsSectionName(const std::uint8_t* field) const;
    void GrowByPage();
    // Where the entries of the page end: the first entry of length 0, or
    // the first that would run past the page.
    std::int32_t EntriesEnd(std::int32_t page) const;
    // The next page of the chain, or -1: only a page further on counts.
    std::int32_t NextPage(std::int32_t page, std::int32_t reached) const;

    char fileName_[600] = {};
    bool changed_ = false;        // an entry was written or deleted since the load
    bool firstPageAdded_ = false; // the file had no page of the section
};
