// The fields of a record: name, offset, width and nature. Each table
// declares its fields once, as constexpr handles in a namespace of its own
// (store/layouts/), and everything else reads and writes through them:
// Fiche f(octets); f.Texte(VDXYALD::Libelle).
#pragma once

#include <cstdint>

namespace vdx {

enum class NatureChamp : uint8_t {
    Texte,   // code page 1252 bytes ended by a NUL within the width
    Entier,  // little-endian signed 32-bit
    Reel,    // little-endian IEEE 32-bit float
};

// A field whatever its nature: what the tools that walk a layout see.
struct Champ {
    const char* nom;
    uint16_t decalage;
    uint16_t largeur;
    NatureChamp nature;
    bool plein = false;  // a text that may fill its width, with no NUL behind it
};

struct ChampTexte {
    const char* nom;
    uint16_t decalage;
    uint16_t largeur;
    bool plein = false;

    static constexpr ChampTexte De(const Champ& c) { return {c.nom, c.decalage, c.largeur, c.plein}; }

    // The longest text the field holds.
    constexpr uint16_t capacite() const { return plein ? largeur : static_cast<uint16_t>(largeur - 1); }
    constexpr operator Champ() const { return {nom, decalage, largeur, NatureChamp::Texte, plein}; }
};

struct ChampEntier {
    const char* nom;
    uint16_t decalage;

    static constexpr ChampEntier De(const Champ& c) { return {c.nom, c.decalage}; }

    static constexpr uint16_t largeur = 4;
    constexpr operator Champ() const { return {nom, decalage, largeur, NatureChamp::Entier}; }
};

struct ChampReel {
    const char* nom;
    uint16_t decalage;

    static constexpr ChampReel De(const Champ& c) { return {c.nom, c.decalage}; }

    static constexpr uint16_t largeur = 4;
    constexpr operator Champ() const { return {nom, decalage, largeur, NatureChamp::Reel}; }
};

}  // namespace vdx

// Declares a field handle whose name in the sources is its C++ name.
#define VDX_TEXTE(nom, decalage, largeur) inline constexpr ::vdx::ChampTexte nom{#nom, decalage, largeur}
#define VDX_TEXTE_PLEIN(nom, decalage, largeur) inline constexpr ::vdx::ChampTexte nom{#nom, decalage, largeur, true}
#define VDX_ENTIER(nom, decalage) inline constexpr ::vdx::ChampEntier nom{#nom, decalage}
#define VDX_REEL(nom, decalage) inline constexpr ::vdx::ChampReel nom{#nom, decalage}
