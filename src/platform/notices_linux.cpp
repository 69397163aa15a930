#include "platform/notices_systeme.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

#include "platform/codepage.h"
#include "platform/hote.h"

namespace vdx::systeme {

namespace {

bool EstBlanc(char c) { return c == ' ' || c == '\t'; }
bool EstFinDeLigne(char c) { return c == '\r' || c == '\n'; }

std::string_view SansBlancs(std::string_view s) {
    while (!s.empty() && EstBlanc(s.front())) s.remove_prefix(1);
    while (!s.empty() && EstBlanc(s.back())) s.remove_suffix(1);
    return s;
}

// The text on one line: each run of line breaks becomes " / ", none at the ends.
std::string SurUneLigne(std::string_view texte) {
    std::string ligne;
    bool coupure = false;
    for (char c : texte) {
        if (EstFinDeLigne(c)) {
            coupure = true;
            continue;
        }
        if (coupure && !ligne.empty()) ligne += " / ";
        coupure = false;
        ligne += c;
    }
    return ligne;
}

// Where the agent's socket would be; empty for a name that can't be one.
std::string CheminAgent(std::string_view nom) {
    if (nom.empty() || nom.find('/') != std::string_view::npos ||
        nom.find('\0') != std::string_view::npos || nom == "." || nom == "..")
        return {};
    std::string chemin = hote::RepertoireExecution();
    if (chemin.back() != '/') chemin += '/';
    chemin += nom;
    return chemin;
}

bool AdresseAgent(std::string_view nom, sockaddr_un* adresse) {
    std::string chemin = CheminAgent(nom);
    *adresse = sockaddr_un{};
    adresse->sun_family = AF_UNIX;
    if (chemin.empty() || chemin.size() >= sizeof adresse->sun_path) return false;
    chemin.copy(adresse->sun_path, chemin.size());
    return true;
}

void EnvoieParFlux(const sockaddr_un& adresse, std::string_view texte) {
    int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (fd < 0) return;
    if (::connect(fd, reinterpret_cast<const sockaddr*>(&adresse), sizeof adresse) == 0) {
        while (!texte.empty()) {
            ssize_t n = ::send(fd, texte.data(), texte.size(), MSG_NOSIGNAL);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) break;  // a full socket: the agent is not reading, give up
            texte.remove_prefix(static_cast<size_t>(n));
        }
    }
    ::close(fd);
}

}  // namespace

void MontreBoite(std::string_view texte, std::string_view titre, int32_t /*style*/) {
    std::string ligne = codepage::VersUtf8(SansBlancs(titre));
    if (!ligne.empty()) ligne += ": ";
    ligne += codepage::VersUtf8(SurUneLigne(texte));
    ligne += '\n';
    std::fwrite(ligne.data(), 1, ligne.size(), stderr);
    std::fflush(stderr);
}

bool AgentPresent(std::string_view nom) {
    std::string chemin = CheminAgent(nom);
    struct stat etat {};
    return !chemin.empty() && ::stat(chemin.c_str(), &etat) == 0 && S_ISSOCK(etat.st_mode);
}

void NotifieAgent(std::string_view nom, std::string_view texte) {
    sockaddr_un adresse;
    if (!AdresseAgent(nom, &adresse)) return;
    int fd = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (fd < 0) return;
    ssize_t n = ::sendto(fd, texte.data(), texte.size(), MSG_NOSIGNAL,
                         reinterpret_cast<const sockaddr*>(&adresse), sizeof adresse);
    int erreur = errno;
    ::close(fd);
    if (n < 0 && erreur == EPROTOTYPE) EnvoieParFlux(adresse, texte);
}

}  // namespace vdx::systeme
