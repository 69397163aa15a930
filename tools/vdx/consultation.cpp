#include "tools/vdx/consultation.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <sstream>
#include <utility>

#include "platform/codepage.h"
#include "products/codes.h"
#include "products/composition.h"
#include "products/produits.h"
#include "products/rubriques.h"
#include "products/transparence.h"
#include "session/codes.h"
#include "session/texte.h"
#include "store/sources.h"
#include "vdx32/oleauto.h"

namespace vdx {
namespace {

// Whether every route of a product is local: a route code beginning with
// "B" reaches no further than where it is laid.
bool RoutesLocales(const char* code) {
    TableauHote<VdxDeuxChaines> voies(DeuxChaines);
    if (ListeVoie_Vdx(code, voies.Adresse()) <= 0) return false;
    return std::ranges::all_of(voies.Lignes(), [](VdxDeuxChaines& v) { return Utf8(v.Code).starts_with('B'); });
}

// The host arrays of a prescription, kept for the calls that take them.
struct EntreesOrdonnance {
    EntreeHote produits, codes, types, valeurs, termes, allergenes;
    explicit EntreesOrdonnance(const Ordonnance& o)
        : produits(Chaines(o.produits)),
          codes(Chaines(Codes(o.pathologies))),
          types(EntreeHote::Entiers(Types(o.pathologies))),
          valeurs(EntreeHote::Entiers(Rangs(o.pathologies.size()))),
          termes(Chaines(o.termesAllergie)),
          allergenes(EntreeHote::Entiers(o.allergenes)) {}

