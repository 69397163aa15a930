// The chapters of a text record: a header of 32 lengths, then the texts one
// behind the other, in pairs: chapter n is field 2n-1 in plain text and
// field 2n in RTF. The one reader of these records for every later use.
#pragma once

#include <string>
#include <string_view>

namespace vdx {

// The text the notice gives for a chapter that has none, and the same
// without its point where a sheet shows it in a cell.
inline constexpr char InformationIndisponible[] = "Information provisoirement indisponible.";
inline constexpr char InformationIndisponibleCourte[] = "Information provisoirement indisponible";

// With `brut`, field n as it stands; otherwise the RTF field of chapter n
// turned into text, and for an empty field the conversion of `texteFixe`.
std::string ExtraitChapitre(int n, std::string_view corps, bool brut, std::string_view texteFixe = {});

// The variant of the notices: field n as it stands, or
// "Information provisoirement indisponible." when it is empty.
std::string ExtraitChapitreNotice(int n, std::string_view corps);

}  // namespace vdx
