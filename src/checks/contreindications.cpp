#include "checks/contreindications.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "checks/tri.h"
#include "products/codes.h"
#include "products/fiches.h"
#include "products/lignes_dc.h"
#include "products/produits.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/resultat.h"
#include "session/session.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts/composition.h"
#include "store/pliage.h"
#include "vocabulary/libelles.h"

namespace vdx {

VDX_TABLE(TableTermes, "VDXVAMM")

namespace {

VDX_TABLE(TableTermesProduit, "VDXVAMPC")
VDX_TABLE(TableLiensTerme, "VDXVAMMC")
VDX_TABLE(TableCISPVersCIM10, "VDXVCICI")
VDX_TABLE(TableEquivalents, "VDXVAMME")

// The kinds of terms of a product this check reads.
constexpr char TypeContreIndication[] = "2";
constexpr char TypePrecaution[] = "3";
// The links of a term: its CIM10 codes, and the codes a patient's term
// stands for.
constexpr char LienCIM10[] = "02";
constexpr char LienExpansion[] = "01";
// Term codes are compared on their ten characters.
constexpr size_t LongueurTerme = VDXVAMM::CodeTerme.capacite();

std::string CleTerme(std::string_view code) { return CleTexte(code, LongueurTerme); }

// Keys of the walks, laid as the layouts lay them.
std::string DebutTermesProduit(std::string_view cip, std::string_view type) {
    return CleTexte(cip, VDXVAMPC::CodeCIP.capacite()) + CleTexte(type, VDXVAMPC::TypeAMM.capacite());
}
std::string DebutLiensTerme(std::string_view terme, std::string_view type) {
    return CleTexte(terme, VDXVAMMC::CodeTerme.capacite()) + CleTexte(type, VDXVAMMC::TypeLien.capacite());
}


bool Contient(std::string_view texte, std::string_view mot) { return texte.find(mot) != std::string_view::npos; }

// Two codes match when the shorter one begins the other.
bool Commencent(std::string_view a, std::string_view b) {
    return a.size() <= b.size() ? b.starts_with(a) : a.starts_with(b);
}

// The halves a CIM10 code of the patient may hold: two codes written one
// behind the other (5 + 5, 3 + 3, and for 8 characters 5 + 3 when the
// fourth is a point, else 3 + 5).
std::vector<std::string_view> MoitiesCIM10(std::string_view code) {
    size_t premiere = 0;
    if (code.size() == 10)
        premiere = 5;
    else if (code.size() == 6)
        premiere = 3;
    else if (code.size() == 8)
        premiere = code[3] == '.' ? 5 : 3;
    if (premiere == 0) return {};
    return {code.substr(0, premiere), code.substr(premiere)};
}

// A decimal number of a biological text, with a point or a comma.
std::optional<double> Nombre(std::string_view texte) {
    while (!texte.empty() && texte.front() == ' ') texte.remove_prefix(1);
    std::string chiffres(texte);
    std::replace(chiffres.begin(), chiffres.end(), ',', '.');
    double valeur = 0;
    const auto [fin, erreur] = std::from_chars(chiffres.data(), chiffres.data() + chiffres.size(), valeur);
    if (erreur != std::errc() || fin == chiffres.data()) return std::nullopt;
    return valeur;
}

// A range "a-b" (the separator is the first "-" after the first character,
// so that a negative first bound stays whole).
std::optional<std::pair<double, double>> Intervalle(std::string_view texte) {
    const size_t tiret = texte.size() > 1 ? texte.find('-', 1) : std::string_view::npos;
    if (tiret == std::string_view::npos) return std::nullopt;
    const auto a = Nombre(texte.substr(0, tiret));
    const auto b = Nombre(texte.substr(tiret + 1));
    if (!a || !b) return std::nullopt;
    return std::pair{*a, *b};
}

// A link of a product with a term, and for the list of codes the CIM10
// code the term is linked with.
struct Lien {
    std::string CodeCIP;
    std::string CodeTerme;
    int32_t chiffre;  // 3 for a precaution, else the record's NiveauLien
    std::string CodeLie;
};

// One run of the check: the tables held open, the working lists, the
// alerts and the labels already read.
class Controle {
public:
    // Alerts filtered below `niveauCI` are left out.
    Controle(ProfilPatient& patient, const RegleProfil& regle, int32_t niveauCI)
        : patient_(patient),
          regle_(regle),
          niveauCI_(niveauCI),
          tables_({&TableTermes(), &TableTermesProduit(), &TableLiensTerme(), &TableCISPVersCIM10(),
                   &TableProduits()}),
          termesProduit_(TableTermesProduit()),
          liens_(TableLiensTerme()),
          cisp_(TableCISPVersCIM10()) {}

