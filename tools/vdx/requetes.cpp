#include "tools/vdx/requetes.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>

#include "platform/codepage.h"
#include "session/texte.h"

namespace vdx {
namespace {

using Json = nlohmann::json;

// How an error names a field or a parameter whose name is empty.
constexpr char SansNom[] = "\"\"";

bool Chiffres(std::string_view t) {
    return !t.empty() && std::ranges::all_of(t, [](char c) { return c >= '0' && c <= '9'; });
}

// A term, a CISP or CIM10 code: letters, digits and points.
bool CodeVocabulaire(std::string_view t) {
    return !t.empty() && t.size() <= CodeMax && std::ranges::all_of(t, [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '.';
    });
}

// The reader of one body: the first rule broken is kept, with its field.
class Lecteur {
public:
    std::optional<ErreurRequete> erreur;

    bool Refuse(const std::string& champ, std::string message) {
        if (!erreur) erreur = ErreurRequete{champ, std::move(message)};
        return false;
    }

    // Refuses a member of `objet` that is not among `connus`.
    bool SeulementConnus(const Json& objet, const std::string& prefixe, std::initializer_list<std::string_view> connus) {
        for (const auto& [nom, valeur] : objet.items())
            if (std::ranges::find(connus, nom) == connus.end())
                return Refuse(prefixe + (nom.empty() ? SansNom : nom), "unknown field");
        return true;
    }

    bool Entier(const Json& v, const std::string& champ, int64_t min, int64_t max, int32_t& cible) {
        if (!v.is_number_integer()) return Refuse(champ, "an integer is expected");
        // Beyond int64_t only as an unsigned number, and then beyond any range.
        const bool enorme = v.is_number_unsigned() && v.get<uint64_t>() > static_cast<uint64_t>(INT64_MAX);
        if (enorme || v.get<int64_t>() < min || v.get<int64_t>() > max)
            return Refuse(champ, "out of range " + std::to_string(min) + " to " + std::to_string(max));
        cible = static_cast<int32_t>(v.get<int64_t>());
        return true;
    }

    bool Chaine(const Json& v, const std::string& champ, size_t max, std::string& cible) {
        if (!v.is_string()) return Refuse(champ, "a string is expected");
        cible = v.get<std::string>();
        if (cible.size() > max) return Refuse(champ, "longer than " + std::to_string(max) + " bytes");
        return true;
    }

    // An array of at most `max` items, each read by `lit(item, field)`.
    template <typename Lit>
    bool Liste(const Json& v, const std::string& champ, size_t max, Lit lit) {
        if (!v.is_array()) return Refuse(champ, "an array is expected");
        if (v.size() > max) return Refuse(champ, "more than " + std::to_string(max) + " items");
        for (size_t i = 0; i < v.size(); ++i)
            if (!lit(v[i], champ + "[" + std::to_string(i) + "]")) return false;
        return true;
    }

    // {"type": ..., "code": ...}: the type among `types`, its rank; the code.
    bool TypeEtCode(const Json& v, const std::string& champ, std::initializer_list<std::string_view> types,
                    size_t& rang, std::string& code) {
        if (!v.is_object()) return Refuse(champ, "an object is expected");
        if (!SeulementConnus(v, champ + ".", {"type", "code"})) return false;
        if (!v.contains("type") || !v["type"].is_string()) return Refuse(champ + ".type", "a string is expected");
        const auto trouve = std::ranges::find(types, v["type"].get<std::string>());
        if (trouve == types.end()) return Refuse(champ + ".type", "unknown type");
        rang = static_cast<size_t>(trouve - types.begin());
        if (!v.contains("code")) return Refuse(champ + ".code", "missing");
        return Chaine(v["code"], champ + ".code", CodeMax, code);
    }

