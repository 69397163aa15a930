#include "documents/monographie.h"

#include <array>
#include <cstdio>
#include <memory>
#include <optional>
#include <vector>

#include "checks/avis.h"
#include "documents/annexes.h"
#include "documents/chapitre.h"
#include "documents/fiche_produit.h"
#include "documents/html.h"
#include "documents/textes_amm.h"
#include "posology/catalogue.h"
#include "products/codes.h"
#include "products/consultations.h"
#include "products/produits.h"
#include "session/cadre.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {

namespace {

VDX_TABLE(TableProduitsDCI, "VDXYDCIP")
VDX_TABLE(TableTextes, "VDXVAMPT")
VDX_TABLE(TableTextesPlus, "VDXVAMST")

// A chapter without a date of its own.
constexpr int32_t SansDate = -1;

// A stored chapter: its table and field pair, the code of its date, and
// the kind of terms listed in front of it (0 none).
struct ChapitreStockeHtml {
    const char* titre;
    const char* ancre;
    TextesAMM textes;
    int chapitre;
    int32_t codeDate;
    int32_t typeAMM;
};

constexpr TextesAMM P = TextesAMM::Principaux, S = TextesAMM::Complementaires;
constexpr std::array<ChapitreStockeHtml, 4> ChapitresDesTermes = {{
    {"Indications", "Indications", P, 1, 5, 1},
    {"Contre indications", "Contre_indications", P, 2, 6, 2},
    {"Pr\xE9" "cautions d'emploi", "Precaution_emploi", P, 3, 7, 3},
    {"Effets ind\xE9sirables", "Effets_indesirables", P, 4, 8, 4},
}};
constexpr ChapitreStockeHtml ChapitreGrossesse = {"Grossesse et allaitement", "Grossesse_allaitement", P, 5, 13, 0};
constexpr char TitreIncompatibilite[] = "Incompatibilit\xE9";
constexpr std::array<ChapitreStockeHtml, 13> ChapitresComplementaires = {{
    {"Posologies", "Posologies", S, 2, 15, 0},
    {"Interactions", "Interactions", S, 1, 14, 0},
    {"Conduite et utilisation de machine", "Conduite", S, 8, 21, 0},
    {"Surdosage", "Surdosage", S, 5, 18, 0},
    {"Pharmacodynamie", "Pharmacodynamie", S, 6, 19, 0},
    {"Pharmacocin\xE9tique", "Pharmacocinetique", S, 7, 20, 0},
    {"S\xE9" "curit\xE9 pr\xE9" "clinique", "Securite", S, 9, 22, 0},
    {TitreIncompatibilite, "Incompatibilite", S, 4, 17, 0},
    {"Conditions particuli\xE8res de conservation", "Conservation", S, 3, 16, 0},
    {"Emballage ext\xE9rieur", "Emballage", S, 13, 26, 0},
    {"Instructions pour l'utilisation, la manipulation et l'\xE9limination ", "Modalites", S, 10, 23, 0},
    {"Conditions particuli\xE8res de d\xE9livrance", "Conditions", S, 11, 24, 0},
    {"Aspect", "Aspect", S, 12, 25, 0},
}};

constexpr char DebutCadre[] = "<p class=\"Texte\"><font face=\"Arial\">";
constexpr char FinCadre[] = "</font></p>";

// What a chapter carries beside its text: a block in front of the frame,
// and one at the start inside it.
struct Entourage {
    std::string avant;
    std::string dedans;
};

// The two texts of a page that grow side by side.
class Assemblage {
public:
    explicit Assemblage(const std::string& cip) : cip_(cip) {}

