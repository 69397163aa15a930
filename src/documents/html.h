// The characters of the pages the library writes (the reports of the
// checks, the monograph): the table they run over a finished page, in code
// page 1252, and the one text a page takes from the host into an attribute.
#pragma once

#include <string>
#include <string_view>

namespace vdx {

// Each byte of the table as its entity: é "&eacute;", è "&egrave;", ê
// "&ecirc;", ë "&euml;", È "&ecirc;", ç "&ccedil;", à "&agrave;", â
// "&acirc;", å "&aring;", ï "&iuml;", î "&icirc;", Ü "&uuml;", û "&ucirc;",
// ù "&ugrave;", ö "&ouml;", ô "&ocirc;", ° "&deg;", ² "&sup2;", ³ "&sup3;",
// µ "&micro;"; with `lignes`, CR LF as "<BR>" first. Nothing else changes:
// "<", ">" and "&" of a stored text pass as they are, and so do the letters
// the table lacks (É, œ).
std::string EncodeHtml(std::string_view texte, bool lignes);

// Texts end to end, appended one by one into a single string.
template <class... Parties>
std::string Bout(const Parties&... parties) {
    std::string texte;
    (texte.append(std::string_view(parties)), ...);
    return texte;
}

// A text inside a double-quoted attribute: '"' as "&quot;", '&' as "&amp;".
std::string AttributHtml(std::string_view texte);

// The head of a page up to the end of its links: "<HTML>", "<HEAD>", the
// title when there is one, the link to the stylesheet when there is a path.
std::string TetePage(std::string_view titre, std::string_view feuilleStyle);

}  // namespace vdx
