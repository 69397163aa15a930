#include "store/layouts/composition.h"

#include "store/layouts/construction.h"

namespace vdx::disposition {

std::vector<Disposition> FamilleComposition() {
    std::vector<Disposition> d;
    {
        using namespace VDXVAMM;
        const Cle terme = Sur({P(CodeTerme), P(TypeAMM)});
        Cle libelle =
            Sur({P(LibelleMajuscules, LibelleMajuscules.largeur, Pli::Majuscules), P(CodeTerme), P(TypeAMM)});
        d.push_back(Fixe("VDXVAMM", Longueur,
                         {CodeTerme, Libelle, Zone140, LibelleMajuscules, SexeTerme, TypeAMM, AllaitementTerme, AgeMin,
                          AgeMax, PoidsMin, PoidsMax, GrossesseMin, GrossesseMax, Zone304, TypeAnalyse, TexteAnalyse},
                         {terme, libelle, libelle}));
    }
    {
        using namespace VDXVAMPC;
        d.push_back(Fixe("VDXVAMPC", Longueur, {CodeCIP, TypeAMM, CodeTerme, NiveauLien},
                         {Sur({P(CodeCIP), P(TypeAMM), P(CodeTerme)}), Sur({P(CodeTerme), P(TypeAMM), P(CodeCIP)})}));
    }
    d.push_back(Chapitres("VDXVAMPT", SectionsEnPaires(7), ModeleChapitres::CodeCIP));
    d.push_back(Chapitres("VDXVAMST", SectionsEnPaires(14), ModeleChapitres::CodeCIP));
    {
        using namespace VDXVAMMC;
        d.push_back(Fixe("VDXVAMMC", Longueur, {CodeTerme, TypeLien, CodeLie},
                         {Sur({P(CodeTerme), P(TypeLien), P(CodeLie, LongueurCodeLieCle)}),
                          Sur({P(CodeLie, LongueurCodeLieCle, Pli::Brut, ' '), P(TypeLien), P(CodeTerme)})}));
    }
    for (const char* table : {"VDXVCISP", "VDXVCIM", "VDXVCIMA", "VDXVPREI"}) d.push_back(Vocabulaire(table));
    {
        using namespace VDXVCICI;
        d.push_back(Fixe("VDXVCICI", Longueur, {CodeCISP, CodeCIM10}, {Sur({P(CodeCISP), P(CodeCIM10)})}));
    }
    {
        using namespace VDXVPA;
        d.push_back(Fixe("VDXVPA", Longueur, {CodeSubstance, Libelle, Interactions},
                         {Sur({P(CodeSubstance)}),
                          Sur({P(Libelle, Libelle.largeur, Pli::Majuscules), P(CodeSubstance)})}));
    }
    {
        using namespace VDXVEXC;
        d.push_back(Fixe("VDXVEXC", Longueur, {CodeSubstance, Libelle, LibelleEEN},
                         {Sur({P(CodeSubstance)}),
                          Sur({P(Libelle, Libelle.largeur, Pli::Majuscules), P(CodeSubstance)}),
                          Facultative(Sur({P(LibelleEEN, LibelleEEN.largeur, Pli::Majuscules), P(CodeSubstance)}))}));
    }
    {
        using namespace VDXVPAE;
        d.push_back(Fixe("VDXVPAE", Longueur, {Code, LibelleExprime}, {Sur({P(Code)})}));
    }
    {
        using namespace VDXVPAU;
        d.push_back(Fixe("VDXVPAU", Longueur, {Code, LibelleUnite}, {Sur({P(Code)})}));
    }
    d.push_back(TexteFinal("VDXVCOMG", VDXVCOMG::Longueur, VDXVCOMG::Longueur, {VDXVCOMG::CodeExprime},
                           {VDXVCOMG::CodeCIP}, "TexteComposition"));
    {
        using namespace VDXVCOMP;
        d.push_back(Fixe("VDXVCOMP", Longueur,
                         {CodeCIP, Rang, CodeSubstance, QuantiteTexte, Quantite, CodeUnite, Interactions},
                         {Sur({P(CodeCIP), P(Rang)})}));
    }
    {
        using namespace VDXVCOME;
        d.push_back(Fixe("VDXVCOME", Longueur, {CodeCIP, Rang, CodeSubstance, QuantiteTexte, Zone100, Interactions},
                         {Sur({P(CodeCIP), P(Rang)})}));
    }
    d.push_back(SubstanceProduit("VDXVPAP"));
    d.push_back(SubstanceProduit("VDXVEXCP"));
    {
        using namespace VDXVAMME;
        d.push_back(Fixe("VDXVAMME", Longueur, {CodeTerme, CodeEquivalent},
                         {Sur({P(CodeTerme), P(CodeEquivalent)}), Sur({P(CodeEquivalent), P(CodeTerme)})}));
    }
    d.push_back(Lien("VDXVPAAM"));
    {
        using namespace VDXVAMDT;
        d.push_back(Fixe("VDXVAMDT", Longueur, {CodeCIP, CodeChapitre, DateChapitre}, {Sur({P(CodeCIP), P(CodeChapitre)})}));
    }
    return d;
}

}  // namespace vdx::disposition
