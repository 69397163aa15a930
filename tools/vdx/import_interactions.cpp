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

// A protagonist a prescribed product can be of: neither taken outside nor a
// whole route.
bool Medicament(const std::string& protagoniste) {
    return !SubstancesExterieures().count(protagoniste) && !FamilleDeVoie(protagoniste);
}

struct Classes {
    std::map<std::string, int> codes;               // by name
    std::map<int, std::set<int>> membres;           // base substances by class
};

Classes Classe(const Thesaurus& t, const Substances& substances) {
    std::set<std::string> familles, propres;
    std::map<std::string, std::set<std::string>> parFamille;
    for (const Appartenance& a : t.appartenances) {
        familles.insert(a.classe);
        parFamille[a.classe].insert(a.substance);
    }
    for (const CoupleThesaurus& c : t.couples)
        for (const std::string& p : {c.protagoniste1, c.protagoniste2})
            if (!familles.count(p)) propres.insert(p);
    Classes k;
    // Families first, then the substances that interact in their own name.
    for (const auto* noms : {&familles, &propres})
        for (const std::string& nom : *noms) k.codes.emplace(nom, static_cast<int>(k.codes.size()) + 1);
    for (const auto& [nom, code] : k.codes) {
        std::set<int>& membres = k.membres[code];
        // What no medicine holds has no member, whatever its name resembles.
        if (!Medicament(nom)) continue;
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

// The substances of the thesaurus found among those of the medicine
// database; what no medicine holds is not looked for there.
void Compte(const Thesaurus& t, const Substances& substances, RapportImport& rapport) {
    rapport.substancesThesaurus = 0;
    rapport.substancesTrouvees = 0;
    for (const std::string& nom : t.substances) {
        if (!Medicament(nom)) continue;
        ++rapport.substancesThesaurus;
        if (substances.index.Cherche(nom).empty())
            rapport.nomsSansSubstance.push_back(nom);
        else
            ++rapport.substancesTrouvees;
    }
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
        const bool autre1 = !Medicament(c.protagoniste1), autre2 = !Medicament(c.protagoniste2);
        if (autre1 && autre2) {
            journal.Rejette("couples.tsv", ligne, "no medicine on either side");
            continue;
        }
        if (!autre1 && !autre2) {
            e.a = classes.codes.at(c.protagoniste1);
            e.b = classes.codes.at(c.protagoniste2);
            if (!touche(e.a) && !touche(e.b)) continue;
            e.voiesA = FiltreVoies(c.protagoniste1);
            e.voiesB = FiltreVoies(c.protagoniste2);
            ecritCouple(e, c);
            if (e.a != e.b) ecritCouple(e.Inverse(), c);
            continue;
        }
        // With what no medicine holds, one couple: the medicine side alone
        // against it, met by its routes when the medicine names none.
        const std::string& medicament = autre1 ? c.protagoniste2 : c.protagoniste1;
        const std::string& autre = autre1 ? c.protagoniste1 : c.protagoniste2;
        e.a = classes.codes.at(medicament);
        e.b = classes.codes.at(autre);
        if (!touche(e.a)) continue;
        const auto famille = FamilleDeVoie(autre);
        e.genre = famille ? GenreVoie : GenreExterieur;
        e.voiesB = famille ? *famille : SubstancesExterieures().at(autre).voies;
        e.voiesA = VoiesNommees(medicament).value_or(e.voiesB);
        if (!famille) {
            e.substancesB = std::to_string(exterieures.at(autre));
            exterieuresEcrites.insert(autre);
        }
        ecritCouple(e, c);
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
