#include "text/dates.h"

namespace larkspin {

namespace {

constexpr const char* days[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                "Thursday", "Friday", "Saturday"};
constexpr const char* months[] = {"January",   "February", "March",    "April",
                                  "May",       "June",     "July",     "August",
                                  "September", "October",  "November", "December"};

std::string twoDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

} // namespace

std::string longDate(const std::tm& moment) {
    return std::string(days[moment.tm_wday]) + ", " + months[moment.tm_mon] + " " +
           twoDigits(moment.tm_mday) + ", " + std::to_string(moment.tm_year + 1900);
}

std::string shortDate(const std::tm& moment) {
    return twoDigits(moment.tm_mon + 1) + "/" + twoDigits(moment.tm_mday) + "/" +
           twoDigits(moment.tm_year % 100);
}

std::string clockTime(const std::tm& moment) {
    const int hour = moment.tm_hour % 12 == 0 ? 12 : moment.tm_hour % 12;
    return twoDigits(hour) + ":" + twoDigits(moment.tm_min) + (moment.tm_hour < 12 ? " am" : " pm");
}

std::string dateAndTime(const std::tm& moment) {
    return longDate(moment) + " at " + clockTime(moment);
}

} // namespace larkspin
