// Any bytes as the source of a table of the catalogue, the table chosen by
// the first byte: the reader gives records or refuses the text with an
// ErreurSource, and what it gives is written back and read again to the
// same records.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>

#include "store/layouts.h"
#include "store/sources.h"

namespace {

void Exige(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille) {
    using namespace vdx;
    if (taille == 0) return 0;
    const auto dispositions = Dispositions();
    const Disposition& d = dispositions[donnees[0] % dispositions.size()];
    const std::string_view contenu(reinterpret_cast<const char*>(donnees) + 1, taille - 1);
    Source source;
    try {
        source = LitSource(d, contenu, "fuzz.tsv");
    } catch (const ErreurSource&) {
        return 0;
    }
    std::ostringstream ecrit;
    EcritSource(ecrit, d, source.fiches);
    const Source relue = LitSource(d, ecrit.str(), "fuzz.tsv");
    Exige(relue.fiches.size() == source.fiches.size());
    for (size_t i = 0; i < relue.fiches.size(); ++i) Exige(relue.fiches[i].fiche == source.fiches[i].fiche);
    return 0;
}
