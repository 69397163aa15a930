#include "documents/fiche_produit.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <set>
#include <vector>

#include "checks/avis.h"
#include "checks/grossesse.h"
#include "documents/html.h"
#include "documents/textes_amm.h"
#include "posology/quantite.h"
#include "products/codes.h"
#include "products/composition.h"
#include "products/composition_liens.h"
#include "products/consultations.h"
#include "products/equivalents.h"
#include "products/fiches.h"
#include "products/produits.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/connexion.h"
#include "session/messages.h"
#include "session/tables.h"
#include "session/texte.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

#ifndef VDX_LIEN_ALD
#define VDX_LIEN_ALD "https://www.ameli.fr/assure/droits-demarches/maladie-accident-hospitalisation/affection-longue-duree-ald"
#endif

namespace vdx {

namespace {

VDX_TABLE(TableClasses, "VDXCLA")
VDX_TABLE(TableClassesProduits, "VDXCLAP")
VDX_TABLE(TableATC, "VDXYATC")
VDX_TABLE(TableATCProduits, "VDXYATCP")
VDX_TABLE(TableAffectionsProduits, "VDXYALDC")
VDX_TABLE(TableAffections, "VDXYALD")

constexpr char Oui[] = "OUI", Non[] = "NON";

// A row of two cells, the name in bold.
std::string Rangee(std::string_view nom, std::string_view valeur) {
    std::string r = "<tr><td width=\"44%\" class=\"Texte\"><font face=\"Arial\"><b>";
    r += nom;
    r += "</b></font></td><td width=\"56%\" class=\"Texte\"><font face=\"Arial\">";
    r += valeur;
    r += "</font></td></tr>\r\n";
    return r;
}
// A row on both columns.
std::string RangeeLarge(std::string_view texte) {
    return "<tr><td colspan=\"2\" class=\"Texte\"><font face=\"Arial\">" + std::string(texte) + "</font></td></tr>\r\n";
}
void AjouteSiConnu(std::string& t, std::string_view nom, std::string_view valeur) {
    if (!valeur.empty()) t += Rangee(nom, valeur);
}
std::string Tableau(std::string_view rangees) {
    if (rangees.empty()) return {};
    return "<table width=\"100%\" border=\"0\" cellspacing=\"1\" cellpadding=\"3\">\r\n" + std::string(rangees) +
           "</table>\r\n";
}

// A rate with a decimal comma, as the page's amounts.
std::string Nombre(float valeur) {
    std::string texte;
    TexteNombre(valeur, texte, false);
    std::ranges::replace(texte, '.', ',');
    return texte.empty() ? "0" : texte;
}

// The price fields of VDXPRO: seven digits of cents; anything else none.
std::optional<int64_t> Centimes(std::string_view texte) {
    const std::string prix = PrixLu(texte);
    if (prix.empty()) return std::nullopt;
    return std::stoll(prix);
}

std::optional<std::string> CodeCIP13(const std::string& cip) {
    const std::optional<std::string> code = CorrespondanceCIP(SensCIP::Vers13, cip);
    if (!code || code->empty()) return std::nullopt;
    return code;
}

std::string Joint(const std::vector<std::string>& textes, std::string_view separateur) {
    std::string t;
    for (const std::string& s : textes) {
        if (s.empty()) continue;
        if (!t.empty()) t += separateur;
        t += s;
    }
    return t;
}

// The labels of the restricted prescription of a product and of its list.
std::string ConditionDelivrance(const std::optional<FicheStatut>& statut, const std::optional<FicheEconomique>& eco) {
    std::vector<std::string> textes;
    if (statut)
        textes = {statut->LibellePrescription1, statut->LibellePrescription2, statut->LibellePrescription3};
    if (eco) textes.push_back(eco->LibelleTableau);
    return Joint(textes, " - ");
}

// The codes of a class table that make the path of `code`: the codes that
// begin it, shortest first, then the code.
std::vector<std::pair<std::string, std::string>> CheminDeClasse(const Table& classes, std::string_view code) {
    std::vector<std::pair<std::string, std::string>> chemin;
    for (size_t n = 1; n <= code.size(); ++n) {
        const std::string prefixe(code.substr(0, n));
        if (const auto p = Curseur(classes).Egale(prefixe))
            chemin.emplace_back(prefixe, Fiche(VueFicheA(classes, *p)).Texte(ModeleClasse::Libelle));
    }
    return chemin;
}

std::string SansBlancs(std::string_view texte) {
    const size_t fin = texte.find_last_not_of(' ');
    return std::string(fin == std::string_view::npos ? std::string_view() : texte.substr(0, fin + 1));
}

// The pregnancy box's colour by level: green, yellow, orange, red.
std::string_view CouleurGrossesse(int32_t niveau) {
    if (niveau <= 1) return "#A7F7AC";
    if (niveau == 2) return "yellow";
    if (niveau == 3) return "orange";
    return "red";
}

}  // namespace

std::string Montant(int64_t centimes) {
    const uint64_t valeur = centimes < 0 ? 0 - static_cast<uint64_t>(centimes) : static_cast<uint64_t>(centimes);
    const uint64_t reste = valeur % 100;
    return (centimes < 0 ? "-" : "") + std::to_string(valeur / 100) + (reste < 10 ? ",0" : ",") + std::to_string(reste);
}

int64_t PrixParUCD(int64_t prixCentimes, int32_t nombreUCD) {
    return (2 * prixCentimes + nombreUCD) / (2 * static_cast<int64_t>(nombreUCD));
}

std::string DateChiffresJourMoisAn(std::string_view date) {
    if (date.size() != 8) return std::string(date);
    return Bout(date.substr(6, 2), "/", date.substr(4, 2), "/", date.substr(0, 4));
}

std::string DateJourMoisAn(std::string_view date) {
    // AAAA s MM s JJ
    if (date.size() != 10) return std::string(date);
    std::string t(date.substr(8, 2));
    t += date[7];
    t += date.substr(5, 2);
    t += date[4];
    t += date.substr(0, 4);
    return t;
}

std::string TexteMedielMonographie(int32_t valeur) {
    constexpr int32_t connus = static_cast<int32_t>(std::size(messages::TextesMediel)) - 1;
    if (valeur >= 1 && valeur <= connus) return Bout(messages::TextesMediel[valeur - 1], messages::SourceMediel);
    if (valeur == connus + 1) return Bout(messages::MedielDixieme, messages::SourceMediel);
    return messages::TextesMediel[connus];
}

std::string ChapitreFormePresentation(const std::string& cip) {
    TablesOuvertes tables{&TableIdentification()};
    const std::optional<std::string> identification = FicheDuCode(TableIdentification(), cip);
    tables.Ferme();
    if (!identification) return {};
    const Fiche id(*identification);
    const ConditionnementProduit produit = ConditionnementDe(id);
    std::vector<std::string> contenances;
    for (const UniteProduit& unite : {produit.Premiere, produit.Seconde})
        if (unite.MesureLeContenu()) contenances.push_back(ContenanceDe(produit, unite).Texte);
    std::string contenance = Joint(contenances, " ou ");
    if (contenance.empty() && produit.CodePresentation != 0) contenance = TexteContenance(*identification);
    std::string rangees;
    AjouteSiConnu(rangees, "Forme", LibelleForme(SansBlancs(id.Texte(VDXIDPRO::CodeForme))));
    AjouteSiConnu(rangees, "Dosage", id.Texte(VDXIDPRO::Dosage));
    AjouteSiConnu(rangees, "Contenance", contenance);
    return Tableau(rangees);
}

std::string ChapitreComposition(const std::string& cip) {
    const Composition composition = CompositionProduit(cip);
    std::string t;
    if (!composition.LibelleExprime.empty())
        t += "<p class=\"Texte\"><font face=\"Arial\">Exprim\xE9 par : " + composition.LibelleExprime + "</font></p>\r\n";
    if (!composition.composants.empty()) {
        t += "<table width=\"100%\" border=\"0\" cellspacing=\"1\" cellpadding=\"3\">\r\n"
             "<tr bgcolor=\"#B7D9FF\"><td class=\"Texte\"><font face=\"Arial\"><b>Principes Actifs</b></font></td>"
             "<td class=\"Texte\"><font face=\"Arial\"><b>Quantit\xE9</b></font></td></tr>\r\n";
        for (const Composant& c : composition.composants) {
            const std::string quantite =
                !c.QuantiteTexte.empty() || c.SansQuantite ? c.QuantiteTexte : Nombre(c.Quantite) + " " + c.LibelleUnite;
            t += "<tr bgcolor=\"#EAF4FF\"><td class=\"Texte\"><font face=\"Arial\">" + c.Libelle +
                 "</font></td><td class=\"Texte\"><font face=\"Arial\">" + quantite + "</font></td></tr>\r\n";
        }
        t += "</table>\r\n";
    }
    std::string excipients;
    for (ExcipientProduit& e : ExcipientsDuProduit(cip)) {
        if (e.Notoire()) e.Libelle += " <STRONG>(excipient \xE0 effet notoire)</STRONG>";
        excipients += "<tr bgcolor=\"#EAF4FF\"><td class=\"Texte\"><font face=\"Arial\">" + e.Libelle + "</font></td></tr>\r\n";
    }
    if (!excipients.empty())
        t += "<table width=\"100%\" border=\"0\" cellspacing=\"1\" cellpadding=\"3\">\r\n"
             "<tr bgcolor=\"#B7D9FF\"><td class=\"Texte\"><font face=\"Arial\"><b>Excipients</b></font></td></tr>\r\n" +
             excipients + "</table>\r\n";
    return t;
}

std::string ChapitreClasses(const std::string& cip, Classement classement) {
    const bool atc = classement == Classement::ATC;
    const Table& classes = atc ? TableATC() : TableClasses();
    TablesOuvertes tables{&classes};
    std::string t;
    for (const std::string& code : CodesClasses(atc ? TableATCProduits() : TableClassesProduits(), cip)) {
        std::string rangees;
        for (const auto& [niveau, libelle] : CheminDeClasse(classes, code)) rangees += Rangee(niveau, libelle);
        t += Tableau(rangees);
    }
    tables.Ferme();
    return t;
}

std::vector<std::string> ExcipientsNotoires(const std::vector<std::string>& produits) {
    std::vector<std::string> libelles;
    for (const std::string& cip : produits)
        for (ExcipientProduit& e : ExcipientsDuProduit(cip))
            if (e.Notoire() && std::ranges::find(libelles, e.Libelle) == libelles.end()) libelles.push_back(std::move(e.Libelle));
    return libelles;
}

std::vector<RangeeIdentite> IdentiteInteroperable(const std::string& cip) {
    const std::string ucd = SiConnu([&] { return TexteConsulte(consultations::UCD, cip); }).value_or("");
    const std::string cis = SiConnu([&] { return TexteConsulte(consultations::CIS, cip); }).value_or("");
    return {{"Libell&eacute; sp&eacute;cialit&eacute;*", cis.empty() ? "" : LibelleCIS(cis).value_or("")},
            {"Code Identifiant Sp&eacute;cialit&eacute;*", cis},
            {"Libell&eacute; pr&eacute;sentation*", LibelleProduitInterne(cip).value_or("")},
            {"Code CIP* ", CodeCIP13(cip).value_or(cip)},
            {"Code UCD", ucd}};
}

std::string FicheInteroperable(const std::string& cip) {
    const std::vector<RangeeIdentite> identite = IdentiteInteroperable(cip);
    if (identite[RangUCD].valeur.empty() || identite[RangCIS].valeur.empty()) return {};
    std::string rangees;
    for (const RangeeIdentite& r : identite) rangees += Rangee(r.nom, r.valeur);
    return Tableau(rangees);
}

std::string DonneesTechnicoReglementaires(const Contexte& contexte, const std::string& cip) {
    TablesOuvertes tables{&TableProduits(), &TableComplements()};
    const auto produit = FicheDuCode(TableProduits(), cip);
    const auto complement = FicheDuCode(TableComplements(), cip);
    tables.Ferme();
    if (!produit && !complement) return {};
    const auto statut = SiConnu([&] { return StatutDe(cip); });
    const auto eco = SiConnu([&] { return EconomieDe(cip); });
    const std::string cip13 = CodeCIP13(cip).value_or("");
    std::string t;
    if (cip.starts_with('3') || cip.starts_with('5')) {
        AjouteSiConnu(t, "N\xB0 AMM", cip13);
        t += Rangee("Code", cip);
    } else {
        t += Rangee("Code ACL", cip);
        AjouteSiConnu(t, "Code EAN", complement ? Fiche(*complement).Texte(VDXPROA::GenCode) : "");
    }
    if (complement) AjouteSiConnu(t, "Code UCD", Fiche(*complement).Texte(VDXPROA::CodeUCD));
    AjouteSiConnu(t, "Code CIS", SiConnu([&] { return TexteConsulte(consultations::CIS, cip); }).value_or(""));
    const int32_t drapeaux = produit ? Fiche(*produit).Entier(VDXPRO::Drapeaux) : 0;
    if (drapeaux & VDXPRO::Generique) t += Rangee("G\xE9n\xE9rique", Oui);
    if (drapeaux & VDXPRO::Referent) t += Rangee("R\xE9" "f\xE9rent", Oui);
    if (drapeaux & VDXPRO::Dopant) t += Rangee("Dopant", Oui);
    if (complement) t += Rangee("M\xE9" "dicament T2A", Fiche(*complement).Entier(VDXPROA::T2A) ? Oui : Non);
    AjouteSiConnu(t, "Condition de d\xE9livrance", ConditionDelivrance(statut, eco));
    if (eco) {
        t += Rangee("Laboratoire", eco->Laboratoire);
        const int64_t prix = Centimes(eco->Prix).value_or(0);
        t += Rangee("Prix de vente TTC - euros", prix ? Montant(prix) : "Prix Libre");
        t += Rangee("Taux de TVA", Nombre(eco->TauxTVA) + " % ");
        t += Rangee("Taux de remboursement SS",
                    eco->TauxRemboursement ? Nombre(eco->TauxRemboursement) + " % " : "Non rembours\xE9");
        // No field holds a TFR: the base of a reimbursed product is its price.
        if (eco->TauxRemboursement && prix) t += Rangee("Base de remboursement - euros", Montant(prix));
        const int32_t nombreUCD = complement ? Fiche(*complement).Entier(VDXPROA::NombreUCD) : 0;
        if (nombreUCD > 0) {
            t += Rangee("Nombre d'UCD", std::to_string(nombreUCD));
            t += Rangee(" Prix par UCD - Euros:", Montant(PrixParUCD(prix, nombreUCD)));
        }
    }
    if (statut) {
        t += Rangee("M\xE9" "dicament d'exception", statut->Statut1 ? Oui : Non);
        t += Rangee("Agr\xE9ment Collectivit\xE9s", statut->Statut2 ? Oui : Non);
        AjouteSiConnu(t, "Statut", Joint({statut->LibelleStatut, statut->TexteStatut1}, " - "));
    }
    AjouteSiConnu(t, "Date AMM", DateJourMoisAn(DateChapitre(cip, 0).value_or("")));
    if (drapeaux & VDXPRO::Dopant)
        t += RangeeLarge("<b>M\xE9" "dicament dopant*</b> : * produit contenant une substance interdite aux sportifs");
    if (complement) t += Rangee("MEDIEL", TexteMedielMonographie(MedielDuProduit(contexte, cip)));
    return Tableau(t);
}

std::string DonneesParticulieres(const std::string& cip) {
    TablesOuvertes tables{&TableAffectionsProduits(), &TableAffections()};
    std::vector<std::string> affections;
    Curseur cles(TableAffectionsProduits());
    const std::string debut = CleTexte(cip, ModeleLien::Code.capacite());
    for (auto p = cles.PremiereAvec(debut); p; p = cles.SuivanteAvec(debut)) {
        const std::string code(Fiche(VueFicheA(TableAffectionsProduits(), *p)).Texte(ModeleLien::CodeLie));
        const auto a = Curseur(TableAffections()).Egale(code);
        affections.push_back(a ? std::string(Fiche(VueFicheA(TableAffections(), *a)).Texte(VDXYALD::Libelle)) : code);
    }
    tables.Ferme();
    if (affections.empty()) return {};
    std::string t = "<p class=\"Texte\"><font face=\"Arial\"><b>Ordonnance bizone</b></font></p>\r\n"
                    "<p class=\"Texte\"><font face=\"Arial\">";
    t += affections.size() == 1 ? "En rapport direct et incontestable avec l'affection exon\xE9r\xE9" "e : "
                                : "En rapport direct et incontestable avec les affections exon\xE9r\xE9" "es : ";
    t += "</font></p>\r\n<UL>\r\n";
    for (const std::string& a : affections) t += "<li class=\"Texte\">" + a + "</li>\r\n";
    t += "</ul>\r\n<p class=\"Texte\"><font face=\"Arial\">Source : <a href=\"" VDX_LIEN_ALD "\">liste des affections "
         "de longue dur\xE9" "e</a></font></p>\r\n";
    return t;
}

std::string SourceAFSSAPS(const std::string& cip) {
    const std::vector<AlerteGrossesse> alertes = AlertesGrossesse(cip, 0);
    if (alertes.empty()) return {};
    const AlerteGrossesse& a = alertes.front();
    std::string t = "<p class='textebleu'><b>Source AFSSAPS du &nbsp;" + DateDeLaBase().value_or("") + "</b></p>\r\n";
    t += "<table width=\"100%\" border=\"0\" cellspacing=\"2\" cellpadding=\"3\"><tr><td width=\"25%\" bgcolor=\"";
    t += CouleurGrossesse(a.NiveauGrossesse);
    t += "\" class=\"textenoir\"><b>" + a.NomNiveau + "</b><br>" + a.Periode +
         "</td><td class=\"textenoir\">" + a.TexteGrossesse + "</td></tr></table>\r\n";
    return t;
}

}  // namespace vdx
