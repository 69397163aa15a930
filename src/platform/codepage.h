// Conversions between code page 1252, the library's text inside, and the
// outside forms: UTF-16 for wide host strings, UTF-8 for terminals and files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vdx::codepage {

std::u16string VersUtf16(std::string_view cp1252);
// Characters code page 1252 lacks become "?".
std::string DepuisUtf16(std::u16string_view texte);
std::string VersUtf8(std::string_view cp1252);
// Null when the text is not valid UTF-8 or holds a character code page 1252
// lacks; `position` then receives the byte offset of the first fault.
std::optional<std::string> DepuisUtf8(std::string_view utf8, size_t* position = nullptr);

}  // namespace vdx::codepage
