#include "maj/moteur.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>

#include "maj/etat.h"
#include "maj/gestionnaires.h"
#include "maj/lecture.h"
#include "maj/liste.h"
#include "maj/marqueurs.h"
#include "maj/operations.h"
#include "maj/rangees.h"
#include "maj/unite.h"
#include "platform/notices.h"
#include "session/cadre.h"
#include "session/connexion.h"
#include "session/session.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"
#include "store/magasin.h"

namespace vdx::maj {

namespace {

// The progress goes by blocks of this many bytes, and is told at most
// every this many bytes read.
constexpr int64_t BlocProgression = 512;
constexpr uint64_t PasProgression = 64 * 1024;

// The progress of a run: the bytes read against the run's total.
class Progression {
public:
    explicit Progression(int64_t total) : total_(std::max<int64_t>(total / BlocProgression, 1)) {}
    // The bytes of the files before the one being read.
    void Debut(uint64_t lus) { debut_ = lus; }
    // The position at `lus` bytes of the current file.
    void Dit(uint64_t lus, std::string_view libelle) {
        const auto bloc = static_cast<int64_t>((debut_ + lus) / BlocProgression);
        notices().Progression(static_cast<int32_t>(std::min(bloc, total_)), static_cast<int32_t>(total_), libelle);
        dit_ = lus;
    }
    void Avance(uint64_t lus, std::string_view libelle) {
        if (lus - dit_ >= PasProgression) Dit(lus, libelle);
    }
    // The end of the run: the bar full.
    void Fin() { notices().Progression(static_cast<int32_t>(total_), static_cast<int32_t>(total_), ""); }

private:
    int64_t total_;
    uint64_t debut_ = 0, dit_ = 0;
};

// Reads a dispatched file: its tables in force, its handlers.
class Application {
public:
    Application(LecteurMaj& lecteur, UniteMaj& unite, Progression& progression)
        : lecteur_(lecteur), unite_(unite), progression_(progression) {}

    int32_t Traite(std::string& date) {
        std::string jeton;
        int32_t resultat = 1;
        for (Jeton j; resultat >= 1 && (j = lecteur_.LireChamp(jeton)) != Jeton::Fin;) {
            if (j == Jeton::Marqueur && jeton == MarqueurDebut) {
                lecteur_.LireChamp(date);
                progression_.Dit(lecteur_.OctetsLus(), "Mise \xE0 jour du " + date);
                lecteur_.LireChamp(jeton);
                continue;
            }
            if (j == Jeton::Marqueur && jeton == MarqueurFin) break;
            resultat = TraiteLigne(jeton);
            progression_.Avance(lecteur_.OctetsLus(), libelle_);
        }
        FermeTables();
        return resultat >= 1 ? 1 : 0;
    }

private:
    int32_t TraiteLigne(const std::string& jeton) {
        if (jeton.starts_with('|') && jeton != marqueur_) {
            FermeTables();
            marqueur_ = jeton;
            index_ = IndexDuMarqueur(jeton);
            libelle_ = "Mise \xE0 jour de la table : " + jeton.substr(1, jeton.size() >= 2 ? jeton.size() - 2 : 0);
            progression_.Dit(lecteur_.OctetsLus(), libelle_);
            gestionnaires_.NouvelleTable();
            rangee_ = RangeeDuMarqueur(jeton);
            champs_ = rangee_ ? ChampsDe(*rangee_) : std::vector<ChampRangee>();
            if (index_)
                for (const char* nom : Marqueurs[static_cast<size_t>(*index_)].tables)
                    if (nom) unite_.Ouvre(*TableNommee(nom));
        }
        if (!index_ || etatMaj().TypeMaj < Marqueurs[static_cast<size_t>(*index_)].niveau) return 1;
        return Gere();
    }

    void FermeTables() {
        if (index_)
            for (const char* nom : Marqueurs[static_cast<size_t>(*index_)].tables)
                if (nom) unite_.Ferme(*TableNommee(nom));
        index_.reset();
    }

