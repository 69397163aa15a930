#include "posology/vocabulaire.h"

#include "checks/tri.h"
#include "session/cadre.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts/posologie.h"

namespace vdx {

namespace {

VDX_TABLE(TableMoments, "VDXPMOM")
VDX_TABLE(TableDurees, "VDXPDUR")
VDX_TABLE(TableSpecifications, "VDXPSPE")
VDX_TABLE(TableNatures, "VDXPNAT")
VDX_TABLE(TableVoies, "VDXPVOI")
VDX_TABLE(TableProfils, "VDXPPRO")
VDX_TABLE(TableUnitesPrise, "VDXPUPRI")

}  // namespace

namespace vocabulaires_posologie {
VocabulairePosologie Moments() { return {TableMoments, VDXPMOM::Libelle}; }
VocabulairePosologie Durees() { return {TableDurees, VDXPDUR::Libelle}; }
VocabulairePosologie Specifications() { return {TableSpecifications, VDXPSPE::Libelle}; }
VocabulairePosologie Natures() { return {TableNatures, VDXPNAT::Libelle}; }
VocabulairePosologie Voies() { return {TableVoies, VDXPVOI::Libelle}; }
VocabulairePosologie Profils() { return {TableProfils, VDXPPRO::Libelle}; }
VocabulairePosologie UnitesPrise() { return {TableUnitesPrise, VDXPUPRI::Libelle}; }
VocabulairePosologie UnitesPrisePluriel() { return {TableUnitesPrise, VDXPUPRI::LibellePluriel}; }
}  // namespace vocabulaires_posologie

std::vector<MotPosologie> MotsPosologie(const VocabulairePosologie& vocabulaire, bool avecCycle) {
    const Table& table = vocabulaire.table();
    TablesOuvertes tables{&table};
    std::vector<MotPosologie> mots;
    if (avecCycle) mots.push_back({CodeCycle, messages::Cycle});
    const size_t debut = mots.size();
    // From the key of four zero bytes: every key, laid little-endian.
    Curseur cles(table);
    for (auto p = cles.SuperieureOuEgale(CleEntiers({0})); p; p = cles.Suivante()) {
        const Fiche fiche(VueFicheA(table, *p));
        mots.push_back({fiche.Entier(VDXPMOM::Code), std::string(fiche.Texte(vocabulaire.libelle))});
    }
    tables.Ferme();
    if (mots.size() == debut) throw Echec{FicheManquante};
    TriEchange(mots, [](const MotPosologie& a, const MotPosologie& b) { return a.Libelle > b.Libelle; });
    return mots;
}

std::optional<std::string> LibellePosologie(const VocabulairePosologie& vocabulaire, int32_t code) {
    const Table& table = vocabulaire.table();
    TablesOuvertes tables{&table};
    Curseur cles(table);
    std::optional<std::string> libelle;
    if (const auto p = cles.Egale(CleEntiers({code})))
        libelle = std::string(Fiche(VueFicheA(table, *p)).Texte(vocabulaire.libelle));
    tables.Ferme();
    return libelle;
}

std::string CodeDureeSurTrois(int32_t code) {
    std::string texte = std::to_string(code);
    if (texte.size() < 3) texte.insert(texte.front() == '-' ? 1 : 0, 3 - texte.size(), '0');
    return texte.substr(0, 3);
}

std::string LibelleUnitePrise(int32_t code, bool pluriel) {
    if (code < 1) throw Echec{Argument1};
    auto libelle = LibellePosologie(pluriel ? vocabulaires_posologie::UnitesPrisePluriel() : vocabulaires_posologie::UnitesPrise(), code);
    if (!libelle) throw Echec{CodeInconnu};
    return std::move(*libelle);
}

std::optional<MomentPrise> MomentDePrise(int32_t code) {
    TablesOuvertes tables{&TableMoments()};
    std::optional<MomentPrise> moment;
    if (const auto p = Curseur(TableMoments()).Egale(CleEntiers({code}))) {
        const Fiche f(VueFicheA(TableMoments(), *p));
        moment = MomentPrise{std::string(f.Texte(VDXPMOM::Libelle)), f.Reel(VDXPMOM::Multiplicateur)};
    }
    tables.Ferme();
    return moment;
}

std::string_view LibelleTerrain(std::string_view terrain) {
    if (terrain.empty()) return {};
    const char seconde = terrain.size() > 1 ? terrain[1] : '\0';
    switch (terrain.front()) {
        case 'A':
            switch (seconde) {
                case '\0': return messages::TerrainAdulte;
                case 'D': return messages::TerrainAdolescent;
                case 'E': return messages::TerrainAdulteEnfant;
                case 'F': return messages::TerrainAdulteFemme;
                case 'H': return messages::TerrainAdulteHomme;
                default: return {};
            }
        case 'E': return seconde == 'N' ? messages::TerrainEnfantNourrisson : messages::TerrainEnfant;
        case 'N': return messages::TerrainNourrisson;
        case 'S': return messages::TerrainSujetAge;
        case 'T': return messages::TerrainToutAge;
        default: return {};
    }
}

}  // namespace vdx
