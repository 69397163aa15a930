// Connection and disconnection, the error sentence, the switches of the
// session, the identity of the base and the notification of the agent.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "vdx32/oleauto.h"

namespace vdx {

int32_t Connection(const char* chemin, int32_t modeSortie, int32_t chainesUnicode);
int32_t Connection2(const char* chemin, int32_t modeSortie, int32_t chainesUnicode);
void DeConnection();
void DeConnection2();
// Unload of the library: disconnect and stop the store.
void Decharge();

char* GetLastError(char* tampon);

int32_t ActiveCIP13(int32_t valeur);
int32_t ActiveHospitaliers(int32_t valeur);
int32_t NiveauCI(int32_t niveau);
int32_t NiveauInteraction(int32_t niveau);
int32_t ActiveMedDC(int32_t valeur);
int32_t Fonctionnalites(int32_t inutilise, int32_t* champs);

// The two texts of the base's version, as a host record.
struct FicheVersion {
    BSTR Version;
    BSTR DateVersion;
};
int32_t Version(FicheVersion* fiche);
int32_t VersionFichier(BSTR* texte);
int32_t Monnaie(BSTR* texte);

// The base's date as VDXDAT keeps it ("JJ/MM/AAAA"), VDXDAT opened and
// closed here; none when its record is missing. Throws Echec(-500).
std::optional<std::string> DateDeLaBase();

// Announces a call to the watching agent, if one was there at connection:
// `prefixe` ("MonographieHtml@CodeCIP=") and the code as the host gave it.
void NotifieAgent(const char* prefixe, const char* code);

}  // namespace vdx
