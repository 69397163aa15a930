#include "session/connexion.h"

#include "maj/unite.h"

#include <cstring>
#include <optional>
#include <string>

#include "platform/chemin.h"
#include "platform/fichiers.h"
#include "platform/horloge.h"
#include "platform/notices.h"
#include "session/cadre.h"
#include "session/messages.h"
#include "session/resultat.h"
#include "session/texte.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"
#include "store/magasin.h"

namespace vdx {
namespace {

// What the connection gives the store: buffers, file numbers, sectors.
constexpr int TamponsMagasin = 867;
constexpr int SecteursMagasin = 16;

const Table& TableIdentite() { return TableDuCatalogue("VDXDAT"); }

// A base older than this many months is to be updated.
constexpr int AgeMaximal = 5;

// The text of a VDXDAT record, or nullopt when its key is absent.
std::optional<std::string> TexteIdentite(int32_t numero) {
    Curseur curseur(TableIdentite());
    const auto position = curseur.Egale(CleEntiers({numero}));
    if (!position) return std::nullopt;
    const std::string octets = FicheA(TableIdentite(), *position);
    return std::string(Fiche(octets).Texte(VDXDAT::Texte));
}

}  // namespace

std::optional<std::string> DateDeLaBase() {
    TablesOuvertes tables{&TableIdentite()};
    std::optional<std::string> date = TexteIdentite(VDXDAT::Date);
    tables.Ferme();
    return date;
}

namespace {

// The base's version and date, or a negative code.
int32_t LitVersion(std::string& version, std::string& date) {
    TablesOuvertes tables{&TableIdentite()};
    auto v = TexteIdentite(VDXDAT::Version);
    auto d = TexteIdentite(VDXDAT::Date);
    if (!v || !d) throw Echec{FicheManquante};
    version = *v;
    date = *d;
    tables.Ferme();
    return Succes;
}

int32_t LitVersionFichiers(std::string& texte) {
    TablesOuvertes tables{&TableIdentite()};
    auto v = TexteIdentite(VDXDAT::VersionFichiers);
    if (!v) throw Echec{FicheManquante};
    texte = *v;
    tables.Ferme();
    return Succes;
}


bool Chiffres(std::string_view texte) {
    for (char c : texte)
        if (c < '0' || c > '9') return false;
    return !texte.empty();
}

// The age in months of a base dated "JJ/MM/AAAA"; none for a date in
// another year than this one or the one before.
std::optional<int> AgeEnMois(std::string_view date, horloge::Date aujourdhui) {
    if (date.size() < 10 || !Chiffres(date.substr(3, 2)) || !Chiffres(date.substr(6, 4))) return std::nullopt;
    const int mois = std::stoi(std::string(date.substr(3, 2)));
    const int annee = std::stoi(std::string(date.substr(6, 4)));
    if (annee == aujourdhui.annee) return aujourdhui.mois - mois;
    if (annee == aujourdhui.annee - 1) return aujourdhui.mois + 12 - mois;
    return std::nullopt;
}

// The two pieces of advice: the age of the base and its version against
// the library's. Gives the negative code of the version's reading.
int32_t AvisConnexion() {
    Session& s = session();
    std::string version, date, versionFichiers;
    const int32_t codeVersion = Cadre("Version_Vdx", [&] { return LitVersion(version, date); });
    const int32_t codeFichiers =
        Cadre("VersionFichier_Vdx", [&] { return LitVersionFichiers(versionFichiers); });
    if (codeVersion < 0) return codeVersion;
    if (codeVersion > 0) {
        const auto age = AgeEnMois(date, horloge::Aujourdhui());
        s.AdviceAgeBase = age && *age > AgeMaximal;
    }
    if (codeFichiers > 0)
        s.FichiersEnPhase = versionFichiers.size() > 2 && versionFichiers[0] == VersionLibrairie[0] &&
                            versionFichiers[2] == VersionLibrairie[2];
    return Succes;
}

// Steps common to both connections, for a session not yet connected.
int32_t Connecte(const char* chemin, int32_t modeSortie, int32_t chainesUnicode) {
    Session& s = session();
    s.CheminMedecin.clear();
    if (!chemin || !*chemin) return Argument1;
    const size_t longueur = strnlen(chemin, TailleBaseFichiers);
    if (longueur + 1 >= TailleBaseFichiers) return Argument1;
    s.BaseFichiers = chemin::Repertoire(std::string(chemin, longueur));
    auto present = [&s] {
        return chemin::FichierExiste(s.BaseFichiers + "VDXPRO.DAT") && chemin::FichierExiste(s.BaseFichiers + "VDXPRO.NDX");
    };
    // A base being put in place by another process is briefly absent.
    if (!present() && !(systeme::AttendsDossier(s.BaseFichiers) && present())) return FichiersManquants;
    if (magasin::InitialiseMagasin(TamponsMagasin, NombreNumeros, SecteursMagasin) != 0) {
        s.FichierErreur = messages::MagasinIndisponible;
        return MagasinNonInitialise;
    }
    // An update interrupted while it put its files in place is finished
    // before anything is read.
    maj::TermineJournal(s.BaseFichiers);
    s.Connecte = true;
    s.ModeSortie = modeSortie;
    s.ChainesUnicode = modeSortie == ModeTableau ? chainesUnicode : 0;
    return Succes;
}

int32_t ModifieNiveau(int32_t& niveau, int32_t valeur) {
    if (valeur >= 0) niveau = valeur;
    return niveau;
}

}  // namespace

int32_t Connection(const char* chemin, int32_t modeSortie, int32_t chainesUnicode) {
    Session& s = session();
    if (notices().AgentPresent(messages::FenetreAgent)) s.AgentPresent = true;
    if (!s.Connecte) {
        const int32_t code = Connecte(chemin, modeSortie, chainesUnicode);
        if (code != Succes) return code;
    }
    const int32_t avis = AvisConnexion();
    if (avis < 0) return SortieErreur(avis);
    if (s.AdviceAgeBase) notices().BoiteMessage(messages::BaseAgee, messages::TitreBaseAgee, StyleExclamation);
    if (!s.FichiersEnPhase)
        notices().BoiteMessage(messages::HorsPhase, messages::TitreHorsPhase, StyleExclamation);
    return Succes;
}

int32_t Connection2(const char* chemin, int32_t modeSortie, int32_t chainesUnicode) {
    if (session().Connecte) return Succes;
    return Connecte(chemin, modeSortie, chainesUnicode);
}

void DeConnection() {
    Session& s = session();
    s.ChaineMemoire.reset();
    if (s.Connecte) FermeBaseMedecin();
    s.DerniereErreur = 0;
}

void DeConnection2() {
    DeConnection();
    session().Connecte = false;
}

void Decharge() {
    DeConnection();
    magasin::TermineMagasin();
    session().Connecte = false;
}

char* GetLastError(char* tampon) {
    if (!tampon) return tampon;
    Session& s = session();
    const int16_t numero = s.DerniereErreur != 0 ? s.DerniereErreur : magasin::GlobalesMagasin()->ErreurMagasin;
    const std::string texte =
        messages::AnomalieNumero + std::to_string(numero) + messages::SurLeFichier + s.FichierErreur;
    std::memcpy(tampon, texte.c_str(), texte.size() + 1);
    s.DerniereErreur = 0;
    return tampon;
}

int32_t ActiveCIP13(int32_t valeur) {
    session().CIP13Actif = valeur;
    return Succes;
}

int32_t ActiveHospitaliers(int32_t valeur) {
    session().HospitaliersActifs = valeur != 0;
    return Succes;
}

int32_t NiveauCI(int32_t niveau) { return ModifieNiveau(session().NiveauCI, niveau); }
int32_t NiveauInteraction(int32_t niveau) { return ModifieNiveau(session().NiveauInteraction, niveau); }

int32_t ActiveMedDC(int32_t) {
    session().MedDCMasque = false;
    return Succes;
}

int32_t Fonctionnalites(int32_t, int32_t* champs) {
    constexpr int NombreFonctionnalites = 9;
    if (session().ModeSortie == ModeTableau && champs)
        for (int i = 0; i < NombreFonctionnalites; ++i) champs[i] = 0;
    return Rien;
}

int32_t Version(FicheVersion* fiche) {
    const bool tableau = session().ModeSortie == ModeTableau;
    if (tableau && fiche) {
        RangeChaine(&fiche->Version, std::nullopt);
        RangeChaine(&fiche->DateVersion, std::nullopt);
    }
    if (!session().Connecte) return NonConnecte;
    std::string version, date;
    LitVersion(version, date);
    if (tableau) {
        Requis(fiche, Argument1);
        LivreValeur(&fiche->Version, version, Argument1);
        LivreValeur(&fiche->DateVersion, date, Argument1);
    } else {
        std::string plat;
        AjouteChamp(version, plat);
        AjouteChamp(date, plat);
        LivreTexte(plat);
    }
    return Succes;
}

int32_t VersionFichier(BSTR* texte) {
    std::string version;
    LitVersionFichiers(version);
    LivreValeur(texte, version, Argument1);
    return Succes;
}

int32_t Monnaie(BSTR* texte) {
    TablesOuvertes tables{&TableIdentite()};
    // A base without its currency has always been taken for francs.
    LivreValeur(texte, TexteIdentite(VDXDAT::Monnaie).value_or("F"), Argument1);
    tables.Ferme();
    return Succes;
}

void NotifieAgent(const char* prefixe, const char* code) {
    if (!session().AgentPresent) return;
    try {
        std::string texte = prefixe;
        if (code) texte += code;
        texte += '@';
        notices().NotifieAgent(messages::FenetreAgent, texte);
    } catch (...) {
        notices().BoiteMessage(messages::EchecAgent, messages::TitreEchecAgent, StyleSimple);
    }
}

}  // namespace vdx
