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
#  if defined(VDX32_CONSTRUCTION) || defined(VDX32_STATIQUE)
#    define VDX_API /* the DLL exports by name through VDX32.def */
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
/* Whether the table Nom of the base ("VDXZICOU") holds a record: 1, or 0
 * when it is empty (a base without that kind of data). -2; -10 no name; -90
 * a name that is no table of the base; -500. */
VDX_API int32_t VDX_CALL TablePresente_Vdx(const char* Nom);
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

/* ---- Notices to the host --------------------------------------------- */

/* A message box: text and title in code page 1252, style 0 (plain) or 48
 * (exclamation). Its result is ignored. Called with the convention of the
 * exports (stdcall on Windows, as a 32-bit host's AddressOf gives). */
typedef int32_t (VDX_CALL *VdxBoiteMessage)(void* Contexte, const char* Texte, const char* Titre, int32_t Style);
/* Progress of a long task (the update): done of total, with a label. */
typedef void (VDX_CALL *VdxProgression)(void* Contexte, int32_t Fait, int32_t Total, const char* Libelle);
/* Installs the host's message-box handler and progress callback (null:
 * message boxes go to standard error as one line of UTF-8 on Linux, to
 * MessageBoxA without owner on Windows, and progress is not shown).
 * Returns 1. Needs no connection. */
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

/* A float in a record's slot: its first four bytes. */
typedef union VdxReel {
    float Valeur;
    intptr_t Case;
} VdxReel;
/* Record of a code and its label. */
typedef struct VdxCodeLibelle {
    intptr_t Code;
    BSTR Libelle;
} VdxCodeLibelle;

/* The long-term illnesses, in the order of their codes, into *Tableau
 * (mode 0, an array of VdxCodeLibelle) or as rows "code@label". The count;
 * -20 no array or an array of another record size; -90 the list is empty;
 * -500. */
VDX_API int32_t VDX_CALL ListeALD_Vdx(SAFEARRAY** Tableau);

/* Records of two and of three strings: a code, its label and a further text
 * (empty for the vocabularies). */
typedef struct VdxDeuxChaines {
    BSTR Code;
    BSTR Libelle;
} VdxDeuxChaines;
typedef struct VdxTroisChaines {
    BSTR Code;
    BSTR Libelle;
    BSTR Texte;
} VdxTroisChaines;

/* Step searches: one page of at most Nombre rows, in the order of the
 * vocabulary's label key, whose folded label (capitals without accents)
 * begins with Texte folded the same way; an empty or null Texte pages
 * through the whole vocabulary. With Suite, the label of the last row of
 * the previous page, the page begins behind that row. A Texte beginning
 * with a blank returns 0 at once and leaves *Tableau untouched. Nombre
 * counts the rows added; 0 or less gives an empty page.
 * Rows: code and label, by record shape:
 *   VdxDeuxChaines   AMM terms (RechercheAMM, RechercheAllergieAMM), CIM10,
 *                    CISP, laboratories;
 *   VdxCodeLibelle   substances (PA), excipients, excipients with known
 *                    effect (EEN, by their second label, which the row shows);
 *   VdxTroisChaines  classes, ATC classes, DCI classes, forms, examinations,
 *                    items, the dictionary of pathologies, common names
 *                    (MedDC); the third text is empty.
 * A prefix longer than the label in the key (254 bytes for the first two
 * shapes, the key's label for the third: 26 for classes) is cut to it.
 * The rows delivered; 0 nothing found; -20 no array (mode 0) or an array of
 * another record size; -500 a table missing or failing (GetLastError_Vdx
 * names the file). */
VDX_API int32_t VDX_CALL RechercheAMMParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                int32_t Nombre);
VDX_API int32_t VDX_CALL RechercheAllergieAMMParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                        int32_t Nombre);
VDX_API int32_t VDX_CALL RechercheCIM10ParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                  int32_t Nombre);
VDX_API int32_t VDX_CALL RechercheCISPParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                 int32_t Nombre);
VDX_API int32_t VDX_CALL RecherchePAParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                               int32_t Nombre);
VDX_API int32_t VDX_CALL RechercheExcipientParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                      int32_t Nombre);
VDX_API int32_t VDX_CALL RechercheEENParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                int32_t Nombre);
VDX_API int32_t VDX_CALL RechercheClasseParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                   int32_t Nombre);
VDX_API int32_t VDX_CALL RechercheClasseATCParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                      int32_t Nombre);
VDX_API int32_t VDX_CALL RechercheClasseDCIParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                      int32_t Nombre);
VDX_API int32_t VDX_CALL RechercheFormeParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                  int32_t Nombre);
VDX_API int32_t VDX_CALL RechercheLaboratoireParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                        int32_t Nombre);
VDX_API int32_t VDX_CALL RechercheExamenParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                   int32_t Nombre);
VDX_API int32_t VDX_CALL RechercheItemParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                 int32_t Nombre);
VDX_API int32_t VDX_CALL RechercheDicoPathoParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                      int32_t Nombre);
VDX_API int32_t VDX_CALL RechercheMedDCParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                  int32_t Nombre);

/* Keyword searches of the first two shapes above: every row whose folded
 * label begins with Mot1 (Partout 0) or holds it anywhere (any other
 * Partout), and, when Mot2 is given, holds Mot2 too in a place that does not
 * overlap Mot1's. With Mot1 null or empty Mot2 is searched alone. Rows in
 * key order, with no page. Words longer than 254 bytes are cut.
 * The rows; 0 none; -10 no word; -50 no array (mode 0) or an array of
 * another record size; -500. */
VDX_API int32_t VDX_CALL RechercheAMMLexico_Vdx(const char* Mot1, const char* Mot2, int32_t Partout,
                                                SAFEARRAY** Tableau);
VDX_API int32_t VDX_CALL RechercheAllergieAMMLexico_Vdx(const char* Mot1, const char* Mot2, int32_t Partout,
                                                        SAFEARRAY** Tableau);
VDX_API int32_t VDX_CALL RechercheCIM10Lexico_Vdx(const char* Mot1, const char* Mot2, int32_t Partout,
                                                  SAFEARRAY** Tableau);
VDX_API int32_t VDX_CALL RechercheCISPLexico_Vdx(const char* Mot1, const char* Mot2, int32_t Partout,
                                                 SAFEARRAY** Tableau);
VDX_API int32_t VDX_CALL RecherchePALexico_Vdx(const char* Mot1, const char* Mot2, int32_t Partout,
                                               SAFEARRAY** Tableau);
VDX_API int32_t VDX_CALL RechercheExcipientLexico_Vdx(const char* Mot1, const char* Mot2, int32_t Partout,
                                                      SAFEARRAY** Tableau);
VDX_API int32_t VDX_CALL RechercheEENLexico_Vdx(const char* Mot1, const char* Mot2, int32_t Partout,
                                                SAFEARRAY** Tableau);

/* Keyword searches of the three-string vocabularies: every row (VdxTroisChaines)
 * whose folded label holds Mot anywhere, among the keys that begin with
 * Prefixe folded when one is given: a label for most, a code for the
 * families, which have no label key. Rows in key order.
 * The rows; 0 none; -10 no Mot; -20 no array (mode 0) or an array of
 * another record size; -500. */
VDX_API int32_t VDX_CALL RechercheClasseLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe);
VDX_API int32_t VDX_CALL RechercheClasseATCLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe);
VDX_API int32_t VDX_CALL RechercheClasseDCILexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe);
VDX_API int32_t VDX_CALL RechercheFamilleLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe);
VDX_API int32_t VDX_CALL RechercheFormeLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe);
VDX_API int32_t VDX_CALL RechercheExamenLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe);
VDX_API int32_t VDX_CALL RechercheItemLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe);
VDX_API int32_t VDX_CALL RechercheDicoPathoLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe);
VDX_API int32_t VDX_CALL RechercheMedDCLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe);
/* The CISP codes linked to a CIM10 code or to a code beneath it (Type 3),
 * or to the CIM10 codes a term of the indications and contra-indications
 * is linked to, by any type of link (Type 1). Rows (VdxDeuxChaines): CISP
 * code, label ("Code X introuvable" when the vocabulary lacks it), each
 * once, in the order of the codes. The rows, 0 none; -10 Code null or
 * empty; -20 another Type; -30 no array or an array of another record size
 * (mode 0); -500. */
VDX_API int32_t VDX_CALL RechercheCISP_Vdx(const char* Code, int32_t Type, SAFEARRAY** Tableau);

/* Labels of codes: in mode 0 *Libelle is emptied first, whatever follows,
 * then holds the label as 8-bit bytes; other modes deliver it as the flat
 * text. A CIM10 code under three characters is a chapter. ATC classes,
 * forms (four characters, a shorter code is padded with blanks),
 * laboratories and families have their label lookup too.
 * 1; -10 no code, an empty one or one of 11 characters or more; -90 unknown
 * code; -500; -2000 Libelle null in mode 0. */
VDX_API int32_t VDX_CALL LibelleCIM10_Vdx(const char* Code, BSTR* Libelle);
VDX_API int32_t VDX_CALL LibelleCISP_Vdx(const char* Code, BSTR* Libelle);
VDX_API int32_t VDX_CALL LibelleAMM_Vdx(const char* Code, BSTR* Libelle);
VDX_API int32_t VDX_CALL LibelleClasse_Vdx(const char* Code, BSTR* Libelle);
VDX_API int32_t VDX_CALL LibelleClasseATC_Vdx(const char* Code, BSTR* Libelle);
VDX_API int32_t VDX_CALL LibelleForme_Vdx(const char* Code, BSTR* Libelle);
VDX_API int32_t VDX_CALL LibelleLaboratoire_Vdx(const char* Code, BSTR* Libelle);
VDX_API int32_t VDX_CALL LibelleFamille_Vdx(const char* Code, BSTR* Libelle);

/* ---- Keyword search of products --------------------------------------- */

/* The products whose label holds the words of MotsCherches, separated by
 * "@" (five read, three used), and none of the words of MotsExclus (the
 * same). The first word needs four characters or more; it is folded
 * keeping "-", and a few words of medical supplies are replaced by their
 * abbreviation (AIGUILLE by AIG, INSULINE by INSUL...). Labels are compared
 * with their punctuation turned to blanks, as delivered. The low byte of
 * Options chooses the category: 0 "S", 1 "A", 2 "T", 4 "C", 8 "D", 16 "V",
 * 32 "X", any other all products ("Z"); Options 256 or more hides deleted
 * products, which are otherwise marked by "[SUP]" in place of their label's
 * first double blank or at its end. Only the rows of ordinal Debut (from 1)
 * to index Debut + Nombre (from 0) are delivered.
 * Rows (VdxTroisChaines): CodeCIP, label, empty text.
 * The rows delivered; -3 MotsCherches or its first word shorter than four
 * characters; -20 no array (mode 0); -1998 the products can't be read;
 * -1999 the scan failed. */
VDX_API int32_t VDX_CALL Lexico_Vdx(SAFEARRAY** Resultat, const char* MotsCherches, const char* MotsExclus,
                                    int32_t Options, int32_t Debut, int32_t Nombre);

/* ---- Products --------------------------------------------------------- */

/* A product code (Code) is a CodeCIP of seven digits, or under
 * ActiveCIP13_Vdx(1) also the 13-digit CIP13 of a product, which is mapped
 * to its CodeCIP before anything else. Every export below that takes a
 * product code checks it the same way: null or empty gives -10; under
 * ActiveCIP13_Vdx(0) a length other than 7 gives -13; under (1) a 13-digit
 * code without mapping gives -13 (it is never found by its first seven
 * digits), and other lengths are looked up as they stand; a text of more
 * than 63 bytes gives -13. A code of the right length that is not a
 * product's (non-digits included) gives -90. Under ActiveCIP13_Vdx(1) the
 * codes the searches and CIP_Remplacant_Vdx give out are 13-digit when the
 * product has that form.
 * Single text results: in mode 0 the host string is emptied first, whatever
 * follows, then holds the text as 8-bit bytes (-2000 when it is null); in
 * the other modes the text is delivered as the flat text. */

/* The CIP13 of a CodeCIP, and the CodeCIP of a CIP13, through the table of
 * 13-digit codes, into *Sortie. 1; 0 when the code has no other form (the
 * next code of the table is another's), *Sortie empty; -10 no code; -13 a
 * code not of 7 (CIP_CIP13_Vdx) or 13 (CIP13_CIP_Vdx) characters; -90 the
 * code is above every code of the table; -500. Not subject to
 * ActiveCIP13_Vdx. */
