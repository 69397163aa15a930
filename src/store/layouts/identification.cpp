#include "store/layouts/identification.h"

#include "store/layouts/construction.h"

namespace vdx::disposition {

std::vector<Disposition> FamilleIdentification() {
    std::vector<Disposition> d;
    {
        using namespace VDXIDPRO;
        d.push_back(Fixe("VDXIDPRO", Longueur,
                         {CodeCIP, Denomination, Dosage, CodeForme, CodePresentation, QuantitePresentation,
                          CodeUnitePresentation, QuantiteUnitePresentation, CodeContenant, CodeUnitePrise,
                          AvecContenance, Rapport, Secabilite, PrisesEntieres, CodeUnitePrise2, AvecContenance2,
                          Rapport2, Secabilite2, PrisesEntieres2, CodeComplementaire},
                         {Sur({P(CodeCIP)})}));
    }
    {
        using namespace VDXIDFOR;
        d.push_back(Fixe("VDXIDFOR", Longueur, {CodeForme, Libelle, LibelleCle},
                         {Sur({P(CodeForme, Pli::Brut, ' ')}), Sur({P(LibelleCle, Pli::Majuscules)})}));
    }
    {
        using namespace VDXIDFOP;
        d.push_back(Fixe("VDXIDFOP", Longueur, {CodeForme, CodeCIP}, {Sur({P(CodeForme, Pli::Brut, ' '), P(CodeCIP)})}));
    }
    for (const char* table : {"VDXIDPRE", "VDXIDUPR", "VDXIDCON"}) d.push_back(Mot(table));
    d.push_back(CodeLibelle("VDXIDUCO"));
    {
        using namespace VDXIDPVO;
        d.push_back(Fixe("VDXIDPVO", Longueur, {CodeCIP, CodeVoie}, {Sur(16, {P(CodeCIP), P(CodeVoie)})}));
    }
    {
        using namespace VDXIDVOI;
        d.push_back(Fixe("VDXIDVOI", Longueur, {CodeVoie, Libelle}, {Sur({P(CodeVoie)})}));
    }
    return d;
}

}  // namespace vdx::disposition
