#include "store/fiche.h"

#include <algorithm>

#include <bit>
#include <cstring>
#include <stdexcept>

namespace vdx {
namespace {

// Chapter records begin with this many lengths.
constexpr int NombreSections = 32;
constexpr size_t TailleEntete = NombreSections * 4;

void VerifieDansFiche(const std::string& octets, const Champ& champ) {
    if (champ.decalage + champ.largeur > octets.size())
        throw std::out_of_range(std::string("champ hors de la fiche : ") + champ.nom);
}

}  // namespace

int32_t LitMot(std::string_view octets, size_t decalage) {
    uint32_t mot = 0;
    for (int i = 3; i >= 0; --i) mot = (mot << 8) | static_cast<unsigned char>(octets[decalage + i]);
    return static_cast<int32_t>(mot);
}

void EcritMot(std::string& octets, size_t decalage, int32_t valeur) {
    uint32_t mot = static_cast<uint32_t>(valeur);
    for (int i = 0; i < 4; ++i, mot >>= 8) octets[decalage + i] = static_cast<char>(mot & 0xFF);
}

std::string_view Fiche::Texte(const ChampTexte& champ) const {
    if (champ.decalage >= octets_.size()) return {};
    std::string_view zone = octets_.substr(champ.decalage, champ.largeur);
    return zone.substr(0, zone.find('\0'));
}

int32_t Fiche::Entier(const ChampEntier& champ) const {
    if (champ.decalage + 4u > octets_.size()) return 0;
    return LitMot(octets_, champ.decalage);
}

float Fiche::Reel(const ChampReel& champ) const {
    if (champ.decalage + 4u > octets_.size()) return 0;
    return std::bit_cast<float>(LitMot(octets_, champ.decalage));
}

std::string_view Fiche::Section(int n) const {
    if (n < 1 || n > NombreSections || octets_.size() < TailleEntete) return {};
    size_t debut = TailleEntete;
    for (int i = 1; i < n; ++i) {
        const int32_t l = LitMot(octets_, 4 * (i - 1));
        if (l < 0) return {};
        debut += static_cast<uint32_t>(l);
    }
    const int32_t longueur = LitMot(octets_, 4 * (n - 1));
    // A length that runs past the record gives what the record holds.
    if (longueur <= 0 || debut >= octets_.size()) return {};
    return octets_.substr(debut, std::min<size_t>(static_cast<uint32_t>(longueur), octets_.size() - debut));
}

std::string_view Fiche::Reste(size_t debut) const {
    if (debut >= octets_.size()) return {};
    return octets_.substr(debut);
}

bool FicheEcrite::Texte(const ChampTexte& champ, std::string_view texte) {
    VerifieDansFiche(octets_, champ);
    if (texte.size() > champ.capacite() || texte.find('\0') != std::string_view::npos) return false;
    std::memset(octets_.data() + champ.decalage, 0, champ.largeur);
    texte.copy(octets_.data() + champ.decalage, texte.size());
    return true;
}

void FicheEcrite::Entier(const ChampEntier& champ, int32_t valeur) {
    VerifieDansFiche(octets_, champ);
    EcritMot(octets_, champ.decalage, valeur);
}

void FicheEcrite::Reel(const ChampReel& champ, float valeur) {
    VerifieDansFiche(octets_, champ);
    EcritMot(octets_, champ.decalage, std::bit_cast<int32_t>(valeur));
}

}  // namespace vdx
