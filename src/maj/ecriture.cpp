#include "maj/ecriture.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <ostream>
#include <set>

#include "maj/gestionnaires.h"
#include "maj/marqueurs.h"
#include "maj/rangees.h"
#include "store/cles.h"

namespace vdx::maj {

namespace {

// The tables whose records the rows of another table carry.
constexpr const char* TablesPortees[] = {"VDXLABP", "VDXVPRO", "VDXIDFOP", "VDXFAMP", "VDXPTEXT", "VDXVEXC"};

std::string_view AvantNul(std::string_view texte) { return texte.substr(0, texte.find('\0')); }

class Ecrivain {
public:
    Ecrivain(const std::vector<Source>& sources, std::ostream& sortie) : sortie_(sortie) {
        for (const Source& s : sources) parTable_[s.disposition->table->nom] = &s;
    }

    const std::vector<Enregistrement>& Fiches(const char* table) const {
        static const std::vector<Enregistrement> aucune;
        const auto s = parTable_.find(table);
        return s == parTable_.end() ? aucune : s->second->fiches;
    }

    void Rangees(const Rangee& rangee) {
        const std::vector<ChampRangee> champs = ChampsDe(rangee);
        switch (rangee.speciale) {
            case Speciale::Complement: return Complements(rangee, champs);
            case Speciale::Posologie: return Posologies(rangee, champs);
            case Speciale::Substances: return Substances(rangee, champs);
            default: break;
        }
        for (const Enregistrement* e : DansLOrdre(rangee)) Ligne(rangee, champs, *e, {});
    }

private:
    // The records of a row's table in the order of its sources, those of one
    // parent brought together for the parent rule.
    std::vector<const Enregistrement*> DansLOrdre(const Rangee& rangee) const {
        const Disposition& d = DispositionDe(*TableNommee(rangee.table));
        std::vector<const Enregistrement*> fiches;
        for (const Enregistrement& e : Fiches(rangee.table)) fiches.push_back(&e);
        if (rangee.regle == Regle::Parent)
            std::ranges::stable_sort(fiches, {}, [&](const Enregistrement* e) { return ParentDe(d, rangee.parent, e->fiche).code; });
        return fiches;
    }

    // A row: its marker, each field and "@", CR LF.
    void Ligne(const Rangee& rangee, const std::vector<ChampRangee>& champs, const Enregistrement& e,
               const std::vector<std::string>& aparte) {
        const Disposition& d = DispositionDe(*TableNommee(rangee.table));
        const Fiche f(e.fiche);
        const std::vector<std::string_view> parties = PartiesDe(d, e.fiche);
        size_t suivant = 0;
        sortie_ << rangee.marqueur;
        for (const ChampRangee& c : champs) {
            std::string valeur;
            switch (c.genre) {
                case ChampRangee::Texte: valeur = f.Texte(c.texte); break;
                case ChampRangee::Entier: valeur = std::to_string(f.Entier({"", c.decalage})); break;
                case ChampRangee::Reel: valeur = TexteReel(f.Reel({"", c.decalage})); break;
                case ChampRangee::CleExterne: valeur = AvantNul(e.cle); break;
                case ChampRangee::Partie: valeur = Chapitre(d, parties.at(c.decalage)); break;
                case ChampRangee::Aparte: valeur = suivant < aparte.size() ? aparte[suivant++] : ""; break;
                case ChampRangee::Abandonne: break;
            }
            Verifie(e, valeur);
            sortie_ << valeur << '@';
        }
        sortie_ << "\r\n";
    }

    // The line ends of a chapter's text as "##".
    static std::string Chapitre(const Disposition& d, std::string_view texte) {
        std::string resultat(texte);
        if (d.corps != Corps::Chapitres) return resultat;
        for (size_t i = 0; (i = resultat.find("\r\n", i)) != std::string::npos; i += 2) resultat.replace(i, 2, "##");
        return resultat;
    }

    static void Verifie(const Enregistrement& e, std::string_view valeur) {
        if (valeur.find('@') != std::string_view::npos)
            throw ErreurSource(e.origine + ": un \"@\" ne peut pas passer dans un fichier de mise a jour");
        if (!valeur.empty() && (valeur[0] == '|' || valeur[0] == '\r' || valeur[0] == '\n'))
            throw ErreurSource(e.origine + ": un champ de mise a jour ne commence ni par \"|\" ni par une fin de ligne");
    }

