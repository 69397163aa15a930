#include "platform/hote.h"

#ifndef _WIN32
#include "platform/oleauto_interne.h"
#endif

#include <cstdlib>
#include <limits>

#include "platform/codepage.h"

namespace vdx::hote {

namespace {

// What Accede gives for an array that has no element and no data block.
alignas(16) unsigned char aucunElement[16];

// Features word of the library's private arrays, as the original sets it.
constexpr USHORT FonctionsTableauPrive = 512;

// That word reads as FADF_UNKNOWN to the system's oleaut32, which would
// release each element as an interface when the block is resized or freed:
// the bit is set aside meanwhile. The elements are the library's to free.
class SansInterfaces {
public:
    explicit SansInterfaces(SAFEARRAY* tableau)
        : tableau_(tableau), ecarte_(static_cast<USHORT>(tableau->fFeatures & FADF_UNKNOWN)) {
        tableau_->fFeatures = static_cast<USHORT>(tableau_->fFeatures & ~FADF_UNKNOWN);
    }
    ~SansInterfaces() { tableau_->fFeatures = static_cast<USHORT>(tableau_->fFeatures | ecarte_); }
    SansInterfaces(const SansInterfaces&) = delete;
    SansInterfaces& operator=(const SansInterfaces&) = delete;

private:
    SAFEARRAY* tableau_;
    USHORT ecarte_;
};

}  // namespace

SAFEARRAY* CreeTableau(uint32_t tailleElement) {
    SAFEARRAY* tableau = nullptr;
    if (FAILED(SafeArrayAllocDescriptor(1, &tableau))) return nullptr;
    tableau->fFeatures = FonctionsTableauPrive;
    tableau->cbElements = tailleElement;
    tableau->rgsabound[0].lLbound = 0;
    tableau->rgsabound[0].cElements = 0;
    if (FAILED(SafeArrayAllocData(tableau))) {
        SafeArrayDestroyDescriptor(tableau);
        return nullptr;
    }
    return tableau;
}

bool Redimensionne(SAFEARRAY* tableau, uint32_t elements) {
    if (!tableau) return false;
    SAFEARRAYBOUND borne{elements, 0};
    SansInterfaces garde(tableau);
    return SUCCEEDED(SafeArrayRedim(tableau, &borne));
}

bool ForceVide(SAFEARRAY* tableau) {
    if (!tableau) return false;
    tableau->rgsabound[0].cElements = 0;
    tableau->rgsabound[0].lLbound = 0;
    // Unlocked, the old block can go (with no cell left, no element is
    // released); locked, someone may still be reading it.
    SansInterfaces garde(tableau);
    if (tableau->cLocks == 0) SafeArrayDestroyData(tableau);
    return SUCCEEDED(SafeArrayAllocData(tableau));
}

void* Accede(SAFEARRAY* tableau) {
    void* donnees = nullptr;
    if (!tableau) return nullptr;
    // A descriptor claiming more elements than its block holds would let a
    // write run past the block.
    if (const int64_t alloues = OctetsAlloues(tableau);
        alloues >= 0 && uint64_t{NombreElements(tableau)} * tableau->cbElements > static_cast<uint64_t>(alloues))
        return nullptr;
    if (FAILED(SafeArrayAccessData(tableau, &donnees))) return nullptr;
    if (!donnees) {
        if (NombreElements(tableau) != 0) {
            SafeArrayUnaccessData(tableau);
            return nullptr;
        }
        return aucunElement;
    }
    return donnees;
}

void LibereAcces(SAFEARRAY* tableau) {
    if (tableau) SafeArrayUnaccessData(tableau);
}

SAFEARRAY* TableauDeChaines(const std::vector<std::string>& textes) {
    SAFEARRAY* t = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(textes.size()));
    if (!t) return nullptr;
    for (LONG i = 0; i < static_cast<LONG>(textes.size()); ++i) {
        BSTR b = SysAllocStringByteLen(textes[i].data(), static_cast<UINT>(textes[i].size()));
        SafeArrayPutElement(t, &i, b);
        SysFreeString(b);
    }
    return t;
}

int64_t OctetsAlloues(const SAFEARRAY* tableau) {
#ifdef _WIN32
    (void)tableau;
    return -1;  // the system's own arrays: their bounds are taken as given
#else
    return oleauto::OctetsDuBloc(tableau);
#endif
}

uint32_t NombreElements(const SAFEARRAY* tableau) {
    if (!tableau) return 0;
    uint64_t n = 1;
    for (USHORT i = 0; i < tableau->cDims; ++i) {
        n *= tableau->rgsabound[i].cElements;
        if (n > std::numeric_limits<uint32_t>::max()) return std::numeric_limits<uint32_t>::max();
    }
    return static_cast<uint32_t>(n);
}

uint32_t TailleElement(const SAFEARRAY* tableau) {
    return tableau ? tableau->cbElements : 0;
}

void Detruit(SAFEARRAY* tableau) {
    if (!tableau) return;
    {
        SansInterfaces garde(tableau);
        SafeArrayDestroyData(tableau);
    }
    SafeArrayDestroyDescriptor(tableau);
}

bool RangeOctets(BSTR* destination, std::string_view octets) {
    if (!destination || octets.size() > std::numeric_limits<UINT>::max()) return false;
    BSTR nouvelle = SysAllocStringByteLen(octets.data(), static_cast<UINT>(octets.size()));
    if (!nouvelle) return false;
    SysFreeString(*destination);
    *destination = nouvelle;
    return true;
}

bool RangeLarge(BSTR* destination, std::string_view texte) {
    if (!destination || texte.size() > std::numeric_limits<UINT>::max()) return false;
    std::u16string large = codepage::VersUtf16(texte);
    BSTR nouvelle = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(large.data()),
                                      static_cast<UINT>(large.size()));
    if (!nouvelle) return false;
    SysFreeString(*destination);
    *destination = nouvelle;
    return true;
}

void Libere(BSTR* chaine) {
    if (!chaine) return;
    SysFreeString(*chaine);
    *chaine = nullptr;
}

std::string_view Octets(BSTR chaine) {
    if (!chaine) return {};
    return {reinterpret_cast<const char*>(chaine), SysStringByteLen(chaine)};
}

std::string VersTexte(BSTR chaine) {
    if (!chaine) return {};
    std::u16string_view large(reinterpret_cast<const char16_t*>(chaine), SysStringLen(chaine));
    size_t nul = large.find(u'\0');
    if (nul != std::u16string_view::npos) large = large.substr(0, nul);
    return codepage::DepuisUtf16(large);
}

std::string RepertoireExecution() {
    for (const char* variable : {"XDG_RUNTIME_DIR", "TMPDIR"}) {
        const char* valeur = std::getenv(variable);
        if (valeur && *valeur) return valeur;
    }
    return "/tmp";
}

}  // namespace vdx::hote