    void AjouteChapitre(std::string_view titre, std::string_view ancre, std::string_view texte, int32_t codeDate,
                        bool encadre, const Entourage& entourage = {}) {
        if (texte.empty() && entourage.avant.empty()) return;
        if (!sommaire_.empty()) sommaire_ += " - ";
        sommaire_ += "<font face=\"Arial\"><strong><a href=\"#";
        sommaire_ += ancre;
        sommaire_ += "\" class=\"TexteLien\">";
        sommaire_ += titre;
        sommaire_ += "</a></strong></font>";

        corps_ += "<div align=\"center\"><table width=\"100%\" border=\"0\" cellspacing=\"0\" cellpadding=\"3\" "
                  "bgcolor=\"#0152A3\"><tr><td><a name=\"";
        corps_ += ancre;
        corps_ += "\" class=\"Titreparagraphe\">";
        corps_ += titre;
        corps_ += "</a></td><td><div align=\"right\" class=\"Texteretour\">";
        if (codeDate != SansDate)
            if (const std::optional<std::string> date = DateChapitre(cip_, codeDate))
                corps_ += " AMM du " + DateJourMoisAn(*date) + " ";
        corps_ += "<a href=\"#sommaire\" class=\"Texteretour\">Retour</a></div></td></tr></table></div><hr>\r\n";
        corps_ += entourage.avant;
        if (texte.empty()) return;
        if (encadre) {
            corps_ += DebutCadre;
            corps_ += entourage.dedans;
            corps_ += EncodeHtml(texte, true);
            corps_ += FinCadre;
        } else {
            corps_ += texte;
        }
        corps_ += "\r\n";
    }
    void AjouteAuCorps(std::string_view texte) { corps_ += texte; }
    const std::string& cip() const { return cip_; }
    const std::string& Sommaire() const { return sommaire_; }
    const std::string& Corps() const { return corps_; }

private:
    const std::string& cip_;
    std::string sommaire_, corps_;
};

std::string ListeHtml(const std::vector<std::string>& libelles) {
    if (libelles.empty()) return {};
    std::string t = "<UL>\r\n";
    for (const std::string& l : libelles) t += "<li class=\"Texte\">" + l + "</li>\r\n";
    return t + "</ul>\r\n";
}

std::string ListeDesTermes(const std::string& cip, int32_t type) {
    std::vector<std::string> libelles;
    try {
        for (TermeProduit& t : TermesProduit(cip, type)) libelles.push_back(std::move(t.Libelle));
    } catch (const Echec& e) {
        if (e.code != Rien) throw;
    }
    return ListeHtml(libelles);
}

// The stored records of a product, each read once.
struct Records {
    std::optional<std::string> principaux, complementaires;
    const std::optional<std::string>& De(TextesAMM t) const {
        return t == TextesAMM::Principaux ? principaux : complementaires;
    }
};

std::string TexteDe(const Records& r, const ChapitreStockeHtml& c) {
    const std::optional<std::string>& fiche = r.De(c.textes);
    return fiche ? ExtraitChapitre(c.chapitre, *fiche, false) : std::string();
}

void AjouteStocke(Assemblage& a, const Records& r, const ChapitreStockeHtml& c, Entourage entourage = {}) {
    if (c.typeAMM) entourage.avant = ListeDesTermes(a.cip(), c.typeAMM) + entourage.avant;
    a.AjouteChapitre(c.titre, c.ancre, TexteDe(r, c), c.codeDate, true, entourage);
}

void AjouteFaits(Assemblage& a, const std::string& cip) {
    a.AjouteChapitre("Forme et pr\xE9sentation", "Forme_et_presentation", ChapitreFormePresentation(cip), SansDate, false);
    a.AjouteChapitre("Composition", "Composition", ChapitreComposition(cip), SansDate, false);
    a.AjouteChapitre("Classes th\xE9rapeutiques", "Classes", ChapitreClasses(cip, Classement::Therapeutique), SansDate,
                     false);
    a.AjouteChapitre("Classes ATC", "Classes ATC", ChapitreClasses(cip, Classement::ATC), SansDate, false);
}

void AjouteReglementaire(Assemblage& a, const Contexte& contexte, const std::string& cip) {
    a.AjouteChapitre("Donn\xE9" "es technico-r\xE9glementaires", "Economique", DonneesTechnicoReglementaires(contexte, cip),
                     SansDate, false);
}

Entourage EntourageGrossesse(const std::string& cip, const std::string& texte) {
    Entourage e{SourceAFSSAPS(cip), {}};
    if (!texte.empty())
        e.avant += "<p class='textebleu'><b>Source RCP du " +
                   DateJourMoisAn(DateChapitre(cip, ChapitreGrossesse.codeDate).value_or("")) + "</b></p></font>\r\n";
    return e;
}

void AjouteComplete(Assemblage& a, const Contexte& contexte, const std::string& cip) {
    Records r;
    {
        TablesOuvertes tables{&TableTextesPlus(), &TableTextes()};
        r.complementaires = FicheChapitres(TextesAMM::Complementaires, cip);
        r.principaux = FicheChapitres(TextesAMM::Principaux, cip);
        tables.Ferme();
    }
    AjouteFaits(a, cip);
    for (const ChapitreStockeHtml& c : ChapitresDesTermes) AjouteStocke(a, r, c);
    AjouteStocke(a, r, ChapitreGrossesse, EntourageGrossesse(cip, TexteDe(r, ChapitreGrossesse)));
    for (const ChapitreStockeHtml& c : ChapitresComplementaires) {
        Entourage e;
        if (std::string_view(c.titre) == TitreIncompatibilite)
            e.dedans = "<p class='textebleu'><b>Donn\xE9" "es de l'AMM:</b></p></font><p class=\"Texte\"><font face=\"Arial\">";
        AjouteStocke(a, r, c, e);
    }
    // The texts of a pharmacy product, which has no texts of an authorisation.
    int texte = 0;
    for (const TextePharmacie& t : TextesPharmacie(cip))
        a.AjouteChapitre(t.Titre, "Pharmacie" + std::to_string(++texte), t.Texte, SansDate, true);
    a.AjouteChapitre("Fiche d'identit&eacute; interop&eacute;rable", "Int\xE9roperabilit\xE9", FicheInteroperable(cip),
                     SansDate, false);
    AjouteReglementaire(a, contexte, cip);
    a.AjouteChapitre("Donn\xE9" "es Particuli\xE8res", "Particulieres", DonneesParticulieres(cip), SansDate, false);
}

void AjouteCourte(Assemblage& a, const Contexte& contexte, const std::string& cip) {
    Records r;
    {
        TablesOuvertes tables{&TableTextes()};
        r.principaux = FicheChapitres(TextesAMM::Principaux, cip);
        tables.Ferme();
    }
    AjouteFaits(a, cip);
    for (const ChapitreStockeHtml& c : ChapitresDesTermes) AjouteStocke(a, r, c);
    std::vector<std::string> titres;
    for (LignePosologie& l : ListePosologies(contexte, cip, {}, nullptr)) titres.push_back(std::move(l.Titre));
    a.AjouteChapitre("Posologies", "Posologies", ListeHtml(titres), SansDate, false);
    AjouteReglementaire(a, contexte, cip);
}

// The products of a line by common name, in key order.
std::vector<std::string> ProduitsDeLaLigne(const std::string& code) {
    TablesOuvertes tables{&TableProduitsDCI()};
    std::vector<std::string> produits;
    Curseur cles(TableProduitsDCI());
    const std::string debut = CleTexte(code, LongueurCIP);
    for (auto p = cles.PremiereAvec(debut); p; p = cles.SuivanteAvec(debut))
        produits.emplace_back(Fiche(VueFicheA(TableProduitsDCI(), *p)).Texte(VDXYDCIP::CodeCIP));
    tables.Ferme();
    return produits;
}

void AjouteLigneDC(Assemblage& a, const std::string& code) {
    const std::vector<std::string> produits = ProduitsDeLaLigne(code);
    std::vector<std::string> libelles;
    for (const std::string& cip : produits) libelles.push_back(LibelleProduitInterne(cip).value_or(cip));
    a.AjouteAuCorps(Bout(DebutCadre,
                    "Les propri\xE9t\xE9s pharmacologiques ci-dessous ont \xE9t\xE9 \xE9labor\xE9" "es par synth\xE8se raisonn\xE9" "e \xE0 partir "
                    "de la liste des sp\xE9" "cialit\xE9s suivantes :",
                    FinCadre, "\r\n", ListeHtml(libelles)));
    AjouteFaits(a, code);
    a.AjouteChapitre("Excipients \xE0 effet notoire trouv\xE9s dans les pr\xE9sentations commercialis\xE9" "es",
                     "Excipients \xE0 effet notoire", ListeHtml(ExcipientsNotoires(produits)), SansDate, false);
}

std::string Nom(const std::string& cip, bool ligneDC) {
    if (ligneDC) return SiConnu([&] { return LibelleMedDC2(cip); }).value_or("");
    return LibelleProduitInterne(cip).value_or("");
}

}  // namespace

