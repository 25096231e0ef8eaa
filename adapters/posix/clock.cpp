#include "posix/clock.h"

#include <algorithm>
#include <ctime>

namespace orve::adapters::posix {

host::DataOra Clock::Adesso() {
  const std::time_t secondi = std::time(nullptr);
  std::tm locale{};
  ::tzset();  // localtime_r alone need not notice a change of time zone
  if (::localtime_r(&secondi, &locale) == nullptr) return {};
  // A leap second counts as the second before it, so that the minute never reads 60.
  return host::DataOra::Da(locale.tm_year + 1900, locale.tm_mon + 1, locale.tm_mday, locale.tm_hour,
                           locale.tm_min, std::min(locale.tm_sec, 59));
}

std::string Clock::TestoData(host::DataOra istante) {
  return host::TestoGiornoMeseAnno(istante);
}

std::string Clock::TestoOra(host::DataOra istante) {
  return host::TestoOraMinutiSecondi(istante);
}

}  // namespace orve::adapters::posix