    // The handler of a table, after its marker (every marker has its row):
    // the row read by its list, the rest of the line passed, the row put in
    // its tables; the rows the update reads and drops pass token by token.
    int32_t Gere() {
        if (rangee_->regle == Regle::Aucune) return 1;
        if (!LitLigne(lecteur_, DispositionDe(*TableNommee(rangee_->table)), champs_, ligne_))
            return RangeeRefusee(rangee_->marqueur, "elle s'arr\xEAte avant son dernier champ");
        return gestionnaires_.Applique(*rangee_, ligne_);
    }

    LecteurMaj& lecteur_;
    UniteMaj& unite_;
    Progression& progression_;
    std::string marqueur_;
    std::optional<int32_t> index_;
    std::string libelle_;
    Gestionnaires gestionnaires_;
    // The rows of the marker in force and their fields, found once at its
    // change.
    const Rangee* rangee_ = nullptr;
    std::vector<ChampRangee> champs_;
    LigneMaj ligne_;
};

// The base's date in the unit: the text of VDXDAT key 1 replaced.
void EcritDate(UniteMaj& unite, const std::string& date) {
    const Table& table = TableDuCatalogue("VDXDAT");
    unite.Ouvre(table);
    const std::string cle = CleEntiers({VDXDAT::Date});
    const magasin::Position p = magasin::CleEgale(table.index(), cle.data());
    std::string fiche(VDXDAT::Longueur, '\0');
    if (p == 0 || magasin::LitFiche(table.donnees, p, fiche.data()) != 0)
        throw Echec{EchecMagasin, magasin::GlobalesMagasin()->ErreurMagasin, 0, table.fichierIndex};
    std::fill(fiche.begin() + VDXDAT::Texte.decalage, fiche.end(), '\0');
    PoseTexte(fiche, VDXDAT::Texte, date);
    if (const int e = magasin::WriteRecordData(table.donnees, p, fiche.data()))
        throw Echec{EchecMagasin, static_cast<int16_t>(e), 0, table.fichierDonnees};
    unite.Ferme(table);
}

}  // namespace

int32_t ExecuteMaj(const Contexte& contexte, const std::string& repertoire, size_t tampon) {
    const std::string& base = contexte.BaseFichiers;
    TermineMajInterrompue(base);
    const std::optional<std::string> dateBase = DateDeLaBase();
    if (!dateBase) throw Echec{EchecMagasin, 0, 0, "VDXDAT.NDX"};
    const ListeMaj liste = ListeFichiersMaj(repertoire, TitreDeLaDate(*dateBase));
    if (liste.fichiers.empty()) return etatMaj().ResultatMaj;
    magasin::FermeFichiersInactifs();
    Progression progression(liste.tailleTotale);
    uint64_t lusAvant = 0;
    std::string date;  // a file without "|DEBUT|" keeps the previous one's
    int32_t resultat = 1;
    for (const std::string& chemin : liste.fichiers) {
        std::unique_ptr<FILE, int (*)(FILE*)> f(std::fopen(chemin.c_str(), "rb"), &std::fclose);
        if (!f) {
            resultat = Argument1;
            break;
        }
        UniteMaj unite(base);
        LecteurMaj lecteur(f.get(), tampon);
        progression.Debut(lusAvant);
        try {
            resultat = Application(lecteur, unite, progression).Traite(date);
        } catch (const JetonTropLong&) {
            notices().BoiteMessage("Le fichier " + chemin + " contient un champ trop long.", TitreErreurMaj,
                                   StyleExclamation);
            resultat = 0;
        } catch (const Echec& e) {
            SortieErreur(e);
            resultat = e.code;
        }
        if (resultat != 1) break;
        try {
            EcritDate(unite, date);
            unite.Valide();
        } catch (const Echec& e) {
            resultat = SortieErreur(e);
            break;
        }
        progression.Dit(lecteur.OctetsLus(), "");
        lusAvant += lecteur.OctetsLus();
    }
    if (resultat == 1) progression.Fin();
    etatMaj().ResultatMaj = resultat;
    return resultat;
}

}  // namespace vdx::maj