    // The further data of each product with its families, three a row.
    void Complements(const Rangee& rangee, const std::vector<ChampRangee>& champs) {
        std::map<std::string, std::vector<std::string>, std::less<>> familles;
        for (const Enregistrement& e : Fiches("VDXFAMP"))
            familles[std::string(Fiche(e.fiche).Texte(VDXFAMP::CodeCIP))].push_back(
                std::string(Fiche(e.fiche).Texte(VDXFAMP::CodeFamille)));
        std::vector<Enregistrement> fiches = Fiches("VDXPROA");
        std::set<std::string, std::less<>> avecDonnees;
        for (const Enregistrement& e : fiches) avecDonnees.emplace(Fiche(e.fiche).Texte(VDXPROA::CodeCIP));
        // Families of a product without further data make a record of its code.
        for (const auto& [code, liste] : familles) {
            if (avecDonnees.count(code)) continue;
            FicheEcrite f(VDXPROA::Longueur);
            PoseTexte(f.Octets(), VDXPROA::CodeCIP, code);
            fiches.push_back({std::move(f.Octets()), {}, {}, "VDXFAMP " + code});
        }
        for (const Enregistrement& e : fiches) {
            const auto liste = familles.find(Fiche(e.fiche).Texte(VDXPROA::CodeCIP));
            const std::vector<std::string> aucune;
            const std::vector<std::string>& siennes = liste == familles.end() ? aucune : liste->second;
            size_t n = 0;
            do {
                std::vector<std::string> trois;
                for (; n < siennes.size() && trois.size() < 3; ++n) trois.push_back(siennes[n]);
                Ligne(rangee, champs, e, trois);
            } while (n < siennes.size());
        }
    }

    // Each posology of a product with its long text.
    void Posologies(const Rangee& rangee, const std::vector<ChampRangee>& champs) {
        std::map<std::string, std::string, std::less<>> textes;
        const Disposition& dt = DispositionDe(*TableNommee("VDXPTEXT"));
        for (const Enregistrement& e : Fiches("VDXPTEXT"))
            textes[std::string(AvantNul(e.cle))] = std::string(PartiesDe(dt, e.fiche).at(0));
        const Disposition& d = DispositionDe(*TableNommee(rangee.table));
        for (const Enregistrement* e : DansLOrdre(rangee)) {
            const auto texte = textes.find(AvantNul(*CleDe(d, 0, e->fiche)));
            Ligne(rangee, champs, *e, {texte == textes.end() ? "" : texte->second});
        }
    }

    // One row a substance of either list, with its texts of both.
    void Substances(const Rangee& rangee, const std::vector<ChampRangee>& champs) {
        std::map<int32_t, std::vector<std::string>> parCode;
        const auto ligne = [&](int32_t code) -> std::vector<std::string>& {
            std::vector<std::string>& t = parCode[code];
            if (t.empty()) t = {std::to_string(code), "", "", "", "", "", "", "", ""};
            return t;
        };
        for (const Enregistrement& e : Fiches("VDXVPA")) {
            const Fiche f(e.fiche);
            std::vector<std::string>& t = ligne(f.Entier(VDXVPA::CodeSubstance));
            t[1] = f.Texte(VDXVPA::Libelle);
            t[2] = std::to_string(f.Entier(VDXVPA::Interactions));
        }
        for (const Enregistrement& e : Fiches("VDXVEXC")) {
            const Fiche f(e.fiche);
            std::vector<std::string>& t = ligne(f.Entier(VDXVEXC::CodeSubstance));
            t[3] = f.Texte(VDXVEXC::Libelle);
            t[4] = f.Texte(VDXVEXC::LibelleEEN);
        }
        const Enregistrement vide{std::string(DispositionDe(*TableNommee(rangee.table)).longueur, '\0'), {}, {}, "VDXVPA"};
        for (const auto& [code, textes] : parCode) Ligne(rangee, champs, vide, textes);
    }

    std::ostream& sortie_;
    std::map<std::string, const Source*, std::less<>> parTable_;
};

}  // namespace

std::string TexteReel(float valeur) {
    char texte[64];
    const auto fin = std::to_chars(texte, texte + sizeof texte, valeur, std::chars_format::fixed).ptr;
    return std::string(texte, fin);
}

std::vector<std::string> EcritMaj(const std::vector<Source>& sources, std::ostream& sortie, std::string_view date) {
    Ecrivain ecrivain(sources, sortie);
    sortie << MarqueurDebut << date << "@export@\r\n";
    for (const Marqueur& m : Marqueurs) ecrivain.Rangees(*RangeeDuMarqueur(m.texte));
    sortie << MarqueurFin << "\r\n";
    std::set<std::string, std::less<>> portees(std::begin(TablesPortees), std::end(TablesPortees));
    for (const Rangee& r : Rangees)
        if (r.regle != Regle::Aucune) portees.emplace(r.table);
    std::vector<std::string> absentes;
    for (const Source& s : sources)
        if (!s.fiches.empty() && !portees.count(s.disposition->table->nom)) absentes.push_back(s.disposition->table->nom);
    return absentes;
}

}  // namespace vdx::maj
