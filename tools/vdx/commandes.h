// The commands of the vdx program and what they share.
#pragma once

#include <string>
#include <vector>

#include "store/catalogue.h"

namespace vdx {

// Exit codes of the program.
inline constexpr int SortieSucces = 0;
inline constexpr int SortieEchec = 1;
inline constexpr int SortieUsage = 2;

// True when the arguments ask for help ("--help" or "-h").
bool DemandeAide(const std::vector<std::string>& args);
// Writes a command's help to standard error: the exit code of bad usage.
int Usage(const char* aide);

// The base a command reads: "--base DIR", taken out of the arguments, or
// else the environment's VDX_BASE; empty when neither gives one (or when
// --base has no value).
std::string PrendBase(std::vector<std::string>& args);

// Tells a failure of the library, with its code and the error sentence.
int EchecLibrairie(const char* appel, int code);

// One line of the catalogue: numbers, kind, record length and keys.
std::string DecritTable(const Table& table);

int Build(std::vector<std::string> args);
int Dump(std::vector<std::string> args);
// Sources of a base from the public medicine database and interaction thesaurus.
int Import(std::vector<std::string> args);
// The prescriber's commands.
int Check(std::vector<std::string> args);
int Product(std::vector<std::string> args);
int Search(std::vector<std::string> args);

}  // namespace vdx
