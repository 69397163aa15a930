// The return codes of every export, in one place. Success is 1 or a count
// of zero or more; zero is "nothing"; failures are negative.
#pragma once

#include <cstdint>

namespace vdx {

enum Code : int32_t {
    Succes = 1,
    Rien = 0,
    MagasinNonInitialise = -1,  // FichierErreur is "CTree"
    NonConnecte = -2,
    RechercheTropCourte = -3,   // fewer than four characters
    MedecinNonConnecte = -4,
    MedecinEnUsage = -5,        // the doctor's base to delete is the one in use
    FichiersManquants = -6,
    MedecinDejaConnecte = -7,
    Argument1 = -10,            // absent, empty or of the wrong length
    ListeVide = -12,            // an input list is empty or its first element is
    CodeMalForme = -13,
    PosologieIncomplete = -14,
    ProduitPosologie = -16,
    Argument2 = -20,
    OperationTableau = -21,     // SafeArrayAccessData, SafeArrayRedim, SafeArrayGetElement
    ElementSansValeur = -22,
    Argument3 = -30,
    Argument4 = -40,
    Argument5 = -50,            // also: the growth of an array failed
    Argument6 = -60,
    Argument7 = -70,
    CodeInconnu = -90,
    DejaPresent = -91,
    AutreCode = -92,
    FicheManquante = -100,
    MomentSansJour = -110,      // a moment of the day over a duration shorter than a day
    CycleTropCourt = -111,      // a cycle over a duration shorter than a year
    DureeTropCourte = -112,     // a duration shorter than the period
    RienADire = -113,           // no unit label, or no dose, and no model
    Memoire = -200,
    EcritureImpossible = -300,  // also: an empty search set handle
    EchecMagasin = -500,        // DerniereErreur and FichierErreur say how and where
    ListeMotsIllisible = -1998,
    ListeMotsIntraitable = -1999,
    ErreurInterne = -2000,
};

}  // namespace vdx
