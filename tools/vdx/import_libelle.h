// The short words of a product: its label of VDXPRO as a prescriber reads
// it ("DOLIPRANE 1000MG CPR B/8") and the family of its form.
#pragma once

#include <compare>
#include <optional>
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

// A word of a package as a French reader reads it, in lower case:
// "comprimé" and "comprimés", "récipient unidose" and "récipients
// unidoses"; a measure is written as its symbol, "ml" and "ml".
struct MotPluriel {
    std::string singulier;
    std::string pluriel;
    auto operator<=>(const MotPluriel&) const = default;
};

// A package as its presentation label tells it: "2 plaquette(s)
// thermoformée(s) PVC de 20 comprimé(s)" is 2 containers "plaquette" of 20
// units "comprimé"; "20 ampoule(s) en verre de 10 ml" 20 "ampoule" of 10 "ml".
struct Conditionnement {
    double contenants = 1;  // the leading count, 1 when the label has none
    MotPluriel contenant;
    double quantite = 0;    // of the unit in one container
    MotPluriel unite;
    bool mesure = false;    // the unit measures (ml, g, UI) rather than counts (comprimé, dose)
};
// The package of the first item of a label (a kit lists its items between
// " - "): the container follows the count, the quantity and its unit follow
// the first "de" before a number. A count of containers without such a
// quantity ("1 flacon(s) en verre") makes each container its own unit.
// None when the label names no container, has neither count nor quantity
// ("flacon(s) en verre"), or no unit after its quantity, or a concentration
// for one ("de 370 MBq/ml").
std::optional<Conditionnement> LitConditionnement(std::string_view presentation);
// The box of a presentation label: "plaquette(s) de 8 comprimé(s)" gives
// "B/8", "20 ampoule(s) de 10 ml" "20X10ML", "1 flacon(s) de 100 ml"
// "100ML"; empty when the label tells no package.
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
