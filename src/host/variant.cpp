#include "orve-mailserver/host/variant.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>

#include "orve-mailserver/host/errore.h"

namespace orve::host {

namespace {

template <class... F>
struct Casi : F... {
  using F::operator()...;
};
template <class... F>
Casi(F...) -> Casi<F...>;

std::string_view SenzaBianchi(std::string_view testo) {
  const auto primo = testo.find_first_not_of(' ');
  if (primo == std::string_view::npos) return {};
  return testo.substr(primo, testo.find_last_not_of(' ') - primo + 1);
}

// A decimal number with "." or "," as its decimal separator; anything else is a type mismatch.
double NumeroDaTesto(std::string_view testo) {
  std::string cifre(SenzaBianchi(testo));
  if (!cifre.empty() && cifre.front() == '+') cifre.erase(0, 1);
  if (const auto virgola = cifre.find(','); virgola != std::string::npos) cifre[virgola] = '.';
  // from_chars also knows "inf" and "nan", which are not numbers here.
  if (cifre.find_first_not_of("0123456789.eE+-") != std::string::npos) throw Errore(kTipoNonCorrispondente);
  double numero = 0;
  const auto* const fine = cifre.data() + cifre.size();
  const auto [letto, esito] = std::from_chars(cifre.data(), fine, numero);
  if (esito == std::errc::result_out_of_range) throw Errore(kOverflow);
  if (esito != std::errc{} || letto != fine) throw Errore(kTipoNonCorrispondente);
  return numero;
}

// "dd/mm/yyyy", optionally followed by a blank and "hh:mm:ss".
DataOra DataDaTesto(std::string_view testo) {
  const std::string pulito(SenzaBianchi(testo));
  int giorno = 0;
  int mese = 0;
  int anno = 0;
  int ora = 0;
  int minuto = 0;
  int secondo = 0;
  int letti = 0;
  // NOLINTNEXTLINE(cert-err34-c): the fields are checked against a calendar below
  const int campi = std::sscanf(pulito.c_str(), "%2d/%2d/%4d%n %2d:%2d:%2d%n", &giorno, &mese, &anno, &letti,
                                &ora, &minuto, &secondo, &letti);
  const bool intero = (campi == 3 || campi == 6) && static_cast<std::size_t>(letti) == pulito.size();
  if (!intero || anno < 100 || mese < 1 || giorno < 1 || ora < 0 || ora > 23 || minuto < 0 || minuto > 59 ||
      secondo < 0 || secondo > 59) {
    throw Errore(kTipoNonCorrispondente);
  }
  const std::chrono::year_month_day civile{std::chrono::year{anno},
                                           std::chrono::month{static_cast<unsigned>(mese)},
                                           std::chrono::day{static_cast<unsigned>(giorno)}};
  if (!civile.ok()) throw Errore(kTipoNonCorrispondente);
  return DataOra::Da(anno, mese, giorno, ora, minuto, secondo);
}

// The shortest text that represents a value of the type, with the Italian decimal comma.
std::string TestoDiNumero(double numero, int cifre) {
  std::array<char, 40> testo{};
  const auto scritto =
      std::to_chars(testo.data(), testo.data() + testo.size(), numero, std::chars_format::general, cifre);
  std::string risultato(testo.data(), scritto.ptr);
  for (char& segno : risultato) {
    if (segno == '.') segno = ',';
    if (segno >= 'a') segno = static_cast<char>(segno - 'a' + 'A');  // "1E+20", "INF"
  }
  return risultato;
}

std::string TestoDiData(DataOra istante) {
  const bool soloOra = !istante.HaData();
  const CampiDataOra campi = Campi(istante);
  const bool mezzanotte = campi.ora == 0 && campi.minuto == 0 && campi.secondo == 0;
  if (soloOra) return TestoOraMinutiSecondi(istante);
  if (mezzanotte) return TestoGiornoMeseAnno(istante);
  return TestoGiornoMeseAnno(istante) + " " + TestoOraMinutiSecondi(istante);
}

template <class Intero>
Intero Arrotondato(double numero) {
  const double pari = std::nearbyint(numero);  // the default rounding is to even, automation's own
  if (!(pari >= std::numeric_limits<Intero>::min() && pari <= std::numeric_limits<Intero>::max())) {
    throw Errore(kOverflow);
  }
  return static_cast<Intero>(pari);
}

}  // namespace

std::string Variant::ToText() const {
  return std::visit(Casi{[](std::monostate) -> std::string { return {}; },
                         [](Null) -> std::string { throw Errore(kUsoNonValidoDiNull); },
                         [](bool valore) -> std::string { return valore ? "Vero" : "Falso"; },
                         [](std::int16_t valore) { return std::to_string(valore); },
                         [](std::int32_t valore) { return std::to_string(valore); },
                         [](float valore) { return TestoDiNumero(static_cast<double>(valore), 7); },
                         [](double valore) { return TestoDiNumero(valore, 15); },
                         [](const Decimale& valore) { return valore.Testo(); },
                         [](DataOra valore) { return TestoDiData(valore); },
                         [](const std::string& valore) { return valore; },
                         [](const auto&) -> std::string { throw Errore(kTipoNonCorrispondente); }},
                    valore_);
}

std::string Variant::Joined() const {
  return IsNull() ? std::string() : ToText();
}

double Variant::ToDouble() const {
  return std::visit(
      Casi{[](std::monostate) { return 0.0; }, [](Null) -> double { throw Errore(kUsoNonValidoDiNull); },
           [](bool valore) { return valore ? -1.0 : 0.0; },
           [](std::int16_t valore) { return static_cast<double>(valore); },
           [](std::int32_t valore) { return static_cast<double>(valore); },
           [](float valore) { return static_cast<double>(valore); }, [](double valore) { return valore; },
           [](const Decimale& valore) { return valore.Numero(); },
           [](DataOra valore) { return valore.giorni; },
           [](const std::string& valore) { return NumeroDaTesto(valore); },
           [](const auto&) -> double { throw Errore(kTipoNonCorrispondente); }},
      valore_);
}

Decimale Variant::ToDecimale() const {
  return std::visit(Casi{[](const Decimale& valore) { return valore; },
                         [](const std::string& valore) { return Decimale(valore); },
                         [this](float) { return Decimale(ToText()); },
                         [this](const auto&) { return Decimale(Variant(ToDouble()).ToText()); }},
                    valore_);
}

bool Variant::ToBoolean() const {
  if (const auto* testo = std::get_if<std::string>(&valore_)) {
    if (*testo == "Vero" || *testo == "True") return true;
    if (*testo == "Falso" || *testo == "False") return false;
  }
  return ToDouble() != 0;
}

std::int16_t Variant::ToInt16() const {
  return Arrotondato<std::int16_t>(ToDouble());
}

std::int32_t Variant::ToInt32() const {
  return Arrotondato<std::int32_t>(ToDouble());
}

float Variant::ToFloat() const {
  const double numero = ToDouble();
  if (std::fabs(numero) > static_cast<double>(std::numeric_limits<float>::max())) throw Errore(kOverflow);
  return static_cast<float>(numero);
}

DataOra Variant::ToDate() const {
  if (const auto* testo = std::get_if<std::string>(&valore_)) return DataDaTesto(*testo);
  return {ToDouble()};
}

const Variant::Array& Variant::ToArray() const {
  if (const auto* elenco = std::get_if<Array>(&valore_)) return *elenco;
  throw Errore(kTipoNonCorrispondente);
}

Variant::Array& Variant::ToArray() {
  if (auto* elenco = std::get_if<Array>(&valore_)) return *elenco;
  throw Errore(kTipoNonCorrispondente);
}

Variant::OggettoPtr Variant::ToObject() const {
  if (const auto* oggetto = std::get_if<OggettoPtr>(&valore_)) return *oggetto;
  throw Errore(kTipoNonCorrispondente);
}

}  // namespace orve::host
