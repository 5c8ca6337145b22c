// The tool pictures are composed on a small grid of palette letters: a few
// hand-drawn sprites (pointer, bulb, camera, letter) and lines, arcs and
// polygons set pixel by pixel, so that each picture stays crisp at its size.
#include "resources/ToolBitmaps.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <initializer_list>
#include <utility>
#include <vector>

namespace {
constexpr int W = kToolBitmapWidth, H = kToolBitmapHeight;
constexpr double kPi = 3.14159265358979;

// The 16 colours, each named by a letter; '.' is the button face.
std::uint32_t PaletteColor(char c) {
    switch (c) {
    case 'k':
        return 0x000000;
    case 'r':
        return 0x800000;
    case 'd':
        return 0x008000;
    case 'y':
        return 0x808000;
    case 'b':
        return 0x000080;
    case 'm':
        return 0x800080;
    case 'c':
        return 0x008080;
    case 'g':
        return 0x808080;
    case 'R':
        return 0xFF0000;
    case 'G':
        return 0x00FF00;
    case 'Y':
        return 0xFFFF00;
    case 'B':
        return 0x0000FF;
    case 'M':
        return 0xFF00FF;
    case 'C':
        return 0x00FFFF;
    case 'w':
        return 0xFFFFFF;
    default:
        return kButtonFace;
    }
}

struct Point {
    double x, y;
};

class Canvas {
  public:
    Canvas() { std::memset(cells_, '.', sizeof cells_); }

    void Set(int x, int y, char c) {
        if (x >= 0 && x < W && y >= 0 && y < H) cells_[y][x] = c;
    }
    void Dot(Point p, char c) { Set(int(std::lround(p.x)), int(std::lround(p.y)), c); }

    // A sprite: rows of palette letters; blanks and '.' leave the canvas.
    void Sprite(int x, int y, std::initializer_list<const char*> rows) {
        int j = 0;
        for (const char* row : rows) {
            for (int i = 0; row[i]; ++i)
                if (row[i] != '.' && row[i] != ' ') Set(x + i, y + j, row[i]);
            ++j;
        }
    }

    void Line(Point a, Point b, char c) {
        const int steps = int(std::ceil(std::max(std::fabs(b.x - a.x), std::fabs(b.y - a.y))));
        for (int i = 0; i <= steps; ++i) {
            const double t = steps ? double(i) / steps : 0.0;
            Dot({a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t}, c);
        }
    }

    // An arc of an ellipse from angle a0 to a1 in degrees, counter-clockwise
    // on the screen (y grows downward).
    void Arc(Point centre, double rx, double ry, double a0, double a1, char c) {
        const int steps = int(std::fabs(a1 - a0) * std::max(rx, ry) / 20.0) + 8;
        for (int i = 0; i <= steps; ++i)
            Dot(OnArc(centre, rx, ry, a0 + (a1 - a0) * i / steps), c);
    }
    static Point OnArc(Point centre, double rx, double ry, double degrees) {
        const double a = degrees * kPi / 180.0;
        return {centre.x + rx * std::cos(a), centre.y - ry * std::sin(a)};
    }

    // Fills a polygon by pixel centres (even-odd rule).
    void Fill(std::initializer_list<Point> corners, char c) {
        const std::vector<Point> p(corners);
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) {
                bool inside = false;
                for (std::size_t i = 0, j = p.size() - 1; i < p.size(); j = i++) {
                    if ((p[i].y > y) != (p[j].y > y) &&
                        x < (p[j].x - p[i].x) * (y - p[i].y) / (p[j].y - p[i].y) + p[i].x)
                        inside = !inside;
                }
                if (inside) Set(x, y, c);
            }
    }
    void Outline(std::initializer_list<Point> corners, char c) {
        const std::vector<Point> p(corners);
        for (std::size_t i = 0; i < p.size(); ++i)
            Line(p[i], p[(i + 1) % p.size()], c);
    }

