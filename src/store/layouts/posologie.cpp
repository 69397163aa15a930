#include "store/layouts/posologie.h"

#include "store/layouts/construction.h"

namespace vdx::disposition {

std::vector<Disposition> FamillePosologie() {
    std::vector<Disposition> d;
    {
        using namespace VDXPPROD;
        d.push_back(Fixe("VDXPPROD", Longueur,
                         {CodeCIP, Rang, CodeTerrain, Implicite, CodeAMM, CodeNature, CodeVoie, CodeProfil, DoseMin,
                          DoseMax, CodeUnite, QuantiteRef, Conversion, TypeRef, PrisesMin, PrisesMax, Intervalle,
                          CodePeriode, CodeMoment, DureeMin, DureeMax, CodeDuree, DoseMaximum, MaximumRapporte,
                          CodePeriodeMaximum, CodeSpecification, CodeSpecification2, NombreModeles},
                         {Sur({P(CodeCIP), P(Rang, 2)})}));
    }
    d.push_back(TexteFinal("VDXPTEXT", 0, 0, {}, {VDXPTEXT::CodePosologie}, "Texte"));
    {
        using namespace VDXPPTER;
        d.push_back(Fixe("VDXPPTER", Longueur,
                         {CodeTerrain, Terrain, AgeMin, UniteAgeMin, AgeMax, UniteAgeMax, PoidsMin, PoidsMax},
                         {Sur({P(CodeTerrain)})}));
    }
    d.push_back(Mot("VDXPUPRI"));
    for (const char* table : {"VDXPIND", "VDXPNAT", "VDXPVOI", "VDXPSPE", "VDXPDUR"}) d.push_back(CodeLibelle(table));
    {
        using namespace VDXPPRO;
        d.push_back(Fixe("VDXPPRO", Longueur, {Code, Libelle, TypeProfil, ValeurProfil}, {Sur({P(Code)})}));
    }
    {
        using namespace VDXPMOM;
        d.push_back(Fixe("VDXPMOM", Longueur, {Code, Libelle, Multiplicateur}, {Sur({P(Code)})}));
    }
    {
        using namespace VDXPMAX;
        d.push_back(Fixe("VDXPMAX", Longueur,
                         {VDXPMAX::Cle,  RecoMin,         RecoMax,         RecoMinKg,       RecoMaxKg,
                          BaseKg,        RecoMinM2,       RecoMaxM2,       BaseM2,          MaxJour,
                          MaxKg,         MaxM2,           RecoMinUnite2,   RecoMaxUnite2,   RecoMinKgUnite2,
                          RecoMaxKgUnite2, BaseKgUnite2,  RecoMinM2Unite2, RecoMaxM2Unite2, BaseM2Unite2,
                          MaxJourUnite2, MaxKgUnite2,     MaxM2Unite2,     DureeRecoMin,    DureeRecoMax,
                          DureeMaximum},
                         {Sur({P(VDXPMAX::Cle, 8)})}));
    }
    {
        using namespace VDXPDURC;
        d.push_back(Fixe("VDXPDURC", Longueur, {VDXPDURC::Cle, Facteur}, {Sur({P(VDXPDURC::Cle)})}));
    }
    d.push_back(Recommandations("VDXRMOC"));
    d.push_back(Vocabulaire("VDXRMOT"));
    return d;
}

}  // namespace vdx::disposition
