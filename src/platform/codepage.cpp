#include "platform/codepage.h"

#include <cstdint>

#include "platform/codepage_table.h"

namespace vdx::codepage {

namespace {

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
