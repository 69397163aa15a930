#include "session/resultat.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <memory>

#include "platform/hote.h"
#include "session/cadre.h"
#include "session/codes.h"
#include "session/session.h"
#include "session/texte.h"

namespace vdx {
namespace {

// Name of the output file of mode 3, in the base directory.
constexpr char FichierSortie[] = "Vdxout.txt";

uint32_t TailleElement(const FormeHote& forme) { return hote::TailleFiche(static_cast<uint32_t>(forme.size())); }

// Direct access to the records of an array of a shape.
class Acces : public hote::Acces {
public:
    using hote::Acces::Acces;
    void* Element(uint32_t i, const FormeHote& forme) const { return hote::Acces::Element(TailleElement(forme), i); }
};

std::string Decimal(int32_t n) {
    char texte[16];
    auto [fin, erreur] = std::to_chars(texte, texte + sizeof texte, n);
    return std::string(texte, fin);
}

}  // namespace

void LivreTexte(std::string_view texte) {
    Session& s = session();
    if (s.ModeSortie == ModeFichier) {
        const std::string chemin = s.BaseFichiers + FichierSortie;
        std::unique_ptr<FILE, int (*)(FILE*)> f(std::fopen(chemin.c_str(), "wb"), &std::fclose);
        if (!f) throw FauteInterne("Vdxout.txt");
        if (!texte.empty() && std::fwrite(texte.data(), 1, texte.size(), f.get()) != texte.size())
            throw FauteInterne("Vdxout.txt");
    } else if (s.ModeSortie == ModeMemoire) {
        s.ChaineMemoire.emplace(texte);
    } else {
        hote::PoseTextePartage(texte);
    }
}

std::string LitTexte() {
    const Session& s = session();
    if (s.ModeSortie == ModeMemoire) return s.ChaineMemoire.value_or(std::string());
    return hote::PrendTextePartage();
}

void RangeChaine(BSTR* destination, std::optional<std::string_view> texte) {
    Requis(destination);
    const bool ok = texte && session().ChainesUnicode ? hote::RangeLarge(destination, *texte)
                                                      : hote::RangeOctets(destination, texte.value_or(""));
    if (!ok) throw std::bad_alloc();
}

std::string ChaineVersTexte(BSTR source, size_t taille) {
    std::string texte = hote::VersTexte(source);
    if (taille > 0 && texte.size() > taille - 1) texte.resize(taille - 1);
    return texte;
}

void LivreValeur(BSTR* destination, std::string_view texte) {
    if (session().ModeSortie != ModeTableau) {
        LivreTexte(texte);
        return;
    }
    if (!hote::RangeOctets(Requis(destination), texte)) throw std::bad_alloc();
}

int32_t VideTableau(SAFEARRAY* tableau, const FormeHote& forme) {
    {
        Acces acces(tableau);
        if (!acces) return OperationTableau;
        for (uint32_t i = 0, n = hote::NombreElements(tableau); i < n; ++i) {
            void* e = acces.Element(i, forme);
            for (uint32_t c = 0; c < forme.size(); ++c) {
                if (forme[c] == TypeChamp::Texte)
                    hote::Libere(hote::Chaine(e, c));
                else
                    hote::PoseEntier(e, c, 0);
            }
        }
    }
    if (!hote::Redimensionne(tableau, 0)) hote::ForceVide(tableau);
    return Succes;
}

void DetruitTableau(SAFEARRAY*& tableau, const FormeHote& forme) {
    if (!tableau) return;
    VideTableau(tableau, forme);
    if (session().ModeSortie != ModeTableau) {
        hote::Detruit(tableau);
        tableau = nullptr;
    }
}

Resultat::Resultat(SAFEARRAY** hote, FormeHote forme, int32_t codeAbsent) : forme_(std::move(forme)) {
    if (session().ModeSortie == ModeTableau) {
        if (!hote || !*hote) throw Echec{codeAbsent};
        SAFEARRAY* t = *hote;
        if (t->cDims != 1 || hote::TailleElement(t) != TailleElement(forme_)) throw Echec{codeAbsent};
        const int32_t vide = VideTableau(t, forme_);
        if (vide < 0) throw Echec{vide};
        tableau_ = t;
    } else {
        tableau_ = hote::CreeTableau(TailleElement(forme_));
        if (!tableau_) throw Echec{Memoire};
        prive_ = true;
    }
}

Resultat::~Resultat() {
    // A private array goes with the call; a host array not delivered is
    // left empty rather than half-filled.
    if (!tableau_) return;
    VideTableau(tableau_, forme_);
    if (prive_) hote::Detruit(tableau_);
}

int32_t Resultat::AjouteLigne(std::initializer_list<Valeur> champs) {
    return Ajoute(champs.begin(), champs.end(), true);
}
int32_t Resultat::AjouteLigne(const std::vector<Valeur>& champs) { return Ajoute(champs.begin(), champs.end(), true); }
int32_t Resultat::AjouteLigneSansCle(const std::vector<Valeur>& champs) {
    return Ajoute(champs.begin(), champs.end(), false);
}

template <class It>
int32_t Resultat::Ajoute(It debut, It fin, bool cleUnique) {
    if (static_cast<size_t>(fin - debut) != forme_.size()) throw FauteInterne("ligne hors forme");
    if (cleUnique) {
        const Valeur& cle = *debut;
        const bool nouvelle = std::holds_alternative<int32_t>(cle)
                                  ? clesEntieres_.insert(std::get<int32_t>(cle)).second
                                  : clesTexte_.insert(std::get<std::string>(cle)).second;
        if (!nouvelle) return nombre_;
    }
    if (!hote::Redimensionne(tableau_, static_cast<uint32_t>(nombre_) + 1)) throw Echec{OperationTableau};
    Acces acces(tableau_);
    if (!acces) throw Echec{OperationTableau};
    ++nombre_;
    void* e = acces.Element(static_cast<uint32_t>(nombre_ - 1), forme_);
    uint32_t c = 0;
    for (It v = debut; v != fin; ++v, ++c) {
        if (forme_[c] == TypeChamp::Texte) {
            // Rows under construction always hold 8-bit strings.
            const std::string* texte = std::get_if<std::string>(&*v);
            if (!hote::RangeOctets(hote::Chaine(e, c), texte ? std::string_view(*texte) : std::string_view()))
                throw std::bad_alloc();
        } else {
            const int32_t* n = std::get_if<int32_t>(&*v);
            hote::PoseEntier(e, c, n ? *n : 0);
        }
    }
    return nombre_;
}

int32_t Resultat::Livre() {
    const Session& s = session();
    const int32_t n = nombre_;
    if (s.ModeSortie == ModeTableau) {
        if (s.ChainesUnicode) {
            Acces acces(tableau_);
            if (!acces) throw Echec{OperationTableau};
            for (int32_t i = 0; i < n; ++i) {
                void* e = acces.Element(static_cast<uint32_t>(i), forme_);
                for (uint32_t c = 0; c < forme_.size(); ++c) {
                    if (forme_[c] != TypeChamp::Texte) continue;
                    const std::string octets(hote::Octets(*hote::Chaine(e, c)));
                    if (!hote::RangeLarge(hote::Chaine(e, c), octets)) throw std::bad_alloc();
                }
            }
        }
        tableau_ = nullptr;  // delivered: the host's from now on
        return n;
    }
    std::string plat;
    {
        Acces acces(tableau_);
        if (!acces) throw Echec{OperationTableau};
        for (int32_t i = 0; i < n; ++i) {
            if (!plat.empty()) AjouteTexte(FinDeLigne, plat);
            void* e = acces.Element(static_cast<uint32_t>(i), forme_);
            for (uint32_t c = 0; c < forme_.size(); ++c) {
                if (forme_[c] == TypeChamp::Texte)
                    AjouteChamp(hote::Octets(*hote::Chaine(e, c)), plat);
                else
                    AjouteChamp(Decimal(hote::Entier(e, c)), plat);
            }
        }
    }
    LivreTexte(plat);
    return n;
}

}  // namespace vdx
