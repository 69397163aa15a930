// The C exports of the documents: RTF to text, the stored texts of the
// marketing authorisation, the monograph and the page of the flags.
#include "documents/annexes.h"
#include "documents/monographie.h"
#include "documents/rtf.h"
#include "documents/textes_amm.h"
#include "exports/arguments.h"
#include "exports/declaration.h"
#include "products/produits.h"
#include "session/codeproduit.h"
#include "session/connexion.h"
#include "session/resultat.h"
#include "session/messages.h"
#include "session/texte.h"

using namespace vdx;
using exports::Noms;

namespace {

// A chapter of one of the tables: in mode 0 into the host's two strings,
// emptied first; in the other modes the text without its last line end,
// then the RTF. 1 when the chapter has a text, else 0.
int32_t TexteAMM(TextesAMM textes, const char* code, VdxDeuxChaines* hote, int32_t chapitre) {
    const std::string cip = CodeCIPRequis(code);
    if (chapitre < 1 || chapitre > ChapitresDe(textes)) throw Echec{Argument3};
    const bool tableau = session().ModeSortie == ModeTableau;
    if (tableau) VideFiche(Requis(hote, Argument2), GabaritDe<ChapitreAMM>());
    ChapitreAMM c = ChapitreStocke(textes, cip, chapitre);
    const bool present = !c.Rtf.empty();
    if (!tableau && c.Texte.ends_with(FinDeLigne)) c.Texte.resize(c.Texte.size() - std::string_view(FinDeLigne).size());
    LivreFiche(hote, GabaritDe<ChapitreAMM>(), ValeursDe(c));
    return present ? Succes : Rien;
}

// A page of a product into the host's file: -10 for an accessory, -20
// without a file's name; a file that won't open is passed over.
template <class Page>
int32_t EcritDocument(const char* code, const char* fichier, Page page) {
    const std::string cip = CodeCIPRequis(code);
    if (EstAccessoire(cip)) throw Echec{Argument1};
    if (exports::TexteDe(fichier).empty()) throw Echec{Argument2};
    EcritPage(fichier, page(cip));
    return Succes;
}

}  // namespace

VDX_EXPORT(MonographieHtml_Vdx, Differe, {}, (Texte, Code), (Texte, Fichier), (Texte, FeuilleStyle)) {
    NotifieAgent(messages::NoticeMonographie, Code);
    if (!session().Connecte) return NonConnecte;
    return EcritDocument(Code, Fichier, [&](const std::string& cip) {
        return PageMonographie(session(), cip, FormeMonographie::Complete, exports::TexteDe(FeuilleStyle));
    });
}

VDX_EXPORT(MonographieHtml2_Vdx, Connecte, {}, (Texte, Code), (Texte, Fichier), (Texte, FeuilleStyle)) {
    return EcritDocument(Code, Fichier, [&](const std::string& cip) {
        return PageMonographie(session(), cip, FormeMonographie::Courte, exports::TexteDe(FeuilleStyle));
    });
}

VDX_EXPORT(InfoHtml_Vdx, Connecte, {}, (Texte, Code), (Texte, Fichier), (Texte, FeuilleStyle)) {
    return EcritDocument(Code, Fichier,
                         [&](const std::string& cip) { return PageInfo(session(), cip, exports::TexteDe(FeuilleStyle)); });
}

VDX_EXPORT(ProduitAMM_Vdx, Connecte, NomsDesChamps<TermeProduit>(), (Texte, Code), (Tableau, Resultat),
           (Entier, Type)) {
    const std::string cip = CodeCIPRequis(Code);
    if (Type < TypeAMMMin || Type > TypeAMMMax) throw Echec{Argument3};
    vdx::Resultat resultat(Resultat, GabaritDe<TermeProduit>(), Argument2);
    resultat.Prend(LignesSansCleSelon<TermeProduit>(TermesProduit(cip, Type)));
    return resultat.Livre();
}

