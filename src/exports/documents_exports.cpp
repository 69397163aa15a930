// The C exports of the documents.
#include "documents/rtf.h"
#include "exports/declaration.h"

VDX_EXPORT(Rtf_To_Texte, Libre, {}, (Texte, Texte), (ChaineSortie, Sortie)) {
    return vdx::Rtf_To_Texte(Texte, Sortie);
}
