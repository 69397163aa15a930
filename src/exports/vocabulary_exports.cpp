// The C exports of the reference vocabularies.
#include "vdx32/vdx32.h"
#include "vocabulary/ald.h"

extern "C" {

VDX_API int32_t VDX_CALL ListeALD_Vdx(SAFEARRAY** Tableau) { return vdx::ListeALD(Tableau); }

}  // extern "C"