VDX_API int32_t VDX_CALL CIP_CIP13_Vdx(const char* Code, BSTR* Sortie);
VDX_API int32_t VDX_CALL CIP13_CIP_Vdx(const char* Code, BSTR* Sortie);

/* 1 when the product is a narcotic: of list "B", or of list "A" with the
 * restricted prescription 18 among its three codes; else 0, also for a code
 * of no product. -10, -13, -500. */
VDX_API int32_t VDX_CALL IsStupefiant_Vdx(const char* Code);
/* Texte with its numbers spelled out, as narcotic prescriptions require:
 * each run of digits and commas (a comma is the decimal point) is followed
 * by " (", the number in French words, ") ". "SKENAN LP 10MG GELULE" gives
 * "SKENAN LP 10 (dix) MG GELULE". Into *Sortie as 8-bit bytes in every
 * mode; no flat text is delivered. Needs no connection. 1; -2000 Texte or
 * Sortie null. */
VDX_API int32_t VDX_CALL LibelleStupefiant_Vdx(const char* Texte, BSTR* Sortie);

/* The regulatory status of a product: seven integers, then nine strings.
 * LibelleStatut: "Aucun", "AMM", "ATU de cohorte", "AMM Européenne",
 * "ATU nominative" for CodeStatut 0 to 4, empty beyond. The texts of the
 * three restricted prescriptions are empty for a code the table lacks. */
typedef struct VdxStatut {
    intptr_t Statut1;
    intptr_t Statut2;
    intptr_t Statut3;
    intptr_t CodeStatut;
    intptr_t Prescription1;
    intptr_t Prescription2;
    intptr_t Prescription3;
    BSTR LibelleStatut;
    BSTR LibellePrescription1;
    BSTR LibellePrescription2;
    BSTR LibellePrescription3;
    BSTR DetailPrescription1;
    BSTR DetailPrescription2;
    BSTR DetailPrescription3;
    BSTR TexteStatut1;
    BSTR TexteStatut2;
} VdxStatut;
/* Mode 0: *Fiche is cleared once the code is checked, then filled (strings
 * of 8-bit bytes); other modes: one row of the sixteen fields in order.
 * 1; -10, -13; -90 no status for the product; -500; -2000 Fiche null in
 * mode 0. */
VDX_API int32_t VDX_CALL Statut_Vdx(const char* Code, VdxStatut* Fiche);

/* What a product costs and how it is paid for: the VAT and reimbursement
 * rates (0 for a code their tables lack), the laboratory ("Laboratoire
 * inconnu"), the price (seven digits, in cents of the currency Monnaie_Vdx
 * names), the dispensing fee (Valeur50), the price with the fee (Valeur85;
 * the price when it reads "0000000"), the label of the list (empty when
 * none), the reimbursed indications (Valeur124) and the act with its two
 * texts ("Acte inconnu", "?????"). Mode 0: into *Fiche, reset once the code
 * is checked, 8-bit strings whatever the session; other modes: one row of
 * the 11 fields. 1; -10; -13; -90 an unknown product; -2000 Fiche null in
 * mode 0; -500. */
typedef struct VdxEconomique {
    VdxReel TauxTVA;
    VdxReel TauxRemboursement;
    BSTR Laboratoire;
    BSTR Prix;
    BSTR Valeur50;
    BSTR Valeur85;
    BSTR LibelleTableau;
    BSTR Valeur124;
    BSTR Acte;
    BSTR ActeTexte1;
    BSTR ActeTexte2;
} VdxEconomique;
VDX_API int32_t VDX_CALL Economique_Vdx(const char* Code, VdxEconomique* Fiche);
/* The products that may stand for a product: the other members of its
 * therapeutic equivalence classes (a class whose key text ends in "*" is
 * none), at most Limite kept a class (-1 for no limit; 0 or another
 * negative keeps none). Niveau 0 the same dosage ("1 g" and "1000 mg" are
 * one) and a form of the same family, 1 the same dosage in another form, 2
 * another dosage; in a class "Z..." only the products of the same name, at
 * 2. Left out: hospital products unless ActiveHospitaliers_Vdx is on,
 * deleted ones, lines by common name, those without identification. Rows
 * by class in the order of the product's classes, within a class by level,
 * price (none, "0000000", last) and label. LibelleContenance tells the
 * package ("16 comprim\xE9s", "1 flacon de 150 ml"); Conditionnement its
 * word. The number of rows; 0 for a product without identification or
 * record (the array emptied); -10; -13; -20 no array in mode 0; -90 no
 * class key at or behind the code; -500. */
typedef struct VdxEquivalent {
    intptr_t Niveau;
    VdxReel TauxRemboursement;
    BSTR CodeClasse;
    BSTR LibelleClasse;
    BSTR CodeCIP; /* 13 digits under CIP13Actif 1 when it has them */
    BSTR LibelleProduit;
    BSTR LibelleForme;
    BSTR LibelleContenance;
    BSTR Prix;
    BSTR Conditionnement;
    BSTR Laboratoire;
} VdxEquivalent;
VDX_API int32_t VDX_CALL ProduitsEquivalents_Vdx(const char* Code, SAFEARRAY** Tableau, int32_t Limite);
/* Cost optimisation: for a treatment of a product, the products of its
 * equivalence classes (same dosage, form family and age of use; none
 * hospital or deleted) with the packages each would take and how its cost
 * compares. The treatment is Quantite in the unit of take Unite or, when
 * either is 0, Boites packages. Rows of VdxOptimisation; Rang 0 cheaper,
 * 1 the same cost, 2 dearer, 3 the candidate has no price, 4 (every row)
 * the product has none; by Rang and within 0 to 2 by cost, the walk's
 * order otherwise. At most Limite rows a class, -1 for no limit. The
 * number of rows; 0 for a product without identification or record; -10;
 * -13 a code of the wrong length or a 13-digit one without mapping; -2;
 * -60 no array in mode 0; -20 no packages where they are needed; -30 a
 * negative unit; -40 a negative quantity; -90 no class key at or behind
 * the code; -500. */
typedef struct VdxOptimisation {
    intptr_t Rang;
    intptr_t NombreBoites;
    VdxReel TauxRemboursement;
    BSTR CodeClasse;
    BSTR LibelleClasse;
    BSTR CodeCIP; /* 13 digits under CIP13Actif 1 when it has them */
    BSTR LibelleProduit; /* name, dosage, form word and package text */
    BSTR Prix;
    BSTR Conditionnement; /* plural above one package */
    BSTR Laboratoire;
} VdxOptimisation;
VDX_API int32_t VDX_CALL Optimisation_Vdx(const char* Code, int32_t Boites, int32_t Unite, float Quantite,
                                          SAFEARRAY** Tableau, int32_t Limite);
/* The packages of a product a quantity in one of its units of take takes
 * (Q / contents + 0.9999, truncated; 1 for a unit not its own), the word of
 * its package into Conditionnement (its presentation's when it has no
 * package code), plural above one. In mode 0 the string is emptied first.
 * -10; -13; -2; -20 a unit below 1; -30 a quantity below 1; -90 unknown
 * product; -2000 no string in mode 0; -500. */
VDX_API int32_t VDX_CALL Boitage_Vdx(const char* Code, int32_t Unite, float Quantite, BSTR* Conditionnement);
/* The indications listed as equivalent to an indication code, with their
 * labels as LibelleAMM_Vdx gives them (empty when unknown), in key order;
 * rows of two strings (VdxDeuxChaines). The number of rows, 0 when none;
 * -10 no code; -20 no array in mode 0; -500. */
VDX_API int32_t VDX_CALL AMMEquivalent_Vdx(const char* Code, SAFEARRAY** Tableau);
/* 1 when Code is a prescription line by common name, else 0. -10, -13,
 * -500. */
VDX_API int32_t VDX_CALL IsMedDC_Vdx(const char* Code);

/* Criteria search. A set of products (CodeCIPs in code order) lives
 * behind a handle from the first Recherche_Vdx that returns without
 * failure until FreeRecherche_Vdx; it outlives a connection. Handles are
 * positive, issued in increasing order and never reused.
 *
 * A criterion: champ 1 products of an indication term (Operation 1: its
 * exact terms only); 2 therapeutic class by prefix; 3 form by prefix; 4
 * concept of the thesaurus (Code its number; its synonyms, components and
 * aliases); 5 laboratory (4 characters); 6 out by contra-indication then
 * precaution, 7 by precaution then contra-indication, 8 by adverse effect
 * (as champ 1 reads Operation; they need a set); 9 out by the patient's
 * conditions on the terms of the products; 10 out by the product flag
 * (Operation 1 the flagged ones, else the others; the first and last code
 * stay); 11 out what adds an interaction to the prescription in Code
 * (codes separated by "|"; a message when it already holds some); 12
 * route (Code a substring of the route key; two characters give -2). For
 * 2, 3, 5, 12 Operation 0 keeps what matches, else takes it out; on an
 * empty set 2, 3 and 5 with Operation 1 take every product of the index
 * not matching. qualifiant, for the terms: 1 a term code, 2 a CISP code, 3
 * a CIM10 code. A criterion of another champ or with an empty Code is
 * skipped. Code is cut to 255 bytes. In mode 0 the integers are read from
 * the low 32 bits of their slots and Code follows ChainesUnicode; in the
 * other modes the criteria are the input text's rows
 * "champ@Operation@Code@qualifiant" (a missing number reads 0). */
typedef struct VdxCritereRecherche {
    intptr_t champ;
    intptr_t Operation;
    BSTR Code;
    intptr_t qualifiant;
} VdxCritereRecherche;
/* The criteria in order on the set of *Handle (a new one for 0), the
 * patient's Age (months), Poids (kg), Sexe ("M" or "F"), Grossesse and
 * Allaitement read by champ 9. The handle is written once the list ran to
 * its end. The result of the last criterion that ran (the set's count), 0
 * when none did; -2; -10 no criteria array in mode 0; -12 an empty criteria
 * text or an unreadable array; -20 no handle pointer, or a handle not
 * issued; the first failure of a criterion stops the list (a new set is
 * then dropped, an existing one keeps what ran): -300 a criterion needing
 * a set meets an empty one, -2 a route of two characters, -200, -500. */
VDX_API int32_t VDX_CALL Recherche_Vdx(SAFEARRAY** Criteres, int32_t* Handle, int32_t Age, int32_t Poids,
                                       const char* Sexe, int32_t Grossesse, int32_t Allaitement);
/* The product at Rang (from 1) of the set and its label, "code@label" in
 * the flat modes. 1; -2; -40 no handle, 0 or one not issued; -10 Rang
 * below 1; -13 beyond the set; -90 a product no longer in VDXPRO; -500. */
VDX_API int32_t VDX_CALL GetRecherche_Vdx(int32_t Rang, BSTR* CodeCIP, BSTR* Libelle, int32_t* Handle);
/* A new set with the codes of *Source, its handle into *Destination. 1;
 * -2; -10 no source, 0 or one not issued; -20 no destination; -200. */
VDX_API int32_t VDX_CALL CopyRecherche_Vdx(int32_t* Source, int32_t* Destination);
/* Frees the set and sets *Handle to 0; no connection needed. 1; 0 for a
 * null pointer. */
VDX_API int32_t VDX_CALL FreeRecherche_Vdx(int32_t* Handle);
/* The products indicated for a code: Type 1 a term code (the CIM10 codes it
 * is linked to as an indication, a final ".9" cut, then every term linked
 * to those codes), 2 a CISP code (its CIM10 codes), 3 a CIM10 code; without
 * such codes (and for another Type) the code is taken as a term. A row for
 * each product of each term met, a product met twice giving two rows:
 * Exact 1 when the term is the searched term code or one VDXVAMME gives as
 * its equivalent (Type 1 only), the product's code and label, the term's
 * wording (empty when the vocabulary lacks the term). A row whose wording
 * is the label of an equivalent of a later row's term takes, as that later
 * row does, the first row's wording, "," and the later row's. Products
 * missing from VDXPRO, hospital products (unless ActiveHospitaliers_Vdx
 * switched them on) and codes beginning with "8" or "1" are left out. Rows
 * sorted by label as unsigned bytes; "Exact@CodeCIP@Libelle@Indication" in
 * the flat modes. Code is read to 10 characters. The number of rows; -2;
 * -10 no Code; -20 no array in mode 0; -500, naming "VDXPRO.NDX" for a
 * failure of VDXVAMME and "VDXVCIM10.NDX" or "VDXVCIM10.DAT" for VDXVCIM. */
