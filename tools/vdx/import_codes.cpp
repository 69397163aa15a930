#include "tools/vdx/import_codes.h"

#include <utility>

#include "tools/vdx/import_lecture.h"
#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

// Routes of the published files, folded, and their codes. A route reaches
// the whole body ("A") unless it is laid on the skin, in the ear or the
// nose, or on the teeth and gums ("B"): the eye, the vagina, the rectum,
// the lungs, the skin through a patch and every injection, an
// infiltration or an epidural as much as a vein, are systemic. "A1" is
// digestive, "A2" injected, "A3" through the skin or the lungs, "A4" the
// eye, "A5" a mucosa.
const std::map<std::string, std::string, std::less<>> Voies = {
    {"ORALE", "A11"},
    {"SUBLINGUALE", "A12"},
    {"VOIE BUCCALE AUTRE", "A13"},
    {"GASTRO-ENTERALE", "A14"},
    {"GASTRIQUE", "A15"},
    {"INTESTINALE", "A16"},
    {"RECTALE", "A17"},
    {"INTRAVEINEUSE", "A21"},
    {"INTRAMUSCULAIRE", "A22"},
    {"SOUS-CUTANEE", "A23"},
    {"INTRA-ARTERIELLE", "A24"},
    {"INTRADERMIQUE", "A25"},
    {"INTRAPERITONEALE", "A26"},
    {"INTRA-OSSEUSE", "A27"},
    {"VOIE PARENTERALE AUTRE", "A28"},
    {"INTRACORONAIRE", "A29"},
    {"INTRA-ARTICULAIRE", "A2A"},
    {"PERIARTICULAIRE", "A2B"},
    {"INFILTRATION", "A2C"},
    {"INTRALESIONNELLE", "A2D"},
    {"PERIDURALE", "A2E"},
    {"INTRATHECALE", "A2F"},
    {"PERINEURALE", "A2G"},
    {"INTRAVENTRICULAIRE CEREBRALE", "A2H"},
    {"INTRACISTERNALE", "A2I"},
    {"INTRADURALE", "A2J"},
    {"INTRACAVERNEUSE", "A2K"},
    {"INTRACANALAIRE", "A2L"},
    {"INTRA-MURALE", "A2M"},
    {"PERITUMORALE", "A2N"},
    {"INTRATUMORALE", "A2O"},
    {"PERIOSSEUSE", "A2P"},
    {"PERI-AREOLAIRE", "A2Q"},
    {"INTRASEREUSE", "A2R"},
    {"INTRAPLEURALE", "A2S"},
    {"INTRAPERICARDIAQUE", "A2T"},
    {"INTRALYMPHATIQUE", "A2U"},
    {"INTRA CHOLANGIO-PANCREATIQUE", "A2V"},
    {"SOUS-MUQUEUSE", "A2W"},
    {"IMPLANTATION", "A2X"},
    {"TRANSDERMIQUE", "A31"},
    {"INHALEE", "A32"},
    {"ENDOTRACHEOBRONCHIQUE", "A33"},
    {"HEMODIALYSE", "A34"},
    {"HEMOFILTRATION", "A35"},
    {"VOIE EXTRACORPORELLE AUTRE", "A36"},
    {"OPHTALMIQUE", "A41"},
    {"INTRAVITREENNE", "A42"},
    {"INTRA-OCULAIRE", "A43"},
    {"INTRA-CAMERULAIRE", "A44"},
    {"PERIOCULAIRE", "A45"},
    {"PERIBULBAIRE", "A46"},
    {"VAGINALE", "A51"},
    {"URETRALE", "A52"},
    {"INTRAVESICALE", "A53"},
    {"INTRA-UTERINE", "A54"},
    {"ENDOCERVICALE", "A55"},
    {"CUTANEE", "B01"},
    {"EPILESIONNELLE", "B02"},
    {"NASALE", "B03"},
    {"AURICULAIRE", "B04"},
    {"DENTAIRE", "B05"},
    {"GINGIVALE", "B06"},
    {"BUCCOGINGIVALE", "B07"},
    {"OROPHARYNGEE", "B08"},
    {"ENDOSINUSALE", "B09"},
};

// The groups of every systemic route and of every local one.
constexpr char VoiesGenerales[] = "A", VoiesLocales[] = "B";

// Routes a thesaurus name restricts itself to, by the words it uses.
const std::vector<std::pair<std::string, std::string>> VoiesDuThesaurus = {
    {"VOIES ORALE ET/OU NASALE", "A1|B03"},
    {"VOIE IM ET IV", "A21|A22"},
    {"VOIE BUCCO-DENTAIRE OU SOUS-CUTANEE", "B05|B06|B07|A23"},
    {"PAR VOIE ORALE", "A1"},
    {"PAR VOIE INJECTABLE", "A2"},
    {"PAR VOIE VAGINALE", "A51"},
    {"TOPIQUES GASTRO-INTESTINAUX", "A1"},
};

