#include "documents/annexes.h"

#include <algorithm>
#include <array>
#include <span>

#include "documents/chapitre.h"
#include "documents/fiche_produit.h"
#include "documents/html.h"
#include "products/consultations.h"
#include "products/fiches.h"
#include "products/produits.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

VDX_TABLE(TableNotices, "VDXZNOT")
VDX_TABLE(TableImagesNotices, "VDXZNOTG")
VDX_TABLE(TableLiensProduits, "VDXYLCIP")
VDX_TABLE(TableLiens, "VDXYLIEN")
VDX_TABLE(TableDocuments, "VDXYLBIN")
VDX_TABLE(TableTextesPharmacieProduits, "VDXZAPPC")
VDX_TABLE(TableTextesPharmacie, "VDXZAPTX")
VDX_TABLE(TableHistorique, "VDXPHIMP")
VDX_TABLE(TableALDProduits, "VDXYALDC")
VDX_TABLE(TableALD, "VDXYALD")

// The notice's section of HTML, and its text and RTF.
constexpr int SectionTexte = 1, SectionRtf = 2, SectionHtml = 3;

// The link of a product at a key of VDXYLCIP, with its description.
LigneLien LienA(magasin::Position position) {
    const Fiche lien(VueFicheA(TableLiensProduits(), position));
    LigneLien l{std::string(lien.Texte(VDXYLCIP::NumeroLien)), {}, {}, lien.Entier(VDXYLCIP::TypeLien)};
    if (const auto p = Curseur(TableLiens()).Egale(l.NumeroLien)) {
        const Fiche description(VueFicheA(TableLiens(), *p));
        l.Libelle = description.Texte(VDXYLIEN::Libelle);
        l.NomDocument = description.Texte(VDXYLIEN::NomDocument);
    }
    return l;
}

// Each link of the product, in key order, until `chacun` says to stop.
void ParcourtLiens(const std::string& cip, const std::function<bool(LigneLien)>& chacun) {
    TablesOuvertes tables{&TableLiensProduits(), &TableLiens()};
    Curseur cles(TableLiensProduits());
    for (auto p = cles.PremiereAvec(cip); p && chacun(LienA(*p)); p = cles.SuivanteAvec(cip)) {
    }
    tables.Ferme();
}

// The titles of the texts of a pharmacy product, by its category.
constexpr std::array<const char*, 5> TitresAccessoire = {
    "Propri\xE9t\xE9s d'utilisation", "Composition", "Pr\xE9" "cautions d'emploi", "Pr\xE9sentations, Code ACL",
    "Situation"};
constexpr std::array<const char*, 9> TitresVeterinaire = {
    "Param\xE8tres l\xE9gaux", "Classe Th\xE9rapeutique", "Contre-Indications", "Esp\xE8" "ces cibles",
    "Indications, propri\xE9t\xE9s", "Pr\xE9" "cautions d'emploi", "Pr\xE9sentations, Codes ACL", "Composition",
    "Situation"};
constexpr std::array<const char*, 2> TitresAutres = {"Descriptif", "Situation"};

// The titles of the product's kind, by its category; a product VDXPRO lacks
// is of the second kind.
std::span<const char* const> TitresDe(const std::string& cip) {
    const std::optional<int32_t> categorie =
        SiConnu([&] { return ValeurConsultee(consultations::CodeRubrique, cip); });
    if (categorie == RubriqueAccessoire) return TitresAccessoire;
    if (categorie == RubriqueVeterinaire) return TitresVeterinaire;
    return TitresAutres;
}


}  // namespace

std::optional<std::string> NoticeHtml(const std::string& cip) {
    TablesOuvertes tables{&TableNotices()};
    std::optional<std::string> notice;
    if (const std::optional<std::string_view> fiche = VueDuCode(TableNotices(), cip))
        notice = ExtraitChapitreNotice(SectionHtml, *fiche);
    tables.Ferme();
    return notice;
}

std::vector<ImageNotice> ImagesNotice(const std::string& cip) {
    TablesOuvertes tables{&TableImagesNotices()};
    std::vector<ImageNotice> images;
    Curseur cles(TableImagesNotices());
    for (auto p = cles.PremiereAvec(cip); p; p = cles.SuivanteAvec(cip))
        images.push_back({std::string(TexteDeCle(cles.Cle(), LongueurCIP)), FicheA(TableImagesNotices(), *p)});
    tables.Ferme();
    return images;
}