typedef struct VdxIndicationProduit {
    intptr_t Exact;
    BSTR CodeCIP;
    BSTR Libelle;
    BSTR Indication;
} VdxIndicationProduit;
VDX_API int32_t VDX_CALL RechercheIndicationProduits_Vdx(const char* Code, int32_t Type, SAFEARRAY** Resultat);

/* The texts of the marketing authorisation. The terms of a product of one
 * kind (Type 1 indications, 2 contra-indications, 3 precautions, 4 adverse
 * effects), in key order, with the level of their link; a term the
 * vocabulary lacks is labelled "Mot Clé CODE inexistant.". The number of
 * rows; 0 when the product has none of the kind; -10; -13; -20 no array
 * in mode 0; -30 a Type outside 1 to 4; -500. */
typedef struct VdxTermeProduit {
    intptr_t NiveauLien;
    BSTR CodeTerme;
    BSTR Libelle;
} VdxTermeProduit;
VDX_API int32_t VDX_CALL ProduitAMM_Vdx(const char* Code, SAFEARRAY** Resultat, int32_t Type);
/* A stored chapter of a product: its RTF turned into text, then the RTF,
 * into the two strings of Textes in mode 0 (emptied first); in the other
 * modes the text without its last line end, then the RTF. Chapitre 1 to 5
 * of the main texts (1 indications, 2 contra-indications, 3 precautions, 4
 * adverse effects, 5 pregnancy and breast-feeding), 1 to 13 of the further
 * ones. 1; 0 when the chapter has no text (both empty); -10; -13; -20 no
 * record in mode 0; -30 a chapter outside its range; -500. */
VDX_API int32_t VDX_CALL ProduitTexteAMM_Vdx(const char* Code, VdxDeuxChaines* Textes, int32_t Chapitre);
VDX_API int32_t VDX_CALL ProduitTexteAMMPlus_Vdx(const char* Code, VdxDeuxChaines* Textes, int32_t Chapitre);
/* The date of a chapter code (0 to 99; 0 the authorisation) as stored,
 * year first with its separators ("2017/03/15"). 1; 0 none; -10; -13; -20
 * a code outside 0 to 99; -500. */
VDX_API int32_t VDX_CALL GetDateChapitre_Vdx(const char* Code, int32_t Chapitre, BSTR* Date);
/* The label of a speciality by its CIS code of 8 digits. 1; -10; -13 not 8
 * characters; -90 unknown; -500. */
VDX_API int32_t VDX_CALL LibelleCIS_Vdx(const char* Code, BSTR* Libelle);
/* The title of a prescription line by common name (its label). 1; -10;
 * -13; -90 unknown; -500. */
VDX_API int32_t VDX_CALL LibelleMedDC2_Vdx(const char* Code, BSTR* Libelle);
/* Prescription lines by common name: one set of active substances, each
 * with its dosage, in one form and one group of routes ("PARAC\xC9TAMOL 1 g,
 * comprim\xE9"), under a code of 7 digits beginning with "8" that no
 * product has (IsMedDC_Vdx), titled by LibelleMedDC2_Vdx and searched by
 * RechercheMedDCParPas_Vdx. The checks take a line for its products: the
 * interactions, duplicates and allergies of the active substances and
 * routes of its first product (the products of a line share them), the
 * contra-indications and precautions of its own terms and of all its
 * products' terms, each once; their rows name the line. TraductionDC_Vdx:
 * the line of a product, its code and label (mode 0: into the two strings,
 * 8-bit; other modes: one row "code@label"); a line gives itself. 1; 0 for
 * a product without a line, nothing delivered; -10; -13; -90 a code that is
 * neither a product nor a line; -500. */
VDX_API int32_t VDX_CALL TraductionDC_Vdx(const char* Code, BSTR* CodeDC, BSTR* Libelle);
/* The products of a line by common name, in the rows of PAProduits_Vdx
 * (VdxTroisChaines): CodeCIP, label, and the line's code; products reserved
 * to hospitals left out unless ActiveHospitaliers_Vdx(1), deleted ones
 * too; a product the master table lacks reads "CIP : X inexistant"; sorted
 * by label. The rows; -10; -13; -90 a code that is no line (a product's
 * code among them); -20 no array or an array of another record size (mode
 * 0); -500. */
VDX_API int32_t VDX_CALL ProduitsMedDC_Vdx(const char* Code, SAFEARRAY** Tableau);
/* The products filed under a vocabulary code, rows of VdxTroisChaines:
 * CodeCIP, label, and the code it is filed under. RechercheClasse_Vdx: a therapeutic class and
 * its sub-classes (the classes whose code begins with Code);
 * RechercheForme_Vdx: a form and the forms whose code begins with Code;
 * RechercheFamille_Vdx: one family. Products reserved to hospitals are left
 * out unless ActiveHospitaliers_Vdx(1), deleted ones too; a product the
 * master table lacks reads "CIP : X inexistant"; a product once, under the
 * first code met; sorted by label. The rows, 0 none; -10 Code null or
 * empty; -13 a code longer than its vocabulary's (7, 4, 5); -20 no array
 * or an array of another record size (mode 0); -500. */
VDX_API int32_t VDX_CALL RechercheClasse_Vdx(const char* Code, SAFEARRAY** Tableau);
VDX_API int32_t VDX_CALL RechercheForme_Vdx(const char* Code, SAFEARRAY** Tableau);
VDX_API int32_t VDX_CALL RechercheFamille_Vdx(const char* Code, SAFEARRAY** Tableau);
/* The products of RechercheClasse_Vdx with their detail, in rows of eleven
 * fields: CodeCIP, label, the class it is filed under and its label ("Libell\xE9 inconnu"),
 * laboratory (empty when unknown), price (seven digits in cents,
 * "0000000" when unknown), reimbursement rate (0 when unknown), 1 for a
 * generic, form, dosage, and its line by common name (empty when none).
 * The same order, codes and left-out products as RechercheClasse_Vdx; the
 * same return codes. */
typedef struct VdxProduitClasse {
    BSTR CodeCIP;
    BSTR Libelle;
    BSTR CodeClasse;
    BSTR LibelleClasse;
    BSTR Laboratoire;
    BSTR Prix;
    VdxReel TauxRemboursement;
    intptr_t Generique;
    BSTR Forme;
    BSTR Dosage;
    BSTR CodeDC;
} VdxProduitClasse;
VDX_API int32_t VDX_CALL ClasseProduits95_Vdx(const char* Code, SAFEARRAY** Tableau);
/* The latest opinions of the transparency commission on the product's
 * speciality: the level of its medical service rendered (SMR: "Important",
 * "Mod\xE9r\xE9", "Faible", "Insuffisant"...), the date (JJ/MM/AAAA) and
 * reason ("Inscription (CT)", "Renouvellement d'inscription (CT)"...) of
 * that opinion, then the same of its improvement (ASMR: "I" to "V"...); a
 * kind without opinion has its three fields empty. Mode 0: into *Fiche,
 * cleared once the code is checked, strings of 8-bit bytes; other modes:
 * one row of the six fields, delivered also when empty. 1; 0 no opinion;
 * -10, -13; -90 a product without a speciality; -500; -2000 Fiche null in
 * mode 0. */
typedef struct VdxSmrAsmr {
    BSTR NiveauSMR;
    BSTR DateSMR;
    BSTR MotifSMR;
    BSTR NiveauASMR;
    BSTR DateASMR;
    BSTR MotifASMR;
} VdxSmrAsmr;
VDX_API int32_t VDX_CALL ProduitSmrAsmr_Vdx(const char* Code, VdxSmrAsmr* Fiche);
/* The sheets of a product that the base holds under it, a row each in the
 * order the base files them; each takes the product's code as the lookups
 * of a product do. The rows, 0 none (the open base holds none but the
 * excipients' where the public data give them); -10, -13 for the code; -20
 * no array or an array of another record size (mode 0); -500.
 * ProduitExcipient_Vdx: the excipients, each with its number, label (or
 * "Code N introuvable"), quantity as printed and "1" when its effect is
 * known ("0" otherwise). */
typedef struct VdxExcipientProduit {
    BSTR CodeExcipient;
    BSTR Libelle;
    BSTR Quantite;
    BSTR EffetNotoire;
} VdxExcipientProduit;
VDX_API int32_t VDX_CALL ProduitExcipient_Vdx(const char* Code, SAFEARRAY** Tableau);
/* AccessoireProduits_Vdx: the accessories sold with the product (Relation
 * "avec") or for it ("pour"): the accessory's code (its CodeCIP, or empty),
 * label, relation and a remark. */
typedef struct VdxAccessoire {
    BSTR CodeAccessoire;
    BSTR Libelle;
    BSTR Relation;
    BSTR Remarque;
} VdxAccessoire;
VDX_API int32_t VDX_CALL AccessoireProduits_Vdx(const char* Code, SAFEARRAY** Tableau);
/* AspectProduits_Vdx: the appearance of a unit of the product: shape,
 * colour, marks, scoring. */
typedef struct VdxAspect {
    BSTR Forme;
    BSTR Couleur;
    BSTR Marquage;
    BSTR Secabilite;
} VdxAspect;
VDX_API int32_t VDX_CALL AspectProduits_Vdx(const char* Code, SAFEARRAY** Tableau);
/* EffetIndesirable_Vdx: the adverse effects of the product, each with its
 * organ class, its frequency ("tr\xE8s fr\xE9quent", "fr\xE9quent", "peu
 * fr\xE9quent", "rare", "tr\xE8s rare", "fr\xE9quence ind\xE9termin\xE9e") and
 * its label. */
typedef struct VdxEffetIndesirable {
    BSTR ClasseOrgane;
    BSTR Frequence;
    BSTR Libelle;
} VdxEffetIndesirable;
VDX_API int32_t VDX_CALL EffetIndesirable_Vdx(const char* Code, SAFEARRAY** Tableau);
/* OncoReconstitution_Vdx: the reconstitution and stability of a cytotoxic
 * product, a row a step ("reconstitution", "dilution"): its solvent, the
 * concentration reached, how long and where the solution keeps. */
typedef struct VdxReconstitution {
    BSTR Etape;
    BSTR Solvant;
    BSTR Concentration;
    BSTR Stabilite;
} VdxReconstitution;
VDX_API int32_t VDX_CALL OncoReconstitution_Vdx(const char* Code, SAFEARRAY** Tableau);
/* Recommandations_Vdx: the recommendations attached to the product, then
 * to each of its therapeutic classes and the classes above them (a class
 * "M01AE" under "M01A" and "M01"), each class once: the code they are
 * attached to, who issued them, the date (JJ/MM/AAAA), title and text. */
typedef struct VdxRecommandation {
    BSTR Code;
    BSTR Source;
    BSTR Date;
    BSTR Titre;
    BSTR Texte;
} VdxRecommandation;
VDX_API int32_t VDX_CALL Recommandations_Vdx(const char* Code, SAFEARRAY** Tableau);
/* RMO_Vdx: the opposable medical references of the product and of its
 * classes, in the rows and the walk of Recommandations_Vdx. */
VDX_API int32_t VDX_CALL RMO_Vdx(const char* Code, SAFEARRAY** Tableau);
/* The identity of a product told in its parts, for hosts that assemble or
 * index labels: its CodeCIP (a CIP13 under ActiveCIP13_Vdx(1) when it has
 * one), name ("DOLIPRANE"), dosage ("1000 mg"), form ("comprim\xE9"), routes
 * (their labels joined by ", "), package text beginning with the number of
 * units ("8 comprim\xE9s", "1 flacon de 150 ml"), its two units of take by
 * code and word (0 and empty when none), the label assembled from name,
 * dosage, form and package ("DOLIPRANE 1000 mg, comprim\xE9, 8 comprim\xE9s",
 * an empty part left out with its separator; the label of the rows of
 * Optimisation_Vdx), and its line by common name, code and label (empty
 * when none). Mode 0: into *Fiche, cleared once the code is checked,
 * strings of 8-bit bytes; other modes: one row of the 13 fields. 1; -10,
 * -13; -90 a code the identification lacks, a line by common name among
 * them; -500; -2000 Fiche null in mode 0. */
typedef struct VdxIdentifiant {
    BSTR CodeCIP;
    BSTR Denomination;
    BSTR Dosage;
    BSTR Forme;
    BSTR Voie;
    BSTR Contenance;
    intptr_t CodeUnitePrise1;
    BSTR UnitePrise1;
    intptr_t CodeUnitePrise2;
    BSTR UnitePrise2;
    BSTR Libelle;
    BSTR CodeDC;
    BSTR LibelleDC;
} VdxIdentifiant;
VDX_API int32_t VDX_CALL IdentifiantProduit_Vdx(const char* Code, VdxIdentifiant* Fiche);
/* Writes the identity of every product the identification holds, as
 * IdentifiantProduit_Vdx gives it, into the file Fichier (replaced), in the
 * order of their codes: a first line of the 13 field names, then a line a
 * product, fields separated by tabs, lines ended by CR LF, code page 1252
 * whatever the session; a tab or line end inside a text becomes a blank.
 * The file is written beside and renamed into place: whole, or as it was.
 * The number of products; -10 Fichier null or empty; -2; -300 the file
 * cannot be written; -500. */
