// The worked example of delivery: a base of four long-term illnesses, one
// of them a duplicate code, and the notices kept in memory.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "platform/notices.h"
#include "session/resultat.h"
#include "session/session.h"
#include "store/fixture.h"
#include "tests/support/identite.h"
#include "vdx32/vdx32.h"

namespace vdx::essai {

inline void AjouteAld(BaseDeTest& base, const char* code, const char* libelle) {
    base.Ajoute("VDXYALD", {{"Code", code}, {"Libelle", libelle}});
}

class Livraison : public ::testing::Test {
protected:
    void SetUp() override {
        DeConnection2_Vdx();
        RemetSession();
        essai::AjouteIdentite(base);
        AjouteAld(base, "01", "Accident vasculaire cérébral invalidant");
        AjouteAld(base, "02", "Insuffisances médullaires");
        AjouteAld(base, "2", "Doublon du code 2");  // filed behind "02", same code
        AjouteAld(base, "30", "Tuberculose active, lèpre");
    }
    void TearDown() override {
        DeConnection2_Vdx();
        RemetSession();
    }
    void Connecte(int32_t mode, int32_t unicode = 0) {
        ASSERT_EQ(Connection_Vdx(base.Repertoire().c_str(), mode, unicode), 1);
    }
    std::string Fichier(const char* nom) {
        std::ifstream f(base.Repertoire() + "/" + nom, std::ios::binary);
        std::stringstream s;
        s << f.rdbuf();
        return s.str();
    }

    const std::string attendu =
        "1@Accident vasculaire c\xE9r\xE9" "bral invalidant\r\n2@Insuffisances m\xE9"
        "dullaires\r\n30@Tuberculose active, l\xE8pre";
    NoticesMemorisees notices;
    NoticesEnPlace enPlace{notices};
    BaseDeTest base;
};

}  // namespace vdx::essai
