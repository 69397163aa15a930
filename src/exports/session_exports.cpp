// The C exports of the session, the text exchange and the notices.
#include "vdx32/vdx32.h"

#include "platform/notices.h"
#include "session/chaines.h"
#include "session/connexion.h"

extern "C" {

VDX_API int32_t VDX_CALL Connection_Vdx(const char* Chemin, int32_t ModeSortie, int32_t ChainesUnicode) {
    return vdx::Connection(Chemin, ModeSortie, ChainesUnicode);
}
VDX_API int32_t VDX_CALL Connection2_Vdx(const char* Chemin, int32_t ModeSortie, int32_t ChainesUnicode) {
    return vdx::Connection2(Chemin, ModeSortie, ChainesUnicode);
}
VDX_API void VDX_CALL DeConnection_Vdx(void) { vdx::DeConnection(); }
VDX_API void VDX_CALL DeConnection2_Vdx(void) { vdx::DeConnection2(); }
VDX_API char* VDX_CALL GetLastError_Vdx(char* Tampon) { return vdx::GetLastError(Tampon); }

VDX_API int32_t VDX_CALL Version_Vdx(VdxVersion* Fiche) {
    static_assert(sizeof(VdxVersion) == sizeof(vdx::FicheVersion));
    return vdx::Version(reinterpret_cast<vdx::FicheVersion*>(Fiche));
}
VDX_API int32_t VDX_CALL VersionFichier_Vdx(BSTR* Texte) { return vdx::VersionFichier(Texte); }
VDX_API int32_t VDX_CALL Monnaie_Vdx(BSTR* Texte) { return vdx::Monnaie(Texte); }

VDX_API int32_t VDX_CALL ActiveCIP13_Vdx(int32_t Valeur) { return vdx::ActiveCIP13(Valeur); }
VDX_API int32_t VDX_CALL ActiveHospitaliers_Vdx(int32_t Valeur) { return vdx::ActiveHospitaliers(Valeur); }
VDX_API int32_t VDX_CALL NiveauCI_Vdx(int32_t Niveau) { return vdx::NiveauCI(Niveau); }
VDX_API int32_t VDX_CALL NiveauInteraction_Vdx(int32_t Niveau) { return vdx::NiveauInteraction(Niveau); }
VDX_API int32_t VDX_CALL ActiveMedDC_Vdx(int32_t Valeur) { return vdx::ActiveMedDC(Valeur); }
VDX_API int32_t VDX_CALL Fonctionnalites_Vdx(int32_t Inutilise, int32_t* Champs) {
    return vdx::Fonctionnalites(Inutilise, Champs);
}

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

namespace {
// The unload of the library disconnects and stops the store.
__attribute__((destructor)) void Decharge() { vdx::Decharge(); }
}  // namespace
