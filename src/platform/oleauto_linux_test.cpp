#include "vdx32/oleauto.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace {

// The Windows layout, for 32-bit and 64-bit builds alike.
static_assert(sizeof(OLECHAR) == 2);
static_assert(sizeof(SAFEARRAYBOUND) == 8);
static_assert(offsetof(SAFEARRAY, cbElements) == 4);
static_assert(offsetof(SAFEARRAY, cLocks) == 8);
static_assert(offsetof(SAFEARRAY, pvData) == (sizeof(void*) == 8 ? 16 : 12));
static_assert(offsetof(SAFEARRAY, rgsabound) == (sizeof(void*) == 8 ? 24 : 16));

uint32_t Prefixe(BSTR b) {
    uint32_t n;
    std::memcpy(&n, reinterpret_cast<const char*>(b) - 4, 4);
    return n;
}

std::u16string Texte(BSTR b) { return std::u16string(b, SysStringLen(b)); }

// --- Strings ---

TEST(Bstr, PrefixeEnOctetsEtTerminateur) {
    BSTR b = SysAllocString(u"abc");
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(Prefixe(b), 6u);
    EXPECT_EQ(SysStringByteLen(b), 6u);
    EXPECT_EQ(SysStringLen(b), 3u);
    EXPECT_EQ(b[3], 0);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(b) % alignof(OLECHAR), 0u);
    SysFreeString(b);

    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    EXPECT_EQ(SysStringByteLen(nullptr), 0u);
    SysFreeString(nullptr);
}

TEST(Bstr, LongueurDonneeGardeLesNul) {
    BSTR b = SysAllocStringLen(u"ab\0cd", 5);
    EXPECT_EQ(SysStringLen(b), 5u);
    EXPECT_EQ(Texte(b), std::u16string(u"ab\0cd", 5));
    EXPECT_EQ(b[5], 0);
    SysFreeString(b);

    // No source: room for the characters, terminated.
    BSTR vide = SysAllocStringLen(nullptr, 4);
    ASSERT_NE(vide, nullptr);
    EXPECT_EQ(SysStringLen(vide), 4u);
    EXPECT_EQ(vide[4], 0);
    SysFreeString(vide);

    BSTR zero = SysAllocStringLen(u"xyz", 0);
    ASSERT_NE(zero, nullptr);
    EXPECT_EQ(SysStringLen(zero), 0u);
    EXPECT_EQ(zero[0], 0);
    SysFreeString(zero);
}

TEST(Bstr, LongueurEnOctets) {
    // The way 8-bit texts reach hosts: odd lengths and embedded NULs kept.
    const char octets[] = {'a', '\0', '\xE9', 'b', 'c'};
    BSTR b = SysAllocStringByteLen(octets, 5);
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(SysStringByteLen(b), 5u);
    EXPECT_EQ(SysStringLen(b), 2u);
    EXPECT_EQ(std::memcmp(b, octets, 5), 0);
    const auto* brut = reinterpret_cast<const unsigned char*>(b);
    EXPECT_EQ(brut[5], 0);
    EXPECT_EQ(brut[6], 0);
    SysFreeString(b);

    BSTR sans = SysAllocStringByteLen(nullptr, 3);
    ASSERT_NE(sans, nullptr);
    EXPECT_EQ(SysStringByteLen(sans), 3u);
    EXPECT_EQ(reinterpret_cast<const unsigned char*>(sans)[3], 0);
    SysFreeString(sans);

    BSTR vide = SysAllocStringByteLen("", 0);
    ASSERT_NE(vide, nullptr);
    EXPECT_EQ(SysStringByteLen(vide), 0u);
    SysFreeString(vide);
}

TEST(Bstr, ReAlloc) {
    BSTR b = SysAllocString(u"premier");
    EXPECT_EQ(SysReAllocString(&b, u"second texte"), TRUE);
    EXPECT_EQ(Texte(b), u"second texte");

    // The source may be the string itself.
    EXPECT_EQ(SysReAllocString(&b, b + 7), TRUE);
    EXPECT_EQ(Texte(b), u"texte");
    EXPECT_EQ(SysReAllocStringLen(&b, b + 1, 3), TRUE);
    EXPECT_EQ(Texte(b), u"ext");

    // A null source empties: the frame empties host strings so.
    EXPECT_EQ(SysReAllocString(&b, nullptr), TRUE);
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(SysStringLen(b), 0u);
    SysFreeString(b);

    BSTR nul = nullptr;
    EXPECT_EQ(SysReAllocString(&nul, u"x"), TRUE);
    EXPECT_EQ(Texte(nul), u"x");
    SysFreeString(nul);

    EXPECT_EQ(SysReAllocString(nullptr, u"x"), FALSE);
}

