// C strings and memory storage.
#include "platform/qd3d/Q3Internal.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace q3 {
namespace {

class CString : public OpaqueTQ3Object {
  public:
    explicit CString(const char* s) : OpaqueTQ3Object(kQ3StringTypeCString), text(s) {}
    std::string text;
};

class MemoryStorage : public OpaqueTQ3Object {
  public:
    MemoryStorage() : OpaqueTQ3Object(kQ3StorageTypeMemory) {}
    std::vector<unsigned char> owned; // when the storage copied the bytes
    unsigned char* buffer = nullptr;  // the caller's buffer, used in place
    TQ3Uns32 validSize = 0;
    TQ3Uns32 bufferSize = 0;
    const unsigned char* bytes() const { return buffer ? buffer : owned.data(); }
};

} // namespace
} // namespace q3

using namespace q3;

extern "C" {

TQ3StringObject Q3CString_New(const char* str) {
    if (!str) {
        postError(kQ3ErrorNULLParameter);
        return nullptr;
    }
    return make<CString>(str);
}

TQ3Status Q3CString_GetLength(TQ3StringObject object, TQ3Uns32* length) {
    auto* s = check<CString>(object, kQ3StringTypeCString);
    if (!s || !length) {
        if (s) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *length = static_cast<TQ3Uns32>(s->text.size());
    return kQ3Success;
}

TQ3Status Q3CString_SetString(TQ3StringObject object, const char* str) {
    auto* s = check<CString>(object, kQ3StringTypeCString);
    if (!s || !str) {
        if (s) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    s->text = str;
    s->edited();
    return kQ3Success;
}

TQ3Status Q3CString_GetString(TQ3StringObject object, char** str) {
    auto* s = check<CString>(object, kQ3StringTypeCString);
    if (!s || !str) {
        if (s) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    char* copy = static_cast<char*>(std::malloc(s->text.size() + 1));
    if (!copy) {
        postError(kQ3ErrorOutOfMemory);
        return kQ3Failure;
    }
    std::memcpy(copy, s->text.c_str(), s->text.size() + 1);
    *str = copy;
    return kQ3Success;
}

TQ3Status Q3CString_EmptyData(char** str) {
    if (!str) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    std::free(*str);
    *str = nullptr;
    return kQ3Success;
}

TQ3StorageObject Q3MemoryStorage_New(const unsigned char* buffer, TQ3Uns32 validSize) {
    if (!buffer && validSize) {
        postError(kQ3ErrorNULLParameter);
        return nullptr;
    }
    TQ3Object o = make<MemoryStorage>();
    if (!o) return nullptr;
    auto* m = static_cast<MemoryStorage*>(o);
    try {
        m->owned.assign(buffer, buffer + validSize);
    } catch (...) {
        delete m;
        postError(kQ3ErrorOutOfMemory);
        return nullptr;
    }
    m->validSize = m->bufferSize = validSize;
    return o;
}

TQ3StorageObject Q3MemoryStorage_NewBuffer(unsigned char* buffer, TQ3Uns32 validSize,
                                           TQ3Uns32 bufferSize) {
    if (!buffer) return Q3MemoryStorage_New(nullptr, 0);
    if (validSize > bufferSize) {
        postError(kQ3ErrorInvalidParameter);
        return nullptr;
    }
    TQ3Object o = make<MemoryStorage>();
    if (!o) return nullptr;
    auto* m = static_cast<MemoryStorage*>(o);
    m->buffer = buffer;
    m->validSize = validSize;
    m->bufferSize = bufferSize;
    return o;
}

TQ3Status Q3MemoryStorage_SetBuffer(TQ3StorageObject storage, unsigned char* buffer,
                                    TQ3Uns32 validSize, TQ3Uns32 bufferSize) {
    auto* m = check<MemoryStorage>(storage, kQ3StorageTypeMemory);
    if (!m) return kQ3Failure;
    if (!buffer || validSize > bufferSize) {
        postError(buffer ? kQ3ErrorInvalidParameter : kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    m->owned.clear();
    m->buffer = buffer;
    m->validSize = validSize;
    m->bufferSize = bufferSize;
    m->edited();
    return kQ3Success;
}

TQ3Status Q3MemoryStorage_GetBuffer(TQ3StorageObject storage, unsigned char** buffer,
                                    TQ3Uns32* validSize, TQ3Uns32* bufferSize) {
    auto* m = check<MemoryStorage>(storage, kQ3StorageTypeMemory);
    if (!m) return kQ3Failure;
    if (buffer) *buffer = const_cast<unsigned char*>(m->bytes());
    if (validSize) *validSize = m->validSize;
    if (bufferSize) *bufferSize = m->bufferSize;
    return kQ3Success;
}

TQ3Status Q3Storage_GetSize(TQ3StorageObject storage, TQ3Uns32* size) {
    auto* m = check<MemoryStorage>(storage, kQ3StorageTypeMemory);
    if (!m || !size) {
        if (m) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *size = m->validSize;
    return kQ3Success;
}

TQ3Status Q3Storage_GetData(TQ3StorageObject storage, TQ3Uns32 offset, TQ3Uns32 dataSize,
                            unsigned char* data, TQ3Uns32* sizeRead) {
    auto* m = check<MemoryStorage>(storage, kQ3StorageTypeMemory);
    if (!m || !data || !sizeRead) {
        if (m) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (offset > m->validSize) {
        postError(kQ3ErrorParameterOutOfRange);
        return kQ3Failure;
    }
    TQ3Uns32 n = std::min(dataSize, m->validSize - offset);
    if (n) std::memcpy(data, m->bytes() + offset, n);
    *sizeRead = n;
    return kQ3Success;
}

} // extern "C"
