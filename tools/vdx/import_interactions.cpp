// The interaction thesaurus as interaction tables: a class for each family
// of substances and for each substance that interacts in its own name
// (VDXZICLA), the base substances of each class (VDXZICLC), the couples in
// both orders (VDXZICOU), their severities (VDXZIGRA) and kinds (VDXZITYP).
#include <algorithm>
#include <optional>

#include "tools/vdx/import_base.h"
#include "tools/vdx/import_codes.h"
#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

constexpr char ReferenceThesaurus[] = "Thésaurus ANSM";

// --- Severities ---------------------------------------------------------------

struct Gravite {
    int code;
    int niveau;
    const char* libelle;
    const char* debut;        // the words that lead a description, folded
    const char* abreviation;  // in a description of combined levels
};
const Gravite Gravites[] = {
    {1, 4, "Contre-indication", "CONTRE-INDICATION", "CI"},
    {2, 3, "Association déconseillée", "ASSOCIATION DECONSEILLEE", "ASDEC"},
    {3, 2, "Précaution d'emploi", "PRECAUTION D'EMPLOI", "PE"},
    {4, 1, "A prendre en compte", "A PRENDRE EN COMPTE", "APEC"},
};

struct Severite {
    const Gravite* gravite = nullptr;  // the highest named
    bool combinee = false;
    std::string reste;  // the description behind the severity words
};

// "CONTRE-INDICATION Risque..." or "CI - ASDEC - APEC Contre-indication
// avec...": the highest level named, and the text behind the words.
std::optional<Severite> LitSeverite(const std::string& description) {
    const std::string plie = Plie(description);
    for (const Gravite& g : Gravites)
        if (Commence(plie, g.debut)) return Severite{&g, false, Nettoie(description.substr(std::string_view(g.debut).size()))};
    Severite s{nullptr, true, ""};
    size_t position = 0;
    for (;;) {
        const size_t fin = std::min(plie.find(' ', position), plie.size());
        const std::string mot = plie.substr(position, fin - position);
        const auto g = std::find_if(std::begin(Gravites), std::end(Gravites),
                                    [&](const Gravite& x) { return mot == x.abreviation; });
        if (g == std::end(Gravites)) break;
        if (!s.gravite || g->niveau > s.gravite->niveau) s.gravite = &*g;
        position = fin + 1;
        if (position >= plie.size()) break;
        if (plie.compare(position, 2, "- ") == 0) position += 2;
    }
    if (!s.gravite) return std::nullopt;
    s.reste = Nettoie(description.substr(std::min(position, description.size())));
    return s;
}

// The conduct to hold: the thesaurus's column of the level, else the
// description behind its severity words when it says more than the risk
// (the extraction often cuts a description that only repeats it).
// Combined levels keep their whole text.
std::string Conduite(const CoupleThesaurus& c, const Severite& s) {
    if (s.combinee) return s.reste;
    const std::string& colonne = c.conduites[s.gravite->code - 1];
    if (!colonne.empty()) return colonne;
    return Commence(c.mecanisme, s.reste) ? "" : s.reste;
}

// --- Kinds of interaction ------------------------------------------------------------------

struct Nature {
    int code;
    const char* mots;  // in the folded risk
    const char* texte;
};
// The first whose words the risk holds; the last is every other.
const Nature Natures[] = {
    {1, "HEMORRAG", "Risque hémorragique avec $1 et $2"},
    {2, "TORSADES DE POINTES", "Risque de troubles du rythme ventriculaire avec $1 et $2"},
    {3, "HYPERKALIEMIE", "Risque d'hyperkaliémie avec $1 et $2"},
    {4, "HYPOKALIEMIE", "Risque d'hypokaliémie avec $1 et $2"},
    {5, "DEPRESSION CENTRALE", "Majoration de la dépression centrale avec $1 et $2"},
    {6, "SEROTONINERGIQUE", "Risque de syndrome sérotoninergique avec $1 et $2"},
    {7, "EFFET ANTIHYPERTENSEUR", "Diminution de l'effet antihypertenseur avec $1 et $2"},
    {8, "HYPOTENSION", "Risque d'hypotension avec $1 et $2"},
    {9, "HYPERTENS", "Risque de poussée hypertensive avec $1 et $2"},
    {10, "BRADYCARDIE", "Risque de bradycardie avec $1 et $2"},
    {11, "RHABDOMYOLYSE", "Risque de rhabdomyolyse avec $1 et $2"},
    {12, "CONVULSI", "Risque de convulsions avec $1 et $2"},
    {13, "NEPHROTOX", "Risque néphrotoxique avec $1 et $2"},
    {14, "IMMUNODEPRESSION", "Majoration de l'immunodépression avec $1 et $2"},
    {15, "ATROPINIQUE", "Addition des effets atropiniques avec $1 et $2"},
    {16, "AUGMENTATION DES CONCENTRATIONS", "Augmentation des concentrations avec $1 et $2"},
    {17, "DIMINUTION DES CONCENTRATIONS", "Diminution des concentrations avec $1 et $2"},
    {18, "", "Interaction entre $1 et $2"},
};

