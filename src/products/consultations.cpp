#include "products/consultations.h"

#include <charconv>
#include <string>

#include "session/codeproduit.h"
#include "session/tables.h"

namespace vdx {
namespace {

// A decimal text as a number; 0 for a text that does not begin with one.
int32_t Decimal(std::string_view texte) {
    int32_t valeur = 0;
    std::from_chars(texte.data(), texte.data() + texte.size(), valeur);
    return valeur;
}

int32_t Lit(const Consultation& c, const Fiche& fiche, BSTR* sortie) {
    const bool texte = c.champ.nature == NatureChamp::Texte;
    switch (c.lecture) {
        case Lecture::Texte:
            LivreValeur(sortie, fiche.Texte(ChampTexte::De(c.champ)), Argument2);
            return Succes;
        case Lecture::Nombre:
            return texte ? Decimal(fiche.Texte(ChampTexte::De(c.champ))) : fiche.Entier(ChampEntier::De(c.champ));
        case Lecture::Bit:
            return (fiche.Entier(ChampEntier::De(c.champ)) & c.bit) != 0 ? Succes : Rien;
        case Lecture::Oui:
            return fiche.Entier(ChampEntier::De(c.champ)) != 0 ? Succes : Rien;
    }
    return Rien;
}

int32_t ConsulteFiche(const Consultation& c, const char* code, BSTR* sortie) {
    const std::string cip = CodeProduit(code);
    const Table& table = c.table();
    TablesOuvertes tables{&table};
    const std::string octets = FicheRequise(table, cip);
    const int32_t resultat = Lit(c, Fiche(octets), sortie);
    tables.Ferme();
    return resultat;
}

}  // namespace

int32_t Consulte(const Consultation& c, const char* code, BSTR* sortie) {
    if (c.codeAvantConnexion && (!code || !*code)) return Argument1;
    if (!session().Connecte) return NonConnecte;
    return ConsulteFiche(c, code, sortie);
}

}  // namespace vdx
