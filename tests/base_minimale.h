// A base made in a temporary directory through the store, for the tests of
// the session and the delivery: each table is created with a record length
// and a key length, and filled with records given with their keys.
#pragma once

#include <stdlib.h>

#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "store/catalogue.h"
#include "store/magasin.h"

namespace vdx::essai {

// Throws when the store refuses: the tests and benchmarks stop there.
inline void Verifie(bool ok, const char* quoi) {
    if (!ok) throw std::runtime_error(std::string("base de test : ") + quoi);
}

class BaseMinimale {
public:
    BaseMinimale() {
        char modele[] = "/tmp/vdx32-essai-XXXXXX";
        repertoire_ = mkdtemp(modele);
        magasin::InitialiseMagasin(867, NombreNumeros, 16);
    }
    ~BaseMinimale() { std::filesystem::remove_all(repertoire_); }

    const std::string& Repertoire() const { return repertoire_; }
    std::string Chemin(const char* fichier) const { return repertoire_ + "/" + fichier; }

    // Records as (key, record bytes) pairs.
    using Fiches = std::vector<std::pair<std::string, std::string>>;

    void Cree(const char* nom, uint32_t longueurFiche, int longueurCle, const Fiches& fiches = {}) {
        using namespace magasin;
        const Table& t = *TableNommee(nom);
        Verifie(CreateDataFile(t.donnees, Chemin(t.fichierDonnees).c_str(), longueurFiche, 4096, Partage) == 0,
                t.fichierDonnees);
        Verifie(CreateIndexFile(t.index(), Chemin(t.fichierIndex).c_str(), longueurCle, 0, 0, 0, 4096, Partage) == 0,
                t.fichierIndex);
        for (const auto& [cle, octets] : fiches) {
            std::string fiche(longueurFiche, '\0');
            std::memcpy(fiche.data(), octets.data(), std::min<size_t>(octets.size(), longueurFiche));
            std::string k(static_cast<size_t>(longueurCle), '\0');
            std::memcpy(k.data(), cle.data(), std::min<size_t>(cle.size(), k.size()));
            const Position p = NewRecord(t.donnees);
            Verifie(p != 0 && WriteRecordData(t.donnees, p, fiche.data()) == 0, "ecriture");
            Verifie(AddRecordKey(t.index(), k.data(), p, 0) == 0, "cle");
        }
        Verifie(CloseCtFile(t.index(), Partage) == 0 && CloseCtFile(t.donnees, Partage) == 0, "fermeture");
    }

    // The identity records of a base: version, date, currency, file version.
    void CreeIdentite(const std::string& date, const std::string& versionFichiers = "4.6.2.0",
                      bool avecMonnaie = true) {
        Fiches fiches;
        auto ajoute = [&](int32_t cle, const std::string& texte) {
            std::string k(4, '\0');
            std::memcpy(k.data(), &cle, 4);
            fiches.emplace_back(k, k + texte);
        };
        ajoute(0, "Base de test");
        ajoute(1, date);
        if (avecMonnaie) ajoute(2, "EUR");
        ajoute(3, versionFichiers);
        Cree("VDXDAT", 84, 4, fiches);
    }

    // What every connection needs: VDXPRO and the identity.
    void CreeMinimum(const std::string& date = "01/01/2026") {
        Cree("VDXPRO", 64, 7);
        CreeIdentite(date);
    }

private:
    std::string repertoire_;
};

}  // namespace vdx::essai
