#include "search/termes.h"

#include <algorithm>

#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "vocabulary/libelles.h"
#include "vocabulary/vocabulaires.h"

namespace vdx {

VDX_TABLE(TableTermesProduits, "VDXVAMPC")
VDX_TABLE(TableLiensTermes, "VDXVAMMC")
VDX_TABLE(TableEquivalents, "VDXVAMME")
VDX_TABLE(TableCISP, "VDXVCISP")
VDX_TABLE(TableCIM10, "VDXVCIM")
VDX_TABLE(TableCISPVersCIM10, "VDXVCICI")

namespace {

// A vocabulary code in the keys of VDXVAMMC, and the type of link beside it
// ("01" an indication).
constexpr size_t LongueurCodeLie = VDXVAMMC::LongueurCodeLieCle;
constexpr size_t LongueurTypeLien = VDXVAMMC::TypeLien.capacite();
constexpr size_t LongueurCodeCISPCle = VDXVCICI::CodeCISP.capacite();

// The type of link of a mode: "01" to "04".
std::string TypeLien(int32_t mode) { return "0" + std::to_string(mode); }

}  // namespace

bool CodeEcarte(std::string_view cip) { return cip.starts_with('8') || cip.starts_with('1'); }

std::string_view CodeSonde(std::string_view code) { return code.substr(0, LongueurTerme); }

MarcheTermes::MarcheTermes(const DemandeTermes& demande)
    : code_(CodeSonde(demande.code)), mode_(demande.mode), liensDuMode_(demande.liensDuMode) {
    switch (demande.qualifiant) {
        case ParTerme: ListeParTerme(); break;
        case ParCISP:
            libelle_ = LibelleDans(TableCISP());
            ListeParCISP();
            break;
        case ParCIM10:
            libelle_ = LibelleDans(TableCIM10());
            liste_.push_back(code_);
            break;
        default: break;
    }
}

// The links of the term (of type "01" for an indication), each record read;
// each code once.
void MarcheTermes::ListeParTerme() {
    std::string sonde = CleTexte(code_, LongueurTerme);
    if (mode_ == ModeIndication) sonde += TypeLien(ModeIndication);
    Curseur liens(TableLiensTermes());
    for (auto p = liens.PremiereAvec(sonde); p; p = liens.SuivanteAvec(sonde)) {
        VueFicheA(TableLiensTermes(), *p);
        std::string_view lie = TexteDeCle(liens.Cle(), LongueurTerme + LongueurTypeLien);
        if (lie.ends_with(".9")) lie.remove_suffix(2);
        if (std::find(liste_.begin(), liste_.end(), lie) == liste_.end()) liste_.emplace_back(lie);
    }
}

void MarcheTermes::ListeParCISP() {
    Curseur cles(TableCISPVersCIM10());
    for (auto p = cles.PremiereAvec(code_); p; p = cles.SuivanteAvec(code_))
        liste_.emplace_back(TexteDeCle(cles.Cle(), LongueurCodeCISPCle));
}

std::optional<std::string> MarcheTermes::LibelleDans(const Table& table) const {
    Curseur cles(table);
    const auto p = cles.SuperieureOuEgale(code_);
    if (!p || TexteDeCle(cles.Cle(), 0) != code_) return std::nullopt;
    return std::string(Fiche(VueFicheA(table, *p)).Texte(ModeleVocabulaire::Libelle));
}

bool MarcheTermes::TermeDuCode(std::string_view terme) const {
    if (terme == code_) return true;
    try {
        return Curseur(TableEquivalents()).Egale(CleTexte(code_, LongueurTerme) + CleTexte(terme, LongueurTerme)).has_value();
    } catch (Echec& e) {
        e.fichier = FichierEquivalents;
        throw;
    }
}

void MarcheTermes::Parcourt(const std::function<bool(std::string_view)>& retient,
                            const std::function<void(std::string_view, std::string_view)>& produit) const {
    if (liste_.empty()) {
        Produits(code_, retient, produit);
        return;
    }
    const std::string type = TypeLien(mode_);
    Curseur liens(TableLiensTermes(), 1);
    for (const std::string& entree : liste_) {
        const std::string sonde = CleTexte(entree, LongueurCodeLie, ' ') + type;
        for (auto p = liens.SuperieureOuEgale(sonde); p && liens.Cle().starts_with(entree); p = liens.Suivante()) {
            if (liensDuMode_ && liens.Cle().substr(LongueurCodeLie, LongueurTypeLien) != type) continue;
            Produits(TexteDeCle(liens.Cle(), LongueurCodeLie + LongueurTypeLien), retient, produit);
        }
    }
}

// The keys of index 86 of the term and the mode's digit: its products.
void MarcheTermes::Produits(std::string_view terme, const std::function<bool(std::string_view)>& retient,
                            const std::function<void(std::string_view, std::string_view)>& produit) const {
    if (!retient(terme)) return;
    const std::string sonde = CleTexte(terme, LongueurTerme) + std::to_string(mode_);
    Curseur produits(TableTermesProduits(), 1);
    for (auto p = produits.PremiereAvec(sonde); p; p = produits.SuivanteAvec(sonde)) {
        produit(terme, TexteDeCle(produits.Cle().substr(0, sonde.size() + LongueurCIP), sonde.size()));
    }
}

std::vector<CISPLie> CISPLies(std::string_view code, int32_t qualifiant) {
    TablesOuvertes tables{&TableLiensTermes(), &TableCISPVersCIM10(), &TableCISP()};
    std::vector<std::string> cim10;
    if (qualifiant == ParCIM10) cim10.emplace_back(CodeSonde(code));
    else cim10 = MarcheTermes({.code = code, .qualifiant = ParTerme, .mode = 0}).CodesAtteints();
    std::vector<CISPLie> lies;
    Curseur cles(TableCISPVersCIM10());
    for (auto p = cles.Premiere(); p; p = cles.Suivante()) {
        const std::string_view cisp = TexteDeCle(cles.Cle().substr(0, LongueurCodeCISPCle), 0);
        const std::string_view lie = TexteDeCle(cles.Cle(), LongueurCodeCISPCle);
        const bool atteint = std::ranges::any_of(cim10, [&](const std::string& c) { return lie.starts_with(c); });
        if (!atteint || (!lies.empty() && lies.back().Code == cisp)) continue;
        lies.push_back({std::string(cisp),
                        LibelleVocabulaire(vocabulaires::CISP(), cisp).value_or(messages::CodeIntrouvable(cisp))});
    }
    tables.Ferme();
    return lies;
}

}  // namespace vdx
