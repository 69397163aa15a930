// The flat text of the modes 1 to 3: rows separated by CR LF, fields by "@",
// "#" for an empty first field; its writer, its two readers, and numbers as
// the library writes them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vdx {

inline constexpr char FinDeLigne[] = "\r\n";

// Adds a field. A null field is "absent"; `nouvelleLigne` says that a field
// after a line end starts the row instead of following a separator.
void AjouteChamp(std::optional<std::string_view> champ, std::string& plat, bool nouvelleLigne = true);
// Appends without any rule.
void AjouteTexte(std::string_view texte, std::string& plat);

// The next field of a list from `position`: kind 0 stops at "@" or CR, kind 1
// at "@" only, any other kind gives an empty field. Nullopt when the
// position is at or past the end of the text: the list has ended.
std::optional<std::string> ExtraitChamp(std::string_view texte, size_t& position, int genre);

// What ChampSuivant met.
enum ResultatChamp { TexteFini = 0, ChampLu = 1, LigneFinie = 2, ChampVide = 3 };
// Walks a text that has rows; `tampon` receives the field.
ResultatChamp ChampSuivant(std::string_view texte, size_t& position, std::string& tampon);

// A quantity as the library's texts show it, without trailing zeros and
// without its sign; with `fractions`, halves and quarters as "½", "¼", "¾".
// A value too small to show, or not a finite number, leaves `tampon` as it
// was.
void TexteNombre(float valeur, std::string& tampon, bool fractions);

// A JSON string of a UTF-8 text: quotes, backslashes and control
// characters escaped.
std::string ChaineJson(std::string_view utf8);

}  // namespace vdx
