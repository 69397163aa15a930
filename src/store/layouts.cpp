#include "store/layouts.h"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "store/fiche.h"
#include "store/layouts/construction.h"

namespace vdx {
namespace disposition {

PartieCle P(Champ champ, Pli pli, char bourrage) {
    const uint16_t longueur = champ.nature == NatureChamp::Texte && !champ.plein
                                  ? static_cast<uint16_t>(champ.largeur - 1)
                                  : champ.largeur;
    return {champ, longueur, pli, bourrage};
}

PartieCle P(Champ champ, uint16_t longueur, Pli pli, char bourrage) { return {champ, longueur, pli, bourrage}; }

Cle Sur(std::vector<PartieCle> parties) {
    uint16_t longueur = 0;
    for (const PartieCle& p : parties) longueur = static_cast<uint16_t>(longueur + p.longueur);
    return Sur(longueur, std::move(parties));
}

Cle Sur(uint16_t longueur, std::vector<PartieCle> parties) { return Cle{longueur, std::move(parties), {}, false}; }

Cle Unique(Cle cle, ChampTexte libelle) {
    cle.unicite = RegleUnicite{static_cast<uint16_t>(cle.longueur - 1), libelle};
    return cle;
}

Cle Facultative(Cle cle) {
    cle.facultative = true;
    return cle;
}

namespace {

const Table& TableDe(const char* nom) {
    const Table* table = TableNommee(nom);
    if (table == nullptr) throw std::logic_error(std::string("disposition d'une table hors du catalogue : ") + nom);
    return *table;
}

bool AvecCleSupplementaire(const char* table) { return TableDe(table).clesSupplementaires > 0; }

// A code key, and a label key when the catalogue gives the table one.
std::vector<Cle> CodeEtLibelle(const char* table, Cle code, Cle libelle) {
    std::vector<Cle> cles{std::move(code)};
    if (AvecCleSupplementaire(table)) cles.push_back(std::move(libelle));
    return cles;
}

// Two codes, and the other order when the catalogue gives a further key.
std::vector<Cle> DansLesDeuxSens(const char* table, PartieCle a, PartieCle b) {
    std::vector<Cle> cles{Sur({a, b})};
    if (AvecCleSupplementaire(table)) cles.push_back(Sur({b, a}));
    return cles;
}

}  // namespace

Disposition Fixe(const char* table, uint32_t longueur, std::vector<Champ> champs, std::vector<Cle> cles) {
    std::stable_sort(champs.begin(), champs.end(),
                     [](const Champ& a, const Champ& b) { return a.decalage < b.decalage; });
    Disposition d;
    d.table = &TableDe(table);
    d.longueur = longueur;
    d.champs = std::move(champs);
    d.cles = std::move(cles);
    return d;
}

Disposition Mot(const char* table) {
    using namespace ModeleMot;
    return Fixe(table, Longueur, {Code, Libelle, LibellePluriel}, {Sur({P(Code)})});
}

Disposition CodeLibelle(const char* table) {
    using namespace ModeleCodeLibelle;
    return Fixe(table, Longueur, {Code, Libelle}, {Sur({P(Code)})});
}

Disposition Classe(const char* table) {
    using namespace ModeleClasse;
    return Fixe(table, Longueur, {CodeClasse, Libelle, LibelleCle},
                CodeEtLibelle(table, Sur({P(CodeClasse)}),
                              Sur({P(LibelleCle, LongueurCleLibelle, Pli::Majuscules)})));
}

Disposition ClasseProduit(const char* table) {
    using namespace ModeleClasseProduit;
    return Fixe(table, Longueur, {CodeClasse, CodeCIP}, DansLesDeuxSens(table, P(CodeClasse, Pli::Brut, ' '), P(CodeCIP)));
}

Disposition SubstanceProduit(const char* table) {
    using namespace ModeleSubstanceProduit;
    return Fixe(table, Longueur, {CodeSubstance, CodeCIP}, {Sur(16, {P(CodeSubstance, 5), P(CodeCIP)})});
}

Disposition Vocabulaire(const char* table) {
    using namespace ModeleVocabulaire;
    // The label part takes the whole field, its NUL included, so that the
    // code behind it never prolongs the label. The folded label is folded
    // again for the key, so that a source that gives it as shown still
    // files it where the searches look.
    return Fixe(table, Longueur, {Code, Libelle, LibelleCle},
                CodeEtLibelle(table, Sur({P(Code)}),
                              Sur({P(LibelleCle, LibelleCle.largeur, Pli::Majuscules), P(Code)})));
}

Disposition Lien(const char* table) {
    using namespace ModeleLien;
    return Fixe(table, Longueur, {Code, CodeLie}, DansLesDeuxSens(table, P(Code), P(CodeLie)));
}

Disposition Recommandations(const char* table) {
    using namespace ModeleRecommandation;
    return Fixe(table, Longueur, {Code, Rang, Source, Date, Titre, Texte}, {Sur({P(Code), P(Rang)})});
}

Disposition Concept(const char* table) {
    using namespace ModeleConcept;
    return Fixe(table, Longueur, {Code, CodeConcept}, {Sur({P(Code), P(CodeConcept)})});
}

Disposition TexteSeul(const char* table) {
    return TexteFinal(table, 0, 0, {}, {ModeleTexte::Code}, "Texte");
}

Disposition Chapitres(const char* table, std::vector<std::string> sections, ChampTexte cle) {
    Disposition d = Fixe(table, ModeleChapitres::Longueur, {}, {Sur({P(cle)})});
    d.champsCle = {cle};
    d.corps = Corps::Chapitres;
    d.parties = std::move(sections);
    return d;
}

Disposition TexteFinal(const char* table, uint32_t longueur, uint32_t debut, std::vector<Champ> champs,
                       std::vector<Champ> champsCle, std::string partie) {
    std::vector<Cle> cles;
    if (!champsCle.empty()) {
        std::vector<PartieCle> parties;
        for (const Champ& c : champsCle) parties.push_back(P(c));
        cles.push_back(Sur(std::move(parties)));
    }
    Disposition d = Fixe(table, longueur, std::move(champs), std::move(cles));
    d.champsCle = std::move(champsCle);
    d.corps = Corps::TexteFinal;
    d.debutCorps = debut;
    d.parties = {std::move(partie)};
    return d;
}

std::vector<std::string> SectionsEnPaires(int chapitres) {
    std::vector<std::string> sections;
    for (int n = 1; n <= chapitres; ++n) {
        sections.push_back("Texte" + std::to_string(n));
        sections.push_back("Rtf" + std::to_string(n));
    }
    return sections;
}

}  // namespace disposition

namespace {

struct Registre {
    std::vector<Disposition> dispositions;  // in the order of the catalogue
    std::map<std::string, size_t, std::less<>> parNom;

