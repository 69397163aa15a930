// The short words of a product: its label of VDXPRO as a prescriber reads
// it ("DOLIPRANE 1000MG CPR B/8") and the family of its form.
#pragma once

#include <string>
#include <string_view>

namespace vdx::import {

// Room of a product label.
inline constexpr size_t LongueurLibelle = 34;

// The name and dosage of a denomination, folded and compacted:
// "Doliprane 1000 mg, comprimé" gives "DOLIPRANE 1000MG".
std::string NomDosage(std::string_view denomination);
// A pharmaceutical form in its abbreviations: "comprimé pelliculé sécable"
// gives "CPR PELL SEC".
std::string AbregeForme(std::string_view forme);
// The box of a presentation label: "plaquette(s) de 8 comprimé(s)" gives
// "B/8", "20 ampoule(s) de 10 ml" "20X10ML", "1 flacon(s) de 100 ml"
// "100ML"; empty when the label tells no quantity.
std::string Boite(std::string_view presentation);
// The three put together within LongueurLibelle capitals: the name is cut
// first, the form then.
std::string LibelleProduit(std::string_view denomination, std::string_view forme, std::string_view presentation);

// The two letters that lead the code of a form: forms of one family can
// replace one another ("CP" tablets, "CL" prolonged-release tablets, "IN"
// injectables...). No family begins with "A", "B", "J" or "D", which group
// wider.
std::string FamilleForme(std::string_view forme);

}  // namespace vdx::import
