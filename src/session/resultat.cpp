#include "session/resultat.h"

#include <bit>
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

uint32_t TailleElement(const Gabarit& gabarit) { return hote::TailleFiche(static_cast<uint32_t>(gabarit.size())); }

// Direct access to the records of an array of a shape.
class Acces : public hote::Acces {
public:
    using hote::Acces::Acces;
    void* Element(uint32_t i, const Gabarit& gabarit) const { return hote::Acces::Element(TailleElement(gabarit), i); }
};

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

void RangeEnOctets(BSTR* destination, std::string_view texte) {
    if (!hote::RangeOctets(Requis(destination), texte)) throw std::bad_alloc();
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
    RangeEnOctets(Requis(destination, codeAbsent), texte);
}

void LivreValeurs(std::initializer_list<Sortie> sorties, std::initializer_list<std::string_view> textes) {
    if (sorties.size() != textes.size()) throw FauteInterne("sorties hors gabarit");
    if (session().ModeSortie != ModeTableau) {
        std::string plat;
        for (std::string_view t : textes) AjouteChamp(t, plat);
        LivreTexte(plat);
        return;
    }
    const std::string_view* texte = textes.begin();
    for (const Sortie& s : sorties) RangeEnOctets(Requis(s.chaine, s.codeAbsent), *texte++);
}

void VideFiche(void* fiche, const Gabarit& gabarit, bool nombres) {
    for (uint32_t c = 0; c < gabarit.size(); ++c) {
        if (gabarit[c] == TypeChamp::Texte)
            RangeChaine(hote::Chaine(fiche, c), std::nullopt);
        else if (nombres)
            hote::PoseEntier(fiche, c, 0);
    }
}

std::vector<Valeur> LitFiche(const void* fiche, const Gabarit& gabarit) {
    std::vector<Valeur> valeurs;
    for (uint32_t c = 0; c < gabarit.size(); ++c) {
        switch (gabarit[c]) {
            case TypeChamp::Texte: {
                const BSTR chaine = *hote::Chaine(const_cast<void*>(fiche), c);
                if (session().ChainesUnicode) {
                    valeurs.emplace_back(hote::VersTexte(chaine));
                } else {
                    const std::string_view octets = hote::Octets(chaine);
                    valeurs.emplace_back(std::string(octets.substr(0, octets.find('\0'))));
                }
                break;
            }
            case TypeChamp::Entier: valeurs.emplace_back(hote::Entier(fiche, c)); break;
            case TypeChamp::Reel: valeurs.emplace_back(std::bit_cast<float>(hote::Entier(fiche, c))); break;
        }
    }
    return valeurs;
}

void LivreFiche(void* fiche, const Gabarit& gabarit, std::vector<Valeur> champs) {
    Lignes ligne(gabarit);
    ligne.AjouteLigneSansCle(std::move(champs));
    if (session().ModeSortie != ModeTableau) {
        LivreTexte(ligne.TextePlat());
        return;
    }
    const std::vector<Valeur>& valeurs = ligne.Rangs().front();
    for (uint32_t c = 0; c < gabarit.size(); ++c) {
        if (const std::string* texte = std::get_if<std::string>(&valeurs[c])) {
            RangeEnOctets(hote::Chaine(Requis(fiche), c), *texte);
        } else if (const int32_t* n = std::get_if<int32_t>(&valeurs[c])) {
            hote::PoseEntier(fiche, c, *n);
        } else {
            hote::PoseEntier(fiche, c, std::bit_cast<int32_t>(std::get<float>(valeurs[c])));
        }
    }
}

int32_t VideTableau(SAFEARRAY* tableau, const Gabarit& gabarit) {
    // A locked array can't be emptied: it is left as it is, whole.
    if (hote::Verrouille(tableau)) return OperationTableau;
    {
        Acces acces(tableau);
        if (!acces) return OperationTableau;
        for (uint32_t i = 0, n = hote::NombreElements(tableau); i < n; ++i) {
            void* e = acces.Element(i, gabarit);
            for (uint32_t c = 0; c < gabarit.size(); ++c) {
                if (gabarit[c] == TypeChamp::Texte)
                    hote::Libere(hote::Chaine(e, c));
                else
                    hote::PoseEntier(e, c, 0);
            }
        }
    }
    if (!hote::Redimensionne(tableau, 0)) hote::ForceVide(tableau);
    return Succes;
}

void DetruitTableau(SAFEARRAY*& tableau, const Gabarit& gabarit) {
    if (!tableau) return;
    VideTableau(tableau, gabarit);
    if (session().ModeSortie != ModeTableau) {
        hote::Detruit(tableau);
        tableau = nullptr;
    }
}

Resultat::Resultat(SAFEARRAY** hote, Gabarit gabarit, int32_t codeAbsent) : lignes_(std::move(gabarit)) {
    if (session().ModeSortie != ModeTableau) return;
    if (!hote || !*hote) throw Echec{codeAbsent};
    SAFEARRAY* t = *hote;
    if (t->cDims != 1 || hote::TailleElement(t) != TailleElement(lignes_.Types())) throw Echec{codeAbsent};
    const int32_t vide = VideTableau(t, lignes_.Types());
    if (vide < 0) throw Echec{vide};
    hote_ = t;
}

Resultat::~Resultat() {
    // A host array not delivered is left empty rather than half-filled.
    if (hote_) VideTableau(hote_, lignes_.Types());
}

void Resultat::Prend(Lignes&& lignes) {
    if (lignes.Types() != lignes_.Types()) throw FauteInterne("lignes hors gabarit");
    lignes_ = std::move(lignes);
}

void Resultat::LivreAuTableau() {
    const Gabarit& gabarit = lignes_.Types();
    const auto& rangs = lignes_.Rangs();
    if (!hote::Redimensionne(hote_, static_cast<uint32_t>(rangs.size()))) throw Echec{codeCroissance_};
    Acces acces(hote_);
    if (!acces) throw Echec{OperationTableau};
    const bool large = session().ChainesUnicode != 0;
    for (uint32_t i = 0; i < rangs.size(); ++i) {
        void* e = acces.Element(i, gabarit);
        for (uint32_t c = 0; c < gabarit.size(); ++c) {
            const Valeur& v = rangs[i][c];
            switch (gabarit[c]) {
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

int32_t Resultat::Livre() {
    const int32_t n = Nombre();
    if (session().ModeSortie == ModeTableau) {
        LivreAuTableau();
        hote_ = nullptr;  // delivered: the host's from now on
        return n;
    }
    LivreTexte(lignes_.TextePlat());
    return n;
}

int32_t Livre(SAFEARRAY** tableau, int32_t codeAbsent, Lignes&& lignes) {
    Resultat resultat(tableau, lignes.Types(), codeAbsent);
    resultat.Prend(std::move(lignes));
    return resultat.Livre();
}

}  // namespace vdx