VDX_API int32_t VDX_CALL ExportIdentifiant_Vdx(const char* Fichier);

/* The monograph of a product as one HTML page in code page 1252, written
 * in one block into the file Fichier (opened "w+b"; a file that can't be
 * opened gets nothing and the call still succeeds); FeuilleStyle, when not
 * empty, is linked as the stylesheet. MonographieHtml_Vdx: every chapter,
 * made and stored; MonographieHtml2_Vdx: the made chapters, the four kinds
 * of terms, the posologies of the catalogue and the regulatory data;
 * InfoHtml_Vdx: one table of the product's flags "Referent", "générique",
 * "Dopant", "Hospitalier", "Canicule", "Recommandations", "Mediel", each
 * "OUI" or "NON". A code no table holds gives the chapters that can be
 * made, without title. 1; -2; -10 no code, or an accessory; -13 not 7
 * characters (13 mapped under ActiveCIP13_Vdx(1)); -20 no file name; -500. */
VDX_API int32_t VDX_CALL MonographieHtml_Vdx(const char* Code, const char* Fichier, const char* FeuilleStyle);
VDX_API int32_t VDX_CALL MonographieHtml2_Vdx(const char* Code, const char* Fichier, const char* FeuilleStyle);
VDX_API int32_t VDX_CALL InfoHtml_Vdx(const char* Code, const char* Fichier, const char* FeuilleStyle);

/* The side documents of a product. Every one: -2; -10 no code; -13 not 7
 * characters (13 mapped under ActiveCIP13_Vdx(1)); -20 no array in mode 0
 * or no file name; -500. A product whose own monograph is a linked
 * document (a link of kind 3) has that document for MonographieHtml_Vdx.
 *
 * NoticeHtml_Vdx: the patient notice (HTML, as stored; "Information
 * provisoirement indisponible." when empty) into Fichier, and its pictures
 * beside it, each under its own name in the directory of Fichier (the
 * working directory for a name alone). 1; 0 for a product without notice,
 * no file written; -13 a picture whose name is no plain file name, nothing
 * written. A picture that can't be written leaves its path in the error
 * file name and the result 1.
 * ProduitNotice_Vdx: Type 1 (-30 otherwise), the notice's text, its RTF and
 * the product's label as title; "Information provisoirement indisponible"
 * as the text when there is none. 1. */
typedef struct VdxTexteNotice {
    BSTR Texte;
    BSTR Rtf;
    BSTR Titre;
} VdxTexteNotice;
VDX_API int32_t VDX_CALL NoticeHtml_Vdx(const char* Code, const char* Fichier);
VDX_API int32_t VDX_CALL ProduitNotice_Vdx(const char* Code, VdxTexteNotice* Textes, int32_t Type);
/* Links to documents: the number, title, document name and kind (1 a
 * document, 2 a transparency sheet, 3 the product's own monograph) of each
 * link of the product in the order of their numbers, one row a document;
 * "NumeroLien@Libelle@NomDocument@TypeLien" rows in the flat modes. The
 * transparency sheets have besides the label of the long-term illness the
 * product is listed under. ExisteLien_Vdx and ExisteFicheTransparence_Vdx:
 * 1 or 0. GenererLien_Vdx: the document of that name written into Fichier
 * ("w+b"; a file that won't open is no failure), 1; -10 no name; -90 an
 * unknown name. */
typedef struct VdxLien {
    BSTR NumeroLien;
    BSTR Libelle;
    BSTR NomDocument;
    intptr_t TypeLien;
} VdxLien;
typedef struct VdxFicheTransparence {
    BSTR NumeroLien;
    BSTR Libelle;
    BSTR NomDocument;
    intptr_t TypeLien;
    BSTR LibelleALD;
} VdxFicheTransparence;
VDX_API int32_t VDX_CALL ExisteLien_Vdx(const char* Code);
VDX_API int32_t VDX_CALL ListeLien_Vdx(const char* Code, SAFEARRAY** Resultat);
VDX_API int32_t VDX_CALL ExisteFicheTransparence_Vdx(const char* Code);
VDX_API int32_t VDX_CALL FicheTransparence_Vdx(const char* Code, SAFEARRAY** Resultat);
VDX_API int32_t VDX_CALL GenererLien_Vdx(const char* Nom, const char* Fichier);
/* The texts of a pharmacy product, a record per non-empty text under its
 * title (accessories, category 60: five titles; veterinary products,
 * category 40: nine; the others "Descriptif" and "Situation"). The number
 * of records; 0 for a code beginning with "2", "3" or "5". */
typedef struct VdxTextePharm {
    BSTR Titre;
    BSTR Texte;
} VdxTextePharm;
VDX_API int32_t VDX_CALL ProduitTextePharm_Vdx(const char* Code, SAFEARRAY** Resultat);
/* The important changes of a product in date order: date JJ/MM/AAAA and
 * text. The number of changes. HistoriqueHtml_Vdx writes them as the page
 * "Historique" (also without any) into Fichier, FeuilleStyle linked when
 * not empty. InteroperabiliteHtml_Vdx: the identity sheet as a page, with
 * the rows it can fill; 1; -90 a product VDXPRO lacks, no file written. */
typedef struct VdxHistorique {
    BSTR Date;
    BSTR Texte;
} VdxHistorique;
VDX_API int32_t VDX_CALL Historique_Vdx(const char* Code, SAFEARRAY** Resultat);
VDX_API int32_t VDX_CALL HistoriqueHtml_Vdx(const char* Code, const char* Fichier, const char* FeuilleStyle);
VDX_API int32_t VDX_CALL InteroperabiliteHtml_Vdx(const char* Code, const char* Fichier, const char* FeuilleStyle);

/* Simple lookups: one fact of a product. -10, -13; -90 the product is not
 * in the table that holds the fact; -500.
 * Into a host string, 1: the UCD code, the EAN code (GenCode), the CIS code
 * of the speciality. */
VDX_API int32_t VDX_CALL UCD_Vdx(const char* Code, BSTR* UCD);
VDX_API int32_t VDX_CALL GenCode_Vdx(const char* Code, BSTR* GenCode);
VDX_API int32_t VDX_CALL CIP_To_CIS_Vdx(const char* Code, BSTR* CIS);
/* As the result (0 or more): the product's category (CodeRubrique, 10, 40,
 * 60...), its number of UCD units, its pictogram, its CodeStatut (see
 * Statut_Vdx); IsT2A_Vdx 1 when the product is billed beside the hospital
 * stay (T2A), else 0. */
VDX_API int32_t VDX_CALL CodeRubrique_Vdx(const char* Code);
VDX_API int32_t VDX_CALL NombreUCDParCIP_Vdx(const char* Code);
VDX_API int32_t VDX_CALL GetPictogramme_Vdx(const char* Code);
VDX_API int32_t VDX_CALL ProduitStatut_Vdx(const char* Code);
VDX_API int32_t VDX_CALL IsT2A_Vdx(const char* Code);
/* How the product's unit of take can be split, from its identification: 2
 * in halves (a scored tablet), 4 in quarters, 1 whole units only (tablets
 * and capsules not scored), 0 when the identification tells nothing (other
 * forms). -10, -13; -90 a product the identification lacks; -500. */
VDX_API int32_t VDX_CALL ProduitSecable_Vdx(const char* Code);
/* Flags: 1 when the product is generic, doping, a reference product,
 * reserved to hospitals; else 0. A null or empty Code gives -10 before the
 * connection is looked at. */
VDX_API int32_t VDX_CALL ProduitGenerique_Vdx(const char* Code);
VDX_API int32_t VDX_CALL ProduitDopant_Vdx(const char* Code);
VDX_API int32_t VDX_CALL ProduitReferent_Vdx(const char* Code);
VDX_API int32_t VDX_CALL ProduitHospitalier_Vdx(const char* Code);

/* The product's label; a narcotic's has its numbers spelled out as by
 * LibelleStupefiant_Vdx. 1; -10 also for the code of a prescription line
 * by common name that no product has; -13; -90; -500. */
VDX_API int32_t VDX_CALL LibelleProduit_Vdx(const char* Code, BSTR* Libelle);
/* 1 for a deleted product, with its date of deletion "JJ/MM/AAAA"; 0 for a
 * product on the market, nothing delivered. -10, -13, -90, -500. */
VDX_API int32_t VDX_CALL ProduitSupprime_Vdx(const char* Code, BSTR* Date);
/* The product's laboratory: its code, and its label or "Laboratoire
 * inconnu" when the laboratories lack it. Mode 0: into the two strings
 * (both emptied first); other modes: one row "code@label". 1; -10, -13,
 * -90, -500. */
VDX_API int32_t VDX_CALL Laboratoire_Vdx(const char* Code, BSTR* CodeLaboratoire, BSTR* Libelle);
/* The code of the product that replaces this one (empty if none), as a
 * CIP13 under ActiveCIP13_Vdx(1) when it has one. 1; -10, -13, -90, -500. */
VDX_API int32_t VDX_CALL CIP_Remplacant_Vdx(const char* Code, BSTR* Remplacant);
/* Counts the products and keeps them, in code order, for GetProduit_Vdx;
 * each call counts again. The count; -500. */
VDX_API int32_t VDX_CALL TotalProduit_Vdx(void);
/* The product of rank Rang (from 0) of the last TotalProduit_Vdx on this
 * base: its CodeCIP and label (mode 0: both strings, emptied first; other
 * modes: one row "code@label"). 1; -10 Rang below 0 or not below the count,
 * or no count made on this base; -500. */
VDX_API int32_t VDX_CALL GetProduit_Vdx(int32_t Rang, BSTR* Code, BSTR* Libelle);

/* Step search of products: one page of at most Nombre products in the
 * order of their label key. Texte is "prefix", "prefix@word" or
 * "prefix@word@word": the folded label must begin with the prefix (folded:
 * capitals without accents, the first five characters squeezed to letters,
 * digits and "/") and hold each word (folded to letters and digits)
 * anywhere; an empty or null Texte pages through all products. Suite, the
 * label of the last row of the previous page as it was delivered (" [SUP]"
 * and final points included), makes the page begin behind that row.
 * Options: 1 hides the products of category 40; 2 searches the doctor's own
 * products in place of the base's (rows carry his comment); 256 hides
 * deleted products, which are otherwise shown with " [SUP]" behind their
 * label. Products reserved to hospitals are hidden unless
 * ActiveHospitaliers_Vdx(1), under which every product is shown whatever
 * its category (Options 1 then hides nothing). Nombre counts the rows
 * shown: hidden products don't shorten a page; 0 or less gives an empty
 * page. A Texte beginning with a blank returns 0 at once, *Tableau
 * untouched.
 * Rows (VdxTroisChaines): CodeCIP, label, further text (empty for the
 * base's products). The rows delivered; 0 nothing found; -20 no array
 * (mode 0) or an array of another record size; -30 Options with both 1 and
 * 2; -4 Options 2 without a connected doctor's base; -500. */
VDX_API int32_t VDX_CALL RechercheProduitParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, int32_t Options,
                                                    const char* Suite, int32_t Nombre);
/* The same within one category, whose letter the low byte of Options
 * chooses: 0 "S", 1 "A", 2 "T", 4 "C", 8 "D", 16 "V", 32 "X", 64 all
 * products ("Z"); any other low byte gives -30. Options 256 hides deleted
 * products. Products reserved to hospitals are not hidden here, and there is
 * no doctor's base. */
VDX_API int32_t VDX_CALL RechercheProduitParPas2_Vdx(const char* Texte, SAFEARRAY** Tableau, int32_t Options,
                                                     const char* Suite, int32_t Nombre);
/* The products of a CodeStatut (see Statut_Vdx), in code order, with their
 * labels as LibelleProduit_Vdx gives them ("Code N introuvable" for a
 * product missing from the master table). Suite, the code of the last row of
 * the previous page (null or empty for the first page), makes the list begin
 * behind it; Nombre is the most rows to give, 0 or less for all.
 * Rows (VdxTroisChaines): CodeCIP, label, empty text. The rows; 0 none; -20
 * no array (mode 0) or an array of another record size; -500. */
