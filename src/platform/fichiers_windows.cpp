// Files on Windows. The shared record of a file is a named section of shared
// memory ("Local\vdx32-<volume>-<index>"), which lives while a process holds
// it; its locks are byte-range locks (LockFileEx) on a handle of the file
// itself, far past any data LMDB writes, so they never stand in its way and
// go with the process.
#include "platform/fichiers.h"

#include <windows.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <set>

namespace vdx::systeme {

struct RecordPartage::Systeme {
    HANDLE section = nullptr;
    HANDLE fichier = INVALID_HANDLE_VALUE;
    std::set<int> tenus;  // the bytes this process holds
};

namespace {

// Where the locks lie: byte n of the record is byte Base + n of the file.
constexpr uint64_t Base = uint64_t{1} << 62;

int ErrnoDe(DWORD erreur) {
    switch (erreur) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND: return ENOENT;
        case ERROR_ACCESS_DENIED: return EACCES;
        case ERROR_LOCK_VIOLATION:
        case ERROR_IO_PENDING:
        case ERROR_SHARING_VIOLATION: return EAGAIN;
        case ERROR_NOT_ENOUGH_MEMORY:
        case ERROR_OUTOFMEMORY: return ENOMEM;
        default: return EIO;
    }
}

bool Echoue() {
    errno = ErrnoDe(GetLastError());
    return false;
}

std::string NomSection(const IdentiteFichier& id) {
    char nom[80];
    std::snprintf(nom, sizeof nom, "Local\\vdx32-%llx-%llx", static_cast<unsigned long long>(id.volume),
                  static_cast<unsigned long long>(id.index));
    return nom;
}

OVERLAPPED Position(int octet) {
    OVERLAPPED o{};
    const uint64_t p = Base + static_cast<uint64_t>(octet);
    o.Offset = static_cast<DWORD>(p);
    o.OffsetHigh = static_cast<DWORD>(p >> 32);
    return o;
}

bool Decrit(HANDLE h, EtatFichier& etat) {
    BY_HANDLE_FILE_INFORMATION info{};
    if (!GetFileInformationByHandle(h, &info)) return Echoue();
    etat.identite = {info.dwVolumeSerialNumber, (uint64_t{info.nFileIndexHigh} << 32) | info.nFileIndexLow};
    etat.taille = (uint64_t{info.nFileSizeHigh} << 32) | info.nFileSizeLow;
    etat.regulier = (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    return true;
}

}  // namespace

bool DecritChemin(const char* chemin, EtatFichier& etat) {
    const HANDLE h = CreateFileA(chemin, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                 OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (h == INVALID_HANDLE_VALUE) return Echoue();
    const bool ok = Decrit(h, etat);
    CloseHandle(h);
    return ok;
}

bool DecritOuvert(intptr_t descripteur, EtatFichier& etat) {
    return Decrit(reinterpret_cast<HANDLE>(descripteur), etat);
}

intptr_t Duplique(intptr_t descripteur) {
    HANDLE copie = INVALID_HANDLE_VALUE;
    if (!DuplicateHandle(GetCurrentProcess(), reinterpret_cast<HANDLE>(descripteur), GetCurrentProcess(), &copie, 0,
                         FALSE, DUPLICATE_SAME_ACCESS))
        return -1;
    return reinterpret_cast<intptr_t>(copie);
}

bool FixeTailleEtFerme(intptr_t descripteur, uint64_t taille) {
    const HANDLE h = reinterpret_cast<HANDLE>(descripteur);
    LARGE_INTEGER position;
    position.QuadPart = static_cast<LONGLONG>(taille);
    const bool fait = SetFilePointerEx(h, position, nullptr, FILE_BEGIN) && SetEndOfFile(h);
    CloseHandle(h);
    return fait;
}

bool EcritFichierSur(const std::string& chemin, std::string_view texte) {
    const HANDLE f = CreateFileA(chemin.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (f == INVALID_HANDLE_VALUE) return false;
    DWORD ecrits = 0;
    const bool ok = WriteFile(f, texte.data(), static_cast<DWORD>(texte.size()), &ecrits, nullptr) &&
                    ecrits == texte.size() && FlushFileBuffers(f);
    return CloseHandle(f) && ok;
}

bool RenommeFichier(const std::string& de, const std::string& vers) {
    return MoveFileExA(de.c_str(), vers.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

bool RemplaceDossier(const std::string& neuf, const std::string& place, const std::string& ecarte) {
    if (!MoveFileExA(place.c_str(), ecarte.c_str(), 0)) return Echoue();
    if (!MoveFileExA(neuf.c_str(), place.c_str(), 0)) {
        Echoue();
        const int e = errno;
        MoveFileExA(ecarte.c_str(), place.c_str(), 0);
        errno = e;
        return false;
    }
    return true;
}

bool AttendsDossier(const std::string& dossier) {
    for (int essai = 0;; ++essai) {
        const DWORD attributs = GetFileAttributesA(dossier.c_str());
        if (attributs != INVALID_FILE_ATTRIBUTES) return (attributs & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (essai == 50) return false;
        Sleep(10);
    }
}

bool CreeDossierUnique(std::string& modele) {
    if (modele.size() < 6) {
        errno = EINVAL;
        return false;
    }
    static unsigned compteur = 0;
    for (int essai = 0; essai < 100; ++essai) {
        char suffixe[7];
        std::snprintf(suffixe, sizeof suffixe, "%06x",
                      static_cast<unsigned>((GetCurrentProcessId() * 7919u + GetTickCount() + ++compteur * 104729u) &
                                            0xFFFFFFu));
        modele.replace(modele.size() - 6, 6, suffixe);
        if (CreateDirectoryA(modele.c_str(), nullptr)) return true;
        if (GetLastError() != ERROR_ALREADY_EXISTS) return Echoue();
    }
    errno = EEXIST;
    return false;
}

std::string DossierEphemere() { return std::filesystem::temp_directory_path().string(); }

void ApresFork(void (*)()) {}

RecordPartage::RecordPartage(std::unique_ptr<Systeme> systeme, void* zone, size_t taille)
    : systeme_(std::move(systeme)), zone_(zone), taille_(taille) {}

namespace {

std::unique_ptr<RecordPartage> OuvreSysteme(const IdentiteFichier& identite, const char* chemin, size_t taille,
                                            bool creer) {
    auto s = std::make_unique<RecordPartage::Systeme>();
    s->fichier = CreateFileA(chemin, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                             OPEN_EXISTING, 0, nullptr);
    if (s->fichier == INVALID_HANDLE_VALUE) return Echoue(), nullptr;
    const std::string nom = NomSection(identite);
    s->section = creer ? CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                            static_cast<DWORD>(taille), nom.c_str())
                       : OpenFileMappingA(FILE_MAP_ALL_ACCESS, FALSE, nom.c_str());
    if (!s->section) {
        Echoue();
        CloseHandle(s->fichier);
        return nullptr;
    }
    void* zone = MapViewOfFile(s->section, FILE_MAP_ALL_ACCESS, 0, 0, taille);
    if (!zone) {
        Echoue();
        CloseHandle(s->section);
        CloseHandle(s->fichier);
        return nullptr;
    }
    return std::make_unique<RecordPartage>(std::move(s), zone, taille);
}

}  // namespace

std::unique_ptr<RecordPartage> RecordPartage::Ouvre(const IdentiteFichier& identite, const char* chemin, size_t taille) {
    return OuvreSysteme(identite, chemin, taille, true);
}

std::unique_ptr<RecordPartage> RecordPartage::OuvreExistant(const IdentiteFichier& identite, const char* chemin,
                                                            size_t taille) {
    return OuvreSysteme(identite, chemin, taille, false);
}

RecordPartage::~RecordPartage() {
    if (!zone_) return;
    UnmapViewOfFile(zone_);
    CloseHandle(systeme_->section);
    CloseHandle(systeme_->fichier);  // releases our locks
}

bool RecordPartage::Verrouille(int octet, bool exclusif, bool attendre) {
    OVERLAPPED o = Position(octet);
    const DWORD drapeaux = (exclusif ? LOCKFILE_EXCLUSIVE_LOCK : 0) | (attendre ? 0 : LOCKFILE_FAIL_IMMEDIATELY);
    if (!LockFileEx(systeme_->fichier, drapeaux, 0, 1, 0, &o)) return Echoue();
    systeme_->tenus.insert(octet);
    return true;
}

void RecordPartage::Deverrouille(int octet) {
    OVERLAPPED o = Position(octet);
    if (UnlockFileEx(systeme_->fichier, 0, 1, 0, &o)) systeme_->tenus.erase(octet);
}

bool RecordPartage::TenuParAutre(int octet) const {
    // A byte this process holds can't be tried without its own lock in the
    // way: in doubt, someone else holds it too.
    if (systeme_->tenus.count(octet)) return true;
    OVERLAPPED o = Position(octet);
    if (!LockFileEx(systeme_->fichier, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &o)) return true;
    UnlockFileEx(systeme_->fichier, 0, 1, 0, &o);
    return false;
}

void RecordPartage::Abandonne() {}

void FixeDossierPartage(std::string) {}

}  // namespace vdx::systeme
