#include "store/layouts/documents.h"

#include "store/layouts/construction.h"

namespace vdx::disposition {

std::vector<Disposition> FamilleDocuments() {
    std::vector<Disposition> d;
    for (const char* table : {"VDXZBEXA", "VDXZBEXI", "VDXZBTEM", "VDXZBITU", "VDXZBUNI", "VDXZASPI"})
        d.push_back(Vocabulaire(table));
    {
        using namespace VDXIPC;
        d.push_back(Fixe("VDXIPC", Longueur, {CodeA, CodeB, Condition, Niveau, Texte, Source},
                         {Sur({P(CodeA), P(CodeB), P(Condition)})}));
    }
    {
        using namespace VDXZMOVI;
        d.push_back(Fixe("VDXZMOVI", Longueur, {CodeCIP, Rang, CodeAccessoire, Libelle, Relation, Remarque},
                         {Sur({P(CodeCIP), P(Rang)})}));
    }
    {
        using namespace VDXZASPT;
        d.push_back(Fixe("VDXZASPT", Longueur, {CodeCIP, Rang, Forme, Couleur, Marquage, Secabilite},
                         {Sur({P(CodeCIP), P(Rang)})}));
    }
    {
        using namespace VDXZONCO;
        d.push_back(Fixe("VDXZONCO", Longueur, {CodeCIP, Rang, Etape, Solvant, Concentration, Stabilite},
                         {Sur({P(CodeCIP), P(Rang)})}));
    }
    d.push_back(Chapitres("VDXZNOT", {"Texte", "Rtf", "Html"}, ModeleChapitres::CodeCIP));
    {
        using namespace VDXZAPPC;
        d.push_back(Fixe("VDXZAPPC", Longueur, {CodeCIP, NumeroTexte}, {Sur({P(CodeCIP), P(NumeroTexte)})}));
    }
    d.push_back(Chapitres("VDXZAPTX", SectionsEnPaires(VDXZAPTX::Textes), VDXZAPTX::NumeroTexte));
    {
        Disposition image = TexteFinal("VDXZNOTG", 0, 0, {}, {VDXZNOTG::CodeCIP, VDXZNOTG::NomImage}, "Image");
        image.corps = Corps::OctetsFinal;
        d.push_back(std::move(image));
    }
    for (const char* table : {"VDXIPCTA", "VDXIPCTB", "VDXIPCCC"}) d.push_back(TexteSeul(table));
    return d;
}

}  // namespace vdx::disposition
