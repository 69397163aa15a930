#include "tools/vdx/import_sortie.h"

#include <fstream>
#include <stdexcept>

#include "platform/codepage.h"
#include "store/layouts.h"
#include "store/sources.h"
#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

const Disposition& DispositionDeTable(const std::string& table) {
    const Disposition* d = DispositionNommee(table);
    if (!d) throw std::logic_error("unknown table " + table);
    return *d;
}

// The room of a text column, none for the others.
size_t Capacite(const Disposition& d, const std::string& colonne) {
    for (const Colonne& c : Colonnes(d))
        if (c.nom == colonne && c.genre != GenreColonne::Partie && c.champ.nature == NatureChamp::Texte)
            return ChampTexte::De(c.champ).capacite();
    return std::string::npos;
}

}  // namespace

void Sortie::Ajoute(const std::string& table, const Valeurs& valeurs) {
    const Disposition& d = DispositionDeTable(table);
    Table& t = tables_[table];
    std::vector<std::string> colonnes, ligne;
    for (const auto& [colonne, valeur] : valeurs) {
        colonnes.push_back(colonne);
        ligne.push_back(Coupe(valeur, Capacite(d, colonne)));
    }
    if (t.colonnes.empty()) t.colonnes = colonnes;
    if (t.colonnes != colonnes) throw std::logic_error("columns of " + table + " differ between records");
    t.lignes.insert(std::move(ligne));
}

size_t Sortie::Nombre(const std::string& table) const {
    const auto t = tables_.find(table);
    return t == tables_.end() ? 0 : t->second.lignes.size();
}

std::map<std::string, size_t> Sortie::Comptes() const {
    std::map<std::string, size_t> comptes;
    for (const auto& [nom, t] : tables_) comptes[nom] = t.lignes.size();
    return comptes;
}

void Sortie::Ecrit(const std::filesystem::path& dossier) const {
    // Every table is checked against its layout before the first file is
    // written: a refused row leaves no half-written sources.
    std::map<std::string, std::vector<Enregistrement>> parTable;
    for (const auto& [nom, t] : tables_) {
        const Disposition& d = DispositionDeTable(nom);
        std::vector<Enregistrement>& fiches = parTable[nom];
        size_t numero = 1;
        for (const auto& ligne : t.lignes) {
            Redaction r(d, nom + ".tsv:" + std::to_string(++numero));
            for (size_t i = 0; i < ligne.size(); ++i) r.Pose(t.colonnes[i], codepage::VersUtf8(ligne[i]));
            fiches.push_back(std::move(r).Termine());
        }
    }
    std::filesystem::create_directories(dossier);
    for (const auto& [nom, fiches] : parTable) {
        const Disposition& d = DispositionDeTable(nom);
        std::ofstream fichier(dossier / (nom + ".tsv"), std::ios::binary | std::ios::trunc);
        EcritSource(fichier, d, fiches);
        if (!fichier) throw std::runtime_error((dossier / (nom + ".tsv")).string() + ": can't be written");
    }
}

}  // namespace vdx::import