std::string PageMonographie(const Contexte& contexte, const std::string& cip, FormeMonographie forme,
                            std::string_view feuilleStyle) {
    const DansContexte dans(contexte);
    if (forme == FormeMonographie::Complete)
        if (const std::optional<std::string> document = MonographiePropre(cip))
            return "<link rel=\"stylesheet\" type=\"text/css\" href=\"monographie.css\">\r\n<STYLE>.Texte{font-family: "
                   "Arial, Helvetica, sans-serif; font-size: 12px}</STYLE>\r\n" +
                   *document;
    const bool ligneDC = EstMedDC(cip);
    const std::string nom = Nom(cip, ligneDC);
    std::string page = TetePage(nom, feuilleStyle);
    page += "<style type=\"text/css\">\r\n.Bordure {\r\n\tborder-top: 1px Aucune #0152A3;\r\n\tborder-right: 1px solid "
            "#0152A3;\r\n\tborder-bottom: 1px Aucune #0152A3;\r\n\tborder-left: 1px Aucune #0152A3;\r\n}\r\n</style>\r\n"
            "</HEAD>\r\n<BODY>\r\n<div align=\"center\">\r\n<a name=\"sommaire\"></a><p><font face=\"Arial\" "
            "color=\"#0152A3\"><strong>" +
            nom + "</strong></font></p>\r\n";
    if (!ligneDC) {
        const std::string supprime = SiConnu([&] { return DateSuppression(cip); }).value_or("");
        if (!supprime.empty())
            page += "<p><font face=\"Arial\" color=\"#ff0000\">( Produit supprim\xE9 depuis le " + supprime +
                    ")</font></p>\r\n";
    }
    Assemblage a(cip);
    if (ligneDC)
        AjouteLigneDC(a, cip);
    else if (forme == FormeMonographie::Complete)
        AjouteComplete(a, contexte, cip);
    else
        AjouteCourte(a, contexte, cip);
    page += Bout("<p>", a.Sommaire(), "</p>\r\n</div>\r\n", a.Corps());
    page += "</p><p>&nbsp; </p></div>\r\n</BODY></HTML>";
    return EncodeHtml(page, false);
}

