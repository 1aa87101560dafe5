#include "runtime/Function/DateFunctions.h"

#include <cmath>
#include <ctime>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"

namespace {

constexpr double UNIX_EPOCH_DAY = 25569;  // 1 January 1970
constexpr double SECONDS_PER_DAY = 86400;
constexpr double YEARS_PER_DAY = 0.0027378507871321013;  // 1 / 365.25

double date_of_unix_time(double seconds) { return (seconds + 0.5) / SECONDS_PER_DAY + UNIX_EPOCH_DAY; }

// The local time of `date`; false when it can't be broken down.
bool broken_down(double date, std::tm& out) {
  const double seconds = std::trunc((date - UNIX_EPOCH_DAY) * SECONDS_PER_DAY);
  if (!std::isfinite(seconds) || std::fabs(seconds) > 1e15) return false;
  const auto t = static_cast<std::time_t>(seconds);
  return localtime_r(&t, &out) != nullptr;
}

template <class Part>
double part_of(double date, Part part) {
  std::tm parts{};
  return broken_down(date, parts) ? part(parts) : -1;
}

BUILTIN_ADAPTER(date_current_datetime) { result = RValue::number(date_current_datetime()); }
BUILTIN_ADAPTER(date_create_datetime) {
  result = RValue::number(date_create_datetime(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2),
                                               arg_real(args, 3), arg_real(args, 4), arg_real(args, 5)));
}
BUILTIN_ADAPTER(date_get_year) { result = RValue::number(date_get_year(arg_real(args, 0))); }
BUILTIN_ADAPTER(date_get_month) { result = RValue::number(date_get_month(arg_real(args, 0))); }
BUILTIN_ADAPTER(date_get_day) { result = RValue::number(date_get_day(arg_real(args, 0))); }
BUILTIN_ADAPTER(date_get_hour) { result = RValue::number(date_get_hour(arg_real(args, 0))); }
BUILTIN_ADAPTER(date_get_minute) { result = RValue::number(date_get_minute(arg_real(args, 0))); }
BUILTIN_ADAPTER(date_get_second) { result = RValue::number(date_get_second(arg_real(args, 0))); }
BUILTIN_ADAPTER(date_get_weekday) { result = RValue::number(date_get_weekday(arg_real(args, 0))); }
BUILTIN_ADAPTER(date_compare_datetime) {
  result = RValue::number(date_compare_datetime(arg_real(args, 0), arg_real(args, 1)));
}
BUILTIN_ADAPTER(date_is_today) { result = RValue::boolean(date_is_today(arg_real(args, 0))); }
BUILTIN_ADAPTER(date_year_span) { result = RValue::number(date_year_span(arg_real(args, 0), arg_real(args, 1))); }

}  // namespace

double date_current_datetime() { return date_of_unix_time(static_cast<double>(std::time(nullptr))); }

double date_create_datetime(double year, double month, double day, double hour, double minute, double second) {
  std::tm parts{};
  parts.tm_year = static_cast<int>(std::fmax(year, 1900)) - 1900;
  parts.tm_mon = static_cast<int>(month) - 1;
  parts.tm_mday = static_cast<int>(day);
  parts.tm_hour = static_cast<int>(hour);
  parts.tm_min = static_cast<int>(minute);
  parts.tm_sec = static_cast<int>(second);
  parts.tm_isdst = -1;  // the machine knows whether summer time applies
  const std::time_t t = std::mktime(&parts);
  if (t < 0) {
    ReportError("invalid date conversion - dates earlier than 1 Jan 1970 will be incorrect");
    return 0;
  }
  return date_of_unix_time(static_cast<double>(t));
}

double date_get_year(double date) { return part_of(date, [](const std::tm& p) { return p.tm_year + 1900.0; }); }
double date_get_month(double date) { return part_of(date, [](const std::tm& p) { return p.tm_mon + 1.0; }); }
double date_get_day(double date) { return part_of(date, [](const std::tm& p) { return double(p.tm_mday); }); }
double date_get_hour(double date) { return part_of(date, [](const std::tm& p) { return double(p.tm_hour); }); }
double date_get_minute(double date) { return part_of(date, [](const std::tm& p) { return double(p.tm_min); }); }
double date_get_second(double date) { return part_of(date, [](const std::tm& p) { return double(p.tm_sec); }); }
double date_get_weekday(double date) { return part_of(date, [](const std::tm& p) { return double(p.tm_wday); }); }

double date_compare_datetime(double a, double b) { return a < b ? -1 : (a > b ? 1 : 0); }

bool date_is_today(double date) {
  std::tm then{}, now{};
  return broken_down(date, then) && broken_down(date_current_datetime(), now) && then.tm_year == now.tm_year &&
         then.tm_mon == now.tm_mon && then.tm_yday == now.tm_yday;
}

double date_year_span(double a, double b) { return std::fabs(a - b) * YEARS_PER_DAY; }

void register_date_builtins() {
  builtin_register("date_current_datetime", builtin_date_current_datetime, 0);
  builtin_register("date_create_datetime", builtin_date_create_datetime, 6);
  builtin_register("date_get_year", builtin_date_get_year, 1);
  builtin_register("date_get_month", builtin_date_get_month, 1);
  builtin_register("date_get_day", builtin_date_get_day, 1);
  builtin_register("date_get_hour", builtin_date_get_hour, 1);
  builtin_register("date_get_minute", builtin_date_get_minute, 1);
  builtin_register("date_get_second", builtin_date_get_second, 1);
  builtin_register("date_get_weekday", builtin_date_get_weekday, 1);
  builtin_register("date_compare_datetime", builtin_date_compare_datetime, 2);
  builtin_register("date_is_today", builtin_date_is_today, 1);
  builtin_register("date_year_span", builtin_date_year_span, 2);
}
