// The code page 1252 table: every conversion on Linux, and on Windows the
// reference the system's conversions are tested against.
#pragma once

#include <array>

namespace vdx::codepage {

// Bytes 0x80 to 0x9F. The five bytes Windows-1252 leaves undefined (0x81,
// 0x8D, 0x8F, 0x90, 0x9D) map to the C1 control of the same value, as
// MultiByteToWideChar does, so that every byte survives a round trip.
inline constexpr std::array<char16_t, 32> Zone80 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

inline char32_t CaractereDe(unsigned char octet) {
    if (octet >= 0x80 && octet < 0xA0) return Zone80[octet - 0x80];
    return octet;
}

// The byte of a character, or -1 if code page 1252 lacks it.
inline int OctetDe(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<int>(c);
    for (size_t i = 0; i < Zone80.size(); ++i)
        if (Zone80[i] == c) return static_cast<int>(0x80 + i);
    return -1;
}

}  // namespace vdx::codepage