// --- Arrays ---

TEST(SafeArray, VecteurNeuf) {
    SAFEARRAY* t = SafeArrayCreateVector(VT_I4, 0, 3);
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(SafeArrayGetDim(t), 1u);
    EXPECT_EQ(SafeArrayGetElemsize(t), 4u);
    EXPECT_EQ(t->fFeatures, FADF_HAVEVARTYPE);
    VARTYPE vt = 0;
    EXPECT_EQ(SafeArrayGetVartype(t, &vt), S_OK);
    EXPECT_EQ(vt, VT_I4);
    LONG bas = -1, haut = -1;
    EXPECT_EQ(SafeArrayGetLBound(t, 1, &bas), S_OK);
    EXPECT_EQ(SafeArrayGetUBound(t, 1, &haut), S_OK);
    EXPECT_EQ(bas, 0);
    EXPECT_EQ(haut, 2);
    EXPECT_EQ(SafeArrayGetLBound(t, 0, &bas), DISP_E_BADINDEX);
    EXPECT_EQ(SafeArrayGetUBound(t, 2, &haut), DISP_E_BADINDEX);
    const auto* d = static_cast<const int32_t*>(t->pvData);
    EXPECT_EQ(d[0] | d[1] | d[2], 0);
    EXPECT_EQ(SafeArrayDestroy(t), S_OK);

    SAFEARRAY* b = SafeArrayCreateVector(VT_BSTR, 0, 1);
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(b->fFeatures, FADF_BSTR | FADF_HAVEVARTYPE);
    EXPECT_EQ(b->cbElements, sizeof(BSTR));
    SafeArrayDestroy(b);
}

TEST(SafeArray, BorneHauteDUnVecteurVide) {
    SAFEARRAY* t = SafeArrayCreateVector(VT_I4, 0, 0);
    ASSERT_NE(t, nullptr);
    LONG haut = 0;
    EXPECT_EQ(SafeArrayGetUBound(t, 1, &haut), S_OK);
    EXPECT_EQ(haut, -1);
    SafeArrayDestroy(t);

    t = SafeArrayCreateVector(VT_I4, 5, 0);
    EXPECT_EQ(SafeArrayGetUBound(t, 1, &haut), S_OK);
    EXPECT_EQ(haut, 4);
    SafeArrayDestroy(t);
}

TEST(SafeArray, RedimGardeCoupeEtRemetAZero) {
    SAFEARRAY* t = SafeArrayCreateVector(VT_I4, 0, 2);
    for (LONG i = 0; i < 2; ++i) {
        int32_t v = 10 + i;
        ASSERT_EQ(SafeArrayPutElement(t, &i, &v), S_OK);
    }
    SAFEARRAYBOUND borne{5, 0};
    ASSERT_EQ(SafeArrayRedim(t, &borne), S_OK);
    auto* d = static_cast<int32_t*>(t->pvData);
    EXPECT_EQ(d[0], 10);
    EXPECT_EQ(d[1], 11);
    EXPECT_EQ(d[2] | d[3] | d[4], 0);

    // Shrink, then grow: what was cut off must not come back.
    d[4] = 99;
    borne = {1, 0};
    ASSERT_EQ(SafeArrayRedim(t, &borne), S_OK);
    borne = {5, 0};
    ASSERT_EQ(SafeArrayRedim(t, &borne), S_OK);
    d = static_cast<int32_t*>(t->pvData);
    EXPECT_EQ(d[0], 10);
    EXPECT_EQ(d[1] | d[4], 0);

    borne = {0, 0};
    ASSERT_EQ(SafeArrayRedim(t, &borne), S_OK);
    LONG haut = 0;
    SafeArrayGetUBound(t, 1, &haut);
    EXPECT_EQ(haut, -1);
    void* donnees = nullptr;
    EXPECT_EQ(SafeArrayAccessData(t, &donnees), S_OK);
    EXPECT_NE(donnees, nullptr);
    SafeArrayUnaccessData(t);

    // The new lower bound is taken.
    borne = {2, 1};
    ASSERT_EQ(SafeArrayRedim(t, &borne), S_OK);
    LONG bas = 0;
    SafeArrayGetLBound(t, 1, &bas);
    EXPECT_EQ(bas, 1);
    EXPECT_EQ(SafeArrayDestroy(t), S_OK);
}

TEST(SafeArray, RedimRefuseTailleFixe) {
    SAFEARRAY* t = SafeArrayCreateVector(VT_I4, 0, 2);
    t->fFeatures |= FADF_FIXEDSIZE;
    SAFEARRAYBOUND borne{3, 0};
    EXPECT_EQ(SafeArrayRedim(t, &borne), E_INVALIDARG);
    EXPECT_EQ(t->rgsabound[0].cElements, 2u);
    SafeArrayDestroy(t);
}

