// The folds of text for keys. They work on single bytes of code page 1252
// and know only the accented letters of French usage: a letter outside
// their table is left as it is by MajusculeSansAccent and dropped by the key
// folds, so GLAÇON has the key GLAON.
//
// The key folds read a text up to its first NUL and give it back folded,
// never longer; a caller pads the result to its key's length (CleTexte).
#pragma once

#include <string>
#include <string_view>

namespace vdx {

// An accented letter of the table gives its capital without accent, a to z
// their capitals, every other byte is unchanged.
char MajusculeSansAccent(char octet);
std::string MajusculeSansAccent(std::string_view texte);

// A capital of code page 1252 gives its small letter (É gives é, Œ œ);
// every other byte is unchanged.
char EnMinuscule(char octet);

// Key form: capitals without accents and digits only ("/" too with
// gardeBarre); every other byte is dropped and the text closes up.
std::string PlieCle(std::string_view texte, bool gardeBarre = false);
// The fold of the label keys of products: the first five bytes of the
// source are folded to key form, a "/" among them and every later byte by
// MajusculeSansAccent, so that a label keeps its blanks and punctuation
// after its head. The flag changes nothing: a "/" of the head stays anyway.
std::string PlieCleLibelle(std::string_view texte, bool gardeBarre = false);
// As PlieCle, keeping "-".
std::string PlieMotCle(std::string_view texte, bool gardeBarre = false);

}  // namespace vdx
