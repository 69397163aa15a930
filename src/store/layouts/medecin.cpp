#include "store/layouts/medecin.h"

#include "store/layouts/construction.h"

namespace vdx::disposition {

std::vector<Disposition> FamilleMedecin() {
    std::vector<Disposition> d;
    {
        // Two products of one label (the drug base's cut to the field) are
        // both keyed: the second label gets a point, as in VDXPRO.
        using namespace PRO;
        d.push_back(Fixe("PRO", Longueur, {CodeCIP, Libelle, Commentaire},
                         {Sur({P(CodeCIP)}), Unique(Sur({P(Libelle, Pli::Libelle)}), Libelle)}));
    }
    {
        using namespace PATH;
        d.push_back(Fixe("PATH", Longueur, {CodePathologie, Libelle, CodeCISP},
                         {Sur({P(CodePathologie)}), Sur({P(Libelle, Libelle.largeur, Pli::Libelle)})}));
    }
    {
        using namespace POSO;
        d.push_back(Fixe("POSO", Longueur,
                         {CodePosologie, CodeCIP, Libelle, DoseMin, DoseMax, CodeUnite, CodeUnite2, QuantiteRef,
                          Conversion, TypeRef, PrisesMin, PrisesMax, Intervalle, CodePeriode, CodeMoment, DureeMin,
                          DureeMax, CodeDuree, DoseMaximum, MaximumRapporte, CodePeriodeMaximum, CodeSpecification,
                          CodeSpecification2, NombreModeles},
                         {Sur({P(CodePosologie)})}));
    }
    {
        // The key is the record's first bytes: no outside key here.
        Disposition textes = TexteFinal("TEXU", TEXU::Longueur, TEXU::CodePosologie.largeur, {TEXU::CodePosologie},
                                        {}, "Texte");
        textes.cles = {Sur({P(TEXU::CodePosologie)})};
        d.push_back(std::move(textes));
    }
    return d;
}

}  // namespace vdx::disposition