    void ConstruitListes(const std::vector<std::string>& produits) {
        for (const std::string& code : produits) {
            if (regle_.convertitCIP13 && code.size() == LongueurCIP13) {
                const auto cip = CorrespondanceCIP(SensCIP::Vers7, code);
                if (!cip || cip->empty()) throw Echec{CodeMalForme};
                // Converted, and still skipped below: the code as given
                // is not seven long.
            }
            if (code.size() != LongueurCIP) continue;
            // A line by common name has its own terms and those of all its
            // products, each once.
            const bool ligne = EstMedDC(code);
            std::vector<std::string> lus = ProduitsPourLeCode(code);
            if (ligne) lus.insert(lus.begin(), code);
            std::set<std::pair<std::string, std::string>> vus;
            for (const std::string& produit : lus) {
                for (const char* type : {TypeContreIndication, TypePrecaution}) {
                    const std::string debut = DebutTermesProduit(produit, type);
                    for (auto p = termesProduit_.PremiereAvec(debut); p; p = termesProduit_.SuivanteAvec(debut)) {
                        const std::string octets = FicheA(TableTermesProduit(), *p);
                        const Fiche fiche(octets);
                        if (ligne && !vus.emplace(type, std::string(fiche.Texte(VDXVAMPC::CodeTerme))).second) continue;
                        Lien lien{code, std::string(fiche.Texte(VDXVAMPC::CodeTerme)),
                                  std::string_view(type) == TypePrecaution ? ChiffrePrecaution
                                                                           : fiche.Entier(VDXVAMPC::NiveauLien),
                                  {}};
                        for (std::string& lie : CodesLies(lien.CodeTerme, LienCIM10)) {
                            Lien avecCode = lien;
                            avecCode.CodeLie = std::move(lie);
                            listeCodes_.push_back(std::move(avecCode));
                        }
                        listeTermes_.push_back(std::move(lien));
                    }
                }
            }
        }
    }

    void AppariePathologies() {
        const size_t n = patient_.CodesPatient.size();
        for (size_t i = 0; i < n; ++i) {
            std::string code = patient_.CodesPatient[i];
            // An empty entry stands for no pathology: it would begin every code.
            if (code.empty()) continue;
            const int32_t valeur = patient_.ValeursPatient[i];
            switch (patient_.TypesPatient[i]) {
                case PathologieTerme: {
                    CorrespondTerme(code, valeur);
                    if (const std::string* fiche = FicheTerme(code))
                        RegleGrossesse(Fiche(*fiche).Texte(VDXVAMM::LibelleMajuscules));
                    for (const std::string& lie : CodesLies(code, LienExpansion)) CorrespondCode(lie, valeur, false);
                    break;
                }
                case PathologieCISP: {
                    for (auto p = cisp_.PremiereAvec(code); p; p = cisp_.SuivanteAvec(code)) {
                        const std::string octets = FicheA(TableCISPVersCIM10(), *p);
                        CorrespondCode(Fiche(octets).Texte(VDXVCICI::CodeCIM10), valeur, true);
                    }
                    RegleGrossesse(LibelleNormalise(vocabulaires::CISP(), code));
                    break;
                }
                case PathologieCIM10: {
                    for (std::string_view moitie : MoitiesCIM10(code)) CorrespondCode(moitie, valeur, false);
                    if (code.size() == 3) {
                        const std::string long9 = code + ".9";
                        if (LibelleVocabulaire(VocabulaireCIM10(long9), long9)) code = long9;
                    }
                    CorrespondCode(code, valeur, false);
                    RegleGrossesse(LibelleNormalise(VocabulaireCIM10(code), code));
                    break;
                }
                default:
                    break;
            }
        }
    }

