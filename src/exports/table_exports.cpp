#include "exports/table_exports.h"

#include <charconv>
#include <deque>
#include <stdexcept>
#include <tuple>
#include <utility>

#include "platform/hote.h"
#include "session/session.h"
#include "vdx32/vdx32.h"

namespace vdx::exports {
namespace {

using G = GenreArgument;

// Kinds of argument given as text in a call from the command line.
bool DonneEnTexte(GenreArgument genre) {
    return genre == G::Texte || genre == G::Entier || genre == G::Reel || genre == G::Liste || genre == G::ListeTableau ||
           genre == G::Lignes;
}

// Hands out the C arguments of one call, by their declared kinds, from the
// texts given; owns the host strings it lends.
class Arguments {
public:
    explicit Arguments(const std::vector<std::string>& textes) : textes_(textes) {}
    ~Arguments() {
        for (BSTR& c : chaines_) hote::Libere(&c);
        for (SAFEARRAY*& t : tableaux_) SafeArrayDestroy(t);
    }

    // The first host string the call filled, for exports that store their
    // text there in every mode.
    std::string PremiereChaine() const {
        for (BSTR c : chaines_)
            if (c) return std::string(hote::Octets(c));
        return {};
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    template <class T>
    T Prend(GenreArgument genre) {
        if constexpr (std::is_same_v<T, const char*>) {
            return Texte(genre).c_str();
        } else if constexpr (std::is_same_v<T, int32_t>) {
            return Nombre<int32_t>(Texte(genre));
        } else if constexpr (std::is_same_v<T, float>) {
            return Nombre<float>(Texte(genre));
        } else if constexpr (std::is_same_v<T, BSTR*>) {
            chaines_.push_back(nullptr);
            return &chaines_.back();
        } else if constexpr (std::is_same_v<T, SAFEARRAY**>) {
            if (genre == G::ListeTableau) {
                tableaux_.push_back(TableauDeChaines(Texte(genre)));
                return &tableaux_.back();
            }
            // The result array of mode 0; an input list's text was stored
            // as the text input before the call.
            if (genre == G::Liste || genre == G::Lignes) Texte(genre);
            return nullptr;
        } else {
            static_assert(std::is_pointer_v<T>, "kind of argument not handled");
            return nullptr;  // a record of mode 0
        }
    }

private:
    const std::string& Texte(GenreArgument genre) {
        if (DonneEnTexte(genre)) {
            if (suivant_ >= textes_.size()) throw std::invalid_argument("argument manquant");
            return textes_[suivant_++];
        }
        throw std::invalid_argument("argument sans texte");
    }

    // A host array of the strings of "a@b@c".
    static SAFEARRAY* TableauDeChaines(const std::string& texte) {
        std::vector<std::string> entrees;
        for (size_t debut = 0;;) {
            const size_t fin = texte.find('@', debut);
            entrees.push_back(texte.substr(debut, fin == std::string::npos ? std::string::npos : fin - debut));
            if (fin == std::string::npos) return hote::TableauDeChaines(entrees);
            debut = fin + 1;
        }
    }

    template <class N>
    static N Nombre(const std::string& texte) {
        N n{};
        auto [fin, erreur] = std::from_chars(texte.data(), texte.data() + texte.size(), n);
        if (erreur != std::errc() || fin != texte.data() + texte.size())
            throw std::invalid_argument("nombre attendu : " + texte);
        return n;
    }

    const std::vector<std::string>& textes_;
    size_t suivant_ = 0;
    std::deque<BSTR> chaines_;
    std::deque<SAFEARRAY*> tableaux_;
};

template <class R, class... A, size_t... I>
Appel Invoque(R (*f)(A...), const std::vector<Argument>& declares, const std::vector<std::string>& textes,
              std::index_sequence<I...>) {
    Arguments arguments(textes);
    // A braced list takes its arguments from left to right.
    std::tuple<A...> valeurs{arguments.template Prend<A>(declares[I].genre)...};
    int32_t code = 1;
    if constexpr (std::is_void_v<R>)
        std::apply(f, valeurs);
    else
        code = std::apply(f, valeurs);
    return {code, arguments.PremiereChaine()};
}

template <class R, class... A>
Export Decrit(const char* nom, R (*f)(A...), std::vector<Argument> arguments, std::vector<const char*> champs = {},
              bool connexionRequise = true) {
    if (arguments.size() != sizeof...(A)) throw std::logic_error(nom);
    auto appelle = [f, arguments](const std::vector<std::string>& textes) {
        return Invoque(f, arguments, textes, std::index_sequence_for<A...>{});
    };
    return Export{nom, std::move(arguments), std::move(champs), connexionRequise, std::move(appelle)};
}

// The arguments and rows shared by the searches of the vocabularies.
const std::vector<Argument> ArgumentsPas = {{G::Texte, "Texte"}, {G::Tableau, "Tableau"}, {G::Texte, "Suite"},
                                            {G::Entier, "Nombre"}};
const std::vector<Argument> ArgumentsMot = {{G::Texte, "Mot1"}, {G::Texte, "Mot2"}, {G::Entier, "Partout"},
                                            {G::Tableau, "Tableau"}};
const std::vector<Argument> ArgumentsFamille = {{G::Texte, "Mot"}, {G::Tableau, "Tableau"}, {G::Texte, "Prefixe"}};
const std::vector<Argument> ArgumentsLibelle = {{G::Texte, "Code"}, {G::ChaineSortie, "Libelle"}};
// The product exports: a code alone; the step searches of products.
const std::vector<Argument> ArgumentCode = {{G::Texte, "Code"}};
const std::vector<Argument> ArgumentsPasProduit = {{G::Texte, "Texte"}, {G::Tableau, "Tableau"}, {G::Entier, "Options"},
                                                   {G::Texte, "Suite"}, {G::Entier, "Nombre"}};
const std::vector<const char*> CodeLibelle = {"Code", "Libelle"};
// The contra-indication checks.
const std::vector<const char*> ChampsAlerteCI = {"NiveauAlerte", "ValeurPatient", "CodeProduit", "LibelleProduit",
                                                 "CodeTerme",    "LibelleTerme",  "CodePatient"};
const std::vector<const char*> ChampsFicheCI = {"NiveauAlerte", "LibelleProduit", "LibelleTerme"};
const std::vector<Argument> ArgumentsProfilCourt = {
    {G::Liste, "Produits"}, {G::Liste, "Termes"}, {G::Tableau, "Tableau"}, {G::Entier, "Age"}};
const std::vector<const char*> CodeLibelleTexte = {"Code", "Libelle", "Texte"};

const std::vector<Export>& Table() {
    static const std::vector<Export> table = {
        Decrit("Version_Vdx", &Version_Vdx, {{G::Fiche, "Fiche"}}, {"Version", "DateVersion"}),
        Decrit("VersionFichier_Vdx", &VersionFichier_Vdx, {{G::ChaineSortie, "Texte"}}, {"Version"}),
        Decrit("Monnaie_Vdx", &Monnaie_Vdx, {{G::ChaineSortie, "Texte"}}, {"Monnaie"}),
        Decrit("ActiveCIP13_Vdx", &ActiveCIP13_Vdx, {{G::Entier, "Valeur"}}, {}, false),
        Decrit("ActiveHospitaliers_Vdx", &ActiveHospitaliers_Vdx, {{G::Entier, "Valeur"}}, {}, false),
        Decrit("NiveauCI_Vdx", &NiveauCI_Vdx, {{G::Entier, "Niveau"}}, {}, false),
        Decrit("NiveauInteraction_Vdx", &NiveauInteraction_Vdx, {{G::Entier, "Niveau"}}, {}, false),
        Decrit("ActiveMedDC_Vdx", &ActiveMedDC_Vdx, {{G::Entier, "Valeur"}}, {}, false),
        Decrit("Fonctionnalites_Vdx", &Fonctionnalites_Vdx, {{G::Entier, "Inutilise"}, {G::Fiche, "Champs"}}, {}, false),
        Decrit("ListeALD_Vdx", &ListeALD_Vdx, {{G::Tableau, "Tableau"}}, {"Code", "Libelle"}),
        Decrit("RechercheAMMParPas_Vdx", &RechercheAMMParPas_Vdx, ArgumentsPas, CodeLibelle),
        Decrit("RechercheAMMLexico_Vdx", &RechercheAMMLexico_Vdx, ArgumentsMot, CodeLibelle),
        Decrit("RechercheAllergieAMMParPas_Vdx", &RechercheAllergieAMMParPas_Vdx, ArgumentsPas, CodeLibelle),
        Decrit("RechercheAllergieAMMLexico_Vdx", &RechercheAllergieAMMLexico_Vdx, ArgumentsMot, CodeLibelle),
        Decrit("RechercheCIM10ParPas_Vdx", &RechercheCIM10ParPas_Vdx, ArgumentsPas, CodeLibelle),
        Decrit("RechercheCIM10Lexico_Vdx", &RechercheCIM10Lexico_Vdx, ArgumentsMot, CodeLibelle),
        Decrit("RechercheCISPParPas_Vdx", &RechercheCISPParPas_Vdx, ArgumentsPas, CodeLibelle),
        Decrit("RechercheCISPLexico_Vdx", &RechercheCISPLexico_Vdx, ArgumentsMot, CodeLibelle),
        Decrit("RecherchePAParPas_Vdx", &RecherchePAParPas_Vdx, ArgumentsPas, CodeLibelle),
        Decrit("RecherchePALexico_Vdx", &RecherchePALexico_Vdx, ArgumentsMot, CodeLibelle),
        Decrit("RechercheExcipientParPas_Vdx", &RechercheExcipientParPas_Vdx, ArgumentsPas, CodeLibelle),
        Decrit("RechercheExcipientLexico_Vdx", &RechercheExcipientLexico_Vdx, ArgumentsMot, CodeLibelle),
        Decrit("RechercheEENParPas_Vdx", &RechercheEENParPas_Vdx, ArgumentsPas, CodeLibelle),
        Decrit("RechercheEENLexico_Vdx", &RechercheEENLexico_Vdx, ArgumentsMot, CodeLibelle),
        Decrit("RechercheClasseParPas_Vdx", &RechercheClasseParPas_Vdx, ArgumentsPas, CodeLibelleTexte),
        Decrit("RechercheClasseATCParPas_Vdx", &RechercheClasseATCParPas_Vdx, ArgumentsPas, CodeLibelleTexte),
        Decrit("RechercheClasseDCIParPas_Vdx", &RechercheClasseDCIParPas_Vdx, ArgumentsPas, CodeLibelleTexte),
        Decrit("RechercheFormeParPas_Vdx", &RechercheFormeParPas_Vdx, ArgumentsPas, CodeLibelleTexte),
        Decrit("RechercheExamenParPas_Vdx", &RechercheExamenParPas_Vdx, ArgumentsPas, CodeLibelleTexte),
        Decrit("RechercheItemParPas_Vdx", &RechercheItemParPas_Vdx, ArgumentsPas, CodeLibelleTexte),
        Decrit("RechercheDicoPathoParPas_Vdx", &RechercheDicoPathoParPas_Vdx, ArgumentsPas, CodeLibelleTexte),
        Decrit("RechercheMedDCParPas_Vdx", &RechercheMedDCParPas_Vdx, ArgumentsPas, CodeLibelleTexte),
        Decrit("RechercheLaboratoireParPas_Vdx", &RechercheLaboratoireParPas_Vdx, ArgumentsPas, CodeLibelle),
        Decrit("RechercheClasseLexico_Vdx", &RechercheClasseLexico_Vdx, ArgumentsFamille, CodeLibelleTexte),
        Decrit("RechercheClasseATCLexico_Vdx", &RechercheClasseATCLexico_Vdx, ArgumentsFamille, CodeLibelleTexte),
        Decrit("RechercheClasseDCILexico_Vdx", &RechercheClasseDCILexico_Vdx, ArgumentsFamille, CodeLibelleTexte),
        Decrit("RechercheFamilleLexico_Vdx", &RechercheFamilleLexico_Vdx, ArgumentsFamille, CodeLibelleTexte),
        Decrit("RechercheFormeLexico_Vdx", &RechercheFormeLexico_Vdx, ArgumentsFamille, CodeLibelleTexte),
        Decrit("RechercheExamenLexico_Vdx", &RechercheExamenLexico_Vdx, ArgumentsFamille, CodeLibelleTexte),
        Decrit("RechercheItemLexico_Vdx", &RechercheItemLexico_Vdx, ArgumentsFamille, CodeLibelleTexte),
        Decrit("RechercheDicoPathoLexico_Vdx", &RechercheDicoPathoLexico_Vdx, ArgumentsFamille, CodeLibelleTexte),
        Decrit("RechercheMedDCLexico_Vdx", &RechercheMedDCLexico_Vdx, ArgumentsFamille, CodeLibelleTexte),
        Decrit("LibelleCIM10_Vdx", &LibelleCIM10_Vdx, ArgumentsLibelle, {"Libelle"}),
        Decrit("LibelleCISP_Vdx", &LibelleCISP_Vdx, ArgumentsLibelle, {"Libelle"}),
        Decrit("LibelleAMM_Vdx", &LibelleAMM_Vdx, ArgumentsLibelle, {"Libelle"}),
        Decrit("LibelleClasse_Vdx", &LibelleClasse_Vdx, ArgumentsLibelle, {"Libelle"}),
        Decrit("LibelleClasseATC_Vdx", &LibelleClasseATC_Vdx, ArgumentsLibelle, {"Libelle"}),
        Decrit("LibelleForme_Vdx", &LibelleForme_Vdx, ArgumentsLibelle, {"Libelle"}),
        Decrit("LibelleLaboratoire_Vdx", &LibelleLaboratoire_Vdx, ArgumentsLibelle, {"Libelle"}),
        Decrit("LibelleFamille_Vdx", &LibelleFamille_Vdx, ArgumentsLibelle, {"Libelle"}),
        Decrit("Lexico_Vdx", &Lexico_Vdx,
               {{G::Tableau, "Resultat"}, {G::Texte, "MotsCherches"}, {G::Texte, "MotsExclus"}, {G::Entier, "Options"},
                {G::Entier, "Debut"}, {G::Entier, "Nombre"}},
               {"CodeCIP", "Libelle", "Texte"}),
        Decrit("CIP_CIP13_Vdx", &CIP_CIP13_Vdx, {{G::Texte, "Code"}, {G::ChaineSortie, "Sortie"}}, {"CIP13"}),
        Decrit("CIP13_CIP_Vdx", &CIP13_CIP_Vdx, {{G::Texte, "Code"}, {G::ChaineSortie, "Sortie"}}, {"CodeCIP"}),
        Decrit("IsStupefiant_Vdx", &IsStupefiant_Vdx, ArgumentCode),
        Decrit("LibelleStupefiant_Vdx", &LibelleStupefiant_Vdx, {{G::Texte, "Texte"}, {G::ChaineSortie, "Sortie"}},
               {}, false),
        Decrit("Statut_Vdx", &Statut_Vdx, {{G::Texte, "Code"}, {G::Fiche, "Fiche"}},
               {"Statut1", "Statut2", "Statut3", "CodeStatut", "Prescription1", "Prescription2", "Prescription3",
                "LibelleStatut", "LibellePrescription1", "LibellePrescription2", "LibellePrescription3",
                "DetailPrescription1", "DetailPrescription2", "DetailPrescription3", "TexteStatut1", "TexteStatut2"}),
        Decrit("IsMedDC_Vdx", &IsMedDC_Vdx, ArgumentCode),
        Decrit("UCD_Vdx", &UCD_Vdx, {{G::Texte, "Code"}, {G::ChaineSortie, "UCD"}}, {"UCD"}),
        Decrit("GenCode_Vdx", &GenCode_Vdx, {{G::Texte, "Code"}, {G::ChaineSortie, "GenCode"}}, {"GenCode"}),
        Decrit("CIP_To_CIS_Vdx", &CIP_To_CIS_Vdx, {{G::Texte, "Code"}, {G::ChaineSortie, "CIS"}}, {"CIS"}),
        Decrit("CodeRubrique_Vdx", &CodeRubrique_Vdx, ArgumentCode),
        Decrit("NombreUCDParCIP_Vdx", &NombreUCDParCIP_Vdx, ArgumentCode),
        Decrit("GetPictogramme_Vdx", &GetPictogramme_Vdx, ArgumentCode),
        Decrit("ProduitStatut_Vdx", &ProduitStatut_Vdx, ArgumentCode),
        Decrit("IsT2A_Vdx", &IsT2A_Vdx, ArgumentCode),
        Decrit("ProduitGenerique_Vdx", &ProduitGenerique_Vdx, ArgumentCode),
        Decrit("ProduitDopant_Vdx", &ProduitDopant_Vdx, ArgumentCode),
        Decrit("ProduitReferent_Vdx", &ProduitReferent_Vdx, ArgumentCode),
        Decrit("ProduitHospitalier_Vdx", &ProduitHospitalier_Vdx, ArgumentCode),
        Decrit("LibelleProduit_Vdx", &LibelleProduit_Vdx, {{G::Texte, "Code"}, {G::ChaineSortie, "Libelle"}},
               {"Libelle"}),
        Decrit("ProduitSupprime_Vdx", &ProduitSupprime_Vdx, {{G::Texte, "Code"}, {G::ChaineSortie, "Date"}},
               {"Date"}),
        Decrit("Laboratoire_Vdx", &Laboratoire_Vdx,
               {{G::Texte, "Code"}, {G::ChaineSortie, "CodeLaboratoire"}, {G::ChaineSortie, "Libelle"}},
               {"CodeLaboratoire", "Libelle"}),
        Decrit("CIP_Remplacant_Vdx", &CIP_Remplacant_Vdx, {{G::Texte, "Code"}, {G::ChaineSortie, "Remplacant"}},
               {"CodeCIP"}),
        Decrit("TotalProduit_Vdx", &TotalProduit_Vdx, {}),
        Decrit("GetProduit_Vdx", &GetProduit_Vdx,
               {{G::Entier, "Rang"}, {G::ChaineSortie, "Code"}, {G::ChaineSortie, "Libelle"}}, {"CodeCIP", "Libelle"}),
        Decrit("RechercheProduitParPas_Vdx", &RechercheProduitParPas_Vdx, ArgumentsPasProduit, CodeLibelleTexte),
        Decrit("RechercheProduitParPas2_Vdx", &RechercheProduitParPas2_Vdx, ArgumentsPasProduit, CodeLibelleTexte),
        Decrit("RechercheProduitParStatut_Vdx", &RechercheProduitParStatut_Vdx,
               {{G::Entier, "CodeStatut"}, {G::Tableau, "Tableau"}, {G::Texte, "Suite"}, {G::Entier, "Nombre"}},
               CodeLibelleTexte),
        Decrit("ProduitPA_Vdx", &ProduitPA_Vdx,
               {{G::Texte, "Code"}, {G::Tableau, "Tableau"}, {G::ChaineSortie, "Exprime"},
                {G::ChaineSortie, "Composition"}},
               {"CodeSubstance", "SansQuantite", "Quantite", "Libelle", "QuantiteTexte", "LibelleUnite"}),
        Decrit("PAProduits_Vdx", &PAProduits_Vdx, {{G::Entier, "Code"}, {G::Tableau, "Tableau"}},
               {"CodeCIP", "Libelle", "Nature"}),
        Decrit("ExcipientProduits_Vdx", &ExcipientProduits_Vdx, {{G::Entier, "Code"}, {G::Tableau, "Tableau"}},
               {"CodeCIP", "Libelle", "Nature"}),
        Decrit("LibellePA_Vdx", &LibellePA_Vdx, {{G::Entier, "Code"}, {G::ChaineSortie, "Libelle"}}, {"Libelle"}),
        Decrit("LibelleExcipient_Vdx", &LibelleExcipient_Vdx, {{G::Entier, "Code"}, {G::ChaineSortie, "Libelle"}},
               {"Libelle"}),
        Decrit("SynonymeComposant_Vdx", &SynonymeComposant_Vdx, {{G::Entier, "Code"}, {G::Tableau, "Tableau"}},
               CodeLibelle),
        Decrit("ProduitClasse_Vdx", &ProduitClasse_Vdx, {{G::Texte, "Code"}, {G::Tableau, "Tableau"}},
               {"CodeClasse", "CodeCIP", "Libelle"}),
        Decrit("ListeVoie_Vdx", &ListeVoie_Vdx, {{G::Texte, "Code"}, {G::Tableau, "Tableau"}}, CodeLibelle),
        Decrit("Rtf_To_Texte", &Rtf_To_Texte, {{G::Texte, "Texte"}, {G::ChaineSortie, "Sortie"}}, {}, false),
        Decrit("ContreIndicationsProfil2_Vdx", &ContreIndicationsProfil2_Vdx,
               {{G::Liste, "CodesPatient"}, {G::Liste, "TypesPatient"}, {G::Liste, "ValeursPatient"},
                {G::Liste, "Produits"}, {G::Tableau, "Tableau"}, {G::Entier, "Age"}, {G::Entier, "Poids"},
                {G::Entier, "Grossesse"}, {G::Entier, "Allaitement"}, {G::Texte, "Sexe"}},
               ChampsAlerteCI),
        Decrit("ContreIndicationsProfil3_Vdx", &ContreIndicationsProfil3_Vdx,
               {{G::Liste, "CodesPatient"}, {G::Liste, "TypesPatient"}, {G::Liste, "ValeursPatient"},
                {G::Liste, "Produits"}, {G::Liste, "Analyses"}, {G::Tableau, "Tableau"}, {G::Entier, "Age"},
                {G::Entier, "Poids"}, {G::Entier, "Grossesse"}, {G::Entier, "Allaitement"}, {G::Texte, "Sexe"}},
               ChampsAlerteCI),
        Decrit("ContreIndicationsProfil_Vdx", &ContreIndicationsProfil_Vdx, ArgumentsProfilCourt, ChampsFicheCI),
        Decrit("ContreIndicationsProfilPharm_Vdx", &ContreIndicationsProfilPharm_Vdx,
               {{G::Liste, "Produits"}, {G::Liste, "Termes"}, {G::Tableau, "Tableau"}, {G::Entier, "Age"},
                {G::Entier, "Mode"}},
               ChampsFicheCI),
        Decrit("Interactions2_Vdx", &Interactions2_Vdx,
               {{G::Liste, "Produits"}, {G::Liste, "CodesPatient"}, {G::Liste, "TypesPatient"},
                {G::Tableau, "Tableau"}, {G::Entier, "Age"}, {G::Entier, "Poids"}, {G::Entier, "Grossesse"},
                {G::Entier, "Allaitement"}, {G::Texte, "Sexe"}},
               {"CIP1", "CIP2", "Libelle1", "Libelle2", "LibelleGravite", "TexteType", "Reference", "Niveau",
                "Texte1", "Texte2", "Texte3", "Texte4", "Classe1", "Classe2", "Voie1", "Voie2", "CodeType",
                "Niveau2", "Substance2", "Substance1Associee", "Substance2Associee", "CodeCondition",
                "LibelleCondition"}),
        Decrit("Interactions2Test_Vdx", &Interactions2Test_Vdx,
               {{G::ListeTableau, "Produits"}, {G::ListeTableau, "CodesPatient"}, {G::ListeTableau, "TypesPatient"},
                {G::Entier, "Age"}, {G::Entier, "Poids"}, {G::Entier, "Grossesse"}, {G::Entier, "Allaitement"},
                {G::Texte, "Sexe"}}),
        Decrit("Interactions_Vdx", &Interactions_Vdx, {{G::Lignes, "Produits"}, {G::Tableau, "Tableau"}},
               {"Niveau", "LibelleGravite", "Libelle1", "Libelle2", "TexteType", "Reference", "CIP1", "CIP2"}),
        Decrit("ProduitInteractions_Vdx", &ProduitInteractions_Vdx, {{G::Texte, "Code"}, {G::Tableau, "Tableau"}},
               {"Niveau", "LibelleGravite", "TexteType", "Reference"}),
        Decrit("EquivalentPathologie_Vdx", &EquivalentPathologie_Vdx,
               {{G::Texte, "Code"}, {G::ChaineSortie, "Terme"}}, {"CodeTerme"}),
    };
    return table;
}

}  // namespace

size_t Export::NombreTextes() const {
    size_t n = 0;
    for (const Argument& a : arguments) n += DonneEnTexte(a.genre);
    return n;
}

std::span<const Export> Exports() { return Table(); }

std::span<const char* const> ExportsDeLaSession() {
    static const char* const noms[] = {"Connection_Vdx",   "Connection2_Vdx", "DeConnection_Vdx",
                                       "DeConnection2_Vdx", "GetLastError_Vdx", "GetLenString_Vdx",
                                       "GetString_Vdx",    "GetString2_Vdx",  "SetString_Vdx",
                                       "SetString2_Vdx",   "InstalleNotifications_Vdx"};
    return noms;
}

const Export* ExportNomme(std::string_view nom) {
    for (const Export& e : Table())
        if (nom == e.nom) return &e;
    return nullptr;
}

Appel AppelleEnMemoire(const Export& e, const std::vector<std::string>& textes) {
    if (textes.size() != e.NombreTextes())
        throw std::invalid_argument(std::string(e.nom) + " attend " + std::to_string(e.NombreTextes()) +
                                    " argument(s)");
    // A host of the flat modes stores its input lists just before the call,
    // one behind the other, each ended by an empty line.
    SetString2_Vdx(nullptr);
    std::string listes;
    for (size_t i = 0, t = 0; i < e.arguments.size(); ++i) {
        if (e.arguments[i].genre == G::Liste) listes += textes[t].empty() ? "\r\n" : textes[t] + "\r\n\r\n";
        if (e.arguments[i].genre == G::Lignes) {
            for (char c : textes[t]) listes += c == '@' ? std::string("\r\n") : std::string(1, c);
            listes += "\r\n@\r\n";
        }
        t += DonneEnTexte(e.arguments[i].genre);
    }
    SetString_Vdx(listes.c_str());
    Appel appel = e.appelle(textes);
    if (appel.code < 0)
        appel.texte.clear();
    else if (session().ChaineMemoire)
        appel.texte = *session().ChaineMemoire;
    return appel;
}

}  // namespace vdx::exports
