// The doctor's private base through its exports: its life, its edits, the
// migrations of older files and the repair of its indexes.
#include "medecin/base_medecin.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/notices.h"
#include "session/session.h"
#include "store/fixture.h"
#include "store/magasin.h"
#include "store/sources.h"
#include "tests/support/dossier_essai.h"
#include "tests/support/identite.h"
#include "vdx32/vdx32.h"

namespace vdx {
namespace {

namespace fs = std::filesystem;

TEST(NomMedecin, ShortLastPartsAndNoDrugBaseNames) {
    for (const char* bon : {"MED", "ABCD", "C:\\VDX", "C:\\MED1\\", "/home/x/MED1", "C:\\a\\b"})
        EXPECT_TRUE(medecin::NomValide(bon)) << bon;
    for (const char* mauvais : {"ABCDE", "C:\\ABCDE", "/home/x/MEDEC", "VDXA", "VDX"})
        EXPECT_FALSE(medecin::NomValide(mauvais)) << mauvais;
}

// A drug base with two products and a CISP code, connected in memory mode,
// and the place of a doctor's base.
class BaseMedecin : public ::testing::Test {
protected:
    void SetUp() override {
        essai::AjouteIdentite(base_);
        base_.Ajoute("VDXPRO", {{"CodeCIP", "3000001"}, {"Libelle", "DOLIPRANE 1000MG CPR"}})
            .Ajoute("VDXPRO", {{"CodeCIP", "3000002"}, {"Libelle", "ASPIRINE 500MG"}})
            .Ajoute("VDXCISP", {{"Code", "A01"}, {"Libelle", "Douleur"}, {"LibelleCle", "DOULEUR"}});
        DeConnection2_Vdx();
        RemetSession();
        ASSERT_EQ(Connection_Vdx(base_.Repertoire().c_str(), ModeMemoire, 0), 1);
    }
    void TearDown() override {
        DeConnectionMedecin_Vdx();
        DeConnection2_Vdx();
        RemetSession();
    }
    std::string Medecin() const { return dossier_.Chemin("MED1"); }
    // Disconnected, and the files the process keeps open for its next
    // opens closed, so that the test may move them (Windows).
    void Libere() {
        DeConnectionMedecin_Vdx();
        magasin::FermeFichiersInactifs();
    }
    bool Fichier(const char* nom) const { return fs::exists(Medecin() + "/" + nom); }
    int32_t Cree() { return CreationMedecin_Vdx(Medecin().c_str()); }
    int32_t Connecte() { return ConnectionMedecin_Vdx(Medecin().c_str()); }
    static std::string Chaine() { return session().ChaineMemoire.value_or("<rien>"); }
    // A pathology through its export, the code given and given back.
    static int32_t Pathologie(std::string& code, const char* libelle, const char* cisp, int32_t operation) {
        BSTR chaine = SysAllocStringByteLen(code.data(), static_cast<uint32_t>(code.size()));
        const int32_t resultat = PathologiesMedecin_Vdx(&chaine, libelle, cisp, operation);
        if (resultat == 1 && code.empty()) code = Chaine();
        SysFreeString(chaine);
        return resultat;
    }

