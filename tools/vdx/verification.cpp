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
#include "documents/annexes.h"
#include "products/codes.h"
#include "products/composition.h"
#include "session/entrees.h"
#include "session/texte.h"
#include "session/valeurs_hote.h"
#include "store/sources.h"
#include "tools/vdx/commandes.h"
#include "tools/vdx/consultation.h"
#include "vdx32/oleauto.h"
#include "vdx32/vdx32.h"

namespace vdx {
namespace {

constexpr char AideCheck[] =
    "usage: vdx check [--base BASE] CODE... [--age MONTHS | --age-years N] [--weight KG]\n"
    "                 [--sex M|F] [--pregnancy WEEKS] [--breastfeeding]\n"
    "                 [--pathology TYPE:CODE]... [--allergy TYPE:CODE]... [--level N]\n"
    "                 [--json] [--html DIR]\n"
    "\n"
    "Checks a prescription of products (CodeCIP) for one patient: prints the\n"
    "products, the interactions between them grouped by severity with their\n"
    "kind, risk and conduct, the products left out of the analysis because\n"
    "all their routes are local (skin, ear, nose, teeth and gums), what the\n"
    "patient should avoid outside the prescription (alcohol, grapefruit...),\n"
    "the contra-indications and precautions that apply to the patient, the\n"
    "products the patient's allergies forbid and the substances prescribed\n"
    "twice. A pathology is TYPE:CODE with TYPE term, cisp or cim10 (or 1, 2,\n"
    "3); an allergy term:CODE (an allergy term) or allergen:NUMBER (a\n"
    "substance, or above 30000 a chemical family). --level leaves out the\n"
    "interactions below that level (1 to 4). --json prints one JSON object.\n"
    "--html writes the reports (interactions.html, contre-indications.html,\n"
    "allergies.html, doublons.html, code page 1252) into DIR for a browser.\n"
    "Exit codes: 0 done, whatever was found; 1 a failure of the library; 2\n"
    "bad usage.\n";

constexpr char AideProduct[] =
    "usage: vdx product [--base BASE] CODE\n"
    "\n"
    "Shows a product of BASE (or VDX_BASE): label, laboratory, deletion, CIP13 and CIS codes, flags,\n"
    "status and restricted prescriptions, its prescription line by common name, price,\n"
    "composition, classes and routes.\n";

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
    "usage: vdx search [--base BASE] [--dci] TEXT [COUNT]\n"
    "\n"
    "Lists the products of BASE (or VDX_BASE) whose label begins with TEXT (20\n"
    "by default); with --dci, the prescription lines by common name.\n";

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
    Ordonnance ordonnance;
    bool json = false;
    std::string html;  // the directory of the reports, or empty
};

// The arguments of check, or nullopt on bad usage (told on stderr).
std::optional<Demande> LitDemande(const ArgumentsCommande& args) {
    Demande d;
    Ordonnance& o = d.ordonnance;
    d.base = args.Base();
    o.produits = args.Autres();
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
        // TYPE:CODE, or nullopt after telling what the option takes.
        const auto typeEtCode = [&](const char* types) -> std::optional<std::pair<std::string, std::string>> {
            const size_t deux = valeur.find(':');
            if (deux == std::string::npos || deux + 1 >= valeur.size()) {
                std::cerr << "vdx: " << a << " takes TYPE:CODE, TYPE " << types << '\n';
                return std::nullopt;
            }
            return std::pair{valeur.substr(0, deux), valeur.substr(deux + 1)};
        };
        if (a == "--age") {
            if (!entier(o.age)) return std::nullopt;
        } else if (a == "--age-years") {
            if (!entier(o.age, 12)) return std::nullopt;
        } else if (a == "--weight") {
            if (!entier(o.poids)) return std::nullopt;
        } else if (a == "--pregnancy") {
            if (!entier(o.grossesse)) return std::nullopt;
        } else if (a == "--level") {
            int32_t n = 0;
            if (!entier(n)) return std::nullopt;
            o.niveau = n;
        } else if (a == "--sex") {
            if (valeur != "M" && valeur != "F") {
                std::cerr << "vdx: --sex takes M or F\n";
                return std::nullopt;
            }
            o.sexe = valeur;
        } else if (a == "--pathology") {
            const auto tc = typeEtCode("term, cisp or cim10");
            const auto type = tc ? TypePathologie(tc->first) : std::nullopt;
            if (!type) {
                if (tc) std::cerr << "vdx: no pathology type " << tc->first << ": term, cisp or cim10\n";
                return std::nullopt;
            }
            o.pathologies.push_back({*type, tc->second});
        } else if (a == "--allergy") {
            const auto tc = typeEtCode("term or allergen");
            if (!tc) return std::nullopt;
            const auto allergene = Nombre(tc->second);
            if (tc->first == "term") {
                o.termesAllergie.push_back(tc->second);
            } else if (tc->first == "allergen" && allergene && *allergene > 0) {
                o.allergenes.push_back(*allergene);
            } else {
                std::cerr << "vdx: --allergy takes term:CODE or allergen:NUMBER\n";
                return std::nullopt;
            }
        } else if (a == "--breastfeeding") {
            o.allaitement = 1;
        } else if (a == "--json") {
            d.json = true;
        } else if (a == "--html") {
            d.html = valeur;
        }
    }
    if (d.base.empty() || o.produits.empty()) return std::nullopt;
    return d;
}

