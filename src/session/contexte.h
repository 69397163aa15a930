// What a call runs in: the base it reads and the switches its host set.
// The C exports run in the process's own context, the session; a core is
// given its context, and makes it the current one for what it calls (the
// tables it opens, the codes it gives out). A service can hold one per
// worker, a test builds its own.
#pragma once

#include <cstdint>
#include <string>

namespace vdx {

struct Contexte {
    std::string BaseFichiers;   // ends with a backslash
    std::string CheminMedecin;  // the doctor's base, once opened
    bool ConnecteMedecin = false;
    int32_t CIP13Actif = 0;
    bool HospitaliersActifs = false;
    int32_t NiveauCI = 0;
    int32_t NiveauInteraction = 0;
    bool MedDCMasque = false;
};

// The context of this thread's call: the one a core made current, else the
// process's.
const Contexte& ContexteCourant();

// Makes a context the current one for its extent. A core opens no table of
// one context while it holds tables of another.
class DansContexte {
public:
    explicit DansContexte(const Contexte& contexte);
    ~DansContexte();
    DansContexte(const DansContexte&) = delete;
    DansContexte& operator=(const DansContexte&) = delete;

private:
    const Contexte* precedent_;
};

}  // namespace vdx
