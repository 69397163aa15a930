// For the tests of the products: one small base that shows each flag, a
// deleted product, narcotics of both lists, two labels made unique (a point,
// and the last byte raised at full key length), 13-digit codes, statuses and
// a line by common name. Texts are given in UTF-8.
#pragma once

#include <string>

#include "platform/hote.h"
#include "store/fixture.h"
#include "store/layouts.h"
#include "tests/support/essai_vocabulaire.h"

namespace vdx::essai {

// A label of the full key length (34), filed twice: the second one has its
// last byte raised.
inline const std::string LibellePlein = "VACCIN CONTRE LA GRIPPE SAISONNIER";
inline const std::string LibellePleinRaise = "VACCIN CONTRE LA GRIPPE SAISONNIES";

inline void RemplitProduits(BaseDeTest& b) {
    struct P {
        const char* code;
        std::string libelle;
        const char* rubrique;
        int32_t drapeaux;
        const char* tableau = "";
        const char* suppression = "";
        const char* laboratoire = "SANO";
        const char* remplacant = "";
    };
    const P produits[] = {
        {"3000001", "DOLIPRANE 500MG CPR", "10", VDXPRO::Referent},
        {"3000002", "DOLIPRANE 1000MG CPR", "10", 0, "", "", "XXXX", "3000003"},
        {"3000003", "DOLIPRANE 500MG CPR", "11", VDXPRO::Generique},  // filed as "DOLIPRANE 500MG CPR."
        {"3000004", "DOLIKO 100MG", "10", 0, "", "A15032017", "SANO", "3000001"},
        {"3000015", "DOLIKO 100MG BUV", "10", 0},  // between the deleted one and its marked label
        {"3000005", "DOLIHOSP 1G INJ", "10", VDXPRO::Hospitalier},
        {"3000006", "DOLIVET 50MG", "40", 0},
        {"3000007", "SKENAN LP 10MG GELULE", "10", 0, "B"},
        {"3000008", "MORPHINE 0,5MG/1ML", "30", 0, "A"},
        {"3000009", "LISTEA 5MG", "60", 0, "A"},
        {"3000010", "PARACETAMOL GNR 500MG", "50", VDXPRO::Dopant | VDXPRO::Generique},
        {"2000012", "ALCOOL 70", "10", 0},
        {"3000013", LibellePlein, "81", 0},
        {"3000014", LibellePlein, "81", 0},
    };
    for (const P& p : produits)
        b.Ajoute("VDXPRO", {{"CodeCIP", p.code},
                            {"Libelle", p.libelle},
                            {"CodeRubrique", p.rubrique},
                            {"Drapeaux", p.drapeaux},
                            {"CodeTableau", p.tableau},
                            {"Suppression", p.suppression},
                            {"CodeLaboratoire", p.laboratoire},
                            {"Laboratoire", p.laboratoire},
                            {"CIPRemplacant", p.remplacant}});
    b.Ajoute("VDXPROA", {{"CodeCIP", "3000001"},    {"GenCode", "3400930000011"},   {"Statut1", 5},
                         {"CodeStatut", 1},         {"TexteStatut1", "Liste I"},    {"TexteStatut2", "Ville"},
                         {"Prescription1", 3},      {"Prescription2", 99},          {"Statut2", 6},
                         {"Statut3", 7},            {"CodeUCD", "9000011"},         {"Pictogramme", 2},
                         {"T2A", 5},                {"NombreUCD", 16}});
    b.Ajoute("VDXPROA", {{"CodeCIP", "3000002"}, {"CodeStatut", 1}});
    b.Ajoute("VDXPROA", {{"CodeCIP", "3000007"}, {"CodeStatut", 1}});
    b.Ajoute("VDXPROA", {{"CodeCIP", "3000008"}, {"CodeStatut", 3}, {"Prescription3", 18}});
    b.Ajoute("VDXPROA", {{"CodeCIP", "3000009"}, {"CodeStatut", 7}, {"Prescription1", 1}, {"Prescription2", 17}});
    // A status whose product is missing from the master table.
    b.Ajoute("VDXPROA", {{"CodeCIP", "3999999"}, {"CodeStatut", 7}});
    b.Ajoute("VDXPRESR", {{"Code", 3}, {"Libelle", "Prescription hospitalière"}, {"Detail", "Réservée à l'hôpital"}});
    b.Ajoute("VDXPRESR", {{"Code", 18}, {"Libelle", "Stupéfiant"}, {"Detail", "Ordonnance sécurisée"}});
    for (auto [cip, cip13] : {std::pair{"3000001", "3400930000011"}, {"3000007", "3400930000073"},
                              {"3000010", "3400930000103"}})
        b.Ajoute("VDXCIP13", {{"CodeCIP", cip}, {"CIP13", cip13}});
    b.Ajoute("VDXLAB", {{"CodeLaboratoire", "SANO"}, {"Libelle", "Sanofi Aventis France"}});
    b.Ajoute("VDXYCSCP", {{"CodeCIS", "60234100"}, {"CodeCIP", "3000001"}});
    b.Ajoute("VDXYDCI", {{"Code", "9000001"}, {"Libelle", "Paracétamol 500 mg cp"}, {"LibelleCle", "PARACETAMOL"}});
}

// The bytes of a host string, 8-bit.
inline std::string Texte(BSTR chaine) { return std::string(hote::Octets(chaine)); }

}  // namespace vdx::essai