constexpr char BaseSansCouples[] =
    "la base ne contient aucun couple d'interactions : aucune interaction ne peut \xC3\xAAtre signal\xC3\xA9" "e";
constexpr char BaseSansTermes[] =
    "la base ne contient aucun terme de contre-indication : aucune ne peut \xC3\xAAtre signal\xC3\xA9" "e";

int Imprime(Constat& c) {
    const Couleurs couleurs;
    const auto titre = [&](const std::string& texte, size_t nombre) {
        std::cout << '\n' << couleurs.Gras() << texte << " (" << nombre << ")" << couleurs.Fin() << '\n';
        if (nombre == 0) std::cout << "  aucune\n";
    };
    std::cout << couleurs.Gras() << "Ordonnance" << couleurs.Fin() << '\n';
    for (const ProduitPrescrit& p : c.produits) std::cout << "  " << p.code << "  " << p.libelle << '\n';

    const auto imprimeLignes = [&](const char* texte, const std::vector<VdxInteraction2*>& lignes) {
        titre(texte, lignes.size());
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
    for (const ProduitPrescrit* p : c.nonAnalyses)
        std::cout << "  non analys\xC3\xA9, voie locale seule : " << p->code << "  " << p->libelle << '\n';
    imprimeLignes("\xC3\x80 \xC3\xA9viter en dehors de l'ordonnance", c.exterieures);

    const auto alertes = c.alertes.Lignes();
    titre("Contre-indications et pr\xC3\xA9" "cautions", alertes.size());
    if (c.sansTermes) std::cout << "  " << BaseSansTermes << '\n';
    for (VdxAlerteCI& a : alertes) {
        const bool precaution = a.NiveauAlerte == 3 || a.NiveauAlerte >= 30;
        std::cout << "  " << (precaution ? "pr\xC3\xA9" "caution         " : "contre-indication ") << Utf8(a.LibelleProduit)
                  << ": " << Utf8(a.LibelleTerme);
        if (SysStringByteLen(a.CodePatient)) std::cout << "  [" << Utf8(a.CodePatient) << "]";
        std::cout << "  (niveau " << a.NiveauAlerte << ")\n";
    }

    const auto allergies = c.allergies.Lignes();
    titre("Allergies", allergies.size());
    for (VdxFicheAllergie& a : allergies)
        std::cout << "  " << Utf8(a.LibelleProduit) << ": " << Utf8(a.TexteCause) << '\n';
    const auto doublons = c.doublons.Lignes();
    titre("Doublons", doublons.size());
    for (VdxFicheSurdosage& d : doublons) {
        const std::string commun = SysStringByteLen(d.LibelleCommune) ? Utf8(d.LibelleCommune)
                                   : SysStringByteLen(d.LibelleClasseCommune)
                                       ? Utf8(d.LibelleClasseCommune)
                                       : Utf8(d.LibelleSubstance1) + " / " + Utf8(d.LibelleSubstance2);
        std::cout << "  " << Utf8(d.Libelle1) << "  +  " << Utf8(d.Libelle2) << ": " << commun << '\n';
    }
    return SortieSucces;
}

int Check(const ArgumentsCommande& args) {
    const std::optional<Demande> d = LitDemande(args);
    if (!d) return Usage(AideCheck);
    const Connexion connexion(d->base);
    if (connexion.code != 1) return EchecLibrairie("Connection2_Vdx", connexion.code);
    Constat constat;
    if (const auto echec = Verifie(d->ordonnance, constat)) return EchecLibrairie(echec->appel.c_str(), echec->code);
    if (!d->html.empty())
        if (const auto echec = EcritRapports(d->ordonnance, d->html)) {
            std::cerr << "vdx: cannot write the reports into " << d->html << '\n';
            return EchecLibrairie(echec->appel.c_str(), echec->code);
        }
    if (d->json)
        std::cout << ConstatJson(constat) << '\n';
    else
        Imprime(constat);
    return SortieSucces;
}

int Product(const ArgumentsCommande& args) {
    const std::string base = args.Base();
    if (base.empty() || args.Autres().size() != 1) return Usage(AideProduct);
    const Connexion connexion(base);
    if (connexion.code != 1) return EchecLibrairie("Connection2_Vdx", connexion.code);
    EchecAppel echec;
    const std::optional<FicheProduit> f = LitFiche(args.Autres()[0], echec);
    if (!f) return EchecLibrairie(echec.appel.c_str(), echec.code);
    std::cout << f->code << "  " << f->libelle << '\n';
    if (!f->laboratoire.empty()) std::cout << "  laboratory: " << f->laboratoire << '\n';
    if (!f->supprimeLe.empty()) std::cout << "  deleted on " << f->supprimeLe << '\n';
    if (!f->cip13.empty()) std::cout << "  CIP13: " << f->cip13 << '\n';
    if (!f->cis.empty()) std::cout << "  CIS: " << f->cis << '\n';
    if (!f->codeLigne.empty()) std::cout << "  common-name line: " << f->codeLigne << "  " << f->libelleLigne << '\n';
    std::string drapeaux;
    for (const std::string& d : f->drapeaux) drapeaux += (drapeaux.empty() ? "" : ", ") + d;
    std::cout << "  flags: " << (drapeaux.empty() ? "none" : drapeaux) << '\n';
    if (!f->statut.empty()) std::cout << "  status: " << f->statut << '\n';
    for (const std::string& p : f->prescriptions) std::cout << "  prescription: " << p << '\n';
    if (f->prixCentimes)
        std::cout << "  price: " << *f->prixCentimes / 100 << '.' << (*f->prixCentimes % 100 < 10 ? "0" : "")
                  << *f->prixCentimes % 100 << ' ' << f->monnaie << ", reimbursed at " << *f->tauxRemboursement << " %\n";
    if (!f->composition.empty()) {
        std::cout << "  composition" << (f->exprimePour.empty() ? std::string() : " for " + f->exprimePour) << ":\n";
        for (const auto& c : f->composition) std::cout << "    " << c.libelle << "  " << c.quantite << '\n';
    }
    for (const auto& c : f->classes) std::cout << "  class " << c.code << ": " << c.libelle << '\n';
    for (const std::string& e : f->excipients) std::cout << "  excipient: " << e << '\n';
    if (!f->aspect.empty()) std::cout << "  appearance: " << f->aspect << '\n';
    if (!f->smr.empty()) std::cout << "  SMR: " << f->smr << '\n';
    if (!f->asmr.empty()) std::cout << "  ASMR: " << f->asmr << '\n';
    if (const char* secabilite = f->secabilite == 2 ? "in halves" : f->secabilite == 4 ? "in quarters" : f->secabilite == 1 ? "none" : nullptr)
        std::cout << "  scoring: " << secabilite << '\n';
    if (!f->voies.empty()) {
        std::cout << "  routes:";
        for (const auto& v : f->voies) std::cout << ' ' << v.libelle << " (" << v.code << ")";
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
    const bool dci = args.A("--dci");
    const int32_t n = dci ? RechercheMedDCParPas_Vdx(texte.c_str(), lignes.Adresse(), "", *nombre)
                          : RechercheProduitParPas_Vdx(texte.c_str(), lignes.Adresse(), 0, "", *nombre);
    if (n < 0) return EchecLibrairie(dci ? "RechercheMedDCParPas_Vdx" : "RechercheProduitParPas_Vdx", n);
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
    if (!d) return Usage(AideSearchSet);
    const Connexion connexion(d->base);
    if (connexion.code != 1) return EchecLibrairie("Connection2_Vdx", connexion.code);
    const Ordonnance& o = d->ordonnance;
    int32_t handle = 0;
    for (const std::string& chemin : d->ordonnance.produits) {
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
        const int32_t n = Recherche_Vdx(criteres.Adresse(), &handle, o.age, o.poids, o.sexe.c_str(), o.grossesse, o.allaitement);
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
                             Avec(OptionsPatient, {{"--pathology", true}, {"--allergy", true}, {"--level", true}, {"--json", false}, {"--html", true}}),
                             Check};
const Commande CommandeProduct{"product", AideProduct, {{"--base", true}}, Product};
const Commande CommandeSearch{"search", AideSearch, {{"--base", true}, {"--dci", false}}, Search};
const Commande CommandeMonograph{"monograph", AideMonograph, {{"--css", true}}, Monograph};
const Commande CommandeNotice{"notice", AideNotice, {}, Notice};

}  // namespace vdx
