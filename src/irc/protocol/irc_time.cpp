#include "irc/protocol/irc_time.h"

#include "text/number.h"

#include <chrono>
#include <cstdio>

namespace larkspin {

namespace {

constexpr std::string_view form = "0000-00-00T00:00:00"; // what comes after it doesn't matter

} // namespace

std::optional<std::time_t> momentOfIrc(std::string_view text) {
    if (text.size() < form.size() || !text.ends_with('Z'))
        return std::nullopt;
    for (const auto sign : {4U, 7U, 10U, 13U, 16U})
        if (text[sign] != form[sign])
            return std::nullopt;
    const auto part = [&](std::size_t at, std::size_t length, int most) {
        return plainNumber(text.substr(at, length), 0, most);
    };
    const auto year = part(0, 4, 9999), month = part(5, 2, 12), day = part(8, 2, 31);
    const auto hour = part(11, 2, 23), minute = part(14, 2, 59), second = part(17, 2, 60);
    if (!year || !month || !day || !hour || !minute || !second)
        return std::nullopt;
    namespace time = std::chrono;
    const time::year_month_day date{time::year(*year), time::month(static_cast<unsigned>(*month)),
                                    time::day(static_cast<unsigned>(*day))};
    if (!date.ok())
        return std::nullopt;
    const time::sys_seconds moment =
        time::sys_days(date) + time::hours(*hour) + time::minutes(*minute) + time::seconds(*second);
    return time::system_clock::to_time_t(moment);
}

std::string ircTime(std::time_t moment) {
    namespace time = std::chrono;
    const auto at = time::floor<time::seconds>(time::system_clock::from_time_t(moment));
    const auto day = time::floor<time::days>(at);
    const time::year_month_day date(day);
    const time::hh_mm_ss clock(at - day);
    char text[48] = "";
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.000Z",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
                  static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()));
    return text;
}

} // namespace larkspin
