#include "store/layouts/reglementaire.h"

#include "store/layouts/construction.h"

namespace vdx::disposition {

std::vector<Disposition> FamilleReglementaire() {
    std::vector<Disposition> d;
    d.push_back(Classe("VDXYATC"));
    d.push_back(ClasseProduit("VDXYATCP"));
    d.push_back(Vocabulaire("VDXYPGEN"));
    d.push_back(Recommandations("VDXYMEDR"));
    {
        using namespace VDXYAMED;
        d.push_back(Fixe("VDXYAMED", Longueur, {CodeCIP, Rang, ClasseOrgane, Frequence, Libelle},
                         {Sur({P(CodeCIP), P(Rang)})}));
    }
    {
        using namespace VDXYTRF;
        d.push_back(Fixe("VDXYTRF", Longueur, {CodeCIS, Avis, Date, Dossier, Niveau, Motif},
                         {Sur({P(CodeCIS), P(Avis), P(Date), P(Dossier)})}));
    }
    for (const char* table : {"VDXYTRPF", "VDXYALDC", "VDXYPGEC"}) d.push_back(Lien(table));
    d.push_back(TexteSeul("VDXYTRFT"));
    {
        using namespace VDXYGRSS;
        d.push_back(Fixe("VDXYGRSS", Longueur,
                         {CodeSubstance, Rang, CodeVoie, Partenaire1, Partenaire2, Partenaire3, LibelleGrossesse,
                          NiveauGrossesse, PeriodeGrossesse, TexteGrossesse},
                         {Sur({P(CodeSubstance, 5, Pli::Decimal), P(Rang, 2)})}));
    }
    {
        using namespace VDXYALD;
        d.push_back(Fixe("VDXYALD", Longueur, {Code, Libelle}, {Sur({P(Code)})}));
    }
    {
        using namespace VDXYLIEN;
        d.push_back(Fixe("VDXYLIEN", Longueur, {NumeroLien, Libelle, NomDocument, DateLien}, {Sur({P(NumeroLien)})}));
    }
    {
        using namespace VDXYLCIP;
        d.push_back(Fixe("VDXYLCIP", Longueur, {CodeCIP, NumeroLien, TypeLien}, {Sur({P(CodeCIP), P(NumeroLien)})}));
    }
    {
        Disposition document = TexteFinal("VDXYLBIN", 0, 0, {}, {VDXYLBIN::NomDocument}, "Document");
        document.corps = Corps::OctetsFinal;
        d.push_back(std::move(document));
    }
    {
        using namespace VDXYCACO;
        d.push_back(Fixe("VDXYCACO", Longueur, {CodeSubstance, LettreCanicule},
                         {Sur({P(CodeSubstance, 5, Pli::Decimal), P(LettreCanicule)})}));
    }
    {
        using namespace VDXYCAAR;
        d.push_back(Fixe("VDXYCAAR", Longueur, {LettreCanicule, Libelle}, {Sur({P(LettreCanicule, Pli::Brut, ' ')})}));
    }
    {
        using namespace VDXYCIS;
        d.push_back(Fixe("VDXYCIS", Longueur, {CodeCIS, Libelle}, {Sur({P(CodeCIS)})}));
    }
    {
        using namespace VDXYCSCP;
        d.push_back(Fixe("VDXYCSCP", Longueur, {CodeCIS, CodeCIP}, {Sur({P(CodeCIP), P(CodeCIS)}), Sur({P(CodeCIS), P(CodeCIP)})}));
    }
    {
        using namespace VDXYDCI;
        d.push_back(Fixe("VDXYDCI", Longueur, {Code, Libelle, LibelleCle},
                         {Sur({P(Code)}), Sur({P(LibelleCle, LibelleCle.largeur, Pli::Majuscules), P(Code)})}));
    }
    {
        using namespace VDXYDCIP;
        d.push_back(Fixe("VDXYDCIP", Longueur, {CodeDCI, CodeCIP}, {Sur({P(CodeDCI), P(CodeCIP)}), Sur({P(CodeCIP), P(CodeDCI)})}));
    }
    return d;
}

}  // namespace vdx::disposition
