#include "tools/vdx/import_thesaurus.h"

#include "tools/vdx/import_texte.h"

namespace vdx::import {

Thesaurus LitThesaurus(const std::filesystem::path& dossier, Journal& journal) {
    Thesaurus t;
    // substances.txt has no header line, the two others have one.
    for (auto& l : LitTableau(dossier / "substances.txt", 1, "", journal)) t.substances.push_back(Plie(l.champs[0]));
    for (auto& l : LitTableau(dossier / "substance-classes.tsv", 2, "molecule", journal)) {
        Appartenance a{Plie(l.champs[0]), Plie(l.champs[1])};
        if (a.substance.empty() || a.classe.empty()) {
            journal.Rejette("substance-classes.tsv", l.numero, "substance or class empty");
            continue;
        }
        t.appartenances.push_back(std::move(a));
    }
    // The conduct columns of a couple without them may be left out.
    for (auto& l : LitTableau(dossier / "couples.tsv", 5, "protagoniste1", journal, 4)) {
        auto& c = l.champs;
        CoupleThesaurus couple{Plie(c[0]), Plie(c[1]), Nettoie(c[2]), Nettoie(c[3]), Nettoie(c[4]),
                               {Nettoie(c[5]), Nettoie(c[6]), Nettoie(c[7]), Nettoie(c[8])}};
        if (couple.protagoniste1.empty() || couple.protagoniste2.empty()) {
            journal.Rejette("couples.tsv", l.numero, "a protagonist is empty");
            continue;
        }
        t.couples.push_back(std::move(couple));
    }
    return t;
}

}  // namespace vdx::import