    static std::vector<std::string> Codes(const std::vector<CodePatient>& p) {
        std::vector<std::string> c;
        for (const CodePatient& x : p) c.push_back(x.code);
        return c;
    }
    static std::vector<int32_t> Types(const std::vector<CodePatient>& p) {
        std::vector<int32_t> t;
        for (const CodePatient& x : p) t.push_back(x.type);
        return t;
    }
    // The value of each pathology: its rank from 1.
    static std::vector<int32_t> Rangs(size_t n) {
        std::vector<int32_t> v(n);
        for (size_t i = 0; i < n; ++i) v[i] = static_cast<int32_t>(i) + 1;
        return v;
    }
};

// The prescription's interaction level for the time of a check, the
// session's own level back afterwards.
class NiveauDuControle {
public:
    explicit NiveauDuControle(std::optional<int32_t> niveau) : avant_(NiveauInteraction_Vdx(-1)) {
        if (niveau) NiveauInteraction_Vdx(*niveau);
    }
    ~NiveauDuControle() { NiveauInteraction_Vdx(avant_); }
    NiveauDuControle(const NiveauDuControle&) = delete;
    NiveauDuControle& operator=(const NiveauDuControle&) = delete;

private:
    int32_t avant_;
};

// Whether an export's return is a failure, kept in `echec`.
bool Echoue(const char* appel, int32_t code, std::optional<EchecAppel>& echec) {
    if (code >= 0) return false;
    echec = EchecAppel{appel, code};
    return true;
}

// JSON of what the library wrote in a host string.
std::string J(BSTR b) { return ChaineJson(Utf8(b)); }

void InteractionsJson(std::ostringstream& o, const std::vector<VdxInteraction2*>& rangs) {
    for (size_t i = 0; i < rangs.size(); ++i) {
        const VdxInteraction2& r = *rangs[i];
        o << (i ? "," : "") << "{\"level\":" << r.Niveau << ",\"severity\":" << J(r.LibelleGravite)
          << ",\"code1\":" << J(r.CIP1) << ",\"label1\":" << J(r.Libelle1) << ",\"code2\":" << J(r.CIP2)
          << ",\"label2\":" << J(r.Libelle2) << ",\"kind\":" << J(r.TexteType) << ",\"risk\":" << J(r.Texte2)
          << ",\"conduct\":" << J(r.Texte4) << ",\"condition\":" << J(r.LibelleCondition)
          << ",\"reference\":" << J(r.Reference) << "}";
    }
}

// The rows of a host array in JSON, each written by `ecrit`.
template <typename Fiche, typename Ecrit>
void RangsJson(std::ostringstream& o, TableauHote<Fiche>& tableau, Ecrit ecrit) {
    bool premier = true;
    for (Fiche& f : tableau.Lignes()) {
        o << (premier ? "{" : ",{");
        ecrit(f);
        o << "}";
        premier = false;
    }
}

}  // namespace

const Gabarit DeuxChaines = {TypeChamp::Texte, TypeChamp::Texte};
const Gabarit TroisChaines = {TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte};

std::string Utf8(BSTR b) {
    if (!b) return {};
    return codepage::VersUtf8(std::string_view(reinterpret_cast<const char*>(b), SysStringByteLen(b)));
}

EntreeHote Chaines(const std::vector<std::string>& utf8) {
    std::vector<std::string> textes;
    for (const std::string& t : utf8) textes.push_back(codepage::DepuisUtf8(t).value_or(t));
    return EntreeHote::Chaines(textes);
}

std::optional<int32_t> TypePathologie(std::string_view type) {
    if (type == "term" || type == "1") return 1;
    if (type == "cisp" || type == "2") return 2;
    if (type == "cim10" || type == "3") return 3;
    return std::nullopt;
}

Connexion::Connexion(const std::string& base) {
    InstalleNotifications_Vdx(nullptr, nullptr, nullptr);
    code = Connection2_Vdx(base.c_str(), 0, 0);
}

Connexion::~Connexion() { DeConnection2_Vdx(); }

std::optional<EchecAppel> Verifie(const Ordonnance& o, Constat& constat) {
    const NiveauDuControle niveau(o.niveau);
    std::optional<EchecAppel> echec;
    for (const std::string& code : o.produits) {
        const std::string cp = codepage::DepuisUtf8(code).value_or(code);
        ChaineHote libelle;
        // A line by common name has a title rather than a product's label.
        const int32_t n = IsMedDC_Vdx(cp.c_str()) == 1 ? LibelleMedDC2_Vdx(cp.c_str(), libelle.Adresse())
                                                        : LibelleProduit_Vdx(cp.c_str(), libelle.Adresse());
        constat.produits.push_back({code, n == 1 ? Utf8(libelle.Valeur()) : ProduitInconnu, RoutesLocales(cp.c_str())});
    }
    EntreesOrdonnance e(o);
    SAFEARRAY **p = e.produits.Adresse(), **c = e.codes.Adresse(), **t = e.types.Adresse(), **v = e.valeurs.Adresse();
    if (Echoue("Interactions2_Vdx",
               Interactions2_Vdx(p, c, t, constat.lignes.Adresse(), o.age, o.poids, o.grossesse, o.allaitement,
                                 o.sexe.c_str()),
               echec) ||
        Echoue("ContreIndicationsProfil2_Vdx",
               ContreIndicationsProfil2_Vdx(c, t, v, p, constat.alertes.Adresse(), o.age, o.poids, o.grossesse,
                                            o.allaitement, o.sexe.c_str()),
               echec))
        return echec;
    // The allergy check asks for a list of allergies.
    if ((!o.termesAllergie.empty() || !o.allergenes.empty()) &&
        Echoue("ControleAllergies_Vdx",
               ControleAllergies_Vdx(e.termes.Adresse(), e.allergenes.Adresse(), p, constat.allergies.Adresse()), echec))
        return echec;
    if (Echoue("Surdosage_Vdx", Surdosage_Vdx(p, constat.doublons.Adresse()), echec)) return echec;

    for (VdxInteraction2& r : constat.lignes.Lignes())
        (Utf8(r.CIP2) == SansSecondProduit ? constat.exterieures : constat.interactions).push_back(&r);
    for (const ProduitPrescrit& produit : constat.produits)
        if (produit.local && std::ranges::none_of(constat.lignes.Lignes(), [&](VdxInteraction2& r) {
                return Utf8(r.CIP1) == produit.code || Utf8(r.CIP2) == produit.code;
            }))
            constat.nonAnalyses.push_back(&produit);
    const int32_t couples = TablePresente_Vdx("VDXZICOU"), termes = TablePresente_Vdx("VDXVAMM");
    if (Echoue("TablePresente_Vdx", couples, echec) || Echoue("TablePresente_Vdx", termes, echec)) return echec;
    constat.sansCouples = couples == 0;
    constat.sansTermes = termes == 0;
    return std::nullopt;
}

std::optional<EchecAppel> EcritRapports(const Ordonnance& o, const std::string& dossier) {
    const NiveauDuControle niveau(o.niveau);
    std::optional<EchecAppel> echec;
    std::error_code erreur;
    std::filesystem::create_directories(dossier, erreur);
    std::string chemins[std::size(Rapports)];
    for (size_t i = 0; i < std::size(Rapports); ++i) {
        chemins[i] = dossier + "/" + Rapports[i].fichier;
        std::filesystem::remove(chemins[i], erreur);
    }
    EntreesOrdonnance e(o);
    SAFEARRAY **p = e.produits.Adresse(), **c = e.codes.Adresse(), **t = e.types.Adresse(), **v = e.valeurs.Adresse();
    if (Echoue("Interactions2Html_Vdx",
               Interactions2Html_Vdx(p, c, t, chemins[0].c_str(), "", o.age, o.poids, o.grossesse, o.allaitement,
                                     o.sexe.c_str()),
               echec) ||
        Echoue("ContreIndicationsProfilHtml_Vdx",
               ContreIndicationsProfilHtml_Vdx(c, t, v, p, o.age, o.poids, o.grossesse, o.allaitement, o.sexe.c_str(),
                                               chemins[1].c_str(), ""),
               echec) ||
        Echoue("ControleAllergiesHtml_Vdx",
               ControleAllergiesHtml_Vdx(e.termes.Adresse(), e.allergenes.Adresse(), p, chemins[2].c_str(), "", 1),
               echec) ||
        Echoue("SurdosageHtml_Vdx", SurdosageHtml_Vdx(p, chemins[3].c_str(), ""), echec))
        return echec;
    // The library passes over a file it can't open.
    for (const std::string& chemin : chemins)
        if (!std::filesystem::exists(chemin)) return EchecAppel{"fopen " + chemin, EcritureImpossible};
    return std::nullopt;
}

std::string ConstatJson(Constat& c) {
    std::ostringstream o;
    o << "{\"prescription\":[";
    for (size_t i = 0; i < c.produits.size(); ++i)
        o << (i ? "," : "") << "{\"code\":" << ChaineJson(c.produits[i].code)
          << ",\"label\":" << ChaineJson(c.produits[i].libelle) << "}";
    o << "],\"interactions\":[";
    InteractionsJson(o, c.interactions);
    o << "],\"noCouples\":" << (c.sansCouples ? "true" : "false") << ",\"noTerms\":" << (c.sansTermes ? "true" : "false")
      << ",\"notAnalysed\":[";
    for (size_t i = 0; i < c.nonAnalyses.size(); ++i)
        o << (i ? "," : "") << "{\"code\":" << ChaineJson(c.nonAnalyses[i]->code)
          << ",\"label\":" << ChaineJson(c.nonAnalyses[i]->libelle) << ",\"reason\":\"local route only\"}";
    o << "],\"outside\":[";
    InteractionsJson(o, c.exterieures);
    o << "],\"contraindications\":[";
    RangsJson(o, c.alertes, [&](VdxAlerteCI& a) {
        o << "\"level\":" << a.NiveauAlerte << ",\"code\":" << J(a.CodeProduit) << ",\"label\":" << J(a.LibelleProduit)
          << ",\"term\":" << J(a.CodeTerme) << ",\"termLabel\":" << J(a.LibelleTerme)
          << ",\"patientCode\":" << J(a.CodePatient);
    });
    o << "],\"allergies\":[";
    RangsJson(o, c.allergies, [&](VdxFicheAllergie& a) {
        o << "\"through\":" << (a.TypeAlerte == 1 ? "\"term\"" : "\"allergen\"") << ",\"code\":" << J(a.CodeProduit)
          << ",\"label\":" << J(a.LibelleProduit) << ",\"cause\":" << J(a.CodeCause)
          << ",\"causeText\":" << J(a.TexteCause);
    });
    o << "],\"duplicates\":[";
    RangsJson(o, c.doublons, [&](VdxFicheSurdosage& d) {
        const char* type = d.TypeRedondance == RedondanceSubstance ? "substance"
                           : d.TypeRedondance == RedondanceSynonyme ? "synonym"
                                                                    : "class";
        o << "\"type\":\"" << type << "\",\"code1\":" << J(d.CIP1) << ",\"label1\":" << J(d.Libelle1)
          << ",\"code2\":" << J(d.CIP2) << ",\"label2\":" << J(d.Libelle2) << ",\"substance\":" << J(d.LibelleCommune)
          << ",\"substance1\":" << J(d.LibelleSubstance1) << ",\"substance2\":" << J(d.LibelleSubstance2)
          << ",\"class\":" << J(d.ClasseCommune) << ",\"classLabel\":" << J(d.LibelleClasseCommune);
    });
    o << "]}";
    return o.str();
}

std::optional<FicheProduit> LitFiche(const std::string& code, EchecAppel& echec) {
    const std::string cp = codepage::DepuisUtf8(code).value_or(code);
    const char* c = cp.c_str();
    FicheProduit f;
    f.code = code;
    ChaineHote libelle, labo, nomLabo, date, cip13, cis;
    if (const int32_t n = LibelleProduit_Vdx(c, libelle.Adresse()); n != 1) {
        echec = {"LibelleProduit_Vdx", n};
        return std::nullopt;
    }
    f.libelle = Utf8(libelle.Valeur());
    // Whether a lookup found its fact: 0 or -90 is a fact the product
    // lacks, another negative code a failure, the first kept in `echec`.
    bool echoue = false;
    const auto trouve = [&](const char* appel, int32_t n) {
        if (n < 0 && n != CodeInconnu && !echoue) {
            echec = {appel, n};
            echoue = true;
        }
        return n > 0;
    };
    if (trouve("Laboratoire_Vdx", Laboratoire_Vdx(c, labo.Adresse(), nomLabo.Adresse())))
        f.laboratoire = Utf8(nomLabo.Valeur());
    if (trouve("ProduitSupprime_Vdx", ProduitSupprime_Vdx(c, date.Adresse()))) f.supprimeLe = Utf8(date.Valeur());
    if (trouve("CIP_CIP13_Vdx", CIP_CIP13_Vdx(c, cip13.Adresse()))) f.cip13 = Utf8(cip13.Valeur());
    if (trouve("CIP_To_CIS_Vdx", CIP_To_CIS_Vdx(c, cis.Adresse()))) f.cis = Utf8(cis.Valeur());

    struct Drapeau {
        const char* nom;
        const char* appel;
        int32_t(VDX_CALL* test)(const char*);
    };
    const Drapeau drapeaux[] = {{"generic", "ProduitGenerique_Vdx", ProduitGenerique_Vdx},
                                {"reference", "ProduitReferent_Vdx", ProduitReferent_Vdx},
                                {"hospital", "ProduitHospitalier_Vdx", ProduitHospitalier_Vdx},
                                {"doping", "ProduitDopant_Vdx", ProduitDopant_Vdx},
                                {"narcotic", "IsStupefiant_Vdx", IsStupefiant_Vdx}};
    for (const Drapeau& d : drapeaux)
        if (trouve(d.appel, d.test(c))) f.drapeaux.emplace_back(d.nom);

    FicheHote<VdxStatut> statut(GabaritDe<FicheStatut>());
    if (trouve("Statut_Vdx", Statut_Vdx(c, statut.Adresse()))) {
        f.statut = Utf8(statut->LibelleStatut);
        for (BSTR p : {statut->LibellePrescription1, statut->LibellePrescription2, statut->LibellePrescription3})
            if (SysStringByteLen(p)) f.prescriptions.push_back(Utf8(p));
    }

    TableauHote<VdxComposant> composants(GabaritDe<Composant>());
    ChaineHote exprime, composition;
    if (trouve("ProduitPA_Vdx", ProduitPA_Vdx(c, composants.Adresse(), exprime.Adresse(), composition.Adresse()))) {
        f.exprimePour = Utf8(exprime.Valeur());
        for (VdxComposant& x : composants.Lignes()) f.composition.push_back({Utf8(x.Libelle), Utf8(x.QuantiteTexte)});
    }
    TableauHote<VdxTroisChaines> classes(TroisChaines);
    if (trouve("ProduitClasse_Vdx", ProduitClasse_Vdx(c, classes.Adresse())))
        for (VdxTroisChaines& x : classes.Lignes()) f.classes.push_back({Utf8(x.Code), Utf8(x.Texte)});
    TableauHote<VdxDeuxChaines> voies(DeuxChaines);
    if (trouve("ListeVoie_Vdx", ListeVoie_Vdx(c, voies.Adresse())))
        for (VdxDeuxChaines& x : voies.Lignes()) f.voies.push_back({Utf8(x.Code), Utf8(x.Libelle)});

    ChaineHote codeLigne, libelleLigne;
    if (trouve("TraductionDC_Vdx", TraductionDC_Vdx(c, codeLigne.Adresse(), libelleLigne.Adresse()))) {
        f.codeLigne = Utf8(codeLigne.Valeur());
        f.libelleLigne = Utf8(libelleLigne.Valeur());
    }
    FicheHote<VdxSmrAsmr> avis(GabaritDe<FicheSmrAsmr>());
    if (trouve("ProduitSmrAsmr_Vdx", ProduitSmrAsmr_Vdx(c, avis.Adresse()))) {
        const auto texte = [](BSTR niveau, BSTR date, BSTR motif) {
            return SysStringByteLen(niveau) ? Utf8(niveau) + " (" + Utf8(date) + ", " + Utf8(motif) + ")" : std::string();
        };
        f.smr = texte(avis->NiveauSMR, avis->DateSMR, avis->MotifSMR);
        f.asmr = texte(avis->NiveauASMR, avis->DateASMR, avis->MotifASMR);
    }
    if (const int32_t s = ProduitSecable_Vdx(c); trouve("ProduitSecable_Vdx", s)) f.secabilite = s;
    TableauHote<VdxExcipientProduit> excipients(GabaritDe<ExcipientProduit>());
    if (trouve("ProduitExcipient_Vdx", ProduitExcipient_Vdx(c, excipients.Adresse())))
        for (VdxExcipientProduit& x : excipients.Lignes()) {
            std::string e = Utf8(x.Libelle);
            if (SysStringByteLen(x.Quantite)) e += " (" + Utf8(x.Quantite) + ")";
            if (Utf8(x.EffetNotoire) == "1") e += ", known effect";
            f.excipients.push_back(std::move(e));
        }
    TableauHote<VdxAspect> aspects(GabaritDe<AspectProduit>());
    if (trouve("AspectProduits_Vdx", AspectProduits_Vdx(c, aspects.Adresse())) && !aspects.Lignes().empty()) {
        const VdxAspect& a = aspects.Lignes().front();
        for (BSTR partie : {a.Forme, a.Couleur, a.Marquage, a.Secabilite})
            if (SysStringByteLen(partie)) f.aspect += (f.aspect.empty() ? "" : ", ") + Utf8(partie);
    }
    // A price of seven digits other than zeros is known; its rates with it.
    FicheHote<VdxEconomique> eco(GabaritDe<FicheEconomique>());
    if (trouve("Economique_Vdx", Economique_Vdx(c, eco.Adresse()))) {
        const std::string prix = Utf8(eco->Prix);
        int64_t centimes = 0;
        const auto [fin, err] = std::from_chars(prix.data(), prix.data() + prix.size(), centimes);
        ChaineHote monnaie;
        if (prix.size() == 7 && err == std::errc() && fin == prix.data() + prix.size() && centimes > 0 &&
            trouve("Monnaie_Vdx", Monnaie_Vdx(monnaie.Adresse()))) {
            f.prixCentimes = centimes;
            f.monnaie = Utf8(monnaie.Valeur());
            f.tauxRemboursement = eco->TauxRemboursement.Valeur;
            f.tauxTVA = eco->TauxTVA.Valeur;
        }
    }
    if (echoue) return std::nullopt;
    return f;
}

}  // namespace vdx
