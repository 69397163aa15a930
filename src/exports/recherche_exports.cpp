// The C exports of the criteria search: the criteria applied to a set
// behind a handle, the set read back, copied and freed.
#include <string_view>

#include "exports/arguments.h"
#include "exports/declaration.h"
#include "platform/hote.h"
#include "products/fiches.h"
#include "search/criteres.h"
#include "search/indications.h"
#include "search/termes.h"
#include "session/resultat.h"
#include "session/entrees.h"
#include "session/tables.h"
#include "store/fiche.h"
#include "store/layouts.h"

using namespace vdx;
using exports::Noms;

namespace {

// The longest Code of a criterion, as its buffer holds.
constexpr size_t LongueurCodeCritere = 255;
constexpr uint32_t ChampsCritere = 4;

// The criteria: the host's array of records in mode 0 (-10 when absent,
// -12 unreadable); the input text's rows "champ@Operation@Code@qualifiant"
// otherwise (-12 when empty), a missing number 0 and a missing code empty.
std::vector<CritereRecherche> Criteres(SAFEARRAY** tableau) {
    std::vector<CritereRecherche> criteres;
    if (session().ModeSortie == ModeTableau) {
        FichesDuTableau(tableau, {Argument1, ListeVide}, ChampsCritere, [&](void* e) {
            criteres.push_back({hote::Entier(e, 0), hote::Entier(e, 1), TexteHote(*hote::Chaine(e, 2), LongueurCodeCritere),
                                hote::Entier(e, 3)});
        });
        return criteres;
    }
    const std::string texte = LitTexte();
    if (texte.empty()) throw Echec{ListeVide};
    for (const std::vector<std::string>& c : RangeesDuTexte(texte, ChampsCritere)) {
        const std::vector<int32_t> nombres = EntiersDeTextes({c[0], c[1], c[3]});
        criteres.push_back({nombres[0], nombres[1], c[2].substr(0, LongueurCodeCritere), nombres[2]});
    }
    return criteres;
}

// The set of a handle the host gives: `absent` for a null pointer, a
// handle of 0 or one not issued.
std::shared_ptr<EnsembleCIP> EnsembleDe(const int32_t* handle, int32_t absent) {
    if (!handle || *handle == 0) throw Echec{absent};
    std::shared_ptr<EnsembleCIP> ensemble = ensembles::Trouve(*handle);
    if (!ensemble) throw Echec{absent};
    return ensemble;
}

}  // namespace

VDX_EXPORT(Recherche_Vdx, Connecte, {}, (Liste, Criteres), (Poignee, Handle), (Entier, Age), (Entier, Poids),
           (Texte, Sexe), (Entier, Grossesse), (Entier, Allaitement)) {
    if (session().ModeSortie == ModeTableau && !Criteres) throw Echec{Argument1};
    if (!Handle) throw Echec{Argument2};
    const std::vector<CritereRecherche> criteres = ::Criteres(Criteres);
    const ProfilArguments patient{Age, Poids, Sexe ? *Sexe : '\0', Grossesse, Allaitement};
    int32_t handle = *Handle;
    const int32_t resultat = Recherche(session(), criteres, handle, patient);
    *Handle = handle;
    return resultat;
}

// The product at Rang (from 1) of the set, with its label; strings of
// 8-bit bytes in mode 0.
VDX_EXPORT(GetRecherche_Vdx, Chaines, Noms("CodeCIP", "Libelle"), (Entier, Rang), (ChaineSortie, CodeCIP),
           (ChaineSortie, Libelle), (Poignee, Handle)) {
    const std::shared_ptr<EnsembleCIP> ensemble = EnsembleDe(Handle, Argument4);
    if (Rang < 1) throw Echec{Argument1};
    if (Rang > ensemble->Nombre()) throw Echec{CodeMalForme};
    const std::string cip = TexteDe(ensemble->Codes[static_cast<size_t>(Rang - 1)]);
    TablesOuvertes tables{&TableProduits()};
    const std::string fiche = FicheRequise(TableProduits(), cip);
    const std::string libelle(Fiche(fiche).Texte(VDXPRO::Libelle));
    tables.Ferme();
    LivreValeurs({{CodeCIP, ErreurInterne}, {Libelle, ErreurInterne}}, {cip, libelle});
    return Succes;
}

VDX_EXPORT(CopyRecherche_Vdx, Connecte, {}, (Poignee, Source), (Poignee, Destination)) {
    const std::shared_ptr<EnsembleCIP> source = EnsembleDe(Source, Argument1);
    if (!Destination) throw Echec{Argument2};
    *Destination = ensembles::Depose(std::make_shared<EnsembleCIP>(*source));
    return Succes;
}

// Needs no connection: a set holds only codes.
VDX_EXPORT(FreeRecherche_Vdx, Libre, {}, (Poignee, Handle)) {
    if (!Handle) return Rien;
    if (*Handle != 0) ensembles::Libere(*Handle);
    *Handle = 0;
    return Succes;
}

VDX_EXPORT(RechercheIndicationProduits_Vdx, Connecte, NomsDesChamps<LigneIndication>(), (Texte, Code), (Entier, Type),
           (Tableau, Resultat)) {
    const std::string_view code = exports::TexteBorne(Code, LongueurTerme);
    if (code.empty()) throw Echec{Argument1};
    vdx::Resultat resultat(Resultat, GabaritDe<LigneIndication>(), Argument2);
    resultat.Prend(LignesSansCleSelon<LigneIndication>(RechercheIndicationProduits(session(), code, Type)));
    return resultat.Livre();
}
