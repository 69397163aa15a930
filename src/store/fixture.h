// A base for tests, built in a temporary directory from records given by
// field name, through the layouts and key builders of the real base; the
// directory is removed with the object. A test states its data in a few
// lines:
//
//   BaseDeTest base;
//   base.Ajoute("VDXYALD", {{"Code", "1"}, {"Libelle", "Accident vasculaire cérébral invalidant"}});
//   Connection_Vdx(base.Repertoire().c_str(), 0, 0);
//
// Texts are given in UTF-8, as test sources are written, and stored in code
// page 1252; numbers as numbers or as text. A field too long, an unknown
// name or a duplicate first key throws ErreurSource. The base is built at
// the first Repertoire() after the last Ajoute, and built again, in the same
// place, after further records.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "store/catalogue.h"
#include "store/sources.h"

namespace vdx::essai {

// A new directory for a test's throwaway files, `motif` ending in XXXXXX,
// in systeme::DossierEphemere().
std::string DossierTemporaire(const char* motif);
// Removes a test's directory, errors ignored, first closing the files this
// process keeps open that no number is bound to: Windows removes no file
// held open.
void SupprimeDossier(const std::string& dossier);

class BaseDeTest {
public:
    // A value of a field: a text, or a number that is written as the
    // sources write it.
    struct Valeur {
        std::string texte;
        Valeur(const char* t) : texte(t) {}
        Valeur(std::string t) : texte(std::move(t)) {}
        Valeur(std::string_view t) : texte(t) {}
        Valeur(int32_t n);
        Valeur(double x);
    };
    using Champs = std::initializer_list<std::pair<std::string_view, Valeur>>;

    // The base of a place: the drug base, or a doctor's private base.
    explicit BaseDeTest(Emplacement emplacement = Emplacement::Base);
    ~BaseDeTest();
    BaseDeTest(const BaseDeTest&) = delete;
    BaseDeTest& operator=(const BaseDeTest&) = delete;

    BaseDeTest& Ajoute(std::string_view table, Champs champs);
    // With keys given as they stand, by key number from 0 (0 the index),
    // in place of those the layout builds: a key not padded, a key that
    // leads to another record...
    BaseDeTest& AjouteAvecCles(std::string_view table, Champs champs,
                               std::initializer_list<std::pair<size_t, std::string>> cles);

    // The directory of the base, without a final separator.
    const std::string& Repertoire();
    // What the last build left out of further keys.
    const std::vector<std::string>& Avertissements() const { return avertissements_; }

private:
    Source& SourceDe(std::string_view table);
    Redaction Redige(std::string_view table, Champs champs);

    Emplacement emplacement_;
    std::string dossier_;  // holds the base, so that the base can be replaced whole
    std::string repertoire_;
    std::vector<Source> sources_;
    std::vector<std::string> avertissements_;
    bool construite_ = false;
};

}  // namespace vdx::essai
