// Dates as a count of days, with 0 at 30 December 1899 and the time of day
// as the fraction; broken down in the machine's local time.
#pragma once

// Now, as a date.
double date_current_datetime();
// The date of a moment in local time; years below 1900 count as 1900.
// Fatal for a moment before 1 January 1970, which the count can't hold.
double date_create_datetime(double year, double month, double day, double hour, double minute, double second);
// Parts of a date, or -1 when it can't be broken down: the year, the month
// (1 to 12), the day, the hour, the minute, the second and the weekday (0
// for Sunday to 6 for Saturday).
double date_get_year(double date);
double date_get_month(double date);
double date_get_day(double date);
double date_get_hour(double date);
double date_get_minute(double date);
double date_get_second(double date);
double date_get_weekday(double date);
// -1, 0 or 1 as `a` comes before, with or after `b`.
double date_compare_datetime(double a, double b);
// Whether the date falls on today's year, month and day.
bool date_is_today(double date);
// The years between two dates, a year being 365.25 days.
double date_year_span(double a, double b);

// date_* as built-ins.
void register_date_builtins();
