#include "platform/codepage.h"

#include <array>
#include <cstdint>

namespace vdx::codepage {

namespace {

// Bytes 0x80 to 0x9F. The five bytes Windows-1252 leaves undefined (0x81,
// 0x8D, 0x8F, 0x90, 0x9D) map to the C1 control of the same value, as
// MultiByteToWideChar does, so that every byte survives a round trip.
constexpr std::array<char16_t, 32> Zone80 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char32_t CaractereDe(unsigned char octet) {
    if (octet >= 0x80 && octet < 0xA0) return Zone80[octet - 0x80];
    return octet;
}

// The byte of a character, or -1 if code page 1252 lacks it.
int OctetDe(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<int>(c);
    for (size_t i = 0; i < Zone80.size(); ++i)
        if (Zone80[i] == c) return static_cast<int>(0x80 + i);
    return -1;
}

void AjouteUtf8(std::string& sortie, char32_t c) {
    if (c < 0x80) {
        sortie += static_cast<char>(c);
    } else if (c < 0x800) {
        sortie += static_cast<char>(0xC0 | (c >> 6));
        sortie += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        // Code page 1252 has nothing beyond the basic plane.
        sortie += static_cast<char>(0xE0 | (c >> 12));
        sortie += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        sortie += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// Decodes one UTF-8 character at `i`, strictly: no overlong form, no
// surrogate, nothing beyond U+10FFFF. Returns its length, 0 if malformed.
size_t DecodeUtf8(std::string_view s, size_t i, char32_t* c) {
    auto octet = [&](size_t k) { return static_cast<unsigned char>(s[k]); };
    unsigned char b0 = octet(i);
    size_t n;
    char32_t valeur;
    char32_t minimum;
    if (b0 < 0x80) {
        *c = b0;
        return 1;
    } else if (b0 >= 0xC2 && b0 <= 0xDF) {
        n = 2, valeur = b0 & 0x1F, minimum = 0x80;
    } else if (b0 >= 0xE0 && b0 <= 0xEF) {
        n = 3, valeur = b0 & 0x0F, minimum = 0x800;
    } else if (b0 >= 0xF0 && b0 <= 0xF4) {
        n = 4, valeur = b0 & 0x07, minimum = 0x10000;
    } else {
        return 0;
    }
    if (s.size() - i < n) return 0;
    for (size_t k = 1; k < n; ++k) {
        unsigned char b = octet(i + k);
        if ((b & 0xC0) != 0x80) return 0;
        valeur = (valeur << 6) | (b & 0x3F);
    }
    if (valeur < minimum || valeur > 0x10FFFF || (valeur >= 0xD800 && valeur <= 0xDFFF)) return 0;
    *c = valeur;
    return n;
}

}  // namespace

std::u16string VersUtf16(std::string_view cp1252) {
    std::u16string sortie;
    sortie.reserve(cp1252.size());
    for (char octet : cp1252)
        sortie += static_cast<char16_t>(CaractereDe(static_cast<unsigned char>(octet)));
    return sortie;
}

std::string DepuisUtf16(std::u16string_view texte) {
    std::string sortie;
    sortie.reserve(texte.size());
    for (size_t i = 0; i < texte.size(); ++i) {
        char16_t c = texte[i];
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < texte.size() && texte[i + 1] >= 0xDC00 &&
            texte[i + 1] <= 0xDFFF) {
            ++i;  // a pair is one character, and none of them is in code page 1252
            sortie += '?';
            continue;
        }
        int octet = OctetDe(c);
        sortie += octet < 0 ? '?' : static_cast<char>(octet);
    }
    return sortie;
}

std::string VersUtf8(std::string_view cp1252) {
    std::string sortie;
    sortie.reserve(cp1252.size() + cp1252.size() / 8);
    for (char octet : cp1252) AjouteUtf8(sortie, CaractereDe(static_cast<unsigned char>(octet)));
    return sortie;
}

std::optional<std::string> DepuisUtf8(std::string_view utf8, size_t* position) {
    std::string sortie;
    sortie.reserve(utf8.size());
    for (size_t i = 0; i < utf8.size();) {
        char32_t c = 0;
        size_t n = DecodeUtf8(utf8, i, &c);
        int octet = n ? OctetDe(c) : -1;
        if (octet < 0) {
            if (position) *position = i;
            return std::nullopt;
        }
        sortie += static_cast<char>(octet);
        i += n;
    }
    return sortie;
}

}  // namespace vdx::codepage
