/*
 * Host types of VDX32: strings (BSTR) and arrays (SAFEARRAY) of OLE automation.
 *
 * On Windows this header is the system's own <oleauto.h>. Elsewhere it gives
 * the same names with the Windows layout and semantics, so that host code
 * written against the Windows automation API compiles and behaves the same.
 * Usable from C (C11) and C++. The functions are those of libvdx32; a host
 * uses them for the strings and arrays it hands to the library, and frees
 * what the library gives back with them.
 *
 * BSTR
 *   A BSTR points to the first character. The 4 bytes in front of it hold the
 *   length in bytes (not characters); behind the last byte stand two zero
 *   bytes, which are not counted. A BSTR may hold any bytes, NULs included,
 *   and an odd number of them (SysAllocStringByteLen): this is how the library
 *   hands 8-bit texts (code page 1252) to hosts that declare 8-bit strings.
 *   NULL is a valid, empty string for every function below.
 *
 * SAFEARRAY
 *   The descriptor has the Windows field layout. rgsabound is stored in
 *   reverse order, as on Windows: rgsabound[0] describes the last (right-most)
 *   dimension, the one SafeArrayRedim changes. Index lists (rgIndices) are
 *   given left-most dimension first; the left-most index varies fastest in
 *   memory. Data is zeroed when allocated or grown.
 *   cLocks counts accesses (SafeArrayAccessData, SafeArrayLock): while it is
 *   not 0, SafeArrayDestroy, SafeArrayDestroyData, SafeArrayDestroyDescriptor
 *   and SafeArrayRedim fail with DISP_E_ARRAYISLOCKED.
 *   Elements are released (on destroy, on a shrinking redim) and copied
 *   deeply (Get/PutElement) only in arrays with FADF_BSTR: their elements are
 *   BSTRs. There is no IUnknown, IDispatch, VARIANT nor IRecordInfo here:
 *   elements of FADF_UNKNOWN, FADF_DISPATCH, FADF_VARIANT and FADF_RECORD
 *   arrays are opaque bytes, copied shallowly and never released. Whoever
 *   puts strings into such an array frees them before destroying it.
 *   Arrays flagged FADF_AUTO, FADF_STATIC or FADF_EMBEDDED live in the
 *   host's memory, not the library's: SafeArrayDestroyDescriptor leaves
 *   their descriptor alone, SafeArrayDestroyData releases and zeroes their
 *   elements but keeps the memory, and SafeArrayRedim can't grow them.
 *   SafeArrayCreateVector allocates data and descriptor apart, and does not
 *   set FADF_CREATEVECTOR.
 *
 * Arrays of records (the library's "array of a record shape")
 *   A record is a one-dimensional SAFEARRAY, lower bound 0, whose element is
 *   a fixed sequence of fields. Each field occupies one slot of
 *   sizeof(void*) bytes on the build platform: 4 bytes on 32-bit hosts (the
 *   Windows 32-bit layout), 8 bytes on 64-bit hosts. The element size is
 *   therefore (number of fields) * sizeof(void*), whatever the fields are.
 *     - A string field is a BSTR filling its slot.
 *     - An integer field is a 32-bit signed integer in the first 4 bytes of
 *       its slot (its low half on the little-endian platforms VDX32 is built
 *       for). The library reads only those 4 bytes, and writes the value
 *       sign-extended over the whole slot.
 *   So a C host declares a record as a struct with one member per field, in
 *   order: BSTR for a string, and for an integer a pointer-sized integer
 *   (intptr_t), or an int32_t followed by padding up to the next slot.
 *   Beware: two int32_t members in a row share one 8-byte slot on a 64-bit
 *   host; intptr_t never does. For instance:
 *       typedef struct { intptr_t Code; BSTR Libelle; } FicheCodeLibelle;
 *   (16 bytes on a 64-bit host, 8 on a 32-bit one.)
 *   SafeArrayCreate cannot make such an array (VT_RECORD needs IRecordInfo,
 *   as on Windows); make it so:
 *       SAFEARRAY* psa = NULL;
 *       SafeArrayAllocDescriptor(1, &psa);
 *       psa->cbElements = sizeof(FicheCodeLibelle);
 *       psa->rgsabound[0].lLbound = 0;
 *       psa->rgsabound[0].cElements = 0;
 *       SafeArrayAllocData(psa);
 *   The library empties and refills a host's array in place; the BSTRs it
 *   leaves there belong to the host, which frees each with SysFreeString
 *   before SafeArrayDestroy (the array has no FADF_BSTR to do it).
 *   A descriptor made by these functions keeps the size of its data block:
 *   its data must come from SafeArrayAllocData or SafeArrayRedim, and its
 *   bounds must not claim more elements than that block holds, or the
 *   library refuses the array with its code (-21 for a result array, the
 *   argument's code for an input list) rather than read or write past it.
 *   A hand-made descriptor whose memory the host owns carries FADF_STATIC,
 *   FADF_AUTO or FADF_EMBEDDED: its bounds are then taken as given, and the
 *   host answers for them. A locked array (SafeArrayLock) is refused with
 *   -21 and left exactly as it was.
 *
 * Errors are HRESULTs, as on Windows: S_OK, E_INVALIDARG, E_OUTOFMEMORY,
 * DISP_E_BADINDEX, DISP_E_ARRAYISLOCKED, E_UNEXPECTED. Functions returning a
 * pointer return NULL on failure. Nothing is thread-safe: like the library,
 * these are called from one thread at a time for a given string or array.
 */