VDX_EXPORT(ProduitTexteAMM_Vdx, Connecte, NomsDesChamps<ChapitreAMM>(), (Texte, Code), (Fiche, Textes),
           (Entier, Chapitre)) {
    return TexteAMM(TextesAMM::Principaux, Code, Textes, Chapitre);
}

VDX_EXPORT(ProduitTexteAMMPlus_Vdx, Connecte, NomsDesChamps<ChapitreAMM>(), (Texte, Code), (Fiche, Textes),
           (Entier, Chapitre)) {
    return TexteAMM(TextesAMM::Complementaires, Code, Textes, Chapitre);
}

VDX_EXPORT(GetDateChapitre_Vdx, Chaines, Noms("Date"), (Texte, Code), (Entier, Chapitre), (ChaineSortie, Date)) {
    const std::string cip = CodeCIPRequis(Code);
    if (Chapitre < 0 || Chapitre > CodeChapitreMax) throw Echec{Argument2};
    const std::optional<std::string> date = DateChapitre(cip, Chapitre);
    if (!date) return Rien;
    LivreValeur(Date, *date, Argument3);
    return Succes;
}

VDX_EXPORT(LibelleCIS_Vdx, Chaines, Noms("Libelle"), (Texte, Code), (ChaineSortie, Libelle)) {
    const std::string_view cis = exports::TexteBorne(Code, LongueurCIS);
    if (cis.empty()) throw Echec{Argument1};
    if (cis.size() != LongueurCIS) throw Echec{CodeMalForme};
    const std::optional<std::string> libelle = LibelleCIS(cis);
    if (!libelle) throw Echec{CodeInconnu};
    LivreValeur(Libelle, *libelle, Argument2);
    return Succes;
}

VDX_EXPORT(LibelleMedDC2_Vdx, Chaines, Noms("Libelle"), (Texte, Code), (ChaineSortie, Libelle)) {
    LivreValeur(Libelle, LibelleMedDC2(CodeProduit(Code)), Argument2);
    return Succes;
}

// Needs no connection; the text goes to the host string as 8-bit bytes in
// every output mode, with no delivery by mode; in mode 0 it is emptied
// first. 1, or TamponRtfIndisponible.
VDX_EXPORT(Rtf_To_Texte, Libre, {}, (Texte, Texte), (ChaineSortie, Sortie)) {
    if (session().ModeSortie == ModeTableau) RangeEnOctets(Sortie, "");
    std::string resultat;
    try {
        resultat = RtfVersTexte(Requis(Texte));
    } catch (const std::bad_alloc&) {
        return TamponRtfIndisponible;
    }
    RangeEnOctets(Sortie, resultat);
    return Succes;
}

// The side documents.

VDX_EXPORT(NoticeHtml_Vdx, Connecte, {}, (Texte, Code), (Texte, Fichier)) {
    const std::string cip = CodeCIPRequis(Code);
    const std::string_view fichier = exports::TexteDe(Fichier);
    if (fichier.empty()) throw Echec{Argument2};
    const std::optional<std::string> notice = NoticeHtml(cip);
    if (!notice) return Rien;
    const std::vector<ImageNotice> images = ImagesNotice(cip);
    for (const ImageNotice& image : images)
        if (!NomDeFichierSimple(image.nom)) throw Echec{CodeMalForme};
    EcritPage(Fichier, *notice);
    // The pictures beside the notice; one that can't be written is named in
    // FichierErreur, and the notice stands.
    for (const ImageNotice& image : images) {
        const std::string chemin = std::string(DossierDe(fichier)) + image.nom;
        if (!EcritFichier(chemin.c_str(), image.octets)) session().FichierErreur = chemin;
    }
    return Succes;
}

VDX_EXPORT(ProduitNotice_Vdx, Connecte, NomsDesChamps<TexteNotice>(), (Texte, Code), (Fiche, Textes), (Entier, Type)) {
    const std::string cip = CodeCIPRequis(Code);
    if (Type != TypeNotice) throw Echec{Argument3};
    if (session().ModeSortie == ModeTableau) VideFiche(Requis(Textes, Argument2), GabaritDe<TexteNotice>());
    LivreFiche(Textes, GabaritDe<TexteNotice>(), ValeursDe(ProduitNotice(cip)));
    return Succes;
}

