#include "documents/rapports.h"

#include <string>

#include "documents/chapitre.h"
#include "documents/html.h"
#include "documents/textes_amm.h"
#include "session/messages.h"

namespace vdx {

namespace {

// The link to the host's stylesheet, none without a path.
std::string LienFeuille(std::string_view feuilleStyle) {
    if (feuilleStyle.empty()) return {};
    return Bout("<link rel=\"stylesheet\" href=\"", AttributHtml(feuilleStyle), "\" type=\"text/css\">\r\n");
}

// The head of a page, its title line opened; the title, the list and the
// detail are filled by the renderer, then joined by Page.
class Squelette {
public:
    explicit Squelette(std::string_view feuilleStyle, std::string_view tete = {}) {
        page_ = "<HTML>\r\n<HEAD>\r\n";
        page_ += LienFeuille(feuilleStyle);
        page_ += tete;
        page_ += "</HEAD>\r\n<BODY>\r\n<div align=\"center\"><p><big><font face=\"Arial\" color=\"#000000\"><strong>"
                 "<a name=\"sommaire\"></a></strong></font></big></p>\r\n<p align=\"left\"><big><font face=\"Arial\" "
                 "color=\"#000000\"><strong><font color=\"#0152A3\" size=\"3\">";
    }

    std::string titre, liste, detail;

