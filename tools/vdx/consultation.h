// What the prescriber's commands and the service ask of the library: a
// connection, a product's sheet, the check of a prescription and its
// reports. Array mode, through the host types, as any host does; one place
// for each question, so that vdx check --json and the service answer the
// same.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "checks/allergies.h"
#include "checks/contreindications.h"
#include "checks/interactions.h"
#include "checks/surdosage.h"
#include "session/valeurs_hote.h"
#include "vdx32/vdx32.h"

namespace vdx {

// The text of a host string the library filled in an 8-bit session, in UTF-8.
std::string Utf8(BSTR b);
// The shapes of records of two and three strings.
extern const Gabarit DeuxChaines, TroisChaines;

// A host array of strings given in UTF-8, 8-bit.
EntreeHote Chaines(const std::vector<std::string>& utf8);

// A connection in array mode with the library's message boxes silenced,
// closed on every way out.
struct Connexion {
    int32_t code;
    explicit Connexion(const std::string& base);
    ~Connexion();
    Connexion(const Connexion&) = delete;
    Connexion& operator=(const Connexion&) = delete;
};

// The first export that failed, with its return code.
struct EchecAppel {
    std::string appel;
    int32_t code;
};

// A patient's pathology or allergy as the checks take it: a pathology's
// type is 1 a term, 2 a CISP code, 3 a CIM10 code.
struct CodePatient {
    int32_t type;
    std::string code;
};

// The type of a pathology named "term", "cisp" or "cim10" (or 1, 2, 3).
std::optional<int32_t> TypePathologie(std::string_view type);

// A prescription for one patient, every text in UTF-8.
struct Ordonnance {
    std::vector<std::string> produits;
    std::vector<CodePatient> pathologies;
    std::vector<std::string> termesAllergie;  // allergy terms
    std::vector<int32_t> allergenes;           // substances and concepts
    int32_t age = 0, poids = 0, grossesse = 0, allaitement = 0;  // months, kg, weeks
    std::string sexe;                                            // "M", "F" or empty
    std::optional<int32_t> niveau;  // the lowest interaction level shown
};

struct ProduitPrescrit {
    std::string code, libelle;
    // All its routes local (skin, ear, nose, teeth and gums): the
    // interaction analysis leaves it out unless a couple names its route.
    bool local = false;
};

// The label the check gives a code that no product has.
inline constexpr char ProduitInconnu[] = "(produit inconnu)";

// What the check of a prescription found.
struct Constat {
    std::vector<ProduitPrescrit> produits;
    TableauHote<VdxInteraction2> lignes{GabaritDe<FicheInteraction2>()};
    TableauHote<VdxAlerteCI> alertes{GabaritDe<AlerteCI>()};
    TableauHote<VdxFicheAllergie> allergies{GabaritDe<FicheAllergie>()};
    TableauHote<VdxFicheSurdosage> doublons{GabaritDe<FicheSurdosage>()};
    // The rows between prescribed products, then those with what the
    // patient should avoid outside the prescription.
    std::vector<VdxInteraction2*> interactions, exterieures;
    // The products the route rule leaves out, of which no row speaks.
    std::vector<const ProduitPrescrit*> nonAnalyses;
    // A base without couples or without terms can find none: it is said,
    // never taken for a prescription without risk.
    bool sansCouples = false, sansTermes = false;
};

// Checks a prescription: interactions (at the prescription's level, the
// session's own level back afterwards), contra-indications and
// precautions, allergies, duplicated substances. The first failure, or
// nullopt with `constat` filled.
std::optional<EchecAppel> Verifie(const Ordonnance& ordonnance, Constat& constat);

// The reports of the same check as pages (code page 1252) in `dossier`,
// each in the file Rapports names.
std::optional<EchecAppel> EcritRapports(const Ordonnance& ordonnance, const std::string& dossier);
struct Rapport {
    const char* fichier;
    const char* nom;  // its name in the service's answer
};
inline constexpr Rapport Rapports[] = {{"interactions.html", "interactions"},
                                       {"contre-indications.html", "contraindications"},
                                       {"allergies.html", "allergies"},
                                       {"doublons.html", "duplicates"}};

// The check as one JSON object (UTF-8), as vdx check --json prints it.
std::string ConstatJson(Constat& constat);

// A product as vdx product and the service show it; every text in UTF-8,
// empty when the base doesn't know it.
struct FicheProduit {
    std::string code, libelle, cip13, cis, supprimeLe, laboratoire, statut;
    std::vector<std::string> prescriptions;  // restricted prescriptions
    std::vector<std::string> drapeaux;       // "generic", "reference", "hospital", "doping", "narcotic"
    std::string exprimePour;                 // what the composition is expressed for
    struct Composant {
        std::string libelle, quantite;
    };
    std::vector<Composant> composition;
    struct Classe {
        std::string code, libelle;
    };
    std::vector<Classe> classes;
    std::vector<Classe> voies;  // routes: code and label
    // What it costs, when the base knows: the price in cents, the rates.
    std::optional<int64_t> prixCentimes;
    std::string monnaie;
    std::optional<double> tauxRemboursement, tauxTVA;
    // Its prescription line by common name, when it has one.
    std::string codeLigne, libelleLigne;
    // The latest SMR and ASMR: "level (date, reason)", empty when none.
    std::string smr, asmr;
    // How its unit splits: 2 halves, 4 quarters, 1 whole only, 0 untold.
    int32_t secabilite = 0;
    // Its excipients ("label (quantity)", with known effect marked) and
    // the appearance of its unit ("shape, colour, marks, scoring").
    std::vector<std::string> excipients;
    std::string aspect;
};

// The sheet of a product: nullopt and `echec` set when the label can't be
// had (-90 an unknown product) or a lookup fails (a code below 0 other
// than -90, which is a fact the product lacks).
std::optional<FicheProduit> LitFiche(const std::string& code, EchecAppel& echec);

}  // namespace vdx
