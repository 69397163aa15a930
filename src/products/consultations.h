// The simple lookups of a product: a CodeCIP in, one field of one record of
// the product out, as a text or as a number. One engine, and one row a
// lookup below.
#pragma once

#include <cstdint>

#include "products/fiches.h"
#include "store/champ.h"
#include "store/layouts.h"

namespace vdx {

// What a lookup gives of its field.
enum class Lecture : uint8_t {
    Texte,   // the text
    Nombre,  // the integer, or the decimal text, as the result
    Bit,     // 1 when the integer has `bit`, else 0
    Oui,     // 1 when the integer is not 0, else 0
};

struct Consultation {
    const Table& (*table)();  // keyed first by the CodeCIP, alone or followed by another code
    Champ champ;
    Lecture lecture;
    int32_t bit = 0;
};

// The field of the product's record: Echec(-90) when there is none, -500.
std::string TexteConsulte(const Consultation& consultation, const std::string& cip);
int32_t ValeurConsultee(const Consultation& consultation, const std::string& cip);

namespace consultations {

inline constexpr Consultation Generique{TableProduits, VDXPRO::Drapeaux, Lecture::Bit,
                                        VDXPRO::Generique};
inline constexpr Consultation Dopant{TableProduits, VDXPRO::Drapeaux, Lecture::Bit, VDXPRO::Dopant};
inline constexpr Consultation Referent{TableProduits, VDXPRO::Drapeaux, Lecture::Bit,
                                       VDXPRO::Referent};
inline constexpr Consultation Hospitalier{TableProduits, VDXPRO::Drapeaux, Lecture::Bit,
                                          VDXPRO::Hospitalier};
inline constexpr Consultation CodeRubrique{TableProduits, VDXPRO::CodeRubrique, Lecture::Nombre};
inline constexpr Consultation UCD{TableComplements, VDXPROA::CodeUCD, Lecture::Texte};
inline constexpr Consultation GenCode{TableComplements, VDXPROA::GenCode, Lecture::Texte};
inline constexpr Consultation NombreUCD{TableComplements, VDXPROA::NombreUCD, Lecture::Nombre};
inline constexpr Consultation Pictogramme{TableComplements, VDXPROA::Pictogramme,
                                          Lecture::Nombre};
inline constexpr Consultation T2A{TableComplements, VDXPROA::T2A, Lecture::Oui};
inline constexpr Consultation Statut{TableComplements, VDXPROA::CodeStatut, Lecture::Nombre};
inline constexpr Consultation CIS{TableSpecialites, VDXYCSCP::CodeCIS, Lecture::Texte};
inline constexpr Consultation Secabilite{TableIdentification, VDXIDPRO::Secabilite, Lecture::Nombre};

}  // namespace consultations

}  // namespace vdx
