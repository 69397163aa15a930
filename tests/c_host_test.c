/* A host written in C: it includes the public headers, connects to the base
 * given as its argument and lists the long-term illnesses in array mode,
 * through the host types, and in memory mode; then checks a prescription
 * for contra-indications with arrays of its own. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "vdx32/oleauto.h"
#include "vdx32/vdx32.h"

static int echecs = 0;

#define VERIFIE(condition)                                              \
    do {                                                                \
        if (!(condition)) {                                             \
            fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition); \
            ++echecs;                                                   \
        }                                                               \
    } while (0)

/* Connects in `mode`, or counts a failure and leaves the calling function. */
#define CONNECTE(base, mode)                                     \
    do {                                                         \
        VERIFIE(Connection_Vdx((base), (mode), 0) == 1);         \
        if (echecs) return;                                      \
    } while (0)

static int32_t VDX_CALL boite(void* contexte, const char* texte, const char* titre, int32_t style) {
    (void)texte;
    (void)titre;
    (void)style;
    ++*(int*)contexte;
    return 1;
}

static SAFEARRAY* tableau_de_fiches(ULONG taille) {
    SAFEARRAY* tableau = NULL;
    if (SafeArrayAllocDescriptor(1, &tableau) != S_OK) return NULL;
    tableau->cbElements = taille;
    tableau->rgsabound[0].cElements = 0;
    tableau->rgsabound[0].lLbound = 0;
    if (SafeArrayAllocData(tableau) != S_OK) return NULL;
    return tableau;
}

static void en_tableau(const char* base) {
    SAFEARRAY* tableau = tableau_de_fiches(sizeof(VdxCodeLibelle));
    VdxCodeLibelle fiche;
    LONG indice = 1;
    int32_t n;
    CONNECTE(base, 0);
    n = ListeALD_Vdx(&tableau);
    VERIFIE(n == 30);
    VERIFIE(SafeArrayGetUBound(tableau, 1, &indice) == S_OK && indice == n - 1);
    indice = 0;
    VERIFIE(SafeArrayGetElement(tableau, &indice, &fiche) == S_OK);
    VERIFIE(fiche.Code == 1);
    VERIFIE(SysStringByteLen(fiche.Libelle) > 0);
    VERIFIE(memcmp((const char*)fiche.Libelle, "Accident vasculaire", 19) == 0);
    {
        VdxCodeLibelle* fiches = NULL;
        int i;
        VERIFIE(SafeArrayAccessData(tableau, (void**)&fiches) == S_OK);
        for (i = 0; i < n; ++i) SysFreeString(fiches[i].Libelle);
        SafeArrayUnaccessData(tableau);
    }
    SafeArrayDestroy(tableau);
    DeConnection2_Vdx();
}

static void en_memoire(const char* base) {
    char* texte;
    int32_t longueur;
    CONNECTE(base, 2);
    VERIFIE(ListeALD_Vdx(NULL) == 30);
    longueur = GetLenString_Vdx();
    VERIFIE(longueur > 1);
    texte = malloc((size_t)longueur);
    VERIFIE(GetString_Vdx(texte) == 1);
    VERIFIE(strncmp(texte, "1@Accident vasculaire", 21) == 0);
    VERIFIE(strstr(texte, "\r\n30@") != NULL);
    free(texte);
    DeConnection2_Vdx();
}

/* A contra-indication check from arrays a C host makes: a woman 30 weeks
 * pregnant given an ibuprofen and pseudoephedrine product, without
 * pathology. */
static void contre_indications(const char* base) {
    SAFEARRAY* codes = SafeArrayCreateVector(VT_BSTR, 0, 0);
    SAFEARRAY* types = SafeArrayCreateVector(VT_I4, 0, 0);
    SAFEARRAY* valeurs = SafeArrayCreateVector(VT_I4, 0, 0);
    SAFEARRAY* produits = SafeArrayCreateVector(VT_BSTR, 0, 1);
    SAFEARRAY* alertes = tableau_de_fiches(sizeof(VdxAlerteCI));
    BSTR code = SysAllocStringByteLen("3436258", 7);
    LONG indice = 0;
    VdxAlerteCI* fiches = NULL;
    int32_t n, i;
    VERIFIE(SafeArrayPutElement(produits, &indice, code) == S_OK);
    CONNECTE(base, 0);
    n = ContreIndicationsProfil2_Vdx(&codes, &types, &valeurs, &produits, &alertes, 360, 60, 30, 0, "F");
    VERIFIE(n == 2);
    VERIFIE(SafeArrayAccessData(alertes, (void**)&fiches) == S_OK);
    VERIFIE(fiches[0].NiveauAlerte == 9 && fiches[0].ValeurPatient == -1);
    VERIFIE(memcmp((const char*)fiches[0].CodeTerme, "0000000202", 10) == 0);
    VERIFIE(SysStringByteLen(fiches[0].CodePatient) == 0);
    for (i = 0; i < n; ++i) {
        SysFreeString(fiches[i].CodeProduit);
        SysFreeString(fiches[i].LibelleProduit);
        SysFreeString(fiches[i].CodeTerme);
        SysFreeString(fiches[i].LibelleTerme);
        SysFreeString(fiches[i].CodePatient);
    }
    SafeArrayUnaccessData(alertes);
    VERIFIE(ContreIndicationsProfil2_Vdx(&codes, &types, &valeurs, &produits, NULL, 360, 60, 30, 0, "F") == -60);
    SafeArrayDestroy(alertes);
    SafeArrayDestroy(codes);
    SafeArrayDestroy(types);
    SafeArrayDestroy(valeurs);
    SafeArrayDestroy(produits);
    SysFreeString(code);
    DeConnection2_Vdx();
}

/* A reader of the base for `secondes` seconds, while another process may
 * rebuild it: each round connects, reads the illnesses in memory mode and
 * checks a prescription, then lets go. */
static void lit_pendant(const char* base, int secondes) {
    const time_t fin = time(NULL) + secondes;
    int tours = 0;
    do {
        en_memoire(base);
        contre_indications(base);
        ++tours;
    } while (time(NULL) < fin && echecs == 0);
    printf("%d rounds read\n", tours);
}

int main(int argc, char** argv) {
    int boites = 0;
    char erreur[300];
    if (argc < 2) {
        fprintf(stderr, "usage: %s BASE [--pendant SECONDES]\n", argv[0]);
        return 2;
    }
    if (argc == 4 && strcmp(argv[2], "--pendant") == 0) {
        lit_pendant(argv[1], atoi(argv[3]));
        return echecs == 0 ? 0 : 1;
    }
    InstalleNotifications_Vdx(boite, NULL, &boites);
    VERIFIE(ListeALD_Vdx(NULL) == VDX_NON_CONNECTE);
    en_tableau(argv[1]);
    en_memoire(argv[1]);
    contre_indications(argv[1]);
    VERIFIE(Connection_Vdx("/pas/de/base", 0, 0) == VDX_FICHIERS_MANQUANTS);
    VERIFIE(strncmp(GetLastError_Vdx(erreur), "Anomalie num", 12) == 0);
    return echecs == 0 ? 0 : 1;
}