    bool Patient(const Json& p, Ordonnance& o) {
        if (!p.is_object()) return Refuse("patient", "an object is expected");
        if (!SeulementConnus(p, "patient.", {"ageMonths", "weightKg", "sex", "pregnancyWeeks", "breastfeeding",
                                             "pathologies", "allergies"}))
            return false;
        if (p.contains("ageMonths") && !Entier(p["ageMonths"], "patient.ageMonths", 0, 1800, o.age)) return false;
        if (p.contains("weightKg") && !Entier(p["weightKg"], "patient.weightKg", 0, 700, o.poids)) return false;
        if (p.contains("pregnancyWeeks") && !Entier(p["pregnancyWeeks"], "patient.pregnancyWeeks", 0, 45, o.grossesse))
            return false;
        if (p.contains("sex")) {
            if (!Chaine(p["sex"], "patient.sex", 1, o.sexe)) return false;
            if (!o.sexe.empty() && o.sexe != "M" && o.sexe != "F") return Refuse("patient.sex", "M, F or empty");
        }
        if (p.contains("breastfeeding")) {
            if (!p["breastfeeding"].is_boolean()) return Refuse("patient.breastfeeding", "a boolean is expected");
            o.allaitement = p["breastfeeding"].get<bool>() ? 1 : 0;
        }
        if (p.contains("pathologies") &&
            !Liste(p["pathologies"], "patient.pathologies", CodesPatientMax, [&](const Json& v, const std::string& champ) {
                size_t rang = 0;
                std::string code;
                if (!TypeEtCode(v, champ, {"term", "cisp", "cim10"}, rang, code)) return false;
                if (!CodeVocabulaire(code)) return Refuse(champ + ".code", "letters, digits and points are expected");
                o.pathologies.push_back({static_cast<int32_t>(rang) + 1, code});
                return true;
            }))
            return false;
        if (p.contains("allergies") &&
            !Liste(p["allergies"], "patient.allergies", CodesPatientMax, [&](const Json& v, const std::string& champ) {
                size_t rang = 0;
                std::string code;
                if (!TypeEtCode(v, champ, {"term", "allergen"}, rang, code)) return false;
                if (rang == 0) {
                    if (!CodeVocabulaire(code)) return Refuse(champ + ".code", "letters, digits and points are expected");
                    o.termesAllergie.push_back(code);
                    return true;
                }
                const std::optional<int32_t> allergene = EntierDans(code, 1, INT32_MAX);
                if (!allergene) return Refuse(champ + ".code", "an allergen is a positive number in digits");
                o.allergenes.push_back(*allergene);
                return true;
            }))
            return false;
        return true;
    }
};

}  // namespace

std::optional<int32_t> EntierDans(std::string_view texte, int32_t min, int32_t max) {
    int32_t n = 0;
    const auto [fin, e] = std::from_chars(texte.data(), texte.data() + texte.size(), n);
    if (!Chiffres(texte) || e != std::errc() || fin != texte.data() + texte.size() || n < min || n > max)
        return std::nullopt;
    return n;
}

bool CodeProduitValide(std::string_view code) { return Chiffres(code) && code.size() == LongueurCodeProduit; }

std::variant<Ordonnance, ErreurRequete> LitVerification(std::string_view corps) {
    if (corps.size() > CorpsMax) return ErreurRequete{"body", "larger than 1 MB"};
    const Json j = Json::parse(corps, nullptr, false);
    if (j.is_discarded()) return ErreurRequete{"body", "malformed JSON"};
    Lecteur l;
    Ordonnance o;
    if (!j.is_object()) return ErreurRequete{"body", "an object is expected"};
    if (!l.SeulementConnus(j, "", {"products", "patient", "level"})) return *l.erreur;
    if (!j.contains("products")) return ErreurRequete{"products", "missing"};
    const bool lus = l.Liste(j["products"], "products", ProduitsMax, [&](const Json& v, const std::string& champ) {
        std::string code;
        if (!l.Chaine(v, champ, TexteMax, code)) return false;
        if (!CodeProduitValide(code)) return l.Refuse(champ, MessageCodeProduit);
        o.produits.push_back(code);
        return true;
    });
    if (!lus) return *l.erreur;
    if (o.produits.empty()) return ErreurRequete{"products", "at least one product is expected"};
    if (j.contains("patient") && !l.Patient(j["patient"], o)) return *l.erreur;
    if (j.contains("level")) {
        int32_t niveau = 0;
        if (!l.Entier(j["level"], "level", 1, 4, niveau)) return *l.erreur;
        o.niveau = niveau;
    }
    return o;
}

std::variant<PageRecherche, ErreurRequete> LitRecherche(const std::multimap<std::string, std::string>& parametres) {
    PageRecherche page;
    bool texte = false;
    for (const auto& [nom, valeur] : parametres) {
        if (nom.empty()) return ErreurRequete{SansNom, "a parameter without a name"};
        if (parametres.count(nom) > 1) return ErreurRequete{nom, "given more than once"};
        if (nom == "limit") {
            const std::optional<int32_t> n = EntierDans(valeur, 1, PageMax);
            if (!n) return ErreurRequete{nom, "a number from 1 to " + std::to_string(PageMax) + " is expected"};
            page.nombre = *n;
            continue;
        }
        if (nom != "q" && nom != "after") return ErreurRequete{nom, "unknown parameter"};
        if (valeur.size() > TexteMax) return ErreurRequete{nom, "longer than " + std::to_string(TexteMax) + " bytes"};
        const std::optional<std::string> cp1252 = codepage::DepuisUtf8(valeur);
        if (!cp1252) return ErreurRequete{nom, "a character outside code page 1252"};
        if (std::ranges::any_of(*cp1252, [](char c) { return static_cast<unsigned char>(c) < 0x20; }))
            return ErreurRequete{nom, "a control character"};
        (nom == "q" ? page.texte : page.apres) = *cp1252;
        texte = texte || nom == "q";
    }
    if (!texte || page.texte.empty()) return ErreurRequete{"q", "missing"};
    return page;
}

std::string ErreurJson(const ErreurRequete& erreur) {
    // A field is named from the request: printable ASCII of it, cut short.
    std::string champ;
    for (const char c : std::string_view(erreur.champ).substr(0, TexteMax))
        champ += c >= 0x20 && c < 0x7F ? c : '?';
    return "{\"error\":" + ChaineJson(erreur.message) + ",\"field\":" + ChaineJson(champ) + "}";
}

std::string EchecJson(const EchecAppel& echec, std::string_view texte) {
    return "{\"error\":" + ChaineJson(texte) + ",\"function\":" + ChaineJson(echec.appel) +
           ",\"code\":" + std::to_string(echec.code) + "}";
}

}  // namespace vdx
