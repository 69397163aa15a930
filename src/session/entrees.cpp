#include "session/entrees.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "platform/hote.h"
#include "session/cadre.h"
#include "session/resultat.h"
#include "session/session.h"
#include "session/texte.h"

namespace vdx {
namespace {

// Walks the elements of an input array of `tailleMin` bytes or more (exactly
// `tailleExacte` when it is not 0).
template <class Lit>
void Parcourt(SAFEARRAY* const* tableau, CodesEntree codes, uint32_t tailleMin, uint32_t tailleExacte, Lit&& lit) {
    if (!tableau || !*tableau) throw Echec{codes.absent};
    SAFEARRAY* t = *tableau;
    const uint32_t taille = hote::TailleElement(t);
    if (t->cDims != 1 || taille < tailleMin || (tailleExacte && taille != tailleExacte)) throw Echec{codes.illisible};
    const uint32_t n = hote::NombreElements(t);
    if (n == 0) return;
    const hote::Acces acces(t);
    if (!acces) throw Echec{codes.illisible};
    for (uint32_t i = 0; i < n; ++i) lit(acces.Element(taille, i));
}

}  // namespace

std::string TexteHote(BSTR chaine, size_t longueurMax) {
    if (session().ChainesUnicode) return ChaineVersTexte(chaine, longueurMax + 1);
    std::string_view octets = hote::Octets(chaine);
    octets = octets.substr(0, std::min(octets.find('\0'), longueurMax));
    return std::string(octets);
}

void FichesDuTableau(SAFEARRAY* const* tableau, CodesEntree codes, uint32_t champs,
                     const std::function<void(void* fiche)>& lit) {
    const uint32_t taille = hote::TailleFiche(champs);
    Parcourt(tableau, codes, taille, taille, lit);
}

std::vector<std::string> ChainesDuTableau(SAFEARRAY* const* tableau, CodesEntree codes) {
    std::vector<std::string> chaines;
    Parcourt(tableau, codes, sizeof(BSTR), sizeof(BSTR),
             [&](void* e) { chaines.push_back(TexteHote(*hote::Chaine(e, 0))); });
    return chaines;
}

std::vector<int32_t> EntiersDuTableau(SAFEARRAY* const* tableau, CodesEntree codes) {
    std::vector<int32_t> entiers;
    Parcourt(tableau, codes, sizeof(int32_t), 0, [&](void* e) { entiers.push_back(hote::Entier(e, 0)); });
    return entiers;
}

std::vector<Analyse> AnalysesDuTableau(SAFEARRAY* const* tableau, CodesEntree codes) {
    std::vector<Analyse> analyses;
    FichesDuTableau(tableau, codes, 2, [&](void* e) {
        analyses.push_back({TexteHote(*hote::Chaine(e, 0)), hote::Entier(e, 1)});
    });
    return analyses;
}

std::vector<std::string> ListesDuTexte::Suivante() {
    std::vector<std::string> liste;
    while (std::optional<std::string> entree = ExtraitChamp(texte_, position_, 0)) {
        if (entree->empty()) break;
        liste.push_back(std::move(*entree));
    }
    return liste;
}

std::vector<std::vector<std::string>> RangeesDuTexte(std::string_view texte, size_t champs) {
    const std::string_view finDeLigne(FinDeLigne);
    std::vector<std::vector<std::string>> rangees;
    for (std::string_view reste = texte; !reste.empty();) {
        const size_t fin = reste.find(finDeLigne);
        const std::string_view ligne = reste.substr(0, fin);
        reste = fin == std::string_view::npos ? std::string_view() : reste.substr(fin + finDeLigne.size());
        if (ligne.empty()) continue;
        std::vector<std::string> rangee;
        for (size_t position = 0; auto champ = ExtraitChamp(ligne, position, 1);) rangee.push_back(std::move(*champ));
        rangee.resize(std::max(rangee.size(), champs));
        rangees.push_back(std::move(rangee));
    }
    return rangees;
}

std::vector<int32_t> EntiersDeTextes(const std::vector<std::string>& textes) {
    std::vector<int32_t> entiers;
    for (const std::string& t : textes) {
        int32_t n = 0;
        std::from_chars(t.data(), t.data() + t.size(), n);
        entiers.push_back(n);
    }
    return entiers;
}

}  // namespace vdx
