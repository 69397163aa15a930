#include "vocabulary/lexico.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <unordered_set>
#include <vector>

#include "session/cadre.h"
#include "session/resultat.h"
#include "session/session.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/layouts.h"
#include "store/pliage.h"
#include "vocabulary/vocabulaires.h"

namespace vdx {
namespace {

using namespace lexico;

constexpr size_t MotsLus = 5;      // words read from a list
constexpr size_t MotsUtiles = 3;   // words that take part in the search
constexpr size_t PositionMin = 31;  // a match lies at least here in a block (from 1)...
constexpr size_t PositionMax = 99900;  // ...and before this
constexpr size_t ResteMin = 80;     // bytes from a match to the end of the block

// Offsets from the mark, the NUL before the label in a record.
constexpr size_t Marque = VDXVPRO::Libelle.decalage - 1;
constexpr size_t DecalageCode = VDXVPRO::CodeCIP.decalage - Marque;
constexpr size_t DecalageSuppression = VDXVPRO::Suppression.decalage - Marque;
static_assert(DecalageCode == 80 && DecalageSuppression == 88, "the raw records of VDXVPRO");
constexpr size_t LongueurCode = 7;
constexpr size_t Reprise = 60;  // the scan goes on this far behind a mark
constexpr size_t MarqueEnTete = 3;  // a mark this close to the start flags a bad block

constexpr char CodeBlocDouteux[] = "1234567";
constexpr char LibelleBlocDouteux[] = "  --- erreur ---";
constexpr char MarqueSupprime[] = "[SUP]";
constexpr int32_t SansSupprimes = 256;

// Applied to the first word; the later of two rows that compare equal wins.
// The rows with blanks can never match a folded word: kept as they stand.
constexpr size_t LongueurAbreviation = 9;  // characters compared on each side
constexpr struct {
    const char* mot;
    const char* abrege;
} Abreviations[] = {
    {"AIGUILLE", "AIG"}, {"ALESE", "ALEZ"}, {"ATTELLE", "ATTEL"},
    {"BANDES", "BDE"}, {"BAS DE CONTENTION", "BAS"}, {"BASSIN", "BASSIN"},
    {"BOUILLOTTE", "BOUILL"}, {"BROSSES A DENTS", "BDEN"}, {"CHAUSSETTES", "CHAUS"},
    {"CHEVILLERE", "CHEV"}, {"CHAUSSURE", "CH"}, {"COLLANT", "COLL"},
    {"COMPRESSES", "COMP"}, {"COTONS", "COT"}, {"GENOUILLIERE", "GENOUIL"},
    {"INSULINE", "INSUL"}, {"ORTESES", "ORTES"}, {"PANSEMENT", "PANS"},
    {"POIGNET", "POIG"}, {"SERINGUE", "SER"}, {"TROUSSE", "TR"},
    {"THERMOMETRE", "THERM"},
};

// A list of words separated by "@", at most five, each cut to the buffer.
std::vector<std::string> Decoupe(std::string_view texte) {
    std::vector<std::string> mots;
    std::string_view reste = texte;
    while (mots.size() < MotsLus) {
        const size_t fin = reste.find('@');
        mots.emplace_back(reste.substr(0, std::min<size_t>(fin, TexteRechercheMax)));
        if (fin == std::string_view::npos) break;
        reste.remove_prefix(fin + 1);
    }
    return mots;
}

// The words after the first, folded; those that fold to nothing are not given.
std::vector<std::string> Plies(const std::vector<std::string>& mots, size_t premier) {
    std::vector<std::string> plies;
    for (size_t i = premier; i < std::min(mots.size(), MotsUtiles); ++i)
        if (std::string p = PlieCle(mots[i]); !p.empty()) plies.push_back(std::move(p));
    return plies;
}

// The records of VDXVPRO as the bytes of a raw file, read a block at a time;
// only the bytes from the last block on are kept. A failure of the store is
// a list that can't be read.
class FluxProduits {
public:
    explicit FluxProduits(const Table& table) : table_(table), curseur_(table), octets_(Entete, '\0') {}

    // Up to TailleBloc bytes from `depart`, NULs read as "@"; empty past the end.
    std::string Bloc(size_t depart) {
        while (!fini_ && debut_ + octets_.size() < depart + TailleBloc) Lis();
        const size_t passes = std::min(depart - debut_, octets_.size());
        octets_.erase(0, passes);
        debut_ += passes;
        std::string bloc = debut_ == depart ? octets_.substr(0, TailleBloc) : std::string();
        std::replace(bloc.begin(), bloc.end(), '\0', '@');
        return bloc;
    }

private:
    // Records are read straight into the stream, at the length of the first
    // one: the table is of fixed length, and a copy a record is half the
    // cost of the scan.
    void Lis() {
        const std::optional<magasin::Position> position = premiere_ ? curseur_.Premiere() : curseur_.Suivante();
        premiere_ = false;
        if (!position) {
            fini_ = true;
        } else if (longueur_ == 0) {
            const std::string fiche = FicheA(table_, *position);
            longueur_ = fiche.size();
            octets_ += fiche;
        } else {
            const size_t fin = octets_.size();
            octets_.resize(fin + longueur_);
            if (magasin::LitFiche(table_.donnees, *position, octets_.data() + fin) != 0)
                throw EchecMagasinSur(table_.fichierDonnees);
        }
    }

