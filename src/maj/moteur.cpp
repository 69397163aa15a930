#include "maj/moteur.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>

#include "maj/etat.h"
#include "maj/lecture.h"
#include "maj/liste.h"
#include "maj/marqueurs.h"
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

constexpr char TitreErreurMaj[] = "Erreur";
// The progress goes by blocks of this many bytes, and is told at most
// every this many bytes read.
constexpr int64_t BlocProgression = 512;
constexpr uint64_t PasProgression = 64 * 1024;

// A store operation of the update that failed: its message box, and 0.
int32_t EchecOperation(const char* operation, int numero, int erreur) {
    std::string texte = "Une erreur est survenue lors de la MAJ (";
    texte += operation;
    texte += ") sur le fichier '";
    texte += NomMaj(numero);
    texte += "'. Erreur : " + std::to_string(erreur);
    notices().BoiteMessage(texte, TitreErreurMaj, StyleExclamation);
    return 0;
}

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

// The row of a key-ruled table: the record replaces the one of its first
// key, its further keys moved with it. 1, or 0 after the message box.
int32_t RemplaceParCle(const Table& table, std::string fiche) {
    const Disposition& d = DispositionDe(table);
    const std::optional<std::string> cle0 = CleDe(d, 0, fiche);
    if (!cle0) return 1;
    magasin::Position position = magasin::CleEgale(table.index(), cle0->data());
    std::vector<std::string> anciennes(d.cles.size());
    if (position == 0) {
        position = magasin::NewRecord(table.donnees);
        if (position == 0) return EchecOperation("NewRecord", table.donnees, magasin::GlobalesMagasin()->ErreurMagasin);
        std::string cle = *cle0;
        if (const int e = AjouteCle(d, 0, cle, fiche, position)) return EchecOperation("AddRecordKey", table.index(), e);
    } else {
        std::string ancienne(d.longueur, '\0');
        if (magasin::LitFiche(table.donnees, position, ancienne.data()) == 0)
            for (size_t n = 1; n < d.cles.size(); ++n) anciennes[n] = CleDe(d, n, ancienne).value_or("");
    }
    if (const int e = magasin::WriteRecordData(table.donnees, position, fiche.data()))
        return EchecOperation("WriteRecordData", table.donnees, e);
    for (size_t n = 1; n < d.cles.size(); ++n) {
        const int numero = table.cle(static_cast<int>(n));
        if (!anciennes[n].empty()) {
            const int e = magasin::DeleteRecordKey(numero, anciennes[n].data(), position);
            if (e != 0 && e != magasin::CleAbsente) return EchecOperation("DeleteRecordKey", numero, e);
        }
        std::optional<std::string> cle = CleDe(d, n, fiche);
        if (!cle) continue;
        const int e = AjouteCle(d, n, *cle, fiche, position);
        if (e != 0 && e != magasin::CleExistante) return EchecOperation("AddRecordKey", numero, e);
    }
    return 1;
}

// A text field into its place in a record, cut to what the field holds
// before its NUL.
void PoseTexte(std::string& fiche, const ChampTexte& champ, std::string_view texte) {
    const size_t n = std::min<size_t>(texte.size(), champ.capacite());
    std::copy_n(texte.data(), n, fiche.data() + champ.decalage);
}

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
            dernierCode_.clear();
            rangee_ = RangeeDuMarqueur(jeton);
            champs_ = rangee_ ? ChampsDe(*rangee_) : std::vector<ChampRangee>();
            tableRangee_ = rangee_ ? TableNommee(rangee_->table) : nullptr;
            if (index_)
                for (const char* nom : Marqueurs[static_cast<size_t>(*index_)].tables)
                    if (nom) unite_.Ouvre(*TableNommee(nom));
        }
        if (!index_ || etatMaj().TypeMaj < Marqueurs[static_cast<size_t>(*index_)].niveau) return 1;
        return Gere(*index_);
    }

    void FermeTables() {
        if (index_)
            for (const char* nom : Marqueurs[static_cast<size_t>(*index_)].tables)
                if (nom) unite_.Ferme(*TableNommee(nom));
        index_.reset();
    }

    // The handler of a table, after its marker: its fields read, the rest
    // of the line passed, the record put in its table.
    int32_t Gere(int32_t index) {
        const std::string_view marqueur = Marqueurs[static_cast<size_t>(index)].texte;
        if (rangee_) return ParCle();
        // Rows read and dropped token by token.
        if (marqueur == "|VPA|" || marqueur == "|VEXC|" || marqueur == "|ZITYP|" || marqueur == "|ZIGRA|") return 1;
        std::string texte = "La table " + std::string(marqueur) + " n'est pas encore mise \xE0 jour par la biblioth\xE8que.";
        notices().BoiteMessage(texte, TitreErreurMaj, StyleExclamation);
        return 0;
    }

    // A row of the key rule: its fields into a zeroed record, the rest of
    // the line passed, the record in place of the one of its key.
    int32_t ParCle() {
        FicheEcrite fiche(DispositionDe(*tableRangee_).longueur);
        std::string jeton;
        for (const ChampRangee& c : champs_) {
            lecteur_.LireChamp(jeton);
            switch (c.genre) {
                case ChampRangee::Texte: PoseTexte(fiche.Octets(), c.texte, jeton); break;
                case ChampRangee::Entier: fiche.Entier({"", c.decalage}, LireEntier(jeton)); break;
                case ChampRangee::Reel: fiche.Reel({"", c.decalage}, LireReel(jeton)); break;
                case ChampRangee::Abandonne: break;
            }
        }
        lecteur_.SauteLigne();
        return RemplaceParCle(*tableRangee_, std::move(fiche.Octets()));
    }

    LecteurMaj& lecteur_;
    UniteMaj& unite_;
    Progression& progression_;
    std::string marqueur_;
    std::optional<int32_t> index_;
    std::string libelle_;
    std::string dernierCode_;
    // The rows of the marker in force, their fields and their table, found
    // once at its change.
    const RangeeParCle* rangee_ = nullptr;
    std::vector<ChampRangee> champs_;
    const Table* tableRangee_ = nullptr;
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
