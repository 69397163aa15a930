// A published extract written by hand, in a directory of its own, imported
// and its sources read back: the fixture of the import's tests.
#pragma once

#include <stdlib.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/codepage.h"
#include "store/fixture.h"
#include "tools/vdx/import.h"

namespace vdx::import::essai {

namespace fs = std::filesystem;

// --- Extracts ------------------------------------------------------------------

inline const char* const Specialites =
    "60000001\tDOLIPRANE 1000 mg, comprimé\tcomprimé\torale\tAutorisation active\tProcédure nationale\tCommercialisée\t"
    "01/01/2000\t\t\t SANOFI AVENTIS FRANCE\tNon\n"
    "60000002\tRANITIDINE ÉLÉ 150 mg, comprimé effervescent\tcomprimé effervescent(e)\torale\tAutorisation active\t"
    "Procédure nationale\tCommercialisée\t01/01/2001\t\t\t TEVA SANTE; ARROW GENERIQUES\tNon\n"
    "60000003\tMORPHINE LAB 10 mg/ml, solution injectable\tsolution injectable\tintraveineuse;sous-cutanée\t"
    "Autorisation active\tProcédure centralisée\tCommercialisée\t01/01/2002\t\t\t LABO MORPHE\tNon\n"
    "60000004\tWARFARINE VIEUX 5 mg, comprimé sécable\tcomprimé sécable\torale\tAutorisation active\t"
    "Procédure nationale\tCommercialisée\t01/01/2003\t\t\t SANOFI AVENTIS FRANCE\tNon\n";

inline const char* const Presentations =
    "60000001\t1111111\tplaquette(s) PVC aluminium de 8 comprimé(s)\tPrésentation active\tDéclaration de "
    "commercialisation\t16/03/2011\t3400911111111\toui\t65%\t1,96\t2,98\t1,02\t\n"
    "60000001\t1111112\tplaquette(s) PVC aluminium de 8 comprimé(s)\tPrésentation active\tDéclaration de "
    "commercialisation\t16/03/2017\t3400911111112\toui\t65 %\t1,96\t2,98\t1,02\t\n"
    "60000002\t2222222\ttube(s) polypropylène de 20 comprimé(s)\tPrésentation active\tDéclaration d'arrêt de "
    "commercialisation\t29/10/2015\t3400922222222\tnon\t30%;65%\t\t\t\t\n"
    "60000003\t3333333\t10 ampoule(s) en verre de 1 ml\tPrésentation active\tDéclaration de commercialisation\t"
    "01/02/2012\t3400933333333\toui\t100%\t2,849,83\t2,850,85\t1,02\t<p>indications</p>\n"
    "60000004\t4444444\tplaquette(s) de 30 comprimé(s)\tPrésentation active\tDéclaration de commercialisation\t"
    "01/02/2012\t3400944444444\toui\t65%\t3,00\t4,02\t1,02\t\n";

inline const char* const Composition =
    "60000001\tcomprimé\t2202\tPARACÉTAMOL\t1000 mg\tun comprimé\tSA\t1\t\n"
    "60000002\tcomprimé\t25783\tRANITIDINE (CHLORHYDRATE DE)\t168 mg\tun comprimé\tSA\t1\t\n"
    "60000002\tcomprimé\t49632\tRANITIDINE BASE\t150 mg\tun comprimé\tFT\t1\t\n"
    "60000003\tsolution\t1099\tSULFATE DE MORPHINE\t10 mg\t1 ml de solution\tSA\t1\t\n"
    "60000004\tcomprimé\t678\tWARFARINE SODIQUE\t5 mg\tun comprimé\tSA\t1\t\n";

inline const char* const Groupes =
    "7\tRANITIDINE 150 mg - AZANTAC 150 mg, comprimé effervescent\t60000002\t1\t2\t\n"
    "9\tPARACETAMOL 1000 mg - DOLIPRANE 1000 mg, comprimé\t60000001\t0\t1\t\n";

inline const char* const Conditions =
    "60000002\tliste II\n"
    "60000003\tstupéfiants\n"
    "60000003\tliste I\n"
    "60000003\tréservé à l'usage HOSPITALIER\n"
    "60000004\tliste I\n";

// Three SMR opinions and one ASMR on DOLIPRANE, none on the others.
inline const char* const AvisSMR =
    "60000001\tCT-1\tInscription (CT)\t20100115\tImportant\tLe service médical rendu est important.\n"
    "60000001\tCT-3\tRéévaluation SMR\t20160620\tModéré\tLe service médical rendu est modéré.\n"
    "60000001\tCT-2\tRenouvellement d'inscription (CT)\t20130301\tImportant\tSMR <important>.\n";
inline const char* const AvisASMR = "60000001\tCT-1\tInscription (CT)\t20100115\tV\tPas d'amélioration (ASMR V).\n";

inline const char* const SubstancesThesaurus = "PARACETAMOL\nRANITIDINE\nMORPHINE\nWARFARINE\nFLUINDIONE\n";
inline const char* const ClassesThesaurus =
    "molecule\tfamille\n"
    "WARFARINE\tANTIVITAMINES K\n"
    "FLUINDIONE\tANTIVITAMINES K\n"
    "MORPHINE\tMORPHINIQUES\n";
inline const char* const CouplesThesaurus =
    "protagoniste1\tprotagoniste2\tdescription_interaction\tdescription_medoc\tmecanisme\tCI\tAD\tPE\tPC\n"
    "ANTIVITAMINES K\tPARACETAMOL\tPrecaution d'emploi Controle plus frequent de l'INR. \t\tRisque d'augmentation "
    "de l'effet de l'antivitamine K.\t\t\t Controle plus frequent de l'INR. \t\n"
    "MORPHINIQUES\tRANITIDINE\tCI - ASDEC Contre-indication avec X. Association deconseillee avec Y.\tVoir aussi : "
    "morphiniques\tMajoration de la depression centrale.\t\t\t\t\n"
    "SELS DE FER PAR VOIE INJECTABLE\tMORPHINE\tA prendre en compte Risque de choc an\t\tRisque de choc "
    "anaphylactique.\t\t\t\t\n";

class Dossier {
public:
    Dossier() {
        chemin_ = vdx::essai::DossierTemporaire("vdx32-import-XXXXXX");
    }
    ~Dossier() { vdx::essai::SupprimeDossier(chemin_.string()); }
    const fs::path& chemin() const { return chemin_; }

private:
    fs::path chemin_;
};

inline std::string Cp1252(const std::string& utf8) { return *codepage::DepuisUtf8(utf8); }

inline void Ecrit(const fs::path& fichier, const std::string& octets) {
    fs::create_directories(fichier.parent_path());
    std::ofstream(fichier, std::ios::binary) << octets;
}

inline std::string Lit(const fs::path& fichier) {
    std::ifstream f(fichier, std::ios::binary);
    std::ostringstream s;
    s << f.rdbuf();
    return s.str();
}

// The rows of a written source, values by column name, in UTF-8.
using Ligne = std::map<std::string, std::string>;
inline std::vector<Ligne> Source(const fs::path& fichier) {
    std::istringstream texte(Lit(fichier));
    std::vector<std::string> colonnes;
    std::vector<Ligne> lignes;
    for (std::string l; std::getline(texte, l);) {
        std::vector<std::string> champs;
        std::istringstream morceaux(l);
        for (std::string c; std::getline(morceaux, c, '\t');) champs.push_back(c);
        if (l.ends_with('\t')) champs.emplace_back();
        if (colonnes.empty()) {
            colonnes = champs;
            continue;
        }
        Ligne ligne;
        for (size_t i = 0; i < colonnes.size(); ++i) ligne[colonnes[i]] = i < champs.size() ? champs[i] : "";
        lignes.push_back(std::move(ligne));
    }
    return lignes;
}

// A published extract, in code page 1252 with CR LF like the files of the
// medicine database, or in UTF-8 with LF.
class Extrait {
public:
    explicit Extrait(bool utf8 = false) : utf8_(utf8) {
        Pose("bdpm/CIS_bdpm.txt", Specialites);
        Pose("bdpm/CIS_CIP_bdpm.txt", Presentations);
        Pose("bdpm/CIS_COMPO_bdpm.txt", Composition);
        Pose("bdpm/CIS_GENER_bdpm.txt", Groupes);
        Pose("bdpm/CIS_CPD_bdpm.txt", Conditions);
        Pose("bdpm/CIS_HAS_SMR_bdpm.txt", AvisSMR);
        Pose("bdpm/CIS_HAS_ASMR_bdpm.txt", AvisASMR);
        Pose("interactions-2016-08/substances.txt", SubstancesThesaurus);
        Pose("interactions-2016-08/substance-classes.tsv", ClassesThesaurus);
        Pose("interactions-2016-08/couples.tsv", CouplesThesaurus);
    }
    void Pose(const std::string& fichier, std::string texte) {
        if (!utf8_) {
            for (size_t p = 0; (p = texte.find('\n', p)) != std::string::npos; p += 2) texte.replace(p, 1, "\r\n");
            texte = Cp1252(texte);
        }
        Ecrit(dossier_.chemin() / fichier, texte);
    }
    void Ajoute(const std::string& fichier, const std::string& texte) {
        Ecrit(dossier_.chemin() / fichier, Lit(dossier_.chemin() / fichier) + (utf8_ ? texte : Cp1252(texte)));
    }
    RapportImport Importe(std::vector<std::string> substances = {}, const std::string& sortie = "sources",
                          size_t parSubstance = 0) {
        return import::Importe(Options(std::move(substances), sortie, parSubstance));
    }
    // An import that writes its sources although it left lines out.
    RapportImport ImporteMalgreRejets() {
        OptionsImport o = Options({}, "sources", 0);
        o.continuer = true;
        return import::Importe(o);
    }
    OptionsImport Options(std::vector<std::string> substances, const std::string& sortie, size_t parSubstance) const {
        return OptionsImport{dossier_.chemin() / "bdpm", dossier_.chemin() / "interactions-2016-08",
                             dossier_.chemin() / sortie, Filtre{std::move(substances), parSubstance}};
    }
    std::vector<Ligne> Table(const std::string& table, const std::string& sortie = "sources") const {
        return Source(dossier_.chemin() / sortie / (table + ".tsv"));
    }
    // The row of `table` whose `colonne` is `valeur`.
    Ligne Fiche(const std::string& table, const std::string& colonne, const std::string& valeur) const {
        for (Ligne& l : Table(table))
            if (l[colonne] == valeur) return l;
        ADD_FAILURE() << "no " << colonne << " " << valeur << " in " << table;
        return {};
    }
    const fs::path& chemin() const { return dossier_.chemin(); }

private:
    Dossier dossier_;
    bool utf8_;
};

// The thesaurus names that matched nothing, without their nearest names.
inline std::vector<std::string> NomsSansSubstance(const RapportImport& r) {
    std::vector<std::string> noms;
    for (const auto& n : r.nomsSansSubstance) noms.push_back(n.nom);
    return noms;
}

inline std::vector<Ligne> Selon(const std::vector<Ligne>& lignes, const std::string& colonne, const std::string& valeur) {
    std::vector<Ligne> s;
    for (const Ligne& l : lignes)
        if (l.at(colonne) == valeur) s.push_back(l);
    return s;
}

}  // namespace vdx::import::essai
