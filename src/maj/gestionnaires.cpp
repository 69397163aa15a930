#include "maj/gestionnaires.h"

#include <algorithm>
#include <bit>
#include <optional>
#include <stdexcept>

#include "maj/operations.h"
#include "store/cles.h"
#include "store/fiche.h"

namespace vdx::maj {

namespace {

using magasin::Position;

// The texts of a chapter record carry their line ends as "##".
std::string LignesDesChapitres(std::string_view texte) {
    std::string resultat;
    resultat.reserve(texte.size());
    for (size_t i = 0; i < texte.size(); ++i) {
        if (texte[i] == '#' && i + 1 < texte.size() && texte[i + 1] == '#') {
            resultat += "\r\n";
            ++i;
        } else {
            resultat += texte[i];
        }
    }
    return resultat;
}

const Table& TableDe(const char* nom) { return *TableNommee(nom); }

// Where the field at `decalage` begins in key `numero`.
size_t DecalageDansCle(const Disposition& d, size_t numero, uint16_t decalage) {
    size_t debut = 0;
    for (const PartieCle& p : d.cles.at(numero).parties) {
        if (p.champ.decalage == decalage) return debut;
        debut += p.longueur;
    }
    throw std::logic_error("pas de ce champ dans la cle");
}

// The position of the record of `table` filed under a key built as `cle`
// for the product `code`, its label made unique or not: the keys that begin
// as it does are walked to the one whose record holds the code at `champ`.
std::optional<Position> PositionDuProduit(const Table& table, const std::string& cle, const ChampTexte& champ,
                                          std::string_view code) {
    const Disposition& d = DispositionDe(table);
    std::string_view debut = std::string_view(cle).substr(0, cle.find('\0'));
    if (const auto& regle = d.cles[0].unicite; regle && debut.size() >= regle->seuil) debut = debut.substr(0, regle->seuil);
    std::string trouvee(cle.size(), '\0');
    std::string fiche(d.longueur, '\0');
    for (Position p = magasin::CleSuperieureOuEgale(table.index(), cle.data(), trouvee.data()); p != 0;
         p = magasin::CleSuivante(table.index(), trouvee.data())) {
        if (!std::string_view(trouvee).starts_with(debut)) return 0;
        if (const int e = magasin::LitFiche(table.donnees, p, fiche.data())) {
            EchecOperation("ReadRecord", table.donnees, e);
            return std::nullopt;
        }
        if (Fiche(fiche).Texte(champ) == code) return p;
    }
    if (magasin::GlobalesMagasin()->ErreurMagasin != 0) {
        EchecOperation("GetRecord", table.index(), magasin::GlobalesMagasin()->ErreurMagasin);
        return std::nullopt;
    }
    return 0;
}

// The records that VDXLABP and VDXVPRO hold for a product, removed.
int32_t SupprimeDerivees(Fiche produit) {
    const std::string_view code = produit.Texte(VDXPRO::CodeCIP);
    const Table& laboratoires = TableDe("VDXLABP");
    const std::string fiche = FicheLaboratoire(produit);
    const std::optional<Position> labo =
        ChercheEnregistrement(laboratoires.index(), *CleDe(DispositionDe(laboratoires), 0, fiche));
    if (!labo || (*labo != 0 && SupprimeFiche(laboratoires, *labo) == 0)) return 0;
    const Table& categories = TableDe("VDXVPRO");
    for (const std::string& f : FichesParCategorie(produit)) {
        const std::optional<Position> p =
            PositionDuProduit(categories, *CleDe(DispositionDe(categories), 0, f), VDXVPRO::CodeCIP, code);
        if (!p || (*p != 0 && SupprimeFiche(categories, *p) == 0)) return 0;
    }
    return 1;
}

}  // namespace

Parent ParentDe(const Disposition& d, uint16_t decalage, std::string_view fiche) {
    for (size_t n = 0; n < d.cles.size(); ++n)
        if (!d.cles[n].parties.empty() && d.cles[n].parties[0].champ.decalage == decalage)
            return {n, CleDe(d, n, fiche)->substr(0, d.cles[n].parties[0].longueur)};
    throw std::logic_error("pas de cle sur le parent");
}

void PoseTexte(std::string& fiche, const ChampTexte& champ, std::string_view texte) {
    std::fill_n(fiche.data() + champ.decalage, champ.largeur, '\0');
    texte.copy(fiche.data() + champ.decalage, std::min<size_t>(texte.size(), champ.capacite()));
}

bool LitLigne(LecteurMaj& lecteur, const Disposition& d, const std::vector<ChampRangee>& champs, LigneMaj& ligne) {
    ligne.fiche.assign(d.longueur, '\0');
    ligne.cle.clear();
    ligne.parties.assign(d.parties.size(), {});
    ligne.aparte.clear();
    std::string jeton;
    for (const ChampRangee& c : champs) {
        if (lecteur.LireChamp(jeton) != Jeton::Champ) return false;
        switch (c.genre) {
            case ChampRangee::Texte: PoseTexte(ligne.fiche, c.texte, jeton); break;
            case ChampRangee::Entier: EcritMot(ligne.fiche, c.decalage, LireEntier(jeton)); break;
            case ChampRangee::Reel: EcritMot(ligne.fiche, c.decalage, std::bit_cast<int32_t>(LireReel(jeton))); break;
            case ChampRangee::CleExterne: ligne.cle = jeton; break;
            case ChampRangee::Partie: ligne.parties.at(c.decalage) = jeton; break;
            case ChampRangee::Aparte: ligne.aparte.push_back(jeton); break;
            case ChampRangee::Abandonne: break;
        }
    }
    lecteur.SauteLigne();
    return true;
}

int32_t Gestionnaires::Applique(const Rangee& rangee, LigneMaj& ligne) {
    switch (rangee.speciale) {
        case Speciale::Produit: return Produit(ligne);
        case Speciale::Complement: return Complement(rangee, ligne);
        case Speciale::Identification: return Identification(ligne);
        case Speciale::Posologie: return Posologie(rangee, ligne);
        case Speciale::Substances: return Substances(ligne);
        case Speciale::Aucune: break;
    }
    const Table& table = TableDe(rangee.table);
    const Disposition& d = DispositionDe(table);
    if (d.corps == Corps::Chapitres)
        for (std::string& p : ligne.parties) p = LignesDesChapitres(p);
    std::string fiche = ComposeFiche(d, std::move(ligne.fiche), ligne.parties);
    if (rangee.regle == Regle::Parent) {
        const Parent parent = ParentDe(d, rangee.parent, fiche);
        if (NouveauParent(rangee.marqueur, parent.code, {{&table, parent.cle}}) == 0) return 0;
        return AjouteFiche(table, std::move(fiche), ligne.cle);
    }
    if (table.genre == Genre::Variable) return RemplaceVariable(table, std::move(fiche), ligne.cle, d.corps == Corps::Chapitres);
    return RemplaceParCle(table, std::move(fiche));
}

int32_t Gestionnaires::NouveauParent(std::string_view marqueur, std::string_view parent,
                                     std::initializer_list<Effacement> tables) {
    if (parent.find_first_not_of(std::string_view("\0 ", 2)) == std::string_view::npos)
        return RangeeRefusee(marqueur, "son code parent est vide");
    if (parent == dernierCode_) return 1;
    for (const Effacement& e : tables)
        if (SupprimeParent(*e.table, e.cle, parent) == 0) return 0;
    dernierCode_ = parent;
    return 1;
}

int32_t Gestionnaires::Produit(LigneMaj& ligne) {
    const Table& produits = TableDe("VDXPRO");
    const Disposition& d = DispositionDe(produits);
    std::string& fiche = ligne.fiche;
    PoseTexte(fiche, VDXPRO::CodeLaboratoire, Fiche(fiche).Texte(VDXPRO::Laboratoire));
    const std::string code(Fiche(fiche).Texte(VDXPRO::CodeCIP));
    const std::optional<Position> trouvee = ChercheEnregistrement(produits.index(), *CleDe(d, 0, fiche));
    if (!trouvee) return 0;
    Position position = *trouvee;
    // A movement row of a product the base lacks, of the codes that the
    // base does not carry, is passed over.
    if (position == 0 && Fiche(fiche).Texte(VDXPRO::Mouvement) == "M" && (code.starts_with('3') || code.starts_with('5')))
        return 1;
    std::string libelle = *CleDe(d, 1, fiche);
    bool ajouteLibelle = true;
    if (position == 0) {
        position = magasin::NewRecord(produits.donnees);
        if (position == 0) return EchecOperation("NewRecord", produits.donnees, magasin::GlobalesMagasin()->ErreurMagasin);
        std::string cle = *CleDe(d, 0, fiche);
        if (const int e = AjouteCle(d, 0, cle, fiche, position)) return EchecOperation("AddRecordKey", produits.index(), e);
    } else {
        std::string ancienne(d.longueur, '\0');
        if (const int e = magasin::LitFiche(produits.donnees, position, ancienne.data()))
            return EchecOperation("ReadRecord", produits.donnees, e);
        const std::string ancienLibelle = *CleDe(d, 1, ancienne);
        if (ancienLibelle == libelle) {
            ajouteLibelle = false;  // the label keeps its key
        } else if (const int e = magasin::DeleteRecordKey(produits.cle(1), ancienLibelle.data(), position);
                   e != 0 && e != magasin::CleAbsente) {
            return EchecOperation("DeleteRecordKey", produits.cle(1), e);
        }
        if (SupprimeDerivees(Fiche(ancienne)) == 0) return 0;
    }
    if (const int e = magasin::WriteRecordData(produits.donnees, position, fiche.data()))
        return EchecOperation("WriteRecordData", produits.donnees, e);
    if (ajouteLibelle) {
        const int e = AjouteCle(d, 1, libelle, fiche, position);
        if (e != 0 && e != magasin::CleExistante) return EchecOperation("AddRecordKey", produits.cle(1), e);
    }
    if (AjouteFiche(TableDe("VDXLABP"), FicheLaboratoire(Fiche(fiche))) == 0) return 0;
    for (std::string& f : FichesParCategorie(Fiche(fiche)))
        if (AjouteFiche(TableDe("VDXVPRO"), std::move(f)) == 0) return 0;
    return 1;
}

int32_t Gestionnaires::Complement(const Rangee& rangee, LigneMaj& ligne) {
    const Table& familles = TableDe("VDXFAMP");
    const std::string code(Fiche(ligne.fiche).Texte(VDXPROA::CodeCIP));
    FicheEcrite f(VDXFAMP::Longueur);
    PoseTexte(f.Octets(), VDXFAMP::CodeCIP, code);
    const Parent parent = ParentDe(DispositionDe(familles), VDXFAMP::CodeCIP.decalage, f.Octets());
    if (NouveauParent(rangee.marqueur, parent.code, {{&familles, parent.cle}}) == 0) return 0;
    for (const std::string& famille : ligne.aparte) {
        if (famille.empty()) continue;
        PoseTexte(f.Octets(), VDXFAMP::CodeFamille, famille);
        if (AjouteFiche(familles, f.Octets()) == 0) return 0;
    }
    return RemplaceParCle(TableDe("VDXPROA"), std::move(ligne.fiche));
}

int32_t Gestionnaires::Identification(LigneMaj& ligne) {
    const Table& produits = TableDe("VDXIDPRO");
    std::string& fiche = ligne.fiche;
    // The form's code always has four characters, blanks behind.
    std::string forme(Fiche(fiche).Texte(VDXIDPRO::CodeForme));
    if (forme.size() < 4) forme.resize(4, ' ');
    PoseTexte(fiche, VDXIDPRO::CodeForme, forme);
    const std::string code(Fiche(fiche).Texte(VDXIDPRO::CodeCIP));
    const std::optional<Position> ancien = ChercheEnregistrement(produits.index(), *CleDe(DispositionDe(produits), 0, fiche));
    if (!ancien) return 0;
    std::string ancienne(VDXIDPRO::Longueur, '\0');
    if (*ancien != 0)
        if (const int e = magasin::LitFiche(produits.donnees, *ancien, ancienne.data()))
            return EchecOperation("ReadRecord", produits.donnees, e);
    if (RemplaceParCle(produits, fiche) == 0) return 0;
    // The product's link to its form: the old one under the product's old
    // form, else found by the code in the keys of the links; a product new
    // to the table has none.
    const Table& liens = TableDe("VDXIDFOP");
    const Disposition& dl = DispositionDe(liens);
    const auto lien = [&](std::string_view f) {
        FicheEcrite l(VDXIDFOP::Longueur);
        PoseTexte(l.Octets(), VDXIDFOP::CodeForme, f);
        PoseTexte(l.Octets(), VDXIDFOP::CodeCIP, code);
        return std::move(l.Octets());
    };
    if (*ancien != 0) {
        const std::string cle = *CleDe(dl, 0, lien(Fiche(ancienne).Texte(VDXIDPRO::CodeForme)));
        std::optional<Position> vieux = ChercheEnregistrement(liens.index(), cle);
        if (!vieux) return 0;
        const size_t debut = DecalageDansCle(dl, 0, VDXIDFOP::CodeCIP.decalage);
        std::string trouvee;
        if (*vieux == 0) vieux = ChercheSousCle(liens.index(), std::string_view(cle).substr(debut), debut, trouvee);
        if (*vieux != 0 && SupprimeFiche(liens, *vieux) == 0) return 0;
    }
    return AjouteFiche(liens, lien(forme));
}

int32_t Gestionnaires::Posologie(const Rangee& rangee, LigneMaj& ligne) {
    const Table& posologies = TableDe("VDXPPROD");
    const Table& textes = TableDe("VDXPTEXT");
    const Disposition& d = DispositionDe(posologies);
    const Parent parent = ParentDe(d, rangee.parent, ligne.fiche);
    if (NouveauParent(rangee.marqueur, parent.code, {{&posologies, parent.cle}, {&textes, 0}}) == 0) return 0;
    const std::string cle = *CleDe(d, 0, ligne.fiche);
    if (AjouteFiche(posologies, std::move(ligne.fiche)) == 0) return 0;
    const std::string& texte = ligne.aparte.at(0);
    if (texte.empty()) return 1;
    return AjouteFiche(textes, ComposeFiche(DispositionDe(textes), {}, {texte}), cle);
}

int32_t Gestionnaires::Substances(LigneMaj& ligne) {
    const std::vector<std::string>& t = ligne.aparte;
    const int32_t code = LireEntier(t.at(0));
    if (!t.at(1).empty()) {
        FicheEcrite f(VDXVPA::Longueur);
        f.Entier(VDXVPA::CodeSubstance, code);
        PoseTexte(f.Octets(), VDXVPA::Libelle, t[1]);
        f.Entier(VDXVPA::Interactions, LireEntier(t.at(2)));
        if (RemplaceParCle(TableDe("VDXVPA"), std::move(f.Octets())) == 0) return 0;
    }
    if (!t.at(3).empty()) {
        FicheEcrite f(VDXVEXC::Longueur);
        f.Entier(VDXVEXC::CodeSubstance, code);
        PoseTexte(f.Octets(), VDXVEXC::Libelle, t[3]);
        PoseTexte(f.Octets(), VDXVEXC::LibelleEEN, t.at(4));
        if (RemplaceParCle(TableDe("VDXVEXC"), std::move(f.Octets())) == 0) return 0;
    }
    return 1;
}

}  // namespace vdx::maj
