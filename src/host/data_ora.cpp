#include "orve-mailserver/host/data_ora.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace orve::host {

namespace {

using std::chrono::day;
using std::chrono::days;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;

constexpr int kSecondiAlGiorno = 86400;
// Automation's dates run from the year 100 to 9999; beyond that there is nothing to show.
constexpr double kPrimoGiorno = -657434;
constexpr double kUltimoGiorno = 2958465;

sys_days Origine() {
  return sys_days{year{1899} / month{12} / day{30}};
}

}  // namespace

DataOra DataOra::Da(int anno, int mese, int giorno, int ora, int minuto, int secondo) {
  const sys_days data{year{anno} / month{static_cast<unsigned>(mese)} / day{static_cast<unsigned>(giorno)}};
  const double intero = static_cast<double>((data - Origine()).count());
  const double frazione = static_cast<double>(ora * 3600 + minuto * 60 + secondo) / kSecondiAlGiorno;
  // Before the origin the fraction still counts forward from midnight, so it is subtracted.
  return {intero < 0 ? intero - frazione : intero + frazione};
}

DataOra DataOra::SoloData() const {
  return {std::trunc(giorni)};
}

bool DataOra::HaData() const {
  return std::trunc(giorni) != 0;
}

CampiDataOra Campi(DataOra istante) {
  double valore = istante.giorni;
  if (!(valore >= kPrimoGiorno)) valore = kPrimoGiorno;
  if (valore > kUltimoGiorno) valore = kUltimoGiorno;
  auto interi = static_cast<std::int64_t>(std::trunc(valore));
  auto secondi = std::llround(std::fabs(valore - std::trunc(valore)) * kSecondiAlGiorno);
  if (secondi == kSecondiAlGiorno) {
    secondi = 0;
    ++interi;
  }
  const std::chrono::year_month_day civile{Origine() + days{interi}};
  return {static_cast<int>(civile.year()),
          static_cast<int>(static_cast<unsigned>(civile.month())),
          static_cast<int>(static_cast<unsigned>(civile.day())),
          static_cast<int>(secondi / 3600),
          static_cast<int>(secondi / 60 % 60),
          static_cast<int>(secondi % 60)};
}

std::string TestoGiornoMeseAnno(DataOra istante) {
  const CampiDataOra campi = Campi(istante);
  std::array<char, 40> testo{};
  std::snprintf(testo.data(), testo.size(), "%02d/%02d/%04d", campi.giorno, campi.mese, campi.anno);
  return testo.data();
}

std::string TestoOraMinutiSecondi(DataOra istante) {
  const CampiDataOra campi = Campi(istante);
  std::array<char, 40> testo{};
  std::snprintf(testo.data(), testo.size(), "%02d:%02d:%02d", campi.ora, campi.minuto, campi.secondo);
  return testo.data();
}

}  // namespace orve::host