std::string PageInfo(const Contexte& contexte, const std::string& cip, std::string_view feuilleStyle) {
    const DansContexte dans(contexte);
    const std::string nom = LibelleProduitInterne(cip).value_or("");
    const auto bit = [&](const Consultation& c) { return SiConnu([&] { return ValeurConsultee(c, cip); }).value_or(0); };
    const int32_t mediel = SiConnu([&] { return MedielDuProduit(contexte, cip); }).value_or(0);
    const std::pair<const char*, bool> colonnes[] = {
        {"Referent", bit(consultations::Referent)},
        {"g\xE9n\xE9rique", bit(consultations::Generique)},
        {"Dopant", bit(consultations::Dopant)},
        {"Hospitalier", bit(consultations::Hospitalier)},
        {"Canicule", Canicule(contexte, cip).concerne},
        {"Recommandations", false},
        {"Mediel", mediel != 0},
    };
    std::string titres, valeurs;
    for (const auto& [titre, oui] : colonnes) {
        titres += Bout("<td class=\"Texte\"><font face=\"Arial\"><b>", titre, "</b></font></td>");
        valeurs += Bout("<td class=\"Texte\"><font face=\"Arial\">", oui ? "OUI" : "NON", "</font></td>");
    }
    std::string page = TetePage(nom, feuilleStyle) + "</HEAD>\r\n<BODY>\r\n";
    page += "<table border=\"1\" cellspacing=\"0\" cellpadding=\"3\">\r\n<tr>" + titres + "</tr>\r\n<tr>" + valeurs +
            "</tr>\r\n</table>\r\n</BODY></HTML>";
    return EncodeHtml(page, false);
}

void EcritPage(const char* fichier, std::string_view page) { EcritFichier(fichier, page); }

bool EcritFichier(const char* fichier, std::string_view octets) {
    FILE* f = std::fopen(fichier, "w+b");
    if (!f) return false;
    const bool ecrit = std::fwrite(octets.data(), 1, octets.size(), f) == octets.size();
    return std::fclose(f) == 0 && ecrit;
}

}  // namespace vdx
