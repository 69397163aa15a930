// A record seen through its fields, and a record written field by field.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "store/champ.h"

namespace vdx {

// A view over the bytes of a record; the bytes must outlive it. A field that
// lies beyond the end of a short (variable) record reads as empty or 0.
class Fiche {
public:
    Fiche() = default;
    explicit Fiche(std::string_view octets) : octets_(octets) {}

    // The text up to its NUL, or to the end of the field or of the record.
    std::string_view Texte(const ChampTexte& champ) const;
    int32_t Entier(const ChampEntier& champ) const;
    float Reel(const ChampReel& champ) const;

    std::string_view Octets() const { return octets_; }
    size_t Longueur() const { return octets_.size(); }

    // Chapter records: a header of 32 lengths (32-bit, 128 bytes), then the
    // sections one behind the other. Section n, from 1; empty when the
    // header does not fit the record.
    std::string_view Section(int n) const;
    // The bytes from `debut` to the end of the record.
    std::string_view Reste(size_t debut) const;

private:
    std::string_view octets_;
};

// A record buffer, zeroed at its length, filled field by field.
class FicheEcrite {
public:
    explicit FicheEcrite(size_t longueur) : octets_(longueur, '\0') {}
    explicit FicheEcrite(std::string octets) : octets_(std::move(octets)) {}

    // Clears the field and writes the text. False, and nothing written, when
    // the text is longer than the field holds or carries a NUL: a text is
    // never cut.
    [[nodiscard]] bool Texte(const ChampTexte& champ, std::string_view texte);
    void Entier(const ChampEntier& champ, int32_t valeur);
    void Reel(const ChampReel& champ, float valeur);

    Fiche Vue() const { return Fiche(octets_); }
    const std::string& Octets() const { return octets_; }
    std::string& Octets() { return octets_; }

private:
    std::string octets_;
};

// Little-endian 32-bit words inside byte strings, whatever the machine.
int32_t LitMot(std::string_view octets, size_t decalage);
void EcritMot(std::string& octets, size_t decalage, int32_t valeur);

}  // namespace vdx