VDX_EXPORT(ExisteLien_Vdx, Connecte, {}, (Texte, Code)) { return ExisteLien(CodeCIPRequis(Code)) ? Succes : Rien; }

VDX_EXPORT(ListeLien_Vdx, Connecte, NomsDesChamps<LigneLien>(), (Texte, Code), (Tableau, Resultat)) {
    const std::string cip = CodeCIPRequis(Code);
    vdx::Resultat resultat(Resultat, GabaritDe<LigneLien>(), Argument2);
    resultat.Prend(LignesSansCleSelon<LigneLien>(ListeLiens(cip)));
    return resultat.Livre();
}

VDX_EXPORT(ExisteFicheTransparence_Vdx, Connecte, {}, (Texte, Code)) {
    return ExisteTransparence(CodeCIPRequis(Code)) ? Succes : Rien;
}

VDX_EXPORT(FicheTransparence_Vdx, Connecte, NomsDesChamps<LigneTransparence>(), (Texte, Code), (Tableau, Resultat)) {
    const std::string cip = CodeCIPRequis(Code);
    vdx::Resultat resultat(Resultat, GabaritDe<LigneTransparence>(), Argument2);
    resultat.Prend(LignesSansCleSelon<LigneTransparence>(Transparences(cip)));
    return resultat.Livre();
}

// The file is written whatever its path; one that won't open is no failure.
VDX_EXPORT(GenererLien_Vdx, Connecte, {}, (Texte, Nom), (Texte, Fichier)) {
    const std::string_view nom = exports::TexteDe(Nom);
    if (nom.empty()) throw Echec{Argument1};
    if (exports::TexteDe(Fichier).empty()) throw Echec{Argument2};
    const std::optional<std::string> document = DocumentLie(nom);
    if (!document) throw Echec{CodeInconnu};
    EcritFichier(Fichier, *document);
    return Succes;
}

VDX_EXPORT(ProduitTextePharm_Vdx, Connecte, NomsDesChamps<TextePharmacie>(), (Texte, Code), (Tableau, Resultat)) {
    const std::string cip = CodeCIPRequis(Code);
    vdx::Resultat resultat(Resultat, GabaritDe<TextePharmacie>(), Argument2);
    resultat.Prend(LignesSansCleSelon<TextePharmacie>(TextesPharmacie(cip)));
    return resultat.Livre();
}

VDX_EXPORT(Historique_Vdx, Connecte, NomsDesChamps<LigneHistorique>(), (Texte, Code), (Tableau, Resultat)) {
    const std::string cip = CodeCIPRequis(Code);
    vdx::Resultat resultat(Resultat, GabaritDe<LigneHistorique>(), Argument2);
    resultat.Prend(LignesSansCleSelon<LigneHistorique>(Historique(cip)));
    return resultat.Livre();
}

// The page is written also for a product without changes.
VDX_EXPORT(HistoriqueHtml_Vdx, Connecte, {}, (Texte, Code), (Texte, Fichier), (Texte, FeuilleStyle)) {
    const std::string cip = CodeCIPRequis(Code);
    if (exports::TexteDe(Fichier).empty()) throw Echec{Argument2};
    const std::vector<LigneHistorique> changements = Historique(cip);
    EcritPage(Fichier, PageHistorique(cip, changements, exports::TexteDe(FeuilleStyle)));
    return static_cast<int32_t>(changements.size());
}

VDX_EXPORT(InteroperabiliteHtml_Vdx, Connecte, {}, (Texte, Code), (Texte, Fichier), (Texte, FeuilleStyle)) {
    const std::string cip = CodeCIPRequis(Code);
    if (exports::TexteDe(Fichier).empty()) throw Echec{Argument2};
    EcritPage(Fichier, PageInteroperabilite(cip, exports::TexteDe(FeuilleStyle)));
    return Succes;
}
