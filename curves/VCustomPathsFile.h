// The custom paths file, "Lumerra 3D FlyWORD Custom Paths" beside the
// preferences: a sequence of blocks, each a 32-bit byte count n, n bytes and
// a 32-bit checksum of them. The blocks are the magic "PCTH", the record
// count, and per record its head (312 bytes), its control points (20 bytes
// each: 4 bytes without meaning, then x, y, z, w) and its knots (doubles).
// All numbers are little-endian.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class KList;

inline constexpr const char* kCustomPathsFileName = "Lumerra 3D FlyWORD Custom Paths";

// Appends to `records` (of VCustomPathData) every record up to the first bad
// block: a block whose size is not the one expected or whose checksum does
// not match ends the reading, and the record under way is dropped. Answers
// the number of records appended.
std::int32_t ParseCustomPaths(const std::uint8_t* data, std::size_t size, KList& records);
// The file's bytes for the records of the list.
std::vector<std::uint8_t> FormatCustomPaths(const KList& records);

// The same through the file of that name in the configuration folder. A
// missing or unreadable file gives no records.
std::int32_t ReadCustomPathsFile(const char* name, KList& records);
// Writes over the file from its start; it is never shortened. False when it
// could not be written: the file then keeps what it had.
bool WriteCustomPathsFile(const char* name, const KList& records);
