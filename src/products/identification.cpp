#include "products/identification.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "checks/voies.h"
#include "platform/fichiers.h"
#include "products/fiches.h"
#include "products/lignes_dc.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/codes.h"
#include "session/tables.h"
#include "session/texte.h"
#include "store/layouts.h"

namespace vdx {
namespace {

VDX_TABLE(TableFormes, "VDXIDFOR")

// Added to the name of the file being written beside the one it replaces.
constexpr char SuffixeProvisoire[] = ".provisoire";

std::string Nombre(float valeur) {
    std::string texte;
    TexteNombre(valeur, texte, false);
    return texte;
}

std::string Voies(std::string_view cip) {
    std::string voies;
    for (const Voie& v : VoiesDuProduit(cip)) voies += (voies.empty() ? "" : ", ") + v.Libelle;
    return voies;
}

IdentifiantProduit IdentifiantDe(std::string_view cip, const Fiche& f, MotsIdentification& mots) {
    const Identite identite = IdentiteDe(f);
    IdentifiantProduit i;
    i.CodeCIP = CIPSortant(cip);
    i.Denomination = identite.Denomination;
    i.Dosage = identite.Dosage;
    i.Forme = mots.Forme(identite.CodeForme);
    i.Voie = Voies(cip);
    i.Contenance = mots.Contenance(f);
    i.CodeUnitePrise1 = f.Entier(VDXIDPRO::CodeUnitePrise);
    i.UnitePrise1 = mots.UnitePriseDe(i.CodeUnitePrise1).Singulier;
    i.CodeUnitePrise2 = f.Entier(VDXIDPRO::CodeUnitePrise2);
    i.UnitePrise2 = mots.UnitePriseDe(i.CodeUnitePrise2).Singulier;
    i.Libelle = LibelleStructure(identite, i.Forme, i.Contenance);
    if (std::optional<LigneDC> ligne = LigneInscrite(cip)) {
        i.CodeDC = std::move(ligne->Code);
        i.LibelleDC = std::move(ligne->Libelle);
    }
    return i;
}

// A value as one field of a line of the file.
std::string Champ(const Valeur& valeur) {
    if (const int32_t* entier = std::get_if<int32_t>(&valeur)) return std::to_string(*entier);
    std::string texte = std::get<std::string>(valeur);
    std::ranges::replace_if(texte, [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
    return texte;
}

template <class Champs>
void AjouteLigne(std::string& texte, const Champs& champs) {
    bool premier = true;
    for (const auto& c : champs) {
        if (!premier) texte += '\t';
        texte += Champ(c);
        premier = false;
    }
    texte += "\r\n";
}

// Writes the whole text beside `chemin`, then renames it into place.
bool RemplaceFichier(const std::string& chemin, std::string_view texte) {
    const std::string provisoire = chemin + SuffixeProvisoire;
    if (systeme::EcritFichierSur(provisoire, texte) && systeme::RenommeFichier(provisoire, chemin)) return true;
    std::error_code erreur;
    std::filesystem::remove(provisoire, erreur);
    return false;
}

}  // namespace

Identite IdentiteDe(const Fiche& f) {
    return {std::string(f.Texte(VDXIDPRO::Denomination)), std::string(f.Texte(VDXIDPRO::Dosage)),
            std::string(f.Texte(VDXIDPRO::CodeForme))};
}

std::string LibelleForme(std::string_view code) {
    TablesOuvertes tables{&TableFormes()};
    std::string cle(code);
    cle.resize(VDXIDFOR::CodeForme.capacite(), ' ');
    const auto p = Curseur(TableFormes()).Egale(cle);
    std::string libelle = p ? std::string(Fiche(VueFicheA(TableFormes(), *p)).Texte(VDXIDFOR::Libelle)) : std::string();
    tables.Ferme();
    return libelle;
}

std::string TexteContenance(const Fiche& f, const Mot& presentation, const Mot& unite) {
    const float nombre = f.Reel(VDXIDPRO::QuantitePresentation);
    std::string texte = Nombre(nombre) + " " + presentation.Selon(nombre > 1);
    const float quantite = f.Reel(VDXIDPRO::QuantiteUnitePresentation);
    if (quantite != 0 && quantite != 1 && !unite.Singulier.empty())
        texte += " de " + Nombre(quantite) + " " + unite.Selon(quantite > 1);
    return texte;
}

std::string TexteContenance(std::string_view identification) {
    const Fiche f(identification);
    return TexteContenance(f, Presentation(f.Entier(VDXIDPRO::CodePresentation)),
                           UnitePresentation(f.Entier(VDXIDPRO::CodeUnitePresentation)));
}

std::string LibelleStructure(const Identite& identite, std::string_view forme, std::string_view contenance) {
    std::string libelle;
    const auto ajoute = [&](std::string_view separateur, std::string_view partie) {
        if (partie.empty()) return;
        if (!libelle.empty()) libelle += separateur;
        libelle += partie;
    };
    ajoute("", identite.Denomination);
    ajoute(" ", identite.Dosage);
    ajoute(", ", forme);
    ajoute(", ", contenance);
    return libelle;
}

const Mot& MotsIdentification::ContenantDe(int32_t code) { return LuUneFois(contenants_, code, Contenant); }
const Mot& MotsIdentification::PresentationDe(int32_t code) { return LuUneFois(presentations_, code, Presentation); }
const Mot& MotsIdentification::UniteDe(int32_t code) { return LuUneFois(unites_, code, UnitePresentation); }
const Mot& MotsIdentification::UnitePriseDe(int32_t code) { return LuUneFois(unitesPrise_, code, UnitePrise); }
const std::string& MotsIdentification::Forme(std::string_view code) {
    return LuUneFois(formes_, std::string(code), LibelleForme);
}

const Mot& MotsIdentification::Conditionnement(const Fiche& id) {
    const Mot& contenant = ContenantDe(id.Entier(VDXIDPRO::CodeContenant));
    return !contenant.Singulier.empty() ? contenant : PresentationDe(id.Entier(VDXIDPRO::CodePresentation));
}

std::string MotsIdentification::Contenance(const Fiche& id) {
    return TexteContenance(id, PresentationDe(id.Entier(VDXIDPRO::CodePresentation)),
                           UniteDe(id.Entier(VDXIDPRO::CodeUnitePresentation)));
}

std::string MotsIdentification::Libelle(const Fiche& id) {
    const Identite identite = IdentiteDe(id);
    return LibelleStructure(identite, Forme(identite.CodeForme), Contenance(id));
}

IdentifiantProduit IdentifiantDe(std::string_view cip) {
    TablesOuvertes tables{&TableIdentification()};
    const std::optional<std::string> fiche = FicheDuCode(TableIdentification(), cip);
    if (!fiche) throw Echec{CodeInconnu};
    MotsIdentification mots;
    IdentifiantProduit identifiant = IdentifiantDe(cip, Fiche(*fiche), mots);
    tables.Ferme();
    return identifiant;
}

int32_t ExporteIdentifiants(const std::string& chemin) {
    std::string texte;
    AjouteLigne(texte, NomsDesChamps<IdentifiantProduit>());
    int32_t nombre = 0;
    TablesOuvertes tables{&TableIdentification()};
    MotsIdentification mots;
    Curseur curseur(TableIdentification());
    for (auto p = curseur.Premiere(); p; p = curseur.Suivante()) {
        const std::string cip(curseur.Cle().substr(0, LongueurCIP));
        AjouteLigne(texte, ValeursDe(IdentifiantDe(cip, Fiche(VueFicheA(TableIdentification(), *p)), mots)));
        ++nombre;
    }
    tables.Ferme();
    if (!RemplaceFichier(chemin, texte)) throw Echec{EcritureImpossible};
    return nombre;
}

}  // namespace vdx
