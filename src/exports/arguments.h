// Host arguments as the exports read them: texts given by pointer, which a
// host may leave null.
#pragma once

#include <cstring>
#include <string_view>

namespace vdx::exports {

// A host's text; null reads as empty.
inline std::string_view TexteDe(const char* texte) { return texte ? std::string_view(texte) : std::string_view(); }

// A host's text looked at no further than `maximum` + 1 bytes: a longer one
// is seen as longer than `maximum`, without reading it all.
inline std::string_view TexteBorne(const char* texte, size_t maximum) {
    return texte ? std::string_view(texte, strnlen(texte, maximum + 1)) : std::string_view();
}

}  // namespace vdx::exports
