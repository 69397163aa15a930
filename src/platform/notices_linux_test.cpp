#include "platform/notices.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "platform/test_repertoire.h"

namespace vdx {
namespace {

TEST(Notices, BoiteParDefautSurUneLigne) {
    testing::internal::CaptureStderr();
    notices().BoiteMessage("Attention: pas en phase.\nKORVA ne pourra...\n\nNous vous invitons \xE0 appeler.",
                           "     Information importante", StyleExclamation);
    notices().BoiteMessage("Une erreur interne est survenue lors de l'appel de la fonction X_Vdx !", "",
                           StyleSimple);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Information importante: Attention: pas en phase. / KORVA ne pourra... / "
              "Nous vous invitons \xC3\xA0 appeler.\n"
              "Une erreur interne est survenue lors de l'appel de la fonction X_Vdx !\n");
}

struct Recu {
    int appels = 0;
    std::string texte, titre, libelle;
    int32_t style = -1, fait = -1, total = -1;
};

int32_t Boite(void* contexte, const char* texte, const char* titre, int32_t style) {
    auto* r = static_cast<Recu*>(contexte);
    ++r->appels;
    r->texte = texte;
    r->titre = titre;
    r->style = style;
    return 1;
}

void Progres(void* contexte, int32_t fait, int32_t total, const char* libelle) {
    auto* r = static_cast<Recu*>(contexte);
    ++r->appels;
    r->fait = fait;
    r->total = total;
    r->libelle = libelle;
}

TEST(Notices, GestionnairesDeLHote) {
    Recu boite, progres;
    InstalleGestionnaireBoite(&Boite, &boite);
    InstalleGestionnaireProgression(&Progres, &progres);
    testing::internal::CaptureStderr();
    notices().BoiteMessage("probleme lors de sendmessage", "info", StyleSimple);
    notices().BoiteMessage("La Base de donn\xE9" "es", "Information importante", StyleExclamation);
    notices().Progression(3, 120, "VDXPRO");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(boite.appels, 2);
    EXPECT_EQ(boite.texte, "La Base de donn\xE9" "es");  // code page 1252, as given
    EXPECT_EQ(boite.titre, "Information importante");
    EXPECT_EQ(boite.style, StyleExclamation);
    EXPECT_EQ(progres.appels, 1);
    EXPECT_EQ(progres.fait, 3);
    EXPECT_EQ(progres.total, 120);
    EXPECT_EQ(progres.libelle, "VDXPRO");

    InstalleGestionnaireBoite(nullptr, nullptr);
    InstalleGestionnaireProgression(nullptr, nullptr);
    testing::internal::CaptureStderr();
    notices().BoiteMessage("texte", "titre", StyleSimple);
    notices().Progression(4, 120, "VDXPRO");  // nothing by default
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "titre: texte\n");
    EXPECT_EQ(boite.appels, 2);
    EXPECT_EQ(progres.appels, 1);
}

TEST(Notices, NoticesDeTest) {
    Notices* defaut = &notices();
    NoticesMemorisees memo;
    memo.agents.insert("AgentVDX");
    {
        NoticesEnPlace enPlace(memo);
        EXPECT_EQ(&notices(), &memo);
        notices().BoiteMessage("texte", "titre", StyleExclamation);
        EXPECT_TRUE(notices().AgentPresent("AgentVDX"));
        EXPECT_FALSE(notices().AgentPresent("Autre"));
        notices().NotifieAgent("AgentVDX", "Posoliste@CodeCIP=3400000@");
        notices().Progression(1, 2, "x");
    }
    EXPECT_EQ(&notices(), defaut);
    ASSERT_EQ(memo.boites.size(), 1u);
    EXPECT_EQ(memo.boites[0].texte, "texte");
    EXPECT_EQ(memo.boites[0].titre, "titre");
    EXPECT_EQ(memo.boites[0].style, StyleExclamation);
    ASSERT_EQ(memo.notifications.size(), 1u);
    EXPECT_EQ(memo.notifications[0].texte, "Posoliste@CodeCIP=3400000@");
    EXPECT_EQ(memo.etapes.size(), 1u);
}

// A socket of the given type bound at `chemin`.
int Prise(int type, const std::string& chemin) {
    int fd = ::socket(AF_UNIX, type | SOCK_CLOEXEC, 0);
    sockaddr_un adresse{};
    adresse.sun_family = AF_UNIX;
    chemin.copy(adresse.sun_path, sizeof adresse.sun_path - 1);
    if (fd < 0 || ::bind(fd, reinterpret_cast<sockaddr*>(&adresse), sizeof adresse) != 0) return -1;
    return fd;
}

TEST(Notices, AgentParDatagramme) {
    test::RepertoireExecutionTemporaire rep;
    Notices& n = notices();
    EXPECT_FALSE(n.AgentPresent("AgentVDX"));
    n.NotifieAgent("AgentVDX", "personne");  // silent

    { std::ofstream(rep / "AgentVDX") << "un fichier"; }
    EXPECT_FALSE(n.AgentPresent("AgentVDX"));
    ::unlink((rep / "AgentVDX").c_str());

    int agent = Prise(SOCK_DGRAM, rep / "AgentVDX");
    ASSERT_GE(agent, 0);
    EXPECT_TRUE(n.AgentPresent("AgentVDX"));
    EXPECT_FALSE(n.AgentPresent("../AgentVDX"));
    EXPECT_FALSE(n.AgentPresent(""));

    const std::string texte = "MonographieHtml@CodeCIP=34\xE9" "0000@";
    testing::internal::CaptureStderr();
    n.NotifieAgent("AgentVDX", texte);
    n.NotifieAgent("AgentVDX", "Posoliste2@CodeCIP=3400001@");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    char tampon[256];
    ssize_t lu = ::recv(agent, tampon, sizeof tampon, MSG_DONTWAIT);
    ASSERT_GT(lu, 0);
    EXPECT_EQ(std::string(tampon, static_cast<size_t>(lu)), texte);  // the bytes, nothing more
    lu = ::recv(agent, tampon, sizeof tampon, MSG_DONTWAIT);
    ASSERT_GT(lu, 0);
    EXPECT_EQ(std::string(tampon, static_cast<size_t>(lu)), "Posoliste2@CodeCIP=3400001@");

    // An agent that doesn't read: the notice is dropped, the call never blocks.
    for (int i = 0; i < 2000; ++i) n.NotifieAgent("AgentVDX", std::string(1000, 'x'));
    ::close(agent);
    // The socket file of a dead agent is still there: sending fails quietly.
    EXPECT_TRUE(n.AgentPresent("AgentVDX"));
    n.NotifieAgent("AgentVDX", "orphelin");
}

TEST(Notices, AgentParFlux) {
    test::RepertoireExecutionTemporaire rep;
    int agent = Prise(SOCK_STREAM, rep / "AgentVDX");
    ASSERT_GE(agent, 0);
    ASSERT_EQ(::listen(agent, 4), 0);
    notices().NotifieAgent("AgentVDX", "Posoliste@CodeCIP=3400000@");
    int connexion = ::accept4(agent, nullptr, nullptr, SOCK_CLOEXEC);
    ASSERT_GE(connexion, 0);
    std::string recu;
    char tampon[64];
    ssize_t lu;
    while ((lu = ::read(connexion, tampon, sizeof tampon)) > 0) recu.append(tampon, static_cast<size_t>(lu));
    EXPECT_EQ(recu, "Posoliste@CodeCIP=3400000@");
    ::close(connexion);
    ::close(agent);
}

}  // namespace
}  // namespace vdx
