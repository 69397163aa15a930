#include "tools/vdx/import_codes.h"

#include <utility>

#include "tools/vdx/import_lecture.h"
#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

// Routes of the published files, folded, and their codes.
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
    {"TRANSDERMIQUE", "A31"},
    {"INHALEE", "A32"},
    {"ENDOTRACHEOBRONCHIQUE", "A33"},
    {"HEMODIALYSE", "A34"},
    {"HEMOFILTRATION", "A35"},
    {"VOIE EXTRACORPORELLE AUTRE", "A36"},
    {"CUTANEE", "B01"},
    {"OPHTALMIQUE", "B02"},
    {"NASALE", "B03"},
    {"AURICULAIRE", "B04"},
    {"DENTAIRE", "B05"},
    {"GINGIVALE", "B06"},
    {"BUCCOGINGIVALE", "B07"},
    {"OROPHARYNGEE", "B08"},
    {"VAGINALE", "B09"},
    {"URETRALE", "B10"},
    {"INTRAVESICALE", "B11"},
    {"INTRA-UTERINE", "B12"},
    {"ENDOCERVICALE", "B13"},
    {"INTRA-ARTICULAIRE", "B14"},
    {"PERIARTICULAIRE", "B15"},
    {"INFILTRATION", "B16"},
    {"INTRALESIONNELLE", "B17"},
    {"EPILESIONNELLE", "B18"},
    {"PERIDURALE", "B19"},
    {"INTRATHECALE", "B20"},
    {"PERINEURALE", "B21"},
    {"INTRAVENTRICULAIRE CEREBRALE", "B22"},
    {"INTRACISTERNALE", "B23"},
    {"INTRADURALE", "B24"},
    {"INTRAVITREENNE", "B25"},
    {"INTRA-OCULAIRE", "B26"},
    {"INTRA-CAMERULAIRE", "B27"},
    {"PERIOCULAIRE", "B28"},
    {"PERIBULBAIRE", "B29"},
    {"ENDOSINUSALE", "B30"},
    {"INTRACAVERNEUSE", "B31"},
    {"INTRACANALAIRE", "B32"},
    {"INTRA-MURALE", "B33"},
    {"PERITUMORALE", "B34"},
    {"INTRATUMORALE", "B35"},
    {"PERIOSSEUSE", "B36"},
    {"PERI-AREOLAIRE", "B37"},
    {"INTRASEREUSE", "B38"},
    {"INTRAPLEURALE", "B39"},
    {"INTRAPERICARDIAQUE", "B40"},
    {"INTRALYMPHATIQUE", "B41"},
    {"INTRA CHOLANGIO-PANCREATIQUE", "B42"},
    {"IMPLANTATION", "B43"},
    {"SOUS-MUQUEUSE", "B44"},
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
    {"PAR VOIE VAGINALE", "B09"},
    {"TOPIQUES GASTRO-INTESTINAUX", "A1"},
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
        {"MILLEPERTUIS", {Texte("Millepertuis"), VoiesGenerales}},
        {"PAMPLEMOUSSE (JUS ET FRUIT)", {Texte("Pamplemousse (jus et fruit)"), VoiesGenerales}},
        {"PRESERVATIFS EN LATEX", {Texte("Préservatifs en latex"), VoiesLocales}},
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

}  // namespace vdx::import
