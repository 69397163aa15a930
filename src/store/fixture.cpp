#include "store/fixture.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

#include "platform/fichiers.h"
#include "store/layouts.h"
#include "store/magasin.h"

namespace vdx::essai {

std::string DossierTemporaire(const char* motif) {
    // Creating a file on a disk's file system costs about a millisecond, and
    // a base is 238 of them.
    static const std::filesystem::path parent = systeme::DossierEphemere();
    std::string modele = (parent / motif).string();
    if (!systeme::CreeDossierUnique(modele)) throw ErreurSource(modele + ": dossier temporaire impossible");
    return modele;
}

void SupprimeDossier(const std::string& dossier) {
    magasin::FermeFichiersInactifs();
    std::error_code ignore;
    std::filesystem::remove_all(dossier, ignore);
}

namespace {

// A test's base is thrown away with its test: built without syncing its
// files to disk, which was most of a fixture's cost.
RapportConstruction ConstruitSansSynchroniser(const std::vector<Source>& sources, const std::filesystem::path& base,
                                              const OptionsConstruction& options) {
    struct Retablit {
        bool avant = magasin::SynchroniseEcritures(false);
        ~Retablit() { magasin::SynchroniseEcritures(avant); }
    } retablit;
    return ConstruitBase(sources, base, options);
}


// An empty base of each place, built once for the process: the bases of the
// tests copy its files for their empty tables.
class Modeles {
public:
    ~Modeles() {
        if (!dossier_.empty()) SupprimeDossier(dossier_);
    }

    std::filesystem::path Vide(Emplacement emplacement) {
        if (dossier_.empty()) dossier_ = DossierTemporaire("vdx32-modeles-XXXXXX");
        const std::filesystem::path base =
            std::filesystem::path(dossier_) / (emplacement == Emplacement::Base ? "base" : "medecin");
        if (!std::filesystem::exists(base)) {
            OptionsConstruction options;
            options.emplacement = emplacement;
            ConstruitSansSynchroniser({}, base, options);
        }
        return base;
    }

private:
    std::string dossier_;
};

Modeles& modeles() {
    static Modeles m;
    return m;
}

}  // namespace

BaseDeTest::Valeur::Valeur(int32_t n) : texte(std::to_string(n)) {}

BaseDeTest::Valeur::Valeur(double x) {
    char tampon[64];
    texte.assign(tampon, std::to_chars(tampon, tampon + sizeof tampon, static_cast<float>(x)).ptr);
}

BaseDeTest::BaseDeTest(Emplacement emplacement) : emplacement_(emplacement) {
    dossier_ = DossierTemporaire("vdx32-base-XXXXXX");
    repertoire_ = dossier_ + "/base";
    // The tests of the store and of the session start it too; a second
    // start only closes what was left open.
    magasin::InitialiseMagasin(867, NombreNumeros, 16);
}

BaseDeTest::~BaseDeTest() { SupprimeDossier(dossier_); }

Source& BaseDeTest::SourceDe(std::string_view table) {
    const Table* t = TableNommee(table);
    if (t == nullptr || t->emplacement != emplacement_)
        throw ErreurSource(std::string(table) + ": aucune table de ce nom pour cette base");
    const Disposition* d = &DispositionDe(*t);
    auto s = std::find_if(sources_.begin(), sources_.end(), [&](const Source& s) { return s.disposition == d; });
    if (s != sources_.end()) return *s;
    return sources_.emplace_back(Source{d, {}});
}

Redaction BaseDeTest::Redige(std::string_view table, Champs champs) {
    Source& source = SourceDe(table);
    Redaction redaction(*source.disposition, std::string(table) + ", fiche " + std::to_string(source.fiches.size() + 1));
    for (const auto& [nom, valeur] : champs) redaction.Pose(nom, valeur.texte);
    return redaction;
}

BaseDeTest& BaseDeTest::Ajoute(std::string_view table, Champs champs) {
    Redaction redaction = Redige(table, champs);
    SourceDe(table).fiches.push_back(std::move(redaction).Termine());
    construite_ = false;
    return *this;
}

BaseDeTest& BaseDeTest::AjouteAvecCles(std::string_view table, Champs champs,
                                       std::initializer_list<std::pair<size_t, std::string>> cles) {
    Redaction redaction = Redige(table, champs);
    for (const auto& [numero, cle] : cles) redaction.ImposeCle(numero, cle);
    SourceDe(table).fiches.push_back(std::move(redaction).Termine());
    construite_ = false;
    return *this;
}

const std::string& BaseDeTest::Repertoire() {
    if (!construite_) {
        OptionsConstruction options;
        options.remplace = true;
        options.emplacement = emplacement_;
        options.modele = modeles().Vide(emplacement_);
        avertissements_ = ConstruitSansSynchroniser(sources_, repertoire_, options).avertissements;
        construite_ = true;
    }
    return repertoire_;
}

}  // namespace vdx::essai