VDX_API int32_t VDX_CALL RechercheProduitParStatut_Vdx(int32_t CodeStatut, SAFEARRAY** Tableau, const char* Suite,
                                                       int32_t Nombre);

/* ---- Composition ------------------------------------------------------ */

/* A substance number (Code) goes from 0 to 99999; numbers above 30000 are
 * concepts of the allergy thesaurus, which stand for their components.
 * Product codes are checked as in the Products section. A label a table
 * lacks never fails a call: the row says "Code N introuvable" (substances,
 * units, routes) or "Libellé inconnu" (classes). */

/* A component of a product. Quantite is a 32-bit float in the first four
 * bytes of its slot (the slot's other bytes are not part of it). */
typedef struct VdxComposant {
    intptr_t SansQuantite; /* 1 when Quantite is 0, else 0 */
    intptr_t CodeSubstance;
    float Quantite;
    BSTR Libelle;       /* the substance's label */
    BSTR QuantiteTexte; /* the quantity as printed ("500 mg") */
    BSTR LibelleUnite;  /* the unit's label */
} VdxComposant;
/* The composition of a product: its components in their order, the basis
 * the quantities are expressed on (Exprime: "un comprimé"...) and the text
 * of the composition (Composition), each empty when the base has none.
 * Mode 0: *Tableau (an array of VdxComposant) is emptied and *Exprime and
 * *Composition emptied once the code is checked and the tables opened; the
 * rows' strings are wide in a wide session, the two texts always 8-bit.
 * Other modes: a first row "basis@text", then one row per component:
 * CodeSubstance@SansQuantite@Quantite@Libelle@QuantiteTexte@LibelleUnite,
 * the quantity written without trailing zeros ("0.5", "1000").
 * The rows; 0 for a product without component, whose strings then stay
 * empty and for which nothing is delivered; -10, -13; -20 no array or an
 * array of another record size (mode 0); -500; -2000 Exprime or
 * Composition null in mode 0. */
VDX_API int32_t VDX_CALL ProduitPA_Vdx(const char* Code, SAFEARRAY** Tableau, BSTR* Exprime, BSTR* Composition);

/* The products that hold a substance, as an active substance (rows "PA")
 * or as an excipient (rows "EXC"), widened to its synonyms, a concept
 * giving the products of its components. The two exports are one search
 * and give the same rows. Products reserved to hospitals are left out
 * unless ActiveHospitaliers_Vdx(1), and so are lines by common name and
 * deleted products. A product appears once, "PA" winning over "EXC"; a
 * product the master table lacks reads "CIP : X inexistant". A substance
 * above every product of an active substance is not looked for among the
 * excipients. Rows (VdxTroisChaines): CodeCIP (seven digits), label, "PA"
 * or "EXC", sorted by label. The rows; -10 Code below 0 or above 99999;
 * -20 no array or an array of another record size (mode 0); -500. */
VDX_API int32_t VDX_CALL PAProduits_Vdx(int32_t Code, SAFEARRAY** Tableau);
VDX_API int32_t VDX_CALL ExcipientProduits_Vdx(int32_t Code, SAFEARRAY** Tableau);

/* The label of a substance, of an excipient, as a single text (see
 * Products). 1; -10 Code below 0 or above 99999; -90 unknown; -500. */
VDX_API int32_t VDX_CALL LibellePA_Vdx(int32_t Code, BSTR* Libelle);
VDX_API int32_t VDX_CALL LibelleExcipient_Vdx(int32_t Code, BSTR* Libelle);

/* The synonyms of a substance, itself not among them, with their labels as
 * substances. Rows (VdxCodeLibelle): code, label. The rows, 0 none; -10
 * Code below 0 or above 99999; -20; -500. */
VDX_API int32_t VDX_CALL SynonymeComposant_Vdx(int32_t Code, SAFEARRAY** Tableau);

/* The therapeutic classes of a product, in the order of their codes. Rows
 * (VdxTroisChaines): class code, the product's CodeCIP, class label. The
 * rows, 0 none; -10, -13; -20; -500. */
VDX_API int32_t VDX_CALL ProduitClasse_Vdx(const char* Code, SAFEARRAY** Tableau);

/* The routes of administration of a product. Rows (VdxDeuxChaines): route
 * code, label. A failing table gives fewer routes, not a failure. The rows,
 * 0 none; -10, -13; -20. */
VDX_API int32_t VDX_CALL ListeVoie_Vdx(const char* Code, SAFEARRAY** Tableau);

/* ---- Contra-indications against a patient ----------------------------- */

/* The products of a prescription against one patient: one alert per product
 * and contra-indication or precaution term that applies.
 * The patient: CodesPatient (strings), TypesPatient and ValeursPatient
 * (arrays of 32-bit integers: elements of 4 bytes, or pointer-sized slots),
 * all three of the same length. A type is 1 for a term of the vocabulary of
 * contra-indications, 2 for a CISP code, 3 for a CIM10 code (a double code
 * of 6, 8 or 10 characters is also searched as its two halves; a code of
 * three characters as the code followed by ".9" when that one exists). An
 * empty code stands for no pathology. The value goes unchanged into the
 * alerts the code causes. A pathology labelled with "GROSSESSE" makes a
 * woman whose Grossesse is 0 pregnant with an unknown term (-1).
 * Age in months, Poids in kg (0 unknown), Grossesse in weeks (0 not
 * pregnant, -1 pregnant with an unknown term), Allaitement not 0 when the
 * patient breast-feeds, Sexe "M" or "F" (anything else is a blank).
 * Products: CodeCIPs; a 13-digit code without mapping gives -13, and one
 * with a mapping is not looked at either; only seven-character codes are.
 * Levels (NiveauAlerte): the link digit of a matched pathology (0 to 2 for
 * contra-indications, 3 for precautions); 0 for a condition of age, weight
 * or sex on a contra-indication term, 9 for pregnancy or breast-feeding; 30
 * and 39 the same on a precaution. NiveauCI_Vdx(N) drops the alerts whose
 * filter level is below N: 2 for the levels 0, 2 and 9, 0 for 3, 30 and 39,
 * the level itself otherwise.
 * Sorted by product label. Outside mode 0 the inputs are read from the
 * input text as lists each ended by an empty line: CodesPatient,
 * TypesPatient, ValeursPatient, products (each cut to 7 characters), and
 * for ContreIndicationsProfil3_Vdx the analyses, value and type alternately.
 * The alerts; -10 no CodesPatient, or lengths that differ; -20 no
 * TypesPatient; -30 no ValeursPatient; -50 no product list; -60 no result
 * array (ContreIndicationsProfil2_Vdx) or no Analyses; -70 no result array
 * (ContreIndicationsProfil3_Vdx); -21 CodesPatient unreadable (the other
 * arrays give their own code); -12 an empty input text; -13; -500. */
typedef struct VdxAlerteCI {
    intptr_t NiveauAlerte;
    intptr_t ValeurPatient; /* -1 for a condition of the patient's profile */
    BSTR CodeProduit;
    BSTR LibelleProduit;
    BSTR CodeTerme;
    BSTR LibelleTerme;      /* or "Code X inexistant." */
    BSTR CodePatient;       /* the patient's code that matched; empty for the profile */
} VdxAlerteCI;
VDX_API int32_t VDX_CALL ContreIndicationsProfil2_Vdx(SAFEARRAY** CodesPatient, SAFEARRAY** TypesPatient,
                                                      SAFEARRAY** ValeursPatient, SAFEARRAY** Produits,
                                                      SAFEARRAY** Tableau, int32_t Age, int32_t Poids,
                                                      int32_t Grossesse, int32_t Allaitement, const char* Sexe);
/* The same with the patient's biological results: records of a value (a
 * range "a-b" or a text) and its type (1 range, 2 text), compared with the
 * term's (3: a range, "/", a text). An Age or Poids of 0 and a blank Sexe
 * are unknown and exclude nothing; Poids and Grossesse ranges include
 * their maximum (Age still excludes it). */
typedef struct VdxAnalyse {
    BSTR ValeurAnalyse;
    intptr_t TypeAnalyse;
} VdxAnalyse;
VDX_API int32_t VDX_CALL ContreIndicationsProfil3_Vdx(SAFEARRAY** CodesPatient, SAFEARRAY** TypesPatient,
                                                      SAFEARRAY** ValeursPatient, SAFEARRAY** Produits,
                                                      SAFEARRAY** Analyses, SAFEARRAY** Tableau, int32_t Age,
                                                      int32_t Poids, int32_t Grossesse, int32_t Allaitement,
                                                      const char* Sexe);
/* Products against pathology terms at an age: the term that stands for the
 * last of Termes (EquivalentPathologie_Vdx) is checked, the only one kept.
 * Rows: level, product label, term label, one per pair of labels, sorted by
 * product label then by level from the highest. Outside mode 0 the input
 * text holds the product codes, then behind its last line end the terms,
 * separated by "@". The count of alerts before pairs of labels are merged;
 * 0 when a product code is empty; -10 no product list; -20 no term list;
 * -30 no result array; -12; -13; -500. The pharmacy's form takes a Mode it
 * does not read. */
typedef struct VdxFicheCI {
    intptr_t NiveauAlerte;
    BSTR LibelleProduit;
    BSTR LibelleTerme;
} VdxFicheCI;
VDX_API int32_t VDX_CALL ContreIndicationsProfil_Vdx(SAFEARRAY** Produits, SAFEARRAY** Termes, SAFEARRAY** Tableau,
                                                     int32_t Age);
VDX_API int32_t VDX_CALL ContreIndicationsProfilPharm_Vdx(SAFEARRAY** Produits, SAFEARRAY** Termes,
                                                          SAFEARRAY** Tableau, int32_t Age, int32_t Mode);
/* The contra-indication term that stands for a pathology code: the code
 * itself when it is a contra-indication or precaution term, else its first
 * equivalent term, else the first term linked with it as a CIM10 code.
 * Into *Terme (8-bit in mode 0, the flat text otherwise). 1; 0 none (empty
 * text); -10 a code absent, empty or longer than 10 characters; -500. */
VDX_API int32_t VDX_CALL EquivalentPathologie_Vdx(const char* Code, BSTR* Terme);

/* ---- Allergies -------------------------------------------------------- */

/* The products a patient's allergies forbid. Allergens are numbers: up to
 * 30000 a substance, above it a concept of the thesaurus (a chemical
 * family). Each is expanded into the substances it reaches: a concept's
 * components and those of its cross-allergies (the first five), a
 * substance's concepts and synonyms, then the synonyms of all reached.
 * Each product (a 13-digit code is mapped under CIP13Actif 1; it must then
 * have 7 characters, else -30) is compared, in this order: its
 * contra-indication then precaution terms with the allergy terms of exactly
 * 10 characters (or, when none matches, with the terms' equivalents), its
 * excipients, for a line by common name the excipients with known effect
 * of its products, its active components. One row per product and cause
 * (the term, or the allergen in decimal), the first chain met kept; not
 * sorted. The chain reads "ALLERGEN -> CONCEPT : SUBSTANCE", or
 * "ALLERGEN -> SUBSTANCE", or the substance alone when it is the allergen.
 * Outside mode 0 the lists are read from the input text in the order of
 * the arguments, each ended by an empty line. The rows; -10 no term
 * array; -20 no allergen array; -30 no product array or a code of another
 * length; -50 no result array, or it could not grow; -21 an array
 * unreadable; -12 an empty input text; -13; -90 a line by common name
 * without its records; -500. */
typedef struct VdxFicheAllergie {
    intptr_t TypeAlerte; /* 1 through an allergy term, 2 through an allergen */
    BSTR CodeProduit;    /* 13 digits under CIP13Actif 1 */
    BSTR LibelleProduit;
    BSTR CodeCause;      /* the term, or the allergen in decimal */
    BSTR TexteCause;     /* the term's label, or the chain */
} VdxFicheAllergie;
VDX_API int32_t VDX_CALL ControleAllergies_Vdx(SAFEARRAY** Termes, SAFEARRAY** Allergenes, SAFEARRAY** Produits,
                                               SAFEARRAY** Tableau);
/* The same for the excipients of the products only, without terms; a
 * substance leads to its first concept only. -20 no allergen array; -30 no
 * product array or a code of another length; -50 no result array. */
VDX_API int32_t VDX_CALL RechercheEEN_Vdx(SAFEARRAY** Allergenes, SAFEARRAY** Produits, SAFEARRAY** Tableau);
/* The products that belong to a patient's therapeutic classes: a product
 * is concerned when one of its classes begins with the host's class, so a
 * class catches its sub-classes; a row for each of its classes under each
 * host class, with the host's class and its label ("Libell\xE9 inconnu"
 * when the class or the product has none). Outside mode 0 the lists are
 * read line by line, a leading "@" or line feed taken off, each ended by an
 * empty line. The rows; 0 when a list is empty; -10 no product array; -20
 * no class array; -30 no result array; -21; -12; -13; -500. */
