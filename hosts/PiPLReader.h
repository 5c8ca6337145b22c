// Reads a filter's property list (the PiPL encoding of sdk/PIFilter.h).
#ifndef PLUMET_HOSTS_PIPLREADER_H
#define PLUMET_HOSTS_PIPLREADER_H

#include "sdk/PIFilter.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace plumet::hosts {

struct PiPLInfo {
    bool hasKind = false;
    uint32_t kind = 0;
    std::string name;
    std::string category;
    bool hasVersion = false;
    uint32_t version = 0; // major << 16 | minor
    std::string entryName;
    bool hasModes = false;
    std::vector<uint8_t> modeFlags;
    std::vector<FilterCaseInfo> filterCases; // empty if the list has none
};

// Decodes the list. Properties of other vendors and unknown keys are passed
// over. Fails with a message for a list that is truncated, has a version
// other than 0, a length that runs past the end, or a malformed value.
bool ReadPiPL(const uint8_t* data, std::size_t size, PiPLInfo& info, std::string& error);

// "8BFM" for PI_FOURCC('8','B','F','M'); unprintable bytes as '?'.
std::string FourCCText(uint32_t code);

// "RGB, CMYK" from the mode flags.
std::string DescribeModes(const std::vector<uint8_t>& flags);

// "flat image, no selection" and so on, for filter cases 1 to 7.
std::string FilterCaseName(int filterCase);

// "4.0" from major << 16 | minor.
std::string VersionText(uint32_t version);

} // namespace plumet::hosts

#endif
