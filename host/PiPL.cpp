#include "host/PiPL.h"

#include "sdk/PIFilter.h"

#include <cstring>
#include <string>

namespace {
void Put32(std::vector<uint8_t>& out, uint32_t v) {
    for (int i = 0; i < 4; ++i)
        out.push_back(static_cast<uint8_t>(v >> (8 * i)));
}

void AddProperty(std::vector<uint8_t>& out, uint32_t key, const std::vector<uint8_t>& data) {
    Put32(out, PIAdobeVendorID);
    Put32(out, key);
    Put32(out, 0);
    Put32(out, static_cast<uint32_t>(data.size()));
    out.insert(out.end(), data.begin(), data.end());
    while (out.size() % 4)
        out.push_back(0);
}

// A length-prefixed string padded to `length` bytes.
std::vector<uint8_t> PascalString(const std::string& s, std::size_t length) {
    std::vector<uint8_t> d(length, 0);
    d[0] = static_cast<uint8_t>(s.size());
    std::memcpy(d.data() + 1, s.data(), s.size());
    return d;
}

std::vector<uint8_t> Word(uint32_t v) {
    std::vector<uint8_t> d;
    Put32(d, v);
    return d;
}
} // namespace

std::vector<uint8_t> BuildFilterPiPL() {
    std::vector<uint8_t> out;
    Put32(out, 0); // version
    Put32(out, 7); // count
    AddProperty(out, PIKindProperty, Word(PIFilterKind));
    AddProperty(out, PINameProperty, PascalString("FlyWORD Plumet", 16));
    AddProperty(out, PICategoryProperty, PascalString("Lumerra 3D", 12));
    AddProperty(out, PIVersionProperty, Word(0x00040000));
    std::vector<uint8_t> entry(12, 0);
    std::memcpy(entry.data(), "ENTRYPOINT", 10);
    AddProperty(out, PIWin64X86CodeProperty, entry);
    AddProperty(out, PIImageModesProperty, {PIModeRGBFlag | PIModeCMYKFlag, 0, 0, 0});
    // Flat, with selection, floating, editable transparency (works with
    // blank data) twice, protected transparency twice.
    const uint8_t cases[7][4] = {{1, 1, 0, 0}, {1, 1, 0, 0}, {1, 1, 0, 0}, {1, 1, 2, 0},
                                 {1, 1, 2, 0}, {1, 1, 0, 0}, {1, 1, 0, 0}};
    AddProperty(out, PIFilterCaseInfoProperty,
                std::vector<uint8_t>(&cases[0][0], &cases[0][0] + sizeof cases));
    return out;
}