    void ApparieProfil() {
        for (const Lien& lien : listeTermes_) {
            const std::string* octets = FicheTerme(lien.CodeTerme);
            const Fiche terme(octets ? std::string_view(*octets) : std::string_view());
            const auto [applicable, defini, niveau] = TesteProfil(terme, lien.chiffre);
            if (applicable && defini) Ajoute(niveau, -1, lien, {});
        }
    }

    std::vector<AlerteCI> Alertes() {
        TriEchange(alertes_, [](const AlerteCI& p, const AlerteCI& q) { return p.LibelleProduit > q.LibelleProduit; });
        tables_.Ferme();
        return std::move(alertes_);
    }

private:
    struct Verdict {
        bool applicable;
        bool defini;
        int32_t niveau;
    };

    // The conditions of a term against the profile, in their order: each
    // one that the term sets makes the alert defined and sets its level.
    Verdict TesteProfil(const Fiche& terme, int32_t chiffre) const {
        const ProfilPatient& p = patient_;
        int32_t niveauProfil = chiffre == ChiffrePrecaution ? NiveauPrecaution : NiveauContreIndication;
        if (regle_.niveauxDuLien && (chiffre == 1 || chiffre == 2)) niveauProfil = NiveauRapportLien * chiffre;
        const int32_t niveauGrossesse = niveauProfil + EcartGrossesse;
        Verdict v{true, false, niveauProfil};
        const auto hors = [](int32_t x, int32_t min, int32_t max, bool maxInclus) {
            return x < min || (maxInclus ? x > max : x >= max);
        };

        if (const int32_t max = terme.Entier(VDXVAMM::AgeMax); max != 0) {
            v = {v.applicable, true, niveauProfil};
            if (!(regle_.inconnuNeutre && p.Age == 0) && hors(p.Age, terme.Entier(VDXVAMM::AgeMin), max, false))
                v.applicable = false;
        }
        if (const int32_t max = terme.Entier(VDXVAMM::PoidsMax); max != 0) {
            v = {v.applicable, true, niveauProfil};
            if (p.Poids == 0 ? !regle_.inconnuNeutre
                             : hors(p.Poids, terme.Entier(VDXVAMM::PoidsMin), max, regle_.poidsMaxInclus))
                v.applicable = false;
        }
        if (const int32_t max = terme.Entier(VDXVAMM::GrossesseMax); max != 0) {
            v = {v.applicable, true, niveauGrossesse};
            if (p.Grossesse == 0 ||
                hors(p.Grossesse, terme.Entier(VDXVAMM::GrossesseMin), max, regle_.grossesseMaxInclus))
                v.applicable = false;
            if (p.Grossesse == -1 && p.Sexe == 'F') v.applicable = true;
        }
        if (const std::string_view sexe = terme.Texte(VDXVAMM::SexeTerme); !sexe.empty()) {
            v = {v.applicable, true, niveauProfil};
            if (p.Sexe != sexe.front() && !(regle_.inconnuNeutre && p.Sexe == ' ')) v.applicable = false;
        }
        if (terme.Entier(VDXVAMM::AllaitementTerme) != 0 && p.Allaitement != 0)
            v = {v.applicable, true, niveauGrossesse};
        if (regle_.biologie && Biologie(terme)) v = {true, true, niveauProfil};
        return v;
    }