    // A filled arrow head with its tip at `tip`, pointing along `dir`.
    void Head(Point tip, Point dir, char c, double length = 4.0) {
        const double n = std::hypot(dir.x, dir.y);
        const Point d{dir.x / n, dir.y / n}, q{-d.y, d.x};
        const Point back{tip.x - d.x * length, tip.y - d.y * length};
        const double half = length * 0.75;
        Fill({tip,
              {back.x + q.x * half, back.y + q.y * half},
              {back.x - q.x * half, back.y - q.y * half}},
             c);
        Line(tip, back, c);
    }
    void Arrow(Point from, Point to, char c, bool bothEnds = false, double head = 4.0) {
        Line(from, to, c);
        Head(to, {to.x - from.x, to.y - from.y}, c, head);
        if (bothEnds) Head(from, {from.x - to.x, from.y - to.y}, c, head);
    }
    // An arc with a head at its end.
    void ArcArrow(Point centre, double rx, double ry, double a0, double a1, char c) {
        Arc(centre, rx, ry, a0, a1, c);
        const double step = a1 > a0 ? 12.0 : -12.0;
        const Point end = OnArc(centre, rx, ry, a1), before = OnArc(centre, rx, ry, a1 - step);
        Head(end, {end.x - before.x, end.y - before.y}, c);
    }

    // A control point: a small filled square.
    void Knot(Point p, char c = 'k') {
        const int x = int(std::lround(p.x)), y = int(std::lround(p.y));
        for (int j = -1; j <= 1; ++j)
            for (int i = -1; i <= 1; ++i)
                Set(x + i, y + j, c);
    }

    PlatformBitmap Bitmap() const {
        PlatformBitmap b;
        b.width = W;
        b.height = H;
        b.pixels.resize(std::size_t(W) * H);
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x)
                b.pixels[std::size_t(y) * W + x] = PaletteColor(cells_[y][x]);
        return b;
    }

  private:
    char cells_[H][W];
};

// ---- sprites --------------------------------------------------------------

void Pointer(Canvas& c, int x, int y) {
    c.Sprite(x, y,
             {"k.......", "kk......", "kwk.....", "kwwk....", "kwwwk...", "kwwwwk..", "kwwwwwk.",
              "kwwwwwwk", "kwwwkkkk", "kwwk....", "kwk.....", "kk......"});
}

void Bulb(Canvas& c, int x, int y) {
    c.Sprite(x, y,
             {"..kkk..", ".kYYYk.", "kYwYYYk", "kYwYYYk", "kYYYYYk", ".kYYYk.", "..kyk..",
              "..ggg..", "..kkk.."});
}

void Camera(Canvas& c, int x, int y) {
    c.Sprite(x, y,
             {"..kkkk......", "kkkkkkkkkkkk", "kwggkkkkgggk", "kggkBBbbkggk", "kggkBwbbkggk",
              "kggkbbbbkggk", "kgggkkkkgggk", "kkkkkkkkkkkk"});
}

void LetterA(Canvas& c, int x, int y) {
    c.Sprite(x, y,
             {"...bbb...", "..bBBBb..", "..bBbBb..", ".bBb.bBb.", ".bBb.bBb.", ".bBBBBBb.",
              "bBBbbbBBb", "bBb...bBb", "bBb...bBb", "bbb...bbb"});
}

// The path that the curve tools work on, and its middle point.
Point CurveAt(double t) {
    const Point p0{1, 17}, p1{6, 1}, p2{15, 21}, p3{21, 4};
    const double u = 1 - t;
    return {u * u * u * p0.x + 3 * u * u * t * p1.x + 3 * u * t * t * p2.x + t * t * t * p3.x,
            u * u * u * p0.y + 3 * u * u * t * p1.y + 3 * u * t * t * p2.y + t * t * t * p3.y};
}
void Curve(Canvas& c) {
    for (int i = 0; i < 120; ++i)
        c.Dot(CurveAt(i / 119.0), 'b');
}
const Point kKnot = CurveAt(0.5);

// ---- the pictures -----------------------------------------------------------

PlatformBitmap RotateText() {
    Canvas c;
    LetterA(c, 7, 5);
    c.ArcArrow({11, 9.5}, 9.5, 8.5, 200, -70, 'R');
    return c.Bitmap();
}

