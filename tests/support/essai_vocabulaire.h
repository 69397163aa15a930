// For the tests of the vocabularies: a suite of tests on one base, built
// once for the suite from the records its `Remplit` adds, and connected for
// each test in memory mode, so that results read as flat texts.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "platform/notices.h"
#include "session/contexte.h"
#include "session/session.h"
#include "store/fixture.h"
#include "tests/support/identite.h"
#include "tests/support/tableau_hote.h"
#include "vdx32/vdx32.h"

namespace vdx::essai {

template <class Suite>
class SurUneBase : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        base_ = new BaseDeTest;
        AjouteIdentite(*base_);
        Suite::Remplit(*base_);
        base_->Repertoire();
    }
    static void TearDownTestSuite() {
        delete base_;
        base_ = nullptr;
    }
    void SetUp() override {
        DeConnection2_Vdx();
        RemetSession();
        ASSERT_EQ(Connection_Vdx(base_->Repertoire().c_str(), ModeMemoire, 0), 1);
    }
    void TearDown() override {
        DeConnection2_Vdx();
        RemetSession();
    }

    // Reconnects in array mode.
    void ReconnecteEnTableau(int32_t unicode = 0) {
        DeConnection2_Vdx();
        ASSERT_EQ(Connection_Vdx(base_->Repertoire().c_str(), 0, unicode), 1);
    }

    // The flat text of the last result in memory mode.
    static std::string Memoire() { return session().ChaineMemoire.value_or("<rien>"); }

    static inline BaseDeTest* base_ = nullptr;
    NoticesMemorisees notices;
    NoticesEnPlace enPlace{notices};
};

// The same, each test's body running in the session's context as an
// export makes it current: for the tests that call a core straight.
template <class Suite>
class SurUneBaseEnContexte : public SurUneBase<Suite> {
protected:
    void SetUp() override {
        SurUneBase<Suite>::SetUp();
        dans_.emplace(session());
    }
    void TearDown() override {
        dans_.reset();
        SurUneBase<Suite>::TearDown();
    }
    std::optional<DansContexte> dans_;
};

}  // namespace vdx::essai
