// The identity records every connection reads: version, date, currency and
// version of the files.
#pragma once

#include <string>

#include "store/fixture.h"
#include "store/layouts.h"

namespace vdx::essai {

inline BaseDeTest& AjouteIdentite(BaseDeTest& base, const std::string& date = "01/06/2026",
                                  const std::string& versionFichiers = "4.6.2.0", bool avecMonnaie = true) {
    base.Ajoute("VDXDAT", {{"Numero", VDXDAT::Version}, {"Texte", "Base de test"}});
    base.Ajoute("VDXDAT", {{"Numero", VDXDAT::Date}, {"Texte", date}});
    if (avecMonnaie) base.Ajoute("VDXDAT", {{"Numero", VDXDAT::Monnaie}, {"Texte", "EUR"}});
    base.Ajoute("VDXDAT", {{"Numero", VDXDAT::VersionFichiers}, {"Texte", versionFichiers}});
    return base;
}

}  // namespace vdx::essai
