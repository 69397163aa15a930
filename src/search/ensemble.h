// The sets of products a criteria search builds call after call: CodeCIPs
// of seven bytes packed in the order of the list that first filled them,
// behind handles the host keeps, which outlive a connection.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vdx {

using CodeEnsemble = std::array<char, 7>;
CodeEnsemble CodeDe(std::string_view cip);  // cut or NUL-padded to 7
std::string TexteDe(const CodeEnsemble& code);

// Codes compared as their seven bytes.
struct EnsembleCIP {
    std::vector<CodeEnsemble> Codes;
    int32_t Nombre() const { return static_cast<int32_t>(Codes.size()); }
};

// Candidates of a criterion, sorted by their seven bytes before a merge.
using Candidats = std::vector<CodeEnsemble>;
void Trie(Candidats& candidats);
void TrieSansDoublons(Candidats& candidats);

// Merges the sorted candidates into the set: an empty set takes them all
// (an emptied set is thus no set, and the next criterion fills it again);
// otherwise the set keeps those the candidates hold (exclure false) or
// those they don't (exclure true), in its order. The set's count.
int32_t FusionEnsemble(EnsembleCIP& ensemble, const Candidats& candidats, bool exclure);

// The sets behind handles, for the whole process: positive handles issued
// in increasing order and never used again; a set freed or never issued is
// none.
// A set in use stays alive until its user lets it go, even when its
// handle is freed meanwhile.
namespace ensembles {
int32_t Depose(std::shared_ptr<EnsembleCIP> ensemble);  // a new handle
std::shared_ptr<EnsembleCIP> Trouve(int32_t handle);   // null for none
void Libere(int32_t handle);
}  // namespace ensembles

}  // namespace vdx
