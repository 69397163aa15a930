#include "store/layouts/interactions.h"

#include "store/layouts/construction.h"

namespace vdx::disposition {

std::vector<Disposition> FamilleInteractions() {
    std::vector<Disposition> d;
    {
        using namespace VDXZICLA;
        d.push_back(Fixe("VDXZICLA", Longueur, {CodeClasse, Libelle, ClasseActive, Zone88}, {Sur({P(CodeClasse)})}));
    }
    {
        using namespace VDXZICLC;
        d.push_back(Fixe("VDXZICLC", Longueur, {CodeSubstance, CodeSubstanceAssociee, CodeClasse},
                         {Sur({P(CodeSubstance), P(CodeSubstanceAssociee), P(CodeClasse)})}));
    }
    {
        using namespace VDXZICLP;
        d.push_back(Fixe("VDXZICLP", Longueur, {CodeClasse, CodeClassePere}, {Sur({P(CodeClasse), P(CodeClassePere)})}));
    }
    {
        using namespace VDXZIGRA;
        d.push_back(Fixe("VDXZIGRA", Longueur, {Code, LibelleGravite, Niveau}, {Sur({P(Code)})}));
    }
    {
        using namespace VDXZITYP;
        d.push_back(Fixe("VDXZITYP", Longueur, {Code, TexteType}, {Sur({P(Code)})}));
    }
    {
        using namespace VDXZICOU;
        Disposition couple = Fixe(
            "VDXZICOU", Longueur,
            {ClasseA, ClasseB, Numero, VoiesA, VoiesB, SubstancesA, FiltreA, SubstancesB, FiltreB, CodeType, Sens,
             CodeGravite, Zone668, Zone679, Reference1, Reference2, TermesCondition, VDXZICOU::Genre, LongueurTexte1,
             LongueurTexte2, LongueurTexte3, LongueurTexte4},
            {Sur({P(ClasseA), P(ClasseB), P(Numero)})});
        couple.corps = Corps::TextesMesures;
        couple.debutCorps = Longueur;
        couple.parties = {"Texte1", "Texte2", "Texte3", "Texte4"};
        couple.longueurs = {LongueurTexte1, LongueurTexte2, LongueurTexte3, LongueurTexte4};
        d.push_back(std::move(couple));
    }
    return d;
}

}  // namespace vdx::disposition
