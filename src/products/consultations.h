// The simple lookups of a product: a code in, one field of one record of the
// product out, as a host string or as the result. One engine (Consulte),
// and one row a export below.
#pragma once

#include <cstdint>

#include "products/fiches.h"
#include "store/champ.h"
#include "store/layouts.h"
#include "vdx32/oleauto.h"

namespace vdx {

// What a lookup gives of its field.
enum class Lecture : uint8_t {
    Texte,   // the text, as a single text result (host string in mode 0); 1
    Nombre,  // the integer, or the decimal text, as the result
    Bit,     // 1 when the integer has `bit`, else 0
    Oui,     // 1 when the integer is not 0, else 0
};

struct Consultation {
    const Table& (*table)();  // keyed first by the CodeCIP, alone or followed by another code
    Champ champ;
    Lecture lecture;
    int32_t bit = 0;
    // The code is tested before the connection: -10 comes before -2.
    bool codeAvantConnexion = false;
};

// -2 (after -10 for an absent or empty code when codeAvantConnexion); the
// product code checked and mapped (-10, -13); the record looked up (-90
// when there is none); the field delivered; -500. `sortie` is for
// Lecture::Texte.
int32_t Consulte(const Consultation& consultation, const char* code, BSTR* sortie = nullptr);

namespace consultations {

inline constexpr Consultation Generique{TableProduits, VDXPRO::Drapeaux, Lecture::Bit,
                                        VDXPRO::Generique, true};
inline constexpr Consultation Dopant{TableProduits, VDXPRO::Drapeaux, Lecture::Bit, VDXPRO::Dopant,
                                     true};
inline constexpr Consultation Referent{TableProduits, VDXPRO::Drapeaux, Lecture::Bit,
                                       VDXPRO::Referent, true};
inline constexpr Consultation Hospitalier{TableProduits, VDXPRO::Drapeaux, Lecture::Bit,
                                          VDXPRO::Hospitalier, true};
inline constexpr Consultation CodeRubrique{TableProduits, VDXPRO::CodeRubrique, Lecture::Nombre};
inline constexpr Consultation UCD{TableComplements, VDXPROA::CodeUCD, Lecture::Texte};
inline constexpr Consultation GenCode{TableComplements, VDXPROA::GenCode, Lecture::Texte};
inline constexpr Consultation NombreUCD{TableComplements, VDXPROA::NombreUCD, Lecture::Nombre};
inline constexpr Consultation Pictogramme{TableComplements, VDXPROA::Pictogramme,
                                          Lecture::Nombre};
inline constexpr Consultation T2A{TableComplements, VDXPROA::T2A, Lecture::Oui};
inline constexpr Consultation Statut{TableComplements, VDXPROA::CodeStatut, Lecture::Nombre};
inline constexpr Consultation CIS{TableSpecialites, VDXYCSCP::CodeCIS, Lecture::Texte};

}  // namespace consultations

}  // namespace vdx
