#pragma once

#include "platform/fonts/WinFontTypes.h"
#include "text/Type1Service.h"

#include <cstdint>
#include <string>
#include <vector>

// One listed Type 1 face.
struct Type1FontRecord {
    LOGFONTA logFont{};
    std::string name;
    std::uint16_t style = 0;
};

// The Type 1 faces that the Type 1 service offers. Starting the service
// loads the module; without it (or when the service does not start) the
// directory is not available and lists nothing.
class Type1FontDirectory {
  public:
    explicit Type1FontDirectory(bool enumerateNow);
    virtual ~Type1FontDirectory();
    Type1FontDirectory(const Type1FontDirectory&) = delete;
    Type1FontDirectory& operator=(const Type1FontDirectory&) = delete;

    // Lists the faces once; true if the list stands.
    bool Enumerate();
    const Type1Service& Service() const { return fService; }

    std::vector<Type1FontRecord> fonts;
    bool available = false;
    bool enumerated = false;
    std::int32_t status = 0;
    std::uint32_t count = 0;  // records planned by the first pass
    std::uint32_t filled = 0; // records written by the second

  private:
    static int CountCallback(const LOGFONTA* font, const char* menuName, std::uint16_t style,
                             void* data);
    static int FillCallback(const LOGFONTA* font, const char* menuName, std::uint16_t style,
                            void* data);
    void Write(const LOGFONTA& font, const std::string& name, std::uint16_t style);

    Type1Service fService;
};

// The one directory, made on first use (it does not enumerate until asked).
Type1FontDirectory& GetType1FontDirectory();
// Stops the service and forgets the directory; the next use starts afresh,
// with the module path as it is then.
void ResetType1FontDirectory();
