#include "platform/local_time.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>

#include <charconv>
#include <optional>
#include <string_view>

namespace platform {
namespace {

std::optional<std::time_t> SourceDateEpoch() {
    const char* value = std::getenv("SOURCE_DATE_EPOCH");
    if (value == nullptr) {
        return std::nullopt;
    }
    const std::string_view text = value;
    std::time_t seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole ? std::optional(seconds) : std::nullopt;
}

}  // namespace

std::string ClassicTime() {
    const std::optional<std::time_t> fixed = SourceDateEpoch();
    const std::time_t now = fixed ? *fixed : std::time(nullptr);
    const std::tm* parts = fixed ? std::gmtime(&now) : std::localtime(&now);
    if (parts == nullptr) {
        return "Thu Jan  1 00:00:00 1970";
    }
    constexpr const char* weekdays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    constexpr const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    // Not strftime, whose names follow the locale.
    char text[64];
    std::snprintf(text, sizeof text, "%s %s %2d %02d:%02d:%02d %lld", weekdays[parts->tm_wday],
                  months[parts->tm_mon], parts->tm_mday, parts->tm_hour, parts->tm_min, parts->tm_sec,
                  1900LL + parts->tm_year);
    return text;
}

}  // namespace platform
