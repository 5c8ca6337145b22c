#include "platform/fonts/CodePage.h"

namespace {
constexpr WCHAR16 kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
} // namespace

WCHAR16 WideFromCodePage1252(unsigned char byte) {
    return (byte >= 0x80 && byte < 0xA0) ? kCp1252High[byte - 0x80] : byte;
}

bool CodePage1252FromWide(WCHAR16 unit, unsigned char* byte) {
    if (!byte) return false;
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) {
        *byte = static_cast<unsigned char>(unit);
        return true;
    }
    for (unsigned i = 0; i < 32; ++i) {
        if (kCp1252High[i] == unit) {
            *byte = static_cast<unsigned char>(0x80 + i);
            return true;
        }
    }
    return false;
}