typedef struct VdxFicheClasseAllergie {
    BSTR CodeProduit;
    BSTR LibelleProduit;
    BSTR CodeClasse;
    BSTR LibelleClasse;
} VdxFicheClasseAllergie;
VDX_API int32_t VDX_CALL Allergies_Vdx(SAFEARRAY** Produits, SAFEARRAY** Classes, SAFEARRAY** Tableau);

/* ---- Redundancy -------------------------------------------------------- */

/* Pairs of products of a prescription that overlap: the same substance
 * (TypeRedondance 3), a substance and a synonym of it (2: Substance1 and
 * Substance2 the components whose synonym is shared), or two classes of
 * the products under one class listed as risky when doubled (4: the longest
 * listed class that begins both, compared on 10 characters at most). Only
 * the components with a quantity of products given by a route of the
 * whole body ("A") are compared; no quantity is read. A pair gives one row
 * per shared substance: a shared class adds none beside a shared
 * substance. Rows in the order of the three comparisons. Outside mode 0
 * the codes are read from the input text, a list ended by an empty line.
 * The rows; 0 for an empty list; -10 no product array; -20 no result
 * array; -12 an empty input text or a gap in the list; -13; -21; -500. */
typedef struct VdxFicheSurdosage {
    BSTR CIP1;
    BSTR CIP2;
    BSTR Libelle1;
    BSTR Libelle2;
    BSTR Substance1;          /* in decimal, or empty */
    BSTR Substance2;
    BSTR LibelleSubstance1;
    BSTR LibelleSubstance2;
    BSTR SubstanceCommune;    /* the number both products share, or empty */
    BSTR LibelleCommune;
    BSTR ClasseCommune;       /* the listed class, or empty */
    BSTR LibelleClasseCommune;
    intptr_t TypeRedondance;  /* 2 synonyms, 3 same substance, 4 same class */
} VdxFicheSurdosage;
VDX_API int32_t VDX_CALL Surdosage_Vdx(SAFEARRAY** Produits, SAFEARRAY** Tableau);
/* The count of the same rows, which are dropped. */
VDX_API int32_t VDX_CALL SurdosageTest_Vdx(SAFEARRAY** Produits);

/* The physico-chemical incompatibilities between the injectable products
 * of a prescription (those with a route of the injectable group, "A2..."):
 * for each pair in the order of the list (a code given twice taken once),
 * the incompatibilities the base files between its sides, in either order:
 * a side is a substance of the product's composition, the product as a
 * whole ("Tout composant confondu") or any product ("Tout Produit"), never
 * both sides any product. Each row is numbered by Rang from 1, with the
 * level (1 "Incompatible", 2 "A \xE9viter"), the condition ("L" "M\xEAme
 * ligne de perfusion", "S" "M\xEAme seringue", "Y" "Site en Y"), a text
 * and its source. IPCControle_Vdx gives the ten fields of VdxIPC;
 * IPCControleTest_Vdx the eighteen of VdxIPCDetail: also the two sides
 * (code: five digits, a CodeCIP or "*"; label), the condition's code, each
 * product's injectable routes, and Sens 1 when the pair is filed in the
 * other order. The input is that of Surdosage_Vdx. The rows, 0 none; -10
 * no list; -12 a code behind an empty entry; -13; -20 no array or an array
 * of another record size (mode 0); -500. */
typedef struct VdxIPC {
    intptr_t Rang;
    BSTR CodeCIP1;
    BSTR Libelle1;
    BSTR CodeCIP2;
    BSTR Libelle2;
    intptr_t Niveau;
    BSTR LibelleNiveau;
    BSTR LibelleCondition;
    BSTR Texte;
    BSTR Source;
} VdxIPC;
typedef struct VdxIPCDetail {
    intptr_t Rang;
    BSTR CodeCIP1;
    BSTR Libelle1;
    BSTR CodeCIP2;
    BSTR Libelle2;
    BSTR CodeComposant1;
    BSTR LibelleComposant1;
    BSTR CodeComposant2;
    BSTR LibelleComposant2;
    intptr_t Niveau;
    BSTR LibelleNiveau;
    BSTR Condition;
    BSTR LibelleCondition;
    BSTR Texte;
    BSTR Source;
    BSTR Voie1;
    BSTR Voie2;
    intptr_t Sens;
} VdxIPCDetail;
VDX_API int32_t VDX_CALL IPCControle_Vdx(SAFEARRAY** Produits, SAFEARRAY** Tableau);
VDX_API int32_t VDX_CALL IPCControleTest_Vdx(SAFEARRAY** Produits, SAFEARRAY** Tableau);
/* The incompatibilities of one pair of products, whatever their routes, in
 * the rows of IPCControleTest_Vdx. The rows, 0 none (and for a code given
 * twice); -10, -13 for Code1; -20, -13 for Code2; -30 no array or an array
 * of another record size (mode 0); -500. */
VDX_API int32_t VDX_CALL IPC_Info_Vdx(const char* Code1, const char* Code2, SAFEARRAY** Tableau);

/* ---- Update --------------------------------------------------------------- */

/* The number of update files in Repertoire (with or without a final
 * separator) newer than the base: titles "RE" and the date of issue as
 * AAMMJJ, extension ".VDX" in any case, taken in the order of their names
 * without case while their titles have 8 characters, at most 45; a file is
 * newer when its six date characters compare above those of the base's
 * date. A directory that does not exist holds none. -2; -10 Repertoire null
 * or empty; -500 the base's date unreadable. */
VDX_API int32_t VDX_CALL IsMaj_Vdx(const char* Repertoire);
/* Applies the update files of Repertoire newer than the base, oldest first,
 * each as one unit: its rows and the base's new date go into copies of the
 * tables it touches, put in place once the whole file went through, so
 * that a failure or a stopped process leaves the base as before that file
 * (the next run or connection finishes a switch that was under way). The
 * host's progress callback hears the file's date, the table and the
 * position. 1; 0 a row failed (its message box shown, the run stopped
 * there, the files before it applied); -10 Repertoire null or empty, or a
 * file that can't be read; -2; -500. A run that finds no file gives the
 * result of the previous run (1 at first). ExecuteMaj2_Vdx reads tokens
 * of up to 512000 bytes instead of 256000, and a fault inside it gives
 * -2000 without a message box. */
VDX_API int32_t VDX_CALL ExecuteMaj_Vdx(const char* Repertoire);
VDX_API int32_t VDX_CALL ExecuteMaj2_Vdx(const char* Repertoire);
/* The coverage of the next runs: 1 the products only, 2 and 3 with the
 * identification and posology tables, 4 every table (the default); a value
 * above 256 has 256 taken off. Needs no connection; 1. */
VDX_API int32_t VDX_CALL SetTypeMaj_Vdx(int32_t Type);
/* Does nothing; 0. */
VDX_API int32_t VDX_CALL GetMajError_Vdx(int32_t Inutilise);
/* The doctor's private base: a directory of its own (PRO, PATH, POSO and
 * TEXU, .DAT and .NDX). Chemin: over four characters it holds a separator
 * ("\\" or "/") and its last part has at most four; it does not begin with
 * "VDX" (-13). Each needs the drug base connected (-2); -10 an empty
 * Chemin; -500 a file that can't be written, FichierErreur the base's path
 * and the file's name. Each edit goes in whole or not at all. */
/* Creates the base's eight files (and its directory); a base already there
 * is left as it is. 1. */
VDX_API int32_t VDX_CALL CreationMedecin_Vdx(const char* Chemin);
/* Connects the base, finishing an edit or migration cut short, bringing an
 * older PRO to its folded label keys (the old pair kept as PROold) and TEXT
 * to TEXU. 1; -7 a doctor's base is connected; -6 PRO, PATH or POSO
 * missing, or both TEXU and TEXT. */
VDX_API int32_t VDX_CALL ConnectionMedecin_Vdx(const char* Chemin);
/* Closes the base's files; 1. */
VDX_API int32_t VDX_CALL DeConnectionMedecin_Vdx(void);
/* Deletes the files of the base that are there; -5 the connected base. 1. */
VDX_API int32_t VDX_CALL SuppressionMedecin_Vdx(const char* Chemin);
/* Rebuilds the index of each table from its records. 1. */
VDX_API int32_t VDX_CALL RepairBaseMedecin_Vdx(const char* Chemin);
/* A product of the drug base with the doctor's comment (its label that of
 * LibelleProduit_Vdx, the comment cut to 511 characters); Operation 0
 * adds, 1 replaces, 2 deletes. 1; -10 no code; -13 not 7 characters; -4 no
 * doctor's base; -20 an empty comment to replace; -90 no record to replace
 * or delete, or a code the drug base lacks; -91 a record to add. */
VDX_API int32_t VDX_CALL ProduitsMedecin_Vdx(const char* CodeCIP, const char* Commentaire, int32_t Operation);
/* The doctor's comment of a product: 1; 0 no record; -10; -13; -4. */
VDX_API int32_t VDX_CALL CommentaireMedecin_Vdx(const char* CodeCIP, BSTR* Commentaire);
/* A pathology of the doctor's: Operation 0 adds (under *Code, or when it
 * is empty under the next free code of seven digits, given back in *Code),
 * 1 replaces, any other deletes; the label cut to 79 characters. CodeCISP,
 * when given, must be a code of VDXCISP. 1; -10; -13 a code not of 7
 * characters; -20 an empty label; -90 no record, or an unknown CISP code;
 * -91 the code or the label already there; -92 the label under another
 * code; -4. */
VDX_API int32_t VDX_CALL PathologiesMedecin_Vdx(BSTR* Code, const char* Libelle, const char* CodeCISP,
                                                int32_t Operation);

/* Rebuilds the product table of Repertoire from its raw file VDXPRO.DAT:
 * the header skipped up to the first seven digits, then records of 236
 * bytes, those whose first seven bytes are digits kept with their code and
 * label keys (a label already present gets a point, or its last byte
 * raised at full length); the rebuilt pair replaces VDXPRO.DAT and
 * VDXPRO.NDX. The steps of the creation go to the progress callback. Needs
 * no connection. 1; 0 the file can't be opened or the table written (its
 * message box shown); -10 Repertoire null or empty. */
VDX_API int32_t VDX_CALL RebuildVDXPRO_Vdx(const char* Repertoire);

/* ---- HTML reports of the checks ----------------------------------------- */

/* Each runs its check on the same inputs (read as the check reads them:
 * the arrays in mode 0, the text input in the others) and writes the rows
 * as one HTML page in code page 1252 into the file Fichier, opened "w+b"
 * and written in one block; FeuilleStyle, when not empty, is linked as the
 * stylesheet. The result is the check's: its row count, or its negative
 * code, the page then written with its head and an empty body. A file that
 * can't be opened is passed over and the count still returned. -2; -10 a
 * null or empty list of products, -12 a code behind an empty entry, and
 * the other codes of the check's inputs, no file written; -20 a null or
 * empty file name or a null stylesheet, no file written.
 * The interactions of Interactions2_Vdx, grouped by severity, each with
 * its detail, the chapter on interactions of the products of each pair
 * (or "Information indisponible"), a product's own messages apart;
 * InteractionsHtml_Vdx takes no patient. */
VDX_API int32_t VDX_CALL InteractionsHtml_Vdx(SAFEARRAY** Produits, const char* Fichier, const char* FeuilleStyle);
VDX_API int32_t VDX_CALL Interactions2Html_Vdx(SAFEARRAY** Produits, SAFEARRAY** CodesPatient,
                                               SAFEARRAY** TypesPatient, const char* Fichier,
                                               const char* FeuilleStyle, int32_t Age, int32_t Poids,
                                               int32_t Grossesse, int32_t Allaitement, const char* Sexe);
/* The opposable medical references of the products (RMO_Vdx of each, a
 * code given twice taken once): each with its product, the product or
 * class it is attached to, its title, text, source and date; the page says
 * "Il n'y a pas de RMO d\xE9tect\xE9es." without any. The patient's lists
 * are not read. The result is the count of the rows. */
VDX_API int32_t VDX_CALL RMOHtml_Vdx(SAFEARRAY** Produits, SAFEARRAY** CodesPatient, SAFEARRAY** TypesPatient,
                                     const char* Fichier, const char* FeuilleStyle);
