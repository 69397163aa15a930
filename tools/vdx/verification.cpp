// The prescriber's commands: check a prescription for a patient, show a
// product, search products. They call the library's exports in array mode,
// through the host types, as any host does.
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/codepage.h"
#include "checks/contreindications.h"
#include "checks/interactions.h"
#include "documents/annexes.h"
#include "products/codes.h"
#include "products/composition.h"
#include "session/entrees.h"
#include "session/texte.h"
#include "session/valeurs_hote.h"
#include "store/sources.h"
#include "tools/vdx/commandes.h"
#include "vdx32/oleauto.h"
#include "vdx32/vdx32.h"

namespace vdx {
namespace {

constexpr char AideCheck[] =
    "usage: vdx check [--base BASE] CODE... [--age MONTHS | --age-years N] [--weight KG]\n"
    "                 [--sex M|F] [--pregnancy WEEKS] [--breastfeeding]\n"
    "                 [--pathology TYPE:CODE]... [--level N] [--json] [--html DIR]\n"
    "\n"
    "Checks a prescription of products (CodeCIP) for one patient: prints the\n"
    "products, the interactions between them grouped by severity with their\n"
    "kind, risk and conduct, the products left out of the analysis because\n"
    "all their routes are local (skin, ear, nose, teeth and gums), what the\n"
    "patient should avoid outside the prescription (alcohol, grapefruit...),\n"
    "then the contra-indications and precautions that apply to the patient. A pathology is TYPE:CODE with TYPE term, cisp or\n"
    "cim10 (or 1, 2, 3). --level leaves out the interactions below that level\n"
    "(1 to 4). --json prints one JSON object. --html writes the reports of the\n"
    "interactions and of the contra-indications into DIR (interactions.html,\n"
    "contre-indications.html, code page 1252) for a browser. Exit codes: 0 done, whatever was\n"
    "found; 1 a failure of the library; 2 bad usage.\n";

constexpr char AideProduct[] =
    "usage: vdx product [--base BASE] CODE\n"
    "\n"
    "Shows a product of BASE (or VDX_BASE): label, laboratory, deletion, CIP13 and CIS codes, flags,\n"
    "status and restricted prescriptions, composition, classes and routes.\n";

constexpr char AideMonograph[] =
    "usage: vdx monograph BASE CODE FILE [--css PATH]\n"
    "\n"
    "Writes the monograph of product CODE of BASE into FILE as an HTML page (code page 1252),\n"
    "linked to the stylesheet PATH when given.\n";

constexpr char AideNotice[] =
    "usage: vdx notice BASE CODE DIR\n"
    "\n"
    "Writes into DIR the patient notice of product CODE of BASE as notice-CODE.html, its\n"
    "pictures beside it, and each document linked to the product under its own name.\n";

constexpr char AideSearch[] =
    "usage: vdx search [--base BASE] TEXT [COUNT]\n"
    "\n"
    "Lists the products of BASE (or VDX_BASE) whose label begins with TEXT (20\n"
    "by default).\n";

constexpr char AideSearchSet[] =
    "usage: vdx search-set [--base BASE] FILE... [--age MONTHS | --age-years N]\n"
    "                      [--weight KG] [--sex M|F] [--pregnancy WEEKS] [--breastfeeding]\n"
    "\n"
    "Runs criteria searches on one set of products: each FILE is one call of\n"
    "Recherche_Vdx on the set the calls before it left, one criterion a line,\n"
    "\"champ@Operation@Code@qualifiant\" in UTF-8 (blank lines and lines\n"
    "beginning with \"#\" aside); the patient options are those of the patient\n"
    "criterion (9). Prints each call's result, then every product of the set\n"
    "in code order, read back one by one, and frees the set.\n";

// The text of a host string the library filled in an 8-bit session, in UTF-8.
std::string Utf8(BSTR b) {
    if (!b) return {};
    return codepage::VersUtf8(std::string_view(reinterpret_cast<const char*>(b), SysStringByteLen(b)));
}

// The shapes of the records the library fills.
const Gabarit DeuxChaines = {TypeChamp::Texte, TypeChamp::Texte};
const Gabarit TroisChaines = {TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte};

// A host array of the strings given in UTF-8 on the command line, 8-bit.
EntreeHote Chaines(const std::vector<std::string>& utf8) {
    std::vector<std::string> textes;
    for (const std::string& t : utf8) textes.push_back(codepage::DepuisUtf8(t).value_or(t));
    return EntreeHote::Chaines(textes);
}

// A connection in array mode, closed on every way out.
struct Connexion {
    int32_t code;
    explicit Connexion(const std::string& base) {
        InstalleNotifications_Vdx(nullptr, nullptr, nullptr);
        code = Connection2_Vdx(base.c_str(), 0, 0);
    }
    ~Connexion() { DeConnection2_Vdx(); }
};

std::optional<int32_t> Nombre(const std::string& texte) {
    int32_t n = 0;
    const auto [fin, erreur] = std::from_chars(texte.data(), texte.data() + texte.size(), n);
    if (erreur != std::errc() || fin != texte.data() + texte.size()) return std::nullopt;
    return n;
}



int Monograph(const ArgumentsCommande& args) {
    if (args.Autres().size() != 3) return Usage(AideMonograph);
    const std::string& code = args.Autres()[1];
    const std::string& fichier = args.Autres()[2];
    const std::string css = args.Valeur("--css").value_or("");
    std::error_code ignoree;
    std::filesystem::remove(fichier, ignoree);
    const Connexion connexion(args.Autres()[0]);
    if (connexion.code != 1) return EchecLibrairie("Connection2_Vdx", connexion.code);
    const int32_t n = MonographieHtml_Vdx(code.c_str(), fichier.c_str(), codepage::DepuisUtf8(css).value_or(css).c_str());
    if (n != 1) return EchecLibrairie("MonographieHtml_Vdx", n);
    // The library passes over a file it can't open.
    if (!std::filesystem::exists(fichier)) {
        std::cerr << "vdx: cannot write " << fichier << '\n';
        return SortieEchec;
    }
    return SortieSucces;
}

int Notice(const ArgumentsCommande& args) {
    if (args.Autres().size() != 3) return Usage(AideNotice);
    const std::string& code = args.Autres()[1];
    const std::filesystem::path dossier = args.Autres()[2];
    std::error_code erreur;
    std::filesystem::create_directories(dossier, erreur);
    const Connexion connexion(args.Autres()[0]);
    if (connexion.code != 1) return EchecLibrairie("Connection2_Vdx", connexion.code);
    const std::string notice = (dossier / ("notice-" + code + ".html")).string();
    const int32_t n = NoticeHtml_Vdx(code.c_str(), notice.c_str());
    if (n < 0) return EchecLibrairie("NoticeHtml_Vdx", n);
    std::cout << (n == 1 ? notice : "no notice for " + code) << '\n';
    TableauHote<VdxLien> liens(GabaritDe<LigneLien>());
    const int32_t l = ListeLien_Vdx(code.c_str(), liens.Adresse());
    if (l < 0) return EchecLibrairie("ListeLien_Vdx", l);
    for (const VdxLien& lien : liens.Lignes()) {
        const std::string nom(hote::Octets(lien.NomDocument));
        if (!NomDeFichierSimple(nom)) {
            std::cerr << "vdx: a document named out of the directory left: " << nom << '\n';
            continue;
        }
        const std::string chemin = (dossier / nom).string();
        if (const int32_t g = GenererLien_Vdx(nom.c_str(), chemin.c_str()); g != 1) return EchecLibrairie("GenererLien_Vdx", g);
        std::cout << chemin << '\n';
    }
    return SortieSucces;
}

// Colours of a terminal, by interaction level.
struct Couleurs {
    bool actives = isatty(STDOUT_FILENO) != 0;
    const char* Niveau(int32_t niveau) const {
        if (!actives) return "";
        return niveau >= 4 ? "\033[1;31m" : niveau == 3 ? "\033[31m" : niveau == 2 ? "\033[33m" : "\033[36m";
    }
    const char* Gras() const { return actives ? "\033[1m" : ""; }
    const char* Fin() const { return actives ? "\033[0m" : ""; }
};

struct Demande {
    std::string base;
    std::vector<std::string> produits;
    std::vector<std::string> codesPatient;
    std::vector<int32_t> typesPatient;
    int32_t age = 0, poids = 0, grossesse = 0, allaitement = 0;
    std::string sexe;
    std::optional<int32_t> niveau;
    bool json = false;
    std::string html;  // the directory of the reports, or empty
};

std::optional<int32_t> TypePathologie(std::string_view type) {
    if (type == "term" || type == "1") return 1;
    if (type == "cisp" || type == "2") return 2;
    if (type == "cim10" || type == "3") return 3;
    return std::nullopt;
}

// The arguments of check, or nullopt on bad usage (told on stderr).
std::optional<Demande> LitDemande(const ArgumentsCommande& args) {
    Demande d;
    d.base = args.Base();
    d.produits = args.Autres();
    for (const auto& option : args.Options()) {
        const std::string& a = option.first;
        const std::string& valeur = option.second;
        const auto entier = [&](int32_t& cible, int32_t facteur = 1) {
            const auto n = Nombre(valeur);
            if (!n || *n < 0) {
                std::cerr << "vdx: " << a << " takes a number, not " << valeur << '\n';
                return false;
            }
            cible = *n * facteur;
            return true;
        };
        if (a == "--age") {
            if (!entier(d.age)) return std::nullopt;
        } else if (a == "--age-years") {
            if (!entier(d.age, 12)) return std::nullopt;
        } else if (a == "--weight") {
            if (!entier(d.poids)) return std::nullopt;
        } else if (a == "--pregnancy") {
            if (!entier(d.grossesse)) return std::nullopt;
        } else if (a == "--level") {
            int32_t n = 0;
            if (!entier(n)) return std::nullopt;
            d.niveau = n;
        } else if (a == "--sex") {
            if (valeur != "M" && valeur != "F") {
                std::cerr << "vdx: --sex takes M or F\n";
                return std::nullopt;
            }
            d.sexe = valeur;
        } else if (a == "--pathology") {
            const size_t deux = valeur.find(':');
            const auto type = deux == std::string::npos ? std::nullopt : TypePathologie(valeur.substr(0, deux));
            if (!type || deux + 1 >= valeur.size()) {
                std::cerr << "vdx: --pathology takes TYPE:CODE, TYPE term, cisp or cim10\n";
                return std::nullopt;
            }
            d.typesPatient.push_back(*type);
            d.codesPatient.push_back(valeur.substr(deux + 1));
        } else if (a == "--breastfeeding") {
            d.allaitement = 1;
        } else if (a == "--json") {
            d.json = true;
        } else if (a == "--html") {
            d.html = valeur;
        }
    }
    if (d.base.empty() || d.produits.empty()) return std::nullopt;
    return d;
}

struct Produit {
    std::string code, libelle;
    // All its routes local (skin, ear, nose, teeth and gums): the
    // interaction analysis leaves it out unless a couple names its route.
    bool local = false;
};

constexpr char BaseSansCouples[] =
    "la base ne contient aucun couple d'interactions : aucune interaction ne peut \xC3\xAAtre signal\xC3\xA9" "e";
constexpr char BaseSansTermes[] =
    "la base ne contient aucun terme de contre-indication : aucune ne peut \xC3\xAAtre signal\xC3\xA9" "e";

// The code the library gives the second product of a row with what is
// taken outside the prescription.
constexpr char SansSecondProduit[] = "0000000";

// What check found, gathered before it is printed.
struct Constat {
    std::vector<Produit> produits;
    TableauHote<VdxInteraction2> lignes{GabaritDe<FicheInteraction2>()};
    TableauHote<VdxAlerteCI> alertes{GabaritDe<AlerteCI>()};
    // The rows between prescribed products, then those with what the
    // patient should avoid outside the prescription.
    std::vector<VdxInteraction2*> interactions, exterieures;
    // The products the route rule leaves out, of which no row speaks.
    std::vector<const Produit*> nonAnalyses;
    // A base without couples or without terms can find none: it is said,
    // never taken for a prescription without risk.
    bool sansCouples = false, sansTermes = false;

