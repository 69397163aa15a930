#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "platform/hote.h"
#include "platform/test_repertoire.h"

namespace vdx::hote {
namespace {

namespace fs = std::filesystem;

// Runs `corps` in a child process; true if it ended with status 0.
template <typename F>
bool DansUnFils(F corps) {
    pid_t pid = ::fork();
    if (pid == 0) ::_exit(corps() ? 0 : 1);
    int etat = 0;
    if (pid < 0 || ::waitpid(pid, &etat, 0) != pid) return false;
    return WIFEXITED(etat) && WEXITSTATUS(etat) == 0;
}

TEST(TextePartage, PoseEtPrend) {
    test::RepertoireExecutionTemporaire rep;
    EXPECT_EQ(CheminTextePartage(), rep / "vdx32-presse-papiers.txt");
    EXPECT_EQ(PrendTextePartage(), "");  // nothing there yet

    const std::string texte("3400000@Libell\xE9\r\n3400001@#\0fin", 30);
    PoseTextePartage(texte);
    EXPECT_EQ(PrendTextePartage(), texte);
    PoseTextePartage("court");
    EXPECT_EQ(PrendTextePartage(), "court");
    PoseTextePartage("");
    EXPECT_EQ(PrendTextePartage(), "");

    // Only the slot is left behind, readable by its user alone.
    int fichiers = 0;
    for (const auto& e : fs::directory_iterator(rep.chemin())) {
        ++fichiers;
        EXPECT_EQ(e.path().filename(), "vdx32-presse-papiers.txt");
    }
    EXPECT_EQ(fichiers, 1);
    struct stat etat {};
    ASSERT_EQ(::stat(CheminTextePartage().c_str(), &etat), 0);
    EXPECT_EQ(etat.st_mode & 0777, 0600u);
}

TEST(TextePartage, PartageEntreProcessus) {
    test::RepertoireExecutionTemporaire rep;
    PoseTextePartage("du p\xE8re");
    EXPECT_TRUE(DansUnFils([] {
        if (PrendTextePartage() != "du p\xE8re") return false;
        PoseTextePartage("du fils");
        return true;
    }));
    EXPECT_EQ(PrendTextePartage(), "du fils");
}

TEST(TextePartage, UnLecteurNeVoitJamaisUnDemiTexte) {
    test::RepertoireExecutionTemporaire rep;
    const std::string a(1 << 20, 'a'), b((1 << 20) + 7, 'b');
    PoseTextePartage(a);
    pid_t pid = ::fork();
    if (pid == 0) {
        for (int i = 0; i < 40; ++i) PoseTextePartage(i % 2 ? a : b);
        ::_exit(0);
    }
    ASSERT_GT(pid, 0);
    for (int i = 0; i < 200; ++i) {
        const std::string lu = PrendTextePartage();
        if (lu != a && lu != b) {
            ADD_FAILURE() << "lecture " << i << ": " << lu.size() << " octets";
            break;
        }
    }
    int etat = 0;
    ASSERT_EQ(::waitpid(pid, &etat, 0), pid);
    EXPECT_TRUE(WIFEXITED(etat) && WEXITSTATUS(etat) == 0);
}

TEST(TextePartage, SansRepertoireDExecution) {
    test::RepertoireExecutionTemporaire rep;
    test::VariableEnv xdg("XDG_RUNTIME_DIR"), tmp("TMPDIR");
    xdg.Enleve();
    tmp.Pose(rep.chemin());
    const std::string attendu = rep / ("vdx32-presse-papiers-" + std::to_string(::geteuid()) + ".txt");
    EXPECT_EQ(CheminTextePartage(), attendu);
    PoseTextePartage("dans tmp");
    std::ifstream f(attendu, std::ios::binary);
    std::string lu((std::istreambuf_iterator<char>(f)), std::istreambuf_iterator<char>());
    EXPECT_EQ(lu, "dans tmp");
}

TEST(TextePartage, EchecsSignales) {
    test::RepertoireExecutionTemporaire rep;
    {
        test::VariableEnv xdg("XDG_RUNTIME_DIR");
        xdg.Pose(rep / "absent");
        EXPECT_THROW(PoseTextePartage("x"), std::system_error);
        EXPECT_EQ(PrendTextePartage(), "");
    }
    // Something that is not a file of ours stands where the slot goes.
    fs::create_directory(CheminTextePartage());
    EXPECT_THROW(PrendTextePartage(), std::system_error);
    fs::remove(CheminTextePartage());
    fs::create_symlink(rep / "ailleurs", CheminTextePartage());
    { std::ofstream(rep / "ailleurs") << "pas le sien"; }
    EXPECT_THROW(PrendTextePartage(), std::system_error);
    // Writing replaces the link itself, never what it points to.
    PoseTextePartage("neuf");
    EXPECT_EQ(PrendTextePartage(), "neuf");
    std::ifstream f(rep / "ailleurs");
    std::string lu;
    std::getline(f, lu);
    EXPECT_EQ(lu, "pas le sien");
}

TEST(Hote, RepertoireExecution) {
    test::VariableEnv xdg("XDG_RUNTIME_DIR"), tmp("TMPDIR");
    xdg.Pose("/run/user/1000");
    tmp.Pose("/var/tmp");
    EXPECT_EQ(RepertoireExecution(), "/run/user/1000");
    EXPECT_EQ(CheminTextePartage(), "/run/user/1000/vdx32-presse-papiers.txt");
    xdg.Pose("");
    EXPECT_EQ(RepertoireExecution(), "/var/tmp");
    xdg.Enleve();
    EXPECT_EQ(CheminTextePartage(), "/var/tmp/vdx32-presse-papiers-" + std::to_string(::geteuid()) + ".txt");
    tmp.Enleve();
    EXPECT_EQ(RepertoireExecution(), "/tmp");
}

}  // namespace
}  // namespace vdx::hote
