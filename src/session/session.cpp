#include "session/session.h"

#include <string>

#include "platform/notices.h"
#include "session/cadre.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/magasin.h"

namespace vdx {

Session& session() {
    // Never destroyed: the unload of the library still reads it.
    static Session* s = new Session;
    return *s;
}

void RemetSession() { session() = Session{}; }

Echec EchecMagasinSur(std::string fichier) {
    const magasin::Globales* g = magasin::GlobalesMagasin();
    return Echec{EchecMagasin, g->ErreurMagasin, g->EtatIOMagasin, std::move(fichier)};
}

int32_t SortieErreur(const Echec& echec) {
    Session& s = session();
    s.DerniereErreur = echec.code == EchecMagasin ? echec.erreurMagasin : int16_t{0};
    const std::string fichier = echec.fichier.empty() ? s.FichierErreur : echec.fichier;
    FermeBaseMedecin();
    s.FichierErreur = fichier;
    return echec.code;
}

int32_t SortieErreur(int32_t code) {
    const magasin::Globales* g = magasin::GlobalesMagasin();
    return SortieErreur(Echec{code, g->ErreurMagasin, g->EtatIOMagasin, {}});
}

void SignaleErreurInterne(const char* nomExport) {
    std::string texte = messages::ErreurInterneDebut;
    texte += nomExport;
    texte += messages::ErreurInterneFin;
    notices().BoiteMessage(texte, messages::TitreErreurDll, StyleExclamation);
}

namespace {
thread_local const Contexte* courant = nullptr;
}  // namespace

const Contexte& ContexteCourant() { return courant ? *courant : session(); }

DansContexte::DansContexte(const Contexte& contexte) : precedent_(courant) {
    if (&ContexteCourant() != &contexte && ContexteCourant().BaseFichiers != contexte.BaseFichiers &&
        TablesOuvertes::Tenues())
        throw FauteInterne("tables tenues d'un autre contexte");
    courant = &contexte;
}

DansContexte::~DansContexte() { courant = precedent_; }

}  // namespace vdx