// Routes that the text of a couple gives one side ("Avec l'amphotericine B
// administree par voie IV :"), by the words behind "par voie".
const std::map<std::string, std::string, std::less<>> VoiesDesTextes = {
    {"IV", "A21"},
    {"INTRAVEINEUSE", "A21"},
    {"ORALE", "A1"},
    {"ORALE ET RECTALE", "A1"},
    {"GENERALE ET GEL BUCCAL", "A|B06|B07|B08"},
};

struct Condition {
    const char* debut;  // folded
    int prescription;   // 0: none
    const char* tableau;
    bool hospitalier;
};
// Texts of the prescription and dispensing conditions, by their beginning.
const Condition Conditions[] = {
    {"LISTE I", 0, "A", false},
    {"LISTE II", 0, "C", false},
    {"STUPEFIANTS", 18, "B", false},
    {"RESERVE A L'USAGE HOSPITALIER", 1, "", true},
    {"PRESCRIPTION HOSPITALIERE", 2, "", false},
    {"PRESCRIPTION INITIALE HOSPITALIERE", 3, "", false},
    {"PRESCRIPTION RESERVEE AUX", 4, "", false},
    {"PRESCRIPTION INITIALE RESERVEE", 4, "", false},
    {"PRESCRIPTION INITIALE ANNUELLE RESERVEE", 4, "", false},
    {"MEDICAMENT NECESSITANT UNE SURVEILLANCE PARTICULIERE", 5, "", false},
    {"PRESCRIPTION LIMITEE", 6, "", false},
    {"DELIVRANCE FRACTIONNEE", 7, "", false},
};

constexpr char Alphanumerique[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

}  // namespace

std::string Texte(std::string_view utf8) { return VersCp1252(utf8); }

std::string MoisEnLettres(int mois, std::string_view annee) {
    static const char* const Mois[] = {"janvier", "février", "mars",      "avril",   "mai",      "juin",
                                       "juillet", "août",    "septembre", "octobre", "novembre", "décembre"};
    if (mois < 1 || mois > 12) return "";
    return Texte(std::string(Mois[mois - 1]) + " " + std::string(annee));
}

std::optional<std::string> CodeVoie(std::string_view routePliee) {
    const auto v = Voies.find(routePliee);
    if (v == Voies.end()) return std::nullopt;
    return v->second;
}

std::map<std::string, std::string> GroupesVoies() {
    return {{VoiesGenerales, Texte("voie générale")},
            {"A1", Texte("voie digestive")},
            {"A2", Texte("voie injectable")},
            {"A3", Texte("voie transdermique ou inhalée")},
            {"A4", Texte("voie ophtalmique")},
            {"A5", Texte("voie muqueuse")},
            {VoiesLocales, Texte("voie locale")}};
}

std::optional<std::string> VoiesNommees(std::string_view protagoniste) {
    const std::string nom = Plie(protagoniste);
    for (const auto& [mots, filtre] : VoiesDuThesaurus)
        if (Contient(nom, mots)) return filtre;
    return std::nullopt;
}

std::string FiltreVoies(std::string_view protagoniste) { return VoiesNommees(protagoniste).value_or(VoiesGenerales); }

std::optional<std::string> FamilleDeVoie(std::string_view protagoniste) {
    if (!Commence(Plie(protagoniste), "MEDICAMENTS ")) return std::nullopt;
    return VoiesNommees(protagoniste);
}

std::optional<VoiesDuTexte> VoiesDuTexteCouple(std::string_view texte) {
    const std::string plie = Plie(texte);
    // The clause "Avec ... par voie ... :" that leads the text; a text cut
    // before its colon restricts nothing.
    if (!Commence(plie, "AVEC ")) return std::nullopt;
    const size_t deuxPoints = plie.find(':');
    const size_t parVoie = plie.find(" PAR VOIE ");
    if (deuxPoints == std::string::npos || parVoie == std::string::npos || parVoie > deuxPoints) return std::nullopt;
    const auto voies = VoiesDesTextes.find(Nettoie(plie.substr(parVoie + 10, deuxPoints - parVoie - 10)));
    if (voies == VoiesDesTextes.end()) return std::nullopt;
    std::string cote = plie.substr(5, parVoie - 5);
    for (const char* administre : {" ADMINISTREE", " ADMINISTRES", " ADMINISTRE"})
        if (const size_t a = cote.find(administre); a != std::string::npos) cote.resize(a);
    return VoiesDuTexte{Nettoie(cote), voies->second};
}

