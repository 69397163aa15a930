// The C exports of the documents.
#include "documents/rtf.h"
#include "vdx32/vdx32.h"

extern "C" {

VDX_API int32_t VDX_CALL Rtf_To_Texte(const char* Texte, BSTR* Sortie) { return vdx::Rtf_To_Texte(Texte, Sortie); }

}  // extern "C"
