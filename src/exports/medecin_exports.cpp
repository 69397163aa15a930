// The C exports of the doctor's private base: its life (creation,
// connection, deletion, repair) and its edits.
#include "exports/arguments.h"
#include "exports/declaration.h"
#include "medecin/base_medecin.h"
#include "medecin/edition.h"
#include "session/entrees.h"
#include "session/resultat.h"

using namespace vdx;
using exports::Noms;

VDX_EXPORT(CreationMedecin_Vdx, Connecte, {}, (Texte, Chemin)) { return medecin::Creation(exports::TexteDe(Chemin)); }

VDX_EXPORT(ConnectionMedecin_Vdx, Connecte, {}, (Texte, Chemin)) { return medecin::Connexion(exports::TexteDe(Chemin)); }

VDX_EXPORT(DeConnectionMedecin_Vdx, Libre, {}) { return medecin::Deconnexion(); }

VDX_EXPORT(SuppressionMedecin_Vdx, Connecte, {}, (Texte, Chemin)) { return medecin::Suppression(exports::TexteDe(Chemin)); }

VDX_EXPORT(RepairBaseMedecin_Vdx, Connecte, {}, (Texte, Chemin)) { return medecin::Reparation(exports::TexteDe(Chemin)); }

VDX_EXPORT(ProduitsMedecin_Vdx, Connecte, {}, (Texte, CodeCIP), (Texte, Commentaire), (Entier, Operation)) {
    return medecin::Produit(exports::TexteDe(CodeCIP), exports::TexteDe(Commentaire), Operation);
}

// 1 with the comment, 0 for a product without record.
VDX_EXPORT(CommentaireMedecin_Vdx, Chaines, Noms("Commentaire"), (Texte, CodeCIP), (ChaineSortie, Commentaire)) {
    const std::optional<std::string> commentaire = medecin::Commentaire(exports::TexteDe(CodeCIP));
    if (!commentaire) return Rien;
    LivreValeur(Commentaire, *commentaire, Argument2);
    return Succes;
}

// The code is read from the host's string and, for a pathology added under
// an empty code, the new one given back in it.
VDX_EXPORT(PathologiesMedecin_Vdx, Connecte, Noms("Code"), (ChaineSortie, Code), (Texte, Libelle), (Texte, CodeCISP),
           (Entier, Operation)) {
    std::string code = Code && *Code ? TexteHote(*Code, 8) : std::string();
    const bool nouveau = code.empty();
    const int32_t resultat =
        medecin::Pathologie(code, exports::TexteDe(Libelle), exports::TexteDe(CodeCISP), Operation);
    if (nouveau && Code) LivreValeur(Code, code, Argument1);
    return resultat;
}
