#include "checks/grossesse.h"

#include <algorithm>
#include <optional>

#include "checks/voies.h"
#include "documents/chapitre.h"
#include "products/composition.h"
#include "products/substances.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/resultat.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

VDX_TABLE(TableGrossesse, "VDXYGRSS")
VDX_TABLE(TableTextesAMM, "VDXVAMPT")

// The chapter of the texts of the marketing authorisation on pregnancy and
// breast-feeding.
constexpr int ChapitreGrossesse = 5;

// Keys of the pregnancy table: the substance on five digits, then the rank
// of its row; a substance is looked up from its first rank.
constexpr size_t ChiffresSubstance = 5;
constexpr char PremierRang[] = "00";

// The codes of a list, each followed by this character.
constexpr char SeparateurListe = '@';

// The periods, by PeriodeGrossesse: the weeks each covers and its text. A
// term of 0 is in every period.
struct Periode {
    int32_t debut;
    int32_t fin;
    const char* texte;
};
constexpr Periode Periodes[] = {
    {1, DerniereSemaineGrossesse, messages::GrossesseEntiere},
    {1, 13, messages::PremierTrimestre},
    {14, 26, messages::DeuxiemeTrimestre},
    {27, DerniereSemaineGrossesse, messages::TroisiemeTrimestre},
    {14, DerniereSemaineGrossesse, messages::DepuisDeuxiemeTrimestre},
};

// The levels, by NiveauGrossesse: name, colour and sentence.
struct Niveau {
    const char* nom;
    const char* couleur;
    const char* phrase;
};
constexpr Niveau Niveaux[] = {
    {messages::NiveauPossible, messages::CouleurVert, messages::PhrasePossible},
    {messages::NiveauEnvisageable, messages::CouleurVertClair, messages::PhraseEnvisageable},
    {messages::NiveauAEviter, messages::CouleurJaune, messages::PhraseAEviter},
    {messages::NiveauDeconseille, messages::CouleurOrange, messages::PhraseDeconseille},
    {messages::NiveauContreIndique, messages::CouleurRouge, messages::PhraseContreIndique},
};

// The entry of a table for a value of the base, or none outside it.
template <class T, size_t N>
const T* EntreeDe(const T (&table)[N], int32_t valeur) {
    return valeur >= 0 && static_cast<size_t>(valeur) < N ? &table[valeur] : nullptr;
}

bool Couvre(const Periode& periode, int32_t terme) {
    return terme == 0 || (periode.debut <= terme && terme <= periode.fin);
}


// The substances of a product, each followed by its synonyms: the codes to
// look up, and the same as a list of decimal codes each ended by "@".
struct Substances {
    std::vector<int32_t> codes;
    std::string liste;

    void Ajoute(int32_t code) {
        codes.push_back(code);
        liste += std::to_string(code);
        liste += SeparateurListe;
    }
};

Substances SubstancesProduit(std::string_view codeCIP) {
    Substances substances;
    for (const Composant& composant : CompositionProduit(codeCIP).composants) {
        substances.Ajoute(composant.CodeSubstance);
        for (const Synonyme& synonyme : SynonymesComposant(composant.CodeSubstance))
            substances.Ajoute(synonyme.Code);
    }
    return substances;
}

// Where the advice is looked for: a route of the product with the list of
// its substances.
struct Entree {
    std::string codeCIP;
    std::string voie;
    std::string liste;
};

bool UnDansLAutre(std::string_view a, std::string_view b) {
    return a.find(b) != std::string_view::npos || b.find(a) != std::string_view::npos;
}

// Two entries are the same when each part of one holds the same part of
// the other, either way round: a route that holds another (or is empty)
// stands for it.
bool MemeEntree(const Entree& a, const Entree& b) {
    return UnDansLAutre(a.codeCIP, b.codeCIP) && UnDansLAutre(a.voie, b.voie) && UnDansLAutre(a.liste, b.liste);
}

std::vector<Entree> EntreesProduit(std::string_view codeCIP, const std::string& liste) {
    std::vector<Entree> entrees;
    for (const Voie& voie : VoiesProduit(codeCIP)) {
        Entree entree{std::string(codeCIP), voie.CodeVoie, liste};
        if (std::none_of(entrees.begin(), entrees.end(), [&](const Entree& e) { return MemeEntree(e, entree); }))
            entrees.push_back(std::move(entree));
    }
    return entrees;
}

