#include "maj/unite.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/fichiers.h"
#include "session/cadre.h"
#include "session/session.h"
#include "store/magasin.h"

namespace vdx::maj {

namespace {

namespace fs = std::filesystem;

// The steps of a switch: the journal written aside, put in place, then
// each rename from this number on.
constexpr int EtapeJournalEcrit = 1, EtapeJournalPose = 2, EtapeRenommages = 2;

int ModeEcriture(const Table& table) {
    return table.genre == Genre::Variable ? magasin::Exclusif | magasin::Variable : magasin::Exclusif;
}

// The crash tests stop the process at a step of the switch: when the
// environment's VDX_ESSAI_ARRET_MAJ names it, the process ends there at
// once, as a kill would end it.
void PointDArret(int etape) {
    static const char* const arret = std::getenv("VDX_ESSAI_ARRET_MAJ");
    if (arret && std::atoi(arret) == etape) std::_Exit(137);
}

// The journal: one line a rename, the copy then the file it replaces.
std::vector<std::pair<std::string, std::string>> LitJournal(const fs::path& journal) {
    std::vector<std::pair<std::string, std::string>> renommages;
    std::ifstream f(journal, std::ios::binary);
    std::string ligne;
    while (std::getline(f, ligne)) {
        if (ligne.ends_with('\r')) ligne.pop_back();  // a journal another tool wrote in text mode
        const size_t tab = ligne.find('\t');
        if (tab != std::string::npos) renommages.emplace_back(ligne.substr(0, tab), ligne.substr(tab + 1));
    }
    return renommages;
}

// Renames what the journal lists whose copy is still there; the journal
// goes once every one is in place.
bool AppliqueJournal(const fs::path& journal) {
    magasin::FermeFichiersInactifs();
    bool complet = true;
    int etape = EtapeRenommages;
    for (const auto& [copie, fichier] : LitJournal(journal)) {
        std::error_code erreur;
        if (!fs::exists(copie, erreur)) continue;
        magasin::MarqueRemplace(fichier.c_str());
        fs::rename(copie, fichier, erreur);
        if (erreur) complet = false;
        PointDArret(++etape);
    }
    std::error_code erreur;
    if (complet) fs::remove(journal, erreur);
    return complet;
}

}  // namespace

std::string UniteMaj::Chemin(const char* fichier) const { return (fs::path(base_) / fichier).string(); }

void UniteMaj::OuvreFichier(int numero, const char* fichier, int mode) {
    const std::string copie = Chemin(fichier) + SuffixeCopie;
    if (magasin::OpenCtFile(numero, copie.c_str(), mode) == 0) return;
    magasin::CloseCtFile(numero, magasin::LectureSeule);
    if (magasin::OpenCtFile(numero, copie.c_str(), mode) == 0) return;
    session().FichierErreur = fichier;
    throw EchecMagasinSur(fichier);
}

void UniteMaj::Ouvre(const Table& table) {
    if (std::ranges::find(copiees_, &table) == copiees_.end()) {
        for (const char* fichier : {table.fichierDonnees, table.fichierIndex}) {
            std::error_code erreur;
            fs::copy_file(Chemin(fichier), Chemin(fichier) + SuffixeCopie, fs::copy_options::overwrite_existing, erreur);
            if (erreur) {
                session().FichierErreur = fichier;
                throw Echec{EchecMagasin, magasin::Creation, 0, fichier};
            }
        }
        copiees_.push_back(&table);
    }
    OuvreFichier(table.donnees, table.fichierDonnees, ModeEcriture(table));
    ouvertes_.push_back(&table);
    OuvreFichier(table.index(), table.fichierIndex, magasin::Exclusif);
}

void UniteMaj::Ferme(const Table& table) {
    const auto o = std::ranges::find(ouvertes_, &table);
    if (o == ouvertes_.end()) return;
    ouvertes_.erase(o);
    const int erreurDonnees = magasin::CloseCtFile(table.donnees, ModeEcriture(table));
    const int erreurIndex = magasin::CloseCtFile(table.index(), magasin::Exclusif);
    if (erreurDonnees != 0 && erreurDonnees != magasin::NumeroInvalide)
        throw Echec{EchecMagasin, static_cast<int16_t>(erreurDonnees), 0, table.fichierDonnees};
    if (erreurIndex != 0 && erreurIndex != magasin::NumeroInvalide)
        throw Echec{EchecMagasin, static_cast<int16_t>(erreurIndex), 0, table.fichierIndex};
}

void UniteMaj::Valide() {
    while (!ouvertes_.empty()) Ferme(*ouvertes_.back());
    const fs::path journal = fs::path(base_) / NomJournal;
    const fs::path provisoire = journal.string() + SuffixeCopie;
    {
        std::ostringstream texte;
        for (const Table* t : copiees_)
            for (const char* fichier : {t->fichierDonnees, t->fichierIndex})
                texte << Chemin(fichier) << SuffixeCopie << '\t' << Chemin(fichier) << '\n';
        if (!systeme::EcritFichierSur(provisoire.string(), texte.str()))
            throw Echec{EchecMagasin, magasin::Ecriture, 0, NomJournal};
    }
    PointDArret(EtapeJournalEcrit);
    std::error_code erreur;
    fs::rename(provisoire, journal, erreur);
    if (erreur) throw Echec{EchecMagasin, magasin::Ecriture, 0, NomJournal};
    PointDArret(EtapeJournalPose);
    finie_ = true;
    AppliqueJournal(journal);
}

void UniteMaj::Abandonne() {
    for (const Table* t : ouvertes_) {
        magasin::CloseCtFile(t->donnees, ModeEcriture(*t));
        magasin::CloseCtFile(t->index(), magasin::Exclusif);
    }
    ouvertes_.clear();
    // The process keeps closed files open for its next opens: the copies'
    // go before they are removed, or a next copy at their path would be
    // written through them.
    magasin::FermeFichiersInactifs();
    for (const Table* t : copiees_)
        for (const char* fichier : {t->fichierDonnees, t->fichierIndex}) {
            std::error_code erreur;
            fs::remove(Chemin(fichier) + SuffixeCopie, erreur);
        }
    copiees_.clear();
    finie_ = true;
}

UniteMaj::~UniteMaj() {
    if (!finie_) Abandonne();
}

bool TermineJournal(const std::string& base) {
    std::error_code erreur;
    const fs::path journal = fs::path(base) / NomJournal;
    return !fs::exists(journal, erreur) || AppliqueJournal(journal);
}

bool TermineMajInterrompue(const std::string& base) {
    if (!TermineJournal(base)) return false;
    std::error_code erreur;
    for (const auto& e : fs::directory_iterator(base, erreur)) {
        const std::string nom = e.path().filename().string();
        if (nom.ends_with(SuffixeCopie)) fs::remove(e.path(), erreur);
    }
    return true;
}

}  // namespace vdx::maj