    // The patient's analyses against the term's: the result of the last
    // analysis that has a value stands.
    bool Biologie(const Fiche& terme) const {
        const int32_t type = terme.Entier(VDXVAMM::TypeAnalyse);
        const std::string_view texte = terme.Texte(VDXVAMM::TexteAnalyse);
        bool resultat = false;
        for (const Analyse& a : patient_.Analyses) {
            if (a.ValeurAnalyse.empty()) continue;
            if (a.TypeAnalyse == type) {
                resultat = (type == 1 && Chevauche(a.ValeurAnalyse, texte)) || (type == 2 && Contient(texte, a.ValeurAnalyse));
            } else if (type == 3) {
                const size_t barre = texte.rfind('/');
                resultat = barre != std::string_view::npos && Chevauche(a.ValeurAnalyse, texte.substr(0, barre)) &&
                           Contient(texte.substr(barre + 1), a.ValeurAnalyse);
            } else {
                resultat = false;
            }
        }
        return resultat;
    }

    // A pregnancy told by a pathology's label: a woman whose term is not
    // known is pregnant.
    void RegleGrossesse(std::string_view libelleMajuscules) {
        if (Contient(libelleMajuscules, messages::MotGrossesse) && patient_.Sexe == 'F' && patient_.Grossesse == 0)
            patient_.Grossesse = -1;
    }

    static std::string LibelleNormalise(const Vocabulaire& vocabulaire, std::string_view code) {
        return MajusculeSansAccent(LibelleVocabulaire(vocabulaire, code).value_or(std::string()));
    }

    // The codes linked with a term by a type of link, from the keys.
    std::vector<std::string> CodesLies(std::string_view terme, std::string_view type) {
        std::vector<std::string> codes;
        const std::string debut = DebutLiensTerme(terme, type);
        for (auto p = liens_.PremiereAvec(debut); p; p = liens_.SuivanteAvec(debut))
            codes.emplace_back(TexteDeCle(liens_.Cle(), debut.size()));
        return codes;
    }

    // The patient's term among the products' terms; a product gives one hit.
    void CorrespondTerme(std::string_view code, int32_t valeur) {
        const std::string cle = CleTerme(code);
        const std::string* dernier = nullptr;
        for (const Lien& lien : listeTermes_) {
            if (dernier && lien.CodeCIP == *dernier) continue;
            if (CleTerme(lien.CodeTerme) != cle) continue;
            Ajoute(lien.chiffre, valeur, lien, code);
            dernier = &lien.CodeCIP;
        }
    }

    // A patient's code among the terms' CIM10 codes; with `unParProduit` a
    // product gives one hit.
    void CorrespondCode(std::string_view code, int32_t valeur, bool unParProduit) {
        if (code.empty()) return;
        const std::string* dernier = nullptr;
        for (const Lien& lien : listeCodes_) {
            if (unParProduit && dernier && lien.CodeCIP == *dernier) continue;
            if (!Commencent(lien.CodeLie, code)) continue;
            Ajoute(lien.chiffre, valeur, lien, code);
            dernier = &lien.CodeCIP;
        }
    }

    void Ajoute(int32_t niveau, int32_t valeur, const Lien& lien, std::string_view codePatient) {
        if (NiveauFiltre(niveau) < niveauCI_) return;
        if (!dejaVues_.insert(CleTexte(lien.CodeCIP, LongueurCIP) + CleTerme(lien.CodeTerme)).second) return;
        alertes_.push_back({niveau, valeur, lien.CodeCIP, LibelleProduit(lien.CodeCIP), lien.CodeTerme,
                            LibelleTerme(lien.CodeTerme), std::string(codePatient)});
    }

    // The record of a term: the first key at or above its ten characters,
    // when it begins with them. Kept for the run.
    const std::string* FicheTerme(std::string_view code) {
        const std::string cle = CleTerme(code);
        auto [it, nouveau] = fichesTermes_.try_emplace(cle);
        if (nouveau) it->second = vdx::FicheTerme(code);
        return it->second ? &*it->second : nullptr;
    }

    std::string LibelleTerme(std::string_view code) {
        const std::string* fiche = FicheTerme(code);
        return fiche ? std::string(Fiche(*fiche).Texte(VDXVAMM::Libelle)) : messages::CodeInexistant(code);
    }

