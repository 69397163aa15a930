// Wide host strings in tests, written as u"" literals: OLECHAR is char16_t
// on Linux and wchar_t on Windows, both 16 bits.
#pragma once

#include <string>
#include <string_view>

#include "vdx32/oleauto.h"

namespace vdx::essai {

inline BSTR ChaineLarge(std::u16string_view texte) {
    return SysAllocStringLen(reinterpret_cast<const OLECHAR*>(texte.data()), static_cast<UINT>(texte.size()));
}

inline std::u16string Large(BSTR chaine) {
    return std::u16string(reinterpret_cast<const char16_t*>(chaine), SysStringLen(chaine));
}

}  // namespace vdx::essai
