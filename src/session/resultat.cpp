#include "session/resultat.h"

#include <bit>
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

void LivreValeur(BSTR* destination, std::string_view texte, int32_t codeAbsent) {
    if (session().ModeSortie != ModeTableau) {
        LivreTexte(texte);
        return;
    }
    if (!hote::RangeOctets(Requis(destination, codeAbsent), texte)) throw std::bad_alloc();
}

int32_t VideTableau(SAFEARRAY* tableau, const FormeHote& forme) {
    // A locked array can't be emptied: it is left as it is, whole.
    if (hote::Verrouille(tableau)) return OperationTableau;
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
    if (session().ModeSortie != ModeTableau) return;
    if (!hote || !*hote) throw Echec{codeAbsent};
    SAFEARRAY* t = *hote;
    if (t->cDims != 1 || hote::TailleElement(t) != TailleElement(forme_)) throw Echec{codeAbsent};
    const int32_t vide = VideTableau(t, forme_);
    if (vide < 0) throw Echec{vide};
    hote_ = t;
}

Resultat::~Resultat() {
    // A host array not delivered is left empty rather than half-filled.
    if (hote_) VideTableau(hote_, forme_);
}

int32_t Resultat::AjouteLigne(std::initializer_list<Valeur> champs) {
    Ajoute(std::vector<Valeur>(champs), true);
    return Nombre();
}
int32_t Resultat::AjouteLigne(const std::vector<Valeur>& champs) {
    Ajoute(champs, true);
    return Nombre();
}
int32_t Resultat::AjouteLigneSansCle(const std::vector<Valeur>& champs) {
    Ajoute(champs, false);
    return Nombre();
}

void Resultat::Ajoute(std::vector<Valeur> champs, bool cleUnique) {
    if (champs.size() != forme_.size()) throw FauteInterne("ligne hors forme");
    for (size_t c = 0; c < champs.size(); ++c)
        if (champs[c].index() != static_cast<size_t>(forme_[c])) throw FauteInterne("champ hors forme");
    if (cleUnique) {
        const Valeur& cle = champs.front();
        const bool nouvelle = std::holds_alternative<int32_t>(cle) ? clesEntieres_.insert(std::get<int32_t>(cle)).second
                                                                   : clesTexte_.insert(std::get<std::string>(cle)).second;
        if (!nouvelle) return;
    }
    lignes_.push_back(std::move(champs));
}

void Resultat::LivreAuTableau() {
    if (!hote::Redimensionne(hote_, static_cast<uint32_t>(lignes_.size()))) throw Echec{OperationTableau};
    Acces acces(hote_);
    if (!acces) throw Echec{OperationTableau};
    const bool large = session().ChainesUnicode != 0;
    for (uint32_t i = 0; i < lignes_.size(); ++i) {
        void* e = acces.Element(i, forme_);
        for (uint32_t c = 0; c < forme_.size(); ++c) {
            const Valeur& v = lignes_[i][c];
            switch (forme_[c]) {
                case TypeChamp::Texte: {
                    const std::string& texte = std::get<std::string>(v);
                    if (!(large ? hote::RangeLarge(hote::Chaine(e, c), texte) : hote::RangeOctets(hote::Chaine(e, c), texte)))
                        throw std::bad_alloc();
                    break;
                }
                case TypeChamp::Entier: hote::PoseEntier(e, c, std::get<int32_t>(v)); break;
                case TypeChamp::Reel: hote::PoseEntier(e, c, std::bit_cast<int32_t>(std::get<float>(v))); break;
            }
        }
    }
}

std::string Resultat::TextePlat() const {
    std::string plat;
    for (const std::vector<Valeur>& ligne : lignes_) {
        if (!plat.empty()) AjouteTexte(FinDeLigne, plat);
        for (const Valeur& v : ligne) {
            if (const std::string* texte = std::get_if<std::string>(&v)) {
                AjouteChamp(*texte, plat);
            } else if (const int32_t* n = std::get_if<int32_t>(&v)) {
                AjouteChamp(Decimal(*n), plat);
            } else {
                std::string nombre;
                TexteNombre(std::get<float>(v), nombre, false);
                AjouteChamp(nombre, plat);
            }
        }
    }
    return plat;
}

int32_t Resultat::Livre() {
    const int32_t n = Nombre();
    if (session().ModeSortie == ModeTableau) {
        LivreAuTableau();
        hote_ = nullptr;  // delivered: the host's from now on
        return n;
    }
    LivreTexte(TextePlat());
    return n;
}

}  // namespace vdx