    void Trie() {
        for (VdxInteraction2& r : lignes.Lignes())
            (Utf8(r.CIP2) == SansSecondProduit ? exterieures : interactions).push_back(&r);
        for (const Produit& p : produits)
            if (p.local && std::ranges::none_of(lignes.Lignes(), [&](VdxInteraction2& r) {
                    return Utf8(r.CIP1) == p.code || Utf8(r.CIP2) == p.code;
                }))
                nonAnalyses.push_back(&p);
    }
};

// Whether every route of a product is local: a route code beginning with
// "B" reaches no further than where it is laid.
bool RoutesLocales(const char* code) {
    TableauHote<VdxDeuxChaines> voies(DeuxChaines);
    if (ListeVoie_Vdx(code, voies.Adresse()) <= 0) return false;
    return std::ranges::all_of(voies.Lignes(), [](VdxDeuxChaines& v) { return Utf8(v.Code).starts_with('B'); });
}

int Imprime(Constat& c) {
    const Couleurs couleurs;
    std::cout << couleurs.Gras() << "Ordonnance" << couleurs.Fin() << '\n';
    for (const Produit& p : c.produits) std::cout << "  " << p.code << "  " << p.libelle << '\n';

    const auto imprimeLignes = [&](const char* titre, const std::vector<VdxInteraction2*>& lignes) {
        std::cout << '\n' << couleurs.Gras() << titre << " (" << lignes.size() << ")" << couleurs.Fin() << '\n';
        if (lignes.empty()) std::cout << "  aucune\n";
        std::string gravite;
        for (VdxInteraction2* r : lignes) {
            const int32_t niveau = static_cast<int32_t>(r->Niveau);
            if (Utf8(r->LibelleGravite) != gravite) {
                gravite = Utf8(r->LibelleGravite);
                std::cout << "  " << couleurs.Niveau(niveau) << gravite << couleurs.Fin() << '\n';
            }
            std::cout << "    " << Utf8(r->Libelle1) << "  +  " << Utf8(r->Libelle2) << '\n';
            std::cout << "      " << Utf8(r->TexteType) << '\n';
            if (SysStringByteLen(r->CodeCondition)) std::cout << "      Condition : " << Utf8(r->LibelleCondition) << '\n';
            if (SysStringByteLen(r->Texte2)) std::cout << "      Risque : " << Utf8(r->Texte2) << '\n';
            if (SysStringByteLen(r->Texte4)) std::cout << "      Conduite \xC3\xA0 tenir : " << Utf8(r->Texte4) << '\n';
        }
    };
    imprimeLignes("Interactions", c.interactions);
    if (c.sansCouples) std::cout << "  " << BaseSansCouples << '\n';
    for (const Produit* p : c.nonAnalyses)
        std::cout << "  non analys\xC3\xA9, voie locale seule : " << p->code << "  " << p->libelle << '\n';
    imprimeLignes("\xC3\x80 \xC3\xA9viter en dehors de l'ordonnance", c.exterieures);

    const auto alertes = c.alertes.Lignes();
    std::cout << '\n'
              << couleurs.Gras() << "Contre-indications et pr\xC3\xA9" "cautions (" << alertes.size() << ")"
              << couleurs.Fin() << '\n';
    if (alertes.empty()) std::cout << "  aucune\n";
    if (c.sansTermes) std::cout << "  " << BaseSansTermes << '\n';
    for (VdxAlerteCI& a : alertes) {
        const bool precaution = a.NiveauAlerte == 3 || a.NiveauAlerte >= 30;
        std::cout << "  " << (precaution ? "pr\xC3\xA9" "caution         " : "contre-indication ") << Utf8(a.LibelleProduit)
                  << ": " << Utf8(a.LibelleTerme);
        if (SysStringByteLen(a.CodePatient)) std::cout << "  [" << Utf8(a.CodePatient) << "]";
        std::cout << "  (niveau " << a.NiveauAlerte << ")\n";
    }
    return SortieSucces;
}

int ImprimeJson(Constat& c) {
    std::cout << "{\"prescription\":[";
    for (size_t i = 0; i < c.produits.size(); ++i)
        std::cout << (i ? "," : "") << "{\"code\":" << vdx::ChaineJson(c.produits[i].code)
                  << ",\"label\":" << vdx::ChaineJson(c.produits[i].libelle) << "}";
    const auto lignes = [](const std::vector<VdxInteraction2*>& rangs) {
        for (size_t i = 0; i < rangs.size(); ++i) {
            const VdxInteraction2& r = *rangs[i];
            std::cout << (i ? "," : "") << "{\"level\":" << r.Niveau << ",\"severity\":" << vdx::ChaineJson(Utf8(r.LibelleGravite))
                      << ",\"code1\":" << vdx::ChaineJson(Utf8(r.CIP1)) << ",\"label1\":" << vdx::ChaineJson(Utf8(r.Libelle1))
                      << ",\"code2\":" << vdx::ChaineJson(Utf8(r.CIP2)) << ",\"label2\":" << vdx::ChaineJson(Utf8(r.Libelle2))
                      << ",\"kind\":" << vdx::ChaineJson(Utf8(r.TexteType)) << ",\"risk\":" << vdx::ChaineJson(Utf8(r.Texte2))
                      << ",\"conduct\":" << vdx::ChaineJson(Utf8(r.Texte4)) << ",\"condition\":" << vdx::ChaineJson(Utf8(r.LibelleCondition))
                      << ",\"reference\":" << vdx::ChaineJson(Utf8(r.Reference)) << "}";
        }
    };
    std::cout << "],\"interactions\":[";
    lignes(c.interactions);
    std::cout << "],\"noCouples\":" << (c.sansCouples ? "true" : "false") << ",\"noTerms\":"
              << (c.sansTermes ? "true" : "false") << ",\"notAnalysed\":[";
    for (size_t i = 0; i < c.nonAnalyses.size(); ++i)
        std::cout << (i ? "," : "") << "{\"code\":" << vdx::ChaineJson(c.nonAnalyses[i]->code) << ",\"label\":" << vdx::ChaineJson(c.nonAnalyses[i]->libelle)
                  << ",\"reason\":\"local route only\"}";
    std::cout << "],\"outside\":[";
    lignes(c.exterieures);
    std::cout << "],\"contraindications\":[";
    bool premier = true;
    for (VdxAlerteCI& a : c.alertes.Lignes()) {
        std::cout << (premier ? "" : ",") << "{\"level\":" << a.NiveauAlerte << ",\"code\":" << vdx::ChaineJson(Utf8(a.CodeProduit))
                  << ",\"label\":" << vdx::ChaineJson(Utf8(a.LibelleProduit)) << ",\"term\":" << vdx::ChaineJson(Utf8(a.CodeTerme))
                  << ",\"termLabel\":" << vdx::ChaineJson(Utf8(a.LibelleTerme))
                  << ",\"patientCode\":" << vdx::ChaineJson(Utf8(a.CodePatient)) << "}";
        premier = false;
    }
    std::cout << "]}\n";
    return SortieSucces;
}

int Check(const ArgumentsCommande& args) {
    const std::optional<Demande> d = LitDemande(args);
    if (!d) return Usage(AideCheck);
    const Connexion connexion(d->base);
    if (connexion.code != 1) return EchecLibrairie("Connection2_Vdx", connexion.code);
    if (d->niveau) NiveauInteraction_Vdx(*d->niveau);

    Constat constat;
    for (const std::string& code : d->produits) {
        ChaineHote libelle;
        const int32_t n = LibelleProduit_Vdx(code.c_str(), libelle.Adresse());
        constat.produits.push_back(
            {code, n == 1 ? Utf8(libelle.Valeur()) : "(produit inconnu)", RoutesLocales(code.c_str())});
    }
    EntreeHote produits = Chaines(d->produits), codes = Chaines(d->codesPatient),
               types = EntreeHote::Entiers(d->typesPatient);
    std::vector<int32_t> valeurs(d->codesPatient.size());
    for (size_t i = 0; i < valeurs.size(); ++i) valeurs[i] = static_cast<int32_t>(i) + 1;
    EntreeHote valeursPatient = EntreeHote::Entiers(valeurs);
    SAFEARRAY** p = produits.Adresse();
    SAFEARRAY** c = codes.Adresse();
    SAFEARRAY** t = types.Adresse();
    SAFEARRAY** v = valeursPatient.Adresse();
    const int32_t n = Interactions2_Vdx(p, c, t, constat.lignes.Adresse(), d->age, d->poids, d->grossesse,
                                        d->allaitement, d->sexe.c_str());
    if (n < 0) return EchecLibrairie("Interactions2_Vdx", n);
    const int32_t m = ContreIndicationsProfil2_Vdx(c, t, v, p, constat.alertes.Adresse(), d->age, d->poids, d->grossesse,
                                                   d->allaitement, d->sexe.c_str());
    if (m < 0) return EchecLibrairie("ContreIndicationsProfil2_Vdx", m);
    if (!d->html.empty()) {
        std::error_code erreur;
        std::filesystem::create_directories(d->html, erreur);
        const std::string interactions = d->html + "/interactions.html", alertes = d->html + "/contre-indications.html";
        const int32_t i = Interactions2Html_Vdx(p, c, t, interactions.c_str(), "", d->age, d->poids, d->grossesse,
                                                d->allaitement, d->sexe.c_str());
        if (i < 0) return EchecLibrairie("Interactions2Html_Vdx", i);
        const int32_t a = ContreIndicationsProfilHtml_Vdx(c, t, v, p, d->age, d->poids, d->grossesse, d->allaitement,
                                                          d->sexe.c_str(), alertes.c_str(), "");
        if (a < 0) return EchecLibrairie("ContreIndicationsProfilHtml_Vdx", a);
        if (!std::filesystem::exists(interactions) || !std::filesystem::exists(alertes)) {
            std::cerr << "vdx: cannot write the reports into " << d->html << '\n';
            return SortieEchec;
        }
    }
    constat.Trie();
    const int32_t couples = TablePresente_Vdx("VDXZICOU"), termes = TablePresente_Vdx("VDXVAMM");
    if (couples < 0) return EchecLibrairie("TablePresente_Vdx", couples);
    if (termes < 0) return EchecLibrairie("TablePresente_Vdx", termes);
    constat.sansCouples = couples == 0;
    constat.sansTermes = termes == 0;
    return d->json ? ImprimeJson(constat) : Imprime(constat);
}

int Product(const ArgumentsCommande& args) {
    const std::string base = args.Base();
    if (base.empty() || args.Autres().size() != 1) return Usage(AideProduct);
    const Connexion connexion(base);
    if (connexion.code != 1) return EchecLibrairie("Connection2_Vdx", connexion.code);
    const std::string& texteCode = args.Autres()[0];
    const char* code = texteCode.c_str();

    ChaineHote libelle, labo, nomLabo, date, cip13, cis;
    const int32_t n = LibelleProduit_Vdx(code, libelle.Adresse());
    if (n != 1) return EchecLibrairie("LibelleProduit_Vdx", n);
    std::cout << texteCode << "  " << Utf8(libelle.Valeur()) << '\n';
    if (Laboratoire_Vdx(code, labo.Adresse(), nomLabo.Adresse()) == 1)
        std::cout << "  laboratory: " << Utf8(nomLabo.Valeur()) << '\n';
    if (ProduitSupprime_Vdx(code, date.Adresse()) == 1) std::cout << "  deleted on " << Utf8(date.Valeur()) << '\n';
    if (CIP_CIP13_Vdx(code, cip13.Adresse()) == 1) std::cout << "  CIP13: " << Utf8(cip13.Valeur()) << '\n';
    if (CIP_To_CIS_Vdx(code, cis.Adresse()) == 1) std::cout << "  CIS: " << Utf8(cis.Valeur()) << '\n';

    std::string drapeaux;
    const std::pair<const char*, int32_t(VDX_CALL*)(const char*)> tests[] = {
        {"generic", ProduitGenerique_Vdx}, {"reference", ProduitReferent_Vdx},
        {"hospital", ProduitHospitalier_Vdx}, {"doping", ProduitDopant_Vdx}, {"narcotic", IsStupefiant_Vdx}};
    for (const auto& [nom, test] : tests)
        if (test(code) == 1) drapeaux += std::string(drapeaux.empty() ? "" : ", ") + nom;
    std::cout << "  flags: " << (drapeaux.empty() ? "none" : drapeaux) << '\n';

    FicheHote<VdxStatut> statut(GabaritDe<FicheStatut>());
    if (Statut_Vdx(code, statut.Adresse()) == 1) {
        std::cout << "  status: " << Utf8(statut->LibelleStatut) << '\n';
        for (BSTR p : {statut->LibellePrescription1, statut->LibellePrescription2, statut->LibellePrescription3})
            if (SysStringByteLen(p)) std::cout << "  prescription: " << Utf8(p) << '\n';
    }

    TableauHote<VdxComposant> composants(GabaritDe<Composant>());
    ChaineHote exprime, composition;
    if (ProduitPA_Vdx(code, composants.Adresse(), exprime.Adresse(), composition.Adresse()) > 0) {
        const std::string base = Utf8(exprime.Valeur());
        std::cout << "  composition" << (base.empty() ? std::string() : " for " + base) << ":\n";
        for (VdxComposant& c : composants.Lignes())
            std::cout << "    " << Utf8(c.Libelle) << "  " << Utf8(c.QuantiteTexte) << '\n';
    }

    TableauHote<VdxTroisChaines> classes(TroisChaines);
    if (ProduitClasse_Vdx(code, classes.Adresse()) > 0)
        for (VdxTroisChaines& c : classes.Lignes()) std::cout << "  class " << Utf8(c.Code) << ": " << Utf8(c.Texte) << '\n';

    TableauHote<VdxDeuxChaines> voies(DeuxChaines);
    if (ListeVoie_Vdx(code, voies.Adresse()) > 0) {
        std::cout << "  routes:";
        for (VdxDeuxChaines& v : voies.Lignes()) std::cout << ' ' << Utf8(v.Libelle) << " (" << Utf8(v.Code) << ")";
        std::cout << '\n';
    }
    return SortieSucces;
}

int Search(const ArgumentsCommande& args) {
    const std::string base = args.Base();
    const std::vector<std::string>& autres = args.Autres();
    if (base.empty() || autres.empty() || autres.size() > 2) return Usage(AideSearch);
    const std::optional<int32_t> nombre = autres.size() == 2 ? Nombre(autres[1]) : 20;
    if (!nombre || *nombre <= 0) return Usage(AideSearch);
    const Connexion connexion(base);
    if (connexion.code != 1) return EchecLibrairie("Connection2_Vdx", connexion.code);
    const std::string texte = codepage::DepuisUtf8(autres[0]).value_or(autres[0]);
    TableauHote<VdxTroisChaines> lignes(TroisChaines);
    const int32_t n = RechercheProduitParPas_Vdx(texte.c_str(), lignes.Adresse(), 0, "", *nombre);
    if (n < 0) return EchecLibrairie("RechercheProduitParPas_Vdx", n);
    for (VdxTroisChaines& l : lignes.Lignes()) std::cout << Utf8(l.Code) << "  " << Utf8(l.Libelle) << '\n';
    return SortieSucces;
}

// The criteria of a file, one a line: "champ@Operation@Code@qualifiant".
std::optional<std::vector<std::vector<std::string>>> LitCriteres(const std::string& chemin) {
    std::ifstream fichier(chemin);
    if (!fichier) return std::nullopt;
    std::vector<std::vector<std::string>> criteres;
    for (std::string ligne; std::getline(fichier, ligne);) {
        if (!ligne.empty() && ligne.back() == '\r') ligne.pop_back();
        if (ligne.empty() || ligne.starts_with('#')) continue;
        criteres.push_back(RangeesDuTexte(ligne, 4).front());
    }
    return criteres;
}

const Gabarit GabaritCritere = {TypeChamp::Entier, TypeChamp::Entier, TypeChamp::Texte, TypeChamp::Entier};

int SearchSet(const ArgumentsCommande& args) {
    const std::optional<Demande> d = LitDemande(args);
    if (!d || d->base.empty() || d->produits.empty()) return Usage(AideSearchSet);
    const Connexion connexion(d->base);
    if (connexion.code != 1) return EchecLibrairie("Connection2_Vdx", connexion.code);
    int32_t handle = 0;
    for (const std::string& chemin : d->produits) {
        const auto lus = LitCriteres(chemin);
        if (!lus) {
            std::cerr << "vdx: can't read " << chemin << '\n';
            FreeRecherche_Vdx(&handle);
            return SortieEchec;
        }
        TableauHote<VdxCritereRecherche> criteres(GabaritCritere);
        SAFEARRAY* t = *criteres.Adresse();
        if (!hote::Redimensionne(t, static_cast<uint32_t>(lus->size()))) throw std::bad_alloc();
        for (size_t i = 0; i < lus->size(); ++i) {
            const std::vector<std::string>& c = (*lus)[i];
            VdxCritereRecherche& e = criteres.Lignes()[i];
            e.champ = Nombre(c[0]).value_or(0);
            e.Operation = Nombre(c[1]).value_or(0);
            if (!hote::RangeOctets(&e.Code, codepage::DepuisUtf8(c[2]).value_or(c[2]))) throw std::bad_alloc();
            e.qualifiant = Nombre(c[3]).value_or(0);
        }
        std::cout << std::flush;  // before any message of the call
        const int32_t n = Recherche_Vdx(criteres.Adresse(), &handle, d->age, d->poids, d->sexe.c_str(), d->grossesse,
                                        d->allaitement);
        std::cout << chemin << ": " << n << '\n';
        if (n < 0 && handle == 0) return EchecLibrairie("Recherche_Vdx", n);
    }
    for (int32_t rang = 1;; ++rang) {
        ChaineHote code, libelle;
        const int32_t n = GetRecherche_Vdx(rang, code.Adresse(), libelle.Adresse(), &handle);
        if (n == CodeMalForme || n == Argument4) break;
        std::cout << rang << "  " << Utf8(code.Valeur()) << "  " << (n == 1 ? Utf8(libelle.Valeur()) : "(unknown product)")
                  << '\n';
    }
    FreeRecherche_Vdx(&handle);
    return SortieSucces;
}

// The base and the patient, as check and search-set take them.
const std::vector<Option> OptionsPatient = {{"--base", true},   {"--age", true},       {"--age-years", true},
                                            {"--weight", true}, {"--sex", true},       {"--pregnancy", true},
                                            {"--breastfeeding", false}};
std::vector<Option> Avec(std::vector<Option> options, std::initializer_list<Option> autres) {
    options.insert(options.end(), autres);
    return options;
}

}  // namespace

const Commande CommandeSearchSet{"search-set", AideSearchSet, OptionsPatient, SearchSet};
const Commande CommandeCheck{"check",
                             AideCheck,
                             Avec(OptionsPatient, {{"--pathology", true}, {"--level", true}, {"--json", false}, {"--html", true}}),
                             Check};
const Commande CommandeProduct{"product", AideProduct, {{"--base", true}}, Product};
const Commande CommandeSearch{"search", AideSearch, {{"--base", true}}, Search};
const Commande CommandeMonograph{"monograph", AideMonograph, {{"--css", true}}, Monograph};
const Commande CommandeNotice{"notice", AideNotice, {}, Notice};

}  // namespace vdx
