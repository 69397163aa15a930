#include "maj/reconstruction.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "maj/operations.h"
#include "platform/notices.h"
#include "session/session.h"
#include "store/cles.h"
#include "store/layouts.h"
#include "store/magasin.h"
#include "store/sources.h"

namespace vdx::maj {

namespace {

namespace fs = std::filesystem;

// The rebuilt data file and its index.
constexpr int NumeroDonnees = NumeroTravail, NumeroIndex = NumeroTravail + 1;
constexpr char Provisoire[] = "VDXPROtmp";

// A step of the creation, told to the progress callback with its result.
int Etape(const std::string& mot, int resultat) {
    notices().Progression(0, 0, mot + std::to_string(resultat));
    return resultat;
}

bool SeptChiffres(std::string_view octets) {
    return octets.size() >= 7 && std::all_of(octets.begin(), octets.begin() + 7, [](char c) { return c >= '0' && c <= '9'; });
}

// Adds a key, a label made unique; a key there already is accepted, any
// other error shown.
int AjouteCleProduit(const Disposition& d, size_t numero, std::string& cle, std::string& fiche, magasin::Position position) {
    const int e = vdx::AjouteCle(d, numero, cle, fiche, position, NumeroDonnees);
    if (e != 0 && e != magasin::CleExistante)
        notices().BoiteMessage("Une erreur est survenue lors de l'ajout d'une Cl\xE9 dans le fichier " +
                                   std::to_string(NumeroDonnees + 1 + static_cast<int>(numero)),
                               TitreErreurMaj, StyleExclamation);
    return e;
}

// The records of the raw file into the created table. False after a
// message box.
bool Remplit(std::string_view octets) {
    const Disposition& d = DispositionDe(TableDuCatalogue("VDXPRO"));
    for (; octets.size() >= d.longueur; octets.remove_prefix(d.longueur)) {
        std::string fiche(octets.substr(0, d.longueur));
        if (!SeptChiffres(fiche)) continue;
        const magasin::Position position = magasin::NewRecord(NumeroDonnees);
        if (position == 0) return EchecOperation("NewRecord", 0, magasin::GlobalesMagasin()->ErreurMagasin) != 0;
        if (const int e = magasin::WriteRecordData(NumeroDonnees, position, fiche.data()))
            return EchecOperation("WriteRecordData", 0, e) != 0;
        // The label key: a point more, or its last byte raised, until it is new.
        for (size_t k = 0; k < d.cles.size(); ++k) {
            std::string cle = *CleDe(d, k, fiche);
            if (const int e = AjouteCleProduit(d, k, cle, fiche, position); e != 0 && e != magasin::CleExistante) return false;
        }
    }
    return true;
}

}  // namespace

int32_t ReconstruitProduits(const std::string& repertoire) {
    const fs::path dossier(repertoire);
    std::ifstream brut(dossier / "VDXPRO.DAT", std::ios::binary);
    if (!brut) {
        notices().BoiteMessage("Une erreur est survenue lors de l'ouverture du fichier PRO.", TitreErreurMaj,
                               StyleExclamation);
        return 0;
    }
    const std::string octets((std::istreambuf_iterator<char>(brut)), std::istreambuf_iterator<char>());
    brut.close();
    // The first record: the first seven digits in a row, whatever comes before.
    size_t debut = 0;
    while (debut < octets.size() && !SeptChiffres(std::string_view(octets).substr(debut))) ++debut;

    const Disposition& d = DispositionDe(TableDuCatalogue("VDXPRO"));
    const bool demarre = !session().Connecte;
    if (demarre) magasin::InitialiseMagasin(12, NombreNumeros, 16);
    const std::string donnees = (dossier / (std::string(Provisoire) + ".dat")).string();
    const std::string index = (dossier / (std::string(Provisoire) + ".ndx")).string();
    bool fait = CreeFichiersTable(d, NumeroDonnees, donnees, index, magasin::Exclusif, magasin::Exclusif,
                                  [](const std::string& mot, int resultat) { Etape(mot + " : ", resultat); }) == 0;
    fait = fait && Remplit(std::string_view(octets).substr(debut));
    const int fermeIndex = Etape("CloseCtFile : ", magasin::CloseCtFile(NumeroIndex, magasin::Exclusif));
    const int fermeDonnees = Etape("CloseCtFile : ", magasin::CloseCtFile(NumeroDonnees, magasin::Exclusif));
    fait = fait && fermeIndex == 0 && fermeDonnees == 0;
    if (demarre) magasin::TermineMagasin();
    std::error_code erreur;
    if (fait) {
        // The rebuilt pair in place of the raw file and its index.
        magasin::FermeFichiersInactifs();
        for (const auto& [neuf, place] : {std::pair{donnees, "VDXPRO.DAT"}, std::pair{index, "VDXPRO.NDX"}}) {
            const std::string cible = (dossier / place).string();
            magasin::MarqueRemplace(cible.c_str());
            fs::rename(neuf, cible, erreur);
            if (erreur) break;
        }
    }
    if (!fait || erreur) {
        fs::remove(donnees, erreur);
        fs::remove(index, erreur);
        if (fait)
            notices().BoiteMessage("Une erreur est survenue lors du remplacement du fichier PRO.", TitreErreurMaj,
                                   StyleExclamation);
        return 0;
    }
    return 1;
}

}  // namespace vdx::maj
