#include "documents/html.h"

#include <array>
#include <utility>

#include "session/texte.h"

namespace vdx {

namespace {

// The table, by byte of code page 1252. The upper-case È and Ü and the
// å as "&aring;" are the table as it has always been.
constexpr std::array<std::pair<char, const char*>, 20> Entites = {{
    {'\xE9', "&eacute;"}, {'\xE8', "&egrave;"}, {'\xEA', "&ecirc;"}, {'\xEB', "&euml;"},  {'\xC8', "&ecirc;"},
    {'\xE7', "&ccedil;"}, {'\xE0', "&agrave;"}, {'\xE2', "&acirc;"}, {'\xE5', "&aring;"}, {'\xEF', "&iuml;"},
    {'\xEE', "&icirc;"},  {'\xDC', "&uuml;"},   {'\xFB', "&ucirc;"}, {'\xF9', "&ugrave;"}, {'\xF6', "&ouml;"},
    {'\xF4', "&ocirc;"},  {'\xB0', "&deg;"},    {'\xB2', "&sup2;"},  {'\xB3', "&sup3;"},  {'\xB5', "&micro;"},
}};

const char* EntiteDe(char c) {
    for (const auto& [octet, entite] : Entites)
        if (octet == c) return entite;
    return nullptr;
}

}  // namespace

std::string EncodeHtml(std::string_view texte, bool lignes) {
    const std::string_view finDeLigne(FinDeLigne);
    std::string html;
    html.reserve(texte.size() + texte.size() / 8);
    for (size_t i = 0; i < texte.size(); ++i) {
        if (lignes && texte.substr(i, finDeLigne.size()) == finDeLigne) {
            html += "<BR>";
            i += finDeLigne.size() - 1;
        } else if (const char* entite = EntiteDe(texte[i])) {
            html += entite;
        } else {
            html += texte[i];
        }
    }
    return html;
}

std::string AttributHtml(std::string_view texte) {
    std::string attribut;
    for (const char c : texte) {
        if (c == '"')
            attribut += "&quot;";
        else if (c == '&')
            attribut += "&amp;";
        else
            attribut += c;
    }
    return attribut;
}

std::string TetePage(std::string_view titre, std::string_view feuilleStyle) {
    std::string t = "<HTML>\r\n<HEAD>\r\n";
    if (!titre.empty()) t += "<TITLE>" + std::string(titre) + "</TITLE>\r\n";
    if (!feuilleStyle.empty())
        t += "<link rel=\"stylesheet\" type=\"text/css\" href=\"" + AttributHtml(feuilleStyle) + "\">\r\n";
    return t;
}

}  // namespace vdx