    std::string LibelleProduit(const std::string& cip) {
        auto [it, nouveau] = libellesProduits_.try_emplace(cip);
        if (nouveau) {
            if (EstMedDC(cip))
                it->second = LibelleProduitInterne(cip).value_or(messages::LibelleSansAccentInconnu);
            else if (const auto fiche = FicheDuCode(TableProduits(), cip))
                it->second = Fiche(*fiche).Texte(VDXPRO::Libelle);
            else
                it->second = messages::CodeInexistant(cip);
        }
        return it->second;
    }

    ProfilPatient& patient_;
    const RegleProfil& regle_;
    int32_t niveauCI_;
    TablesOuvertes tables_;
    Curseur termesProduit_;
    Curseur liens_;
    Curseur cisp_;
    std::vector<Lien> listeTermes_;
    std::vector<Lien> listeCodes_;
    std::vector<AlerteCI> alertes_;
    std::unordered_set<std::string> dejaVues_;
    std::unordered_map<std::string, std::optional<std::string>> fichesTermes_;
    std::unordered_map<std::string, std::string> libellesProduits_;
};

}  // namespace

std::optional<std::string> FicheTerme(std::string_view code) {
    Curseur termes(TableTermes());
    const std::string cle = CleTerme(code);
    const auto p = termes.PremiereAvec(cle);
    if (!p) return std::nullopt;
    return FicheA(TableTermes(), *p);
}

std::optional<std::string> TermeEquivalent(std::string_view code) {
    TablesOuvertes tables{&TableTermes(), &TableEquivalents(), &TableLiensTerme()};
    std::optional<std::string> terme;
    Curseur termes(TableTermes());
    for (const char* type : {TypeContreIndication, TypePrecaution})
        if (termes.Egale(CleTerme(code) + CleTexte(type, VDXVAMM::TypeAMM.capacite()))) terme = code;
    if (!terme) {
        Curseur equivalents(TableEquivalents());
        const std::string debut = CleTerme(code);
        if (equivalents.PremiereAvec(debut)) terme = std::string(TexteDeCle(equivalents.Cle(), debut.size()));
    }
    if (!terme) {
        Curseur parCode(TableLiensTerme(), 1);
        const std::string debut =
            CleTexte(code, VDXVAMMC::LongueurCodeLieCle, ' ') + CleTexte(LienCIM10, VDXVAMMC::TypeLien.capacite());
        if (parCode.PremiereAvec(debut)) terme = std::string(TexteDeCle(parCode.Cle(), debut.size()));
    }
    tables.Ferme();
    return terme;
}

char SexeNormalise(const char* sexe) { return sexe && (*sexe == 'M' || *sexe == 'F') ? *sexe : ' '; }

int32_t NiveauFiltre(int32_t niveau) {
    struct Filtre {
        int32_t niveau;
        int32_t filtre;
    };
    // Levels whose filter level is not the level itself.
    static constexpr Filtre Filtres[] = {{0, 2}, {3, 0}, {9, 2}, {10, 1}, {20, 2}, {30, 0}, {39, 0}};
    for (const Filtre& f : Filtres)
        if (f.niveau == niveau) return f.filtre;
    return niveau;
}

bool Chevauche(std::string_view patient, std::string_view terme) {
    const auto ab = Intervalle(patient);
    const auto cd = Intervalle(terme);
    if (!ab || !cd) return false;
    return std::max(ab->first * 0.95, cd->first) <= std::min(ab->second * 1.05, cd->second);
}

std::vector<AlerteCI> ContreIndicationsPatient(const Contexte& contexte, ProfilPatient patient,
                                               const std::vector<std::string>& produits, const RegleProfil& regle) {
    const DansContexte dans(contexte);
    const size_t n = patient.CodesPatient.size();
    if (patient.TypesPatient.size() != n || patient.ValeursPatient.size() != n) throw Echec{Argument1};
    Controle controle(patient, regle, contexte.NiveauCI);
    controle.ConstruitListes(produits);
    controle.AppariePathologies();
    controle.ApparieProfil();
    return controle.Alertes();
}

}  // namespace vdx
