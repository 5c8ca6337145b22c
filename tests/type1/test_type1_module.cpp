// The Type 1 module, loaded as the text code loads it, called directly.

#include "platform/fonts/WinFonts.h"
#include "platform/type1/ATMLib.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <set>
#include <string>
#include <vector>

extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}

namespace {

struct Module {
    void* handle = dlopen(PLUMET_TYPE1_MODULE, RTLD_NOW | RTLD_LOCAL);
    template <typename F> F Get(const char* name) {
        return handle ? reinterpret_cast<F>(dlsym(handle, name)) : nullptr;
    }
    ATMProperlyLoadedProc properlyLoaded = Get<ATMProperlyLoadedProc>("ATMProperlyLoaded");
    ATMEnumFontsAProc enumFonts = Get<ATMEnumFontsAProc>("ATMEnumFontsA");
    ATMGetOutlineAProc outlineA = Get<ATMGetOutlineAProc>("ATMGetOutlineA");
    ATMGetOutlineWProc outlineW = Get<ATMGetOutlineWProc>("ATMGetOutlineW");
    ATMFinishProc finish = Get<ATMFinishProc>("ATMFinish");
    ~Module() {
        if (handle) dlclose(handle);
    }
};

struct Face {
    LOGFONTA font;
    std::string name;
    std::uint16_t style;
};

std::vector<Face> ListFaces(Module& m) {
    std::vector<Face> faces;
    EXPECT_EQ(m.enumFonts(
                  [](const LOGFONTA* f, const char* name, std::uint16_t style, void* data) {
                      static_cast<std::vector<Face>*>(data)->push_back(Face{*f, name, style});
                      return 1;
                  },
                  &faces),
              ATM_NOERR);
    return faces;
}

// What the callbacks saw: one string per contour, "M" a move, "L" a line,
// "C" a curve and "c" a curve closing on the start, "Z" the close.
struct Recorder {
    std::vector<std::string> contours;
    std::vector<std::vector<ATMFixedPoint>> points;
    int stopAfter = -1; // answer 0 at this call
    int calls = 0;
    bool Go() { return ++calls != stopAfter; }
    static int Move(const ATMFixedPoint* p, void* d) {
        auto* r = static_cast<Recorder*>(d);
        r->contours.push_back("M");
        r->points.push_back({*p});
        return r->Go();
    }
    static int Line(const ATMFixedPoint* p, void* d) {
        auto* r = static_cast<Recorder*>(d);
        r->contours.back() += "L";
        r->points.back().push_back(*p);
        return r->Go();
    }
    static int Curve(const ATMFixedPoint* c1, const ATMFixedPoint* c2, const ATMFixedPoint* e,
                     void* d) {
        auto* r = static_cast<Recorder*>(d);
        r->contours.back() += e ? "C" : "c";
        r->points.back().push_back(*c1);
        r->points.back().push_back(*c2);
        if (e) r->points.back().push_back(*e);
        return r->Go();
    }
    static int Close(void* d) {
        auto* r = static_cast<Recorder*>(d);
        r->contours.back() += "Z";
        return r->Go();
    }
};

const ATMFixedMatrix kFlipY{0x10000, 0, 0, -0x10000, 0, 0};

// The outline of one character through the wide or the code-page entry.
int Outline(Module& m, HDC dc, unsigned c, Recorder& r, bool wide = true,
            const ATMFixedMatrix* matrix = &kFlipY) {
    return wide ? m.outlineW(dc, static_cast<std::uint16_t>(c), matrix, Recorder::Move,
                             Recorder::Line, Recorder::Curve, Recorder::Close, &r)
                : m.outlineA(dc, static_cast<std::uint16_t>(c), matrix, Recorder::Move,
                             Recorder::Line, Recorder::Curve, Recorder::Close, &r);
}

struct Context {
    HDC dc = CreateICA("DISPLAY", nullptr, nullptr, nullptr);
    HFONT font = nullptr;
    explicit Context(const LOGFONTA* logFont) {
        if (!logFont) return;
        LOGFONTA unit = *logFont;
        unit.lfHeight = -1;
        font = CreateFontIndirectA(&unit);
        SelectObject(dc, font);
    }
    ~Context() {
        SelectObject(dc, nullptr);
        DeleteObject(font);
        DeleteDC(dc);
    }
};

const Face* Find(const std::vector<Face>& faces, const char* name) {
    for (const Face& f : faces)
        if (f.name == name) return &f;
    return nullptr;
}

double Area(const std::vector<ATMFixedPoint>& p) {
    double sum = 0;
    for (std::size_t i = 0; i < p.size(); ++i) {
        const auto& a = p[i];
        const auto& b = p[(i + 1) % p.size()];
        sum += (double(a.x) * b.y - double(b.x) * a.y) / 65536.0 / 65536.0;
    }
    return sum;
}

} // namespace

