#pragma once

#include "platform/fonts/WinFontTypes.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstddef>
#include <list>
#include <memory>
#include <string>

// Keeps a few FreeType faces open, so that reading a text does not open the
// font file once per character. The least recently used face is closed when
// the cache is full. Not thread safe; each user keeps its own cache.
//
// Files are read with plain reads rather than mapped into memory: a font file
// that shrinks while it is open then gives read errors, where a mapping would
// fault in the host's process.
class FreeTypeFaceCache {
  public:
    explicit FreeTypeFaceCache(std::size_t capacity = 8);
    ~FreeTypeFaceCache();
    FreeTypeFaceCache(const FreeTypeFaceCache&) = delete;
    FreeTypeFaceCache& operator=(const FreeTypeFaceCache&) = delete;

    bool Ready() const { return fLibrary != nullptr; }
    // The face with a Unicode (or, failing that, a symbol) character map, or
    // null when the file cannot be opened or is not a scalable font.
    FT_Face Get(const std::string& file, int index);
    void Clear();

  private:
    struct Entry {
        std::string file;
        int index;
        FT_Face face;
        std::shared_ptr<FT_StreamRec> stream; // outlives the face
    };
    FT_Library fLibrary = nullptr;
    std::size_t fCapacity;
    std::list<Entry> fEntries; // most recently used first
};

// The glyph for a Unicode code point, 0 for none. Symbol fonts also answer
// the code at 0xF000 + c, where they keep their glyphs.
FT_UInt GlyphIndexFor(FT_Face face, unsigned codePoint);

// Pixels per em that a logical font height asks for: -height for a negative
// height, the em that gives a cell of that height for a positive one, 32 for 0.
double EmPixelsFor(FT_Face face, LONG logicalHeight);
