// Dates and times of day as the owner reads them.
#include "text/dates.h"

#include <gtest/gtest.h>
#include <utility>

namespace larkspin {

TEST(Dates, TellTheTimeOfDayInTwelveHours) {
    const std::pair<int, const char*> hours[] = {{0, "12:05 am"},  {1, "01:05 am"},
                                                 {11, "11:05 am"}, {12, "12:05 pm"},
                                                 {13, "01:05 pm"}, {23, "11:05 pm"}};
    for (const auto& [hour, text] : hours) {
        std::tm moment{};
        moment.tm_hour = hour;
        moment.tm_min = 5;
        EXPECT_EQ(clockTime(moment), text);
    }
}

TEST(Dates, NameTheDay) {
    std::tm moment{};
    moment.tm_year = 126;
    moment.tm_mon = 2;
    moment.tm_mday = 1;
    EXPECT_EQ(longDate(moment), "Sunday, March 01, 2026");
    EXPECT_EQ(shortDate(moment), "03/01/26");
    moment.tm_mon = 9;
    moment.tm_year = 109;
    EXPECT_EQ(shortDate(moment), "10/01/09");
}

} // namespace larkspin
