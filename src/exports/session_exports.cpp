// The C exports of the session, the text exchange and the notices.
#include "exports/arguments.h"
#include "exports/declaration.h"
#include "platform/notices.h"
#include "session/chaines.h"
#include "session/connexion.h"
#include "session/tables.h"
#include "store/catalogue.h"

extern "C" {

VDX_API int32_t VDX_CALL Connection_Vdx(const char* Chemin, int32_t ModeSortie, int32_t ChainesUnicode) {
    return vdx::Cadre("Connection_Vdx", [&] { return vdx::Connection(Chemin, ModeSortie, ChainesUnicode); });
}
VDX_API int32_t VDX_CALL Connection2_Vdx(const char* Chemin, int32_t ModeSortie, int32_t ChainesUnicode) {
    return vdx::Cadre("Connection2_Vdx", [&] { return vdx::Connection2(Chemin, ModeSortie, ChainesUnicode); });
}
VDX_API void VDX_CALL DeConnection_Vdx(void) { vdx::DeConnection(); }
VDX_API void VDX_CALL DeConnection2_Vdx(void) { vdx::DeConnection2(); }
VDX_API char* VDX_CALL GetLastError_Vdx(char* Tampon) { return vdx::GetLastError(Tampon); }

VDX_API int32_t VDX_CALL InstalleNotifications_Vdx(VdxBoiteMessage Boite, VdxProgression Progression,
                                                   void* Contexte) {
    vdx::InstalleGestionnaireBoite(Boite, Contexte);
    vdx::InstalleGestionnaireProgression(Progression, Contexte);
    return 1;
}

VDX_API int32_t VDX_CALL SetString_Vdx(const char* Texte) { return vdx::SetString(Texte); }
VDX_API int32_t VDX_CALL SetString2_Vdx(const char* Texte) { return vdx::SetString2(Texte); }
VDX_API int32_t VDX_CALL GetString_Vdx(char* Tampon) { return vdx::GetString(Tampon); }
VDX_API int32_t VDX_CALL GetString2_Vdx(char* Tampon, int32_t Page, int32_t Taille) {
    return vdx::GetString2(Tampon, Page, Taille);
}
VDX_API int32_t VDX_CALL GetLenString_Vdx(void) { return vdx::GetLenString(); }

}  // extern "C"

using namespace vdx;
using exports::Noms;

// The identity of the base and the switches of the session.

VDX_EXPORT(Version_Vdx, Libre, Noms("Version", "DateVersion"), (Fiche, Fiche)) {
    static_assert(sizeof(VdxVersion) == sizeof(FicheVersion));
    return Version(reinterpret_cast<FicheVersion*>(Fiche));
}
VDX_EXPORT(VersionFichier_Vdx, Chaines, Noms("Version"), (ChaineSortie, Texte)) { return VersionFichier(Texte); }
VDX_EXPORT(Monnaie_Vdx, Chaines, Noms("Monnaie"), (ChaineSortie, Texte)) { return Monnaie(Texte); }

// Whether a table of the base holds a record: 1, or 0 when it is empty.
VDX_EXPORT(TablePresente_Vdx, Connecte, {}, (Texte, Nom)) {
    constexpr size_t LongueurNomMax = 16;
    const std::string_view nom = exports::TexteBorne(Nom, LongueurNomMax);
    if (nom.empty()) throw Echec{Argument1};
    const Table* table = TableNommee(nom);
    if (!table || table->emplacement != Emplacement::Base) throw Echec{CodeInconnu};
    TablesOuvertes tables{table};
    const bool presente = Curseur(*table).Premiere().has_value();
    tables.Ferme();
    return presente ? Succes : Rien;
}

VDX_EXPORT(ActiveCIP13_Vdx, Libre, {}, (Entier, Valeur)) { return ActiveCIP13(Valeur); }
VDX_EXPORT(ActiveHospitaliers_Vdx, Libre, {}, (Entier, Valeur)) { return ActiveHospitaliers(Valeur); }
VDX_EXPORT(NiveauCI_Vdx, Libre, {}, (Entier, Niveau)) { return NiveauCI(Niveau); }
VDX_EXPORT(NiveauInteraction_Vdx, Libre, {}, (Entier, Niveau)) { return NiveauInteraction(Niveau); }
VDX_EXPORT(ActiveMedDC_Vdx, Libre, {}, (Entier, Valeur)) { return ActiveMedDC(Valeur); }
VDX_EXPORT(Fonctionnalites_Vdx, Libre, {}, (Entier, Inutilise), (Fiche, Champs)) {
    return Fonctionnalites(Inutilise, Champs);
}

namespace {
// The unload of the library disconnects and stops the store.
__attribute__((destructor)) void Decharge() { vdx::Decharge(); }
}  // namespace