TEST(SafeArray, VerrousEmpechentDestructionEtRedim) {
    SAFEARRAY* t = SafeArrayCreateVector(VT_BSTR, 0, 1);
    void* donnees = nullptr;
    ASSERT_EQ(SafeArrayAccessData(t, &donnees), S_OK);
    EXPECT_EQ(donnees, t->pvData);
    EXPECT_EQ(t->cLocks, 1u);
    SAFEARRAYBOUND borne{4, 0};
    EXPECT_EQ(SafeArrayRedim(t, &borne), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(SafeArrayDestroy(t), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(SafeArrayDestroyData(t), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(SafeArrayDestroyDescriptor(t), DISP_E_ARRAYISLOCKED);
    EXPECT_NE(t->pvData, nullptr);

    // Elements can still be read and written under an access.
    LONG i = 0;
    BSTR s = SysAllocString(u"x");
    EXPECT_EQ(SafeArrayPutElement(t, &i, s), S_OK);
    SysFreeString(s);

    // Accesses count.
    ASSERT_EQ(SafeArrayAccessData(t, &donnees), S_OK);
    EXPECT_EQ(SafeArrayUnaccessData(t), S_OK);
    EXPECT_EQ(SafeArrayDestroy(t), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(SafeArrayUnaccessData(t), S_OK);
    EXPECT_EQ(SafeArrayUnaccessData(t), E_UNEXPECTED);
    EXPECT_EQ(SafeArrayDestroy(t), S_OK);
    EXPECT_EQ(SafeArrayDestroy(nullptr), S_OK);
}

TEST(SafeArray, ElementsHorsBornes) {
    SAFEARRAY* t = SafeArrayCreateVector(VT_I4, 1, 3);  // indices 1 to 3
    int32_t v = 7;
    for (LONG i : {0, 4, -1, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(SafeArrayPutElement(t, &i, &v), DISP_E_BADINDEX) << i;
        EXPECT_EQ(SafeArrayGetElement(t, &i, &v), DISP_E_BADINDEX) << i;
    }
    LONG i = 3;
    EXPECT_EQ(SafeArrayPutElement(t, &i, &v), S_OK);
    EXPECT_EQ(static_cast<int32_t*>(t->pvData)[2], 7);
    int32_t lu = 0;
    EXPECT_EQ(SafeArrayGetElement(t, &i, &lu), S_OK);
    EXPECT_EQ(lu, 7);
    SafeArrayDestroy(t);

    SAFEARRAY* vide = SafeArrayCreateVector(VT_I4, 0, 0);
    i = 0;
    EXPECT_EQ(SafeArrayGetElement(vide, &i, &lu), DISP_E_BADINDEX);
    SafeArrayDestroy(vide);
}

TEST(SafeArray, ElementsChainesCopiesEtLiberes) {
    SAFEARRAY* t = SafeArrayCreateVector(VT_BSTR, 0, 3);
    const char octets[] = {'\xE9', 't', '\xE9'};
    BSTR source = SysAllocStringByteLen(octets, 3);
    LONG i = 0;
    ASSERT_EQ(SafeArrayPutElement(t, &i, source), S_OK);
    BSTR* elements = static_cast<BSTR*>(t->pvData);
    EXPECT_NE(elements[0], source);  // a copy, byte length kept
    EXPECT_EQ(SysStringByteLen(elements[0]), 3u);
    SysFreeString(source);

    BSTR lu = nullptr;
    ASSERT_EQ(SafeArrayGetElement(t, &i, &lu), S_OK);
    EXPECT_NE(lu, elements[0]);
    EXPECT_EQ(std::memcmp(lu, octets, 3), 0);
    EXPECT_EQ(SysStringByteLen(lu), 3u);
    SysFreeString(lu);

    // Replacing frees the old string; a null element reads as null.
    BSTR autre = SysAllocString(u"autre");
    ASSERT_EQ(SafeArrayPutElement(t, &i, autre), S_OK);
    SysFreeString(autre);
    i = 2;
    BSTR coupee = SysAllocString(u"coupee");
    ASSERT_EQ(SafeArrayPutElement(t, &i, coupee), S_OK);
    SysFreeString(coupee);
    i = 1;
    lu = reinterpret_cast<BSTR>(1);
    ASSERT_EQ(SafeArrayGetElement(t, &i, &lu), S_OK);
    EXPECT_EQ(lu, nullptr);

    // Cut elements and, at the end, all of them are freed (the sanitizer
    // build tells a leak).
    SAFEARRAYBOUND borne{1, 0};
    ASSERT_EQ(SafeArrayRedim(t, &borne), S_OK);
    EXPECT_EQ(Texte(static_cast<BSTR*>(t->pvData)[0]), u"autre");
    EXPECT_EQ(SafeArrayDestroy(t), S_OK);
}

TEST(SafeArray, PlusieursDimensionsALaWindows) {
    SAFEARRAYBOUND bornes[2] = {{2, 0}, {3, 10}};  // a(0 To 1, 10 To 12)
    SAFEARRAY* t = SafeArrayCreate(VT_I4, 2, bornes);
    ASSERT_NE(t, nullptr);
    // Stored the other way round: rgsabound[0] is the right-most dimension.
    EXPECT_EQ(t->rgsabound[0].cElements, 3u);
    EXPECT_EQ(t->rgsabound[0].lLbound, 10);
    LONG bas = 0, haut = 0;
    SafeArrayGetLBound(t, 2, &bas);
    SafeArrayGetUBound(t, 2, &haut);
    EXPECT_EQ(bas, 10);
    EXPECT_EQ(haut, 12);

    // The left-most index varies fastest.
    LONG indices[2] = {1, 10};
    int32_t v = 5;
    ASSERT_EQ(SafeArrayPutElement(t, indices, &v), S_OK);
    indices[0] = 0;
    indices[1] = 11;
    v = 6;
    ASSERT_EQ(SafeArrayPutElement(t, indices, &v), S_OK);
    auto* d = static_cast<int32_t*>(t->pvData);
    EXPECT_EQ(d[1], 5);
    EXPECT_EQ(d[2], 6);
    indices[1] = 13;
    EXPECT_EQ(SafeArrayPutElement(t, indices, &v), DISP_E_BADINDEX);

    // Redim changes the right-most dimension and keeps the elements.
    SAFEARRAYBOUND derniere{4, 10};
    ASSERT_EQ(SafeArrayRedim(t, &derniere), S_OK);
    d = static_cast<int32_t*>(t->pvData);
    EXPECT_EQ(d[1], 5);
    EXPECT_EQ(d[2], 6);
    EXPECT_EQ(d[6] | d[7], 0);
    SafeArrayDestroy(t);
}

TEST(SafeArray, TableauDeFichesDUnHote) {
    // VT_RECORD needs IRecordInfo, as on Windows.
    EXPECT_EQ(SafeArrayCreateVector(VT_RECORD, 0, 1), nullptr);
    SAFEARRAYBOUND borne{1, 0};
    EXPECT_EQ(SafeArrayCreate(VT_RECORD, 1, &borne), nullptr);
    EXPECT_EQ(SafeArrayCreate(VT_I4, 0, &borne), nullptr);

    // The recipe of oleauto.h.
    struct Fiche {
        intptr_t Code;
        BSTR Libelle;
    };
    static_assert(sizeof(Fiche) == 2 * sizeof(void*));
    SAFEARRAY* t = nullptr;
    ASSERT_EQ(SafeArrayAllocDescriptor(1, &t), S_OK);
    EXPECT_EQ(t->fFeatures, 0);
    EXPECT_EQ(t->pvData, nullptr);
    t->cbElements = sizeof(Fiche);
    t->rgsabound[0] = {2, 0};
    ASSERT_EQ(SafeArrayAllocData(t), S_OK);
    Fiche f{42, SysAllocString(u"quarante-deux")};
    LONG i = 1;
    ASSERT_EQ(SafeArrayPutElement(t, &i, &f), S_OK);  // a shallow copy
    Fiche lue{};
    ASSERT_EQ(SafeArrayGetElement(t, &i, &lue), S_OK);
    EXPECT_EQ(lue.Code, 42);
    EXPECT_EQ(lue.Libelle, f.Libelle);
    // The array does not own the strings of its records.
    EXPECT_EQ(SafeArrayDestroy(t), S_OK);
    SysFreeString(f.Libelle);

    EXPECT_EQ(SafeArrayAllocDescriptor(0, &t), E_INVALIDARG);
    EXPECT_EQ(SafeArrayAllocDescriptor(1, nullptr), E_INVALIDARG);
}

TEST(SafeArray, MemoireDeLHoteNonLiberee) {
    // A descriptor and data on the host's stack.
    int32_t donnees[2] = {1, 2};
    SAFEARRAY t{};
    t.cDims = 1;
    t.fFeatures = FADF_AUTO | FADF_FIXEDSIZE;
    t.cbElements = 4;
    t.pvData = donnees;
    t.rgsabound[0] = {2, 0};
    EXPECT_EQ(SafeArrayDestroy(&t), S_OK);
    EXPECT_EQ(t.pvData, donnees);
    EXPECT_EQ(donnees[0] | donnees[1], 0);
}

}  // namespace