std::string NomSansVoie(std::string_view protagoniste) {
    std::string nom = Plie(protagoniste);
    if (const size_t voie = nom.find(" PAR VOIE "); voie != std::string::npos) nom.resize(voie);
    for (const char* sels : {"SELS DE ", "SEL DE "})
        if (Commence(nom, sels)) nom.erase(0, std::string_view(sels).size());
    return nom;
}

const std::map<std::string, Exterieur>& SubstancesExterieures() {
    static const std::map<std::string, Exterieur> exterieures = {
        {"ALCOOL (BOISSON OU EXCIPIENT)", {Texte("Alcool (boisson ou excipient)"), VoiesGenerales}},
        {"MILLEPERTUIS", {Texte("Millepertuis"), VoiesGenerales, true}},
        {"PAMPLEMOUSSE (JUS ET FRUIT)", {Texte("Pamplemousse (jus et fruit)"), VoiesGenerales}},
        // What is laid on the skin or a mucosa, or put in the vagina or the rectum.
        {"PRESERVATIFS EN LATEX", {Texte("Préservatifs en latex"), std::string(VoiesLocales) + "|A51|A17"}},
        {"THEINE", {Texte("Théine"), VoiesGenerales}},
    };
    return exterieures;
}

std::optional<Taux> TauxRemboursement(const std::vector<std::string>& taux) {
    std::optional<Taux> plusHaut;
    for (const std::string& t : taux) {
        std::string chiffres = t;
        std::erase(chiffres, '%');
        const auto valeur = Nombre(chiffres);
        if (!valeur) continue;
        for (const Taux& connu : TousLesTaux())
            if (connu.taux == *valeur && (!plusHaut || plusHaut->taux < *valeur)) plusHaut = connu;
    }
    return plusHaut;
}

std::vector<Taux> TousLesTaux() { return {{"1", 100}, {"2", 65}, {"3", 30}, {"4", 15}}; }

Taux TvaDe(bool rembourse) { return ToutesLesTva()[rembourse ? 0 : 1]; }
std::vector<Taux> ToutesLesTva() { return {{"1", 2.1}, {"2", 10}}; }

Reglementation Reglemente(const std::vector<std::string>& conditions) {
    Reglementation r;
    for (const std::string& texte : conditions) {
        const std::string plie = Plie(texte);
        const Condition* retenue = nullptr;
        // The longest beginning wins: "LISTE II" over "LISTE I".
        for (const Condition& c : Conditions)
            if (Commence(plie, c.debut) && (!retenue || std::string_view(c.debut).size() > std::string_view(retenue->debut).size()))
                retenue = &c;
        if (!retenue) continue;
        // A narcotic stays one whatever list is named beside it.
        if (*retenue->tableau && r.codeTableau != "B") r.codeTableau = retenue->tableau;
        r.hospitalier = r.hospitalier || retenue->hospitalier;
        if (retenue->prescription) r.prescriptions.insert(retenue->prescription);
    }
    return r;
}

std::vector<PrescriptionRestreinte> PrescriptionsRestreintes() {
    return {{1, Texte("Réservé à l'usage hospitalier"), Texte("Prescription et délivrance réservées aux établissements de santé")},
            {2, Texte("Prescription hospitalière"), Texte("Prescription réservée aux médecins exerçant en établissement de santé")},
            {3, Texte("Prescription initiale hospitalière"), Texte("Première prescription par un médecin hospitalier, renouvellement en ville")},
            {4, Texte("Prescription réservée à certains spécialistes"), Texte("Prescription, ou prescription initiale, réservée à certains spécialistes")},
            {5, Texte("Surveillance particulière"), Texte("Médicament nécessitant une surveillance particulière pendant le traitement")},
            {6, Texte("Prescription limitée"), Texte("Durée de prescription limitée")},
            {7, Texte("Délivrance fractionnée"), Texte("Délivrance fractionnée")},
            {18, Texte("Stupéfiant"), Texte("Prescription sur ordonnance sécurisée, en toutes lettres")}};
}

std::map<std::string, std::string> Listes() {
    return {{"A", Texte("Liste I")}, {"B", Texte("Stupéfiants")}, {"C", Texte("Liste II")}};
}

std::map<std::string, std::string> CodesLaboratoires(const std::set<std::string>& noms) {
    std::map<std::string, std::string> codes;
    std::set<std::string> pris;
    for (const std::string& nom : noms) {
        std::string lettres;
        for (char c : Plie(nom))
            if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) lettres += c;
        lettres.resize(std::max<size_t>(lettres.size(), 4), 'X');
        std::string code = lettres.substr(0, 4);
        // Taken: the fourth character, then the last two, run through the
        // digits and letters.
        for (size_t k = 0; pris.count(code) && k < 36 * 37; ++k)
            code = k < 36 ? lettres.substr(0, 3) + Alphanumerique[k]
                          : lettres.substr(0, 2) + Alphanumerique[(k - 36) / 36] + Alphanumerique[(k - 36) % 36];
        pris.insert(code);
        codes[nom] = code;
    }
    return codes;
}

