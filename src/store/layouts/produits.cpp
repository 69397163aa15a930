#include "store/layouts/produits.h"

#include <stdexcept>

#include "store/cles.h"
#include "store/layouts/construction.h"

namespace vdx {
namespace disposition {

std::vector<Disposition> FamilleProduits() {
    std::vector<Disposition> d;
    {
        using namespace VDXPRO;
        d.push_back(Fixe("VDXPRO", Longueur,
                         {CodeCIP, Libelle, CodeLaboratoire, CodeTVA, DonneeEco1, DonneeEco2, CodeTableau,
                          CodeRubrique, Zone71, Zone73, Zone76, Zone79, CodeTSS, Zone83, DonneeEco3, Zone93, Zone95,
                          Zone101, CIPRemplacant, Zone120, Zone122, LibelleEco, CodeActe, Zone212, Laboratoire,
                          Drapeaux, Suppression, Mouvement},
                         {Sur({P(CodeCIP)}), Unique(Sur({P(Libelle, Pli::Libelle)}), Libelle)}));
    }
    {
        using namespace VDXVPRO;
        d.push_back(Fixe("VDXVPRO", Longueur, {Categorie, Libelle, CodeCIP, Suppression, Marque},
                         {Unique(Sur({P(Categorie), P(Libelle, Pli::Libelle)}), Libelle)}));
    }
    {
        using namespace VDXLABP;
        d.push_back(Fixe("VDXLABP", Longueur, {CodeLaboratoire, CodeCIP, Marque},
                         {Sur({P(CodeLaboratoire), P(CodeCIP)})}));
    }
    {
        using namespace VDXPROA;
        d.push_back(Fixe("VDXPROA", Longueur,
                         {CodeCIP, GenCode, Statut1, CodeStatut, TexteStatut1, TexteStatut2, Prescription1,
                          Prescription2, Prescription3, Statut2, Statut3, CodeUCD, Mediel, Pictogramme, T2A,
                          NombreUCD},
                         {Sur({P(CodeCIP)}), Sur({P(CodeStatut), P(CodeCIP)})}));
    }
    {
        using namespace VDXDAT;
        d.push_back(Fixe("VDXDAT", Longueur, {Numero, Texte}, {Sur({P(Numero)})}));
    }
    {
        using namespace VDXLAB;
        d.push_back(Fixe("VDXLAB", Longueur, {CodeLaboratoire, Libelle, Zone31},
                         {Sur({P(CodeLaboratoire)}),
                          Sur({P(Libelle, Libelle.largeur, Pli::Majuscules), P(CodeLaboratoire)})}));
    }
    for (const char* table : {"VDXTVA", "VDXTSS"}) {
        using namespace VDXTVA;
        d.push_back(Fixe(table, Longueur, {Code, Taux}, {Sur({P(Code)})}));
    }
    {
        using namespace VDXTAB;
        d.push_back(Fixe("VDXTAB", Longueur, {Code, Libelle}, {Sur({P(Code)})}));
    }
    {
        using namespace VDXACT;
        d.push_back(Fixe("VDXACT", Longueur, {Code, Libelle, Texte1, Texte2}, {Sur({P(Code)})}));
    }
    {
        using namespace VDXPRESR;
        d.push_back(Fixe("VDXPRESR", Longueur, {Code, Libelle, Detail}, {Sur({P(Code)})}));
    }
    {
        using namespace VDXCIP13;
        d.push_back(Fixe("VDXCIP13", Longueur, {CodeCIP, CIP13}, {Sur({P(CodeCIP), P(CIP13)}), Sur({P(CIP13), P(CodeCIP)})}));
    }
    d.push_back(Classe("VDXCLA"));
    d.push_back(Classe("VDXWCLAD"));
    d.push_back(ClasseProduit("VDXCLAP"));
    {
        using namespace VDXCLAR;
        d.push_back(Fixe("VDXCLAR", Longueur, {CodeClasse}, {Sur({P(CodeClasse)})}));
    }
    {
        using namespace VDXFAM;
        d.push_back(Fixe("VDXFAM", Longueur, {CodeFamille, Libelle, LibelleCle, Zone108}, {Sur({P(CodeFamille)})}));
    }
    {
        using namespace VDXFAMP;
        const PartieCle famille = P(CodeFamille, Pli::Brut, ' ');
        d.push_back(Fixe("VDXFAMP", Longueur, {CodeFamille, CodeCIP},
                         {Sur({famille, P(CodeCIP)}), Sur({P(CodeCIP), famille})}));
    }
    {
        using namespace VDXPHIMP;
        d.push_back(Fixe("VDXPHIMP", Longueur, {CodeCIP, DateModification, Texte},
                         {Sur({P(CodeCIP), P(DateModification)})}));
    }
    d.push_back(Vocabulaire("VDXCISP"));
    d.push_back(Vocabulaire("VDXTIPS"));
    return d;
}

}  // namespace disposition

namespace {

// A text copied from a field of VDXPRO into one at least as wide.
void Copie(FicheEcrite& fiche, const ChampTexte& champ, std::string_view texte) {
    if (!fiche.Texte(champ, texte)) throw std::logic_error(std::string("champ trop etroit : ") + champ.nom);
}

}  // namespace

std::array<std::string, 2> FichesParCategorie(Fiche produit) {
    const std::string_view code = produit.Texte(VDXPRO::CodeCIP);
    const char categories[2] = {CategorieProduit(produit.Texte(VDXPRO::CodeRubrique), code), VDXVPRO::TousProduits};
    std::array<std::string, 2> fiches;
    for (int i = 0; i < 2; ++i) {
        FicheEcrite f(VDXVPRO::Longueur);
        Copie(f, VDXVPRO::Categorie, std::string_view(&categories[i], 1));
        Copie(f, VDXVPRO::Libelle, produit.Texte(VDXPRO::Libelle));
        Copie(f, VDXVPRO::CodeCIP, code);
        Copie(f, VDXVPRO::Suppression, produit.Texte(VDXPRO::Suppression));
        Copie(f, VDXVPRO::Marque, "C");
        fiches[i] = std::move(f.Octets());
    }
    return fiches;
}

std::string FicheLaboratoire(Fiche produit) {
    FicheEcrite f(VDXLABP::Longueur);
    Copie(f, VDXLABP::CodeLaboratoire, produit.Texte(VDXPRO::CodeLaboratoire));
    Copie(f, VDXLABP::CodeCIP, produit.Texte(VDXPRO::CodeCIP));
    Copie(f, VDXLABP::Marque, "C");
    return std::move(f.Octets());
}

}  // namespace vdx
