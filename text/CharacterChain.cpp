#include "text/CharacterChain.h"

#include "text/Flattening.h"
#include "text/GlyphRecord.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

template <typename Contour> void TakePoints(const CExpList& list, Contour& contour) {
    contour.points = new float[2 * std::size_t(list.count)];
    contour.smooth = new std::uint8_t[list.count];
    contour.count = list.count;
    std::memcpy(contour.points, list.points.data(), sizeof(float) * 2 * list.count);
    std::memcpy(contour.smooth, list.smooth.data(), list.count);
}

void Flatten(const GlyphRecord& glyph, const RawContour& raw, CExpList& out) {
    if (glyph.cubic)
        FlattenCubicContour(raw, out);
    else
        FlattenQuadraticContour(raw, out);
}

void FreeCharacter(TextCharacter* character) {
    OuterContour* outer = character->contours;
    while (outer) {
        HoleContour* hole = outer->holes;
        while (hole) {
            HoleContour* nextHole = hole->next;
            delete[] hole->points;
            delete[] hole->smooth;
            delete hole;
            hole = nextHole;
        }
        OuterContour* nextOuter = outer->next;
        delete[] outer->points;
        delete[] outer->smooth;
        delete outer;
        outer = nextOuter;
    }
    delete character;
}

void MeasureBounds(TextCharacter& character) {
    float xMin = 1e30f, xMax = -1e30f, yMin = 1e30f, yMax = -1e30f;
    bool any = false;
    auto widen = [&](const float* points, std::uint32_t count) {
        for (std::uint32_t i = 0; i < count; ++i) {
            xMin = std::min(xMin, points[2 * i]);
            xMax = std::max(xMax, points[2 * i]);
            yMin = std::min(yMin, points[2 * i + 1]);
            yMax = std::max(yMax, points[2 * i + 1]);
            any = true;
        }
    };
    for (OuterContour* outer = character.contours; outer; outer = outer->next) {
        widen(outer->points, outer->count);
        for (HoleContour* hole = outer->holes; hole; hole = hole->next)
            widen(hole->points, hole->count);
    }
    if (any) {
        character.xMin = xMin;
        character.xMax = xMax;
        character.yMin = yMin;
        character.yMax = yMax;
    }
}

// One character: its outer contours in the order of the record, each with its
// holes behind it. Holes without an outer contour are dropped.
void BuildCharacter(const GlyphRecord& glyph, TextCharacter& character) {
    character.advance = glyph.advance;
    OuterContour** outerTail = &character.contours;
    const std::uint32_t n = glyph.contours.GetCount();
    for (std::uint32_t o = 1; o <= n; ++o) {
        const RawContour* raw = glyph.ContourAt(o);
        if (raw->kind != RawContour::kOuter) continue;
        auto* outer = new OuterContour;
        *outerTail = outer;
        outerTail = &outer->next;
        {
            CExpList list;
            Flatten(glyph, *raw, list);
            TakePoints(list, *outer);
        }
        HoleContour** holeTail = &outer->holes;
        for (std::uint32_t h = 1; h <= n; ++h) {
            const RawContour* rawHole = glyph.ContourAt(h);
            if (rawHole->kind != RawContour::kHole || rawHole->parent != o) continue;
            auto* hole = new HoleContour;
            *holeTail = hole;
            holeTail = &hole->next;
            CExpList list;
            Flatten(glyph, *rawHole, list);
            TakePoints(list, *hole);
        }
    }
    MeasureBounds(character);
}

} // namespace

TextCharacter* BuildCharacterChain(const KList& glyphRecords) {
    TextCharacter* head = nullptr;
    TextCharacter** tail = &head;
    try {
        const std::uint32_t n = glyphRecords.GetCount();
        for (std::uint32_t i = 1; i <= n; ++i) {
            const auto* glyph = static_cast<const GlyphRecord*>(glyphRecords.EntryAt(i));
            auto* character = new TextCharacter;
            *tail = character;
            tail = &character->next;
            BuildCharacter(*glyph, *character);
        }
    } catch (...) {
        FreeTextCharacters(head);
        throw;
    }
    return head;
}

void FreeTextCharacters(TextCharacter* chain) {
    while (chain) {
        TextCharacter* next = chain->next;
        FreeCharacter(chain);
        chain = next;
    }
}
