// The court and the shogunate from the late twelfth century to 1301: who
// held each of the five offices the chronology shows and from which day, and
// the days the eras changed. Dates are those of the old calendar; a leap
// month is flagged, since the month-day text cannot say it.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace suizo::gen {

enum class Office { Emperor, Cloister, Regent, Shogun, Shikken };
inline constexpr std::array<Office, 5> kOffices = {Office::Emperor, Office::Cloister,
                                                   Office::Regent, Office::Shogun, Office::Shikken};

struct MonthDay {
  int month = 0;  // 0: the day is not known, only the year
  int day = 0;    // 0: only the month is known
  bool leap = false;
};

// From `date` of `year` the office is held by `name`; an empty name leaves it
// vacant. Regents carry their title: "摂政:九条道家" or "関白:九条道家".
struct RealAccession {
  int year;
  MonthDay date;
  std::u16string_view name;
  int ordinal = 0;  // the emperors' place in the line
};

// In order of date; the first entries precede 1200, so that the holder of
// that year is known.
std::span<const RealAccession> RealAccessions(Office office);

// The years within which the real holders are used; outside, the full-scale
// corpus invents them.
inline constexpr int kRealFirstYear = 1200;
inline constexpr int kRealLastYear = 1300;

// The day an era began, for the years 1199 to 1299 in which one did.
std::optional<MonthDay> RealEraChange(int year);

}  // namespace suizo::gen
