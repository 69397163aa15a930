#include "documents/textes_amm.h"

#include "documents/chapitre.h"
#include "products/fiches.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {

namespace {

VDX_TABLE(TableTermes, "VDXVAMM")
VDX_TABLE(TableTermesProduits, "VDXVAMPC")
VDX_TABLE(TableTextes, "VDXVAMPT")
VDX_TABLE(TableTextesPlus, "VDXVAMST")
VDX_TABLE(TableDates, "VDXVAMDT")

const Table& TableDe(TextesAMM textes) {
    return textes == TextesAMM::Principaux ? TableTextes() : TableTextesPlus();
}

constexpr size_t ChiffresChapitre = 2;

}  // namespace

std::vector<TermeProduit> TermesProduit(std::string_view cip, int32_t type) {
    TablesOuvertes tables{&TableTermesProduits(), &TableTermes()};
    const std::string chiffre = std::to_string(type);
    const std::string debut = CleTexte(cip, LongueurCIP) + chiffre;
    std::vector<TermeProduit> termes;
    Curseur cles(TableTermesProduits());
    for (auto p = cles.PremiereAvec(debut); p; p = cles.SuivanteAvec(debut)) {
        const Fiche lien(VueFicheA(TableTermesProduits(), *p));
        TermeProduit t{lien.Entier(VDXVAMPC::NiveauLien), std::string(lien.Texte(VDXVAMPC::CodeTerme)), {}};
        const auto terme = Curseur(TableTermes()).Egale(CleTexte(t.CodeTerme, VDXVAMM::CodeTerme.capacite()) + chiffre);
        t.Libelle = terme ? std::string(Fiche(VueFicheA(TableTermes(), *terme)).Texte(VDXVAMM::Libelle))
                          : messages::MotCleInexistant(t.CodeTerme);
        termes.push_back(std::move(t));
    }
    tables.Ferme();
    if (termes.empty()) throw Echec{Rien};
    return termes;
}

int ChapitresDe(TextesAMM textes) { return textes == TextesAMM::Principaux ? 5 : 13; }

std::optional<std::string> FicheChapitres(TextesAMM textes, std::string_view cip) {
    const Table& table = TableDe(textes);
    TablesOuvertes tables{&table};
    std::optional<std::string> fiche;
    if (const auto p = Curseur(table).Egale(cip)) fiche = FicheA(table, *p);
    tables.Ferme();
    return fiche;
}

ChapitreAMM ChapitreStocke(TextesAMM textes, std::string_view cip, int chapitre) {
    const std::optional<std::string> fiche = FicheChapitres(textes, cip);
    if (!fiche) return {};
    return {ExtraitChapitre(chapitre, *fiche, false), ExtraitChapitre(2 * chapitre, *fiche, true)};
}

std::optional<std::string> DateChapitre(std::string_view cip, int32_t chapitre) {
    TablesOuvertes tables{&TableDates()};
    std::optional<std::string> date;
    if (const auto p = Curseur(TableDates()).Egale(CleTexte(cip, LongueurCIP) + CleDecimale(chapitre, ChiffresChapitre)))
        date = Fiche(VueFicheA(TableDates(), *p)).Texte(VDXVAMDT::DateChapitre);
    tables.Ferme();
    return date;
}

}  // namespace vdx
