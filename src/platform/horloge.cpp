#include "platform/horloge.h"

#include <ctime>

#ifdef _WIN32
#include <windows.h>
#endif

namespace vdx::horloge {

namespace {
std::optional<Date> dateFixee;
}

Date Aujourdhui() {
    if (dateFixee) return *dateFixee;
    std::time_t maintenant = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &maintenant);
#else
    localtime_r(&maintenant, &local);
#endif
    return Date{local.tm_mday, local.tm_mon + 1, local.tm_year + 1900};
}

void FixeDate(std::optional<Date> date) {
    dateFixee = date;
}

int64_t MaintenantGrossier() {
#ifdef _WIN32
    return static_cast<int64_t>(GetTickCount64()) * 1'000'000;
#else
    timespec t{};
    ::clock_gettime(CLOCK_MONOTONIC_COARSE, &t);
    return int64_t{t.tv_sec} * 1'000'000'000 + t.tv_nsec;
#endif
}

}  // namespace vdx::horloge
