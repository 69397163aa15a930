// One call in the three flat modes: the same result and the same flat text
// in memory (mode 2), through the shared slot (mode 1) and in the file
// Vdxout.txt of the base (mode 3). Input lists, when the call takes some,
// are set for each mode where that mode reads them.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/hote.h"
#include "session/session.h"
#include "tests/support/dossier_essai.h"
#include "vdx32/vdx32.h"

namespace vdx::essai {

// `appel` in modes 2, 1 and 3, the session left in mode 2; `entree` the
// text input of its lists (none when empty). The memory mode's text.
inline std::string MemeTexteDansLesModes(const std::string& base, const std::function<int32_t()>& appel,
                                         int32_t attendu, const std::string& entree = {}) {
    if (!entree.empty()) SetString_Vdx(entree.c_str());
    EXPECT_EQ(appel(), attendu);
    const std::string memoire = session().ChaineMemoire.value_or("");
    session().ModeSortie = 1;
    if (!entree.empty()) hote::PoseTextePartage(entree);
    EXPECT_EQ(appel(), attendu);
    EXPECT_EQ(hote::PrendTextePartage(), memoire);
    session().ModeSortie = 3;
    if (!entree.empty()) hote::PoseTextePartage(entree);
    EXPECT_EQ(appel(), attendu);
    EXPECT_EQ(LitFichier(base + "/Vdxout.txt"), memoire);
    session().ModeSortie = 2;
    return memoire;
}

}  // namespace vdx::essai
