#include "platform/fonts/FreeTypeFaces.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace {

unsigned long ReadStream(FT_Stream stream, unsigned long offset, unsigned char* buffer,
                         unsigned long count) {
    // A count of 0 asks only whether the position exists: 0 means yes.
    if (count == 0) return offset > stream->size ? 1 : 0;
    const int fd = static_cast<int>(stream->descriptor.value);
    if (fd < 0) return 0;
    unsigned long done = 0;
    while (done < count) {
        const ssize_t got =
            pread(fd, buffer + done, count - done, static_cast<off_t>(offset + done));
        if (got <= 0) break;
        done += static_cast<unsigned long>(got);
    }
    return done;
}

void CloseStream(FT_Stream stream) {
    const int fd = static_cast<int>(stream->descriptor.value);
    if (fd >= 0) close(fd);
    stream->descriptor.value = -1;
}

// A stream over an open file, or null when the file cannot be opened.
std::shared_ptr<FT_StreamRec> OpenStream(const std::string& file) {
    const int fd = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return nullptr;
    struct stat info {};
    if (fstat(fd, &info) != 0 || !S_ISREG(info.st_mode) || info.st_size <= 0) {
        close(fd);
        return nullptr;
    }
    std::shared_ptr<FT_StreamRec> stream(new FT_StreamRec{}, [](FT_StreamRec* s) {
        CloseStream(s);
        delete s;
    });
    stream->descriptor.value = fd;
    stream->size = static_cast<unsigned long>(info.st_size);
    stream->read = ReadStream;
    stream->close = CloseStream;
    return stream;
}

} // namespace

FreeTypeFaceCache::FreeTypeFaceCache(std::size_t capacity) : fCapacity(capacity ? capacity : 1) {
    if (FT_Init_FreeType(&fLibrary) != 0) fLibrary = nullptr;
}

FreeTypeFaceCache::~FreeTypeFaceCache() {
    Clear();
    if (fLibrary) FT_Done_FreeType(fLibrary);
}

void FreeTypeFaceCache::Clear() {
    for (Entry& entry : fEntries)
        FT_Done_Face(entry.face);
    fEntries.clear();
}

FT_Face FreeTypeFaceCache::Get(const std::string& file, int index) {
    if (!fLibrary || file.empty() || index < 0) return nullptr;
    for (auto it = fEntries.begin(); it != fEntries.end(); ++it) {
        if (it->index == index && it->file == file) {
            fEntries.splice(fEntries.begin(), fEntries, it);
            return fEntries.front().face;
        }
    }
    std::shared_ptr<FT_StreamRec> stream = OpenStream(file);
    if (!stream) return nullptr;
    FT_Open_Args args{};
    args.flags = FT_OPEN_STREAM;
    args.stream = stream.get();
    FT_Face face = nullptr;
    if (FT_Open_Face(fLibrary, &args, index, &face) != 0) return nullptr;
    if (!FT_IS_SCALABLE(face) || face->units_per_EM == 0) {
        FT_Done_Face(face);
        return nullptr;
    }
    if (FT_Select_Charmap(face, FT_ENCODING_UNICODE) != 0)
        FT_Select_Charmap(face, FT_ENCODING_MS_SYMBOL);
    if (fEntries.size() >= fCapacity) {
        FT_Done_Face(fEntries.back().face);
        fEntries.pop_back();
    }
    fEntries.push_front(Entry{file, index, face, std::move(stream)});
    return face;
}

FT_UInt GlyphIndexFor(FT_Face face, unsigned codePoint) {
    if (!face || !face->charmap) return 0;
    FT_UInt glyph = FT_Get_Char_Index(face, codePoint);
    if (glyph == 0 && face->charmap->encoding == FT_ENCODING_MS_SYMBOL && codePoint < 0x100)
        glyph = FT_Get_Char_Index(face, 0xF000 + codePoint);
    return glyph;
}

double EmPixelsFor(FT_Face face, LONG logicalHeight) {
    if (logicalHeight < 0) return -static_cast<double>(logicalHeight);
    if (logicalHeight == 0 || !face) return 32.0;
    const double cell = static_cast<double>(face->ascender) - face->descender;
    if (cell <= 0) return logicalHeight;
    return logicalHeight * static_cast<double>(face->units_per_EM) / cell;
}
