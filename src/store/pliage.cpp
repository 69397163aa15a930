#include "store/pliage.h"

namespace vdx {
namespace {

// The letter of an accented byte of the table, or 0.
char LettreAccentuee(char octet) {
    switch (static_cast<unsigned char>(octet)) {
        case 0xC0: case 0xC1: case 0xC2: case 0xC4: case 0xE0: case 0xE2: case 0xE4:
            return 'A';
        case 0xC8: case 0xC9: case 0xCA: case 0xCB: case 0xE8: case 0xE9: case 0xEA: case 0xEB:
            return 'E';
        case 0xCC: case 0xCD: case 0xCE: case 0xCF: case 0xEE: case 0xEF:
            return 'I';
        case 0xD2: case 0xD3: case 0xD4: case 0xD6: case 0xF4: case 0xF6:
            return 'O';
        case 0xD9: case 0xDA: case 0xDB: case 0xDC: case 0xF9: case 0xFB: case 0xFC:
            return 'U';
        default:
            return 0;
    }
}

bool Minuscule(char c) { return c >= 'a' && c <= 'z'; }
bool Majuscule(char c) { return c >= 'A' && c <= 'Z'; }
bool Chiffre(char c) { return c >= '0' && c <= '9'; }

// One byte to key form; 0 when the byte is dropped.
char PlieOctet(char octet, bool gardeBarre, bool gardeTiret) {
    if (const char lettre = LettreAccentuee(octet)) return lettre;
    if (Minuscule(octet)) return static_cast<char>(octet - 'a' + 'A');
    if (Majuscule(octet) || Chiffre(octet)) return octet;
    if ((octet == '/' && gardeBarre) || (octet == '-' && gardeTiret)) return octet;
    return 0;
}

std::string_view JusquAuNul(std::string_view texte) { return texte.substr(0, texte.find('\0')); }

std::string PlieTout(std::string_view texte, bool gardeBarre, bool gardeTiret) {
    std::string plie;
    for (char c : JusquAuNul(texte))
        if (const char p = PlieOctet(c, gardeBarre, gardeTiret)) plie += p;
    return plie;
}

}  // namespace

char MajusculeSansAccent(char octet) {
    if (const char lettre = LettreAccentuee(octet)) return lettre;
    return Minuscule(octet) ? static_cast<char>(octet - 'a' + 'A') : octet;
}

char EnMinuscule(char octet) {
    const auto c = static_cast<unsigned char>(octet);
    if (Majuscule(octet) || (c >= 0xC0 && c <= 0xDE && c != 0xD7)) return static_cast<char>(c + 0x20);
    switch (c) {
        case 0x8A: case 0x8C: case 0x8E: return static_cast<char>(c + 0x10);  // Š, Œ, Ž
        case 0x9F: return static_cast<char>(0xFF);                           // Ÿ
        default: return octet;
    }
}

std::string MajusculeSansAccent(std::string_view texte) {
    std::string plie(texte);
    for (char& c : plie) c = MajusculeSansAccent(c);
    return plie;
}

std::string PlieCle(std::string_view texte, bool gardeBarre) { return PlieTout(texte, gardeBarre, false); }

std::string PlieMotCle(std::string_view texte, bool gardeBarre) { return PlieTout(texte, gardeBarre, true); }

std::string PlieCleLibelle(std::string_view texte, bool gardeBarre) {
    // Positions count bytes of the source, not of the result.
    constexpr size_t Tete = 5;
    std::string plie;
    const std::string_view source = JusquAuNul(texte);
    for (size_t i = 0; i < source.size(); ++i) {
        const char c = source[i];
        if (i < Tete && c != '/') {
            if (const char p = PlieOctet(c, gardeBarre, false)) plie += p;
        } else {
            plie += MajusculeSansAccent(c);
        }
    }
    return plie;
}

}  // namespace vdx