/* The contra-indications and precautions of the products against the
 * patient, as ContreIndicationsProfil3_Vdx finds them with the levels of
 * the report (10 and 20 for the link digits 1 and 2): absolute, relative,
 * precautions, each row with its cause. Member 2 puts Titre in the page's
 * title and the code of each term beside it; member 3 compares the
 * analyses too. The result is the number of alerts. */
VDX_API int32_t VDX_CALL ContreIndicationsProfilHtml_Vdx(SAFEARRAY** CodesPatient, SAFEARRAY** TypesPatient,
                                                         SAFEARRAY** ValeursPatient, SAFEARRAY** Produits,
                                                         int32_t Age, int32_t Poids, int32_t Grossesse,
                                                         int32_t Allaitement, const char* Sexe,
                                                         const char* Fichier, const char* FeuilleStyle);
VDX_API int32_t VDX_CALL ContreIndicationsProfil2Html_Vdx(SAFEARRAY** CodesPatient, SAFEARRAY** TypesPatient,
                                                          SAFEARRAY** ValeursPatient, SAFEARRAY** Produits,
                                                          int32_t Age, int32_t Poids, int32_t Grossesse,
                                                          int32_t Allaitement, const char* Sexe,
                                                          const char* Fichier, const char* FeuilleStyle,
                                                          const char* Titre);
VDX_API int32_t VDX_CALL ContreIndicationsProfil3Html_Vdx(SAFEARRAY** CodesPatient, SAFEARRAY** TypesPatient,
                                                          SAFEARRAY** ValeursPatient, SAFEARRAY** Produits,
                                                          SAFEARRAY** Analyses, int32_t Age, int32_t Poids,
                                                          int32_t Grossesse, int32_t Allaitement,
                                                          const char* Sexe, const char* Fichier,
                                                          const char* FeuilleStyle, const char* Titre);
/* The allergies of ControleAllergies_Vdx; with Notoires not 0, then the
 * excipients with known effect that the allergens reach (RechercheEEN_Vdx).
 * The result is the count of the allergies. */
VDX_API int32_t VDX_CALL ControleAllergiesHtml_Vdx(SAFEARRAY** Termes, SAFEARRAY** Allergenes,
                                                   SAFEARRAY** Produits, const char* Fichier,
                                                   const char* FeuilleStyle, int32_t Notoires);
/* The redundancies of Surdosage_Vdx. */
VDX_API int32_t VDX_CALL SurdosageHtml_Vdx(SAFEARRAY** Produits, const char* Fichier, const char* FeuilleStyle);
/* No physico-chemical incompatibility is held: the page of a prescription
 * says none, the sheet of a pair of products has each of its texts
 * "Information provisoirement indisponible"; the result is 0. */
VDX_API int32_t VDX_CALL IPCControleHtml_Vdx(SAFEARRAY** Produits, const char* Fichier, const char* FeuilleStyle);
VDX_API int32_t VDX_CALL IPC_InfoHtml_Vdx(SAFEARRAY** Produits, const char* Fichier, const char* FeuilleStyle);

/* ---- Advisories on one product ----------------------------------------- */

/* Whether a product is to be watched in a heat wave: one of its components,
 * or a synonym of one, falls in a category of concern. Into *Texte (8-bit
 * in mode 0, the flat text otherwise) the sentence "Le produit LABEL est
 * \xE0 prendre en consid\xE9ration en cas de vague de chaleur car comportant
 * dans sa composition : " and a line " - COMPONENT, appartenant \xE0 la
 * cat\xE9gorie des CATEGORY" a component (" et des CATEGORY" for a further
 * category of one number). 1 concerned; 0 not, and nothing delivered for a
 * product given by no route of the whole body ("A"); -10 no code and -13
 * a code of another length, both before -2; -500. */
VDX_API int32_t VDX_CALL IsCanicule_Vdx(const char* Code, BSTR* Texte);
/* The kosher rating of a product (MEDIEL), its number in decimal into
 * *Sortie: 1 to 9, 0 for none. 1; -10; -13 a code not of 7 characters;
 * -90 an unknown product; -500. */
VDX_API int32_t VDX_CALL IsMediel_Vdx(const char* Code, BSTR* Sortie);
/* Every product filed under the rating's letter "M", with its label and the
 * rating's text ("Aucune information MEDIEL disponible " for none). The
 * rows; -20 no array in mode 0; -90 a product without its complement
 * record; -500. */
typedef struct VdxLigneMediel {
    BSTR CodeCIP;
    BSTR Libelle;
    BSTR Texte;
} VdxLigneMediel;
VDX_API int32_t VDX_CALL ProduitMediel_Vdx(SAFEARRAY** Tableau);

/* ---- Posology: vocabularies -------------------------------------------- */

/* The vocabularies from which a host builds a posology of its own: every
 * record as a code and a label, sorted by label in byte order. Moments of
 * the take, specifications, units of take (the singular), and the periods
 * and durations with the cycle (-1, "cycle") among them. 1; -20 no array
 * in mode 0; -100 a table without a record; -21; -500. */
VDX_API int32_t VDX_CALL PosoMoments_Vdx(SAFEARRAY** Tableau);
VDX_API int32_t VDX_CALL PosoSpecificationsPrise_Vdx(SAFEARRAY** Tableau);
VDX_API int32_t VDX_CALL PosoUnitesPrise_Vdx(SAFEARRAY** Tableau);
VDX_API int32_t VDX_CALL PosoDurees_Vdx(SAFEARRAY** Tableau);
/* The label of a code of a posology's vocabulary into *Libelle (8-bit in
 * mode 0, the flat text otherwise). 1; -90 an unknown code (the cycle, -1,
 * is none of the table of durations); -500. */
VDX_API int32_t VDX_CALL LibelleMoment_Vdx(int32_t Code, BSTR* Libelle);
VDX_API int32_t VDX_CALL LibelleDurees_Vdx(int32_t Code, BSTR* Libelle);
VDX_API int32_t VDX_CALL LibelleSpecification_Vdx(int32_t Code, BSTR* Libelle);
VDX_API int32_t VDX_CALL LibelleNature_Vdx(int32_t Code, BSTR* Libelle);
VDX_API int32_t VDX_CALL LibelleVoie_Vdx(int32_t Code, BSTR* Libelle);
VDX_API int32_t VDX_CALL LibelleProfil_Vdx(int32_t Code, BSTR* Libelle);
/* The singular label of a unit of take; -10 a code below 1. */
VDX_API int32_t VDX_CALL LibelleUnitePrise_Vdx(int32_t Code, BSTR* Libelle);
/* The label of a terrain: "Adulte" (A), "Adolescent" (AD), "Adulte -
 * Enfant" (AE), "Adulte Femme" (AF), "Adulte Homme" (AH), "Enfant" (E and
 * every E? but EN), "Enfant - Nourrisson" (EN), "Nourrisson" (N), "Sujet
 * \xE2g\xE9" (S), "Tout \xE2ge" (T); empty for any other. No table is read. 1. */
VDX_API int32_t VDX_CALL LibelleTerrain_Vdx(const char* Terrain, BSTR* Libelle);
/* The label of a moment of the take and the multiplier of its quantity
 * (0 for none): into *Libelle (8-bit) and *Multiplicateur in mode 0, the
 * flat text "label@multiplier" otherwise. 1; -90 an unknown code; -20 and
 * -30 Libelle or Multiplicateur null in mode 0; -500. */
VDX_API int32_t VDX_CALL LibelleMoment2_Vdx(int32_t Code, BSTR* Libelle, float* Multiplicateur);
/* The first and second units of take of a product (0 when it has none):
 * into *Unite1 and *Unite2 in mode 0, the flat text "first@second"
 * otherwise. The code is checked as for the lists of posologies. 1; -10;
 * -13; -90 an unknown product; -20 and -30 Unite1 or Unite2 null in mode
 * 0; -500. */
VDX_API int32_t VDX_CALL UnitesPrisesProduit_Vdx(const char* Code, int32_t* Unite1, int32_t* Unite2);

/* ---- Posology: catalogue ------------------------------------------------ */

/* The posologies of a product ranked against a patient. Each row has a
 * level: 0 a posology of the doctor's own base, 1 the one that applies
 * (implied, or the only one that does), 2 applies, 3 not for this patient,
 * 4 (PosoListe2_Vdx) applies and fits the indication and profile asked.
 * Rows by level, then by title in byte order. The title is the terrain's
 * phrase ("Enfant de 6 ans \xE0 12 ans de 20 Kg \xE0 40 Kg"), then behind
 * ". " the profile, "Traitement " and the nature, the indication, "Voie "
 * and the route, each when known, and ". (Implicite)" for an implied one;
 * a doctor's posology has its own label. Its CodePosologie is the
 * CodeCIP and two characters, or "#", the CodeCIP and three characters for
 * the doctor's.
 * The patient: Terrain ("A" adult, "E" child, "N" infant, "S" elderly;
 * only its first letter counts, any other matches nothing), Age in months
 * (0 unknown; a child from 31 to 216, an infant at most 30), Poids in
 * kilograms, or in grams above 600 (0 unknown), Taille (not used), Sexe
 * ("F", "H" or "M"; its first letter).
 * With an agent present, the call is first told to it, connected or not.
 * Code is checked as everywhere (a 13-digit code mapped under CIP13Actif
 * 1) and must then have 7 characters. 1; -10 no code; -13; -50 an age
 * below 0 or outside the terrain's; -60 a weight below 0; -70 a height
 * below 0; -20 no array in mode 0; -21; -4; -500. */
typedef struct VdxLignePosologie {
    intptr_t Niveau;
    BSTR CodePosologie;
    BSTR Titre;
} VdxLignePosologie;
VDX_API int32_t VDX_CALL PosoListe_Vdx(const char* Code, SAFEARRAY** Tableau, const char* Terrain, int32_t Age,
                                       int32_t Poids, int32_t Taille, const char* Sexe);
/* The same with the parts of each title, which puts the nature first, and
 * what the host looks for: the indications (Indication of at least two
 * characters: with ModeIndication 0 one key of ten digits, with 1 the
 * beginning of the codes, such as CIM10 codes, linked with indications)
 * and the patient's profiles (Filtres: in mode 0 an array of
 * VdxFiltreProfil, which may be null or empty; in the other modes the
 * input text, rows "type@value"). A posology that applies has level 4 when
 * its indication is one of those asked (or none is asked and it has none)
 * and its profile matches a filter of its type: for type 1 ranges "low-high"
 * that overlap, the filter's widened by 5 % each way; for type 2 the
 * filter's text within the profile's, when no indication is asked (or no
 * filter is given and it has no profile). Asking for nothing fits nothing.
 * The flat rows are Niveau, CodePosologie, Titre, LibelleIndication,
 * TexteNature, LibelleProfil, PhraseTerrain, TexteVoie, CodeIndication,
 * CodeNature, CodeProfil, CodeTerrain, CodeVoie. */
typedef struct VdxLignePosologie2 {
    intptr_t Niveau;
    BSTR CodePosologie;
    BSTR Titre;
    BSTR PhraseTerrain;
    intptr_t CodeTerrain;
    BSTR LibelleProfil;
    intptr_t CodeProfil;
    BSTR LibelleIndication;
    intptr_t CodeIndication;
    BSTR TexteNature; /* "Traitement " and the label, or empty */
    intptr_t CodeNature;
    BSTR TexteVoie;   /* "Voie " and the label, or empty */
    intptr_t CodeVoie;
    intptr_t Implicite; /* 0, or -1 for an implied posology */
} VdxLignePosologie2;
typedef struct VdxFiltreProfil {
    BSTR ValeurProfil;
    intptr_t TypeProfil; /* 1 a range "low-high", 2 a text */
} VdxFiltreProfil;
VDX_API int32_t VDX_CALL PosoListe2_Vdx(const char* Code, SAFEARRAY** Tableau, const char* Terrain, int32_t Age,
                                        int32_t Poids, int32_t Taille, const char* Sexe, const char* Indication,
                                        int32_t ModeIndication, SAFEARRAY** Filtres);

/* One posology, the form the host keeps and gives back to the sentences
 * and the dose checks: 20 numbers, then 5 strings. CodeUnite2 is the
 * product's other unit of take when the posology is to be converted
 * (Conversion), else 0. Libelle is the title of PosoListe_Vdx cut to 255
 * characters (a doctor's posology: its own); Texte its free text. */