    NoticesMemorisees notices;
    NoticesEnPlace enPlace{notices};
    essai::BaseDeTest base_;
    essai::DossierEssai dossier_;
};

TEST_F(BaseMedecin, CreatedConnectedOnceAndDeletedWhenNotInUse) {
    EXPECT_EQ(ConnectionMedecin_Vdx(Medecin().c_str()), -6);
    EXPECT_EQ(CreationMedecin_Vdx("C:\\ABCDE"), -13);
    EXPECT_EQ(CreationMedecin_Vdx(""), -10);
    // A path that is a file: -500, the path named.
    std::ofstream(dossier_.Chemin("FICH")) << "x";
    EXPECT_EQ(CreationMedecin_Vdx(dossier_.Chemin("FICH").c_str()), -500);
    EXPECT_NE(session().FichierErreur.find("FICH"), std::string::npos);
#ifndef _WIN32
    // A directory where no file can be written, even by root: -500, the
    // path named.
    ASSERT_TRUE(std::filesystem::is_directory("/sys/fs"));
    EXPECT_EQ(CreationMedecin_Vdx("/sys/fs"), -500);
    EXPECT_NE(session().FichierErreur.find("/sys/fs"), std::string::npos);
#endif
    ASSERT_EQ(Cree(), 1);
    for (const char* f : {"PRO.DAT", "PRO.NDX", "PATH.DAT", "PATH.NDX", "POSO.DAT", "POSO.NDX", "TEXU.DAT", "TEXU.NDX"})
        EXPECT_TRUE(Fichier(f)) << f;
    ASSERT_EQ(Connecte(), 1);
    EXPECT_EQ(Connecte(), -7);
    ASSERT_EQ(ProduitsMedecin_Vdx("3000001", "Mon choix", 0), 1);
    // Creating it again leaves what it holds.
    EXPECT_EQ(Cree(), 1);
    EXPECT_EQ(SuppressionMedecin_Vdx(Medecin().c_str()), -5);
    EXPECT_TRUE(Fichier("PRO.DAT"));
    EXPECT_EQ(DeConnectionMedecin_Vdx(), 1);
    Libere();
    // Its labels folded, the next connection leaves PRO as it is.
    for (const char* f : {"PROold.DAT", "PROold.NDX"}) fs::remove(Medecin() + "/" + f);
    ASSERT_EQ(Connecte(), 1);
    EXPECT_FALSE(Fichier("PROold.DAT"));
    EXPECT_EQ(CommentaireMedecin_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Chaine(), "Mon choix");
    DeConnectionMedecin_Vdx();
    EXPECT_EQ(SuppressionMedecin_Vdx(Medecin().c_str()), 1);
    EXPECT_FALSE(Fichier("PRO.DAT") || Fichier("TEXU.NDX"));
    EXPECT_EQ(Connecte(), -6);
    DeConnection2_Vdx();
    EXPECT_EQ(CreationMedecin_Vdx(Medecin().c_str()), -2);
}

TEST_F(BaseMedecin, ProductsCommentsAndTheirCodes) {
    ASSERT_EQ(Cree(), 1);
    EXPECT_EQ(ProduitsMedecin_Vdx("3000001", "x", 0), -4);
    ASSERT_EQ(Connecte(), 1);
    EXPECT_EQ(ProduitsMedecin_Vdx("", "x", 0), -10);
    EXPECT_EQ(ProduitsMedecin_Vdx("300001", "x", 0), -13);
    EXPECT_EQ(ProduitsMedecin_Vdx("3000009", "x", 0), -90);  // not in the drug base
    ASSERT_EQ(ProduitsMedecin_Vdx("3000001", "Premier", 0), 1);
    EXPECT_EQ(ProduitsMedecin_Vdx("3000001", "Encore", 0), -91);
    EXPECT_EQ(ProduitsMedecin_Vdx("3000001", "", 1), -20);

    EXPECT_EQ(ProduitsMedecin_Vdx("3000002", "Absent", 1), -90);
    ASSERT_EQ(ProduitsMedecin_Vdx("3000001", std::string(600, 'c').c_str(), 1), 1);
    EXPECT_EQ(CommentaireMedecin_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Chaine(), std::string(511, 'c'));
    ASSERT_EQ(ProduitsMedecin_Vdx("3000001", "Second", 1), 1);
    EXPECT_EQ(CommentaireMedecin_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Chaine(), "Second");
    // The search of the doctor's products finds it by its drug base label.
    ASSERT_EQ(RechercheProduitParPas_Vdx("DOLI", nullptr, 2, nullptr, 10), 1);
    EXPECT_NE(Chaine().find("3000001@DOLIPRANE 1000MG CPR@Second"), std::string::npos) << Chaine();
    ASSERT_EQ(ProduitsMedecin_Vdx("3000001", "", 2), 1);
    EXPECT_EQ(CommentaireMedecin_Vdx("3000001", nullptr), 0);
    EXPECT_EQ(ProduitsMedecin_Vdx("3000001", "", 2), -90);
    EXPECT_FALSE(Fichier("VDXMAJ.JNL") || Fichier("PRO.DAT.maj"));
}

TEST_F(BaseMedecin, PathologiesGetTheNextCodeAndUniqueLabels) {
    ASSERT_EQ(Cree(), 1);
    ASSERT_EQ(Connecte(), 1);
    std::string premier, second;
    ASSERT_EQ(Pathologie(premier, "Migraine", "A01", 0), 1);
    EXPECT_EQ(premier, "0000001");
    ASSERT_EQ(Pathologie(second, "Lombalgie", "", 0), 1);
    EXPECT_EQ(second, "0000002");
    std::string autre;
    EXPECT_EQ(Pathologie(autre, "MIGRAINE", "", 0), -91);  // the same label folded
    EXPECT_EQ(Pathologie(second, "Migraine", "", 1), -92);
    EXPECT_EQ(Pathologie(second, "Sciatique", "Z99", 1), -90);
    EXPECT_EQ(Pathologie(second, "", "", 1), -20);
    std::string court = "12";
    EXPECT_EQ(Pathologie(court, "Autre", "", 1), -13);
    ASSERT_EQ(Pathologie(second, "Sciatique", "", 1), 1);
    ASSERT_EQ(Pathologie(premier, "", "", 2), 1);
    EXPECT_EQ(Pathologie(premier, "", "", 2), -90);
    std::string troisieme;
    ASSERT_EQ(Pathologie(troisieme, "Migraine", "", 0), 1);  // its label free again
    EXPECT_EQ(troisieme, "0000003");
    // Codes go on past nine; a label over its field is cut.
    for (int n = 4; n <= 10; ++n) {
        std::string code;
        ASSERT_EQ(Pathologie(code, ("Pathologie " + std::to_string(n) + std::string(100, 'x')).c_str(), "", 0), 1);
        EXPECT_EQ(code, n < 10 ? "000000" + std::to_string(n) : "0000010");
    }
}

TEST_F(BaseMedecin, PosologiesTakeTheFirstFreeNumberAndKeepTheirTexts) {
    ASSERT_EQ(Cree(), 1);
    // The host's records: the array mode.
    DeConnection2_Vdx();
    ASSERT_EQ(Connection_Vdx(base_.Repertoire().c_str(), 0, 0), 1);
    ASSERT_EQ(Connecte(), 1);
    VdxPosologieHote h{};
    h.DoseMin.Valeur = 1.5f;
    h.PrisesMin = 3;
    h.CodeCIP = SysAllocStringByteLen("3000001", 7);
    h.Libelle = SysAllocStringByteLen("Ma posologie", 12);
    h.Texte = SysAllocStringByteLen("Un texte\r\nlong", 14);
    ASSERT_EQ(PosologiesMedecin_Vdx(&h, 0), 1);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(h.CodePosologie), SysStringByteLen(h.CodePosologie)), "#3000001000");
    ASSERT_EQ(PosologiesMedecin_Vdx(&h, 0), 1);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(h.CodePosologie), SysStringByteLen(h.CodePosologie)), "#3000001001");
    VdxPosologieHote vide{};
    EXPECT_EQ(PosologiesMedecin_Vdx(&vide, 0), -20);
    VdxPosologieHote lue{};
    ASSERT_EQ(PosoLoad_Vdx("#3000001000", &lue), 1);
    EXPECT_FLOAT_EQ(lue.DoseMin.Valeur, 1.5f);
    EXPECT_EQ(lue.PrisesMin, 3);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(lue.Texte), SysStringByteLen(lue.Texte)), "Un texte\r\nlong");
    // The first one deleted, its number is free again.
    SysFreeString(h.CodePosologie);
    h.CodePosologie = SysAllocStringByteLen("#3000001000", 11);
    ASSERT_EQ(PosologiesMedecin_Vdx(&h, 2), 1);
    EXPECT_EQ(PosoLoad_Vdx("#3000001000", &lue), -90);
    EXPECT_EQ(PosologiesMedecin_Vdx(&h, 2), -90);
    ASSERT_EQ(PosologiesMedecin_Vdx(&h, 0), 1);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(h.CodePosologie), SysStringByteLen(h.CodePosologie)), "#3000001000");
    for (BSTR* b : {&h.CodePosologie, &h.CodeCIP, &h.Libelle, &h.TypeRef, &h.Texte, &lue.CodePosologie, &lue.CodeCIP,
                    &lue.Libelle, &lue.TypeRef, &lue.Texte})
        SysFreeString(*b);
}

