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
    const char* nomExport;
    const Table& (*table)();  // keyed first by the CodeCIP, alone or followed by another code
    Champ champ;
    Lecture lecture;
    int32_t bit = 0;
    // The code is tested before the connection: -10 comes before -2.
    bool codeAvantConnexion = false;
};

// The frame: -2; the product code checked and mapped (-10, -13); the
// record looked up (-90 when there is none); the field delivered; -500.
// `sortie` is for Lecture::Texte, emptied first in mode 0.
int32_t Consulte(const Consultation& consultation, const char* code, BSTR* sortie = nullptr);

namespace consultations {

inline constexpr Consultation Generique{"ProduitGenerique_Vdx", TableProduits, VDXPRO::Drapeaux, Lecture::Bit,
                                        VDXPRO::Generique, true};
inline constexpr Consultation Dopant{"ProduitDopant_Vdx", TableProduits, VDXPRO::Drapeaux, Lecture::Bit, VDXPRO::Dopant,
                                     true};
inline constexpr Consultation Referent{"ProduitReferent_Vdx", TableProduits, VDXPRO::Drapeaux, Lecture::Bit,
                                       VDXPRO::Referent, true};
inline constexpr Consultation Hospitalier{"ProduitHospitalier_Vdx", TableProduits, VDXPRO::Drapeaux, Lecture::Bit,
                                          VDXPRO::Hospitalier, true};
inline constexpr Consultation CodeRubrique{"CodeRubrique_Vdx", TableProduits, VDXPRO::CodeRubrique, Lecture::Nombre};
inline constexpr Consultation UCD{"UCD_Vdx", TableComplements, VDXPROA::CodeUCD, Lecture::Texte};
inline constexpr Consultation GenCode{"GenCode_Vdx", TableComplements, VDXPROA::GenCode, Lecture::Texte};
inline constexpr Consultation NombreUCD{"NombreUCDParCIP_Vdx", TableComplements, VDXPROA::NombreUCD, Lecture::Nombre};
inline constexpr Consultation Pictogramme{"GetPictogramme_Vdx", TableComplements, VDXPROA::Pictogramme,
                                          Lecture::Nombre};
inline constexpr Consultation T2A{"IsT2A_Vdx", TableComplements, VDXPROA::T2A, Lecture::Oui};
inline constexpr Consultation Statut{"ProduitStatut_Vdx", TableComplements, VDXPROA::CodeStatut, Lecture::Nombre};
inline constexpr Consultation CIS{"CIP_To_CIS_Vdx", TableSpecialites, VDXYCSCP::CodeCIS, Lecture::Texte};

}  // namespace consultations

}  // namespace vdx
