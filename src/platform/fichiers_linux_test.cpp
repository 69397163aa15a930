// The shared records between processes: the exclusive lock of one record
// holds against every other process, while each new process sweeps away
// the records nobody holds.
#include "platform/fichiers.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <vector>

namespace vdx::systeme {
namespace {

TEST(RecordPartage, AnExclusiveLockHoldsWhileOtherProcessesSweep) {
    const std::string dossier = (std::filesystem::temp_directory_path() /
                                 ("vdx-records-" + std::to_string(::getpid()))).string();
    std::filesystem::create_directories(dossier);
    // Shared with the children: whether one holds the lock, and how often
    // one found it held by another.
    auto* compteurs = static_cast<std::atomic<int>*>(
        ::mmap(nullptr, 2 * sizeof(std::atomic<int>), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    ASSERT_NE(compteurs, MAP_FAILED);
    new (&compteurs[0]) std::atomic<int>(0);
    new (&compteurs[1]) std::atomic<int>(0);
    const IdentiteFichier identite{0x7e57, 0x1};
    // Records this process holds, which every sweep must pass over: sweeps
    // long enough to cross one another.
    FixeDossierPartage(dossier);
    std::vector<std::unique_ptr<RecordPartage>> tenus;
    for (uint64_t i = 0; i < 100; ++i) tenus.push_back(RecordPartage::Ouvre({0x7e58, i}, "", 64));
    // Half the children take the lock in turns, with gaps when nobody holds
    // the record; the other half only sweep, as processes that start.
    constexpr int Enfants = 8, Tours = 600;
    pid_t enfants[Enfants];
    for (int e = 0; e < Enfants; ++e) {
        enfants[e] = ::fork();
        if (enfants[e] != 0) continue;
        std::srand(static_cast<unsigned>(::getpid()));
        for (int tour = 0; tour < Tours; ++tour) {
            FixeDossierPartage(dossier);
            if (e % 2 == 1) {
                RecordPartage::Ouvre({0x7e59, static_cast<uint64_t>(e)}, "", 64);
                continue;
            }
            auto record = RecordPartage::Ouvre(identite, "", 64);
            if (!record || !record->Verrouille(0, true, true)) ::_exit(2);
            if (compteurs[0].fetch_add(1) != 0) compteurs[1].fetch_add(1);
            ::usleep(20);
            compteurs[0].fetch_sub(1);
            record->Deverrouille(0);
            record.reset();
            ::usleep(static_cast<useconds_t>(std::rand() % 200));  // a while when nobody holds it
        }
        ::_exit(0);
    }
    for (const pid_t enfant : enfants) {
        int statut = 0;
        ::waitpid(enfant, &statut, 0);
        EXPECT_TRUE(WIFEXITED(statut) && WEXITSTATUS(statut) == 0);
    }
    EXPECT_EQ(compteurs[1].load(), 0) << "times the lock was held by two processes at once";
    ::munmap(compteurs, 2 * sizeof(std::atomic<int>));
    std::filesystem::remove_all(dossier);
}

}  // namespace
}  // namespace vdx::systeme
