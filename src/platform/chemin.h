// Paths of the platform: the separator a directory name ends with, and the
// test that a file is there.
#pragma once

#include <string>

namespace vdx::chemin {

#ifdef _WIN32
inline constexpr char Separateur = '\\';
#else
inline constexpr char Separateur = '/';
#endif

// A directory name ending with the separator. Hosts written for Windows may
// end it with a backslash: that counts as the separator everywhere.
std::string Repertoire(std::string nom);
bool FichierExiste(const std::string& chemin);

// This process's number, and whether a process of that number still runs.
long NumeroProcessus();
bool ProcessusVivant(long numero);

}  // namespace vdx::chemin