bool NomDeFichierSimple(std::string_view nom) {
    if (nom.empty() || nom.find("..") != std::string_view::npos) return false;
    return std::ranges::none_of(nom, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == '/' || c == '\\'; });
}

std::string_view DossierDe(std::string_view fichier) {
    const size_t separateur = fichier.find_last_of("/\\");
    return separateur == std::string_view::npos ? std::string_view() : fichier.substr(0, separateur + 1);
}

TexteNotice ProduitNotice(const std::string& cip) {
    TexteNotice t{InformationIndisponibleCourte, {}, LibelleProduitInterne(cip).value_or("")};
    TablesOuvertes tables{&TableNotices()};
    if (const std::optional<std::string_view> fiche = VueDuCode(TableNotices(), cip)) {
        std::string texte = ExtraitChapitre(SectionTexte, *fiche, true);
        if (!texte.empty()) t.Texte = std::move(texte);
        t.Rtf = ExtraitChapitre(SectionRtf, *fiche, true);
    }
    tables.Ferme();
    return t;
}

bool ExisteLien(const std::string& cip) {
    TablesOuvertes tables{&TableLiensProduits()};
    // The first key at or above the code and a number of zeros.
    Curseur cles(TableLiensProduits());
    const auto p = cles.SuperieureOuEgale(cip + std::string(VDXYLCIP::NumeroLien.capacite(), '0'));
    const bool existe = p && cles.Cle().starts_with(cip);
    tables.Ferme();
    return existe;
}

std::vector<LigneLien> ListeLiens(const std::string& cip) {
    std::vector<LigneLien> liens;
    ParcourtLiens(cip, [&](LigneLien l) {
        const bool autre = l.NomDocument.empty() ||
                           std::ranges::none_of(liens, [&](const LigneLien& d) { return d.NomDocument == l.NomDocument; });
        if (autre) liens.push_back(std::move(l));
        return true;
    });
    return liens;
}

bool ExisteTransparence(const std::string& cip) {
    bool existe = false;
    ParcourtLiens(cip, [&](const LigneLien& l) {
        existe = l.TypeLien == VDXYLCIP::LienTransparence;
        return !existe;
    });
    return existe;
}

std::vector<LigneTransparence> Transparences(const std::string& cip) {
    std::vector<LigneTransparence> fiches;
    const std::vector<LigneLien> liens = ListeLiens(cip);
    if (std::ranges::none_of(liens, [](const LigneLien& l) { return l.TypeLien == VDXYLCIP::LienTransparence; }))
        return fiches;
    std::string ald;
    {
        TablesOuvertes tables{&TableALDProduits(), &TableALD()};
        if (const auto lien = Curseur(TableALDProduits()).PremiereAvec(cip)) {
            const std::string code(Fiche(VueFicheA(TableALDProduits(), *lien)).Texte(ModeleLien::CodeLie));
            if (const auto p = Curseur(TableALD()).Egale(code)) ald = Fiche(VueFicheA(TableALD(), *p)).Texte(VDXYALD::Libelle);
        }
        tables.Ferme();
    }
    for (const LigneLien& l : liens)
        if (l.TypeLien == VDXYLCIP::LienTransparence) fiches.push_back({l.NumeroLien, l.Libelle, l.NomDocument, l.TypeLien, ald});
    return fiches;
}

std::optional<std::string> DocumentLie(std::string_view nom) {
    if (nom.empty() || nom.size() > VDXYLBIN::NomDocument.capacite()) return std::nullopt;
    TablesOuvertes tables{&TableDocuments()};
    std::optional<std::string> document;
    if (const auto p = Curseur(TableDocuments()).Egale(nom)) document = FicheA(TableDocuments(), *p);
    tables.Ferme();
    return document;
}

std::optional<std::string> MonographiePropre(const std::string& cip) {
    std::optional<std::string> document;
    ParcourtLiens(cip, [&](const LigneLien& l) {
        if (l.TypeLien == VDXYLCIP::LienMonographie) document = DocumentLie(l.NomDocument);
        return !document;
    });
    return document;
}

