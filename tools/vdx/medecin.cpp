// vdx medecin: a doctor's private base created, edited and read, each
// action one export of the library through vdx call's work.
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "platform/codepage.h"
#include "tools/vdx/commandes.h"
#include "vdx32/vdx32.h"

namespace vdx {

namespace {

constexpr char AideMedecin[] =
    "usage: vdx medecin [--base BASE] ACTION DIR [ARG...]\n"
    "\n"
    "Works on the doctor's private base DIR beside the drug base BASE (or\n"
    "VDX_BASE). DIR's last part has at most four characters. Actions:\n"
    "  create DIR                      create the base's files\n"
    "  connect DIR                     connect it (older files brought up)\n"
    "  add-product DIR CODE COMMENT    a product of the drug base, commented\n"
    "  comment DIR CODE                the comment of a product\n"
    "  add-pathology DIR LABEL [CISP]  a pathology under the next free code\n"
    "  add-posology DIR CODE TITLE TEXT [DOSE [TAKES]]\n"
    "                                  a posology of a product, under its next\n"
    "                                  free number\n"
    "  list DIR [TEXT]                 the products whose label begins with TEXT\n"
    "  repair DIR                      rebuild the indexes\n"
    "  delete DIR                      delete the base's files\n"
    "Prints the result code, then the rows. Exit codes as vdx call.\n";

struct Action {
    const char* export_;
    size_t arguments;       // beside DIR, at least
    size_t facultatifs;     // and at most this many more
    bool connecte;          // the doctor's base connected first
    std::vector<std::string> suite;  // fixed arguments behind the given ones
};

const std::map<std::string, Action, std::less<>>& Actions() {
    static const std::map<std::string, Action, std::less<>> actions{
        {"create", {"CreationMedecin_Vdx", 0, 0, false, {}}},
        {"connect", {"ConnectionMedecin_Vdx", 0, 0, false, {}}},
        {"add-product", {"ProduitsMedecin_Vdx", 2, 0, true, {"0"}}},
        {"comment", {"CommentaireMedecin_Vdx", 1, 0, true, {}}},
        {"add-pathology", {"PathologiesMedecin_Vdx", 1, 1, true, {}}},
        {"list", {"RechercheProduitParPas_Vdx", 0, 1, true, {}}},
        {"repair", {"RepairBaseMedecin_Vdx", 0, 0, false, {}}},
        {"delete", {"SuppressionMedecin_Vdx", 0, 0, false, {}}},
    };
    return actions;
}

// The text of an argument in code page 1252 as a host string.
BSTR Chaine(const std::string& utf8) {
    const std::string texte = codepage::DepuisUtf8(utf8).value_or(utf8);
    return SysAllocStringByteLen(texte.data(), static_cast<uint32_t>(texte.size()));
}

// A posology given by its title, text, dose and takes, in the host's
// record of array mode.
int AjoutePosologie(const std::string& base, const std::vector<std::string>& a) {
    const int32_t connexion = Connection2_Vdx(base.c_str(), 0, 0);
    if (connexion != 1) return EchecLibrairie("Connection2_Vdx", connexion);
    if (const int32_t code = ConnectionMedecin_Vdx(a[1].c_str()); code != 1) return EchecLibrairie("ConnectionMedecin_Vdx", code);
    VdxPosologieHote h{};
    try {
        h.DoseMin.Valeur = a.size() > 5 ? std::stof(a[5]) : 0;
        h.PrisesMin = a.size() > 6 ? std::stoi(a[6]) : 0;
    } catch (const std::exception&) {
        std::cerr << "vdx: DOSE and TAKES are numbers\n";
        return SortieUsage;
    }
    h.CodeCIP = Chaine(a[2]);
    h.Libelle = Chaine(a[3]);
    h.Texte = Chaine(a[4]);
    const int32_t resultat = PosologiesMedecin_Vdx(&h, 0);
    std::cout << resultat << '\n';
    if (resultat == 1) std::cout << std::string(reinterpret_cast<const char*>(h.CodePosologie), SysStringByteLen(h.CodePosologie)) << '\n';
    for (BSTR b : {h.CodePosologie, h.CodeCIP, h.Libelle, h.TypeRef, h.Texte}) SysFreeString(b);
    DeConnectionMedecin_Vdx();
    DeConnection2_Vdx();
    return resultat == 1 ? SortieSucces : EchecLibrairie("PosologiesMedecin_Vdx", resultat);
}

int Medecin(const ArgumentsCommande& args) {
    const std::vector<std::string>& autres = args.Autres();
    const std::string base = args.Base();
    if (base.empty() || autres.size() < 2) return Usage(AideMedecin);
    if (autres[0] == "add-posology") {
        if (autres.size() < 5 || autres.size() > 7) return Usage(AideMedecin);
        return AjoutePosologie(base, autres);
    }
    const auto action = Actions().find(autres[0]);
    if (action == Actions().end()) return Usage(AideMedecin);
    const Action& a = action->second;
    const size_t donnes = autres.size() - 2;
    if (donnes < a.arguments || donnes > a.arguments + a.facultatifs) return Usage(AideMedecin);
    const std::string& dossier = autres[1];
    std::vector<std::string> appel{a.export_};
    if (!a.connecte) appel.push_back(dossier);
    if (autres[0] == "list") {
        appel.insert(appel.end(), {donnes ? autres[2] : "", "2", "", std::to_string(INT32_MAX)});
    } else if (autres[0] == "add-pathology") {
        appel.insert(appel.end(), {autres[2], donnes > 1 ? autres[3] : "", "0"});
    } else {
        appel.insert(appel.end(), autres.begin() + 2, autres.end());
        appel.insert(appel.end(), a.suite.begin(), a.suite.end());
    }
    return AppelleEnMemoire(base, appel, a.connecte ? dossier : "");
}

}  // namespace

const Commande CommandeMedecin{"medecin", AideMedecin, {{"--base", true}}, Medecin};

}  // namespace vdx
