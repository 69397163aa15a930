// The shared text slot on Linux: one file per user, in the runtime directory.
// The Windows build uses the clipboard instead (textepartage_windows.cpp).
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

#include "platform/hote.h"

namespace vdx::hote {

namespace {

[[noreturn]] void Echec(int erreur, const std::string& quoi) {
    throw std::system_error(erreur, std::generic_category(), quoi);
}

std::string Joint(std::string repertoire, std::string_view nom) {
    if (repertoire.empty() || repertoire.back() != '/') repertoire += '/';
    repertoire += nom;
    return repertoire;
}

bool EcritTout(int fd, std::string_view texte) {
    while (!texte.empty()) {
        ssize_t n = ::write(fd, texte.data(), texte.size());
        if (n < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        texte.remove_prefix(static_cast<size_t>(n));
    }
    return true;
}

}  // namespace

std::string CheminTextePartage() {
    const char* xdg = std::getenv("XDG_RUNTIME_DIR");
    if (xdg && *xdg) return Joint(xdg, "vdx32-presse-papiers.txt");
    // A directory shared by all users: the uid keeps each user's slot apart.
    return Joint(RepertoireExecution(),
                 "vdx32-presse-papiers-" + std::to_string(::geteuid()) + ".txt");
}

void PoseTextePartage(std::string_view texte) {
    std::string chemin = CheminTextePartage();
    // Written beside the slot, in the same file system, then renamed over it:
    // a reader gets the old file or the new one, whole.
    std::string provisoire = chemin + ".XXXXXX";
    int fd = ::mkostemp(provisoire.data(), O_CLOEXEC);
    if (fd < 0) Echec(errno, "texte partage: creation de " + provisoire);
    bool ecrit = EcritTout(fd, texte);
    int erreur = errno;
    if (::close(fd) != 0 && ecrit) {
        ecrit = false;
        erreur = errno;
    }
    if (ecrit && ::rename(provisoire.c_str(), chemin.c_str()) == 0) return;
    if (ecrit) erreur = errno;
    ::unlink(provisoire.c_str());
    Echec(erreur, "texte partage: ecriture de " + chemin);
}

std::string PrendTextePartage() {
    std::string chemin = CheminTextePartage();
    int fd = ::open(chemin.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0) {
        if (errno == ENOENT) return {};
        Echec(errno, "texte partage: ouverture de " + chemin);
    }
    struct stat etat {};
    if (::fstat(fd, &etat) != 0) {
        int erreur = errno;
        ::close(fd);
        Echec(erreur, "texte partage: etat de " + chemin);
    }
    // In a directory shared by all users, someone else's file is no slot of ours.
    if (!S_ISREG(etat.st_mode) || etat.st_uid != ::geteuid()) {
        int erreur = EPERM;
        ::close(fd);
        Echec(erreur, "texte partage: " + chemin + " n'est pas un fichier de l'utilisateur");
    }
    std::string texte;
    texte.reserve(static_cast<size_t>(etat.st_size));
    char tampon[8192];
    for (;;) {
        ssize_t n = ::read(fd, tampon, sizeof tampon);
        if (n < 0) {
            if (errno == EINTR) continue;
            int erreur = errno;
            ::close(fd);
            Echec(erreur, "texte partage: lecture de " + chemin);
        }
        if (n == 0) break;
        texte.append(tampon, static_cast<size_t>(n));
    }
    ::close(fd);
    return texte;
}

}  // namespace vdx::hote