const Nature& NatureDe(const std::string& mecanisme) {
    const std::string plie = Plie(mecanisme);
    for (const Nature& g : Natures)
        if (Contient(plie, g.mots)) return g;
    return Natures[std::size(Natures) - 1];
}

// --- Classes ------------------------------------------------------------------

// What a patient may take outside the prescription (a drink, a plant...).
const Exterieur* Exterieure(const std::string& protagoniste) {
    const auto e = SubstancesExterieures().find(protagoniste);
    return e == SubstancesExterieures().end() ? nullptr : &e->second;
}

// A protagonist a prescribed product can be of: no whole route, and
// nothing taken outside unless medicines hold it too.
bool Medicament(const std::string& protagoniste) {
    const Exterieur* e = Exterieure(protagoniste);
    return !FamilleDeVoie(protagoniste) && (!e || e->medicament);
}

// The class of what is taken outside, without member: its own name, or
// apart from the class of the medicines that hold it.
std::string ClasseExterieure(const std::string& protagoniste) {
    return Exterieure(protagoniste)->medicament ? protagoniste + " (HORS PRESCRIPTION)" : protagoniste;
}

struct Classes {
    std::map<std::string, int> codes;               // by name
    std::map<int, std::set<int>> membres;           // base substances by class
};

Classes Classe(const Thesaurus& t, const Substances& substances) {
    std::set<std::string> familles, propres, horsPrescription;
    std::map<std::string, std::set<std::string>> parFamille;
    for (const Appartenance& a : t.appartenances) {
        familles.insert(a.classe);
        parFamille[a.classe].insert(a.substance);
    }
    for (const CoupleThesaurus& c : t.couples)
        for (const std::string& p : {c.protagoniste1, c.protagoniste2}) {
            if (!familles.count(p)) propres.insert(p);
            if (Exterieure(p)) horsPrescription.insert(ClasseExterieure(p));
        }
    propres.insert(horsPrescription.begin(), horsPrescription.end());
    Classes k;
    // Families first, then the substances that interact in their own name.
    for (const auto* noms : {&familles, &propres})
        for (const std::string& nom : *noms) k.codes.emplace(nom, static_cast<int>(k.codes.size()) + 1);
    for (const auto& [nom, code] : k.codes) {
        std::set<int>& membres = k.membres[code];
        // What no medicine holds has no member, whatever its name resembles.
        if (!Medicament(nom) || horsPrescription.count(nom)) continue;
        const auto famille = parFamille.find(nom);
        if (famille == parFamille.end()) {
            membres = substances.index.Cherche(nom);
            if (membres.empty()) membres = substances.index.Cherche(NomSansVoie(nom));
            continue;
        }
        for (const std::string& s : famille->second) {
            const std::set<int> m = substances.index.Cherche(s);
            membres.insert(m.begin(), m.end());
        }
    }
    return k;
}

// The month and year of the edition, "2016-08" giving "août 2016".
std::string Edition(const std::string& anneeMois) {
    if (anneeMois.size() != 7 || anneeMois[4] != '-') return "";
    return MoisEnLettres(std::atoi(anneeMois.c_str() + 5), anneeMois.substr(0, 4));
}

constexpr size_t NomsProches = 3;

// The substances of the thesaurus found among those of the medicine
// database; what no medicine holds is not looked for there.
void Compte(const Thesaurus& t, const Substances& substances, RapportImport& rapport) {
    rapport.substancesThesaurus = 0;
    rapport.substancesTrouvees = 0;
    for (const std::string& nom : t.substances) {
        if (!Medicament(nom)) continue;
        ++rapport.substancesThesaurus;
        if (substances.index.Cherche(nom).empty())
            rapport.nomsSansSubstance.push_back({nom, substances.index.Proches(nom, NomsProches)});
        else
            ++rapport.substancesTrouvees;
    }
}

