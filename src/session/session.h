// The one process-wide session every export shares: zero at load, set up by
// the connection.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "session/contexte.h"

namespace vdx {

// The library's own version text.
inline constexpr char VersionLibrairie[] = "4.6.2.0";

// Sizes of the fixed buffers the session's texts have always had; a longer
// text is refused where it comes in.
inline constexpr size_t TailleBaseFichiers = 516;
inline constexpr size_t TailleChemin = 256;

// The session is the process's context, and what the exchange with the
// host needs beside it.
struct Session : Contexte {
    bool Connecte = false;
    int32_t ModeSortie = 0;    // 0 array, 1 shared slot, 2 memory, 3 file
    int32_t ChainesUnicode = 0;
    std::string FichierErreur;  // never cleared
    int16_t DerniereErreur = 0;
    std::optional<std::string> ChaineMemoire;
    bool AgentPresent = false;
    bool AdviceAgeBase = false;
    bool FichiersEnPhase = false;
};

Session& session();
// Back to the state at load (tests).
void RemetSession();

// Output modes.
inline constexpr int32_t ModeTableau = 0;
inline constexpr int32_t ModePartage = 1;
inline constexpr int32_t ModeMemoire = 2;
inline constexpr int32_t ModeFichier = 3;

struct Echec;
// Leaves a failed call: records the store's error for -500 and the file of
// the failure, closes the doctor's base, keeps FichierErreur, returns the
// code. Given a bare code, the store's error is its current word.
int32_t SortieErreur(const Echec& echec);
int32_t SortieErreur(int32_t code);

}  // namespace vdx