TEST(Type1Module, ListsEachFaceOnceAfterStarting) {
    Module m;
    ASSERT_NE(m.handle, nullptr) << dlerror();
    ASSERT_TRUE(m.properlyLoaded && m.enumFonts && m.outlineA && m.outlineW && m.finish);
    const auto all = [](const LOGFONTA*, const char*, std::uint16_t, void*) { return 1; };
    EXPECT_EQ(m.enumFonts(all, nullptr), ATM_NOTSTARTED);
    ASSERT_TRUE(m.properlyLoaded());
    const auto faces = ListFaces(m);
    EXPECT_EQ(faces.size(), 35u);
    std::set<std::string> names, keys;
    for (const Face& f : faces) {
        EXPECT_TRUE(names.insert(f.name).second) << f.name;
        EXPECT_TRUE(keys.insert(f.font.lfFaceName).second) << f.font.lfFaceName;
        EXPECT_EQ(f.style, ATM_TYPE1_FACE);
    }
    const Face* sans = Find(faces, "Nimbus Sans Regular");
    ASSERT_NE(sans, nullptr);
    EXPECT_STREQ(sans->font.lfFaceName, "NimbusSans-Regular");
    const Face* bold = Find(faces, "Nimbus Sans Bold");
    ASSERT_NE(bold, nullptr);
    EXPECT_EQ(bold->font.lfWeight, 700);
    // A callback that answers 0 stops the listing.
    int calls = 0;
    m.enumFonts(
        [](const LOGFONTA*, const char*, std::uint16_t, void* d) {
            ++*static_cast<int*>(d);
            return 0;
        },
        &calls);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(m.enumFonts(nullptr, nullptr), ATM_BADPARAMETER);
    m.finish();
    EXPECT_EQ(m.enumFonts(all, nullptr), ATM_NOTSTARTED);
}

TEST(Type1Module, OutlinesAreCubicPostScriptWoundAndClosed) {
    Module m;
    ASSERT_TRUE(m.handle && m.properlyLoaded());
    const auto faces = ListFaces(m);
    const Face* sans = Find(faces, "Nimbus Sans Regular");
    ASSERT_NE(sans, nullptr);
    Context context(&sans->font);

    Recorder o;
    ASSERT_EQ(Outline(m, context.dc, 'O', o), ATM_NOERR);
    ASSERT_EQ(o.contours.size(), 2u);
    for (std::size_t i = 0; i < 2; ++i) {
        const std::string& c = o.contours[i];
        EXPECT_EQ(c.front(), 'M');
        EXPECT_EQ(c.back(), 'Z');
        // The last curve closes on the start point and gives no end point.
        EXPECT_EQ(c[c.size() - 2], 'c') << c;
    }
    // With y turned downward, the outer contour has the negative area.
    const double a0 = Area(o.points[0]), a1 = Area(o.points[1]);
    EXPECT_LT(a0 * a1, 0.0);
    const double outer = std::fabs(a0) > std::fabs(a1) ? a0 : a1;
    EXPECT_LT(outer, 0.0);
    // One unit per em: the O is some 0.74 high, above the baseline (y < 0).
    int minY = 0, maxY = -1 << 30;
    for (const auto& p : o.points[0]) {
        minY = std::min(minY, p.y);
        maxY = std::max(maxY, p.y);
    }
    EXPECT_NEAR(-minY / 65536.0, 0.74, 0.05);
    EXPECT_LE(maxY / 65536.0, 0.03);

    // A straight letter: lines only, the closing line left implicit.
    Recorder h;
    ASSERT_EQ(Outline(m, context.dc, 'H', h, false), ATM_NOERR);
    ASSERT_EQ(h.contours.size(), 1u);
    EXPECT_EQ(h.contours[0], "M" + std::string(11, 'L') + "Z"); // twelve corners

    // A space: no contour but success.
    Recorder space;
    EXPECT_EQ(Outline(m, context.dc, ' ', space, false), ATM_NOERR);
    EXPECT_TRUE(space.contours.empty());
    m.finish();
}

TEST(Type1Module, RefusesWhatItCannotDo) {
    Module m;
    ASSERT_TRUE(m.handle);
    Recorder r;
    auto outline = [&](HDC dc, unsigned c, const ATMFixedMatrix* matrix) {
        return Outline(m, dc, c, r, true, matrix);
    };
    Context none(nullptr);
    EXPECT_EQ(outline(none.dc, 'A', &kFlipY), ATM_NOTSTARTED);
    ASSERT_TRUE(m.properlyLoaded());
    const auto faces = ListFaces(m);
    const Face* roman = Find(faces, "Nimbus Roman Regular");
    ASSERT_NE(roman, nullptr);
    Context context(&roman->font);

    EXPECT_EQ(outline(none.dc, 'A', &kFlipY), ATM_INVALIDFONT);
    EXPECT_EQ(outline(nullptr, 'A', &kFlipY), ATM_BADPARAMETER);
    EXPECT_EQ(outline(context.dc, 'A', nullptr), ATM_BADPARAMETER);
    EXPECT_EQ(outline(context.dc, 0xE000, &kFlipY), ATM_NOCHAR);
    EXPECT_EQ(Outline(m, context.dc, 0x20AC, r, false), ATM_NOCHAR);
    // Byte 0x80 of the code page is the euro sign.
    EXPECT_EQ(Outline(m, context.dc, 0x80, r, false), ATM_NOERR);
    EXPECT_FALSE(r.contours.empty());

    // A callback that answers 0 cancels the outline.
    Recorder stopper;
    stopper.stopAfter = 3;
    EXPECT_EQ(Outline(m, context.dc, 'B', stopper), ATM_CANCELED);
    EXPECT_EQ(stopper.calls, 3);

    LOGFONTA unknown = roman->font;
    std::strcpy(unknown.lfFaceName, "NoSuchFace");
    Context missing(&unknown);
    EXPECT_EQ(outline(missing.dc, 'A', &kFlipY), ATM_INVALIDFONT);
    m.finish();
    m.finish(); // a second finish is harmless
}
