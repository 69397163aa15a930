// The C exports of the update: the files a directory holds for the base,
// their run, the coverage level of a run.
#include "exports/arguments.h"
#include "exports/declaration.h"
#include "maj/etat.h"
#include "maj/lecture.h"
#include "maj/liste.h"
#include "maj/moteur.h"
#include "maj/reconstruction.h"
#include "maj/unite.h"
#include "session/connexion.h"

using namespace vdx;

namespace {

std::string RepertoireRequis(const char* repertoire) {
    const std::string_view texte = exports::TexteDe(repertoire);
    if (texte.empty()) throw Echec{Argument1};
    return std::string(texte);
}

}  // namespace

VDX_EXPORT(IsMaj_Vdx, Connecte, {}, (Texte, Repertoire)) {
    const std::string repertoire = RepertoireRequis(Repertoire);
    maj::TermineMajInterrompue(session().BaseFichiers);
    const std::optional<std::string> date = DateDeLaBase();
    if (!date) throw Echec{EchecMagasin, 0, 0, "VDXDAT.NDX"};
    return static_cast<int32_t>(maj::ListeFichiersMaj(repertoire, maj::TitreDeLaDate(*date)).fichiers.size());
}

VDX_EXPORT(SetTypeMaj_Vdx, Libre, {}, (Entier, Type)) {
    maj::ChoisitTypeMaj(Type);
    return Succes;
}

// Does nothing.
VDX_EXPORT(GetMajError_Vdx, Libre, {}, (Entier, Inutilise)) { return Rien; }

VDX_EXPORT(ExecuteMaj_Vdx, Connecte, {}, (Texte, Repertoire)) {
    return maj::ExecuteMaj(session(), RepertoireRequis(Repertoire), maj::TamponMaj);
}

// The same with the larger buffers; a fault inside shows no message box.
VDX_EXPORT(ExecuteMaj2_Vdx, Connecte, {}, (Texte, Repertoire)) {
    try {
        return maj::ExecuteMaj(session(), RepertoireRequis(Repertoire), maj::TamponMaj2);
    } catch (const Echec&) {
        throw;
    } catch (const std::exception&) {
        return SortieErreur(ErreurInterne);
    }
}

VDX_EXPORT(RebuildVDXPRO_Vdx, Libre, {}, (Texte, Repertoire)) {
    return maj::ReconstruitProduits(RepertoireRequis(Repertoire));
}
