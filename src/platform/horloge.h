// The current local date, which tests can set, and a coarse clock.
#pragma once

#include <cstdint>
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

// A monotonic clock in nanoseconds, read without a system call, to within a
// few milliseconds.
int64_t MaintenantGrossier();

}  // namespace vdx::horloge
