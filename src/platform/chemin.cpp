#include "platform/chemin.h"

#include <sys/stat.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <csignal>
#include <unistd.h>
#endif

namespace vdx::chemin {

std::string Repertoire(std::string nom) {
    if (!nom.empty() && (nom.back() == '\\' || nom.back() == '/')) nom.pop_back();
    nom += Separateur;
    return nom;
}

bool FichierExiste(const std::string& chemin) {
    struct stat etat;
    return ::stat(chemin.c_str(), &etat) == 0 && !S_ISDIR(etat.st_mode);
}

#ifdef _WIN32
long NumeroProcessus() { return static_cast<long>(GetCurrentProcessId()); }

bool ProcessusVivant(long numero) {
    HANDLE h = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(numero));
    if (!h) return GetLastError() == ERROR_ACCESS_DENIED;
    const bool vivant = WaitForSingleObject(h, 0) == WAIT_TIMEOUT;
    CloseHandle(h);
    return vivant;
}
#else
long NumeroProcessus() { return static_cast<long>(::getpid()); }

// A signal 0 tells without sending anything; a process of another user
// answers EPERM, and lives.
bool ProcessusVivant(long numero) {
    return numero > 0 && (::kill(static_cast<pid_t>(numero), 0) == 0 || errno == EPERM);
}
#endif

}  // namespace vdx::chemin