typedef struct VdxPosologieHote {
    VdxReel DoseMin;
    VdxReel DoseMax;
    intptr_t CodeUnite;
    intptr_t CodeUnite2;
    VdxReel QuantiteRef; /* 1 for a dose by kilo (TypeRef "P") or square metre ("S") */
    intptr_t Conversion;
    intptr_t PrisesMin;
    intptr_t PrisesMax;
    intptr_t Intervalle;
    intptr_t CodePeriode; /* -1 a cycle: PrisesMin and PrisesMax its first and last day */
    intptr_t CodeMoment;
    intptr_t DureeMin;
    intptr_t DureeMax;
    intptr_t CodeDuree;
    VdxReel DoseMaximum;
    intptr_t MaximumRapporte;
    intptr_t CodePeriodeMaximum;
    intptr_t CodeSpecification;
    intptr_t CodeSpecification2;
    intptr_t NombreModeles;
    BSTR CodePosologie;
    BSTR CodeCIP;
    BSTR Libelle;
    BSTR TypeRef;
    BSTR Texte;
} VdxPosologieHote;
/* Loads a posology by its code into *Posologie (its strings emptied first,
 * 8-bit), or one flat row of the 25 fields. A code beginning with "#" is
 * the doctor's. 1; -10 no code; -13 a code of another length (9, or 11 for
 * the doctor's); -4 a doctor's code without the doctor's base; -90 an
 * unknown code; -20 Posologie null in mode 0; -500. */
VDX_API int32_t VDX_CALL PosoLoad_Vdx(const char* Code, VdxPosologieHote* Posologie);
/* A posology of the doctor's, in the form PosoLoad_Vdx gives: Operation 0
 * adds it under "#", its CodeCIP and the product's first free number from
 * "000" (given back in CodePosologie in mode 0), its Texte into TEXU; 1
 * replaces and 2 deletes the one of its CodePosologie. 1; -4; -20 a record
 * without its strings (CodeCIP null); -16 no CodeCIP of 7 characters; -10
 * no CodePosologie to replace or delete; -13 one of another product or
 * length; -90 no record; -500. */
VDX_API int32_t VDX_CALL PosologiesMedecin_Vdx(VdxPosologieHote* Posologie, int32_t Operation);
/* Whether a product has posologies: 0 none; 1 in the base; 2 in the
 * doctor's base only (any code of the same first six digits); 3 both. -10;
 * -13; -500. */
VDX_API int32_t VDX_CALL PosoExiste_Vdx(const char* Code);

/* ---- Posology: sentences and quantities ----------------------------------- */

/* A posology told as a prescription prints it, for a patient of Poids
 * kilograms (grams above 600; 0 unknown) and Taille centimetres (0
 * unknown): Phrase1 «1 \xE0 2 comprim\xE9s 3 fois par jour pendant 5
 * jours.», Phrase2 the same in the product's other unit (Conversion), and
 * for each unit the number of packages the treatment takes (Boites), the
 * quantity (Quantite) and the share of the last package used (Utilisation,
 * a percentage). A dose per kilo or square metre is scaled for a known
 * patient, else told so (" par Kilo"); doses are rounded by the product's
 * rounding code; a narcotic's numbers are told in words too. A posology of
 * models says its Texte (TexteLibre is then empty). Mode 0: *Posologie is
 * read, the five strings of *Resultat emptied then filled (8-bit); other
 * modes: the input text holds the 25 fields of the posology as one row,
 * and one row of the 17 fields is delivered. 1; -20 a weight below 0; -30
 * a height below 0; -50 Resultat null and -10 Posologie null (mode 0); -14
 * an empty input text or a number left out; -16 a CodeCIP not of 7
 * characters; -110 a moment of the day with no period over a duration
 * shorter than a day; -111 a cycle over a duration shorter than a year;
 * -112 a duration shorter than the period; -113 nothing to say (no unit
 * label, or no dose, and no model); -500 ("VDXPURPI.NDX" for the missing
 * index of the units of take). PosoDec2_Vdx does the same without rounding
 * the doses; PosoDec3_Vdx puts "##1" behind the dose and "##2" in front of
 * the duration, so that a host can part the sentence. */
typedef struct VdxResultatPosologie {
    VdxReel Dose1Min;
    VdxReel Dose1Max;
    VdxReel Maximum1;
    VdxReel Dose2Min;
    VdxReel Dose2Max;
    VdxReel Maximum2;
    VdxReel Utilisation1;
    VdxReel Utilisation2;
    VdxReel Quantite1;
    VdxReel Quantite2;
    intptr_t Unite1;
    intptr_t Unite2;
    BSTR Phrase1;
    BSTR Phrase2;
    BSTR TexteLibre;
    BSTR Boites1;
    BSTR Boites2;
} VdxResultatPosologie;
VDX_API int32_t VDX_CALL PosoDec_Vdx(VdxPosologieHote* Posologie, int32_t Poids, int32_t Taille,
                                     VdxResultatPosologie* Resultat);
VDX_API int32_t VDX_CALL PosoDec2_Vdx(VdxPosologieHote* Posologie, int32_t Poids, int32_t Taille,
                                      VdxResultatPosologie* Resultat);
VDX_API int32_t VDX_CALL PosoDec3_Vdx(VdxPosologieHote* Posologie, int32_t Poids, int32_t Taille,
                                      VdxResultatPosologie* Resultat);

/* ---- Posology: dose checks -------------------------------------------------- */

/* The limits of a product for a terrain, by the key of its seven digits and
 * the terrain's letter ("3000001A"; "T" for every terrain): eleven for the
 * product's first unit of take, the same eleven for its second, then three
 * durations in days. Daily doses: the recommended range (RecoMin, RecoMax;
 * per BaseKg kilos, per BaseM2 square metres) and the ceiling (MaxJour,
 * MaxKg, MaxM2). Into *Bornes in mode 0, one row of the 25 otherwise. 1;
 * -10 no key; -13 a key not of 8 characters; -90 an unknown key; -20
 * Bornes null in mode 0; -500. */
typedef struct VdxBornesPosologie {
    VdxReel RecoMin;
    VdxReel RecoMax;
    VdxReel RecoMinKg;
    VdxReel RecoMaxKg;
    VdxReel BaseKg;
    VdxReel RecoMinM2;
    VdxReel RecoMaxM2;
    VdxReel BaseM2;
    VdxReel MaxJour;
    VdxReel MaxKg;
    VdxReel MaxM2;
    VdxReel RecoMinUnite2;
    VdxReel RecoMaxUnite2;
    VdxReel RecoMinKgUnite2;
    VdxReel RecoMaxKgUnite2;
    VdxReel BaseKgUnite2;
    VdxReel RecoMinM2Unite2;
    VdxReel RecoMaxM2Unite2;
    VdxReel BaseM2Unite2;
    VdxReel MaxJourUnite2;
    VdxReel MaxKgUnite2;
    VdxReel MaxM2Unite2;
    intptr_t DureeRecoMin;
    intptr_t DureeRecoMax;
    intptr_t DureeMaximum;
} VdxBornesPosologie;
VDX_API int32_t VDX_CALL PosoBornes_Vdx(const char* Code, VdxBornesPosologie* Bornes);
/* A posology as prescribed (read as PosoDec_Vdx reads it; a 13-digit
 * CodeCIP mapped under CIP13Actif 1) against the limits of its product
 * under the first letter of its Libelle, else under "T", for a patient of
 * Poids kilograms and Taille centimetres. The daily doses compared are the
 * given doses times the takes and the periods of a day; a posology with a
 * ceiling of its own (as loaded by its CodePosologie) is checked against
 * it only; a posology per kilo or square metre against the limits per
 * kilo or square metre. The result: 0 when nothing could be checked (a
 * model, a product without identification, no limits), otherwise 1 plus 4
 * above the daily ceiling, 8 above the highest recommended dose, 16 below
 * the lowest, 32 above the maximum duration, 64 above the longest
 * recommended duration, 128 below the shortest. The duration alert into
 * *AlerteDuree, the dose alert into *AlerteDose (both emptied first, 8-bit),
 * or one row of them. -2; -20 a weight below 0; -30 a height below 0; -10
 * Posologie null (mode 0); -14; -13; -16; -40, -50 a host string null in
 * mode 0; -500. */
VDX_API int32_t VDX_CALL CheckPosologie_Vdx(VdxPosologieHote* Posologie, int32_t Poids, int32_t Taille,
                                            BSTR* AlerteDuree, BSTR* AlerteDose);
/* The creatinine clearance by Cockcroft and Gault, in ml/min, rounded:
 * Creatinine in micromoles a litre (Genre 1) or milligrams a litre (Genre
 * 2), Poids in kilograms, Age in years; a woman's ("F") times 0.85,
 * truncated. -1 for another Genre, a creatinine of 0 or below, an age above
 * 140 or a weight below 0. Needs no connection. */
VDX_API int32_t VDX_CALL CalculClairance_Vdx(float Creatinine, int32_t Poids, int32_t Age, const char* Sexe,
                                             int32_t Genre);

/* ---- Drug interactions ------------------------------------------------ */

/* The interactions of a prescription: each product is broken down into its
 * substances (both lists of components, with their synonyms), their
 * interaction classes and the ancestors of these; the couples of classes
 * are tried between each line and the later ones, in the order of the
 * list. A couple of kind 1 concerns a product and an outside substance
 * (CIP2 "0000000"), one of kind 2 a product and any other product given by
 * a route. A couple with conditions gives one row per condition term, for
 * any patient: the patient's arguments are accepted and change no row.
 * Rows below NiveauInteraction_Vdx's level are left out; rows come sorted
 * by Niveau from the highest.
 * Products: CodeCIPs (13-digit ones mapped under ActiveCIP13_Vdx(1), -13
 * without mapping); the list ends at its first empty entry (0 rows when it
 * is the first), and a code after an empty one gives -12. Outside mode 0
 * the codes are read from the input text: for Interactions2_Vdx a list
 * ended by an empty line (then the patient's two lists), for
 * Interactions_Vdx lines up to one that begins with "@"; each cut to 7
 * characters. The rows; -10 no product list or one without element; -12 an
 * empty input text or a gap; -13; -40 no result array (Interactions2_Vdx),
 * -20 (Interactions_Vdx); -500. */
typedef struct VdxInteraction2 {
    BSTR CIP1;
    BSTR CIP2;
    BSTR Libelle1;
    BSTR Libelle2;
    BSTR LibelleGravite;   /* or "N : Type Inconnu" */
    BSTR TexteType;        /* the kind, "$1" and "$2" replaced by the sides */
    BSTR Reference;
    intptr_t Niveau;
    BSTR Texte1;
    BSTR Texte2;           /* the risk */
    BSTR Texte3;
    BSTR Texte4;           /* the conduct to hold */
    BSTR Classe1;
    BSTR Classe2;
    BSTR Voie1;
    BSTR Voie2;
    intptr_t CodeType;
    intptr_t Niveau2;
    intptr_t Substance2;
    intptr_t Substance1Associee;
    intptr_t Substance2Associee;
    BSTR CodeCondition;
    BSTR LibelleCondition;
} VdxInteraction2;
VDX_API int32_t VDX_CALL Interactions2_Vdx(SAFEARRAY** Produits, SAFEARRAY** CodesPatient, SAFEARRAY** TypesPatient,
                                           SAFEARRAY** Tableau, int32_t Age, int32_t Poids, int32_t Grossesse,
                                           int32_t Allaitement, const char* Sexe);
/* The count of rows Interactions2_Vdx would give, from arrays in any mode. */
VDX_API int32_t VDX_CALL Interactions2Test_Vdx(SAFEARRAY** Produits, SAFEARRAY** CodesPatient,
                                               SAFEARRAY** TypesPatient, int32_t Age, int32_t Poids,
                                               int32_t Grossesse, int32_t Allaitement, const char* Sexe);
typedef struct VdxInteraction {
    intptr_t Niveau;
    BSTR LibelleGravite;
    BSTR Libelle1;
    BSTR Libelle2;
    BSTR TexteType;
    BSTR Reference;
    BSTR CIP1;
    BSTR CIP2;
} VdxInteraction;
VDX_API int32_t VDX_CALL Interactions_Vdx(SAFEARRAY** Produits, SAFEARRAY** Tableau);
/* Everything one product can interact with, alone: one row per text of the
 * kind ("$1" the product's substance, "$2" the other class, the route of
 * the other side in brackets), severities 5 and 6 left out, whatever the
 * level of NiveauInteraction_Vdx. -10 no code; -13 a code not of 7
 * characters; -20 no result array; -500. A product VDXPRO lacks is named
 * "CIP X Introuvable". */
typedef struct VdxProduitInteraction {
    intptr_t Niveau;
    BSTR LibelleGravite;
    BSTR TexteType;
    BSTR Reference;
} VdxProduitInteraction;
VDX_API int32_t VDX_CALL ProduitInteractions_Vdx(const char* Code, SAFEARRAY** Tableau);

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
