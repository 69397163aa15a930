// Small text operations of the import, on code page 1252 text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vdx::import {

// Blanks at both ends removed, runs of blanks inside made one.
std::string Nettoie(std::string_view texte);
// Capitals without accents, cleaned as Nettoie: the form in which names
// are compared.
std::string Plie(std::string_view texte);
// A name in lower case but its first letter: "PARACÉTAMOL" gives "Paracétamol".
std::string Capitale(std::string_view texte);
// The pieces of a text between separators, each cleaned; empty ones dropped.
std::vector<std::string> Decoupe(std::string_view texte, char separateur);
// At most `longueur` bytes, without a blank at the end.
std::string Coupe(std::string_view texte, size_t longueur);
bool Commence(std::string_view texte, std::string_view debut);
bool Contient(std::string_view texte, std::string_view morceau);

// HTML as plain text: tags dropped, the common entities decoded, blanks
// made one as Nettoie.
std::string TexteSansBalises(std::string_view html);

// A text of code page 1252 as the RTF of a stored chapter: "{", "}" and
// "\\" escaped, the bytes above 127 as "\\'xx".
std::string RtfDe(std::string_view texte);

// A decimal number as published: "1,5", "1 000", "0.25".
std::optional<double> Nombre(std::string_view texte);
// A price in cents: "44,38" and "2,849,83" (the last comma is the decimal one).
std::optional<int64_t> Centimes(std::string_view texte);
// The date "JJ/MM/AAAA" as eight digits JJMMAAAA, or none.
std::optional<std::string> DateChiffres(std::string_view texte);
// A number as the sources write it: no trailing zeros, no exponent.
std::string TexteNombre(double valeur);
// An integer in decimal with leading zeros.
std::string Chiffres(int64_t valeur, size_t largeur);

}  // namespace vdx::import
