#include "curves/VCustomPathsFile.h"

#include "curves/VCustomPathData.h"
#include "foundation/KList.h"
#include "ui/persistence/VPreferencesFile.h"

#include <cstring>
#include <memory>
#include <new>

namespace {
constexpr std::size_t kHeadSize = 312;
constexpr std::size_t kPointSize = 20;
// Offsets in the record head.
constexpr std::size_t kHeadKnotCount = 4, kHeadClosed = 8, kHeadName = 9, kHeadTangent = 268,
                      kHeadNormal = 288, kHeadIsBezier = 308;

std::uint32_t Get32(const std::uint8_t* p) {
    return std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8 | std::uint32_t(p[2]) << 16 |
           std::uint32_t(p[3]) << 24;
}

void Put32(std::uint8_t* p, std::uint32_t v) {
    for (int i = 0; i < 4; ++i)
        p[i] = std::uint8_t(v >> (8 * i));
}

float GetFloat(const std::uint8_t* p) {
    const std::uint32_t bits = Get32(p);
    float f;
    std::memcpy(&f, &bits, 4);
    return f;
}

void PutFloat(std::uint8_t* p, float f) {
    std::uint32_t bits;
    std::memcpy(&bits, &f, 4);
    Put32(p, bits);
}

// A point in its 20-byte form: 4 bytes without meaning, x, y, z, w.
KVector3D GetPoint(const std::uint8_t* p) {
    return {GetFloat(p + 4), GetFloat(p + 8), GetFloat(p + 12), GetFloat(p + 16)};
}

void PutPoint(std::uint8_t* p, const KVector3D& v) {
    Put32(p, 0);
    PutFloat(p + 4, v.x);
    PutFloat(p + 8, v.y);
    PutFloat(p + 12, v.z);
    PutFloat(p + 16, v.w);
}

// Walks the blocks of a file.
class BlockReader {
  public:
    BlockReader(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
    // The next block's bytes, if its size is `expected` and its checksum holds.
    const std::uint8_t* Next(std::uint64_t expected) {
        if (size_ - at_ < 8 + expected || Get32(data_ + at_) != expected) return nullptr;
        const std::uint8_t* bytes = data_ + at_ + 4;
        const std::int32_t sum = std::int32_t(Get32(bytes + expected));
        if (sum != SignedByteSum(bytes, std::size_t(expected))) return nullptr;
        at_ += 8 + std::size_t(expected);
        return bytes;
    }

  private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

void PutBlock(std::vector<std::uint8_t>& out, const std::uint8_t* bytes, std::size_t count) {
    const std::size_t at = out.size();
    out.resize(at + 8 + count);
    Put32(&out[at], std::uint32_t(count));
    if (count) std::memcpy(&out[at + 4], bytes, count);
    Put32(&out[at + 4 + count], std::uint32_t(SignedByteSum(bytes, count)));
}

// One record from its three blocks, or null.
std::unique_ptr<VCustomPathData> ReadRecord(BlockReader& reader) {
    const std::uint8_t* head = reader.Next(kHeadSize);
    if (!head) return nullptr;
    const std::int32_t pointCount = std::int32_t(Get32(head));
    const std::int32_t knotCount = std::int32_t(Get32(head + kHeadKnotCount));
    if (pointCount <= 1 || knotCount < 0) return nullptr;
    const std::uint8_t* pointBytes = reader.Next(std::uint64_t(pointCount) * kPointSize);
    if (!pointBytes) return nullptr;
    const std::uint8_t* knotBytes = reader.Next(std::uint64_t(knotCount) * 8);
    if (!knotBytes) return nullptr;

    std::unique_ptr<KVector3D[]> points(new (std::nothrow) KVector3D[std::size_t(pointCount)]);
    std::unique_ptr<double[]> knots(new (std::nothrow) double[std::size_t(knotCount) + 1]);
    if (!points || !knots) return nullptr;
    for (std::int32_t i = 0; i < pointCount; ++i)
        points[i] = GetPoint(pointBytes + std::size_t(i) * kPointSize);
    for (std::int32_t i = 0; i < knotCount; ++i) {
        const std::uint64_t bits = Get32(knotBytes + 8 * std::size_t(i)) |
                                   std::uint64_t(Get32(knotBytes + 8 * std::size_t(i) + 4)) << 32;
        std::memcpy(&knots[i], &bits, 8);
    }
    std::unique_ptr<VCustomPathData> record(new (std::nothrow) VCustomPathData);
    if (!record ||
        !record->SetCurve(pointCount, points.get(), knotCount, knots.get(), head[kHeadClosed],
                          GetPoint(head + kHeadTangent), GetPoint(head + kHeadNormal)))
        return nullptr;
    std::memcpy(record->name, head + kHeadName, VCustomPathData::kNameSize);
    record->name[VCustomPathData::kNameSize - 1] = 0;
    record->isBezier = head[kHeadIsBezier];
    return record;
}
} // namespace

std::int32_t ParseCustomPaths(const std::uint8_t* data, std::size_t size, KList& records) {
    if (!data) return 0;
    BlockReader reader(data, size);
    // The magic block passes on its size and checksum alone.
    const std::uint8_t* count = reader.Next(4) ? reader.Next(4) : nullptr;
    if (!count) return 0;
    const std::uint32_t wanted = Get32(count);
    std::int32_t read = 0;
    while (std::uint32_t(read) < wanted) {
        std::unique_ptr<VCustomPathData> record = ReadRecord(reader);
        if (!record) break;
        records.Append(record.release());
        ++read;
    }
    return read;
}

std::vector<std::uint8_t> FormatCustomPaths(const KList& records) {
    std::vector<std::uint8_t> out;
    PutBlock(out, reinterpret_cast<const std::uint8_t*>("PCTH"), 4);
    std::uint8_t count[4];
    Put32(count, records.GetCount());
    PutBlock(out, count, 4);
    for (std::uint32_t i = 1; i <= records.GetCount(); ++i) {
        const auto* record = static_cast<const VCustomPathData*>(records.EntryAt(i));
        std::uint8_t head[kHeadSize] = {};
        Put32(head, std::uint32_t(record->pointCount));
        Put32(head + kHeadKnotCount, std::uint32_t(record->knotCount));
        head[kHeadClosed] = record->closed;
        std::memcpy(head + kHeadName, record->name, VCustomPathData::kNameSize);
        head[kHeadName + VCustomPathData::kNameSize - 1] = 0;
        PutPoint(head + kHeadTangent, record->startTangent);
        PutPoint(head + kHeadNormal, record->startNormal);
        head[kHeadIsBezier] = record->isBezier;
        PutBlock(out, head, kHeadSize);
        std::vector<std::uint8_t> bytes(std::size_t(record->pointCount) * kPointSize);
        for (std::int32_t p = 0; p < record->pointCount; ++p)
            PutPoint(&bytes[std::size_t(p) * kPointSize], record->points[p]);
        PutBlock(out, bytes.data(), bytes.size());
        bytes.assign(std::size_t(record->knotCount) * 8, 0);
        for (std::int32_t k = 0; k < record->knotCount; ++k) {
            std::uint64_t bits;
            std::memcpy(&bits, &record->knots[k], 8);
            Put32(&bytes[std::size_t(k) * 8], std::uint32_t(bits));
            Put32(&bytes[std::size_t(k) * 8 + 4], std::uint32_t(bits >> 32));
        }
        PutBlock(out, bytes.data(), bytes.size());
    }
    return out;
}

std::int32_t ReadCustomPathsFile(const char* name, KList& records) {
    VPreferencesFile file(name, false);
    std::int64_t size = 0;
    if (!file.Size(size) || size <= 0) return 0;
    std::vector<std::uint8_t> bytes(std::size_t(size), 0);
    if (!file.ReadBytes(size, bytes.data())) return 0;
    return ParseCustomPaths(bytes.data(), bytes.size(), records);
}

bool WriteCustomPathsFile(const char* name, const KList& records) {
    const std::vector<std::uint8_t> bytes = FormatCustomPaths(records);
    VPreferencesFile file(name, true);
    return file.Seek(0) && file.WriteBytes(std::int64_t(bytes.size()), bytes.data()) &&
           file.Close();
}
