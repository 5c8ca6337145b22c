#pragma once

#include <cstdint>

// Failure codes that the system throws as plain 32-bit integers. Each is named
// by its four bytes as they lie in memory on a little-endian machine, so the
// value read as a number has the name's characters in reverse order.

// Four-character code from a literal of exactly four characters, the first
// character in the most significant byte: "rstV" gives 0x72737456.
constexpr std::int32_t MakeFourCharCode(const char (&code)[5]) {
    const std::uint32_t value = (std::uint32_t(static_cast<unsigned char>(code[0])) << 24) |
                                (std::uint32_t(static_cast<unsigned char>(code[1])) << 16) |
                                (std::uint32_t(static_cast<unsigned char>(code[2])) << 8) |
                                std::uint32_t(static_cast<unsigned char>(code[3]));
    return static_cast<std::int32_t>(value);
}

// A buffer, bitmap, block of memory or platform object could not be got, or a
// library constructor returned null. The general out-of-memory signal.
inline constexpr std::int32_t kFailPlin = 0x6E696C50;
// A library call returned a status other than success.
inline constexpr std::int32_t kFailLF3q = 0x7133466C;
// No renderer classes are registered at all.
inline constexpr std::int32_t kFailTrsa = 0x61737274;

// Throws the out-of-memory signal.
[[noreturn]] inline void ThrowPlin() {
    throw kFailPlin;
}