// The first row of a substance: the first key at or above its first rank,
// when that key is the substance's. The rows behind it are never read.
std::optional<std::string> PremiereLigne(int32_t substance) {
    Curseur cles(TableGrossesse());
    const std::string code = CleDecimale(substance, ChiffresSubstance);
    const auto position = cles.SuperieureOuEgale(code + PremierRang);
    if (!position || cles.Cle().substr(0, ChiffresSubstance) != code) return std::nullopt;
    return FicheA(TableGrossesse(), *position);
}

// A partner is compared with the whole list of the first entry, which ends
// with "@": no number reads the same, so a row with a partner never passes.
bool PartenairesAdmis(const Fiche& ligne, std::string_view listePremiereEntree) {
    for (const ChampEntier& champ : {VDXYGRSS::Partenaire1, VDXYGRSS::Partenaire2, VDXYGRSS::Partenaire3}) {
        const int32_t partenaire = ligne.Entier(champ);
        if (partenaire != 0 && std::to_string(partenaire) != listePremiereEntree) return false;
    }
    return true;
}

// A row of one route is for that route alone; an empty route is for all.
bool VoieAdmise(const Fiche& ligne, std::string_view voie) {
    const std::string_view sienne = ligne.Texte(VDXYGRSS::CodeVoie);
    return sienne.empty() || sienne == voie;
}

// The product's chapter on pregnancy as text; an empty chapter says the
// information is missing, a product without texts has none.
std::string TexteProduit(std::string_view codeCIP) {
    Curseur textes(TableTextesAMM());
    const auto position = textes.Egale(codeCIP);
    if (!position) return {};
    return ExtraitChapitre(ChapitreGrossesse, FicheA(TableTextesAMM(), *position), false, InformationIndisponible);
}

AlerteGrossesse Alerte(std::string_view codeCIP, const Fiche& ligne, const Periode& periode) {
    using namespace VDXYGRSS;
    AlerteGrossesse alerte;
    alerte.CodeProduit = codeCIP;
    alerte.Inconnu = messages::GrossesseInconnu;
    alerte.LibelleGrossesse = ligne.Texte(LibelleGrossesse);
    alerte.TexteProduit = TexteProduit(codeCIP);
    alerte.CodeSubstance = ligne.Entier(CodeSubstance);
    alerte.Partenaire1 = ligne.Entier(Partenaire1);
    alerte.Partenaire2 = ligne.Entier(Partenaire2);
    alerte.Partenaire3 = ligne.Entier(Partenaire3);
    alerte.NiveauGrossesse = ligne.Entier(NiveauGrossesse);
    // A level the table does not know keeps its number and has no wording.
    if (const Niveau* niveau = EntreeDe(Niveaux, alerte.NiveauGrossesse)) {
        alerte.PhraseNiveau = niveau->phrase;
        alerte.Couleur = niveau->couleur;
        alerte.NomNiveau = niveau->nom;
    }
    alerte.Periode = periode.texte;
    alerte.TexteGrossesse = ligne.Texte(TexteGrossesse);
    return alerte;
}

}  // namespace

TablesOuvertes TablesGrossesse() {
    return TablesOuvertes({&TableGrossesse(), &TableTextesAMM(), &TableDuCatalogue("VDXVCOMP"), &TableDuCatalogue("VDXVCOMG"),
                           &TableDuCatalogue("VDXVPA"), &TableDuCatalogue("VDXVPAE"), &TableDuCatalogue("VDXVPAU"), &TableDuCatalogue("VDXWSYNC"),
                           &TableDuCatalogue("VDXIDPVO"), &TableDuCatalogue("VDXIDVOI")});
}

std::vector<AlerteGrossesse> AlertesGrossesse(std::string_view codeCIP, int32_t grossesse) {
    std::vector<AlerteGrossesse> alertes;
    if (grossesse < 0 || grossesse > DerniereSemaineGrossesse) return alertes;
    TablesOuvertes tables = TablesGrossesse();
    const Substances substances = SubstancesProduit(codeCIP);
    const std::vector<Entree> entrees = EntreesProduit(codeCIP, substances.liste);
    for (const Entree& entree : entrees) {
        for (const int32_t code : substances.codes) {
            const std::optional<std::string> octets = PremiereLigne(code);
            if (!octets) continue;
            const Fiche ligne(*octets);
            if (!PartenairesAdmis(ligne, entrees.front().liste) || !VoieAdmise(ligne, entree.voie)) continue;
            const Periode* periode = EntreeDe(Periodes, ligne.Entier(VDXYGRSS::PeriodeGrossesse));
            if (!periode || !Couvre(*periode, grossesse)) continue;
            // A product gives one alert: the first row that passes.
            alertes.push_back(Alerte(codeCIP, ligne, *periode));
            tables.Ferme();
            return alertes;
        }
    }
    tables.Ferme();
    return alertes;
}

}  // namespace vdx