PlatformBitmap Depth() {
    Canvas c;
    c.Fill({{3, 7}, {7, 2}, {17, 2}, {13, 7}}, 'C');
    c.Fill({{13, 7}, {17, 2}, {17, 13}, {13, 18}}, 'b');
    c.Fill({{3, 7}, {13, 7}, {13, 18}, {3, 18}}, 'B');
    c.Outline({{3, 7}, {7, 2}, {17, 2}, {17, 13}, {13, 18}, {3, 18}}, 'k');
    c.Line({3, 7}, {13, 7}, 'k');
    c.Line({13, 7}, {17, 2}, 'k');
    c.Line({13, 7}, {13, 18}, 'k');
    c.Arrow({14, 19}, {20, 12}, 'R', true, 3.0);
    return c.Bitmap();
}

PlatformBitmap ScaleText() {
    Canvas c;
    LetterA(c, 1, 9);
    c.Arrow({12, 9}, {20, 1}, 'R', true);
    c.Arrow({12, 17}, {21, 17}, 'R');
    return c.Bitmap();
}

PlatformBitmap MoveText() {
    Canvas c;
    for (int x = 0; x < W; ++x)
        c.Dot({double(x), 15 + 2.5 * std::sin(x / 3.2)}, 'd');
    LetterA(c, 2, 2);
    c.Arrow({12, 6}, {21, 6}, 'R');
    return c.Bitmap();
}

PlatformBitmap MoveCamera() {
    Canvas c;
    Camera(c, 5, 6);
    c.Arrow({11, 4}, {11, 0}, 'R');
    c.Arrow({11, 15}, {11, 19}, 'R');
    c.Arrow({3, 10}, {0, 10}, 'R');
    c.Arrow({18, 10}, {21, 10}, 'R');
    return c.Bitmap();
}

PlatformBitmap TruckCamera() {
    Canvas c;
    Camera(c, 0, 6);
    c.Arrow({13, 10}, {21, 10}, 'R', true, 3.0);
    return c.Bitmap();
}

PlatformBitmap RollCamera() {
    Canvas c;
    Camera(c, 5, 6);
    c.ArcArrow({10.5, 9.5}, 10, 8.5, 20, 290, 'R');
    return c.Bitmap();
}

PlatformBitmap OrbitCamera() {
    Canvas c;
    c.Arc({11, 10}, 10, 4, 0, 180, 'R');
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const double dx = x - 11, dy = y - 10, r = std::hypot(dx, dy);
            if (r <= 6.2) c.Set(x, y, r > 5.3 ? 'k' : (dx + dy < -4 ? 'C' : 'c'));
        }
    c.Set(8, 7, 'w');
    c.Set(9, 7, 'w');
    c.Set(8, 8, 'w');
    c.ArcArrow({11, 10}, 10, 4, 180, 340, 'R');
    return c.Bitmap();
}

PlatformBitmap SelectLight() {
    Canvas c;
    Bulb(c, 13, 1);
    Pointer(c, 3, 6);
    return c.Bitmap();
}

PlatformBitmap AddLight() {
    Canvas c;
    Bulb(c, 3, 6);
    c.Fill({{15, 2}, {18, 2}, {18, 12}, {15, 12}}, 'd');
    c.Fill({{11, 5}, {22, 5}, {22, 8}, {11, 8}}, 'd');
    return c.Bitmap();
}

PlatformBitmap DragPoint() {
    Canvas c;
    Curve(c);
    c.Knot(kKnot);
    Pointer(c, 13, 8);
    return c.Bitmap();
}

PlatformBitmap DragHandle() {
    Canvas c;
    Curve(c);
    const Point a = CurveAt(0.44), b = CurveAt(0.56);
    const double dx = b.x - a.x, dy = b.y - a.y, n = std::hypot(dx, dy);
    const Point e1{kKnot.x - 7 * dx / n, kKnot.y - 7 * dy / n};
    const Point e2{kKnot.x + 7 * dx / n, kKnot.y + 7 * dy / n};
    c.Line(e1, e2, 'R');
    for (Point e : {e1, e2}) {
        c.Knot(e, 'R');
        c.Dot(e, 'w');
    }
    c.Knot(kKnot);
    return c.Bitmap();
}

