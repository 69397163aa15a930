#include "vocabulary/vocabulaires.h"

#include <stdexcept>
#include <string>

#include "store/layouts.h"

namespace vdx {
namespace {

const Gabarit DeuxChaines{TypeChamp::Texte, TypeChamp::Texte};
const Gabarit TroisChaines{TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte};
const Gabarit CodeEntierLibelle{TypeChamp::Entier, TypeChamp::Texte};

const Table& TableDe(const char* nom) {
    const Table* table = TableNommee(nom);
    if (!table) throw std::logic_error(std::string("vocabulaire hors du catalogue : ") + nom);
    return *table;
}

// A member of the engines: prefixes in the engine's buffer. `index` 0 is the
// table's own index number.
Vocabulaire DuMoteur(const char* table, uint16_t decalage, Champ code, ChampTexte libelle, Gabarit gabarit,
                     uint16_t index = 0) {
    const Table& t = TableDe(table);
    return {&t, index ? index : t.index(), decalage, code, libelle, std::nullopt, TexteRechercheMax, std::move(gabarit)};
}

// A copy: prefixes cut to the first part of the key walked, and the folded
// label of the record for its keyword search.
Vocabulaire Copie(const char* table, uint16_t decalage, Champ code, ChampTexte libelle,
                  std::optional<ChampTexte> libelleCle, Gabarit gabarit) {
    const Table& t = TableDe(table);
    const uint16_t longueur = DispositionDe(t).cles.at(decalage).parties.at(0).longueur;
    return {&t, t.index(), decalage, code, libelle, libelleCle, longueur, std::move(gabarit)};
}

Vocabulaire Vocabulaire3(const char* table) {
    using namespace ModeleVocabulaire;
    return Copie(table, 1, Code, Libelle, LibelleCle, TroisChaines);
}

}  // namespace

namespace vocabulaires {

const Vocabulaire& AMM() {
    static const Vocabulaire v = DuMoteur("VDXVAMM", 1, VDXVAMM::CodeTerme, VDXVAMM::Libelle, DeuxChaines);
    return v;
}
const Vocabulaire& AllergieAMM() {
    static const Vocabulaire v = DuMoteur("VDXVAMM", 2, VDXVAMM::CodeTerme, VDXVAMM::Libelle, DeuxChaines);
    return v;
}
const Vocabulaire& CIM10() {
    static const Vocabulaire v = DuMoteur("VDXVCIM", 1, VDXVCIM::Code, VDXVCIM::Libelle, DeuxChaines);
    return v;
}
const Vocabulaire& ChapitresCIM10() {
    static const Vocabulaire v = DuMoteur("VDXVCIMA", 0, VDXVCIMA::Code, VDXVCIMA::Libelle, DeuxChaines);
    return v;
}
const Vocabulaire& CISP() {
    static const Vocabulaire v = DuMoteur("VDXVCISP", 1, VDXVCISP::Code, VDXVCISP::Libelle, DeuxChaines);
    return v;
}

// The substance form: a number for the code, and the index opened on the
// number the export gives.
const Vocabulaire& PA() {
    static const Vocabulaire v = DuMoteur("VDXVPA", 1, VDXVPA::CodeSubstance, VDXVPA::Libelle, CodeEntierLibelle);
    return v;
}
const Vocabulaire& ExcipientParPas() {
    static const Vocabulaire v =
        DuMoteur("VDXVEXC", 1, VDXVEXC::CodeSubstance, VDXVEXC::Libelle, CodeEntierLibelle, 108);
    return v;
}
const Vocabulaire& Excipient() {
    static const Vocabulaire v = DuMoteur("VDXVEXC", 1, VDXVEXC::CodeSubstance, VDXVEXC::Libelle, CodeEntierLibelle);
    return v;
}
// Key base 108 on the index opened on 107: the second label key, 109, whose
// label the rows show, so that a host can go on from the last one.
const Vocabulaire& EEN() {
    static const Vocabulaire v =
        DuMoteur("VDXVEXC", 2, VDXVEXC::CodeSubstance, VDXVEXC::LibelleEEN, CodeEntierLibelle);
    return v;
}

const Vocabulaire& Classe() {
    static const Vocabulaire v =
        Copie("VDXCLA", 1, VDXCLA::CodeClasse, VDXCLA::Libelle, VDXCLA::LibelleCle, TroisChaines);
    return v;
}
const Vocabulaire& ClasseATC() {
    static const Vocabulaire v =
        Copie("VDXYATC", 1, VDXYATC::CodeClasse, VDXYATC::Libelle, VDXYATC::LibelleCle, TroisChaines);
    return v;
}
const Vocabulaire& ClasseDCI() {
    static const Vocabulaire v =
        Copie("VDXWCLAD", 1, VDXWCLAD::CodeClasse, VDXWCLAD::Libelle, VDXWCLAD::LibelleCle, TroisChaines);
    return v;
}
// Families have no label key: their keyword search walks the codes, and a
// prefix is one of a code.
const Vocabulaire& Famille() {
    static const Vocabulaire v =
        Copie("VDXFAM", 0, VDXFAM::CodeFamille, VDXFAM::Libelle, VDXFAM::LibelleCle, TroisChaines);
    return v;
}
const Vocabulaire& Forme() {
    static const Vocabulaire v =
        Copie("VDXIDFOR", 1, VDXIDFOR::CodeForme, VDXIDFOR::Libelle, VDXIDFOR::LibelleCle, TroisChaines);
    return v;
}
const Vocabulaire& Laboratoire() {
    static const Vocabulaire v =
        Copie("VDXLAB", 1, VDXLAB::CodeLaboratoire, VDXLAB::Libelle, std::nullopt, DeuxChaines);
    return v;
}
const Vocabulaire& Examen() {
    static const Vocabulaire v = Vocabulaire3("VDXZBEXA");
    return v;
}
const Vocabulaire& Item() {
    static const Vocabulaire v = Vocabulaire3("VDXZBEXI");
    return v;
}
const Vocabulaire& DicoPatho() {
    static const Vocabulaire v = Vocabulaire3("VDXWDICO");
    return v;
}
const Vocabulaire& MedDC() {
    static const Vocabulaire v =
        Copie("VDXYDCI", 1, VDXYDCI::Code, VDXYDCI::Libelle, VDXYDCI::LibelleCle, TroisChaines);
    return v;
}

}  // namespace vocabulaires
}  // namespace vdx
