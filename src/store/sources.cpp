#include "store/sources.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <fstream>
#include <map>
#include <ostream>
#include <set>
#include <sstream>

#include "platform/chemin.h"
#include "platform/codepage.h"
#include "platform/fichiers.h"
#include "store/cles.h"
#include "store/magasin.h"

namespace vdx {

std::string VersHexa(std::string_view octets) {
    static constexpr char Hexa[] = "0123456789abcdef";
    std::string hexa;
    for (unsigned char o : octets) {
        hexa += Hexa[o >> 4];
        hexa += Hexa[o & 0xF];
    }
    return hexa;
}

namespace {

namespace fs = std::filesystem;

// --- Values ---------------------------------------------------------------

int ChiffreHexa(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

std::optional<std::string> DepuisHexa(std::string_view hexa) {
    if (hexa.size() % 2) return std::nullopt;
    std::string octets;
    for (size_t i = 0; i < hexa.size(); i += 2) {
        const int fort = ChiffreHexa(hexa[i]), faible = ChiffreHexa(hexa[i + 1]);
        if (fort < 0 || faible < 0) return std::nullopt;
        octets += static_cast<char>(fort << 4 | faible);
    }
    return octets;
}

template <class Nombre>
std::optional<Nombre> Lit(std::string_view texte) {
    Nombre n{};
    const char* fin = texte.data() + texte.size();
    const auto [p, erreur] = std::from_chars(texte.data(), fin, n);
    if (texte.empty() || erreur != std::errc() || p != fin) return std::nullopt;
    return n;
}

template <class Nombre>
std::string Ecrit(Nombre n) {
    char tampon[64];
    return std::string(tampon, std::to_chars(tampon, tampon + sizeof tampon, n).ptr);
}

bool Octets(const Disposition& d) { return d.corps == Corps::OctetsFinal; }

// --- Lines ----------------------------------------------------------------

std::string Echappe(std::string_view valeur) {
    std::string e;
    for (char c : valeur) switch (c) {
            case '\\': e += "\\\\"; break;
            case '\t': e += "\\t"; break;
            case '\n': e += "\\n"; break;
            case '\r': e += "\\r"; break;
            case '\0': e += "\\0"; break;
            default: e += c;
        }
    return e;
}

// Nullopt on a backslash that stands for nothing.
std::optional<std::string> Desechappe(std::string_view valeur) {
    std::string v;
    for (size_t i = 0; i < valeur.size(); ++i) {
        if (valeur[i] != '\\') {
            v += valeur[i];
            continue;
        }
        if (++i == valeur.size()) return std::nullopt;
        switch (valeur[i]) {
            case '\\': v += '\\'; break;
            case 't': v += '\t'; break;
            case 'n': v += '\n'; break;
            case 'r': v += '\r'; break;
            case '0': v += '\0'; break;
            default: return std::nullopt;
        }
    }
    return v;
}

std::vector<std::string_view> Decoupe(std::string_view ligne, char separateur) {
    std::vector<std::string_view> morceaux;
    for (size_t debut = 0;;) {
        const size_t fin = ligne.find(separateur, debut);
        morceaux.push_back(ligne.substr(debut, fin - debut));
        if (fin == std::string_view::npos) return morceaux;
        debut = fin + 1;
    }
}

std::string Origine(const std::string& fichier, size_t ligne) { return fichier + ":" + std::to_string(ligne); }

// --- The store ------------------------------------------------------------

std::string EtatMagasin() {
    const magasin::Globales* g = magasin::GlobalesMagasin();
    return "erreur " + std::to_string(g->ErreurMagasin) + ", etat " + std::to_string(g->EtatIOMagasin);
}

[[noreturn]] void EchecMagasin(const std::string& fichier, const char* operation) {
    throw ErreurSource(fichier + ": " + operation + " a echoue (" + EtatMagasin() + ")");
}

void Verifie(int erreur, const std::string& fichier, const char* operation) {
    if (erreur != 0) EchecMagasin(fichier, operation);
}

int ModeDonnees(const Table& t, int mode) { return mode | (t.genre == Genre::Variable ? magasin::Variable : 0); }

// The two files of a table bound to their numbers, closed on every way out.
class FichiersOuverts {
public:
    FichiersOuverts(const Table& t, int mode) : table_(t), mode_(mode) {}
    ~FichiersOuverts() {
        if (ouverts_ > 0) magasin::CloseCtFile(table_.donnees, ModeDonnees(table_, mode_));
        if (ouverts_ > 1) magasin::CloseCtFile(table_.index(), mode_);
    }
    void Ouvert() { ++ouverts_; }
    // The data file then the index of `base`, read-only.
    void OuvreEnLecture(const fs::path& base) {
        using namespace magasin;
        Verifie(OpenCtFile(table_.donnees, (base / table_.fichierDonnees).string().c_str(), ModeDonnees(table_, LectureSeule)),
                table_.fichierDonnees, "OpenCtFile");
        Ouvert();
        Verifie(OpenCtFile(table_.index(), (base / table_.fichierIndex).string().c_str(), LectureSeule), table_.fichierIndex,
                "OpenCtFile");
        Ouvert();
    }
    // Closing commits: its failure is the build's.
    void Ferme() {
        const int donnees = ouverts_ > 0 ? magasin::CloseCtFile(table_.donnees, ModeDonnees(table_, mode_)) : 0;
        const int index = ouverts_ > 1 ? magasin::CloseCtFile(table_.index(), mode_) : 0;
        ouverts_ = 0;
        Verifie(donnees, table_.fichierDonnees, "CloseCtFile");
        Verifie(index, table_.fichierIndex, "CloseCtFile");
    }

private:
    const Table& table_;
    int mode_;
    int ouverts_ = 0;
};

bool Est(const Disposition& d, const char* nom) { return std::string_view(d.table->nom) == nom; }

// The records the builder files from those of VDXPRO.
std::vector<std::string> FichesDerivees(const Disposition& d, const std::vector<std::string>& produits) {
    std::vector<std::string> derivees;
    for (const std::string& p : produits) {
        if (Est(d, "VDXVPRO"))
            for (std::string& f : FichesParCategorie(Fiche(p))) derivees.push_back(std::move(f));
        else if (Est(d, "VDXLABP"))
            derivees.push_back(FicheLaboratoire(Fiche(p)));
    }
    return derivees;
}

bool EstDerivee(const Disposition& d) { return Est(d, "VDXVPRO") || Est(d, "VDXLABP"); }

// The records of VDXDAT that name the tables a base was built from sources:
// the builder's own, never taken from a source nor given back by a dump.
bool EstFicheDesSources(const Disposition& d, const Enregistrement& e) {
    return Est(d, "VDXDAT") && Fiche(e.fiche).Entier(VDXDAT::Numero) >= VDXDAT::PremiereTableSourcee;
}

std::vector<Enregistrement> FichesDesSources(const Disposition& d, const std::vector<std::string>& tables) {
    std::vector<Enregistrement> fiches;
    for (size_t i = 0; i < tables.size(); ++i) {
        FicheEcrite f(d.longueur);
        f.Entier(VDXDAT::Numero, VDXDAT::PremiereTableSourcee + static_cast<int32_t>(i));
        if (!f.Texte(VDXDAT::Texte, tables[i])) throw ErreurSource(tables[i] + ": nom de table trop long");
        fiches.push_back({std::move(f.Octets()), {}, {}, "VDXDAT (des sources)"});
    }
    return fiches;
}

// Fills one table, created in `dossier` (or copied from `modele` when it has
// no records); the records of VDXPRO are kept as filed in `produits`.
void Remplis(const Disposition& d, const fs::path& dossier, const std::vector<Enregistrement>& fiches,
             const fs::path& modele, RapportConstruction& rapport, std::vector<std::string>* produits) {
    using namespace magasin;
    const Table& t = *d.table;
    if (fiches.empty() && !modele.empty()) {
        fs::copy_file(modele / t.fichierDonnees, dossier / t.fichierDonnees);
        fs::copy_file(modele / t.fichierIndex, dossier / t.fichierIndex);
        return;
    }
    const bool variable = t.genre == Genre::Variable;
    FichiersOuverts fichiers(t, Exclusif);
    Verifie(CreateDataFile(t.donnees, (dossier / t.fichierDonnees).string().c_str(), d.longueur, 4096, ModeDonnees(t, Exclusif)),
            t.fichierDonnees, "CreateDataFile");
    fichiers.Ouvert();
    Verifie(CreateIndexFile(t.index(), (dossier / t.fichierIndex).string().c_str(), d.cles[0].longueur, 0, 0,
                            static_cast<int>(d.cles.size()), 4096, Exclusif),
            t.fichierIndex, "CreateIndexFile");
    fichiers.Ouvert();
    for (size_t k = 1; k < d.cles.size(); ++k)
        Verifie(CreateIndexMember(t.index(), d.cles[k].longueur, 0, 0, static_cast<int>(k)), t.fichierIndex,
                "CreateIndexMember");

    for (const Enregistrement& e : fiches) {
        std::string fiche = e.fiche;
        const Position position = variable ? NouvelleFicheVariable(t.donnees, static_cast<uint32_t>(fiche.size()))
                                           : NewRecord(t.donnees);
        if (position == 0) EchecMagasin(e.origine, "NewRecord");
        Verifie(variable ? EcritFicheVariable(t.donnees, position, fiche.data(), static_cast<uint32_t>(fiche.size()))
                         : WriteRecordData(t.donnees, position, fiche.data()),
                e.origine, "WriteRecordData");
        for (size_t k = 0; k < d.cles.size(); ++k) {
            std::optional<std::string> cle = k < e.clesImposees.size() && e.clesImposees[k]
                                                 ? CleTexte(*e.clesImposees[k], d.cles[k].longueur)
                                                 : CleDe(d, k, fiche, e.cle);
            if (!cle) continue;
            const int erreur = AjouteCle(d, k, *cle, fiche, position);
            if (erreur == CleExistante && k > 0) {
                rapport.avertissements.push_back(e.origine + ": cle " + std::to_string(t.cle(static_cast<int>(k))) +
                                                 " deja presente, la fiche n'y est pas");
            } else if (erreur == CleExistante) {
                throw ErreurSource(e.origine + ": cle deja presente dans " + t.fichierIndex);
            } else if (erreur != 0) {
                EchecMagasin(e.origine, "AddRecordKey");
            }
        }
        if (produits) produits->push_back(std::move(fiche));
        ++rapport.fiches;
    }
    fichiers.Ferme();
}

fs::path Normalise(const fs::path& chemin) {
    fs::path p = fs::absolute(chemin).lexically_normal();
    return p.has_filename() ? p : p.parent_path();
}

// ".BASE.construction-PID-XXXXXX": the number of the process that builds,
// so that what a killed build left can be told from a running one's.
fs::path DossierTemporaire(const fs::path& base, const char* motif) {
    fs::create_directories(base.parent_path());
    std::string modele = (base.parent_path() / ("." + base.filename().string() + motif +
                                                std::to_string(chemin::NumeroProcessus()) + "-XXXXXX"))
                             .string();
    if (!systeme::CreeDossierUnique(modele)) throw ErreurSource(modele + ": dossier temporaire impossible");
    return modele;
}

// Removes the directories that builds of `base` left when they were killed:
// those of a process that no longer runs.
void OteConstructionsAbandonnees(const fs::path& base, const char* motif) {
    const std::string debut = "." + base.filename().string() + motif;
    std::error_code erreur;
    for (const auto& e : fs::directory_iterator(base.parent_path(), erreur)) {
        const std::string nom = e.path().filename().string();
        if (!nom.starts_with(debut) || !e.is_directory(erreur)) continue;
        const long numero = std::strtol(nom.c_str() + debut.size(), nullptr, 10);
        if (numero > 0 && !chemin::ProcessusVivant(numero)) fs::remove_all(e.path(), erreur);
    }
}

bool FichierDeTable(const fs::directory_entry& e) {
    std::string extension = e.path().extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(), [](unsigned char c) { return std::toupper(c); });
    return e.is_regular_file() && (extension == ".DAT" || extension == ".NDX");
}

// Puts the built directory in the place of `base`.
void Installe(const fs::path& construite, const fs::path& base, bool remplace) {
    // The files this process keeps open would hold both directories in place on Windows.
    magasin::FermeFichiersInactifs();
    if (fs::exists(base)) {
        if (!fs::is_directory(base)) throw ErreurSource(base.string() + ": n'est pas un dossier");
        if (!fs::is_empty(base)) {
            if (!remplace) throw ErreurSource(base.string() + ": la base existe deja");
            for (const auto& e : fs::directory_iterator(base))
                if (!FichierDeTable(e))
                    throw ErreurSource(base.string() + ": contient autre chose que des tables (" +
                                       e.path().filename().string() + "), il n'est pas remplace");
        }
        // Readers of this process that keep the old files open reopen them.
        for (const auto& e : fs::directory_iterator(base))
            if (FichierDeTable(e)) magasin::MarqueRemplace(e.path().string().c_str());
        OteConstructionsAbandonnees(base, ".ancienne-");
        const fs::path ancienne = DossierTemporaire(base, ".ancienne-");
        fs::remove(ancienne);
        if (!systeme::RemplaceDossier(construite.string(), base.string(), ancienne.string()))
            throw fs::filesystem_error("remplacement", construite, base, std::error_code(errno, std::generic_category()));
        // Readers elsewhere may still hold the old files (Windows keeps them
        // then): what is left goes with a later build.
        std::error_code ignore;
        fs::remove_all(ancienne, ignore);
    } else {
        fs::rename(construite, base);
    }
}

// Inside a catch: a failure of the file system is told as the others.
[[noreturn]] void RelanceErreurSysteme() {
    try {
        throw;
    } catch (const fs::filesystem_error& e) {
        throw ErreurSource(e.what());
    }
}

std::string Contenu(const fs::path& fichier) {
    std::ifstream entree(fichier, std::ios::binary);
    if (!entree) throw ErreurSource(fichier.string() + ": illisible");
    std::ostringstream texte;
    texte << entree.rdbuf();
    return texte.str();
}

}  // namespace

// --- Records from values --------------------------------------------------

Redaction::Redaction(const Disposition& d, std::string origine)
    : disposition_(d),
      origine_(std::move(origine)),
      fixe_(d.longueur),
      cle_(d.champsCle.empty() ? 0 : d.cles[0].longueur),
      parties_(d.parties.size()) {}

void Redaction::Refuse(std::string_view colonne, std::string_view defaut) const {
    throw ErreurSource(origine_ + ": " + std::string(colonne) + ": " + std::string(defaut));
}

std::string Redaction::Cp1252(std::string_view colonne, std::string_view utf8) const {
    size_t position = 0;
    std::optional<std::string> texte = codepage::DepuisUtf8(utf8, &position);
    if (!texte)
        Refuse(colonne, "pas de l'UTF-8, ou un caractere hors du code 1252, a l'octet " + std::to_string(position + 1));
    return std::move(*texte);
}

std::string Redaction::TexteSansNul(std::string_view colonne, std::string_view utf8) const {
    std::string texte = Cp1252(colonne, utf8);
    if (texte.find('\0') != std::string::npos) Refuse(colonne, "NUL dans un texte");
    return texte;
}

void Redaction::Pose(std::string_view nom, std::string_view valeur) {
    if (colonnes_.empty()) colonnes_ = Colonnes(disposition_);
    auto colonne = std::find_if(colonnes_.begin(), colonnes_.end(), [&](const Colonne& c) { return c.nom == nom; });
    if (colonne == colonnes_.end()) Refuse(nom, std::string("pas de colonne de ce nom dans ") + disposition_.table->nom);
    Pose(*colonne, valeur);
}

void Redaction::Pose(const Colonne& colonne, std::string_view valeur) {
    if (colonne.genre == GenreColonne::Partie) {
        if (Octets(disposition_)) {
            std::optional<std::string> octets = DepuisHexa(valeur);
            if (!octets) Refuse(colonne.nom, "octets en hexadecimal attendus");
            parties_[colonne.partie] = std::move(*octets);
        } else {
            parties_[colonne.partie] = TexteSansNul(colonne.nom, valeur);
        }
        return;
    }
    const Champ& c = colonne.champ;
    FicheEcrite& fiche = colonne.genre == GenreColonne::ChampCle ? cle_ : fixe_;
    switch (c.nature) {
        case NatureChamp::Texte: {
            const ChampTexte champ = ChampTexte::De(c);
            const std::string texte = TexteSansNul(colonne.nom, valeur);
            if (!fiche.Texte(champ, texte))
                Refuse(colonne.nom, "texte trop long : " + std::to_string(texte.size()) + " octets pour " +
                                        std::to_string(champ.capacite()) + " au plus");
            break;
        }
        case NatureChamp::Entier: {
            const std::optional<int32_t> n = Lit<int32_t>(valeur);
            if (!n) Refuse(colonne.nom, "entier de 32 bits attendu");
            fiche.Entier(ChampEntier::De(c), *n);
            break;
        }
        case NatureChamp::Reel: {
            const std::optional<float> x = Lit<float>(valeur);
            if (!x) Refuse(colonne.nom, "nombre decimal attendu");
            fiche.Reel(ChampReel::De(c), *x);
            break;
        }
    }
}

void Redaction::ImposeCle(size_t numero, std::string cle) {
    if (numero >= disposition_.cles.size()) Refuse("cle " + std::to_string(numero), "la table n'a pas cette cle");
    if (cle.size() > disposition_.cles[numero].longueur) Refuse("cle " + std::to_string(numero), "cle trop longue");
    clesImposees_.resize(disposition_.cles.size());
    clesImposees_[numero] = std::move(cle);
}

Enregistrement Redaction::Termine() && {
    return {ComposeFiche(disposition_, std::move(fixe_.Octets()), parties_), std::move(cle_.Octets()),
            std::move(clesImposees_), std::move(origine_)};
}

std::vector<std::string> Valeurs(const Disposition& d, const Enregistrement& e) {
    const Fiche fiche(e.fiche), cle(e.cle);
    const std::vector<std::string_view> parties = PartiesDe(d, e.fiche);
    std::vector<std::string> valeurs;
    for (const Colonne& colonne : Colonnes(d)) {
        const Champ& c = colonne.champ;
        const Fiche& source = colonne.genre == GenreColonne::ChampCle ? cle : fiche;
        if (colonne.genre == GenreColonne::Partie)
            valeurs.push_back(Octets(d) ? VersHexa(parties[colonne.partie]) : codepage::VersUtf8(parties[colonne.partie]));
        else if (c.nature == NatureChamp::Texte)
            valeurs.push_back(codepage::VersUtf8(source.Texte(ChampTexte::De(c))));
        else if (c.nature == NatureChamp::Entier)
            valeurs.push_back(Ecrit(source.Entier(ChampEntier::De(c))));
        else
            valeurs.push_back(Ecrit(source.Reel(ChampReel::De(c))));
    }
    return valeurs;
}

// --- Source files ---------------------------------------------------------

Source LitSource(const Disposition& d, std::string_view contenu, const std::string& fichier) {
    constexpr std::string_view Bom = "\xEF\xBB\xBF";
    if (contenu.substr(0, Bom.size()) == Bom) contenu.remove_prefix(Bom.size());
    if (!contenu.empty() && contenu.back() == '\n') contenu.remove_suffix(1);
    if (contenu.empty()) throw ErreurSource(Origine(fichier, 1) + ": la premiere ligne doit nommer les colonnes");
    std::vector<std::string_view> lignes = Decoupe(contenu, '\n');
    for (std::string_view& l : lignes)
        if (!l.empty() && l.back() == '\r') l.remove_suffix(1);

    const std::vector<Colonne> colonnes = Colonnes(d);
    std::vector<const Colonne*> entete;
    for (std::string_view nom : Decoupe(lignes[0], '\t')) {
        auto c = std::find_if(colonnes.begin(), colonnes.end(), [&](const Colonne& c) { return c.nom == nom; });
        if (c == colonnes.end())
            throw ErreurSource(Origine(fichier, 1) + ": " + std::string(nom) + ": pas de colonne de ce nom dans " +
                               d.table->nom);
        if (std::find(entete.begin(), entete.end(), &*c) != entete.end())
            throw ErreurSource(Origine(fichier, 1) + ": " + std::string(nom) + ": colonne en double");
        entete.push_back(&*c);
    }

    Source source{&d, {}};
    for (size_t n = 1; n < lignes.size(); ++n) {
        const std::string origine = Origine(fichier, n + 1);
        const std::vector<std::string_view> valeurs = Decoupe(lignes[n], '\t');
        if (valeurs.size() != entete.size())
            throw ErreurSource(origine + ": " + std::to_string(valeurs.size()) + " valeurs pour " +
                               std::to_string(entete.size()) + " colonnes");
        Redaction redaction(d, origine);
        for (size_t i = 0; i < valeurs.size(); ++i) {
            const std::optional<std::string> valeur = Desechappe(valeurs[i]);
            if (!valeur) throw ErreurSource(origine + ": " + entete[i]->nom + ": barre oblique inverse isolee");
            redaction.Pose(*entete[i], *valeur);
        }
        source.fiches.push_back(std::move(redaction).Termine());
    }
    return source;
}

void EcritSource(std::ostream& sortie, const Disposition& d, const std::vector<Enregistrement>& fiches) {
    auto ecritLigne = [&](const std::vector<std::string>& valeurs) {
        for (size_t i = 0; i < valeurs.size(); ++i) sortie << (i ? "\t" : "") << Echappe(valeurs[i]);
        sortie << '\n';
    };
    std::vector<std::string> noms;
    for (const Colonne& c : Colonnes(d)) noms.push_back(c.nom);
    ecritLigne(noms);
    for (const Enregistrement& e : fiches) ecritLigne(Valeurs(d, e));
}

std::vector<Source> LitSources(const fs::path& dossier, Emplacement emplacement) {
    if (!fs::is_directory(dossier)) throw ErreurSource(dossier.string() + ": pas un dossier de sources");
    std::vector<Source> sources;
    try {
        for (const auto& e : fs::directory_iterator(dossier)) {
            if (e.path().extension() != ".tsv") continue;
            // A source that is no file would leave its table empty unseen.
            if (!e.is_regular_file()) throw ErreurSource(e.path().filename().string() + ": pas un fichier");
            const std::string fichier = e.path().filename().string();
            const Table* t = TableNommee(e.path().stem().string());
            if (t == nullptr || t->emplacement != emplacement)
                throw ErreurSource(fichier + ": aucune table de ce nom dans le catalogue");
            sources.push_back(LitSource(DispositionDe(*t), Contenu(e.path()), fichier));
        }
    } catch (...) {
        RelanceErreurSysteme();
    }
    std::sort(sources.begin(), sources.end(),
              [](const Source& a, const Source& b) { return a.disposition->table < b.disposition->table; });
    return sources;
}

// --- Building and dumping -------------------------------------------------

RapportConstruction ConstruitBase(const fs::path& sources, const fs::path& base, const OptionsConstruction& options) {
    return ConstruitBase(LitSources(sources, options.emplacement), base, options);
}

RapportConstruction ConstruitBase(const std::vector<Source>& sources, const fs::path& cible,
                                  const OptionsConstruction& options) {
    std::map<const Table*, const Source*> parTable;
    for (const Source& s : sources)
        if (!parTable.emplace(s.disposition->table, &s).second)
            throw ErreurSource(std::string(s.disposition->table->nom) + ": deux sources pour une table");

    const fs::path base = Normalise(cible);
    fs::path construite;
    RapportConstruction rapport;
    try {
        OteConstructionsAbandonnees(base, ".construction-");
        construite = DossierTemporaire(base, ".construction-");
        std::vector<std::string> produits, sourcees;
        for (const Disposition& d : Dispositions())
            if (d.table->emplacement == options.emplacement && parTable.count(d.table)) sourcees.push_back(d.table->nom);
        for (const Disposition& d : Dispositions()) {
            if (d.table->emplacement != options.emplacement) continue;
            std::vector<Enregistrement> fiches;
            if (EstDerivee(d))
                for (std::string& f : FichesDerivees(d, produits))
                    fiches.push_back({std::move(f), {}, {}, std::string(d.table->nom) + " (de VDXPRO)"});
            if (Est(d, "VDXDAT") && !sourcees.empty()) fiches = FichesDesSources(d, sourcees);
            if (auto s = parTable.find(d.table); s != parTable.end())
                std::ranges::copy_if(s->second->fiches, std::back_inserter(fiches),
                                     [&](const Enregistrement& e) { return !EstFicheDesSources(d, e); });
            else if (!EstDerivee(d))
                rapport.sansSource.push_back(d.table->nom);
            Remplis(d, construite, fiches, options.modele, rapport, Est(d, "VDXPRO") ? &produits : nullptr);
        }
        Installe(construite, base, options.remplace);
    } catch (...) {
        std::error_code ignore;
        if (!construite.empty()) fs::remove_all(construite, ignore);
        RelanceErreurSysteme();
    }
    return rapport;
}

int CreeFichiersTable(const Disposition& d, int donnees, const std::string& cheminDonnees, const std::string& cheminIndex,
                      int modeDonnees, int modeIndex, const std::function<void(const std::string&, int)>& etape) {
    const auto dit = [&](const std::string& nom, int resultat) {
        if (etape) etape(nom, resultat);
        return resultat;
    };
    constexpr int Extension = 4096;
    if (const int e = dit("CreateDataFile", magasin::CreateDataFile(donnees, cheminDonnees.c_str(), d.longueur, Extension,
                                                                     modeDonnees)))
        return e;
    if (const int e = dit("CreateIndexFile",
                          magasin::CreateIndexFile(donnees + 1, cheminIndex.c_str(), d.cles[0].longueur, 0, 0,
                                                   static_cast<int>(d.cles.size()), Extension, modeIndex)))
        return e;
    for (size_t k = 1; k < d.cles.size(); ++k)
        if (const int e = dit("CreateIndexMember " + std::to_string(k),
                              magasin::CreateIndexMember(donnees + 1, d.cles[k].longueur, 0, 0, static_cast<int>(k))))
            return e;
    return 0;
}

std::vector<std::pair<std::string, std::string>> LitIndex(const fs::path& base, const Disposition& d, size_t numero) {
    using namespace magasin;
    const Table& t = *d.table;
    const int numeroCle = t.cle(static_cast<int>(numero));
    FichiersOuverts fichiers(t, LectureSeule);
    fichiers.OuvreEnLecture(base);

    std::string cle(static_cast<size_t>(std::max<int>(LongueurCle(numeroCle), d.cles.at(numero).longueur)), '\0');
    std::vector<std::pair<std::string, std::string>> cles;
    for (Position p = PremiereCle(numeroCle, cle.data()); p != 0; p = CleSuivante(numeroCle, cle.data())) {
        std::string fiche;
        Verifie(LitFicheEntiere(t.donnees, p, fiche), t.fichierDonnees, "LitFiche");
        if (t.genre == Genre::Fixe) fiche.resize(d.longueur, '\0');
        cles.emplace_back(cle.substr(0, d.cles[numero].longueur), std::move(fiche));
    }
    if (GlobalesMagasin()->ErreurMagasin != 0) EchecMagasin(t.fichierIndex, "CleSuivante");
    fichiers.Ferme();
    return cles;
}

std::vector<Enregistrement> LitTable(const fs::path& base, const Disposition& d) {
    std::vector<Enregistrement> fiches;
    for (auto& [cle, fiche] : LitIndex(base, d, 0))
        fiches.push_back({std::move(fiche), d.champsCle.empty() ? std::string() : std::move(cle), {}, {}});
    return fiches;
}

bool TableVide(const fs::path& base, const Table& t) {
    using namespace magasin;
    FichiersOuverts fichiers(t, LectureSeule);
    fichiers.OuvreEnLecture(base);
    std::string cle(static_cast<size_t>(std::max(LongueurCle(t.index()), 1)), '\0');
    const bool vide = PremiereCle(t.index(), cle.data()) == 0;
    if (vide && GlobalesMagasin()->ErreurMagasin != 0) EchecMagasin(t.fichierIndex, "PremiereCle");
    fichiers.Ferme();
    return vide;
}

std::vector<std::string> TablesSourcees(const fs::path& base) {
    std::vector<std::string> tables;
    const Disposition& d = DispositionDe(TableDuCatalogue("VDXDAT"));
    for (const Enregistrement& e : LitTable(base, d))
        if (EstFicheDesSources(d, e)) tables.emplace_back(Fiche(e.fiche).Texte(VDXDAT::Texte));
    return tables;
}

std::vector<Enregistrement> FichesPropres(const fs::path& base, const Disposition& d) {
    std::vector<Enregistrement> fiches = LitTable(base, d);
    std::erase_if(fiches, [&](const Enregistrement& e) { return EstFicheDesSources(d, e); });
    if (!EstDerivee(d)) return fiches;
    std::vector<std::string> produits;
    for (Enregistrement& p : LitTable(base, DispositionDe(TableDuCatalogue("VDXPRO")))) produits.push_back(std::move(p.fiche));
    const std::vector<std::string> liste = FichesDerivees(d, produits);
    const std::set<std::string> derivees(liste.begin(), liste.end());
    std::erase_if(fiches, [&](const Enregistrement& e) { return derivees.count(e.fiche) != 0; });
    return fiches;
}

void VideBase(const fs::path& base, const fs::path& dossier, Emplacement emplacement) {
    try {
        fs::create_directories(dossier);
        for (const Disposition& d : Dispositions()) {
            if (d.table->emplacement != emplacement || !fs::exists(base / d.table->fichierDonnees)) continue;
            const fs::path fichier = dossier / (std::string(d.table->nom) + ".tsv");
            const std::vector<Enregistrement> fiches = FichesPropres(base, d);
            if (fiches.empty()) {
                fs::remove(fichier);
                continue;
            }
            std::ofstream sortie(fichier, std::ios::binary | std::ios::trunc);
            EcritSource(sortie, d, fiches);
            if (!sortie.flush()) throw ErreurSource(fichier.string() + ": ecriture impossible");
        }
    } catch (...) {
        RelanceErreurSysteme();
    }
}

}  // namespace vdx
