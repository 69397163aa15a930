// BSTR and SAFEARRAY for hosts that are not on Windows, with the layout and
// the semantics of the Windows automation API (see include/vdx32/oleauto.h).
// On Windows the system's own functions are used and this file is empty.
#ifndef _WIN32

#include "vdx32/oleauto.h"

#include "platform/oleauto_interne.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <unordered_map>

namespace {

// --- Strings ---------------------------------------------------------------
//
// Allocation: 4 bytes of padding, the 4-byte byte length, the bytes, two zero
// bytes. The padding keeps the characters 8-byte aligned, as on Win64.

constexpr size_t EnteteChaine = 8;
// Longest string in bytes: the length prefix is 32 bits and a length in
// characters must survive doubling.
constexpr uint64_t OctetsMax = 0x7FFFFFF0u;

BSTR NouvelleChaine(const void* source, uint64_t octets) {
    if (octets > OctetsMax) return nullptr;
    auto* bloc = static_cast<unsigned char*>(std::malloc(EnteteChaine + octets + 2));
    if (!bloc) return nullptr;
    std::memset(bloc, 0, 4);
    uint32_t longueur = static_cast<uint32_t>(octets);
    std::memcpy(bloc + 4, &longueur, 4);
    unsigned char* texte = bloc + EnteteChaine;
    if (source && octets) std::memcpy(texte, source, octets);
    texte[octets] = 0;
    texte[octets + 1] = 0;
    return reinterpret_cast<BSTR>(texte);
}

size_t LongueurZ(const OLECHAR* s) {
    size_t n = 0;
    while (s[n]) ++n;
    return n;
}

// --- Arrays ----------------------------------------------------------------
//
// Like Windows, 16 hidden bytes stand in front of a descriptor; the variant
// type of an array made by SafeArrayCreate is kept in the last 4 of them.

constexpr size_t EnteteTableau = 16;
constexpr uint16_t MemoireHote = FADF_AUTO | FADF_STATIC | FADF_EMBEDDED;

// The descriptors this file made and the bytes of their data blocks, so that
// bounds a host wrote over can be checked against what is there.
struct Blocs {
    std::mutex verrou;
    std::unordered_map<const SAFEARRAY*, size_t> octets;
};
Blocs& LesBlocs() {
    static Blocs* b = new Blocs;  // never destroyed: hosts free arrays at exit
    return *b;
}
void NoteDescripteur(const SAFEARRAY* psa) {
    Blocs& b = LesBlocs();
    const std::lock_guard<std::mutex> garde(b.verrou);
    b.octets[psa] = 0;
}
// The block of a descriptor this file made; others are not followed.
void NoteBloc(const SAFEARRAY* psa, size_t octets) {
    Blocs& b = LesBlocs();
    const std::lock_guard<std::mutex> garde(b.verrou);
    if (const auto it = b.octets.find(psa); it != b.octets.end()) it->second = octets;
}
void OublieDescripteur(const SAFEARRAY* psa) {
    Blocs& b = LesBlocs();
    const std::lock_guard<std::mutex> garde(b.verrou);
    b.octets.erase(psa);
}
constexpr ULONG VerrousMax = 0xFFFF;

uint32_t& TypeCache(SAFEARRAY* psa) {
    return *reinterpret_cast<uint32_t*>(reinterpret_cast<unsigned char*>(psa) - 4);
}

size_t TailleDescripteur(UINT dimensions) {
    return offsetof(SAFEARRAY, rgsabound) + size_t{dimensions} * sizeof(SAFEARRAYBOUND);
}

ULONG TailleType(VARTYPE vt) {
    switch (vt) {
    case VT_I1: case VT_UI1: return 1;
    case VT_I2: case VT_UI2: case VT_BOOL: return 2;
    case VT_I4: case VT_UI4: case VT_R4: case VT_ERROR: case VT_INT: case VT_UINT: return 4;
    case VT_I8: case VT_UI8: case VT_R8: case VT_CY: case VT_DATE: return 8;
    case VT_DECIMAL: return 16;
    case VT_BSTR: return sizeof(BSTR);
    case VT_DISPATCH: case VT_UNKNOWN: return sizeof(void*);
    default: return 0;  // VT_VARIANT, VT_RECORD and the rest: not here
    }
}

// Number of elements in all dimensions; false on overflow.
bool NombreCellules(const SAFEARRAY* psa, uint64_t* cellules) {
    uint64_t n = 1;
    for (USHORT i = 0; i < psa->cDims; ++i) {
        n *= psa->rgsabound[i].cElements;
        if (n > SIZE_MAX) return false;
    }
    *cellules = n;
    return true;
}

bool TailleDonnees(const SAFEARRAY* psa, uint64_t cellules, size_t* octets) {
    if (psa->cbElements && cellules > SIZE_MAX / psa->cbElements) return false;
    *octets = static_cast<size_t>(cellules * psa->cbElements);
    return true;
}

// Releases the elements from `debut` to `fin` (cells): only BSTRs are ours to free.
void LibereElements(SAFEARRAY* psa, uint64_t debut, uint64_t fin) {
    if (!psa->pvData || !(psa->fFeatures & FADF_BSTR) || psa->cbElements < sizeof(BSTR)) return;
    auto* octets = static_cast<unsigned char*>(psa->pvData);
    for (uint64_t i = debut; i < fin; ++i) {
        BSTR* element = reinterpret_cast<BSTR*>(octets + i * psa->cbElements);
        SysFreeString(*element);
        *element = nullptr;
    }
}

// Address of the element given by indices, left-most dimension first.
HRESULT AdresseElement(SAFEARRAY* psa, const LONG* indices, unsigned char** adresse) {
    if (!psa || !indices || !adresse) return E_INVALIDARG;
    uint64_t cellule = 0;
    uint64_t pas = 1;
    for (USHORT i = 0; i < psa->cDims; ++i) {
        const SAFEARRAYBOUND& borne = psa->rgsabound[psa->cDims - 1 - i];
        int64_t decalage = int64_t{indices[i]} - borne.lLbound;
        if (decalage < 0 || decalage >= int64_t{borne.cElements}) return DISP_E_BADINDEX;
        cellule += static_cast<uint64_t>(decalage) * pas;
        pas *= borne.cElements;
    }
    if (!psa->pvData) return E_UNEXPECTED;
    *adresse = static_cast<unsigned char*>(psa->pvData) + cellule * psa->cbElements;
    return S_OK;
}

}  // namespace

