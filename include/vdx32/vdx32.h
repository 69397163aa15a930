/*
 * VDX32: the medicine-information library, its exported functions.
 *
 * A host calls Connection_Vdx once with the base directory, then any export,
 * then DeConnection_Vdx. Every export returns a signed 32-bit code: 1 or a
 * count for success, 0 for nothing, a negative code for a failure (the
 * VDX_* codes below). Texts are NUL-terminated 8-bit strings in code page
 * 1252. The library is not thread-safe: a host calls it from one thread at a
 * time.
 *
 * Results come back by the output mode chosen at connection:
 *   0  into the host's strings (BSTR) and arrays of records (SAFEARRAY);
 *   1  as one flat text in the user's shared text slot;
 *   2  as one flat text in memory, fetched with GetLenString_Vdx and
 *      GetString_Vdx or GetString2_Vdx;
 *   3  as one flat text in the file "Vdxout.txt" of the base directory.
 * A flat text has one row per record, rows separated by CR LF, fields by
 * "@"; a row made of one empty field reads "#".
 *
 * Arrays of records (mode 0) are one-dimensional SAFEARRAYs whose element is
 * a record of fields in order, each field a BSTR or a 32-bit integer in a
 * slot of the size of a pointer (see oleauto.h: declare integers as intptr_t,
 * or int32_t followed by padding up to the next slot). A host creates the
 * array with SafeArrayAllocDescriptor, sets cbElements to the record's size,
 * then SafeArrayAllocData, and owns it; an export empties and refills it. Strings the library stores in array records are wide (UTF-16) when
 * the session was connected with ChainesUnicode 1 in mode 0, and otherwise
 * hold the 8-bit bytes of the text, their byte length being the text's.
 * Single text results (labels, versions) always hold 8-bit bytes.
 *
 * The exports that need no connection say so; the others return
 * VDX_NON_CONNECTE (-2) before a connection.
 */
#ifndef VDX32_VDX32_H
#define VDX32_VDX32_H

#include <stdint.h>

#include "vdx32/oleauto.h"

#if defined(_WIN32)
#  define VDX_CALL __stdcall
#  if defined(VDX32_CONSTRUCTION)
#    define VDX_API __declspec(dllexport)
#  else
#    define VDX_API __declspec(dllimport)
#  endif
#else
#  define VDX_CALL
#  define VDX_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Return codes. */
enum {
    VDX_SUCCES = 1,
    VDX_RIEN = 0,
    VDX_MAGASIN_NON_INITIALISE = -1,
    VDX_NON_CONNECTE = -2,
    VDX_RECHERCHE_TROP_COURTE = -3,
    VDX_MEDECIN_NON_CONNECTE = -4,
    VDX_MEDECIN_EN_USAGE = -5,
    VDX_FICHIERS_MANQUANTS = -6,
    VDX_MEDECIN_DEJA_CONNECTE = -7,
    VDX_ARGUMENT1 = -10,
    VDX_LISTE_VIDE = -12,
    VDX_CODE_MAL_FORME = -13,
    VDX_POSOLOGIE_INCOMPLETE = -14,
    VDX_PRODUIT_POSOLOGIE = -16,
    VDX_ARGUMENT2 = -20,
    VDX_OPERATION_TABLEAU = -21,
    VDX_ELEMENT_SANS_VALEUR = -22,
    VDX_ARGUMENT3 = -30,
    VDX_ARGUMENT4 = -40,
    VDX_ARGUMENT5 = -50,
    VDX_ARGUMENT6 = -60,
    VDX_ARGUMENT7 = -70,
    VDX_CODE_INCONNU = -90,
    VDX_DEJA_PRESENT = -91,
    VDX_AUTRE_CODE = -92,
    VDX_FICHE_MANQUANTE = -100,
    VDX_MEMOIRE = -200,
    VDX_ECRITURE_IMPOSSIBLE = -300,
    VDX_ECHEC_MAGASIN = -500,
    VDX_LISTE_MOTS_ILLISIBLE = -1998,
    VDX_LISTE_MOTS_INTRAITABLE = -1999,
    VDX_ERREUR_INTERNE = -2000
};

/* ---- Session ---------------------------------------------------------- */

/* Connects to the base in Chemin (a directory holding VDXPRO.DAT and
 * VDXPRO.NDX; a final "/" or "\" is optional) with an output mode (0 to 3)
 * and ChainesUnicode (1: wide strings in arrays, mode 0 only). Gives advice
 * by message box when the base is more than five months old or not of this
 * library's version. Once connected, a further call keeps the first base and
 * mode and only gives the advice again.
 * 1; -10 no directory or a name of 515 bytes or more; -6 VDXPRO missing;
 * -1 the store can't start; -100 or -500 the base's version can't be read. */
VDX_API int32_t VDX_CALL Connection_Vdx(const char* Chemin, int32_t ModeSortie, int32_t ChainesUnicode);
/* The same without advice and without looking for the agent. */
VDX_API int32_t VDX_CALL Connection2_Vdx(const char* Chemin, int32_t ModeSortie, int32_t ChainesUnicode);
/* Closes the doctor's base and frees the memory text; the session stays
 * connected to its base. */
VDX_API void VDX_CALL DeConnection_Vdx(void);
/* DeConnection_Vdx, and ends the session: the next connection reads its
 * arguments again. */
VDX_API void VDX_CALL DeConnection2_Vdx(void);

/* Writes "Anomalie numéro : N sur le fichier : F" (code page 1252) to
 * Tampon, which must hold 300 bytes, and returns it. Needs no connection. */