#ifndef VDX32_OLEAUTO_H
#define VDX32_OLEAUTO_H

#ifdef _WIN32

#include <windows.h>
#include <oleauto.h>

#else /* !_WIN32 */

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__) || defined(__clang__)
#define VDX_OLEAUTO_API __attribute__((visibility("default")))
#else
#define VDX_OLEAUTO_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Types, with the widths of the Windows API. */
#ifdef __cplusplus
typedef char16_t OLECHAR;
#else
typedef uint16_t OLECHAR; /* the type of u"..." in C11 */
#endif
typedef OLECHAR* BSTR;
typedef OLECHAR* LPOLESTR;
typedef const OLECHAR* LPCOLESTR;
typedef const char* LPCSTR;
typedef int32_t HRESULT;
typedef int32_t LONG;
typedef uint32_t ULONG;
typedef uint16_t USHORT;
typedef unsigned int UINT;
typedef int INT;
typedef void* PVOID;
typedef unsigned short VARTYPE;

#ifndef OLESTR
#define OLESTR(s) u##s
#endif
#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

#ifndef SUCCEEDED
#define SUCCEEDED(hr) (((HRESULT)(hr)) >= 0)
#endif
#ifndef FAILED
#define FAILED(hr) (((HRESULT)(hr)) < 0)
#endif

#define S_OK ((HRESULT)0)
#define S_FALSE ((HRESULT)1)
#define E_UNEXPECTED ((HRESULT)0x8000FFFF)
#define E_POINTER ((HRESULT)0x80004003)
#define E_OUTOFMEMORY ((HRESULT)0x8007000E)
#define E_INVALIDARG ((HRESULT)0x80070057)
#define DISP_E_BADVARTYPE ((HRESULT)0x80020008)
#define DISP_E_BADINDEX ((HRESULT)0x8002000B)
#define DISP_E_ARRAYISLOCKED ((HRESULT)0x8002000D)

/* Variant types an array can be created for (SafeArrayCreate). VT_VARIANT,
 * VT_RECORD and the others not listed with a size in oleauto.cpp are refused. */
enum VARENUM {
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_R8 = 5,
    VT_CY = 6,
    VT_DATE = 7,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12,
    VT_UNKNOWN = 13,
    VT_DECIMAL = 14,
    VT_I1 = 16,
    VT_UI1 = 17,
    VT_UI2 = 18,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_INT = 22,
    VT_UINT = 23,
    VT_RECORD = 36
};

/* The features word of an array. */
#define FADF_AUTO 0x0001
#define FADF_STATIC 0x0002
#define FADF_EMBEDDED 0x0004
#define FADF_FIXEDSIZE 0x0010
#define FADF_RECORD 0x0020
#define FADF_HAVEIID 0x0040
#define FADF_HAVEVARTYPE 0x0080
#define FADF_BSTR 0x0100
#define FADF_UNKNOWN 0x0200
#define FADF_DISPATCH 0x0400
#define FADF_VARIANT 0x0800
#define FADF_RESERVED 0xF008

typedef struct tagSAFEARRAYBOUND {
    ULONG cElements;
    LONG lLbound;
} SAFEARRAYBOUND, *LPSAFEARRAYBOUND;

typedef struct tagSAFEARRAY {
    USHORT cDims;
    USHORT fFeatures;
    ULONG cbElements;
    ULONG cLocks;
    PVOID pvData;
    SAFEARRAYBOUND rgsabound[1];
} SAFEARRAY, *LPSAFEARRAY;

/* Strings. */

/* A copy of a NUL-terminated string; NULL for NULL. */
VDX_OLEAUTO_API BSTR SysAllocString(const OLECHAR* psz);
/* A string of ui characters copied from strIn (NULs included), or left
 * uninitialised if strIn is NULL; terminated. */
VDX_OLEAUTO_API BSTR SysAllocStringLen(const OLECHAR* strIn, UINT ui);
/* A string of len bytes copied from psz (no conversion, NULs included), or
 * left uninitialised if psz is NULL; followed by two zero bytes. */
