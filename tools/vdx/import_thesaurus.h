// The drug interaction thesaurus as published: its substances, the classes
// they belong to, and the couples of substances or classes.
#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "tools/vdx/import_lecture.h"

namespace vdx::import {

struct Appartenance {  // substance-classes.tsv
    std::string substance;
    std::string classe;
};

struct CoupleThesaurus {  // couples.tsv
    std::string protagoniste1;
    std::string protagoniste2;
    std::string description;  // the severity words first, then the text
    std::string texteProduits;
    std::string mecanisme;    // the risk
    // The conduct to hold per level: contra-indication, advised against,
    // precaution of use, to take into account.
    std::array<std::string, 4> conduites;
};

struct Thesaurus {
    std::vector<std::string> substances;
    std::vector<Appartenance> appartenances;
    std::vector<CoupleThesaurus> couples;
};

Thesaurus LitThesaurus(const std::filesystem::path& dossier, Journal& journal);

}  // namespace vdx::import