std::vector<TextePharmacie> TextesPharmacie(const std::string& cip) {
    std::vector<TextePharmacie> textes;
    if (cip.starts_with('2') || cip.starts_with('3') || cip.starts_with('5')) return textes;
    const std::span<const char* const> titres = TitresDe(cip);
    TablesOuvertes tables{&TableTextesPharmacieProduits(), &TableTextesPharmacie()};
    Curseur cles(TableTextesPharmacieProduits());
    for (auto p = cles.PremiereAvec(cip); p; p = cles.SuivanteAvec(cip)) {
        const std::string numero(Fiche(VueFicheA(TableTextesPharmacieProduits(), *p)).Texte(VDXZAPPC::NumeroTexte));
        const auto position = Curseur(TableTextesPharmacie()).Egale(numero);
        if (!position) continue;
        const std::string_view texte = VueFicheA(TableTextesPharmacie(), *position);
        // The fields go in pairs: the plain text of the n-th is field 2n - 1.
        for (size_t n = 0; n < titres.size(); ++n)
            if (std::string champ = ExtraitChapitre(static_cast<int>(2 * n + 1), texte, true); !champ.empty())
                textes.push_back({titres[n], std::move(champ)});
    }
    tables.Ferme();
    return textes;
}

std::vector<LigneHistorique> Historique(const std::string& cip) {
    std::vector<LigneHistorique> changements;
    TablesOuvertes tables{&TableHistorique()};
    Curseur cles(TableHistorique());
    for (auto p = cles.PremiereAvec(cip); p; p = cles.SuivanteAvec(cip)) {
        const Fiche f(VueFicheA(TableHistorique(), *p));
        changements.push_back({DateChiffresJourMoisAn(f.Texte(VDXPHIMP::DateModification)), std::string(f.Texte(VDXPHIMP::Texte))});
    }
    tables.Ferme();
    return changements;
}

std::string PageHistorique(const std::string& cip, const std::vector<LigneHistorique>& changements,
                           std::string_view feuilleStyle) {
    std::string page = TetePage("Historique", feuilleStyle) + "</HEAD>\r\n<BODY>\r\n";
    page += Bout("<p class=\"Titre\"><font face=\"Arial\"><b>Modifications importantes pour ",
                 LibelleProduitInterne(cip).value_or(""), "</b></font></p>\r\n");
    page += "<table width=\"100%\" border=\"0\" cellspacing=\"1\" cellpadding=\"3\" bgcolor=\"#FFFFFF\">\r\n";
    for (const LigneHistorique& c : changements)
        page += Bout("<tr><td class=\"Texte\"><font face=\"Arial\">", EncodeHtml(c.Texte, true),
                     "</font></td><td class=\"Texte\" align=\"right\" nowrap><font face=\"Arial\">", c.Date,
                     "</font></td></tr>\r\n");
    return EncodeHtml(page + "</table>\r\n</BODY>\r\n</HTML>\r\n", false);
}

std::string PageInteroperabilite(const std::string& cip, std::string_view feuilleStyle) {
    if (!LibelleProduitInterne(cip)) throw Echec{CodeInconnu};
    constexpr char Titre[] = "Fiche d'identit&eacute; interop&eacute;rable";
    std::string page = TetePage(Titre, feuilleStyle) + "</HEAD>\r\n<BODY>\r\n";
    page += Bout("<p class=\"Titre\"><font face=\"Arial\"><b>", Titre, "</b></font></p>\r\n",
                 "<table class=\"tableau_contour\" width=\"100%\" border=\"0\" cellspacing=\"1\" cellpadding=\"3\">\r\n");
    bool fond = true;
    for (const RangeeIdentite& r : IdentiteInteroperable(cip)) {
        page += Bout(fond ? "<tr bgcolor=\"#DADADA\">" : "<tr>", "<td width=\"44%\" class=\"Texte\"><font face=\"Arial\"><b>",
                     r.nom, "</b></font></td><td width=\"56%\" class=\"Texte\"><font face=\"Arial\">", r.valeur,
                     "</font></td></tr>\r\n");
        fond = !fond;
    }
    return EncodeHtml(page + "</table>\r\n</BODY>\r\n</HTML>\r\n", false);
}

}  // namespace vdx
