// The table of exports against the header: every export a host can call
// is either described there or one of the session's own.
#include "exports/table_exports.h"

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

namespace vdx::exports {
namespace {

std::set<std::string> DeclaresParLEntete() {
    std::ifstream entete(VDX_ENTETE);
    std::stringstream texte;
    texte << entete.rdbuf();
    const std::string t = texte.str();
    std::set<std::string> noms;
    const std::regex declaration(R"(VDX_CALL\s+([A-Za-z0-9_]+)\s*\()");
    for (auto m = std::sregex_iterator(t.begin(), t.end(), declaration); m != std::sregex_iterator(); ++m)
        noms.insert((*m)[1]);
    return noms;
}

TEST(TableExports, DescribesEveryExportOfTheHeaderButThoseOfTheSession) {
    const std::set<std::string> declares = DeclaresParLEntete();
    ASSERT_GT(declares.size(), 100u);
    std::set<std::string> decrits;
    for (const Export& e : Exports()) EXPECT_TRUE(decrits.insert(e.nom).second) << e.nom << " described twice";
    std::set<std::string> session(ExportsDeLaSession().begin(), ExportsDeLaSession().end());
    for (const std::string& nom : session) EXPECT_FALSE(decrits.count(nom)) << nom;
    std::set<std::string> tous = decrits;
    tous.insert(session.begin(), session.end());
    EXPECT_EQ(tous, declares);
}

}  // namespace
}  // namespace vdx::exports