// Whether the words a couple's text names one side by ("L'AMPHOTERICINE B",
// "LES SELS D'OR", "LA RESINE") designate a protagonist: a word of four
// letters or more inside its name, a shorter one as a word of it.
bool Designe(const std::string& cote, const std::string& protagoniste) {
    static const std::set<std::string, std::less<>> Articles = {"LE", "LA", "LES", "L'", "DE", "D'", "DES", "DU",
                                                                "SELS", "SEL", "SEUL", "OU", "ASSOCIE", "ET"};
    const std::string nom = " " + Plie(protagoniste) + " ";
    std::string espace = cote;
    std::ranges::replace(espace, '\'', ' ');
    std::ranges::replace(espace, '(', ' ');
    std::ranges::replace(espace, ')', ' ');
    for (const std::string& mot : Decoupe(espace, ' ')) {
        if (mot.empty() || Articles.count(mot) || Articles.count(mot + "'")) continue;
        if (mot.size() >= 4 ? Contient(nom, mot) : Contient(nom, " " + mot + " ")) return true;
    }
    return false;
}

// Genre of a couple: a prescribed product against an outside substance,
// against every other product given by some routes.
constexpr int GenreExterieur = 1, GenreVoie = 2;

// A couple as written, from the side of ClasseA.
struct CoupleEcrit {
    int a = 0, b = 0;
    std::string voiesA, voiesB;
    int sens = 1;
    int genre = 0;
    std::string substancesB;
    const Gravite* gravite = nullptr;
    const Nature* nature = nullptr;
    std::string conduite;
    // The same couple from the other side.
    CoupleEcrit Inverse() const {
        CoupleEcrit i = *this;
        std::swap(i.a, i.b);
        std::swap(i.voiesA, i.voiesB);
        i.sens = sens == 1 ? 2 : 1;
        return i;
    }
};

// The substance numbers of what is taken outside: the lowest that no
// substance of the medicine database has, in the order of the names.
std::map<std::string, int> NumerosExterieurs(const Substances& substances) {
    const std::vector<int> libres = substances.Libres(SubstancesExterieures().size());
    std::map<std::string, int> numeros;
    for (const auto& [nom, exterieur] : SubstancesExterieures()) numeros.emplace(nom, libres[numeros.size()]);
    return numeros;
}

}  // namespace