PlatformBitmap AddPoint() {
    Canvas c;
    Curve(c);
    c.Knot(kKnot);
    c.Fill({{16, 0}, {19, 0}, {19, 9}, {16, 9}}, 'd');
    c.Fill({{13, 3}, {22, 3}, {22, 6}, {13, 6}}, 'd');
    return c.Bitmap();
}

PlatformBitmap DeletePoint() {
    Canvas c;
    Curve(c);
    c.Knot(kKnot);
    c.Fill({{13, 3}, {22, 3}, {22, 6}, {13, 6}}, 'R');
    return c.Bitmap();
}

PlatformBitmap DrawPath() {
    Canvas c;
    for (int i = 0; i < 60; ++i) {
        const double t = i / 59.0;
        c.Dot({1 + 6 * t, 18 - 4 * t + 3 * std::sin(t * kPi * 2)}, 'b');
    }
    // The pencil, from its point up to the right.
    c.Fill({{7, 15}, {9.5, 8.5}, {13.5, 12.5}}, 'w');
    c.Fill({{9.5, 8.5}, {16.5, 1.5}, {20.5, 5.5}, {13.5, 12.5}}, 'Y');
    c.Fill({{16.5, 1.5}, {18, 0}, {22, 4}, {20.5, 5.5}}, 'M');
    c.Outline({{7, 15}, {9.5, 8.5}, {18, 0}, {22, 4}, {13.5, 12.5}}, 'k');
    c.Line({11.5, 10.5}, {18.5, 3.5}, 'y');
    c.Set(7, 15, 'k');
    c.Set(8, 14, 'k');
    return c.Bitmap();
}

PlatformBitmap EllipsePath() {
    Canvas c;
    c.Arc({11, 10}, 9, 6, 0, 360, 'b');
    for (Point p : {Point{20, 10}, Point{2, 10}, Point{11, 4}, Point{11, 16}})
        c.Knot(p);
    return c.Bitmap();
}

PlatformBitmap PolygonPath() {
    Canvas c;
    std::array<Point, 5> p;
    for (int i = 0; i < 5; ++i)
        p[i] = Canvas::OnArc({11, 10.5}, 9, 8.5, 90 + 72 * i);
    c.Outline({p[0], p[1], p[2], p[3], p[4]}, 'b');
    for (Point q : p)
        c.Knot(q);
    return c.Bitmap();
}

PlatformBitmap StarPath() {
    Canvas c;
    std::array<Point, 10> p;
    for (int i = 0; i < 10; ++i)
        p[i] = Canvas::OnArc({11, 11}, i % 2 ? 4 : 10, i % 2 ? 4 : 9.5, 90 + 36 * i);
    c.Outline({p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7], p[8], p[9]}, 'b');
    for (int i = 0; i < 10; i += 2)
        c.Knot(p[i]);
    return c.Bitmap();
}
} // namespace

bool LoadToolBitmap(int id, PlatformBitmap* bitmap) {
    static constexpr std::pair<int, PlatformBitmap (*)()> kPictures[] = {
        {kBitmapRotateText, RotateText},   {kBitmapDepth, Depth},
        {kBitmapScaleText, ScaleText},     {kBitmapMoveText, MoveText},
        {kBitmapMoveCamera, MoveCamera},   {kBitmapTruckCamera, TruckCamera},
        {kBitmapRollCamera, RollCamera},   {kBitmapOrbitCamera, OrbitCamera},
        {kBitmapSelectLight, SelectLight}, {kBitmapAddLight, AddLight},
        {kBitmapDragPoint, DragPoint},     {kBitmapDragHandle, DragHandle},
        {kBitmapDeletePoint, DeletePoint}, {kBitmapAddPoint, AddPoint},
        {kBitmapEllipsePath, EllipsePath}, {kBitmapPolygonPath, PolygonPath},
        {kBitmapDrawPath, DrawPath},       {kBitmapStarPath, StarPath},
    };
    for (const auto& [key, draw] : kPictures)
        if (key == id) {
            *bitmap = draw();
            return true;
        }
    return false;
}
