// Numbers spelled out in French, as prescriptions of narcotics require them:
// no hyphens, no "s" on "quatre vingt", every word behind a blank.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vdx {

// Appends the words of `n` (0 to 999, or to 9999 for the part in front of
// "mille", whose hundreds are then told as in "douze cent") to `texte`.
// `avantMille` marks that part: "cent" takes no "s" there, and a lone 1 is
// not told, so that a thousand is never "un mille".
void CentainesEnLettres(int32_t n, std::string& texte, bool avantMille);

// The words of `valeur` in `sortie`, with a leading blank except for a text
// that starts with "zéro"; a whole part ending with "un" gets "(e)" since
// the gender is not known. Up to three decimals follow " virgule"; a zero
// behind the first non-zero decimal is not told (1.101 is "virgule onze").
// The sign is not told, as in TexteNombre. From ten million on, past what the
// words reach, the figures stand in. Returns 1.
int32_t NombreEnLettres(float valeur, std::string& sortie);
// The same without the "(e)".
int32_t NombreEnLettresSansGenre(float valeur, std::string& sortie);
// NombreEnLettres as a value.
std::string NombreEnLettres(float valeur);

// A number of a prescription in words and in figures `chiffres` (as the
// caller wrote them): " words (figures)", leading blank kept...
std::string MotsPuisChiffres(float valeur, std::string_view chiffres);
// ...or "figures (words)", the words without their first character.
std::string ChiffresPuisMots(float valeur, std::string_view chiffres);

}  // namespace vdx
