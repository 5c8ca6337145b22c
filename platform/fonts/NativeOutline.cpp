#include "platform/fonts/NativeOutline.h"

#include <cmath>
#include <cstring>

FIXED ToFixed(double value) {
    double scaled = std::round(value * 65536.0);
    if (!(scaled >= -2147483648.0)) scaled = -2147483648.0; // also catches NaN
    if (scaled > 2147483647.0) scaled = 2147483647.0;
    const std::int32_t bits = static_cast<std::int32_t>(scaled);
    FIXED fixed;
    fixed.fract = static_cast<WORD>(static_cast<std::uint32_t>(bits) & 0xFFFFu);
    fixed.value = static_cast<std::int16_t>(bits >> 16);
    return fixed;
}

std::int32_t FixedBits(FIXED value) {
    return static_cast<std::int32_t>(
        (static_cast<std::uint32_t>(static_cast<std::uint16_t>(value.value)) << 16) | value.fract);
}

double FromFixed(FIXED value) {
    return FixedBits(value) / 65536.0;
}

namespace {

class Writer {
  public:
    Writer(double scale, const MAT2& matrix)
        : fScale(scale), fM11(FromFixed(matrix.eM11)), fM12(FromFixed(matrix.eM12)),
          fM21(FromFixed(matrix.eM21)), fM22(FromFixed(matrix.eM22)) {}

    POINTFX Map(double x, double y) const {
        x *= fScale;
        y *= fScale;
        POINTFX p;
        p.x = ToFixed(fM11 * x + fM21 * y);
        p.y = ToFixed(fM12 * x + fM22 * y);
        return p;
    }

    void BeginContour(POINTFX start) {
        fHeader = fBytes.size();
        TTPOLYGONHEADER header{};
        header.dwType = TT_POLYGON_TYPE;
        header.pfxStart = start;
        Append(&header, sizeof header);
        fRecord = 0;
        fRecordType = 0;
    }

    // Adds a point to a record of the given type, opening a new record when
    // the type changes or when a spline record already ends on the curve.
    void AddPoint(WORD type, POINTFX point, bool closesSegment) {
        if (fRecordType != type || fRecordClosed) {
            fRecord = fBytes.size();
            const WORD head[2] = {type, 0};
            Append(head, sizeof head);
            fRecordType = type;
        }
        Append(&point, sizeof point);
        WORD count;
        std::memcpy(&count, &fBytes[fRecord + 2], sizeof count);
        ++count;
        std::memcpy(&fBytes[fRecord + 2], &count, sizeof count);
        // Quadratic records end with their on-curve point; a cubic record may
        // go on with more segments of three points.
        fRecordClosed = type == TT_PRIM_QSPLINE && closesSegment;
    }

    void EndContour() {
        const DWORD size = static_cast<DWORD>(fBytes.size() - fHeader);
        std::memcpy(&fBytes[fHeader], &size, sizeof size);
        fRecordType = 0;
        fRecordClosed = false;
    }

    std::vector<unsigned char> Take() { return std::move(fBytes); }

  private:
    void Append(const void* data, std::size_t size) {
        const auto* bytes = static_cast<const unsigned char*>(data);
        fBytes.insert(fBytes.end(), bytes, bytes + size);
    }

    double fScale, fM11, fM12, fM21, fM22;
    std::vector<unsigned char> fBytes;
    std::size_t fHeader = 0;
    std::size_t fRecord = 0;
    WORD fRecordType = 0;
    bool fRecordClosed = false;
};

} // namespace

std::vector<unsigned char> EncodeNativeOutline(const FT_Outline& outline, double scale,
                                               const MAT2& matrix) {
    Writer writer(scale, matrix);
    int first = 0;
    for (int c = 0; c < outline.n_contours; ++c) {
        const int last = outline.contours[c];
        if (last < first || last >= outline.n_points) break;
        const int n = last - first + 1;
        const FT_Vector* p = outline.points + first;
        const char* tags = outline.tags + first;
        auto tag = [&](int i) { return FT_CURVE_TAG(tags[i]); };

        int start = -1;
        for (int i = 0; i < n && start < 0; ++i)
            if (tag(i) == FT_CURVE_TAG_ON) start = i;

        if (start < 0) {
            // Only quadratic control points: the contour starts on the point
            // implied between the last and the first control point.
            const double sx = (static_cast<double>(p[n - 1].x) + p[0].x) / 2.0;
            const double sy = (static_cast<double>(p[n - 1].y) + p[0].y) / 2.0;
            const POINTFX startPoint = writer.Map(sx, sy);
            writer.BeginContour(startPoint);
            const bool cubic = tag(0) == FT_CURVE_TAG_CUBIC;
            const WORD type = cubic ? TT_PRIM_CSPLINE : TT_PRIM_QSPLINE;
            for (int i = 0; i < n; ++i)
                writer.AddPoint(type, writer.Map(p[i].x, p[i].y), false);
            writer.AddPoint(type, startPoint, true);
            writer.EndContour();
        } else {
            writer.BeginContour(writer.Map(p[start].x, p[start].y));
            WORD pending = 0; // type of the spline whose control points came last
            for (int k = 1; k <= n; ++k) {
                const int i = (start + k) % n;
                const POINTFX point = writer.Map(p[i].x, p[i].y);
                const int t = tag(i);
                if (t == FT_CURVE_TAG_ON) {
                    if (pending) {
                        writer.AddPoint(pending, point, true);
                        pending = 0;
                    } else if (k < n) {
                        writer.AddPoint(TT_PRIM_LINE, point, true);
                    }
                } else {
                    pending = t == FT_CURVE_TAG_CUBIC ? TT_PRIM_CSPLINE : TT_PRIM_QSPLINE;
                    writer.AddPoint(pending, point, false);
                }
            }
            writer.EndContour();
        }
        first = last + 1;
    }
    return writer.Take();
}