const std::vector<std::string>& FamillesChimiques() {
    static const std::vector<std::string> familles = {
        "PENICILLINES",
        "CYCLINES",
        "FLUOROQUINOLONES",
        "MACROLIDES (SAUF SPIRAMYCINE)",
        "SULFAMIDES ANTIBACTERIENS",
        "ANTI-INFLAMMATOIRES NON STEROIDIENS",
    };
    return familles;
}

const std::vector<std::string>& ClassesARisque() {
    static const std::vector<std::string> classes = {
        "ANTI-INFLAMMATOIRES NON STEROIDIENS",
        "ANTIVITAMINES K",
        "BENZODIAZEPINES ET APPARENTES",
        "ANALGESIQUES MORPHINIQUES AGONISTES",
        "INHIBITEURS DE L'ENZYME DE CONVERSION",
        "ANTAGONISTES DES RECEPTEURS DE L'ANGIOTENSINE II",
    };
    return classes;
}

const std::vector<CategorieCanicule>& CategoriesCanicule() {
    static const std::vector<CategorieCanicule> categories = {
        {"D", Texte("Diurétiques"), {"DIURETIQUES"}},
        {"R", Texte("Médicaments susceptibles d'altérer la fonction rénale"),
         {"ANTI-INFLAMMATOIRES NON STEROIDIENS", "INHIBITEURS DE L'ENZYME DE CONVERSION",
          "ANTAGONISTES DES RECEPTEURS DE L'ANGIOTENSINE II"}},
        {"T", Texte("Médicaments pouvant altérer la thermorégulation"), {"NEUROLEPTIQUES", "MEDICAMENTS ATROPINIQUES"}},
    };
    return categories;
}

std::optional<UniteDosage> UniteDeDosage(std::string_view pliee) {
    static const std::map<std::string, UniteDosage, std::less<>> unites = {
        {"MG", {"mg", "mg"}},
        {"G", {"g", "g"}},
        {"MICROGRAMMES", {"microgramme", "microgrammes"}},
        {"MICROGRAMME", {"microgramme", "microgrammes"}},
        {"UI", {"UI", "UI"}},
    };
    const auto u = unites.find(pliee);
    if (u == unites.end()) return std::nullopt;
    return u->second;
}

std::vector<MotPosologie> PeriodesPosologie() {
    return {{10, "minute"}, {20, "heure"}, {30, Texte("demi-journée")}, {40, "jour"},
            {50, "semaine"},  {60, "mois"},  {70, "an"}};
}

std::vector<FacteurPeriodes> FacteursPeriodes() {
    // Lengths in days: a month of 30 days, a year of 365; but a year holds
    // 12 months.
    const std::map<int, double> jours = {{10, 1.0 / 1440}, {20, 1.0 / 24}, {30, 0.5}, {40, 1},
                                         {50, 7},          {60, 30},       {70, 365}};
    constexpr int Mois = 60, An = 70;
    std::vector<FacteurPeriodes> facteurs;
    for (const auto& [de, longueurDe] : jours)
        for (const auto& [vers, longueurVers] : jours) {
            double f = longueurVers / longueurDe;
            if (de == Mois && vers == An) f = 12;
            if (de == An && vers == Mois) f = 1.0 / 12;
            facteurs.push_back({de, vers, f});
        }
    return facteurs;
}

std::vector<MomentPosologie> MomentsPosologie() {
    return {{1, "le matin", 0},          {2, "le midi", 0},
            {3, "le soir", 0},           {4, "au coucher", 0},
            {5, "matin et soir", 2},     {6, "matin, midi et soir", 3}};
}

std::vector<MotPosologie> SpecificationsPosologie() {
    return {{1, Texte("à jeun")},
            {2, "au cours du repas"},
            {3, "en dehors des repas"},
            {4, "avec un grand verre d'eau"},
            {5, Texte("à laisser fondre sous la langue")}};
}

std::vector<MotPosologie> NaturesPosologie() {
    return {{1, "d'attaque"}, {2, "d'entretien"}, {3, "curatif"}, {4, Texte("préventif")}};
}

std::vector<ProfilPosologie> ProfilsPosologie() {
    return {{1, Texte("Clairance de la créatinine de 30 à 60 ml/min"), 1, "30-60"},
            {2, Texte("Clairance de la créatinine de 10 à 30 ml/min"), 1, "10-30"},
            {3, Texte("Insuffisance hépatique"), 2, "HEPATIQUE"}};
}

}  // namespace vdx::import
