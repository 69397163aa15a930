// What an import writes of the side documents: for each speciality the
// transparency commission gave opinions on, one HTML document of them
// (VDXYLBIN), its link (VDXYLIEN) and the link of each presentation to it
// (VDXYLCIP, a transparency sheet), and each opinion's level (VDXYTRF); and the history of the important
// changes of each presentation (VDXPHIMP): its authorisation, its
// declarations of marketing, the alert status of its speciality as of the
// extract's date.
#include <algorithm>
#include <cstdio>
#include <map>
#include <tuple>

#include "documents/fiche_produit.h"
#include "store/layouts.h"
#include "store/sources.h"
#include "tools/vdx/import_base.h"

namespace vdx::import {
namespace {

constexpr char TitreTransparence[] = "Avis de la commission de la transparence";

// JJ/MM/AAAA as AAAAMMJJ; empty for another text.
std::string DateCle(const std::string& date) {
    if (date.size() != 10 || date[2] != '/' || date[5] != '/') return {};
    return date.substr(6, 4) + date.substr(3, 2) + date.substr(0, 2);
}

// A text of the published files inside an HTML page.
std::string Html(std::string_view texte) {
    std::string h;
    for (char c : texte) {
        if (c == '&') h += "&amp;";
        else if (c == '<') h += "&lt;";
        else if (c == '>') h += "&gt;";
        else h += c;
    }
    return h;
}

// The opinions of one kind as a table, newest first.
std::string TableAvis(std::vector<const AvisHAS*> avis, const char* titre) {
    if (avis.empty()) return {};
    std::ranges::stable_sort(avis, [](const AvisHAS* a, const AvisHAS* b) { return a->date > b->date; });
    std::string t = std::string("<p><b>") + titre + "</b></p>\r\n<table border=\"1\" cellspacing=\"0\" cellpadding=\"3\">\r\n"
                    "<tr><th>Date</th><th>Motif</th><th>Niveau</th><th>Avis</th></tr>\r\n";
    for (const AvisHAS* a : avis)
        t += "<tr><td>" + DateChiffresJourMoisAn(a->date) + "</td><td>" + Html(a->motif) + "</td><td>" + Html(a->niveau) + "</td><td>" +
             Html(a->texte) + "</td></tr>\r\n";
    return t + "</table>\r\n";
}

// The document of a speciality's opinions, SMR then ASMR, in code page 1252.
std::string DocumentTransparence(const std::string& denomination, const std::vector<const AvisHAS*>& avis) {
    std::vector<const AvisHAS*> smr, asmr;
    for (const AvisHAS* a : avis) (a->amelioration ? asmr : smr).push_back(a);
    return std::string("<HTML>\r\n<HEAD>\r\n<TITLE>") + TitreTransparence + "</TITLE>\r\n</HEAD>\r\n<BODY>\r\n<p><b>" +
           Html(denomination) + "</b></p>\r\n" + TableAvis(smr, "Service m\xE9" "dical rendu (SMR)") +
           TableAvis(asmr, "Am\xE9lioration du service m\xE9" "dical rendu (ASMR)") +
           "<p>Source : Haute Autorit\xE9 de sant\xE9, base de donn\xE9" "es publique des m\xE9" "dicaments</p>\r\n"
           "</BODY>\r\n</HTML>\r\n";
}

// One row of VDXYTRF an opinion: the levels it gives for several
// indications joined by ", " in the file's order, each once.
void EcritNiveaux(const std::string& cis, const std::vector<const AvisHAS*>& avis, Sortie& sortie) {
    std::map<std::tuple<bool, std::string, std::string>, std::pair<std::vector<std::string>, std::string>> parAvis;
    for (const AvisHAS* a : avis) {
        auto& [niveaux, motif] = parAvis[{a->amelioration, a->date, a->dossier}];
        if (std::ranges::find(niveaux, a->niveau) == niveaux.end()) niveaux.push_back(a->niveau);
        if (motif.empty()) motif = a->motif;
    }
    for (const auto& [cle, niveauxEtMotif] : parAvis) {
        const auto& [amelioration, date, dossier] = cle;
        std::string niveau;
        for (const std::string& n : niveauxEtMotif.first) niveau += (niveau.empty() ? "" : ", ") + n;
        sortie.Ajoute("VDXYTRF", {{"CodeCIS", cis},
                                  {"Avis", amelioration ? VDXYTRF::AvisASMR : VDXYTRF::AvisSMR},
                                  {"Date", date},
                                  {"Dossier", dossier},
                                  {"Niveau", niveau},
                                  {"Motif", niveauxEtMotif.second}});
    }
}

using ParCIS = std::map<std::string, const Specialite*>;

void EcritTransparence(const Bdpm& bdpm, const Selection& selection, const ParCIS& specialites, Sortie& sortie) {
    std::map<std::string, std::vector<const AvisHAS*>> parSpecialite;
    for (const AvisHAS& a : bdpm.avis)
        if (selection.specialites.count(a.cis)) parSpecialite[a.cis].push_back(&a);
    std::map<std::string, std::string> numeros;  // by CIS
    for (const auto& [cis, avis] : parSpecialite) {
        char numero[8];
        std::snprintf(numero, sizeof numero, "%05zu", numeros.size() + 1);
        numeros[cis] = numero;
        const std::string nom = "transparence-" + cis + ".htm";
        const auto specialite = specialites.find(cis);
        const std::string denomination = specialite != specialites.end() ? specialite->second->denomination : cis;
        sortie.Ajoute("VDXYLBIN", {{"NomDocument", nom}, {"Document", VersHexa(DocumentTransparence(denomination, avis))}});
        EcritNiveaux(cis, avis, sortie);
        const auto recent = std::ranges::max_element(avis, {}, &AvisHAS::date);
        sortie.Ajoute("VDXYLIEN", {{"NumeroLien", numero},
                                   {"Libelle", TitreTransparence},
                                   {"NomDocument", nom},
                                   {"DateLien", DateChiffresJourMoisAn((*recent)->date)}});
    }
    for (const Presentation& p : bdpm.presentations)
        if (const auto n = numeros.find(p.cis); n != numeros.end())
            sortie.Ajoute("VDXYLCIP", {{"CodeCIP", p.cip7},
                                       {"NumeroLien", n->second},
                                       {"TypeLien", std::to_string(VDXYLCIP::LienTransparence)}});
}

// The changes of a day joined, one a line: a key holds one day.
void EcritHistorique(const Bdpm& bdpm, const Selection& selection, const ParCIS& specialites, Sortie& sortie) {
    // The alert status holds as of the extract.
    const std::string dateExtrait = DateExtrait(bdpm);
    std::map<std::pair<std::string, std::string>, std::vector<std::string>> changements;  // by code and AAAAMMJJ
    for (const Presentation& p : bdpm.presentations) {
        if (!selection.specialites.count(p.cis)) continue;
        const auto add = [&](const std::string& date, const std::string& texte) {
            if (!date.empty() && !texte.empty()) changements[{p.cip7, date}].push_back(texte);
        };
        if (const auto s = specialites.find(p.cis); s != specialites.end()) {
            add(DateCle(s->second->dateAMM), "Autorisation de mise sur le march\xE9");
            add(dateExtrait, s->second->alerte);
        }
        add(DateCle(p.date), p.etat);
    }
    for (const auto& [cle, textes] : changements) {
        std::string texte;
        for (const std::string& t : textes) texte += (texte.empty() ? "" : "\r\n") + t;
        sortie.Ajoute("VDXPHIMP", {{"CodeCIP", cle.first}, {"DateModification", cle.second}, {"Texte", texte}});
    }
}

}  // namespace

void EcritDocuments(const Bdpm& bdpm, const Selection& selection, Sortie& sortie) {
    ParCIS specialites;
    for (const Specialite& s : bdpm.specialites) specialites[s.cis] = &s;
    EcritTransparence(bdpm, selection, specialites, sortie);
    EcritHistorique(bdpm, selection, specialites, sortie);
}

}  // namespace vdx::import
