#include "store/cles.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

#include "store/fiche.h"
#include "store/magasin.h"
#include "store/pliage.h"

namespace vdx {
namespace {

std::string_view Avant(std::string_view texte, char c) { return texte.substr(0, texte.find(c)); }

std::string Partie(const PartieCle& p, Fiche fiche) {
    const Champ& c = p.champ;
    if (c.nature != NatureChamp::Texte) {
        if (p.pli == Pli::Decimal) return CleDecimale(fiche.Entier(ChampEntier::De(c)), p.longueur);
        return CleTexte(fiche.Octets().substr(std::min<size_t>(c.decalage, fiche.Longueur()), 4), p.longueur);
    }
    const std::string_view texte = fiche.Texte(ChampTexte::De(c));
    switch (p.pli) {
        case Pli::Majuscules: return CleTexte(MajusculeSansAccent(texte), p.longueur, p.bourrage);
        case Pli::Libelle: return CleTexte(CleLibelle(texte), p.longueur, p.bourrage);
        default: return CleTexte(texte, p.longueur, p.bourrage);
    }
}

}  // namespace

std::string CleTexte(std::string_view texte, size_t longueur, char bourrage) {
    std::string cle(texte.substr(0, longueur));
    cle.resize(longueur, bourrage);
    return cle;
}

std::string CleEntiers(std::initializer_list<int32_t> entiers) {
    std::string cle(4 * entiers.size(), '\0');
    size_t i = 0;
    for (int32_t e : entiers) EcritMot(cle, 4 * i++, e);
    return cle;
}

std::string_view TexteDeCle(std::string_view cle, size_t debut) {
    const std::string_view reste = cle.substr(std::min(debut, cle.size()));
    return reste.substr(0, reste.find('\0'));
}

std::string_view SansBourrage(std::string_view code) {
    return code.substr(0, code.find_last_not_of(std::string_view(" \0", 2)) + 1);
}

std::string CleDecimale(int32_t valeur, size_t chiffres) {
    char tampon[16];
    const auto fin = std::to_chars(tampon, tampon + sizeof tampon, valeur).ptr;
    std::string texte(tampon, fin);
    if (texte.size() < chiffres) texte.insert(0, chiffres - texte.size(), '0');
    return texte.substr(0, chiffres);
}

std::string CleLibelle(std::string_view libelle) {
    libelle = Avant(libelle, '\0');
    const size_t points = libelle.size() - (libelle.find_last_not_of('.') + 1);
    return PlieCleLibelle(libelle.substr(0, libelle.size() - points)) + std::string(points, '.');
}

std::string CleLibelleProduit(std::string_view libelle) {
    return CleTexte(CleLibelle(libelle), VDXPRO::Libelle.capacite());
}

char CategorieProduit(std::string_view codeRubrique, std::string_view codeCIP) {
    int rubrique = 0;
    std::from_chars(codeRubrique.data(), codeRubrique.data() + codeRubrique.size(), rubrique);
    switch (rubrique) {
        case 10: case 11: case 30: case 90:
            return !codeCIP.empty() && codeCIP[0] == '2' ? 'A' : 'S';
        case 40: return 'V';
        case 50: case 59: return 'D';
        case 60: return 'C';
        case 80: return 'A';
        case 81: return 'T';
        default: return 'X';
    }
}

std::string CleCategorie(char categorie, std::string_view libelle) {
    return CleTexte(std::string(1, categorie) + CleLibelle(libelle), VDXVPRO::Libelle.largeur);
}

std::optional<std::string> CleDe(const Disposition& d, size_t numero, std::string_view octets,
                                 std::string_view cleExterne) {
    const Cle& cle = d.cles.at(numero);
    if (numero == 0 && !d.champsCle.empty()) return CleTexte(cleExterne, cle.longueur);
    const Fiche fiche(octets);
    std::string resultat;
    for (const PartieCle& p : cle.parties) {
        std::string partie = Partie(p, fiche);
        if (cle.facultative && resultat.empty() && partie.find_first_not_of(std::string(1, p.bourrage)) == std::string::npos)
            return std::nullopt;
        resultat += partie;
    }
    return CleTexte(resultat, cle.longueur);
}

bool RendCleUnique(const RegleUnicite& regle, std::string& cle, std::string& fiche) {
    const size_t longueurCle = Avant(cle, '\0').size();
    const size_t debut = regle.libelle.decalage;
    if (longueurCle >= regle.seuil) {
        ++cle[regle.seuil];
        ++fiche[debut + regle.seuil];
        return true;
    }
    const size_t longueurLibelle = Avant(std::string_view(fiche).substr(debut, regle.libelle.largeur), '\0').size();
    if (longueurLibelle >= regle.libelle.capacite()) return false;
    cle[longueurCle] = '.';
    fiche[debut + longueurLibelle] = '.';
    return true;
}

int AjouteCle(const Disposition& d, size_t numero, std::string& cle, std::string& fiche, uint32_t position,
              std::optional<int> donnees) {
    const int numeroDonnees = donnees.value_or(d.table->donnees);
    const int numeroCle = numeroDonnees + 1 + static_cast<int>(numero);
    const std::optional<RegleUnicite>& regle = d.cles.at(numero).unicite;
    for (;;) {
        const int erreur = magasin::AddRecordKey(numeroCle, cle.data(), position, 0);
        if (erreur != magasin::CleExistante || !regle) return erreur;
        if (!RendCleUnique(*regle, cle, fiche)) return erreur;
        if (const int e = magasin::WriteRecordData(numeroDonnees, position, fiche.data())) return e;
    }
}

std::optional<char> CategorieDesOptions(int32_t options) {
    switch (options & 0xFF) {
        case 0: return 'S';
        case 1: return 'A';
        case 2: return 'T';
        case 4: return 'C';
        case 8: return 'D';
        case 16: return 'V';
        case 32: return 'X';
        case 64: return VDXVPRO::TousProduits;
        default: return std::nullopt;
    }
}

}  // namespace vdx