TEST_F(BaseMedecin, OlderFilesAreBroughtUpAndIndexesRepaired) {
    // An older PRO: its label key as written, not folded.
    {
        essai::BaseDeTest ancienne(Emplacement::Medecin);
        ancienne.AjouteAvecCles("PRO", {{"CodeCIP", "3000001"}, {"Libelle", "Doliprane"}, {"Commentaire", "Ancien"}},
                                {{1, "Doliprane"}});
        fs::create_directories(Medecin());
        for (const char* f : {"PRO.DAT", "PRO.NDX", "PATH.DAT", "PATH.NDX", "POSO.DAT", "POSO.NDX", "TEXU.DAT", "TEXU.NDX"})
            fs::copy_file(ancienne.Repertoire() + "/" + f, Medecin() + "/" + f);
    }
    ASSERT_EQ(Connecte(), 1);
    EXPECT_TRUE(Fichier("PROold.DAT") && Fichier("PROold.NDX"));
    EXPECT_FALSE(Fichier("PRO1.DAT"));
    ASSERT_EQ(RechercheProduitParPas_Vdx("DOLI", nullptr, 2, nullptr, 10), 1);
    EXPECT_NE(Chaine().find("3000001@Doliprane@Ancien"), std::string::npos) << Chaine();
    // A migration killed between its renames: the connection finishes it.
    Libere();
    for (const char* f : {"DAT", "NDX"})
        fs::copy_file(Medecin() + "/PRO." + f, Medecin() + "/PRO1." + f, fs::copy_options::overwrite_existing);
    fs::rename(Medecin() + "/PRO.DAT", Medecin() + "/PROold.DAT");
    ASSERT_EQ(Connecte(), 1);
    EXPECT_TRUE(Fichier("PRO.DAT") && Fichier("PRO.NDX"));
    EXPECT_FALSE(Fichier("PRO1.DAT") || Fichier("PRO1.NDX"));
    // Texts of the older form: TEXT without its key bytes, brought to TEXU.
    Libere();
    for (const char* f : {"TEXU.DAT", "TEXU.NDX"}) fs::remove(Medecin() + "/" + f);
    EXPECT_EQ(Connecte(), -6);
    {
        const std::string dat = Medecin() + "/TEXT.DAT", ndx = Medecin() + "/TEXT.NDX";
        ASSERT_EQ(magasin::CreateDataFile(282, dat.c_str(), 0, 4096, magasin::Variable), 0);
        ASSERT_EQ(magasin::CreateIndexFile(283, ndx.c_str(), 11, 0, 0, 1, 4096, magasin::Exclusif), 0);
        const std::string texte = "Un texte ancien";
        const magasin::Position p = magasin::NouvelleFicheVariable(282, static_cast<uint32_t>(texte.size()));
        ASSERT_EQ(magasin::EcritFicheVariable(282, p, texte.data(), static_cast<uint32_t>(texte.size())), 0);
        ASSERT_EQ(magasin::AddRecordKey(283, "#3000001000", p, 0), 0);
        ASSERT_EQ(magasin::CloseCtFile(282, magasin::Variable), 0);
        ASSERT_EQ(magasin::CloseCtFile(283, magasin::Exclusif), 0);
    }
    ASSERT_EQ(Connecte(), 1);
    EXPECT_TRUE(Fichier("TEXU.DAT") && Fichier("TEXT.DAT"));
    {
        const auto textes = LitIndex(Medecin(), *DispositionNommee("TEXU"), 0);
        ASSERT_EQ(textes.size(), 1u);
        EXPECT_EQ(textes[0].first, "#3000001000");
        EXPECT_EQ(textes[0].second.substr(0, 26), "#3000001000Un texte ancien");
    }
    // A lost index rebuilt.
    Libere();
    fs::remove(Medecin() + "/PRO.NDX");
    EXPECT_EQ(Connecte(), -6);
    ASSERT_EQ(RepairBaseMedecin_Vdx(Medecin().c_str()), 1);
    ASSERT_EQ(Connecte(), 1);
    EXPECT_EQ(CommentaireMedecin_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Chaine(), "Ancien");
    ASSERT_EQ(RechercheProduitParPas_Vdx("DOLI", nullptr, 2, nullptr, 10), 1);
    EXPECT_NE(Chaine().find("3000001@Doliprane@Ancien"), std::string::npos) << Chaine();
}

}  // namespace
}  // namespace vdx