    Registre() {
        std::map<std::string, Disposition, std::less<>> declarees;
        for (auto famille : {disposition::FamilleProduits, disposition::FamilleIdentification, disposition::FamillePosologie,
                             disposition::FamilleComposition, disposition::FamilleAllergies, disposition::FamilleInteractions,
                             disposition::FamilleReglementaire, disposition::FamilleDocuments, disposition::FamilleMedecin})
            for (Disposition& d : famille()) {
                const std::string nom = d.table->nom;
                if (!declarees.emplace(nom, std::move(d)).second)
                    throw std::logic_error("table disposee deux fois : " + nom);
            }
        for (const Table& t : Catalogue()) {
            auto trouvee = declarees.find(t.nom);
            if (trouvee == declarees.end()) throw std::logic_error(std::string("table sans disposition : ") + t.nom);
            parNom.emplace(t.nom, dispositions.size());
            dispositions.push_back(std::move(trouvee->second));
        }
    }
};

const Registre& registre() {
    static const Registre r;
    return r;
}

}  // namespace

std::span<const Disposition> Dispositions() { return registre().dispositions; }

const Disposition& DispositionDe(const Table& table) { return *DispositionNommee(table.nom); }

const Disposition* DispositionNommee(std::string_view nom) {
    const Registre& r = registre();
    auto trouvee = r.parNom.find(nom);
    return trouvee == r.parNom.end() ? nullptr : &r.dispositions[trouvee->second];
}

std::vector<Colonne> Colonnes(const Disposition& d) {
    std::vector<Colonne> colonnes;
    for (const Champ& c : d.champsCle) colonnes.push_back({c.nom, GenreColonne::ChampCle, c});
    for (const Champ& c : d.champs) {
        const bool longueur = std::any_of(d.longueurs.begin(), d.longueurs.end(),
                                          [&](const ChampEntier& l) { return l.decalage == c.decalage; });
        if (!longueur) colonnes.push_back({c.nom, GenreColonne::ChampFiche, c});
    }
    for (size_t i = 0; i < d.parties.size(); ++i) colonnes.push_back({d.parties[i], GenreColonne::Partie, {}, i});
    return colonnes;
}

std::string ComposeFiche(const Disposition& d, std::string fixe, const std::vector<std::string>& parties) {
    switch (d.corps) {
        case Corps::Fixe:
            return fixe;
        case Corps::Chapitres:
            for (size_t i = 0; i < parties.size(); ++i) EcritMot(fixe, 4 * i, static_cast<int32_t>(parties[i].size()));
            break;
        case Corps::TextesMesures:
            for (size_t i = 0; i < parties.size(); ++i)
                EcritMot(fixe, d.longueurs[i].decalage, static_cast<int32_t>(parties[i].size()));
            break;
        case Corps::TexteFinal:
        case Corps::OctetsFinal:
            fixe.resize(d.debutCorps);
            break;
    }
    for (const std::string& p : parties) fixe += p;
    if (fixe.size() < d.longueur) fixe.resize(d.longueur, '\0');
    return fixe;
}

std::vector<std::string_view> PartiesDe(const Disposition& d, std::string_view octets) {
    const Fiche fiche(octets);
    std::vector<std::string_view> parties;
    switch (d.corps) {
        case Corps::Fixe:
            break;
        case Corps::Chapitres:
            for (size_t i = 0; i < d.parties.size(); ++i) parties.push_back(fiche.Section(static_cast<int>(i + 1)));
            break;
        case Corps::TexteFinal: {
            const std::string_view texte = fiche.Reste(d.debutCorps);
            parties.push_back(texte.substr(0, texte.find('\0')));
            break;
        }
        case Corps::OctetsFinal:
            parties.push_back(fiche.Reste(d.debutCorps));
            break;
        case Corps::TextesMesures: {
            std::string_view reste = fiche.Reste(d.longueur);
            for (const ChampEntier& l : d.longueurs) {
                const size_t n = static_cast<size_t>(std::max(0, fiche.Entier(l)));
                parties.push_back(reste.substr(0, n));
                reste.remove_prefix(std::min(n, reste.size()));
            }
            break;
        }
    }
    return parties;
}

}  // namespace vdx
