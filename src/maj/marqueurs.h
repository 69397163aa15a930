// The tables an update file's rows go to: each marker, its update index
// (its place in the list), the least coverage level at which its rows are
// applied, and the tables it opens when it comes into force, in order.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vdx::maj {

inline constexpr std::string_view MarqueurDebut = "|DEBUT|";
inline constexpr std::string_view MarqueurFin = "|FIN|";

struct Marqueur {
    std::string_view texte;
    int32_t niveau;
    std::array<const char*, 3> tables;  // null after the last
};

inline constexpr int32_t NiveauProduits = 1, NiveauIdentification = 2, NiveauTout = 4;

inline constexpr std::array<Marqueur, 44> Marqueurs = {{
    {"|PRO|", NiveauProduits, {"VDXPRO", "VDXLABP", "VDXVPRO"}},
    {"|LABF|", NiveauTout, {"VDXLAB"}},
    {"|FAM|", NiveauTout, {"VDXFAM"}},
    {"|ADDON|", NiveauTout, {"VDXFAMP", "VDXPROA"}},
    {"|IDPRO|", NiveauIdentification, {"VDXIDPRO", "VDXIDFOP"}},
    {"|IDFOR|", NiveauIdentification, {"VDXIDFOR"}},
    {"|IDPRE|", NiveauIdentification, {"VDXIDPRE"}},
    {"|IDUPR|", NiveauIdentification, {"VDXIDUPR"}},
    {"|IDCON|", NiveauIdentification, {"VDXIDCON"}},
    {"|IDUCO|", NiveauTout, {"VDXIDUCO"}},
    {"|CLA|", NiveauTout, {"VDXCLA", "VDXWCLAD"}},
    {"|CLAP|", NiveauTout, {"VDXCLAP"}},
    {"|PPROE|", NiveauIdentification, {"VDXPPROD", "VDXPTEXT"}},
    {"|PPTER|", NiveauIdentification, {"VDXPPTER"}},
    {"|PIND|", NiveauIdentification, {"VDXPIND"}},
    {"|PNAT|", NiveauIdentification, {"VDXPNAT"}},
    {"|PVOI|", NiveauTout, {"VDXPVOI"}},
    {"|PPRO|", NiveauIdentification, {"VDXPPRO"}},
    {"|PMON|", NiveauTout, {"VDXPMOM"}},
    {"|PUPRI|", NiveauIdentification, {"VDXPUPRI"}},
    {"|VCOMP|", NiveauTout, {"VDXVCOMP"}},
    {"|VPAP|", NiveauTout, {"VDXVPAP"}},
    {"|VCOMG|", NiveauTout, {"VDXVCOMG"}},
    {"|VCOME|", NiveauTout, {"VDXVCOME"}},
    {"|VEXCP|", NiveauTout, {"VDXVEXCP"}},
    {"|VPA|", NiveauTout, {"VDXVPA"}},
    {"|VEXC|", NiveauTout, {"VDXVEXC"}},
    {"|VPAE|", NiveauTout, {"VDXVPAE"}},
    {"|VPAU|", NiveauTout, {"VDXVPAU"}},
    {"|VAMPC|", NiveauTout, {"VDXVAMPC"}},
    {"|VAMM|", NiveauTout, {"VDXVAMM"}},
    {"|VAMMC|", NiveauTout, {"VDXVAMMC"}},
    {"|VAMPT|", NiveauTout, {"VDXVAMPT"}},
    {"|VAMST|", NiveauTout, {"VDXVAMST"}},
    {"|VCOMC|", NiveauTout, {"VDXVPA", "VDXVEXC"}},
    {"|ATC|", NiveauTout, {"VDXYATC"}},
    {"|ATCP|", NiveauTout, {"VDXYATCP"}},
    {"|IDPVO|", NiveauTout, {"VDXIDPVO"}},
    {"|ZICLA|", NiveauTout, {"VDXZICLA"}},
    {"|ZICLC|", NiveauTout, {"VDXZICLC"}},
    {"|ZICLP|", NiveauTout, {"VDXZICLP"}},
    {"|ZITYP|", NiveauTout, {"VDXZITYP"}},
    {"|ZIGRA|", NiveauTout, {"VDXZIGRA"}},
    {"|ZICOU|", NiveauTout, {"VDXZICOU"}},
}};

// The update index of a marker token, none for one the list lacks.
std::optional<int32_t> IndexDuMarqueur(std::string_view jeton);

}  // namespace vdx::maj
