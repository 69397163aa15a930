// The current local date, which tests can set.
#pragma once

#include <optional>

namespace vdx::horloge {

struct Date {
    int jour;
    int mois;  // 1 to 12
    int annee;
};

Date Aujourdhui();
// Fixes the date Aujourdhui gives; nullopt returns to the system clock.
void FixeDate(std::optional<Date> date);

}  // namespace vdx::horloge
