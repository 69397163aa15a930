#include "store/layouts/documents.h"

#include "store/layouts/construction.h"

namespace vdx::disposition {

std::vector<Disposition> FamilleDocuments() {
    std::vector<Disposition> d;
    for (const char* table : {"VDXZBEXA", "VDXZBEXI", "VDXZBTEM", "VDXZBITU", "VDXZBUNI", "VDXZMOVI", "VDXZASPT",
                              "VDXZASPI", "VDXZONCO", "VDXIPC"})
        d.push_back(Vocabulaire(table));
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