extern "C" {

BSTR SysAllocString(const OLECHAR* psz) {
    if (!psz) return nullptr;
    return NouvelleChaine(psz, uint64_t{LongueurZ(psz)} * sizeof(OLECHAR));
}

BSTR SysAllocStringLen(const OLECHAR* strIn, UINT ui) {
    return NouvelleChaine(strIn, uint64_t{ui} * sizeof(OLECHAR));
}

BSTR SysAllocStringByteLen(LPCSTR psz, UINT len) {
    return NouvelleChaine(psz, len);
}

INT SysReAllocStringLen(BSTR* pbstr, const OLECHAR* psz, UINT len) {
    if (!pbstr) return FALSE;
    // The new string is made before the old is freed: psz may point into it.
    BSTR nouvelle = NouvelleChaine(psz, uint64_t{len} * sizeof(OLECHAR));
    if (!nouvelle) return FALSE;
    SysFreeString(*pbstr);
    *pbstr = nouvelle;
    return TRUE;
}

INT SysReAllocString(BSTR* pbstr, const OLECHAR* psz) {
    if (!pbstr) return FALSE;
    if (!psz) return SysReAllocStringLen(pbstr, u"", 0);
    size_t n = LongueurZ(psz);
    if (n > OctetsMax / sizeof(OLECHAR)) return FALSE;
    return SysReAllocStringLen(pbstr, psz, static_cast<UINT>(n));
}

void SysFreeString(BSTR bstrString) {
    if (bstrString) std::free(reinterpret_cast<unsigned char*>(bstrString) - EnteteChaine);
}

UINT SysStringByteLen(BSTR bstr) {
    if (!bstr) return 0;
    uint32_t longueur;
    std::memcpy(&longueur, reinterpret_cast<unsigned char*>(bstr) - 4, 4);
    return longueur;
}

UINT SysStringLen(BSTR pbstr) {
    return SysStringByteLen(pbstr) / sizeof(OLECHAR);
}

HRESULT SafeArrayAllocDescriptor(UINT cDims, SAFEARRAY** ppsaOut) {
    if (!ppsaOut || cDims == 0 || cDims > 0xFFFF) return E_INVALIDARG;
    size_t taille = EnteteTableau + TailleDescripteur(cDims);
    auto* bloc = static_cast<unsigned char*>(std::calloc(1, taille));
    if (!bloc) return E_OUTOFMEMORY;
    auto* psa = reinterpret_cast<SAFEARRAY*>(bloc + EnteteTableau);
    psa->cDims = static_cast<USHORT>(cDims);
    NoteDescripteur(psa);
    *ppsaOut = psa;
    return S_OK;
}

HRESULT SafeArrayAllocData(SAFEARRAY* psa) {
    if (!psa) return E_INVALIDARG;
    uint64_t cellules;
    size_t octets;
    if (!NombreCellules(psa, &cellules) || !TailleDonnees(psa, cellules, &octets))
        return E_OUTOFMEMORY;
    // Never a null block, even for no element: a null pvData means "no data".
    void* donnees = std::calloc(1, octets ? octets : 1);
    if (!donnees) return E_OUTOFMEMORY;
    psa->pvData = donnees;
    NoteBloc(psa, octets);
    return S_OK;
}

SAFEARRAY* SafeArrayCreate(VARTYPE vt, UINT cDims, SAFEARRAYBOUND* rgsabound) {
    ULONG taille = TailleType(vt);
    if (!rgsabound || taille == 0) return nullptr;
    SAFEARRAY* psa = nullptr;
    if (FAILED(SafeArrayAllocDescriptor(cDims, &psa))) return nullptr;
    switch (vt) {
    case VT_BSTR: psa->fFeatures = FADF_BSTR | FADF_HAVEVARTYPE; break;
    case VT_UNKNOWN: psa->fFeatures = FADF_UNKNOWN | FADF_HAVEIID; break;
    case VT_DISPATCH: psa->fFeatures = FADF_DISPATCH | FADF_HAVEIID; break;
    default: psa->fFeatures = FADF_HAVEVARTYPE; break;
    }
    TypeCache(psa) = vt;
    psa->cbElements = taille;
    // Bounds are given left-most first and stored the other way round.
    for (UINT i = 0; i < cDims; ++i) psa->rgsabound[i] = rgsabound[cDims - 1 - i];
    if (FAILED(SafeArrayAllocData(psa))) {
        SafeArrayDestroyDescriptor(psa);
        return nullptr;
    }
    return psa;
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE vt, LONG lLbound, ULONG cElements) {
    SAFEARRAYBOUND borne{cElements, lLbound};
    return SafeArrayCreate(vt, 1, &borne);
}

HRESULT SafeArrayLock(SAFEARRAY* psa) {
    if (!psa) return E_INVALIDARG;
    if (psa->cLocks >= VerrousMax) return E_UNEXPECTED;
    ++psa->cLocks;
    return S_OK;
}

HRESULT SafeArrayUnlock(SAFEARRAY* psa) {
    if (!psa) return E_INVALIDARG;
    if (psa->cLocks == 0) return E_UNEXPECTED;
    --psa->cLocks;
    return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* psa, void** ppvData) {
    if (!psa || !ppvData) return E_INVALIDARG;
    HRESULT hr = SafeArrayLock(psa);
    if (FAILED(hr)) {
        *ppvData = nullptr;
        return hr;
    }
    *ppvData = psa->pvData;
    return S_OK;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* psa) {
    return SafeArrayUnlock(psa);
}

HRESULT SafeArrayDestroyData(SAFEARRAY* psa) {
    if (!psa) return E_INVALIDARG;
    if (psa->cLocks) return DISP_E_ARRAYISLOCKED;
    uint64_t cellules;
    size_t octets;
    if (!NombreCellules(psa, &cellules) || !TailleDonnees(psa, cellules, &octets))
        return E_UNEXPECTED;
    LibereElements(psa, 0, cellules);
    if (!psa->pvData) return S_OK;
    if (psa->fFeatures & MemoireHote) {
        std::memset(psa->pvData, 0, octets);
        return S_OK;
    }
    std::free(psa->pvData);
    psa->pvData = nullptr;
    NoteBloc(psa, 0);
    return S_OK;
}

HRESULT SafeArrayDestroyDescriptor(SAFEARRAY* psa) {
    if (!psa) return S_OK;
    if (psa->cLocks) return DISP_E_ARRAYISLOCKED;
    if (psa->fFeatures & MemoireHote) return S_OK;
    OublieDescripteur(psa);
    std::free(reinterpret_cast<unsigned char*>(psa) - EnteteTableau);
    return S_OK;
}

HRESULT SafeArrayDestroy(SAFEARRAY* psa) {
    if (!psa) return S_OK;
    if (psa->cLocks) return DISP_E_ARRAYISLOCKED;
    HRESULT hr = SafeArrayDestroyData(psa);
    if (FAILED(hr)) return hr;
    return SafeArrayDestroyDescriptor(psa);
}

HRESULT SafeArrayRedim(SAFEARRAY* psa, SAFEARRAYBOUND* psaboundNew) {
    if (!psa || !psaboundNew || (psa->fFeatures & FADF_FIXEDSIZE)) return E_INVALIDARG;
    if (psa->cLocks) return DISP_E_ARRAYISLOCKED;
    // Cells per unit of the last dimension: the product of the others.
    uint64_t autres = 1;
    for (USHORT i = 1; i < psa->cDims; ++i) {
        autres *= psa->rgsabound[i].cElements;
        if (autres > SIZE_MAX) return E_OUTOFMEMORY;
    }
    SAFEARRAYBOUND& derniere = psa->rgsabound[0];
    uint64_t avant = autres * derniere.cElements;
    uint64_t apres = autres * psaboundNew->cElements;
    size_t octetsAvant, octetsApres;
    if (!TailleDonnees(psa, avant, &octetsAvant) || !TailleDonnees(psa, apres, &octetsApres))
        return E_OUTOFMEMORY;
    if (apres < avant) {
        LibereElements(psa, apres, avant);
    } else if (apres > avant || !psa->pvData) {
        if (psa->fFeatures & MemoireHote) return E_INVALIDARG;
        void* donnees = std::realloc(psa->pvData, octetsApres ? octetsApres : 1);
        if (!donnees) return E_OUTOFMEMORY;
        // A null pvData held nothing, whatever the old bounds said.
        size_t gardes = psa->pvData ? octetsAvant : 0;
        std::memset(static_cast<unsigned char*>(donnees) + gardes, 0, octetsApres - gardes);
        psa->pvData = donnees;
        NoteBloc(psa, octetsApres);
    }
    derniere.cElements = psaboundNew->cElements;
    derniere.lLbound = psaboundNew->lLbound;
    return S_OK;
}

HRESULT SafeArrayGetLBound(SAFEARRAY* psa, UINT nDim, LONG* plLbound) {
    if (!psa || !plLbound) return E_INVALIDARG;
    if (nDim == 0 || nDim > psa->cDims) return DISP_E_BADINDEX;
    *plLbound = psa->rgsabound[psa->cDims - nDim].lLbound;
    return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* psa, UINT nDim, LONG* plUbound) {
    if (!psa || !plUbound) return E_INVALIDARG;
    if (nDim == 0 || nDim > psa->cDims) return DISP_E_BADINDEX;
    const SAFEARRAYBOUND& borne = psa->rgsabound[psa->cDims - nDim];
    // Computed in 64 bits then wrapped, as Windows' 32-bit arithmetic gives it.
    *plUbound = static_cast<LONG>(static_cast<uint32_t>(int64_t{borne.lLbound} + borne.cElements - 1));
    return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* psa) {
    return psa ? psa->cDims : 0;
}

UINT SafeArrayGetElemsize(SAFEARRAY* psa) {
    return psa ? psa->cbElements : 0;
}

HRESULT SafeArrayGetVartype(SAFEARRAY* psa, VARTYPE* pvt) {
    if (!psa || !pvt) return E_INVALIDARG;
    if (psa->fFeatures & FADF_RECORD) *pvt = VT_RECORD;
    else if ((psa->fFeatures & (FADF_HAVEIID | FADF_DISPATCH)) == (FADF_HAVEIID | FADF_DISPATCH)) *pvt = VT_DISPATCH;
    else if (psa->fFeatures & FADF_HAVEIID) *pvt = VT_UNKNOWN;
    else if (psa->fFeatures & FADF_HAVEVARTYPE) *pvt = static_cast<VARTYPE>(TypeCache(psa));
    else if (psa->fFeatures & FADF_BSTR) *pvt = VT_BSTR;
    else if (psa->fFeatures & FADF_VARIANT) *pvt = VT_VARIANT;
    else return E_INVALIDARG;
    return S_OK;
}

HRESULT SafeArrayPtrOfIndex(SAFEARRAY* psa, LONG* rgIndices, void** ppvData) {
    if (!ppvData) return E_INVALIDARG;
    unsigned char* adresse = nullptr;
    HRESULT hr = AdresseElement(psa, rgIndices, &adresse);
    if (FAILED(hr)) return hr;
    *ppvData = adresse;
    return S_OK;
}

HRESULT SafeArrayGetElement(SAFEARRAY* psa, LONG* rgIndices, void* pv) {
    if (!pv) return E_INVALIDARG;
    unsigned char* element = nullptr;
    HRESULT hr = AdresseElement(psa, rgIndices, &element);
    if (FAILED(hr)) return hr;
    if (psa->fFeatures & FADF_BSTR) {
        BSTR source;
        std::memcpy(&source, element, sizeof source);
        BSTR copie = nullptr;
        if (source) {
            copie = SysAllocStringByteLen(reinterpret_cast<LPCSTR>(source), SysStringByteLen(source));
            if (!copie) return E_OUTOFMEMORY;
        }
        std::memcpy(pv, &copie, sizeof copie);
    } else {
        std::memcpy(pv, element, psa->cbElements);
    }
    return S_OK;
}

HRESULT SafeArrayPutElement(SAFEARRAY* psa, LONG* rgIndices, void* pv) {
    unsigned char* element = nullptr;
    HRESULT hr = AdresseElement(psa, rgIndices, &element);
    if (FAILED(hr)) return hr;
    if (psa->fFeatures & FADF_BSTR) {
        BSTR source = static_cast<BSTR>(pv);
        BSTR copie = nullptr;
        if (source) {
            copie = SysAllocStringByteLen(reinterpret_cast<LPCSTR>(source), SysStringByteLen(source));
            if (!copie) return E_OUTOFMEMORY;
        }
        BSTR ancienne;
        std::memcpy(&ancienne, element, sizeof ancienne);
        SysFreeString(ancienne);
        std::memcpy(element, &copie, sizeof copie);
    } else {
        if (!pv) return E_INVALIDARG;
        std::memcpy(element, pv, psa->cbElements);
    }
    return S_OK;
}

}  // extern "C"

namespace vdx::oleauto {

int64_t OctetsDuBloc(const SAFEARRAY* tableau) {
    if (!tableau || (tableau->fFeatures & MemoireHote)) return -1;
    Blocs& b = LesBlocs();
    const std::lock_guard<std::mutex> garde(b.verrou);
    const auto it = b.octets.find(tableau);
    return it == b.octets.end() ? -1 : static_cast<int64_t>(it->second);
}

}  // namespace vdx::oleauto

#endif  // !_WIN32