VDX_API char* VDX_CALL GetLastError_Vdx(char* Tampon);

/* The base's version label and date, as a record of two strings. */
typedef struct VdxVersion {
    BSTR Version;
    BSTR DateVersion;
} VdxVersion;
/* Mode 0: fills *Fiche; other modes: one row "version@date". 1; -100 a
 * version record is missing; -500. */
VDX_API int32_t VDX_CALL Version_Vdx(VdxVersion* Fiche);
/* The version of the data files ("4.6.2.0"). 1; -100; -500. */
VDX_API int32_t VDX_CALL VersionFichier_Vdx(BSTR* Texte);
/* The currency of the prices ("EUR"; "F" when the base does not say). */
VDX_API int32_t VDX_CALL Monnaie_Vdx(BSTR* Texte);

/* Switches; each returns 1 unless said. Need no connection. */
/* 0: product codes of 7 digits only; 1: 13-digit codes accepted and mapped;
 * any other value: no length check. */
VDX_API int32_t VDX_CALL ActiveCIP13_Vdx(int32_t Valeur);
/* Non-zero: products reserved to hospitals are shown by searches. */
VDX_API int32_t VDX_CALL ActiveHospitaliers_Vdx(int32_t Valeur);
/* Minimum level of the contra-indication checks: 0 or more sets it, a
 * negative value only reads it. Returns the level in force. */
VDX_API int32_t VDX_CALL NiveauCI_Vdx(int32_t Niveau);
/* The same for the interaction check. */
VDX_API int32_t VDX_CALL NiveauInteraction_Vdx(int32_t Niveau);
/* Kept for older hosts: changes nothing. */
VDX_API int32_t VDX_CALL ActiveMedDC_Vdx(int32_t Valeur);
/* Returns 0; in mode 0 sets the nine fields of Champs to 0. */
VDX_API int32_t VDX_CALL Fonctionnalites_Vdx(int32_t Inutilise, int32_t* Champs);

/* ---- Notices to the host (this platform) ------------------------------ */

/* A message box: text and title in code page 1252, style 0 (plain) or 48
 * (exclamation). Its result is ignored. */
typedef int32_t (*VdxBoiteMessage)(void* Contexte, const char* Texte, const char* Titre, int32_t Style);
/* Progress of a long task (the update): done of total, with a label. */
typedef void (*VdxProgression)(void* Contexte, int32_t Fait, int32_t Total, const char* Libelle);
/* Installs the host's message-box handler and progress callback (null:
 * message boxes go to standard error as one line of UTF-8, and progress is
 * not shown). Returns 1. Needs no connection. */
VDX_API int32_t VDX_CALL InstalleNotifications_Vdx(VdxBoiteMessage Boite, VdxProgression Progression,
                                                   void* Contexte);

/* ---- Text exchange (mode 2); no connection needed --------------------- */

/* Replaces the memory text; an empty text keeps the old one. 1; -200. */
VDX_API int32_t VDX_CALL SetString_Vdx(const char* Texte);
/* Appends to the memory text; a null pointer clears it. 1; -200. */
VDX_API int32_t VDX_CALL SetString2_Vdx(const char* Texte);
/* Copies the memory text to Tampon, sized from GetLenString_Vdx. 1; 0 when
 * Tampon is null. */
VDX_API int32_t VDX_CALL GetString_Vdx(char* Tampon);
/* Page Page (from 1) of the memory text, pages of Taille - 1 bytes; Tampon
 * holds Taille bytes. 1 for a page with content, 0 past the end. */
VDX_API int32_t VDX_CALL GetString2_Vdx(char* Tampon, int32_t Page, int32_t Taille);
/* The size of buffer the memory text needs (its length + 1), 0 if none. */
VDX_API int32_t VDX_CALL GetLenString_Vdx(void);

/* ---- Vocabularies ----------------------------------------------------- */

/* Record of a code and its label. */
typedef struct VdxCodeLibelle {
    int32_t Code;
    BSTR Libelle;
} VdxCodeLibelle;

/* The long-term illnesses, in the order of their codes, into *Tableau
 * (mode 0, an array of VdxCodeLibelle) or as rows "code@label". The count;
 * -20 no array or an array of another record size; -90 the list is empty;
 * -500. */
VDX_API int32_t VDX_CALL ListeALD_Vdx(SAFEARRAY** Tableau);

/* ---- Documents -------------------------------------------------------- */

/* The RTF of the base's text chapters (Texte, NUL-terminated) as plain text
 * with CR LF line ends, into *Sortie as 8-bit bytes in every output mode and
 * whatever ChainesUnicode says; no flat text is delivered. In mode 0 *Sortie
 * is emptied first. Only the control words and escapes written by the
 * base's editor are understood ("\par ", "\pard", "\tab", "\line", "\~",
 * and lower-case "\'xx" for the French letters and a few signs); any other
 * control word is dropped with what follows it up to the next blank outside
 * braces, or up to the next known one; a text ending meanwhile ends there.
 * The plain word "pard" also gives a line end. The result holds at most
 * 511999 bytes, the rest is lost. Needs no connection.
 * 1; -1 the working buffer can't be allocated; -2000 (with the internal
 * error's message box) Texte or Sortie is null. */
VDX_API int32_t VDX_CALL Rtf_To_Texte(const char* Texte, BSTR* Sortie);

#ifdef __cplusplus
}
#endif

#endif /* VDX32_VDX32_H */
