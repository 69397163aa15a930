// Product codes at the edge of an export. Every table is keyed by the
// seven-digit CodeCIP; a session with CIP13Actif 1 also takes and gives the
// 13-digit form (CIP13), mapped through VDXCIP13 here, so that every export
// that takes a product code checks and maps it the same way.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "session/codes.h"

namespace vdx {

inline constexpr size_t LongueurCIP = 7;
inline constexpr size_t LongueurCIP13 = 13;

// The value of CIP13Actif under which 13-digit codes are mapped.
inline constexpr int32_t CIP13Correspondance = 1;

enum class SensCIP { Vers13, Vers7 };

// Looks `code` up in VDXCIP13 (opened and closed here) by the key that
// begins with its form, at or above it: nullopt when there is no such key;
// an empty text when the key found begins with another code (a code not of
// its form's length never matches); otherwise the other form. Throws
// Echec(-500) on a failure of the store.
std::optional<std::string> CorrespondanceCIP(SensCIP sens, std::string_view code);

// The other form of a code when VDXCIP13 holds it; otherwise, and on any
// failure or without a connection, the code as it was given.
std::string VersCIP13(std::string_view code);
std::string VersCIP7(std::string_view code);

// A CodeCIP as the session gives it out: its CIP13 under CIP13Actif 1 when
// it has one, else as it stands.
std::string CIPSortant(std::string_view code);

// The strict forms of a check's lists, under `cip13Actif`: a 13-digit code
// a host gave is mapped to its CodeCIP under 1, and a seven-digit CodeCIP a
// row gives out to its CIP13 under 1; either without mapping throws
// Echec(-13). Any other code stands as it is.
std::string CIPEntrantStrict(int32_t cip13Actif, const std::string& code);
std::string CIPSortantStrict(int32_t cip13Actif, const std::string& cip);

// The text of a code a host gave, looked at no further than this.
inline constexpr size_t LongueurCodeMax = 63;

// The product code an export was given, checked and mapped: null or empty
// gives `absent` (the code of the argument's position); under CIP13Actif 0
// a length other than 7 gives -13; under CIP13Actif 1 a 13-character code
// is mapped to its CodeCIP, and one without mapping gives -13 since it is
// still 13 long; any other length, and any length under another value of
// CIP13Actif, is taken as it stands (no product has such a code, so its
// lookup finds nothing). A text of more than LongueurCodeMax bytes gives -13
// always. Throws Echec with the code.
std::string CodeProduit(const char* code, int32_t absent = Argument1);
// CodeProduit, which must then be a CodeCIP of seven characters (-13).
std::string CodeCIPRequis(const char* code, int32_t absent = Argument1);
// CodeCIPRequis for an export that looks at its code's form before the
// connection: -10 absent or empty; -13 a length other than 7 or, under
// CIP13Actif 1, 13; -2 not connected; then the mapping of a 13-digit code.
std::string CodeCIPConnecte(const char* code);

}  // namespace vdx
