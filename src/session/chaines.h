// The text exchange of the memory mode: a host stores an input text in
// ChaineMemoire and fetches a result from it, whole or by pages.
#pragma once

#include <cstdint>

namespace vdx {

int32_t SetString(const char* texte);
int32_t SetString2(const char* texte);
int32_t GetString(char* tampon);
int32_t GetString2(char* tampon, int32_t page, int32_t taille);
int32_t GetLenString();

}  // namespace vdx