void EcritInteractions(const Thesaurus& t, const Substances& substances, const Selection& selection,
                       const std::string& edition, Sortie& sortie, Journal& journal, RapportImport& rapport) {
    Compte(t, substances, rapport);
    const Classes classes = Classe(t, substances);
    auto touche = [&](int classe) {
        for (int s : classes.membres.at(classe))
            if (selection.substances.count(s)) return true;
        return false;
    };

    std::set<int> classesEcrites;
    std::map<std::pair<int, int>, int> numeros;
    auto ecritCouple = [&](const CoupleEcrit& e, const CoupleThesaurus& c) {
        sortie.Ajoute("VDXZICOU", {{"ClasseA", std::to_string(e.a)},
                                   {"ClasseB", std::to_string(e.b)},
                                   {"Numero", std::to_string(++numeros[{e.a, e.b}])},
                                   {"VoiesA", e.voiesA},
                                   {"VoiesB", e.voiesB},
                                   {"FiltreA", "T"},
                                   {"SubstancesB", e.substancesB},
                                   {"FiltreB", "T"},
                                   {"CodeType", std::to_string(e.nature->code)},
                                   {"Sens", std::to_string(e.sens)},
                                   {"CodeGravite", std::to_string(e.gravite->code)},
                                   {"Reference1", Texte(ReferenceThesaurus)},
                                   {"Reference2", Edition(edition)},
                                   {"Genre", std::to_string(e.genre)},
                                   {"Texte1", c.texteProduits},
                                   {"Texte2", c.mecanisme},
                                   {"Texte4", e.conduite}});
        classesEcrites.insert({e.a, e.b});
    };
    const std::map<std::string, int> exterieures = NumerosExterieurs(substances);
    std::set<std::string> exterieuresEcrites;
    size_t ligne = 1;
    for (const CoupleThesaurus& c : t.couples) {
        ++ligne;
        const auto s = LitSeverite(c.description);
        if (!s) {
            journal.Rejette("couples.tsv", ligne, "no severity at the head of the description");
            continue;
        }
        CoupleEcrit e;
        e.gravite = s->gravite;
        e.nature = &NatureDe(c.mecanisme);
        e.conduite = Conduite(c, *s);
        // Each side: a medicine, and taken outside or a whole route (St
        // John's wort is both).
        struct Cote {
            const std::string& nom;
            bool medicament, dehors;
        };
        const auto cote = [](const std::string& p) { return Cote{p, Medicament(p), Exterieure(p) || FamilleDeVoie(p)}; };
        const Cote c1 = cote(c.protagoniste1), c2 = cote(c.protagoniste2);
        const std::string& p1 = c1.nom;
        const std::string& p2 = c2.nom;
        if (!(c1.medicament && (c2.medicament || c2.dehors)) && !(c2.medicament && c1.dehors)) {
            journal.Rejette("couples.tsv", ligne, "no medicine on either side");
            continue;
        }
        if (c1.medicament && c2.medicament) {
            e.a = classes.codes.at(p1);
            e.b = classes.codes.at(p2);
            ++rapport.couplesMedicaments;
            if (!classes.membres.at(e.a).empty() && !classes.membres.at(e.b).empty()) ++rapport.couplesAvecProduits;
            if (touche(e.a) || touche(e.b)) {
                e.voiesA = FiltreVoies(p1);
                e.voiesB = FiltreVoies(p2);
                // A route the text gives one side ("Avec X par voie IV :").
                if (const auto v = VoiesDuTexteCouple(s->reste)) {
                    const bool cote1 = Designe(v->cote, p1), cote2 = Designe(v->cote, p2);
                    if (cote1 != cote2) (cote1 ? e.voiesA : e.voiesB) = v->voies;
                }
                ecritCouple(e, c);
                if (e.a != e.b) ecritCouple(e.Inverse(), c);
            }
        }
        // With what is taken outside or a whole route, one couple: the
        // medicine side alone against it, met by its routes when the
        // medicine names none.
        for (const auto& [medicament, dehors] : {std::pair{&c1, &c2}, std::pair{&c2, &c1}}) {
            if (!medicament->medicament || !dehors->dehors) continue;
            const std::string& autre = dehors->nom;
            CoupleEcrit x = e;
            x.a = classes.codes.at(medicament->nom);
            if (!touche(x.a)) continue;
            const auto famille = FamilleDeVoie(autre);
            x.b = classes.codes.at(famille ? autre : ClasseExterieure(autre));
            x.genre = famille ? GenreVoie : GenreExterieur;
            x.sens = 1;
            x.voiesB = famille ? *famille : Exterieure(autre)->voies;
            x.voiesA = VoiesNommees(medicament->nom).value_or(x.voiesB);
            if (!famille) {
                x.substancesB = std::to_string(exterieures.at(autre));
                exterieuresEcrites.insert(autre);
            }
            ecritCouple(x, c);
        }
    }
    for (const std::string& nom : exterieuresEcrites) {
        const std::string numero = std::to_string(exterieures.at(nom));
        sortie.Ajoute("VDXVPA", {{"CodeSubstance", numero},
                                 {"Libelle", SubstancesExterieures().at(nom).libelle},
                                 {"Interactions", "1"}});
        sortie.Ajoute("VDXWPEFI", {{"CodeParent", numero}, {"CodeEnfant", numero}});
    }
    for (const auto& [nom, code] : classes.codes) {
        if (!classesEcrites.count(code) && !touche(code)) continue;
        sortie.Ajoute("VDXZICLA", {{"CodeClasse", std::to_string(code)}, {"Libelle", nom}, {"ClasseActive", "1"}});
        for (int s : classes.membres.at(code))
            if (selection.substances.count(s))
                sortie.Ajoute("VDXZICLC", {{"CodeSubstance", std::to_string(s)},
                                           {"CodeSubstanceAssociee", "0"},
                                           {"CodeClasse", std::to_string(code)}});
    }
    // Every severity and kind, used or not: a couple never shows a code
    // without its label.
    for (const Gravite& g : Gravites)
        sortie.Ajoute("VDXZIGRA", {{"Code", std::to_string(g.code)},
                                   {"LibelleGravite", Texte(g.libelle)},
                                   {"Niveau", std::to_string(g.niveau)}});
    for (const Nature& g : Natures)
        sortie.Ajoute("VDXZITYP", {{"Code", std::to_string(g.code)}, {"TexteType", Texte(g.texte)}});
}

}  // namespace vdx::import
