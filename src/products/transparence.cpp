#include "products/transparence.h"

#include "documents/fiche_produit.h"
#include "products/consultations.h"
#include "session/cadre.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

VDX_TABLE(TableAvis, "VDXYTRF")

// The level, date and reason of the last opinion of one kind.
void DernierAvis(const std::string& cis, const char* avis, std::string& niveau, std::string& date, std::string& motif) {
    const std::string tete = CleTexte(cis, VDXYTRF::CodeCIS.capacite()) + avis;
    Curseur cles(TableAvis());
    std::optional<magasin::Position> dernier;
    for (auto p = cles.PremiereAvec(tete); p; p = cles.SuivanteAvec(tete)) dernier = p;
    if (!dernier) return;
    const Fiche f(VueFicheA(TableAvis(), *dernier));
    niveau = f.Texte(VDXYTRF::Niveau);
    date = DateChiffresJourMoisAn(f.Texte(VDXYTRF::Date));
    motif = f.Texte(VDXYTRF::Motif);
}

}  // namespace

FicheSmrAsmr SmrAsmrDe(const std::string& cip) {
    const std::string cis = TexteConsulte(consultations::CIS, cip);
    TablesOuvertes tables{&TableAvis()};
    FicheSmrAsmr f;
    DernierAvis(cis, VDXYTRF::AvisSMR, f.NiveauSMR, f.DateSMR, f.MotifSMR);
    DernierAvis(cis, VDXYTRF::AvisASMR, f.NiveauASMR, f.DateASMR, f.MotifASMR);
    tables.Ferme();
    return f;
}

}  // namespace vdx
