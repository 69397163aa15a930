// The public medicine database as published: one struct a file, its
// columns by name, in code page 1252. A presentation (CIP7) belongs to one
// speciality (CIS), which gives its composition, routes, form, holders and
// generic group.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/vdx/import_lecture.h"

namespace vdx::import {

struct Specialite {  // CIS_bdpm.txt
    std::string cis;
    std::string denomination;  // "DOLIPRANE 1000 mg, comprimé"
    std::string forme;
    std::vector<std::string> voies;
    std::string procedure;
    std::string etat;
    std::vector<std::string> titulaires;
    std::string dateAMM;  // JJ/MM/AAAA
    std::string statut;   // of the authorisation: "Autorisation active"
    std::string alerte;   // "Alerte", "Warning disponibilité", or empty
};

struct Presentation {  // CIS_CIP_bdpm.txt
    size_t ligne = 0;  // in the file, for the messages
    std::string cis;
    std::string cip7;
    std::string libelle;  // "plaquette(s) PVC aluminium de 8 comprimé(s)"
    std::string statut;
    std::string etat;     // marketing declared, or stopped
    std::string date;     // JJ/MM/AAAA of that declaration
    std::string cip13;
    std::vector<std::string> taux;  // "65%", "100 %"
    std::string prix;               // without the dispensing fee, decimal comma
    std::string prixHonoraire;      // with it
    std::string honoraire;          // the dispensing fee
    std::string indications;        // the reimbursed indications, HTML
};

struct Composant {  // CIS_COMPO_bdpm.txt
    std::string cis;
    std::string element;
    int code = 0;
    std::string nom;
    std::string dosage;
    std::string reference;  // "un comprimé"
    std::string nature;     // "SA" or "FT"
    std::string lien;       // joins an SA and its FT within a speciality
};

struct MembreGroupe {  // CIS_GENER_bdpm.txt
    int groupe = 0;
    std::string libelle;
    std::string cis;
    int type = 0;  // 0 reference, 1 generic, 2 complementary, 4 substitutable
};

struct Condition {  // CIS_CPD_bdpm.txt
    std::string cis;
    std::string texte;
};

// An opinion of the transparency commission on a speciality
// (CIS_HAS_SMR_bdpm.txt, CIS_HAS_ASMR_bdpm.txt).
struct AvisHAS {
    std::string cis;
    bool amelioration = false;  // an ASMR, else an SMR
    std::string dossier;        // "CT-15956"
    std::string motif;          // "Inscription (CT)"
    std::string date;           // AAAAMMJJ
    std::string niveau;         // "Important", "V"
    std::string texte;
};

struct Bdpm {
    std::vector<Specialite> specialites;
    std::vector<Presentation> presentations;
    std::vector<Composant> composants;
    std::vector<MembreGroupe> groupes;
    std::vector<Condition> conditions;
    std::vector<AvisHAS> avis;
};

// Reads the seven files of `dossier`; a line it can't use is told to the
// journal. A missing file is an ErreurImport naming it.
Bdpm LitBdpm(const std::filesystem::path& dossier, Journal& journal);

}  // namespace vdx::import
