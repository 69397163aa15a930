// Helpers to declare the layouts of a family of tables (store/layouts/*.cpp).
#pragma once

#include <string>
#include <vector>

#include "store/layouts.h"

namespace vdx::disposition {

// A field laid into a key on its whole capacity (a text) or four bytes.
PartieCle P(Champ champ, Pli pli = Pli::Brut, char bourrage = '\0');
PartieCle P(Champ champ, uint16_t longueur, Pli pli = Pli::Brut, char bourrage = '\0');

// A key of its parts laid end to end, as long as they are, or longer.
Cle Sur(std::vector<PartieCle> parties);
Cle Sur(uint16_t longueur, std::vector<PartieCle> parties);
// The key made unique by its label with points (RegleUnicite).
Cle Unique(Cle cle, ChampTexte libelle);
Cle Facultative(Cle cle);

// A fixed table; its fields in any order, kept in the order of their offsets.
Disposition Fixe(const char* table, uint32_t longueur, std::vector<Champ> champs, std::vector<Cle> cles);

// The shared shapes of store/layouts/modeles.h, with as many keys as the
// catalogue gives the table.
Disposition Mot(const char* table);
Disposition CodeLibelle(const char* table);
Disposition Classe(const char* table);
Disposition ClasseProduit(const char* table);
Disposition SubstanceProduit(const char* table);
Disposition Vocabulaire(const char* table);
Disposition Lien(const char* table);
Disposition Concept(const char* table);
Disposition Recommandations(const char* table);
Disposition TexteSeul(const char* table);

// Variable tables keyed outside their records.
Disposition Chapitres(const char* table, std::vector<std::string> sections, ChampTexte cle);
Disposition TexteFinal(const char* table, uint32_t longueur, uint32_t debut, std::vector<Champ> champs,
                       std::vector<Champ> champsCle, std::string partie);
// Sections in pairs, chapter n being Texte<n> and Rtf<n>.
std::vector<std::string> SectionsEnPaires(int chapitres);

// The layouts of each family.
std::vector<Disposition> FamilleProduits();
std::vector<Disposition> FamilleIdentification();
std::vector<Disposition> FamillePosologie();
std::vector<Disposition> FamilleComposition();
std::vector<Disposition> FamilleAllergies();
std::vector<Disposition> FamilleInteractions();
std::vector<Disposition> FamilleReglementaire();
std::vector<Disposition> FamilleDocuments();
std::vector<Disposition> FamilleMedecin();

}  // namespace vdx::disposition
