#pragma once

#include "text/FontList.h"
#include "text/TextCharacter.h"

#include <memory>
#include <string>
#include <vector>

// Owns a chain for the length of a test.
struct ChainDeleter {
    void operator()(TextCharacter* chain) const { FreeTextCharacters(chain); }
};
using Chain = std::unique_ptr<TextCharacter, ChainDeleter>;

// Per character: the number of holes behind each outer contour.
using Topology = std::vector<std::vector<int>>;

inline std::vector<const TextCharacter*> Characters(const TextCharacter* chain) {
    std::vector<const TextCharacter*> out;
    for (; chain; chain = chain->next)
        out.push_back(chain);
    return out;
}

inline Topology TopologyOf(const TextCharacter* chain) {
    Topology topology;
    for (; chain; chain = chain->next) {
        std::vector<int> outers;
        for (const OuterContour* outer = chain->contours; outer; outer = outer->next) {
            int holes = 0;
            for (const HoleContour* hole = outer->holes; hole; hole = hole->next)
                ++holes;
            outers.push_back(holes);
        }
        topology.push_back(outers);
    }
    return topology;
}

// Chooses the row of that name.
inline bool SelectFont(const char* name) {
    const std::uint32_t position = FindFontListPosition(name);
    return position != 0 && SetCurrentFont(position);
}
// Reads the text in the current font; null on failure or for no geometry.
inline Chain Read(const char* text, int quality = 1) {
    TextCharacter* chain = nullptr;
    if (!BuildTextCharacters(text, quality, &chain)) return Chain();
    return Chain(chain);
}

// Draws the chain's contours, one character after the other along the
// advances, into a PNG in the test output directory.
void SaveChainPicture(const TextCharacter* chain, const std::string& fileName);
