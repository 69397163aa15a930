// The RTF of the base's text chapters turned into plain text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>


namespace vdx {

// The working buffer of one conversion, its terminator included: a result
// holds at most TailleTamponRtf - 1 bytes, and what would go further is lost.
inline constexpr size_t TailleTamponRtf = 512000;

// What Rtf_To_Texte returns when its working buffer can't be allocated.
inline constexpr int32_t TamponRtfIndisponible = -1;

// Plain code page 1252 text with CR LF line ends from the RTF that the
// base's editor writes. Only that editor's control words and escapes are
// understood; anything else is dropped, never refused. The text ends at its
// first NUL, like the C string the host gives. Throws std::bad_alloc when
// the working buffer can't be had.
std::string RtfVersTexte(std::string_view rtf);


}  // namespace vdx
