#include "vocabulary/recherche.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/cadre.h"
#include "session/session.h"
#include "session/tables.h"
#include "store/fiche.h"
#include "store/pliage.h"

namespace vdx {
namespace {

using magasin::Position;

// The data file and the index of a vocabulary, the index on the number the
// vocabulary gives (the catalogue's but for the step search of excipients).
void OuvreVocabulaire(TablesOuvertes& tables, const Vocabulaire& v) {
    tables.OuvreFichier(v.table->fichierDonnees, v.table->donnees);
    tables.OuvreFichier(v.table->fichierIndex, v.index);
}


// A search text folded by MajusculeSansAccent, cut to `longueur`.
std::string Plie(std::string_view texte, size_t longueur) { return MajusculeSansAccent(texte.substr(0, longueur)); }

// The label held by a label key: its bytes up to the first NUL.
std::string_view LibelleDeCle(std::string_view cle) { return cle.substr(0, cle.find('\0')); }

// A row of a record: code, label, and empty texts to the shape.
std::vector<Valeur> Ligne(const Vocabulaire& v, const Fiche& fiche) {
    std::vector<Valeur> ligne;
    if (v.code.nature == NatureChamp::Entier)
        ligne.emplace_back(fiche.Entier(ChampEntier::De(v.code)));
    else
        ligne.emplace_back(std::string(fiche.Texte(ChampTexte::De(v.code))));
    ligne.emplace_back(std::string(fiche.Texte(v.libelle)));
    while (ligne.size() < v.gabarit.size()) ligne.emplace_back(std::string());
    return ligne;
}

// Reads the record and adds its row; true when the row was new.
bool AjouteFiche(Lignes& resultat, const Vocabulaire& v, Position position) {
    const std::string octets = FicheA(*v.table, position);
    const int32_t avant = resultat.Nombre();
    return resultat.AjouteLigne(Ligne(v, Fiche(octets))) > avant;
}

// Whether `second` lies in `cle` without overlapping the first word's match
// at `debut`, of `longueur`: before it, or behind it.
bool SecondMotAPart(std::string_view cle, std::string_view second, size_t debut, size_t longueur) {
    const size_t avant = cle.find(second);
    if (avant != std::string_view::npos && avant + second.size() <= debut) return true;
    return cle.find(second, debut + longueur) != std::string_view::npos;
}

// No start in the walk: nothing to deliver.
Position Depart(std::optional<Position> position) {
    if (!position) throw Echec{Rien};
    return *position;
}

}  // namespace

Lignes PasVocabulaire(const Vocabulaire& v, std::string_view texte, std::string_view suite, int32_t nombre) {
    const std::string prefixe = Plie(texte, v.longueurPrefixe);
    Lignes resultat(v.gabarit);
    TablesOuvertes fichiers;
    OuvreVocabulaire(fichiers, v);
    Curseur curseur(*v.table, v.Membre());
    std::optional<Position> position;
    if (!suite.empty()) {
        // The page begins behind the row named by Suite.
        Depart(curseur.SuperieureOuEgale(Plie(suite, v.longueurPrefixe)));
        position = Depart(curseur.Suivante());
    } else {
        position = Depart(curseur.SuperieureOuEgale(prefixe));
    }
    while (nombre > 0 && position) {
        const std::string_view cle = LibelleDeCle(curseur.Cle());
        if (cle.size() >= prefixe.size()) {
            if (!cle.starts_with(prefixe)) break;
            if (AjouteFiche(resultat, v, *position)) --nombre;
        }
        position = curseur.Suivante();
    }
    fichiers.Ferme();
    return resultat;
}

Lignes MotVocabulaire(const Vocabulaire& v, std::string_view mot1, std::string_view mot2, bool partout) {
    const std::string_view seul = mot1.empty() ? mot2 : mot1;
    if (seul.empty()) throw Echec{Argument1};
    TablesOuvertes fichiers;
    OuvreVocabulaire(fichiers, v);
    Lignes resultat(v.gabarit);
    const std::string premier = Plie(seul, TexteRechercheMax);
    const std::string second = mot1.empty() ? std::string() : Plie(mot2, TexteRechercheMax);
    Curseur curseur(*v.table, v.Membre());
    std::optional<Position> position = Depart(partout ? curseur.Premiere() : curseur.SuperieureOuEgale(premier));
    for (; position; position = curseur.Suivante()) {
        const std::string_view cle = LibelleDeCle(curseur.Cle());
        if (cle.size() < premier.size()) {
            if (partout) continue;
            break;
        }
        size_t debut = 0;
        if (!partout) {
            if (!cle.starts_with(premier)) break;
        } else if ((debut = cle.find(premier)) == std::string_view::npos) {
            continue;
        }
        if (!second.empty() && !SecondMotAPart(cle, second, debut, premier.size())) continue;
        AjouteFiche(resultat, v, *position);
    }
    fichiers.Ferme();
    return resultat;
}

Lignes MotFamille(const Vocabulaire& v, std::string_view mot, std::string_view prefixe) {
    Lignes resultat(v.gabarit);
    TablesOuvertes fichiers;
    OuvreVocabulaire(fichiers, v);
    const std::string cherche = Plie(mot, TexteRechercheMax);
    const std::string debut = Plie(prefixe, v.longueurPrefixe);
    Curseur curseur(*v.table, v.Membre());
    std::optional<Position> position =
        Depart(debut.empty() ? curseur.Premiere() : curseur.SuperieureOuEgale(debut));
    for (; position && curseur.Cle().starts_with(debut); position = curseur.Suivante()) {
        // The folded label is the record's: each record is read first.
        const std::string octets = FicheA(*v.table, *position);
        const Fiche fiche(octets);
        if (MajusculeSansAccent(fiche.Texte(v.libelleCle.value())).find(cherche) != std::string::npos)
            resultat.AjouteLigne(Ligne(v, fiche));
    }
    fichiers.Ferme();
    return resultat;
}

}  // namespace vdx
