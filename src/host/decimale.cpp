#include "orve-mailserver/host/decimale.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>

#include "orve-mailserver/host/errore.h"

namespace orve::host {

namespace {

constexpr std::int64_t kPostiDecimali = 28;
constexpr std::string_view kMassimo = "79228162514264337593543950335";

// The digits of a text, without the sign, and how many of them are decimal places.
struct Cifre {
  std::string tutte;
  std::int64_t dietro = 0;

  // Rounds off the last digits.
  void Togli(std::int64_t quante) {
    if (quante == 0) return;
    const auto via = static_cast<std::size_t>(quante);
    if (tutte.size() <= via) tutte.insert(0, via - tutte.size() + 1, '0');
    const std::string coda = tutte.substr(tutte.size() - via);
    tutte.resize(tutte.size() - via);
    dietro -= quante;
    const std::string meta = "5" + std::string(via - 1, '0');
    const bool dispari = (tutte.back() - '0') % 2 != 0;
    if (coda < meta || (coda == meta && !dispari)) return;
    const auto nove = std::find_if(tutte.rbegin(), tutte.rend(), [](char cifra) { return cifra != '9'; });
    std::fill(tutte.rbegin(), nove, '0');
    if (nove == tutte.rend()) {
      tutte.insert(0, 1, '1');
    } else {
      ++*nove;
    }
  }

  void TogliZeriDavanti() { tutte.erase(0, std::min(tutte.find_first_not_of('0'), tutte.size())); }

  [[nodiscard]] bool Troppo() const {
    return tutte.size() > kMassimo.size() || (tutte.size() == kMassimo.size() && tutte > kMassimo);
  }
};

Cifre Leggi(std::string_view testo) {
  Cifre cifre;
  bool virgola = false;
  bool qualcuna = false;
  while (!testo.empty() && testo.front() != 'e' && testo.front() != 'E') {
    const char segno = testo.front();
    testo.remove_prefix(1);
    if (segno >= '0' && segno <= '9') {
      cifre.tutte.push_back(segno);
      qualcuna = true;
      if (virgola) ++cifre.dietro;
    } else if ((segno == '.' || segno == ',') && !virgola) {
      virgola = true;
    } else {
      throw Errore(kTipoNonCorrispondente);
    }
  }
  if (!qualcuna) throw Errore(kTipoNonCorrispondente);
  cifre.TogliZeriDavanti();
  if (testo.empty()) return cifre;
  testo.remove_prefix(1);
  if (testo.starts_with('+') && !testo.starts_with("+-")) testo.remove_prefix(1);
  std::int32_t esponente = 0;
  const auto [letto, esito] = std::from_chars(testo.data(), testo.data() + testo.size(), esponente);
  if (letto != testo.data() + testo.size() || esito == std::errc::invalid_argument) {
    throw Errore(kTipoNonCorrispondente);
  }
  if (esito == std::errc::result_out_of_range) throw Errore(kOverflow);
  if (!cifre.tutte.empty()) cifre.dietro -= esponente;
  return cifre;
}

// Rounded once, to as many places as fit.
Cifre Arrotonda(const Cifre& cifre) {
  const auto troppe =
      static_cast<std::int64_t>(cifre.tutte.size()) - static_cast<std::int64_t>(kMassimo.size());
  for (auto via = std::max<std::int64_t>({cifre.dietro - kPostiDecimali, troppe, 0});; ++via) {
    if (via > cifre.dietro) throw Errore(kOverflow);
    Cifre arrotondate = cifre;
    arrotondate.Togli(via);
    arrotondate.TogliZeriDavanti();
    if (!arrotondate.Troppo()) return arrotondate;
  }
}

}  // namespace

Decimale::Decimale(std::string_view testo) {
  while (testo.starts_with(' ')) testo.remove_prefix(1);
  while (testo.ends_with(' ')) testo.remove_suffix(1);
  const bool meno = testo.starts_with('-');
  if (meno || testo.starts_with('+')) testo.remove_prefix(1);
  Cifre cifre = Leggi(testo);
  const auto lunghezza = static_cast<std::int64_t>(cifre.tutte.size());
  if (cifre.dietro > lunghezza + kPostiDecimali) {
    cifre = {};  // too small to leave a digit
  } else if (cifre.dietro < 0) {
    if (lunghezza - cifre.dietro > static_cast<std::int64_t>(kMassimo.size())) throw Errore(kOverflow);
    cifre.tutte.append(static_cast<std::size_t>(-cifre.dietro), '0');
    cifre.dietro = 0;
  }
  cifre = Arrotonda(cifre);
  const auto dietro = static_cast<std::size_t>(cifre.dietro);
  if (cifre.tutte.size() <= dietro) cifre.tutte.insert(0, dietro - cifre.tutte.size() + 1, '0');
  intere_ = cifre.tutte.substr(0, cifre.tutte.size() - dietro);
  decimali_ = cifre.tutte.substr(cifre.tutte.size() - dietro);
  decimali_.erase(decimali_.find_last_not_of('0') + 1);
  negativo_ = meno && (intere_ != "0" || !decimali_.empty());
}

std::string Decimale::Testo(char virgola) const {
  std::string testo = negativo_ ? "-" + intere_ : intere_;
  if (!decimali_.empty()) testo += virgola + decimali_;
  return testo;
}

double Decimale::Numero() const {
  const std::string testo = Testo('.');
  double numero = 0;
  std::from_chars(testo.data(), testo.data() + testo.size(), numero);
  return numero;
}

}  // namespace orve::host