    const Table& table_;
    Curseur curseur_;
    std::string octets_;  // the stream from debut_ on
    size_t debut_ = 0;
    size_t longueur_ = 0;  // of a record
    bool premiere_ = true;
    bool fini_ = false;
};


struct Prise {
    std::string code;
    std::string libelle;
};

// The scan of the blocks: what it looks for and what it has taken.
class Scan {
public:
    Scan(std::string premier, std::vector<std::string> voulus, std::vector<std::string> exclus, int32_t options)
        : premier_(std::move(premier)), voulus_(std::move(voulus)), exclus_(std::move(exclus)),
          lettre_(CategorieDesOptions(options).value_or(VDXVPRO::TousProduits)), sansSupprimes_(options >= SansSupprimes) {}

    void Parcourt(std::string_view texte) {
        for (;;) {
            const size_t p = texte.find(premier_);
            if (p == std::string_view::npos || p + 1 < PositionMin || p + 1 >= PositionMax ||
                texte.size() - p < ResteMin)
                return;
            // The mark: back from the match to the "@" before it, else the start.
            size_t marque = texte.rfind('@', p);
            if (marque == std::string_view::npos) marque = 0;
            Examine(texte, marque);
            // The rest of the block from there on is the text searched next.
            texte.remove_prefix(std::min(texte.size(), marque + Reprise));
        }
    }

    const std::vector<Prise>& Lignes() const { return lignes_; }

private:
    void Examine(std::string_view texte, size_t marque) {
        const bool douteux = marque < MarqueEnTete || texte.size() - marque <= DecalageSuppression;
        std::string code(CodeBlocDouteux), libelle(LibelleBlocDouteux);
        if (!douteux) {
            code = texte.substr(marque + DecalageCode, LongueurCode);
            const std::string_view suite = texte.substr(marque + 1);
            libelle = suite.substr(0, suite.find('@'));
        }
        const char lettre = marque > 0 ? texte[marque - 1] : '\0';
        const char suppression = douteux ? '\0' : texte[marque + DecalageSuppression];
        const bool supprime = suppression == 'A' || suppression == 'S';
        if (supprime && sansSupprimes_) return;
        // Punctuation and blanks all become blanks.
        for (char& c : libelle)
            if (c != '+' && c != '-' && static_cast<unsigned char>(c) < '0') c = ' ';
        for (const std::string& mot : voulus_)
            if (libelle.find(mot) == std::string::npos) return;
        for (const std::string& mot : exclus_)
            if (libelle.find(mot) != std::string::npos) return;
        if (lettre != lettre_ || !pris_.insert(code).second) return;
        if (supprime) {
            libelle.resize(std::min(libelle.find("  "), libelle.size()));
            libelle += MarqueSupprime;
        }
        lignes_.push_back({std::move(code), std::move(libelle)});
    }

    std::string premier_;
    std::vector<std::string> voulus_;
    std::vector<std::string> exclus_;
    char lettre_;
    bool sansSupprimes_;
    std::unordered_set<std::string> pris_;
    std::vector<Prise> lignes_;
};

// A failure of the store while VDXVPRO is read is that of a raw file that
// can't be opened or sought.
template <class Lecture>
auto Illisible(Lecture&& lecture) {
    try {
        return lecture();
    } catch (const Echec&) {
        throw Echec{ListeMotsIllisible};
    }
}

}  // namespace

std::string PremierMotLexico(std::string_view mot) {
    const std::string plie = PlieMotCle(mot);
    const std::string_view tete = std::string_view(plie).substr(0, LongueurAbreviation);
    std::string_view choisi = plie;
    for (const auto& a : Abreviations)
        if (tete == std::string_view(a.mot).substr(0, LongueurAbreviation)) choisi = a.abrege;
    return std::string(choisi);
}

Lignes Lexico(std::string_view motsCherches, std::string_view motsExclus, int32_t options, int32_t debut,
              int32_t nombre) {
    Lignes lignes(GabaritLexico);
    const std::vector<std::string> cherches = Decoupe(motsCherches);
    if (cherches[0].size() < LongueurMinLexico) throw Echec{RechercheTropCourte};
    Scan scan(PremierMotLexico(cherches[0]), Plies(cherches, 1), Plies(Decoupe(motsExclus), 0), options);

    const Table& produits = TableDuCatalogue("VDXVPRO");
    TablesOuvertes tables;
    Illisible([&] { tables.Ouvre(produits); });
    FluxProduits flux = Illisible([&] { return FluxProduits(produits); });
    for (size_t depart = 0;; depart += Avance) {
        const std::string bloc = Illisible([&] { return flux.Bloc(depart); });
        if (bloc.empty()) break;
        try {
            scan.Parcourt(bloc);
        } catch (...) {
            throw Echec{ListeMotsIntraitable};
        }
    }

    // The window of rows delivered.
    const std::vector<Prise>& prises = scan.Lignes();
    for (size_t i = 0; i < prises.size(); ++i) {
        const int64_t rang = static_cast<int64_t>(i);
        if (rang + 1 >= debut && rang <= int64_t{debut} + nombre)
            lignes.AjouteLigne({prises[i].code, prises[i].libelle, std::string()});
    }
    tables.Ferme();
    return lignes;
}

}  // namespace vdx
