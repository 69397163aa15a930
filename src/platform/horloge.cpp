#include "platform/horloge.h"

#include <ctime>

namespace vdx::horloge {

namespace {
std::optional<Date> dateFixee;
}

Date Aujourdhui() {
    if (dateFixee) return *dateFixee;
    std::time_t maintenant = std::time(nullptr);
    std::tm local{};
    localtime_r(&maintenant, &local);
    return Date{local.tm_mday, local.tm_mon + 1, local.tm_year + 1900};
}

void FixeDate(std::optional<Date> date) {
    dateFixee = date;
}

}  // namespace vdx::horloge
