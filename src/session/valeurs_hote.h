// Host values as a host program holds them, each freed when it goes: for
// the vdx program, the tests and the benchmarks, which call the exports as
// hosts do. A record's strings are freed by its shape, the one its rows
// are declared with.
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/hote.h"
#include "session/lignes.h"
#include "session/resultat.h"
#include "vdx32/oleauto.h"

namespace vdx {

// A host string the library fills.
class ChaineHote {
public:
    ChaineHote() = default;
    ~ChaineHote() { hote::Libere(&b_); }
    ChaineHote(const ChaineHote&) = delete;
    ChaineHote& operator=(const ChaineHote&) = delete;

    BSTR* Adresse() { return &b_; }
    BSTR Valeur() const { return b_; }
    // Its bytes (an 8-bit session's text).
    std::string_view Octets() const { return hote::Octets(b_); }

private:
    BSTR b_ = nullptr;
};

// A C record of the shape `gabarit`: a slot a field.
template <class Fiche>
void VerifieGabarit(const Gabarit& gabarit) {
    if (sizeof(Fiche) != hote::TailleFiche(static_cast<uint32_t>(gabarit.size())))
        throw std::logic_error("record and shape of different sizes");
}

// Frees the strings of one record of a shape.
inline void LibereFiche(void* fiche, const Gabarit& gabarit) {
    for (uint32_t c = 0; c < gabarit.size(); ++c)
        if (gabarit[c] == TypeChamp::Texte) hote::Libere(hote::Chaine(fiche, c));
}

// A host array of records of the C struct Fiche, of the shape `gabarit`,
// made empty as a host makes it.
template <class Fiche>
class TableauHote {
public:
    explicit TableauHote(Gabarit gabarit) : gabarit_(std::move(gabarit)) {
        VerifieGabarit<Fiche>(gabarit_);
        t_ = hote::CreeTableau(sizeof(Fiche));
        if (!t_) throw std::bad_alloc();
    }
    ~TableauHote() {
        if (!t_) return;
        VideTableau(t_, gabarit_);
        hote::Detruit(t_);
    }
    TableauHote(const TableauHote&) = delete;
    TableauHote& operator=(const TableauHote&) = delete;

    SAFEARRAY** Adresse() { return &t_; }
    std::span<Fiche> Lignes() { return {static_cast<Fiche*>(t_->pvData), hote::NombreElements(t_)}; }

private:
    Gabarit gabarit_;
    SAFEARRAY* t_ = nullptr;
};

// A host record of the C struct Fiche, of the shape `gabarit`, zeroed.
template <class Fiche>
class FicheHote {
public:
    explicit FicheHote(Gabarit gabarit) : gabarit_(std::move(gabarit)) { VerifieGabarit<Fiche>(gabarit_); }
    ~FicheHote() { LibereFiche(&f_, gabarit_); }
    FicheHote(const FicheHote&) = delete;
    FicheHote& operator=(const FicheHote&) = delete;

    Fiche* operator->() { return &f_; }
    Fiche* Adresse() { return &f_; }

private:
    Gabarit gabarit_;
    Fiche f_{};
};

// An input array: strings of 8-bit bytes, or 32-bit integers.
class EntreeHote {
public:
    static EntreeHote Chaines(const std::vector<std::string>& textes) { return EntreeHote(hote::TableauDeChaines(textes)); }
    static EntreeHote Entiers(const std::vector<int32_t>& valeurs) {
        SAFEARRAY* t = SafeArrayCreateVector(VT_I4, 0, static_cast<ULONG>(valeurs.size()));
        for (LONG i = 0; i < static_cast<LONG>(valeurs.size()); ++i) {
            int32_t v = valeurs[static_cast<size_t>(i)];
            SafeArrayPutElement(t, &i, &v);
        }
        return EntreeHote(t);
    }
    EntreeHote(EntreeHote&& autre) noexcept : t_(autre.t_) { autre.t_ = nullptr; }
    EntreeHote& operator=(EntreeHote&&) = delete;
    ~EntreeHote() { hote::Detruit(t_); }

    SAFEARRAY** Adresse() { return &t_; }

private:
    explicit EntreeHote(SAFEARRAY* t) : t_(t) {
        if (!t_) throw std::bad_alloc();
    }
    SAFEARRAY* t_;
};

}  // namespace vdx