VDX_OLEAUTO_API BSTR SysAllocStringByteLen(LPCSTR psz, UINT len);
/* Replaces *pbstr by a copy of psz (an empty string if psz is NULL); psz may
 * point into *pbstr. TRUE, or FALSE if pbstr is NULL or memory fails, in
 * which case *pbstr is unchanged. */
VDX_OLEAUTO_API INT SysReAllocString(BSTR* pbstr, const OLECHAR* psz);
/* Same with a length in characters; psz NULL leaves the characters
 * uninitialised. */
VDX_OLEAUTO_API INT SysReAllocStringLen(BSTR* pbstr, const OLECHAR* psz, UINT len);
VDX_OLEAUTO_API void SysFreeString(BSTR bstrString);
/* Length in characters: the byte length halved, rounded down. */
VDX_OLEAUTO_API UINT SysStringLen(BSTR pbstr);
VDX_OLEAUTO_API UINT SysStringByteLen(BSTR bstr);

/* Arrays. */

VDX_OLEAUTO_API SAFEARRAY* SafeArrayCreate(VARTYPE vt, UINT cDims, SAFEARRAYBOUND* rgsabound);
VDX_OLEAUTO_API SAFEARRAY* SafeArrayCreateVector(VARTYPE vt, LONG lLbound, ULONG cElements);
/* A zeroed descriptor of cDims dimensions (1 to 65535), without data. */
VDX_OLEAUTO_API HRESULT SafeArrayAllocDescriptor(UINT cDims, SAFEARRAY** ppsaOut);
/* Allocates zeroed data for the bounds and element size of the descriptor.
 * As on Windows, data already there is not freed. */
VDX_OLEAUTO_API HRESULT SafeArrayAllocData(SAFEARRAY* psa);
/* Data then descriptor. S_OK for NULL. */
VDX_OLEAUTO_API HRESULT SafeArrayDestroy(SAFEARRAY* psa);
VDX_OLEAUTO_API HRESULT SafeArrayDestroyData(SAFEARRAY* psa);
VDX_OLEAUTO_API HRESULT SafeArrayDestroyDescriptor(SAFEARRAY* psa);
VDX_OLEAUTO_API HRESULT SafeArrayLock(SAFEARRAY* psa);
VDX_OLEAUTO_API HRESULT SafeArrayUnlock(SAFEARRAY* psa);
/* Locks the array and gives its data. */
VDX_OLEAUTO_API HRESULT SafeArrayAccessData(SAFEARRAY* psa, void** ppvData);
VDX_OLEAUTO_API HRESULT SafeArrayUnaccessData(SAFEARRAY* psa);
/* New bound of the last (right-most) dimension, rgsabound[0]. Elements kept
 * up to the new count, elements cut off released (FADF_BSTR), new ones
 * zeroed. E_INVALIDARG for FADF_FIXEDSIZE arrays. */
VDX_OLEAUTO_API HRESULT SafeArrayRedim(SAFEARRAY* psa, SAFEARRAYBOUND* psaboundNew);
/* Dimensions are numbered from 1, left-most first; DISP_E_BADINDEX outside.
 * The upper bound of an empty dimension is its lower bound minus 1. */
VDX_OLEAUTO_API HRESULT SafeArrayGetLBound(SAFEARRAY* psa, UINT nDim, LONG* plLbound);
VDX_OLEAUTO_API HRESULT SafeArrayGetUBound(SAFEARRAY* psa, UINT nDim, LONG* plUbound);
VDX_OLEAUTO_API UINT SafeArrayGetDim(SAFEARRAY* psa);
VDX_OLEAUTO_API UINT SafeArrayGetElemsize(SAFEARRAY* psa);
VDX_OLEAUTO_API HRESULT SafeArrayGetVartype(SAFEARRAY* psa, VARTYPE* pvt);
/* Address of an element; DISP_E_BADINDEX for an index out of bounds. */
VDX_OLEAUTO_API HRESULT SafeArrayPtrOfIndex(SAFEARRAY* psa, LONG* rgIndices, void** ppvData);
/* Copies an element into pv. In a FADF_BSTR array, pv receives a new copy of
 * the string (NULL stays NULL), to be freed by the caller. */
VDX_OLEAUTO_API HRESULT SafeArrayGetElement(SAFEARRAY* psa, LONG* rgIndices, void* pv);
/* Copies pv into an element. In a FADF_BSTR array, pv is the BSTR itself (not
 * its address): the element's old string is freed and a copy of pv stored. */
VDX_OLEAUTO_API HRESULT SafeArrayPutElement(SAFEARRAY* psa, LONG* rgIndices, void* pv);

#ifdef __cplusplus
}
#endif

#endif /* _WIN32 */

#endif /* VDX32_OLEAUTO_H */
