// The requests of the service, read and checked before any call of the
// library: a body or a parameter that breaks a rule gets an error naming
// its field, and nothing is asked of the base.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "tools/vdx/consultation.h"

namespace vdx {

// The limits of a request.
inline constexpr size_t CorpsMax = 1 << 20;         // bytes of a body
inline constexpr size_t ProduitsMax = 200;          // products of a prescription
inline constexpr size_t CodesPatientMax = 200;      // pathologies, and allergies
inline constexpr size_t TexteMax = 100;             // bytes of a text searched or a label
inline constexpr size_t CodeMax = 10;               // characters of a term or a vocabulary code
inline constexpr int32_t PageMax = 200;             // rows of a page of the search
inline constexpr int32_t PageParDefaut = 20;

// What is wrong with a request: the field ("products[2]",
// "patient.pathologies[0].code", "q"), and why.
struct ErreurRequete {
    std::string champ;
    std::string message;
};

// The body of a check: {"products": [...], "patient": {...}, "level": N}.
std::variant<Ordonnance, ErreurRequete> LitVerification(std::string_view corps);

// A whole text of decimal digits read as a number from `min` to `max`.
std::optional<int32_t> EntierDans(std::string_view texte, int32_t min, int32_t max);

// A product's code (CodeCIP): 7 digits. A CIP13 code is refused, not read
// as no product: the session takes CodeCIPs.
inline constexpr size_t LongueurCodeProduit = 7;
inline constexpr char MessageCodeProduit[] = "a product code (CodeCIP) of 7 digits is expected";
bool CodeProduitValide(std::string_view code);

// A page of the step search: the text, the label after which it goes on,
// and the number of rows, each in code page 1252.
struct PageRecherche {
    std::string texte, apres;
    int32_t nombre = PageParDefaut;
};
// From the query's parameters q, after and limit; any other is refused.
std::variant<PageRecherche, ErreurRequete> LitRecherche(const std::multimap<std::string, std::string>& parametres);

// The body of an error, {"error": ..., "field": ...}, or with the library's
// return code {"error": ..., "function": ..., "code": N}.
std::string ErreurJson(const ErreurRequete& erreur);
std::string EchecJson(const EchecAppel& echec, std::string_view texte);

}  // namespace vdx
