// Dates as day counts: made from their parts and broken down again in local
// time, compared, and the one fatal word of a date before 1970.
#include "runtime/Function/DateFunctions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "support/Fatal.h"

namespace {

TEST(Dates, PartsComeBackFromTheDateTheyMake) {
  struct Parts {
    double year, month, day, hour, minute, second, weekday;
  };
  const Parts cases[] = {
      {1970, 1, 2, 0, 0, 0, 5},      // the day after the count's first day of time
      {2000, 2, 29, 12, 34, 56, 2},  // a leap day
      {2026, 11, 25, 23, 59, 59, 3},
  };
  for (const Parts& c : cases) {
    const double date = date_create_datetime(c.year, c.month, c.day, c.hour, c.minute, c.second);
    SCOPED_TRACE(date);
    EXPECT_EQ((std::vector<double>{date_get_year(date), date_get_month(date), date_get_day(date), date_get_hour(date),
                                   date_get_minute(date), date_get_second(date), date_get_weekday(date)}),
              (std::vector<double>{c.year, c.month, c.day, c.hour, c.minute, c.second, c.weekday}));
  }
  EXPECT_EQ(date_get_year(NAN), -1) << "a date that can't be broken down";
}

TEST(Dates, ComparedTodayAndSpannedInYears) {
  const double now = date_current_datetime();
  EXPECT_TRUE(date_is_today(now));
  EXPECT_FALSE(date_is_today(now - 1));
  EXPECT_EQ(date_compare_datetime(now - 1, now), -1);
  EXPECT_EQ(date_compare_datetime(now, now), 0);
  EXPECT_EQ(date_compare_datetime(now + 0.5, now), 1);
  EXPECT_DOUBLE_EQ(date_year_span(0, 365.25 * 4), 4);
  EXPECT_DOUBLE_EQ(date_year_span(365.25, 0), 1);
  // Whole days from 30 December 1899: 1 January 1970 at noon is day 25569.5.
  EXPECT_NEAR(date_create_datetime(1970, 1, 1, 12, 0, 0) - date_create_datetime(1970, 1, 1, 0, 0, 0), 0.5, 1e-9);
}

TEST(Dates, BeforeNineteenSeventyIsFatalAndYearsBelow1900CountAs1900) {
  for (const double year : {1969.0, 1800.0}) {
    EXPECT_FATAL(date_create_datetime(year, 6, 1, 0, 0, 0),
                 "invalid date conversion - dates earlier than 1 Jan 1970 will be incorrect");
  }
  register_runtime_builtins();
  RValue args[] = {RValue::number(2026), RValue::number(11), RValue::number(25), RValue::number(8),
                   RValue::number(0),    RValue::number(0)};
  RValue date, hour;
  ASSERT_TRUE(builtin_call("date_create_datetime", date, nullptr, nullptr, 6, args));
  ASSERT_TRUE(builtin_call("date_get_hour", hour, nullptr, nullptr, 1, &date));
  EXPECT_EQ(hour.real, 8);
}

}  // namespace
