// The reading of an update file: its tokens (markers, fields, the end), the
// line ends between its rows, and the numbers of its fields.
#pragma once

#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vdx::maj {

// What LireChamp met.
enum class Jeton : int32_t {
    Fin = 0,       // no more bytes
    Marqueur = 1,  // "|NAME|", bars kept
    Champ = 2,     // up to the next "@", cut
};

// The token buffers of a run: ExecuteMaj_Vdx, and ExecuteMaj2_Vdx.
inline constexpr size_t TamponMaj = 256000;
inline constexpr size_t TamponMaj2 = 512000;

// A token longer than the buffer: the file fails.
struct JetonTropLong : std::runtime_error {
    JetonTropLong() : std::runtime_error("jeton plus long que le tampon") {}
};

// Reads a file one byte at a time, counting the bytes.
class LecteurMaj {
public:
    LecteurMaj(std::FILE* fichier, size_t tampon) : fichier_(fichier), tampon_(tampon) {}

    // The next token into `jeton` (emptied first). A CR LF, or a lone LF,
    // where a token should begin is passed over. A marker or field cut by
    // the end of the file is what was read of it. Throws JetonTropLong.
    Jeton LireChamp(std::string& jeton);
    // Passes the rest of the line: up to a CR and the byte behind it, or
    // up to a lone LF.
    void SauteLigne();
    uint64_t OctetsLus() const { return lus_; }

private:
    int Octet();
    void Rend(int octet);

    std::FILE* fichier_;
    size_t tampon_;
    uint64_t lus_ = 0;
    int rendu_ = EOF;
};

// The value of a field as a 32-bit float: an optional leading "-", digits
// with "," or "." as the decimal mark, a blank, TAB or LF after a digit or
// mark starting the number again, any other character passed over.
float LireReel(std::string_view texte);
// The value of a field as a 32-bit integer: blanks, a sign and the leading
// digits, as a plain text-to-integer conversion reads them; 0 without.
int32_t LireEntier(std::string_view texte);

}  // namespace vdx::maj
