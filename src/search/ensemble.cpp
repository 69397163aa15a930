#include "search/ensemble.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <map>
#include <new>
#include <mutex>

namespace vdx {

CodeEnsemble CodeDe(std::string_view cip) {
    CodeEnsemble code{};
    std::memcpy(code.data(), cip.data(), std::min(cip.size(), code.size()));
    return code;
}

std::string TexteDe(const CodeEnsemble& code) {
    const std::string_view octets(code.data(), code.size());
    return std::string(octets.substr(0, octets.find('\0')));
}

void Trie(Candidats& candidats) { std::ranges::sort(candidats); }

void TrieSansDoublons(Candidats& candidats) {
    Trie(candidats);
    candidats.erase(std::unique(candidats.begin(), candidats.end()), candidats.end());
}

int32_t FusionEnsemble(EnsembleCIP& ensemble, const Candidats& candidats, bool exclure) {
    if (ensemble.Codes.empty()) {
        ensemble.Codes = candidats;
    } else {
        std::erase_if(ensemble.Codes, [&](const CodeEnsemble& code) {
            return std::ranges::binary_search(candidats, code) == exclure;
        });
    }
    return ensemble.Nombre();
}

namespace ensembles {
namespace {

struct Registre {
    std::mutex verrou;
    std::map<int32_t, std::shared_ptr<EnsembleCIP>> ensembles;
    int32_t dernier = 0;
};
Registre& LeRegistre() {
    static Registre registre;
    return registre;
}

}  // namespace

int32_t Depose(std::shared_ptr<EnsembleCIP> ensemble) {
    Registre& r = LeRegistre();
    const std::lock_guard verrou(r.verrou);
    if (r.dernier == std::numeric_limits<int32_t>::max()) throw std::bad_alloc();  // no handle left to issue
    r.ensembles.emplace(++r.dernier, std::move(ensemble));
    return r.dernier;
}

std::shared_ptr<EnsembleCIP> Trouve(int32_t handle) {
    Registre& r = LeRegistre();
    const std::lock_guard verrou(r.verrou);
    const auto it = r.ensembles.find(handle);
    return it == r.ensembles.end() ? nullptr : it->second;
}

void Libere(int32_t handle) {
    Registre& r = LeRegistre();
    const std::lock_guard verrou(r.verrou);
    r.ensembles.erase(handle);
}

}  // namespace ensembles
}  // namespace vdx