    std::string Page() {
        page_ += titre;
        page_ += "</font><br></strong></font></big></p></div>\r\n<div><blockquote><p class=\"TexteLien\"><TABLE "
                 "Border=\"0\">\r\n";
        page_ += liste;
        page_ += "</TABLE></p></blockquote></div>\r\n";
        page_ += detail;
        page_ += "</BODY></HTML>";
        return EncodeHtml(page_, false);
    }

private:
    std::string page_;
};

constexpr char GraviteInitiale[] = "00000000";
constexpr char FinDetail[] = "</td></tr></table></div><p></p>\r\n";

// The words of a count: "N mot" and, above one, the plural's ending.
std::string Compte(size_t n, std::string_view mot, std::string_view pluriel = "s ") {
    return Bout(std::to_string(n), mot, n > 1 ? pluriel : "");
}

std::string TitreCompte(size_t n, std::string_view mot) {
    return Bout("<font color='000000' size=+1>", Compte(n, mot), "</font>");
}

// A heading row of the list, in a colour (none for an empty one).
std::string EnTete(std::string_view couleur, std::string_view texte) {
    return Bout("<TR><TD  colspan=\"2\">", couleur, "<STRONG>", texte, "</STRONG></font></TD></TR>\r\n");
}

// An entry of the list: its link to the detail block `ancre`.
std::string Entree(std::string_view ancre, std::string_view libelle) {
    return Bout("<TR ><TD width=\"20%\" colspan=\"2\"></TD></tr><TD><blockquote><a href=\"#", ancre,
                "\" class=\"TexteLien\"><STRONG><i>", libelle, "</i></STRONG></a></blockquote></TD></TR>\r\n");
}

// The opening of a detail block: its bordered table and its title bar
// with the anchor and the return link.
std::string DebutDetail(std::string_view ancre, std::string_view titre) {
    return Bout("<div><table width=\"100%\" border=\"1\" bordercolor=\"#0152A3\" cellspacing=\"0\" cellpadding=\"3\"><tr>"
                "<td><div><table width=\"100%\" border=\"0\" cellspacing=\"0\" cellpadding=\"3\" bgcolor=\"#0152A3\"><tr>"
                "<td><a name=\"",
                ancre, "\" class=\"Titreparagraphe\">", titre,
                "</a></td><td><div align=\"right\"><a href=\"#Sommaire\" class=\"Texteretour\">retour</a>",
                "</div></td></tr></table></div><hr>\r\n");
}

// A stored text in a page: its lines as "<BR>".
std::string LignesHtml(std::string_view texte) { return EncodeHtml(texte, true); }

// The closing table of a pair: each product (one for a product's own
// message) with its chapter on interactions.
std::string TablePaire(const FicheInteraction2& r, const ChapitreProduit& chapitre) {
    std::string t = "<tr><td valign=\"top\"><table border=\"1\" cellpadding=\"20\"><tr>";
    const auto colonne = [&](const std::string& cip, const std::string& libelle) {
        t += Bout("<td valign=\"top\"><p class=\"Texte\"><STRONG>", libelle, "</STRONG><BR>", LignesHtml(chapitre(cip)),
                  "</p></td>");
    };
    colonne(r.CIP1, r.Libelle1);
    if (r.CIP2 != r.CIP1) colonne(r.CIP2, r.Libelle2);
    return t + "</tr></table></td></tr>\r\n";
}

}  // namespace

std::string ChapitreIAM(const std::string& cip) {
    std::string texte = ChapitreStocke(TextesAMM::Complementaires, cip, 1).Texte;
    return texte.empty() ? "Information indisponible" : texte;
}

std::string_view CouleurGravite(int32_t niveau) {
    switch (niveau) {
        case 1: return "<font color=\"#ffb000\">";
        case 2: return "<font color=\"#ff7000\">";
        case 3:
        case 4: return "<font color=\"#ff0000\">";
        default: return "";
    }
}

std::string RapportInteractions(const Controle<FicheInteraction2>& controle, std::string_view feuilleStyle,
                                const ChapitreProduit& chapitre) {
    Squelette s(feuilleStyle);
    const std::vector<FicheInteraction2>& lignes = controle.lignes;
    const size_t n = lignes.size();
    if (!controle.Echoue())
        s.titre = n == 0 ? "Il n'y a pas d'interactions d\xE9tect\xE9" "es." : TitreCompte(n, " Interaction");
    std::string gravite = GraviteInitiale, messages;
    const std::string total = std::to_string(n);
    for (size_t i = 0; i < n; ++i) {
        const FicheInteraction2& r = lignes[i];
        const std::string ancre = "Interaction" + std::to_string(i + 1);
        const bool exterieure = r.CIP2 == SansSecondProduit;
        const bool message = r.CIP1 == r.CIP2;
        if (message) {
            messages += Entree(ancre, r.Libelle1);
        } else {
            if (r.LibelleGravite != gravite) s.liste += EnTete(CouleurGravite(r.Niveau), r.LibelleGravite);
            s.liste += Entree(ancre, Bout(r.Libelle1, " et ", r.Libelle2));
        }
        gravite = r.LibelleGravite;

        std::string& d = s.detail;
        d += DebutDetail(ancre, Bout("Interaction ", std::to_string(i + 1), "/", total));
        if (message)
            d += Bout("<blockquote><p class=\"Texte\">Entre <STRONG>", r.Classe1, "</STRONG> et <STRONG>", r.Classe2,
                      "</STRONG> dans <STRONG>", r.Libelle1, "</STRONG><BR>");
        else
            d += Bout("<blockquote><p class=\"Texte\">Entre <STRONG>", r.Libelle1, "</STRONG>", " (", r.Classe1,
                      ") et <STRONG>", r.Libelle2, "</STRONG>", " (", r.Classe2, ")<BR>");
        d += Bout(CouleurGravite(r.Niveau), "<STRONG>", r.LibelleGravite, "</STRONG></font><BR><BR>", r.TexteType,
                  "<BR>");
        if (!r.CodeCondition.empty()) d += Bout(r.LibelleCondition, "<BR>");
        d += Bout(LignesHtml(r.Texte2), "<BR>");
        if (!r.Texte4.empty()) d += Bout("<BR>Conduite \xE0 tenir :", "<BR>", LignesHtml(r.Texte4), "<BR>");
        d += "</blockquote></p></td></tr>\r\n";
        // The pair closes where the next row is of another pair, and always
        // after the last.
        const bool memePaire = i + 1 < n && lignes[i + 1].CIP1 == r.CIP1 && lignes[i + 1].CIP2 == r.CIP2;
        if (!memePaire && !exterieure) d += TablePaire(r, chapitre);
        d += "</table></div><p></p>\r\n";
    }
    if (!messages.empty()) s.liste += EnTete("<font>", "Messages Produits") + messages;
    return s.Page();
}

std::string RapportContreIndications(const Controle<AlerteCI>& controle, int membre, const PatientRapport& patient,
                                     std::string_view titre, std::string_view feuilleStyle) {
    Squelette s(feuilleStyle, membre == 2 ? Bout("<TITLE>", titre, "</TITLE>\r\n") : std::string());
    std::vector<const AlerteCI*> absolues, relatives, precautions;
    for (const AlerteCI& a : controle.lignes)
        (a.NiveauAlerte >= NiveauPrecaution                      ? precautions
         : a.NiveauAlerte >= 2 * NiveauRapportLien ? relatives
                                                                 : absolues)
            .push_back(&a);
    const size_t contre = absolues.size() + relatives.size(), prudence = precautions.size();
    if (!controle.Echoue()) {
        if (contre + prudence == 0) {
            s.titre = "Il n'y a pas de Contre indication ou de pr\xE9" "cautions d'emploi d\xE9tect\xE9" "es.";
        } else {
            std::string t;
            if (contre) t += Compte(contre, " Contre-Indication", "s");
            if (contre && prudence) t += " et ";
            if (prudence) t += Bout(Compte(prudence, " pr\xE9" "caution", "s"), " d'emploi");
            t += contre + prudence > 1 ? " ont \xE9t\xE9 d\xE9tect\xE9" "es" : " a \xE9t\xE9 d\xE9tect\xE9" "e";
            s.titre = Bout("<font color='000000' size=+1>", t, " :</font>");
        }
    }
    // A row: the product, the patient's cause, the term.
    const auto rangee = [&](const AlerteCI& a) {
        std::string cause;
        if (!a.CodePatient.empty())
            cause = a.CodePatient + " : ";
        else if (a.NiveauAlerte % NiveauRapportLien == EcartGrossesse)
            cause = patient.Grossesse != 0 ? "Grossesse " : "Allaitement ";
        std::string terme = a.LibelleTerme;
        if (membre == 2) terme += Bout(" (", a.CodeTerme, ")");
        return Bout("<TR><TD width=\"20%\"></TD><TD><blockquote><STRONG>", a.LibelleProduit, "</STRONG> : ", cause,
                    "<i>", terme, "</i></blockquote></TD></TR>\r\n");
    };
    const auto groupe = [&](std::string_view couleur, std::string_view entete,
                            const std::vector<const AlerteCI*>& alertes) {
        if (alertes.empty()) return;
        s.liste += EnTete(couleur, entete);
        for (const AlerteCI* a : alertes) s.liste += rangee(*a);
    };
    if (contre) s.liste += EnTete("<font color=\"#ff0000\">", "Contre indications");
    groupe("<font color=\"#ff0000\">", "Contre Indication(s) absolue(s) :", absolues);
    groupe("<font color=\"#ffa500\">", "Contre Indication(s) relative(s) :", relatives);
    if (prudence) s.liste += EnTete("<font color=\"#000000\">", "Pr\xE9" "cautions d'emploi");
    groupe("<font color=\"#000000\">", "Pr\xE9" "caution(s) d'emploi :", precautions);
    return s.Page();
}

std::string RapportAllergies(const Controle<FicheAllergie>& allergies, const Controle<FicheAllergie>* notoires,
                             const std::function<bool(const std::string&)>& ligneDC, std::string_view feuilleStyle) {
    Squelette s(feuilleStyle);
    const size_t n = allergies.lignes.size();
    if (!allergies.Echoue()) s.titre = n == 0 ? "Il n'y a pas d'allergies d\xE9tect\xE9" "es." : TitreCompte(n, " Allergie");
    for (size_t i = 0; i < n; ++i) {
        const FicheAllergie& a = allergies.lignes[i];
        const std::string ancre = "Allergie" + std::to_string(i + 1);
        s.liste += Entree(ancre, a.LibelleProduit);
        s.detail += DebutDetail(ancre, "Allergie(s) avec " + a.LibelleProduit);
        s.detail += Bout("<blockquote><p class=\"Texte\"><font color=\"", a.TypeAlerte == 2 ? "#ff0000" : "#000000",
                         "\"><STRONG>", LignesHtml(a.TexteCause), "</STRONG></font><BR>");
        if (ligneDC(a.CodeProduit))
            s.detail += " Une ou plusieurs des sp\xE9" "cialit\xE9s susceptibles d'\xEAtre d\xE9livr\xE9" "es par le pharmacien \xE0 la "
                        "lecture de cette prescription en d\xE9nomination commune contiennent ce composant.<BR>";
        s.detail += "</p></blockquote>";
        s.detail += FinDetail;
    }
    if (notoires && !notoires->Echoue() && !notoires->lignes.empty()) {
        const size_t m = notoires->lignes.size();
        s.liste += EnTete("<font color=\"#000000\">",
                          Bout(std::to_string(m), " excipient",
                               m > 1 ? "s \xE0 effet notoire ont \xE9t\xE9 d\xE9tect\xE9s" : " \xE0 effet notoire a \xE9t\xE9 d\xE9tect\xE9", " :"));
        for (size_t i = 0; i < m; ++i) {
            const FicheAllergie& e = notoires->lignes[i];
            const std::string ancre = "Notoire" + std::to_string(i + 1);
            s.liste += Entree(ancre, e.LibelleProduit);
            s.detail += DebutDetail(ancre, "Excipient effet notoire avec " + e.LibelleProduit);
            s.detail += Bout("<blockquote><p class=\"Texte\"><font color=\"#ff0000\"><STRONG>", LignesHtml(e.TexteCause),
                             "</STRONG></font><BR></p></blockquote>", FinDetail);
        }
    }
    return s.Page();
}

std::string RapportSurdosage(const Controle<FicheSurdosage>& controle, std::string_view feuilleStyle) {
    Squelette s(feuilleStyle, "<style type='text/css'><!-- .bordure {\tborder: 2px solid #0152A3; } --></style>\r\n");
    const size_t n = controle.lignes.size();
    if (!controle.Echoue())
        s.titre = n == 0 ? "Il n'y a pas de risque de surdosage d\xE9tect\xE9."
                         : Bout("<font color=\"#000000\">", std::to_string(n), " Risque de surdosage</font>");
    for (size_t i = 0; i < n; ++i) {
        const FicheSurdosage& r = controle.lignes[i];
        const std::string rang = std::to_string(i + 1);
        const bool classe = r.TypeRedondance == RedondanceClasse;
        s.liste += Entree("Surdosage" + rang, Bout(r.Libelle1, " ET ", r.Libelle2));
        s.detail += DebutDetail("Surdosage" + rang,
                                Bout(classe ? "Risque de redondance th\xE9rapeutique " : "Risque de surdosage ", rang));
        s.detail += Bout("<blockquote><p class=\"Texte\"><div class=\"bordure\">( <STRONG>", r.Libelle1,
                         "</STRONG> ET <STRONG>", r.Libelle2,
                         "</STRONG> ) <BR> appartiennent &agrave; la m&ecirc;me classe chimique :&nbsp <b>",
                         classe ? r.LibelleClasseCommune : r.LibelleCommune, "</b></div></p></blockquote>", FinDetail);
    }
    return s.Page();
}

std::string RapportRMO(const Controle<RMOProduit>& controle, std::string_view feuilleStyle) {
    Squelette s(feuilleStyle);
    const size_t n = controle.lignes.size();
    if (!controle.Echoue())
        s.titre = n == 0 ? "Il n'y a pas de RMO d\xE9tect\xE9" "es."
                         : Bout("<font color='000000' size=+1>", std::to_string(n), " RMO</font>");
    for (size_t i = 0; i < n; ++i) {
        const RMOProduit& r = controle.lignes[i];
        const std::string rang = std::to_string(i + 1);
        std::string avec = Bout("Avec <STRONG>", r.LibelleProduit, "</STRONG>");
        if (r.rmo.Code != r.CodeCIP) avec += Bout(" et <STRONG>", r.rmo.Code, "</STRONG>");
        s.liste += Entree("RMO" + rang, Bout(r.LibelleProduit, " : ", r.rmo.Titre));
        s.detail += DebutDetail("RMO" + rang, "RMO " + rang);
        s.detail += Bout("<blockquote><p class=\"Texte\">", avec, "<BR><STRONG>", r.rmo.Titre, "</STRONG><BR>",
                         LignesHtml(r.rmo.Texte), "<BR>", r.rmo.Source, r.rmo.Date.empty() ? "" : ", ", r.rmo.Date,
                         "</p></blockquote>", FinDetail);
    }
    return s.Page();
}

namespace {

// A section bar of the incompatibility pages.
std::string BarreIPC(std::string_view ancre, std::string_view titre) {
    return Bout("<table width=\"100%\" border=\"0\" cellspacing=\"0\" cellpadding=\"3\"><tr><td bgcolor=\"#0051A5\">"
                "<a name=\"", ancre, "\"></a><font color=\"#FFFFFF\"><b>", titre,
                "</b></font></td><td bgcolor=\"#0051A5\" align=\"right\"><a href=\"#sommaire\"><font color=\"#FFFFFF\">"
                "retour</font></a></td></tr></table>\r\n");
}

// The components of a row: each side's label, "Tous Composants Confondus"
// when both stand for their whole products.
std::string ComposantsIPC(const LigneIPC& r) {
    if (r.CodeComposant1 == r.CodeCIP1 && r.CodeComposant2 == r.CodeCIP2) return messages::TousComposants;
    return Bout(r.LibelleComposant1, " / ", r.LibelleComposant2);
}

}  // namespace

std::string RapportIPC(const Controle<LigneIPC>& controle, std::string_view feuilleStyle) {
    std::string page = "<html>\r\n<head>\r\n<meta name=\"generator\" content=\"VDX32\">\r\n";
    page += LienFeuille(feuilleStyle);
    page += "<title>Incompatibilit\xE9s Physico-Chimiques</title>\r\n</head>\r\n<body>\r\n<a name=\"sommaire\"></a><p>"
            "<strong><font color='#000000' size=+1>";
    const size_t n = controle.lignes.size();
    if (!controle.Echoue()) page += Bout(Compte(n, " Incompatibilit\xE9"), " physico-chimique");
    page += "</font></strong></p>\r\n";
    if (n > 0) {
        page += "<ul>\r\n";
        for (const LigneIPC& r : controle.lignes)
            page += Bout("<li><a href=\"#IPC", std::to_string(r.Rang), "\">", r.Libelle1, " et ", r.Libelle2, "</a></li>\r\n");
        page += "</ul>\r\n";
    }
    for (const LigneIPC& r : controle.lignes) {
        const std::string rang = std::to_string(r.Rang);
        page += BarreIPC("IPC" + rang, Bout("Incompatibilit\xE9 ", rang, "/", std::to_string(n)));
        page += Bout("<p>Entre <strong>", r.Libelle1, "</strong> (", r.LibelleComposant1, ") et <strong>", r.Libelle2,
                     "</strong> (", r.LibelleComposant2, ")<br>\r\n<strong>", r.LibelleNiveau, "</strong> : ",
                     r.LibelleCondition, "<br>\r\n", LignesHtml(r.Texte), "<br>\r\nSource ", r.Source, "</p>\r\n");
    }
    page += "</body>\r\n</html>";
    return EncodeHtml(page, false);
}

std::string FicheIPC(const std::vector<LigneIPC>& lignes, std::string_view feuilleStyle) {
    std::string page = "<html>\r\n<head>\r\n";
    page += LienFeuille(feuilleStyle);
    page += "<title>Incompatibilit&eacute;s physico-chimiques potentielles</title>\r\n</head>\r\n<body>\r\n";
    const auto rangee = [](std::string_view nom, std::string_view valeur) {
        return Bout("<tr><td width=\"20%\" bgcolor=\"#0051A5\"><font color=\"#FFFFFF\"><b>", nom,
                    "</b></font></td><td width=\"80%\">", valeur, "</td></tr>\r\n");
    };
    const auto table = [](std::string_view rangees) {
        return Bout("<table width=\"100%\" border=\"1\" cellspacing=\"0\" cellpadding=\"3\">\r\n", rangees, "</table>\r\n");
    };
    std::string sources;
    if (lignes.empty())
        page += table(rangee("Composants", messages::TousComposants) + rangee("Voie", messages::VoieInconnue) +
                      rangee("Incompatibilit\xE9", InformationIndisponibleCourte));
    for (const LigneIPC& r : lignes) {
        page += table(rangee("Composants", ComposantsIPC(r)) + rangee("Voie", Bout(r.Voie1, " / ", r.Voie2)) +
                      rangee("Incompatibilit\xE9", Bout(r.LibelleNiveau, " (", r.LibelleCondition, ") : ", LignesHtml(r.Texte))));
        if (sources.find(r.Source) == std::string::npos) sources += (sources.empty() ? "" : ", ") + r.Source;
    }
    page += "<p><b>Autres sources bibliographiques</b></p>\r\n<p>";
    page += sources.empty() ? std::string(InformationIndisponibleCourte) : sources;
    page += "</p>\r\n</body>\r\n</html>";
    return EncodeHtml(page, false);
}

}  // namespace vdx
