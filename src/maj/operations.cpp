#include "maj/operations.h"

#include <vector>

#include "maj/marqueurs.h"
#include "platform/notices.h"
#include "store/cles.h"
#include "store/layouts.h"

namespace vdx::maj {

namespace {

using magasin::Position;

int ErreurCourante() { return magasin::GlobalesMagasin()->ErreurMagasin; }

bool Variable(const Table& table) { return table.genre == Genre::Variable; }

// The whole record at a position, or none after the message box.
std::optional<std::string> LitEntiere(const Table& table, Position position) {
    std::string fiche;
    if (const int e = magasin::LitFicheEntiere(table.donnees, position, fiche)) {
        EchecOperation("ReadRecord", table.donnees, e);
        return std::nullopt;
    }
    return fiche;
}

}  // namespace

int32_t EchecOperation(const char* operation, int numero, int erreur) {
    std::string texte = "Une erreur est survenue lors de la MAJ (";
    texte += operation;
    texte += ") sur le fichier '";
    texte += NomMaj(numero);
    texte += "'. Erreur : " + std::to_string(erreur);
    notices().BoiteMessage(texte, TitreErreurMaj, StyleExclamation);
    return 0;
}

int32_t RangeeRefusee(std::string_view marqueur, std::string_view raison) {
    std::string texte = "Une ligne de la table ";
    texte += marqueur;
    texte += " n'a pas pu \xEAtre appliqu\xE9" "e : ";
    texte += raison;
    texte += ".";
    notices().BoiteMessage(texte, TitreErreurMaj, StyleExclamation);
    return 0;
}

std::optional<Position> ChercheEnregistrement(int numeroCle, const std::string& cle) {
    const Position position = magasin::CleEgale(numeroCle, cle.data());
    if (position == 0 && ErreurCourante() != 0) {
        EchecOperation("GetRecord", numeroCle, ErreurCourante());
        return std::nullopt;
    }
    return position;
}

int32_t RemplaceParCle(const Table& table, std::string fiche) {
    const Disposition& d = DispositionDe(table);
    const std::optional<std::string> cle0 = CleDe(d, 0, fiche);
    if (!cle0) return 1;
    const std::optional<Position> trouvee = ChercheEnregistrement(table.index(), *cle0);
    if (!trouvee) return 0;
    Position position = *trouvee;
    std::vector<std::string> anciennes(d.cles.size());
    if (position == 0) {
        position = magasin::NewRecord(table.donnees);
        if (position == 0) return EchecOperation("NewRecord", table.donnees, ErreurCourante());
        std::string cle = *cle0;
        if (const int e = AjouteCle(d, 0, cle, fiche, position)) return EchecOperation("AddRecordKey", table.index(), e);
    } else {
        std::string ancienne(d.longueur, '\0');
        if (magasin::LitFiche(table.donnees, position, ancienne.data()) == 0)
            for (size_t n = 1; n < d.cles.size(); ++n) anciennes[n] = CleDe(d, n, ancienne).value_or("");
    }
    if (const int e = magasin::WriteRecordData(table.donnees, position, fiche.data()))
        return EchecOperation("WriteRecordData", table.donnees, e);
    for (size_t n = 1; n < d.cles.size(); ++n) {
        const int numero = table.cle(static_cast<int>(n));
        if (!anciennes[n].empty()) {
            const int e = magasin::DeleteRecordKey(numero, anciennes[n].data(), position);
            if (e != 0 && e != magasin::CleAbsente) return EchecOperation("DeleteRecordKey", numero, e);
        }
        std::optional<std::string> cle = CleDe(d, n, fiche);
        if (!cle) continue;
        const int e = AjouteCle(d, n, *cle, fiche, position);
        if (e != 0 && e != magasin::CleExistante) return EchecOperation("AddRecordKey", numero, e);
    }
    return 1;
}

int32_t SupprimeFiche(const Table& table, Position position, std::string_view cleExterne) {
    const Disposition& d = DispositionDe(table);
    const std::optional<std::string> fiche = LitEntiere(table, position);
    if (!fiche) return 0;
    for (size_t n = 0; n < d.cles.size(); ++n) {
        const std::optional<std::string> cle = CleDe(d, n, *fiche, cleExterne);
        if (!cle) continue;
        const int numero = table.cle(static_cast<int>(n));
        const int e = magasin::DeleteRecordKey(numero, cle->data(), position);
        if (e != 0 && e != magasin::CleAbsente) return EchecOperation("DeleteRecordKey", numero, e);
    }
    const int e = Variable(table) ? magasin::LibereFicheVariable(table.donnees, position)
                                  : magasin::LibereFiche(table.donnees, position);
    return e == 0 ? 1 : EchecOperation("DeleteRecord", table.donnees, e);
}

int32_t AjouteFiche(const Table& table, std::string fiche, std::string_view cleExterne) {
    const Disposition& d = DispositionDe(table);
    const auto taille = static_cast<uint32_t>(fiche.size());
    const Position position =
        Variable(table) ? magasin::NouvelleFicheVariable(table.donnees, taille) : magasin::NewRecord(table.donnees);
    if (position == 0) return EchecOperation("NewRecord", table.donnees, ErreurCourante());
    const int ecrite = Variable(table) ? magasin::EcritFicheVariable(table.donnees, position, fiche.data(), taille)
                                       : magasin::WriteRecordData(table.donnees, position, fiche.data());
    if (ecrite != 0) return EchecOperation("WriteRecordData", table.donnees, ecrite);
    for (size_t n = 0; n < d.cles.size(); ++n) {
        std::optional<std::string> cle = CleDe(d, n, fiche, cleExterne);
        if (!cle) continue;
        const int e = AjouteCle(d, n, *cle, fiche, position);
        if (e == magasin::CleExistante && n == 0) {
            // The row is there already: the new record goes.
            const int liberee = Variable(table) ? magasin::LibereFicheVariable(table.donnees, position)
                                                : magasin::LibereFiche(table.donnees, position);
            return liberee == 0 ? 1 : EchecOperation("DeleteRecord", table.donnees, liberee);
        }
        if (e != 0 && e != magasin::CleExistante) return EchecOperation("AddRecordKey", table.cle(static_cast<int>(n)), e);
    }
    return 1;
}

int32_t RemplaceVariable(const Table& table, std::string fiche, std::string_view cleExterne, bool sautSiVide) {
    const Disposition& d = DispositionDe(table);
    const std::optional<std::string> cle0 = CleDe(d, 0, fiche, cleExterne);
    if (!cle0) return 1;
    const std::optional<Position> ancienne = ChercheEnregistrement(table.index(), *cle0);
    if (!ancienne) return 0;
    if (*ancienne != 0 && SupprimeFiche(table, *ancienne, cleExterne) == 0) return 0;
    if (sautSiVide && fiche.size() <= d.longueur) return 1;
    return AjouteFiche(table, std::move(fiche), cleExterne);
}

int32_t SupprimeParent(const Table& table, size_t numeroCle, std::string_view parent) {
    const int numero = table.cle(static_cast<int>(numeroCle));
    const Disposition& d = DispositionDe(table);
    std::string depart(d.cles.at(numeroCle).longueur, '\0');
    parent.copy(depart.data(), std::min(parent.size(), depart.size()));
    std::string cle(depart.size(), '\0');
    for (;;) {
        const Position position = magasin::CleSuperieureOuEgale(numero, depart.data(), cle.data());
        if (position == 0) {
            if (ErreurCourante() != 0) return EchecOperation("GetRecord", numero, ErreurCourante());
            return 1;
        }
        if (!std::string_view(cle).starts_with(parent)) return 1;
        // A table keeping its first key outside its records is walked by it.
        const std::string_view externe = d.champsCle.empty() ? std::string_view() : std::string_view(cle);
        if (SupprimeFiche(table, position, externe) == 0) return 0;
    }
}

Position ChercheSousCle(int numeroCle, std::string_view sousCle, size_t decalage, std::string& cle) {
    cle.assign(static_cast<size_t>(std::max(magasin::LongueurCle(numeroCle), 0)), '\0');
    if (cle.empty()) return 0;
    for (Position p = magasin::PremiereCle(numeroCle, cle.data()); p != 0; p = magasin::CleSuivante(numeroCle, cle.data()))
        if (cle.size() >= decalage + sousCle.size() && std::string_view(cle).substr(decalage, sousCle.size()) == sousCle)
            return p;
    return 0;
}

}  // namespace vdx::maj
