#include "documents/rtf.h"

#include <algorithm>
#include <new>


namespace vdx {
namespace {

constexpr size_t LongueurMax = TailleTamponRtf - 1;  // room for the terminator

// The working buffer, filled a byte at a time up to its bound.
class Tampon {
public:
    // A result is never longer than its RTF: one allocation is enough.
    explicit Tampon(size_t longueurRtf) { texte_.reserve(std::min(longueurRtf, LongueurMax)); }

    void Ecrit(char c) {
        if (texte_.size() < LongueurMax) texte_.push_back(c);
    }
    void Ecrit(std::string_view octets) {
        for (char c : octets) Ecrit(c);
    }
    bool FinitParTab() const { return !texte_.empty() && texte_.back() == '\t'; }
    std::string Prend() { return std::move(texte_); }

private:
    std::string texte_;
};

bool Commence(std::string_view rtf, size_t i, std::string_view motif) { return rtf.substr(i).starts_with(motif); }

// The control words as the editor spells them, in the order they are tried:
// the longer forms of "\tab" and "\par" come first. `suite` counts the
// characters behind the word that go with it unread, as they always have
// (the " }" behind the tab-and-paragraph forms, for one).
struct MotConnu {
    std::string_view motif;
    std::string_view ecrit;
    size_t suite;
};
constexpr MotConnu MotsConnus[] = {
    {"\\~", "\xA0", 0},
    {"\\line", "", 2},
    {"\\tab  \r\n\\par", "\t ", 2},
    {"\\tab \r\n\\par", "\t", 2},
    {"\\par }", "", 1},  // a paragraph that closes a group gives no line end
    {"\\pard", "\r\n", 0},
    {"\\par ", "\r\n", 0},
    {"\\tab", "\t", 0},
};

// Escapes "\'xy", in lower case only, by first digit: the second digits that
// give a character, whose byte is the escape's own value. After one of these
// first digits any other second digit is consumed and gives nothing (so
// "\'e4" vanishes), except after "8", where only "85" is known.
struct FamilleEchappements {
    char premier;
    std::string_view seconds;
    bool absorbeLesAutres;
};
constexpr FamilleEchappements Familles[] = {
    {'e', "02789abef", true}, {'f', "469b", true}, {'b', "02357", true},
    {'c', "089", true},       {'9', "c", true},    {'8', "5", false},
};

int ValeurHexa(char c) { return c <= '9' ? c - '0' : c - 'a' + 10; }

// The characters consumed by the escape at i, 0 if it is unknown.
size_t Echappement(std::string_view rtf, size_t i, Tampon& sortie) {
    if (!Commence(rtf, i, "\\'") || rtf.size() - i < 4) return 0;
    const char premier = rtf[i + 2], second = rtf[i + 3];
    for (const FamilleEchappements& f : Familles) {
        if (f.premier != premier) continue;
        if (f.seconds.find(second) != std::string_view::npos) {
            sortie.Ecrit(static_cast<char>(ValeurHexa(premier) * 16 + ValeurHexa(second)));
            return 4;
        }
        return f.absorbeLesAutres ? 4 : 0;
    }
    return 0;
}

// The control step at i: writes what a known sequence gives and returns the
// characters it consumes; 0 for a sequence it doesn't know.
size_t Controle(std::string_view rtf, size_t i, Tampon& sortie) {
    if (rtf[i] != '\\') return 0;
    if (size_t n = Echappement(rtf, i, sortie)) return n;
    for (const MotConnu& m : MotsConnus) {
        if (Commence(rtf, i, m.motif)) {
            sortie.Ecrit(m.ecrit);
            return m.motif.size() + m.suite;
        }
    }
    return 0;
}

// Drops an unknown control word and what follows it, up to and including
// the next blank outside braces, or up to the next known sequence, which
// takes effect. The depth has no floor: after stray closing braces an
// opening one does not hide the next blank. Stops at the end of the text.
void Saute(std::string_view rtf, size_t& i, Tampon& sortie) {
    long long profondeur = 0;
    for (; i < rtf.size(); ++i) {
        if (rtf[i] == ' ' && profondeur < 1) {
            ++i;
            return;
        }
        if (rtf[i] == '{') ++profondeur;
        if (rtf[i] == '}') --profondeur;
        if (size_t n = Controle(rtf, i, sortie)) {
            i += n;
            return;
        }
    }
}

// A character outside a control sequence: the characters it consumes.
size_t Caractere(std::string_view rtf, size_t i, Tampon& sortie) {
    // The plain word too, as in "pardon": hosts have always seen it so.
    if (Commence(rtf, i, "pard")) {
        sortie.Ecrit("\r\n");
        return 4;
    }
    const char c = rtf[i];
    const bool perdu = c == '{' || c == '}' || c == '\r' || c == '\n' || (c == ' ' && sortie.FinitParTab());
    if (!perdu) sortie.Ecrit(c);
    return 1;
}

// Leaves *sortie holding these bytes whatever ChainesUnicode says.

}  // namespace

std::string RtfVersTexte(std::string_view rtf) {
    rtf = rtf.substr(0, rtf.find('\0'));
    Tampon sortie(rtf.size());
    for (size_t i = 0; i < rtf.size();) {
        if (rtf[i] != '\\')
            i += Caractere(rtf, i, sortie);
        else if (size_t n = Controle(rtf, i, sortie))
            i += n;
        else
            Saute(rtf, i, sortie);
    }
    return sortie.Prend();
}

}  // namespace vdx
